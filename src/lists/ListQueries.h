#pragma once

#include <QString>

#include <optional>

// The statements of the invoice and check lists and of their re-sorting, and the criterion that
// finds an invoice of the list again.
namespace ListQueries {
// "Old to new" lists ascending; otherwise the newest come first. The ascending check list has no
// order clause: the checks come in the table's own order.
QString unpaid(long long vendor, bool oldToNew);
QString paid(long long vendor, bool oldToNew);
QString checks(long long vendor, bool oldToNew);

// The invoice list re-sorted on a column, always ascending. `vendor` is written into the
// statement as given; `caption` is the grid's caption. Empty when the column cannot be sorted
// on (the check columns 5 to 7 of the unpaid list).
std::optional<QString> invoiceResort(const QString &vendor, const QString &caption, int column);
QString checkResort(const QString &vendor, int column);

// Finds an invoice by number, date and check number. An empty date is written as '' (an empty
// number would leave "invdate = and ..."); the invoice number has its apostrophes doubled.
QString invoiceCriterion(const QString &invoice, const QString &date, const QString &check);
} // namespace ListQueries
