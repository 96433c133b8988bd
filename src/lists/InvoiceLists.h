#pragma once

#include "lists/ListWidgets.h"

#include <QString>

#include <functional>

#include <memory>
#include <optional>
#include <span>

class Clock;
class CurrentVendor;
class Databases;
class Dialogs;
class RecordSource;
class RecordSourceModel;
class StatusLine;
struct ListColumn;

// The unpaid-invoice, paid-invoice and check lists under the vendor, their re-sorting by a
// heading click and the proportional column widths.
class InvoiceLists {
public:
    enum Kind { None = 0, Unpaid = 1, Paid = 2, Checks = 3 };

    // What the user may do to the rows of the invoice grid; each invoice list sets it.
    struct RowEditPermissions {
        bool addRows = false;
        bool deleteRows = false;
        bool editRows = false;
    };

    struct Sources {
        RecordSource &invoices; // datainvoice, shown in grid1
        RecordSource &checks;   // datachecks, shown in grid2
    };

    // vendor: whose lists these are; computeTotals: computes the vendor's open-invoice totals,
    // each time the unpaid list is read.
    InvoiceLists(const ListWidgets &widgets, const CurrentVendor &vendor, Sources sources,
                 std::function<void()> computeTotals, Databases &dbs, const Clock &clock,
                 Dialogs &dialogs, StatusLine &status);
    ~InvoiceLists();
    InvoiceLists(const InvoiceLists &) = delete;
    InvoiceLists &operator=(const InvoiceLists &) = delete;

    void showUnpaid();
    void showPaid();
    void showChecks();
    // Lists the open list again for the vendor now on screen (after Next and Previous).
    void refreshOpenList();
    // Lists the checks again when the check grid is showing (after a lookup).
    void refreshChecksIfShown();
    void resortInvoices(int column);
    void resortChecks(int column);
    // From now on every column keeps its design-time share of the grid's width.
    void rememberDesignWidths() { m_fitting = true; }
    void fitColumns();
    // Lets go of the list cursor's statement (before the databases close).
    void releaseCursor();

    // What the screen keeps while a list is shown.
    Kind kind() const { return m_kind; }
    long vendor() const { return m_vendor; }
    QString query() const { return m_query; }
    QString caption() const;

    // A recordset opened with the statement of each list and re-sort; the split detail
    // searches it. The statement runs on first use after a list is loaded.
    RecordSource &cursor();
    RowEditPermissions invoicePermissions() const;
    RecordSourceModel &invoiceModel() { return *m_invoiceModel; }
    RecordSourceModel &checkModel() { return *m_checkModel; }

private:
    void load(Kind kind);
    void list(Kind kind);
    void requery(const QString &statement, RecordSource &source, bool bindFile);
    void setPermissions(const RowEditPermissions &permissions);
    void fitInvoiceColumns();
    void resort(const QString &label, const std::optional<QString> &statement,
                RecordSource &source);
    QString vendorAsWritten() const;
    void fit(QTableView *grid, std::span<const ListColumn> columns) const;

    ListWidgets m_w;
    const CurrentVendor &m_current;
    Sources m_sources;
    std::function<void()> m_computeTotals;
    Dialogs &m_dialogs;
    StatusLine &m_status;
    std::unique_ptr<RecordSource> m_cursor;
    bool m_cursorPending = false;
    bool m_fitting = false;
    RecordSourceModel *m_invoiceModel = nullptr;
    RecordSourceModel *m_checkModel = nullptr;
    Kind m_kind = None;
    long m_vendor = 0;
    QString m_query;
};
