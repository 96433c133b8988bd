#include "lists/InvoiceLists.h"

#include "common/Clock.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "common/StatusLine.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/CurrentVendor.h"
#include "lists/EnterSwallower.h"
#include "lists/ListColumns.h"
#include "lists/ListQueries.h"
#include "lists/RecordSourceModel.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

namespace {
const QString apFile = QStringLiteral("ap.mdb");
const QString unpaidCaption = QStringLiteral("Unpaid Invoices");
const QString paidCaption = QStringLiteral("Paid Invoices");
const QString checksCaption = QStringLiteral("Checks");

// The grid options of the invoice grid, kept as properties of the grid itself.
const char *const allowAddNew = "allowAddNew";
const char *const allowDelete = "allowDelete";
const char *const allowUpdate = "allowUpdate";
} // namespace

InvoiceLists::InvoiceLists(const ListWidgets &widgets, const CurrentVendor &vendor, Sources sources,
                           std::function<void()> computeTotals, Databases &dbs, const Clock &clock,
                           Dialogs &dialogs, StatusLine &status) :
    m_w(widgets),
    m_current(vendor), m_sources(sources), m_computeTotals(std::move(computeTotals)),
    m_dialogs(dialogs), m_status(status),
    m_cursor(std::make_unique<RecordSource>(dbs, QStringLiteral("listcursor")))
{
    auto today = [&clock] { return clock.today(); };
    m_invoiceModel =
        new RecordSourceModel(sources.invoices, ListColumns::invoices(), today, m_w.grid1);
    m_checkModel = new RecordSourceModel(sources.checks, ListColumns::checks(), today, m_w.grid2);
    for (QTableView *grid : {m_w.grid1, m_w.grid2}) {
        grid->setModel(grid == m_w.grid1 ? m_invoiceModel : m_checkModel);
        grid->installEventFilter(new EnterSwallower(grid));
        grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
        grid->setWordWrap(false);
        grid->verticalHeader()->hide();
        grid->horizontalHeader()->setSectionsClickable(true);
    }
    setPermissions({});
}

InvoiceLists::~InvoiceLists() = default;

RecordSource &InvoiceLists::cursor()
{
    if (m_cursorPending) {
        m_cursorPending = false;
        m_cursor->refresh();
    }
    return *m_cursor;
}

void InvoiceLists::releaseCursor()
{
    m_cursor->setDatabaseName(QString());
    m_cursor->setRecordSource(QString());
    m_cursor->refresh();
    m_cursorPending = false;
}

QString InvoiceLists::caption() const
{
    return m_w.gridcaption->text();
}

void InvoiceLists::showUnpaid()
{
    load(Unpaid);
}

void InvoiceLists::showPaid()
{
    load(Paid);
}

void InvoiceLists::showChecks()
{
    load(Checks);
}

void InvoiceLists::load(Kind kind)
{
    QPushButton *button = kind == Unpaid ? m_w.cmdunpaid
                          : kind == Paid ? m_w.cmdpaid
                                         : m_w.cmdchecks;
    button->setEnabled(false);
    if (m_current.isSet()) {
        try {
            list(kind);
        } catch (const DbError &error) {
            showErrorReport(m_dialogs, error);
        }
    }
    button->setEnabled(true);
}

void InvoiceLists::list(Kind kind)
{
    const bool invoices = kind != Checks;
    m_w.grid1->setVisible(invoices);
    m_w.grid2->setVisible(!invoices);
    if (kind == Unpaid)
        setPermissions({.addRows = false, .deleteRows = false, .editRows = true});
    else if (kind == Paid)
        setPermissions({});
    m_w.notes->hide();
    m_w.frasplit->hide();
    m_w.cmdsplit->setText(QStringLiteral("Show Split Detail"));

    m_vendor = m_current.number();
    m_kind = kind;
    if (kind == Unpaid)
        m_computeTotals();

    const bool oldToNew = m_w.oldToNew->isChecked();
    const QString statement = kind == Unpaid ? ListQueries::unpaid(m_vendor, oldToNew)
                              : kind == Paid ? ListQueries::paid(m_vendor, oldToNew)
                                             : ListQueries::checks(m_vendor, oldToNew);
    requery(statement, invoices ? m_sources.invoices : m_sources.checks, true);

    const QString &caption = kind == Unpaid ? unpaidCaption
                             : kind == Paid ? paidCaption
                                            : checksCaption;
    m_w.gridcaption->setText(caption);
    // A screen reader names the list by the caption above it.
    (invoices ? m_w.grid1 : m_w.grid2)->setAccessibleName(caption);
    if (invoices)
        fitInvoiceColumns();
}

