#include "StillThere.h"

#include "data/Connection.h"
#include "data/DbError.h"

#include <QSqlError>
#include <QSqlQuery>

bool stillThere(const QString &folder, const QString &fileName, const QString &table,
                const QString &keyColumn, const QString &number)
{
    bool isNumber = false;
    const double key = number.toDouble(&isNumber);
    if (!isNumber)
        return false;
    const Connection connection = Connection::readOnly(folder, fileName);
    QSqlQuery query(connection.db());
    query.setForwardOnly(true);
    // Table and column are the program's own names, never typed text; the number is bound.
    query.prepare(QStringLiteral("select 1 from %1 where %2 = ?").arg(table, keyColumn));
    query.addBindValue(key);
    if (!query.exec())
        throw DbError(DbError::Generic, query.lastError().text());
    return query.next();
}
