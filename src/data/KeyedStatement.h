#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// A statement's rows read on from a row by the values of its order columns, rather than by
// skipping every row before them: the engine finds the place in the order's index at once, so
// a read deep into a long result costs no more than one at its start.
namespace KeyedStatement {
struct Order {
    QStringList columns; // as the order clause names them ("table.column" or "column")
    bool descending = false;
    // Whether the statement says where nulls go (where the files put them): the reads on by key
    // say it too, so that the engine reads them by the same index.
    bool nullsSaid = false;
};
// The statement's order, when it is plain columns all in one direction and the statement has
// no clause (a limit, a group) that would make reading on by key mean something else.
std::optional<Order> orderOf(const QString &statement);
// The statement's rows at and after (onward) or at and before (back) the order values bound
// to its "?" marks, one per order column; going back, they come in reverse order.
QString from(const QString &statement, const Order &order, bool onward);
} // namespace KeyedStatement
