#include "data/ChartOfAccounts.h"

#include "data/Databases.h"

#include <QSqlQuery>
#include <QSqlRecord>

std::optional<GlAccount> ChartOfAccounts::glAccount(const QString &number)
{
    const QString file = QStringLiteral("gl.mdb");
    ScopedDatabase scope(m_dbs, file);
    QSqlQuery q = m_dbs.select(file, QStringLiteral("select glacctnum, glacctname,glstatementdesc, "
                                                    "glaccttype, gllevel from gl0 where "
                                                    "glacctnum = ") +
                                         number);
    if (!q.next())
        return std::nullopt;
    const QSqlRecord row = q.record();
    q.finish();
    return GlAccount{row.value(QStringLiteral("glacctname")).toString(),
                     row.value(QStringLiteral("glstatementdesc")),
                     row.value(QStringLiteral("glaccttype")).toInt(),
                     row.value(QStringLiteral("gllevel")).toInt()};
}
