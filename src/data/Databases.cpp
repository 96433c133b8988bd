#include "data/Databases.h"

#include "data/DbError.h"
#include "data/Dialect.h"
#include "data/Schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

namespace {
int s_instance = 0;

enum class FileFormat { Missing, SQLite, Access, Other };

FileFormat formatOf(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return FileFormat::Missing;
    if (!file.open(QIODevice::ReadOnly))
        return FileFormat::Other;
    const QByteArray head = file.read(32);
    if (head.isEmpty() || head.startsWith("SQLite format 3"))
        return FileFormat::SQLite;
    const QByteArray kind = head.mid(4, 15);
    if (kind == "Standard Jet DB" || kind == "Standard ACE DB")
        return FileFormat::Access;
    return FileFormat::Other;
}

bool runPragma(QSqlDatabase &db, const QString &pragma)
{
    QSqlQuery q(db);
    return q.exec(pragma);
}
} // namespace

Databases::Databases(std::unique_ptr<Dialect> dialect) :
    m_dialect(dialect ? std::move(dialect) : std::make_unique<SqliteDialect>()),
    m_prefix(QStringLiteral("apdb%1:").arg(++s_instance))
{
}

Databases::~Databases()
{
    closeAll();
}

QString Databases::pathOf(const QString &fileName)
{
    const QDir dir = QDir::current();
    if (QFileInfo::exists(dir.absoluteFilePath(fileName)))
        return dir.absoluteFilePath(fileName);
    const QStringList entries = dir.entryList(QDir::Files | QDir::Hidden);
    for (const QString &entry : entries)
        if (entry.compare(fileName, Qt::CaseInsensitive) == 0)
            return dir.absoluteFilePath(entry);
    return dir.absoluteFilePath(fileName);
}

DbError Databases::errorFrom(const QSqlError &error, const QString &statement)
{
    const QString native = error.nativeErrorCode();
    const QString text = error.text().trimmed();
    int code = DbError::Generic;
    if (native == QLatin1String("5") || native == QLatin1String("6") ||
        text.contains(QLatin1String("locked"), Qt::CaseInsensitive))
        code = DbError::RecordLocked;
    else if (text.contains(QLatin1String("no such table"), Qt::CaseInsensitive))
        code = DbError::NoSuchTable;
    else if (text.contains(QLatin1String("no such column"), Qt::CaseInsensitive))
        code = DbError::NoSuchColumn;
    QString message =
        text.isEmpty() ? QStringLiteral("The database engine refused the statement.") : text;
    if (!statement.isEmpty())
        message += QStringLiteral(" (") + statement + QLatin1Char(')');
    return {code, message};
}

QString Databases::connectionName(const QString &fileName, const QString &tag) const
{
    return m_prefix + fileName.toLower() + (tag.isEmpty() ? QString() : QLatin1Char('#') + tag);
}

QSqlDatabase Databases::connect(const QString &fileName, const QString &connection)
{
    const QString path = pathOf(fileName);
    switch (formatOf(path)) {
    case FileFormat::Missing:
        throw DbError(DbError::FileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
    case FileFormat::Access:
        throw DbError(DbError::NotADatabase,
                      QStringLiteral("The file '%1' is a Microsoft Access database. This module "
                                     "keeps its data in SQLite files; the file was left as it is.")
                          .arg(path));
    case FileFormat::Other:
        throw DbError(DbError::NotADatabase,
                      QStringLiteral("The file '%1' is not a database this module can read; the "
                                     "file was left as it is.")
                          .arg(path));
    case FileFormat::SQLite:
        break;
    }
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    // The path travels in a URI, so characters such as '?', '#' and '%' are escaped.
    const QString uriPath = QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
    db.setDatabaseName(QStringLiteral("file:%1?mode=rw").arg(uriPath));
    db.setConnectOptions(
        QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(m_busyTimeoutMsecs));
    if (!db.open()) {
        const QSqlError err = db.lastError();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(connection);
        throw DbError(
            DbError::FileNotFound,
            QStringLiteral("Could not open file '%1'. %2").arg(path, err.text()).trimmed());
    }
    ++m_openCount;
    runPragma(db, QStringLiteral("pragma journal_mode=WAL"));
    runPragma(db, QStringLiteral("pragma synchronous=FULL"));
    const QString schemaError = Schema::ensure(db, fileName);
    if (!schemaError.isEmpty()) {
        db.close();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(connection);
        throw DbError(
            DbError::NotADatabase,
            QStringLiteral("The file '%1' could not be prepared: %2").arg(path, schemaError));
    }
    m_connections[fileName.toLower()].append(connection);
    return db;
}

QSqlDatabase Databases::open(const QString &fileName)
{
    const QString name = connectionName(fileName);
    if (QSqlDatabase::contains(name))
        return QSqlDatabase::database(name);
    return connect(fileName, name);
}

QSqlDatabase Databases::openReader(const QString &fileName, const QString &tag)
{
    const QString name = connectionName(fileName, tag);
    if (QSqlDatabase::contains(name))
        return QSqlDatabase::database(name);
    return connect(fileName, name);
}

void Databases::closeReader(const QString &fileName, const QString &tag)
{
    const QString name = connectionName(fileName, tag);
    if (!QSqlDatabase::contains(name))
        return;
    {
        QSqlDatabase db = QSqlDatabase::database(name, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
    m_connections[fileName.toLower()].removeAll(name);
}

void Databases::close(const QString &fileName)
{
    const QStringList names = m_connections.take(fileName.toLower());
    for (const QString &name : names) {
        {
            QSqlDatabase db = QSqlDatabase::database(name, false);
            db.close();
        }
        QSqlDatabase::removeDatabase(name);
    }
}

void Databases::closeAll()
{
    const QStringList files = m_connections.keys();
    for (const QString &file : files)
        close(file);
}

bool Databases::isOpen(const QString &fileName) const
{
    return !m_connections.value(fileName.toLower()).isEmpty();
}

QSqlQuery Databases::select(const QString &fileName, const QString &statement)
{
    QSqlQuery q(open(fileName));
    q.setForwardOnly(true);
    const QString sql = m_dialect->map(statement);
    if (!q.exec(sql))
        throw errorFrom(q.lastError(), statement);
    return q;
}

QVariant Databases::scalar(const QString &fileName, const QString &statement)
{
    QSqlQuery q = select(fileName, statement);
    const QVariant value = q.next() ? q.value(0) : QVariant();
    q.finish();
    return value;
}

void Databases::execute(const QString &fileName, const QString &statement)
{
    QSqlDatabase db = open(fileName);
    TransactionGuard tx(db);
    QSqlQuery q(db);
    if (!q.exec(m_dialect->map(statement)))
        throw errorFrom(q.lastError(), statement);
    tx.commit();
}

ScopedDatabase::ScopedDatabase(Databases &dbs, const QString &fileName) :
    m_dbs(dbs), m_fileName(fileName), m_wasOpen(dbs.isOpen(fileName))
{
}

ScopedDatabase::~ScopedDatabase()
{
    if (!m_wasOpen)
        m_dbs.close(m_fileName);
}

TransactionGuard::TransactionGuard(QSqlDatabase db) : m_db(std::move(db))
{
    if (!m_db.transaction())
        throw Databases::errorFrom(m_db.lastError(), QStringLiteral("begin transaction"));
}

TransactionGuard::~TransactionGuard()
{
    if (!m_done)
        m_db.rollback();
}

void TransactionGuard::commit()
{
    if (!m_db.commit())
        throw Databases::errorFrom(m_db.lastError(), QStringLiteral("commit"));
    m_done = true;
}
