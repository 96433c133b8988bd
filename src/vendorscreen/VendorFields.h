#pragma once

#include <QString>

#include <array>

// The 24 vendor fields, in the order of the screen's field array: Tab and Enter walk them in
// this order, and the save writes their columns in it.
enum class VendorField : int {
    Number,
    Name,
    Address1,
    Address2,
    City,
    State,
    Zip,
    Phone,
    Fax,
    Contact,
    TaxId,
    Form1099,
    GlAccount,
    YtdPurchases,
    CurrentUnpaid, // the open-invoice total
    YearOrders,    // this year's invoiced total
    Over90,
    Terms,
    OurAccount,
    Email,
    CellOther,
    Contact2,
    Email2,
    CellOther2,
};
inline constexpr int vendorFieldCount = 24;

constexpr int indexOf(VendorField field)
{
    return static_cast<int>(field);
}

// One vendor field, described once: what it is called, where it is stored, how its text is
// read and shown, the prompt shown while it has the focus, and whether it is locked.
struct VendorFieldInfo {
    // How the save reads the field's text.
    enum class Kind { Whole, Number, Money, Text };
    // What the display puts in the field.
    enum class Shown {
        AsStored,    // the column's value as text
        FirstColumn, // the row's first column (a lookup joined to invoices may rename the rest)
        AsMoney,     // the column's value with two decimals
        OpenTotal,   // the open-invoice total just computed
        YearTotal,   // this year's invoiced total just computed
    };

    VendorField field;
    const char *caption;
    const char *column;
    Kind kind;
    Shown shown;
    const char *prompt; // nullptr: the field has none
    // A figure the system keeps: locked unless a new vendor is added or a senior user modifies.
    bool keptFigure;
    // Add puts "0" into it, ready for a number.
    bool zeroOnAdd;
};

namespace VendorFields {
const std::array<VendorFieldInfo, vendorFieldCount> &all();
const VendorFieldInfo &info(VendorField field);
inline const VendorFieldInfo &info(int index)
{
    return all()[static_cast<size_t>(index)];
}
QString caption(VendorField field);
// The status-line prompt; empty for the fields that have none.
QString prompt(VendorField field);
} // namespace VendorFields
