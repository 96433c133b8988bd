#include "data/PagedStatement.h"

#include "data/StatementClauses.h"

namespace PagedStatement {

QString rows(const QString &statement, long long offset, int count)
{
    const QString sql = bareStatement(statement);
    const QString range = QStringLiteral(" limit %1 offset %2").arg(count).arg(offset);
    // A statement with a limit of its own is read through a subquery.
    if (StatementClauses::of(sql).other)
        return QStringLiteral("select * from (") + sql + QStringLiteral(") as paged") + range;
    return sql + range;
}

QString count(const QString &statement)
{
    const QString sql = bareStatement(statement);
    const StatementClauses at = StatementClauses::of(sql);
    if (at.other || at.from < 0)
        return QStringLiteral("select count(*) from (") + sql + QStringLiteral(") as counted");
    const QString body = at.order < 0 ? sql.mid(at.from) : sql.mid(at.from, at.order - at.from);
    return QStringLiteral("select count(*) ") + body.trimmed();
}

} // namespace PagedStatement
