#include "vendorscreen/VendorLayout.h"

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

void arrangeButtons(QWidget *strip, const std::vector<QPushButton *> &buttons)
{
    auto *row = new QHBoxLayout(strip);
    row->setContentsMargins(4, 4, 4, 4);
    for (QPushButton *b : buttons)
        row->addWidget(b);
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
                  const std::array<QRadioButton *, 2> &sortOptions, QLabel *caption,
                  const std::vector<QWidget *> &stacked)
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
    auto *row = new QHBoxLayout(panel);
    row->addWidget(numbers, 2);
    row->addWidget(names, 5);
    row->addWidget(amounts, 2);
    panel->resize(560, 240);
}

void placeLookup(QGroupBox *panel, QWidget *vendorFrame)
{
    const QPoint origin = vendorFrame->mapTo(panel->parentWidget(), QPoint(0, 0));
    panel->move(origin.x() + (vendorFrame->width() - panel->width()) / 2,
                origin.y() + (vendorFrame->height() - panel->height()) / 2);
}

} // namespace VendorLayout
