#pragma once

class VendorWindow;

// The vendor's open-invoice total and this year's invoiced total, kept on the screen's state
// for the display and the save.
class OpenInvoiceTotals {
public:
    explicit OpenInvoiceTotals(VendorWindow &window) : m_window(window) {}

    // Computes both totals for the vendor number in the first vendor field. A number below 1
    // leaves the totals as they were (and the status line on its retrieving message).
    void compute();

private:
    VendorWindow &m_window;
};
