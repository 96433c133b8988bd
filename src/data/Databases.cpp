#include "data/Databases.h"

#include "common/DataFiles.h"

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

// SQLite's answer for a file that is not one of its databases.
const QLatin1String notADatabaseCode("26");

QString uriOf(const QString &path, const char *mode)
{
    // The path travels in a URI, so characters such as '?', '#' and '%' are escaped.
    return QStringLiteral("file:%1?mode=%2")
        .arg(QString::fromLatin1(QUrl::toPercentEncoding(path, "/")), QLatin1String(mode));
}

// What a file the engine refused holds. Only called when no connection to the file is open in
// this process (the engine refused it, so none can be), never before.
DbError foreignFile(const QString &path)
{
    QByteArray head;
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            head = file.read(32);
    }
    const QByteArray kind = head.mid(4, 15);
    if (kind == "Standard Jet DB" || kind == "Standard ACE DB")
        return {DbError::NotADatabase,
                QStringLiteral("The file '%1' is a Microsoft Access database. This module keeps "
                               "its data in SQLite files; the file was left as it is. To move "
                               "a company's Access files in, run: apmaster-import "
                               "SOURCE_FOLDER DATA_FOLDER")
                    .arg(path)};
    return {DbError::NotADatabase,
            QStringLiteral("The file '%1' is not a database this module can read; the file was "
                           "left as it is.")
                .arg(path)};
}

// The checks that need no more than the file's directory entry (stat and access, which open
// nothing): a missing file, an empty one, and files or folders that cannot be written.
void checkEntry(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw DbError(DbError::FileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
    if (info.size() == 0)
        throw DbError(DbError::NotADatabase,
                      QStringLiteral("The file '%1' is empty: it holds no company data. A company "
                                     "file is never empty; restore it from a backup. The file "
                                     "was left as it is.")
                          .arg(path));
    if (!info.isWritable())
        throw DbError(DbError::ReadOnlyFile,
                      QStringLiteral("The file '%1' is read-only, so nothing could be saved in it. "
                                     "Ask whoever looks after the data folder to make it "
                                     "writable. Nothing was changed.")
                          .arg(path));
    const QFileInfo folder(info.absolutePath());
    if (!folder.isWritable())
        throw DbError(DbError::ReadOnlyFile,
                      QStringLiteral("The data folder '%1' is read-only, so the file '%2' cannot "
                                     "be shared from it (the database engine keeps its lock "
                                     "files beside it). Ask whoever looks after the data folder "
                                     "to make it writable. Nothing was changed.")
                          .arg(info.absolutePath(), info.fileName()));
}

void dropConnection(QSqlDatabase &db, const QString &connection)
{
    db.close();
    db = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection);
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
    else if (native == QLatin1String("8"))
        code = DbError::ReadOnlyFile;
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
    const QString path = DataFiles::pathOf(fileName);
    checkEntry(path);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    db.setDatabaseName(uriOf(path, "rw"));
    db.setConnectOptions(
        QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(m_busyTimeoutMsecs));
    if (!db.open()) {
        const QSqlError err = db.lastError();
        dropConnection(db, connection);
        throw DbError(
            DbError::FileNotFound,
            QStringLiteral("Could not open file '%1'. %2").arg(path, err.text()).trimmed());
    }
    ++m_openCount;
    const bool first = !isOpen(fileName);
    // The first statement reads the file's header: a foreign file is refused here.
    QSqlError refused;
    {
        QSqlQuery q(db);
        if (!q.exec(QStringLiteral("pragma journal_mode=WAL")))
            refused = q.lastError();
        else
            q.exec(QStringLiteral("pragma synchronous=FULL"));
    }
    if (refused.isValid()) {
        dropConnection(db, connection);
        if (refused.nativeErrorCode() == notADatabaseCode)
            throw first ? foreignFile(path)
                        : DbError(DbError::NotADatabase,
                                  QStringLiteral("The file '%1' is not a database this module "
                                                 "can read; the file was left as it is.")
                                      .arg(path));
        DbError error = errorFrom(refused);
        throw DbError(
            error.code(),
            QStringLiteral("The file '%1' could not be opened: %2").arg(path, error.text()));
    }
    // Tables, columns and indexes are checked once per file, on its first connection.
    if (first) {
        const QString schemaError = Schema::ensure(db, fileName);
        if (!schemaError.isEmpty()) {
            dropConnection(db, connection);
            throw DbError(
                DbError::NotADatabase,
                QStringLiteral("The file '%1' could not be prepared: %2").arg(path, schemaError));
        }
    }
    m_connections[fileName.toLower()].append(connection);
    return db;
}