void InvoiceLists::requery(const QString &statement, RecordSource &source, bool bindFile)
{
    // The cursor lets go of the last list now but runs the new statement only when the split
    // detail first searches it: running it here would sort a long list a second time (and hold
    // a second read open) for a panel that is seldom opened.
    m_cursor->setRecordSource(QString());
    m_cursor->refresh();
    m_cursor->setDatabaseName(apFile);
    m_cursor->setRecordSource(statement);
    m_cursorPending = true;
    if (bindFile)
        source.setDatabaseName(apFile);
    source.setRecordSource(statement);
    m_query = statement;
    source.refresh();
    QCoreApplication::processEvents();
}

void InvoiceLists::refreshOpenList()
{
    if (!m_w.grid1->isHidden() && caption() == unpaidCaption)
        showUnpaid();
    else if (!m_w.grid1->isHidden() && caption() == paidCaption)
        showPaid();
    else if (!m_w.grid2->isHidden())
        showChecks();
}

void InvoiceLists::refreshChecksIfShown()
{
    if (!m_w.grid2->isHidden())
        showChecks();
}

QString InvoiceLists::vendorAsWritten() const
{
    return Numbers::plain(m_current.value());
}

void InvoiceLists::resortInvoices(int column)
{
    if (column < 0)
        return;
    const QString label = m_invoiceModel->caption(column);
    m_status.show(QStringLiteral("Re-sorting by ") + label);
    resort(label, ListQueries::invoiceResort(vendorAsWritten(), caption(), column),
           m_sources.invoices);
}

void InvoiceLists::resortChecks(int column)
{
    if (column < 0)
        return;
    const QString label = m_checkModel->caption(column);
    m_status.show(QStringLiteral("Re-sorting by ") + label);
    resort(label, ListQueries::checkResort(vendorAsWritten(), column), m_sources.checks);
}

void InvoiceLists::resort(const QString &label, const std::optional<QString> &statement,
                          RecordSource &source)
{
    if (!statement) {
        // A column the list cannot be sorted on: the order stays as it is.
        m_status.show(QString());
        return;
    }
    try {
        requery(*statement, source, false);
    } catch (const DbError &error) {
        showErrorReport(m_dialogs, error);
        return;
    }
    m_status.show(QStringLiteral("Sorted by ") + label);
}

InvoiceLists::RowEditPermissions InvoiceLists::invoicePermissions() const
{
    const QTableView *grid = m_w.grid1;
    return {.addRows = grid->property(allowAddNew).toBool(),
            .deleteRows = grid->property(allowDelete).toBool(),
            .editRows = grid->property(allowUpdate).toBool()};
}

void InvoiceLists::setPermissions(const RowEditPermissions &permissions)
{
    // Kept as the grid's options only: this screen never edits an invoice in the grid.
    QTableView *grid = m_w.grid1;
    grid->setProperty(allowAddNew, permissions.addRows);
    grid->setProperty(allowDelete, permissions.deleteRows);
    grid->setProperty(allowUpdate, permissions.editRows);
}

void InvoiceLists::fitColumns()
{
    fitInvoiceColumns();
    fit(m_w.grid2, ListColumns::checks());
}

void InvoiceLists::fitInvoiceColumns()
{
    fit(m_w.grid1, ListColumns::invoices());
}

void InvoiceLists::fit(QTableView *grid, std::span<const ListColumn> columns) const
{
    if (!m_fitting)
        return;
    // A hidden grid has not been laid out; it will take the width of the list area it sits in.
    const QWidget *area = grid->parentWidget();
    const long long width = grid->isHidden() && area ? area->width() : grid->width();
    for (size_t i = 0; i < columns.size(); ++i)
        grid->setColumnWidth(static_cast<int>(i), static_cast<int>(width * columns[i].designWidth /
                                                                   ListColumns::designGridWidth));
}
