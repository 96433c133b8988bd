#pragma once

#include "data/KeyedStatement.h"

#include <QSqlRecord>

#include <optional>
#include <vector>

class QSqlDatabase;
class QSqlQuery;

// The values a statement's rows are ordered by, taken from its rows, so that its rows can be
// read on from a row by key (see KeyedStatement). Only for an order the engine serves from an
// index: rows with the same values then come in the index's own order whichever way it is
// read, so counting them is enough to know where the read goes on.
class OrderKey {
public:
    enum class Same { Yes, No, Unknown };

    // The statement's order key, when its order is plain columns of the layout that `row`
    // holds once each, and the engine reads the statement, and by key both ways, in the order of
    // one and the same index.
    static std::optional<OrderKey> of(QSqlDatabase db, const QString &statement,
                                      const QSqlRecord &row);

    const KeyedStatement::Order &order() const { return m_order; }
    // Whether two rows have the same order values as the engine compares them (text without
    // regard to ASCII case); Unknown for a value of another kind than its column's.
    Same same(const QSqlRecord &a, const QSqlRecord &b) const;
    // A row to read on from must have every order value.
    bool complete(const QSqlRecord &row) const;
    // Binds the row's order values to the first marks of a read on by key; how many there are.
    int bind(QSqlQuery &query, const QSqlRecord &row) const;

private:
    KeyedStatement::Order m_order;
    std::vector<int> m_fields; // each order column's place in a row
    std::vector<bool> m_text;  // whether each compares as text
};
