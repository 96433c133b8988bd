#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <span>

class QPushButton;
class QTableView;
class RecordSource;
class RecordSourceModel;
class VendorWindow;

// The unpaid-invoice, paid-invoice and check lists under the vendor, their re-sorting by a
// heading click and the proportional column widths.
class InvoiceLists {
public:
    enum Kind { Unpaid = 1, Paid = 2, Checks = 3 };

    // What the user may do to the rows of the invoice grid; each invoice list sets it.
    struct RowEditPermissions {
        bool addRows = false;
        bool deleteRows = false;
        bool editRows = false;
    };

    explicit InvoiceLists(VendorWindow &window);
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
    // Every column keeps its design-time share of the grid's width.
    void fitColumns();

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
    static void fit(QTableView *grid, int designWidth, std::span<const int> designColumns);

    VendorWindow &m_window;
    std::unique_ptr<RecordSource> m_cursor;
    bool m_cursorPending = false;
    RecordSourceModel *m_invoiceModel = nullptr;
    RecordSourceModel *m_checkModel = nullptr;
};
