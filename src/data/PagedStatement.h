#pragma once

#include <QString>

// A select statement read a page at a time, so that no read stays open between the reads of a
// record source: the statement for a range of its rows by position, and one that counts them.
// Only clauses at the statement's top level count (not inside quotes or parentheses).
namespace PagedStatement {
// Rows `offset` to `offset + count - 1` of the statement, in its order.
QString rows(const QString &statement, long long offset, int count);
// The number of rows of the statement. Without its order clause where the statement allows it,
// so that the engine counts from an index instead of reading every row.
QString count(const QString &statement);
} // namespace PagedStatement
