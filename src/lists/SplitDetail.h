#pragma once

class VendorWindow;

// The split distribution of the invoice in the selected row: account numbers, names, amounts.
class SplitDetail {
public:
    explicit SplitDetail(VendorWindow &window) : m_window(window) {}

    // The split button: opens the panel for the selected row, or closes it.
    void toggle();
    // A double click on a row of the invoice grid.
    void rowActivated(int row);

private:
    VendorWindow &m_window;
};