void Databases::create(const QString &fileName)
{
    const QString path = QDir::current().absoluteFilePath(fileName);
    if (QFileInfo::exists(DataFiles::pathOf(fileName)))
        throw DbError(DbError::Generic,
                      QStringLiteral("The file '%1' is already there; it was left as it is.")
                          .arg(DataFiles::pathOf(fileName)));
    const QString connection = QStringLiteral("apdb-create:") + path;
    QString error;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(uriOf(path, "rwc"));
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI"));
        if (!db.open()) {
            error = db.lastError().text();
        } else {
            QSqlQuery q(db);
            if (!q.exec(QStringLiteral("pragma journal_mode=WAL")))
                error = q.lastError().text();
            q.finish();
            if (error.isEmpty())
                error = Schema::ensure(db, fileName);
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
    if (!error.isEmpty())
        throw DbError(DbError::Generic,
                      QStringLiteral("Could not create the file '%1': %2").arg(path, error));
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
    if (m_connections.value(fileName.toLower()).isEmpty())
        m_connections.remove(fileName.toLower());
}

void Databases::close(const QString &fileName)
{
    m_writes.remove(fileName.toLower());
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
    WriteTransaction tx(*this, fileName);
    QSqlQuery q(open(fileName));
    if (!q.exec(m_dialect->map(statement)))
        throw errorFrom(q.lastError(), statement);
    tx.commit();
}

void Databases::beginWrite(const QString &fileName, Commit commit, int waitMsecs)
{
    const QString key = fileName.toLower();
    if (m_writes.value(key).depth > 0) {
        ++m_writes[key].depth;
        return;
    }
    QSqlQuery q(open(fileName));
    const bool light = commit == Commit::Light;
    if (light)
        q.exec(QStringLiteral("pragma synchronous=NORMAL"));
    if (waitMsecs >= 0)
        q.exec(QStringLiteral("pragma busy_timeout=%1").arg(waitMsecs));
    const bool begun = q.exec(QStringLiteral("begin immediate"));
    const QSqlError error = q.lastError();
    if (waitMsecs >= 0)
        q.exec(QStringLiteral("pragma busy_timeout=%1").arg(m_busyTimeoutMsecs));
    if (!begun) {
        if (light)
            q.exec(QStringLiteral("pragma synchronous=FULL"));
        throw errorFrom(error, QStringLiteral("begin immediate"));
    }
    m_writes.insert(key, Write{1, false, light});
}

void Databases::endWrite(const QString &fileName, Write &write)
{
    const QString key = fileName.toLower();
    const bool light = write.light;
    const bool failed = write.failed;
    m_writes.remove(key);
    QSqlQuery q(open(fileName));
    QSqlError error;
    bool ok = true;
    if (!failed) {
        ok = q.exec(QStringLiteral("commit"));
        if (!ok) {
            error = q.lastError();
            q.exec(QStringLiteral("rollback")); // let go of the write lock whatever happened
        }
    } else {
        q.exec(QStringLiteral("rollback"));
    }
    if (light)
        q.exec(QStringLiteral("pragma synchronous=FULL"));
    if (!ok)
        throw errorFrom(error, QStringLiteral("commit"));
    if (failed)
        throw DbError(DbError::Generic, QStringLiteral("A part of the change failed, so none of "
                                                       "it was written."));
}

void Databases::commitWrite(const QString &fileName)
{
    const QString key = fileName.toLower();
    auto it = m_writes.find(key);
    if (it == m_writes.end() || it->depth == 0)
        throw DbError(3034, QStringLiteral("You tried to commit without a transaction."));
    if (--it->depth > 0)
        return;
    endWrite(fileName, *it);
}

void Databases::rollbackWrite(const QString &fileName)
{
    const QString key = fileName.toLower();
    auto it = m_writes.find(key);
    if (it == m_writes.end() || it->depth == 0)
        return;
    it->failed = true;
    if (--it->depth > 0)
        return;
    try {
        endWrite(fileName, *it);
    } catch (const DbError &) {
        // The rollback was asked for: its own report is the caller's.
    }
}

bool Databases::isWriting(const QString &fileName) const
{
    return m_writes.value(fileName.toLower()).depth > 0;
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

WriteTransaction::WriteTransaction(Databases &dbs, const QString &fileName,
                                   Databases::Commit commit, int waitMsecs) :
    m_dbs(dbs),
    m_fileName(fileName)
{
    m_dbs.beginWrite(m_fileName, commit, waitMsecs);
}

WriteTransaction::~WriteTransaction()
{
    if (!m_done)
        m_dbs.rollbackWrite(m_fileName);
}

void WriteTransaction::commit()
{
    m_done = true;
    m_dbs.commitWrite(m_fileName);
}
