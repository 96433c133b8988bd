#include "lists/SplitDetail.h"

#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/CurrentVendor.h"
#include "lists/ListFormats.h"
#include "lists/ListQueries.h"
#include "lists/RecordSourceModel.h"

#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QSqlRecord>
#include <QTableView>

void SplitDetail::toggle()
{
    m_w.cmdsplit->setEnabled(false);
    if (m_current.isSet()) {
        try {
            run();
        } catch (const DbError &error) {
            showErrorReport(m_dialogs, error);
        }
    }
    m_w.cmdsplit->setEnabled(true);
}

void SplitDetail::rowActivated(int row)
{
    m_w.grid1->selectRow(row);
    try {
        findSelected();
    } catch (const DbError &error) {
        showErrorReport(m_dialogs, error);
        return;
    }
    toggle();
}

void SplitDetail::run()
{
    RecordSource &cursor = m_listCursor();
    if (m_w.grid1->isHidden() || !cursor.isBound() || !cursor.hasRecords())
        return;
    m_panel.List1->clear();
    m_panel.List2->clear();
    m_panel.List3->clear();
    place();
    if (!m_panel.frasplit->isHidden()) {
        m_panel.frasplit->hide();
        m_w.cmdsplit->setText(QStringLiteral("Show Split Detail"));
    } else {
        m_panel.frasplit->show();
        m_panel.frasplit->raise();
        m_w.cmdsplit->setText(QStringLiteral("Hide Split Detail"));
    }
    // When no invoice matches (the row has gone since the list was read), the panel stays
    // empty rather than showing the distribution of another invoice.
    if (!findSelected())
        return;
    const QSqlRecord invoice = cursor.current();
    for (int line = 1; line <= 10; ++line)
        showLine(invoice, line);
}

void SplitDetail::place()
{
    // Centred across the list pane it opens over and a third of the way down it, so that the
    // list buttons (the split button among them) stay uncovered.
    QGroupBox *panel = m_panel.frasplit;
    const QWidget *pane = panel->parentWidget();
    panel->move((pane->width() - panel->width()) / 2, (pane->height() - panel->height()) / 3);
}

bool SplitDetail::findSelected()
{
    RecordSource &cursor = m_listCursor();
    if (!cursor.isBound() || !cursor.hasRecords())
        return false;
    cursor.moveFirst();
    return cursor.findFirst(selectedCriterion());
}

QString SplitDetail::selectedCriterion() const
{
    const QTableView *grid = m_w.grid1;
    const QAbstractItemModel *model = grid->model();
    // Before the user picks a row the grid stands on its first one.
    const int row = grid->currentIndex().isValid() ? grid->currentIndex().row() : 0;
    const auto cell = [&](int column) {
        return model->index(row, column).data(RecordSourceModel::RawRole);
    };
    const QVariant date = cell(1);
    return ListQueries::invoiceCriterion(
        cell(0).toString(),
        date.isNull() || date.toLongLong() == 0 ? QString() : Numbers::plain(date.toDouble()),
        Numbers::plain(cell(5).toDouble()));
}

void SplitDetail::showLine(const QSqlRecord &invoice, int line)
{
    const double account = invoice.value(QStringLiteral("splitgl%1").arg(line)).toDouble();
    if (account < 1.0)
        return;
    m_panel.List1->addItem(ListFormats::accountNumber(account));
    // A number missing from the chart of accounts leaves the snapshot on its first record, and
    // that record's name is shown.
    RecordSource &accounts = m_accounts;
    accounts.moveFirst();
    accounts.findFirst(QStringLiteral("glacctnum = ") + Numbers::plain(account));
    m_panel.List3->addItem(accounts.value(QStringLiteral("glacctname")).toString());
    m_panel.List2->addItem(
        ListFormats::currency(invoice.value(QStringLiteral("splitamt%1").arg(line)).toDouble()));
}
