#include "LocalTableCopy.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>
#include <QUrl>

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

// Closes the file's connection when the copy is over, whatever happened.
class LocalFile {
public:
    explicit LocalFile(const QString &path) : m_name(QStringLiteral("cryprint-local:") + path)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
        db.setDatabaseName(QStringLiteral("file:%1?mode=ro")
                               .arg(QString::fromLatin1(QUrl::toPercentEncoding(path, "/"))));
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_OPEN_READONLY"));
        m_open = db.open();
    }
    ~LocalFile()
    {
        {
            QSqlDatabase db = QSqlDatabase::database(m_name, false);
            db.close();
        }
        QSqlDatabase::removeDatabase(m_name);
    }
    LocalFile(const LocalFile &) = delete;
    LocalFile &operator=(const LocalFile &) = delete;
    bool isOpen() const { return m_open; }
    QSqlDatabase db() const { return QSqlDatabase::database(m_name, false); }

private:
    QString m_name;
    bool m_open = false;
};

} // namespace

bool LocalTableCopy::copy(QSqlDatabase &server, const QString &file, const QString &table,
                          QString &error)
{
    const LocalFile local(file);
    if (!local.isOpen()) {
        error = QStringLiteral("The data file %1 cannot be opened.").arg(file);
        return false;
    }
    QStringList names;
    QStringList definitions;
    {
        QSqlQuery columns(local.db());
        if (!columns.exec(QStringLiteral("PRAGMA table_info(%1)").arg(quoted(table)))) {
            error = QStringLiteral("The data file %1 cannot be read: %2")
                        .arg(file, columns.lastError().text());
            return false;
        }
        while (columns.next()) {
            const QString name = columns.value(1).toString().toLower();
            names << quoted(name);
            definitions << quoted(name) + QLatin1Char(' ') +
                               serverType(columns.value(2).toString());
        }
    }
    if (names.isEmpty()) {
        error = QStringLiteral("The data file %1 has no table %2.").arg(file, table);
        return false;
    }
    // The session refuses writes by default; a temporary table is the session's own.
    QSqlQuery q(server);
    const QString target = QStringLiteral("pg_temp.") + quoted(table.toLower());
    bool ok = q.exec(QStringLiteral("begin transaction read write")) &&
              q.exec(QStringLiteral("drop table if exists ") + target) &&
              q.exec(QStringLiteral("create temporary table %1 (%2)")
                         .arg(target, definitions.join(QStringLiteral(", "))));
    if (ok) {
        QSqlQuery rows(local.db());
        rows.setForwardOnly(true);
        ok = rows.exec(QStringLiteral("select %1 from %2")
                           .arg(names.join(QStringLiteral(", ")), quoted(table)));
        if (!ok)
            error = QStringLiteral("The data file %1 cannot be read: %2")
                        .arg(file, rows.lastError().text());
        QStringList marks;
        for (qsizetype i = 0; i < names.size(); ++i)
            marks << QStringLiteral("?");
        QSqlQuery insert(server);
        ok = ok && insert.prepare(QStringLiteral("insert into %1 (%2) values (%3)")
                                      .arg(target, names.join(QStringLiteral(", ")),
                                           marks.join(QStringLiteral(", "))));
        while (ok && rows.next()) {
            for (int i = 0; i < int(names.size()); ++i)
                insert.bindValue(i, rows.value(i));
            ok = insert.exec();
        }
        if (!ok && error.isEmpty())
            error = QStringLiteral("The data file %1 could not be taken to the server: %2")
                        .arg(file, insert.lastError().text());
    } else {
        error = QStringLiteral("The data file %1 could not be taken to the server: %2")
                    .arg(file, q.lastError().text());
    }
    q.exec(ok ? QStringLiteral("commit") : QStringLiteral("rollback"));
    return ok;
}
