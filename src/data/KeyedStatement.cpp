#include "data/KeyedStatement.h"

#include "data/StatementClauses.h"

#include <QRegularExpression>

namespace KeyedStatement {

std::optional<Order> orderOf(const QString &statement)
{
    const QString sql = bareStatement(statement);
    const StatementClauses at = StatementClauses::of(sql);
    if (at.other || at.order < 0 || at.from < 0)
        return std::nullopt;
    static const QRegularExpression orderBy(QStringLiteral(R"(^order\s+by\s+(.+)$)"),
                                            QRegularExpression::CaseInsensitiveOption |
                                                QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression term(
        QStringLiteral(R"(^\s*([A-Za-z_]\w*(?:\.[A-Za-z_]\w*)?)(?:\s+(asc|desc))?)"
                       R"((?:\s+nulls\s+(first|last))?\s*$)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch clause = orderBy.match(sql.mid(at.order));
    if (!clause.hasMatch())
        return std::nullopt;
    Order order;
    bool first = true;
    for (const QString &piece : clause.captured(1).split(QLatin1Char(','))) {
        const QRegularExpressionMatch m = term.match(piece);
        if (!m.hasMatch())
            return std::nullopt;
        const bool descending =
            m.captured(2).compare(QLatin1String("desc"), Qt::CaseInsensitive) == 0;
        if (!first && descending != order.descending)
            return std::nullopt;
        // Nulls where the files put them (first going up, last going down) are said for an
        // engine that puts them elsewhere; any other place is no plain order.
        if (!m.captured(3).isEmpty()) {
            const bool nullsFirst =
                m.captured(3).compare(QLatin1String("first"), Qt::CaseInsensitive) == 0;
            if (nullsFirst == descending)
                return std::nullopt;
            order.nullsSaid = true;
        }
        order.descending = descending;
        order.columns << m.captured(1);
        first = false;
    }
    return order;
}

QString from(const QString &statement, const Order &order, bool onward)
{
    const QString sql = bareStatement(statement);
    const StatementClauses at = StatementClauses::of(sql);
    QString head = sql.left(at.order).trimmed();
    QStringList marks;
    for (qsizetype i = 0; i < order.columns.size(); ++i)
        marks << QStringLiteral("?");
    const bool single = order.columns.size() == 1;
    const QString columns =
        single ? order.columns.constFirst() : QLatin1Char('(') + order.columns.join(", ") + ')';
    const QString values = single ? marks.constFirst() : QLatin1Char('(') + marks.join(", ") + ')';
    // Onward in an ascending order, or back in a descending one, the larger values come.
    const bool larger = onward != order.descending;
    const QString key =
        columns + (larger ? QStringLiteral(" >= ") : QStringLiteral(" <= ")) + values;
    // The key comes first: of two bounds on one column the engine seeks by the first, and a
    // bound of the statement's own would have it skip every row from the result's start.
    if (at.where >= 0)
        head = head.left(at.where) + QStringLiteral("where ") + key + QStringLiteral(" and (") +
               head.mid(at.where + 5).trimmed() + QLatin1Char(')');
    else
        head += QStringLiteral(" where ") + key;
    QString direction = larger ? QString() : QStringLiteral(" desc");
    if (order.nullsSaid)
        direction += larger ? QStringLiteral(" nulls first") : QStringLiteral(" nulls last");
    QStringList terms;
    for (const QString &column : order.columns)
        terms << column + direction;
    return head + QStringLiteral(" order by ") + terms.join(QStringLiteral(", "));
}

} // namespace KeyedStatement
