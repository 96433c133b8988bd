#include "data/Connection.h"

#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Dialect.h"
#include "data/EngineSettings.h"
#include "data/PostgresDialect.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

#include <optional>
#include <utility>

namespace {

int s_connections = 0;

QString newName()
{
    return QStringLiteral("apconn%1").arg(++s_connections);
}

// The path travels in a URI, so characters such as '?', '#' and '%' are escaped.
QString uriOf(const QString &path, const char *mode)
{
    return QStringLiteral("file:%1?mode=%2")
        .arg(QString::fromLatin1(QUrl::toPercentEncoding(path, "/")), QLatin1String(mode));
}

} // namespace

Connection Connection::sqlite(const QString &databaseName, bool readOnly)
{
    Connection connection(newName(), false);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection.m_name);
    db.setDatabaseName(databaseName);
    QString options =
        QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(Dialect::busyTimeoutMsecs);
    if (readOnly)
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    db.setConnectOptions(options);
    if (!db.open())
        throw DbError(DbError::Generic, db.lastError().text());
    return connection;
}

Connection Connection::readOnlyFile(const QString &path)
{
    return sqlite(uriOf(path, "ro"), true);
}

Connection Connection::localFile(const QString &path)
{
    return sqlite(uriOf(path, "rwc"), false);
}

Connection Connection::scratch()
{
    return sqlite(QStringLiteral(":memory:"), false);
}

Connection Connection::readOnly(const QString &folder, const QString &fileName)
{
    const std::optional<EngineSettings> settings = EngineSettings::ofFolder(folder);
    if (!settings) {
        const QString path = QDir(folder).absoluteFilePath(fileName);
        if (!QFileInfo(path).isFile())
            throw DbError(DbError::FileNotFound,
                          QStringLiteral("Could not find file '%1'.").arg(path));
        return readOnlyFile(path);
    }
    Connection connection = serverReader(*settings, fileName);
    QSqlDatabase db = connection.db();
    const PostgresDialect dialect(*settings);
    if (!dialect.existsThrough(db, fileName))
        throw DbError(DbError::FileNotFound,
                      QStringLiteral("Could not find file '%1'.").arg(dialect.placeOf(fileName)));
    return connection;
}

Connection Connection::serverReader(const EngineSettings &settings, const QString &fileName)
{
    Connection connection(newName(), true);
    try {
        PostgresDialect(settings).openForReading(fileName, connection.m_name);
    } catch (const DbError &error) {
        // A server that refuses is not a missing file.
        throw DbError(DbError::Generic, error.text());
    }
    return connection;
}

Connection Connection::server(const EngineSettings &settings, const QString &program)
{
    Connection connection(newName(), true);
    PostgresDialect(settings).openDatabase(connection.m_name, program);
    return connection;
}

Connection::Connection(Connection &&other) noexcept :
    m_name(std::exchange(other.m_name, QString())), m_server(other.m_server)
{
}

Connection &Connection::operator=(Connection &&other) noexcept
{
    if (this != &other) {
        release();
        m_name = std::exchange(other.m_name, QString());
        m_server = other.m_server;
    }
    return *this;
}

Connection::~Connection()
{
    release();
}

void Connection::release()
{
    if (m_name.isEmpty() || !QSqlDatabase::contains(m_name))
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(m_name, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(m_name);
    m_name.clear();
}

QSqlDatabase Connection::db() const
{
    return QSqlDatabase::database(m_name, false);
}

void Connection::execute(const QString &statement) const
{
    QSqlQuery q(db());
    if (!q.exec(statement))
        throw Databases::errorFrom(q.lastError(), statement);
}

BulkTransaction::BulkTransaction(const Connection &connection) : m_connection(connection)
{
    m_connection.execute(connection.onServer() ? QStringLiteral("begin transaction read write")
                                               : QStringLiteral("begin immediate"));
    m_open = true;
}

BulkTransaction::~BulkTransaction()
{
    if (!m_open)
        return;
    QSqlQuery q(m_connection.db());
    q.exec(QStringLiteral("rollback"));
}

void BulkTransaction::commit()
{
    m_open = false;
    QSqlQuery q(m_connection.db());
    if (!q.exec(QStringLiteral("commit"))) {
        const QSqlError error = q.lastError();
        q.exec(QStringLiteral("rollback")); // let go of the write lock whatever happened
        throw Databases::errorFrom(error, QStringLiteral("commit"));
    }
}
