#include "lists/InvoiceLists.h"

#include "common/Services.h"
#include "common/Clock.h"
#include "common/ErrorReport.h"
#include "common/Numbers.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "lists/EnterSwallower.h"
#include "lists/ListColumns.h"
#include "lists/ListQueries.h"
#include "lists/OpenInvoiceTotals.h"
#include "lists/RecordSourceModel.h"
#include "vendorscreen/VendorWindow.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
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

InvoiceLists::InvoiceLists(VendorWindow &window) :
    m_window(window), m_cursor(std::make_unique<RecordSource>(window.services().databases,
                                                              QStringLiteral("listcursor")))
{
    const VendorWindow::Controls &c = window.controls();
    auto today = [&clock = window.services().clock] { return clock.today(); };
    m_invoiceModel =
        new RecordSourceModel(window.datainvoice(), ListColumns::invoices(), today, c.grid1);
    m_checkModel =
        new RecordSourceModel(window.datachecks(), ListColumns::checks(), today, c.grid2);
    auto *swallower = new EnterSwallower(&window);
    for (QTableView *grid : {c.grid1, c.grid2}) {
        grid->setModel(grid == c.grid1 ? m_invoiceModel : m_checkModel);
        grid->installEventFilter(swallower);
        grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
        grid->setWordWrap(false);
        grid->verticalHeader()->hide();
        grid->horizontalHeader()->setSectionsClickable(true);
    }
    setPermissions({});
    // The cursor's statement must not outlive the databases the closing steps shut.
    QObject::connect(&window, &VendorWindow::closing, &window, [this] {
        m_cursor->setDatabaseName(QString());
        m_cursor->setRecordSource(QString());
        m_cursor->refresh();
        m_cursorPending = false;
    });
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
    const VendorWindow::Controls &c = m_window.controls();
    QPushButton *button = kind == Unpaid ? c.cmdunpaid : kind == Paid ? c.cmdpaid : c.cmdchecks;
    button->setEnabled(false);
    if (Numbers::leading(c.Text1[0]->text()) >= 1) {
        try {
            list(kind);
        } catch (const DbError &error) {
            showErrorReport(m_window.services().dialogs, error);
        }
    }
    button->setEnabled(true);
}

void InvoiceLists::list(Kind kind)
{
    const VendorWindow::Controls &c = m_window.controls();
    const bool invoices = kind != Checks;
    c.grid1->setVisible(invoices);
    c.grid2->setVisible(!invoices);
    if (kind == Unpaid)
        setPermissions({.addRows = false, .deleteRows = false, .editRows = true});
    else if (kind == Paid)
        setPermissions({});
    c.notes->hide();
    c.frasplit->hide();
    c.cmdsplit->setText(QStringLiteral("Show Split Detail"));

    ScreenState &state = m_window.state();
    state.listVendor = Numbers::leadingWhole(c.Text1[0]->text());
    state.listKind = kind;
    if (kind == Unpaid)
        m_window.totals().compute();

    const bool oldToNew = c.optsort[0]->isChecked();
    const QString statement = kind == Unpaid ? ListQueries::unpaid(state.listVendor, oldToNew)
                              : kind == Paid ? ListQueries::paid(state.listVendor, oldToNew)
                                             : ListQueries::checks(state.listVendor, oldToNew);
    requery(statement, invoices ? m_window.datainvoice() : m_window.datachecks(), true);

    m_window.setGridCaption(kind == Unpaid ? unpaidCaption
                            : kind == Paid ? paidCaption
                                           : checksCaption);
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
    m_window.state().listQuery = statement;
    source.refresh();
    QCoreApplication::processEvents();
}

void InvoiceLists::refreshOpenList()
{
    const VendorWindow::Controls &c = m_window.controls();
    if (!c.grid1->isHidden() && m_window.gridCaption() == unpaidCaption)
        showUnpaid();
    else if (!c.grid1->isHidden() && m_window.gridCaption() == paidCaption)
        showPaid();
    else if (!c.grid2->isHidden())
        showChecks();
}

void InvoiceLists::refreshChecksIfShown()
{
    if (!m_window.controls().grid2->isHidden())
        showChecks();
}

QString InvoiceLists::vendorAsWritten() const
{
    return Numbers::plain(Numbers::leading(m_window.controls().Text1[0]->text()));
}

void InvoiceLists::resortInvoices(int column)
{
    if (column < 0)
        return;
    const QString label = m_invoiceModel->caption(column);
    m_window.setStatus(QStringLiteral("Re-sorting by ") + label);
    resort(label, ListQueries::invoiceResort(vendorAsWritten(), m_window.gridCaption(), column),
           m_window.datainvoice());
}

void InvoiceLists::resortChecks(int column)
{
    if (column < 0)
        return;
    const QString label = m_checkModel->caption(column);
    m_window.setStatus(QStringLiteral("Re-sorting by ") + label);
    resort(label, ListQueries::checkResort(vendorAsWritten(), column), m_window.datachecks());
}

void InvoiceLists::resort(const QString &label, const std::optional<QString> &statement,
                          RecordSource &source)
{
    if (!statement) {
        // A column the list cannot be sorted on: the order stays as it is.
        m_window.setStatus(QString());
        return;
    }
    try {
        requery(*statement, source, false);
    } catch (const DbError &error) {
        showErrorReport(m_window.services().dialogs, error);
        return;
    }
    m_window.setStatus(QStringLiteral("Sorted by ") + label);
}

InvoiceLists::RowEditPermissions InvoiceLists::invoicePermissions() const
{
    const QTableView *grid = m_window.controls().grid1;
    return {.addRows = grid->property(allowAddNew).toBool(),
            .deleteRows = grid->property(allowDelete).toBool(),
            .editRows = grid->property(allowUpdate).toBool()};
}

void InvoiceLists::setPermissions(const RowEditPermissions &permissions)
{
    // Kept as the grid's options only: this screen never edits an invoice in the grid.
    QTableView *grid = m_window.controls().grid1;
    grid->setProperty(allowAddNew, permissions.addRows);
    grid->setProperty(allowDelete, permissions.deleteRows);
    grid->setProperty(allowUpdate, permissions.editRows);
}

void InvoiceLists::fitColumns()
{
    fitInvoiceColumns();
    fit(m_window.controls().grid2, m_window.grid2DesignWidth(), m_window.grid2DesignColumns());
}

void InvoiceLists::fitInvoiceColumns()
{
    fit(m_window.controls().grid1, m_window.grid1DesignWidth(), m_window.grid1DesignColumns());
}

void InvoiceLists::fit(QTableView *grid, int designWidth, std::span<const int> designColumns)
{
    if (designWidth <= 0)
        return;
    // A hidden grid has not been laid out; it will take the width of the list area it sits in.
    const QWidget *area = grid->parentWidget();
    const long long width = grid->isHidden() && area ? area->width() : grid->width();
    for (size_t i = 0; i < designColumns.size(); ++i)
        grid->setColumnWidth(static_cast<int>(i),
                             static_cast<int>(width * designColumns[i] / designWidth));
}
