#pragma once

#include <QString>

class VendorWindow;

// Loads the vendor the record source `datavendor` stands on into the 24 fields.
class VendorDisplay {
public:
    explicit VendorDisplay(VendorWindow &window) : m_window(window) {}

    // Shows the current vendor. With no current record it says "No record to display" and
    // returns the screen to the lookup; any other failure gets the shared error report.
    // Returns true when the vendor is on screen.
    bool showCurrent();

    // "#######.#0": no grouping, at least one integer digit, always two decimals.
    static QString money(double value);
    // The name of a 1099 type code; empty for a code that is not valid.
    static QString form1099Name(int code);

private:
    void fill();
    VendorWindow &m_window;
};
