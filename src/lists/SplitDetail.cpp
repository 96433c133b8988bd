#include "lists/SplitDetail.h"

#include "common/Services.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/InvoiceLists.h"
#include "lists/ListFormats.h"
#include "lists/ListQueries.h"
#include "lists/RecordSourceModel.h"
#include "vendorscreen/VendorWindow.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSqlRecord>
#include <QTableView>

void SplitDetail::toggle()
{
    const VendorWindow::Controls &c = m_window.controls();
    c.cmdsplit->setEnabled(false);
    if (Numbers::leading(c.Text1[0]->text()) >= 1) {
        try {
            run();
        } catch (const DbError &error) {
            showErrorReport(m_window.services().dialogs, error);
        }
    }
    c.cmdsplit->setEnabled(true);
}

void SplitDetail::rowActivated(int row)
{
    m_window.controls().grid1->selectRow(row);
    try {
        findSelected();
    } catch (const DbError &error) {
        showErrorReport(m_window.services().dialogs, error);
        return;
    }
    toggle();
}

void SplitDetail::run()
{
    const VendorWindow::Controls &c = m_window.controls();
    RecordSource &cursor = m_window.lists().cursor();
    if (c.grid1->isHidden() || !cursor.isBound() || !cursor.hasRecords())
        return;
    c.List1->clear();
    c.List2->clear();
    c.List3->clear();
    place();
    if (!c.frasplit->isHidden()) {
        c.frasplit->hide();
        c.cmdsplit->setText(QStringLiteral("Show Split Detail"));
    } else {
        c.frasplit->show();
        c.frasplit->raise();
        c.cmdsplit->setText(QStringLiteral("Hide Split Detail"));
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
    QGroupBox *panel = m_window.controls().frasplit;
    panel->move((m_window.width() - panel->width()) / 2, (m_window.height() - panel->height()) / 3);
}

bool SplitDetail::findSelected()
{
    RecordSource &cursor = m_window.lists().cursor();
    if (!cursor.isBound() || !cursor.hasRecords())
        return false;
    cursor.moveFirst();
    return cursor.findFirst(selectedCriterion());
}

QString SplitDetail::selectedCriterion() const
{
    const QTableView *grid = m_window.controls().grid1;
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
    const VendorWindow::Controls &c = m_window.controls();
    c.List1->addItem(ListFormats::accountNumber(account));
    // A number missing from the chart of accounts leaves the snapshot on its first record, and
    // that record's name is shown.
    RecordSource &accounts = m_window.glaccounts();
    accounts.moveFirst();
    accounts.findFirst(QStringLiteral("glacctnum = ") + Numbers::plain(account));
    c.List3->addItem(accounts.value(QStringLiteral("glacctname")).toString());
    c.List2->addItem(
        ListFormats::currency(invoice.value(QStringLiteral("splitamt%1").arg(line)).toDouble()));
}
