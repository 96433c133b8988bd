#pragma once

#include <QString>

#include <vector>

// One column of a list grid: its caption (also the sort label), the field it shows and how.
struct ListColumn {
    enum class Kind {
        Text,          // as stored
        Whole,         // a plain number
        CheckNumber,   // a plain number, blank while it is 0 (an unpaid invoice)
        Date,          // YYYYMMDD shown as a calendar date
        Money,         // currency
        Account,       // a G/L account number, blank while it is 0
        Year,          // the year of a YYYYMMDD field
        AgeInDays,     // days from a YYYYMMDD field to today
        InvoiceStatus, // the status code with its name beside it
    };
    QString caption;
    QString field;
    Kind kind = Kind::Text;
    int designWidth = 0; // the column's width on the grid as designed
};

namespace ListColumns {
// The width both grids were designed at; the columns leave room for the frame and scroll bar.
inline constexpr int designGridWidth = 950;
// The 11 invoice columns; 0 invoice number, 1 date and 5 check number are read back by position.
const std::vector<ListColumn> &invoices();
// The 9 check columns.
const std::vector<ListColumn> &checks();
} // namespace ListColumns
