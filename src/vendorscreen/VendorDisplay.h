#pragma once

#include <QObject>
#include <QString>

#include <functional>

class CurrentVendor;
class Dialogs;
class RecordSource;
class VendorFieldBoxes;

// Loads the vendor the record source `datavendor` stands on into the 24 fields, and makes it the
// vendor the screen is on.
class VendorDisplay : public QObject {
    Q_OBJECT

public:
    // The vendor's open-invoice total and this year's invoiced total, which the display shows
    // and stamps on the vendor shown before.
    struct Totals {
        // Computes both for the vendor on the screen.
        std::function<void()> compute;
        std::function<double()> openTotal;
        std::function<double()> yearTotal;
    };

    VendorDisplay(const VendorFieldBoxes &fields, RecordSource &vendors, Totals totals,
                  CurrentVendor &current, Dialogs &dialogs, QObject *parent = nullptr) :
        QObject(parent),
        m_fields(fields), m_vendors(vendors), m_totals(std::move(totals)), m_current(current),
        m_dialogs(dialogs)
    {
    }

    // Shows the current vendor; the vendor on the screen reports the change once it is shown.
    // With no current record it says "No record to display" and
    // asks for the lookup again (noRecord); any other failure gets the shared error report.
    // Returns true when the vendor is on screen.
    bool showCurrent();
    // Shows the current vendor again as the database holds it now (after a pass rewrote the
    // vendor file), with the same reports as showCurrent().
    bool showAgain();

    // "#######.#0": no grouping, at least one integer digit, always two decimals.
    static QString money(double value);
    // The name of a 1099 type code; empty for a code that is not valid.
    static QString form1099Name(int code);

signals:
    // There was no vendor to show: the screen goes back to the lookup, as Cancel does.
    void noRecord();

private:
    bool show(bool fresh);
    void fill(bool fresh);
    void stampTotals();

    const VendorFieldBoxes &m_fields;
    RecordSource &m_vendors;
    Totals m_totals;
    CurrentVendor &m_current;
    Dialogs &m_dialogs;
};
