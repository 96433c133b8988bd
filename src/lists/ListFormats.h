#pragma once

#include <QString>

class QVariant;

// How the lists and the split panel write dates, money and account numbers.
namespace ListFormats {
// A YYYYMMDD date as 11/21/2026; empty for a null or 0, the digits as they are when they are not
// a calendar date.
QString date(const QVariant &value);
// Money the way the lists show it: "$1,234.50", "($12.00)" below zero.
QString currency(double value);
// An invoice status code followed by what it means: "2  Open", "4  Paid"; a code that is
// neither (0 or below) alone.
QString invoiceStatus(const QVariant &value);
// A G/L account number with three decimals always: 5000 is "5000.000".
QString accountNumber(double value);
} // namespace ListFormats
