#include "PickerWindow.h"

#include "PickerModel.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

PickerWindow::PickerWindow(PickerModel &model, const Texts &texts, QWidget *parent) :
    QDialog(parent), m_model(model), m_texts(texts), m_search(new QLineEdit(this)),
    m_list(new QTableView(this)), m_note(new QLabel(this))
{
    setWindowTitle(texts.title);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setPlaceholderText(texts.placeholder);
    m_search->setClearButtonEnabled(true);
    m_search->setAccessibleName(tr("Search"));
    m_list->setObjectName(QStringLiteral("list"));
    m_list->setModel(&m_model);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setTabKeyNavigation(false);
    m_list->verticalHeader()->hide();
    m_list->setWordWrap(false);
    m_list->horizontalHeader()->setStretchLastSection(true);
    m_list->horizontalHeader()->setSortIndicatorShown(true);
    m_list->horizontalHeader()->setSectionsClickable(true);
    m_list->horizontalHeader()->setSortIndicator(m_model.sortColumn(), m_model.sortOrder());
    m_list->setSortingEnabled(true);
    m_list->setAccessibleName(texts.title);
    m_note->setObjectName(QStringLiteral("note"));
    // Widths for typical values rather than for the first page's, so that the columns stay put
    // as the list narrows; the window is as wide as they are.
    const QFontMetrics metrics(font());
    const int em = metrics.horizontalAdvance(QLatin1Char('M'));
    for (int column = 0; column < m_model.columnCount(); ++column) {
        const int heading =
            metrics.horizontalAdvance(m_model.headerData(column, Qt::Horizontal).toString()) +
            2 * em;
        const int typical = !m_model.isText(column) ? 0 : column == 1 ? em * 16 : em * 10;
        m_list->setColumnWidth(column, std::max(heading, typical));
    }
    const int listWidth = m_list->horizontalHeader()->length() +
                          m_list->verticalScrollBar()->sizeHint().width() +
                          2 * m_list->frameWidth();

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_note);
    const QMargins margins = layout->contentsMargins();
    resize(listWidth + margins.left() + margins.right(), metrics.height() * 30);

    m_search->installEventFilter(this);
    m_list->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, &PickerWindow::searchChanged);
    connect(m_list, &QTableView::activated, this, &PickerWindow::pick);
    connect(&m_model, &QAbstractItemModel::modelReset, this, [this] {
        if (m_model.rowCount() > 0)
            m_list->setCurrentIndex(m_model.index(0, 0));
        showNote();
    });
    if (m_model.rowCount() > 0)
        m_list->setCurrentIndex(m_model.index(0, 0));
    showNote();
    m_search->setFocus();
}

void PickerWindow::searchChanged(const QString &text)
{
    m_model.setSearchText(text);
}

void PickerWindow::showNote()
{
    if (!m_model.error().isEmpty())
        m_note->setText(tr("The list cannot be read: %1").arg(m_model.error()));
    else if (m_model.rowCount() > 0)
        m_note->setText(tr("Enter picks the highlighted line, Escape closes without picking."));
    else if (m_model.searchText().trimmed().isEmpty())
        m_note->setText(m_texts.emptyNote);
    else
        m_note->setText(tr("No %1 match \"%2\".").arg(m_texts.what, m_model.searchText()));
}

void PickerWindow::pick()
{
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid())
        return;
    const QString number = m_model.numberAt(current.row());
    if (m_check && !m_check(number)) {
        m_note->setText(m_goneNote.arg(number));
        return;
    }
    m_picked = number;
    accept();
}

void PickerWindow::setPickCheck(PickCheck check, const QString &goneNote)
{
    m_check = std::move(check);
    m_goneNote = goneNote;
}

bool PickerWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        pick();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (watched == m_search) {
            // The box keeps the focus, so typing goes on; the list moves.
            QKeyEvent copy(key->type(), key->key(), key->modifiers());
            QApplication::sendEvent(m_list, &copy);
            return true;
        }
        break;
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}
