#pragma once

class VendorWindow;

// The unpaid-invoice, paid-invoice and check lists under the vendor, their re-sorting by a
// heading click and the proportional column widths.
class InvoiceLists {
public:
    explicit InvoiceLists(VendorWindow &window) : m_window(window) {}

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

private:
    VendorWindow &m_window;
};
