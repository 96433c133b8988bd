#include "LocalTableCopy.h"

#include "ReportFailure.h"

#include "data/Connection.h"
#include "data/Databases.h"
#include "data/DbError.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

#include <optional>

namespace {

QString quoted(const QString &name)
{
    return QLatin1Char('"') + QString(name).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

// The server's type for a column the file declares so, kept close enough for the report's
// formats: whole numbers, decimals, text.
QString serverType(const QString &declared)
{
    const QString type = declared.toUpper();
    if (type.contains(QLatin1String("INT")))
        return QStringLiteral("bigint");
    for (const char *decimal : {"REAL", "FLOA", "DOUB", "NUM", "DEC", "CURR", "MONEY"})
        if (type.contains(QLatin1String(decimal)))
            return QStringLiteral("numeric");
    return QStringLiteral("text");
}

} // namespace

void LocalTableCopy::copy(const Connection &server, const QString &file, const QString &table)
{
    std::optional<Connection> opened;
    try {
        opened.emplace(Connection::readOnlyFile(file));
    } catch (const DbError &) {
        ReportFailure::raise(QStringLiteral("The data file %1 cannot be opened.").arg(file));
    }
    const Connection &local = *opened;
    QStringList names;
    QStringList definitions;
    {
        QSqlQuery columns(local.db());
        if (!columns.exec(QStringLiteral("PRAGMA table_info(%1)").arg(quoted(table)))) {
            ReportFailure::raise(QStringLiteral("The data file %1 cannot be read: %2")
                                     .arg(file, columns.lastError().text()));
        }
        while (columns.next()) {
            const QString name = columns.value(1).toString().toLower();
            names << quoted(name);
            definitions << quoted(name) + QLatin1Char(' ') +
                               serverType(columns.value(2).toString());
        }
    }
    if (names.isEmpty()) {
        ReportFailure::raise(QStringLiteral("The data file %1 has no table %2.").arg(file, table));
    }
    // The session refuses writes by default; a temporary table is the session's own.
    const QString target = QStringLiteral("pg_temp.") + quoted(table.toLower());
    try {
        BulkTransaction transaction(server);
        server.execute(QStringLiteral("drop table if exists ") + target);
        server.execute(QStringLiteral("create temporary table %1 (%2)")
                           .arg(target, definitions.join(QStringLiteral(", "))));
        QSqlQuery rows(local.db());
        rows.setForwardOnly(true);
        if (!rows.exec(QStringLiteral("select %1 from %2")
                           .arg(names.join(QStringLiteral(", ")), quoted(table)))) {
            ReportFailure::raise(QStringLiteral("The data file %1 cannot be read: %2")
                                     .arg(file, rows.lastError().text()));
        }
        QStringList marks;
        for (qsizetype i = 0; i < names.size(); ++i)
            marks << QStringLiteral("?");
        QSqlQuery insert(server.db());
        const QString statement =
            QStringLiteral("insert into %1 (%2) values (%3)")
                .arg(target, names.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
        if (!insert.prepare(statement))
            throw Databases::errorFrom(insert.lastError(), statement);
        while (rows.next()) {
            for (int i = 0; i < int(names.size()); ++i)
                insert.bindValue(i, rows.value(i));
            if (!insert.exec())
                throw Databases::errorFrom(insert.lastError());
        }
        insert.finish();
        transaction.commit();
    } catch (const DbError &e) {
        ReportFailure::raise(QStringLiteral("The data file %1 could not be taken to the server: %2")
                                 .arg(file, e.text()));
    }
}
