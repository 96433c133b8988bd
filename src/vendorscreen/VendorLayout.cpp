#include "vendorscreen/VendorLayout.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace VendorLayout {

void arrange(QWidget *central, QWidget *buttons, QWidget *vendorFrame, QWidget *lists,
             QWidget *statusLine)
{
    auto *column = new QVBoxLayout(central);
    column->setContentsMargins(6, 4, 6, 4);
    column->setSpacing(4);
    column->addWidget(buttons);
    column->addWidget(vendorFrame);
    column->addWidget(lists, 1);
    column->addWidget(statusLine);
}

void arrangeStatusRow(QWidget *row, QWidget *statusLine, QWidget *progress)
{
    auto *line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(statusLine, 1);
    progress->setFixedWidth(220);
    line->addWidget(progress);
}

void arrangeButtons(QWidget *strip, const std::vector<QPushButton *> &buttons)
{
    auto *row = new QHBoxLayout(strip);
    row->setContentsMargins(4, 4, 4, 4);
    for (QPushButton *b : buttons) {
        // Narrower than the style's usual width where the screen is small (a large scaling),
        // never narrower than the button's text: all eleven stay in sight.
        const QString text = QString(b->text()).remove(QLatin1Char('&'));
        b->setMinimumWidth(b->fontMetrics().horizontalAdvance(text) +
                           2 * b->fontMetrics().height());
        row->addWidget(b);
    }
    row->addStretch(1);
}

void arrangeFields(QGroupBox *frame, const std::array<QLabel *, 24> &labels,
                   const std::array<QLineEdit *, 24> &fields)
{
    // Three columns of eight fields in index order: who and where, contact and accounting,
    // balances and the second contact. Tab and Enter walk the fields in index order.
    auto *grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(3);
    for (int i = 0; i < 24; ++i) {
        grid->addWidget(labels[i], i % 8, (i / 8) * 2);
        grid->addWidget(fields[i], i % 8, (i / 8) * 2 + 1);
        if (i > 0)
            QWidget::setTabOrder(fields[i - 1], fields[i]);
    }
    for (int col = 0; col < 3; ++col)
        grid->setColumnStretch(col * 2 + 1, 1);
}

void arrangeLists(QWidget *area, const std::vector<QPushButton *> &buttons,
                  const std::array<QRadioButton *, 2> &sortOptions, QWidget *pane)
{
    auto *column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    auto *row = new QHBoxLayout;
    for (QPushButton *b : buttons)
        row->addWidget(b);
    row->addSpacing(16);
    for (QRadioButton *r : sortOptions)
        row->addWidget(r);
    row->addStretch(1);
    column->addLayout(row);
    column->addWidget(pane, 1);
}

void arrangeListPane(QWidget *pane, QLabel *caption, const std::vector<QWidget *> &stacked)
{
    auto *column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    column->addWidget(caption);
    auto *stack = new QVBoxLayout;
    for (QWidget *w : stacked)
        stack->addWidget(w, 1);
    column->addLayout(stack, 1);
}

void arrangeLookup(QGroupBox *panel, const std::array<QRadioButton *, 7> &options, QLineEdit *input,
                   QPushButton *go, QPushButton *cancel)
{
    auto *grid = new QGridLayout(panel);
    for (int i = 0; i < 7; ++i)
        grid->addWidget(options[i], i / 4, i % 4);
    grid->addWidget(input, 2, 0, 1, 2);
    grid->addWidget(go, 2, 2);
    grid->addWidget(cancel, 2, 3);
    panel->resize(520, 130);
    // The methods, then the entry, Go and Cancel; Shift+Tab from the entry reaches the methods.
    for (int i = 1; i < 7; ++i)
        QWidget::setTabOrder(options[i - 1], options[i]);
    QWidget::setTabOrder(options[6], input);
    QWidget::setTabOrder(input, go);
    QWidget::setTabOrder(go, cancel);
}

void arrangeSplit(QGroupBox *panel, QListWidget *numbers, QListWidget *names, QListWidget *amounts)
{
    auto *grid = new QGridLayout(panel);
    grid->setVerticalSpacing(2);
    const std::pair<QListWidget *, const char *> columns[] = {
        {numbers, QT_TRANSLATE_NOOP("VendorLayout", "Account")},
        {names, QT_TRANSLATE_NOOP("VendorLayout", "Name")},
        {amounts, QT_TRANSLATE_NOOP("VendorLayout", "Amount")},
    };
    int at = 0;
    for (const auto &[list, heading] : columns) {
        auto *label = new QLabel(QCoreApplication::translate("VendorLayout", heading), panel);
        label->setObjectName(list->objectName() + QStringLiteral("heading"));
        label->setBuddy(list);
        grid->addWidget(label, 0, at);
        grid->addWidget(list, 1, at);
        ++at;
    }
    grid->setColumnStretch(0, 2);
    grid->setColumnStretch(1, 5);
    grid->setColumnStretch(2, 2);
    // Ten lines, the most an invoice is split over, without a scroll bar.
    panel->resize(500, 250);
}

// Over the list pane, level with its top and with the vendor frame's left edge.
void placeLookup(QGroupBox *panel, QWidget *over)
{
    const QPoint origin = over->mapTo(panel->parentWidget(), QPoint(0, 0));
    panel->move(origin);
}

} // namespace VendorLayout
