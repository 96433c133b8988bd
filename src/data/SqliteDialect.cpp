#include "data/SqliteDialect.h"

#include "common/DataFiles.h"
#include "data/Databases.h"
#include "data/DbError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

#include <sqlite3.h>

#include <chrono>
#include <thread>

namespace {

// How a connection waits for another connection's lock. The engine's own wait sleeps longer and
// longer between its looks at the lock (up to a tenth of a second), so a user waiting while a
// pass writes batch after batch, resting a moment between them, would mostly look while a batch
// holds the lock. Looking every millisecond, the user gets in at the pass's next rest.
struct LockWait {
    int msecs = 0;
    std::chrono::steady_clock::time_point since;
};

int waitForLock(void *wait, int tries)
{
    auto *w = static_cast<LockWait *>(wait);
    const auto now = std::chrono::steady_clock::now();
    if (tries == 0)
        w->since = now;
    if (now - w->since >= std::chrono::milliseconds(w->msecs))
        return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return 1;
}

// lock_wait(msecs): the connection's wait for a lock from now on, as the engine's busy_timeout
// pragma sets it (which would put the engine's own way of waiting back).
void setLockWait(sqlite3_context *context, int, sqlite3_value **values)
{
    auto *w = static_cast<LockWait *>(sqlite3_user_data(context));
    w->msecs = sqlite3_value_int(values[0]);
    sqlite3_result_int(context, w->msecs);
}

void waitFinely(QSqlDatabase &db, int msecs)
{
    const QVariant handle = db.driver()->handle();
    if (qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return;
    sqlite3 *connection = *static_cast<sqlite3 *const *>(handle.data());
    auto *wait = new LockWait{msecs, {}};
    // The function owns the wait; the engine lets go of both with the connection (or at once,
    // when the function cannot be made: the engine's own way of waiting then stays).
    if (sqlite3_create_function_v2(connection, "lock_wait", 1, SQLITE_UTF8, wait, setLockWait,
                                   nullptr, nullptr,
                                   [](void *w) { delete static_cast<LockWait *>(w); }) == SQLITE_OK)
        sqlite3_busy_handler(connection, waitForLock, wait);
}

// SQLite's answer for a file that is not one of its databases.
const QLatin1String notADatabaseCode("26");

QString uriOf(const QString &path, const char *mode)
{
    // The path travels in a URI, so characters such as '?', '#' and '%' are escaped.
    return QStringLiteral("file:%1?mode=%2")
        .arg(QString::fromLatin1(QUrl::toPercentEncoding(path, "/")), QLatin1String(mode));
}

// What a file the engine refused holds. Only called when no connection to the file is open in
// this process (the engine refused it, so none can be), never before: closing any descriptor
// of a database file drops every lock this process holds on it.
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

QString SqliteDialect::map(const QString &statement) const
{
    return mapDesktopStatement(statement);
}

QString SqliteDialect::placeOf(const QString &fileName) const
{
    return DataFiles::pathOf(fileName);
}

bool SqliteDialect::exists(const QString &fileName) const
{
    return QFileInfo::exists(DataFiles::pathOf(fileName));
}

bool SqliteDialect::holdsNothing(QSqlDatabase &db) const
{
    const QVariant handle = db.driver() ? db.driver()->handle() : QVariant();
    if (qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return false;
    sqlite3 *connection = *static_cast<sqlite3 *const *>(handle.data());
    if (!connection || !sqlite3_get_autocommit(connection))
        return false;
    // A statement stepped and not yet reset holds a read transaction (and so the snapshot that
    // keeps a checkpoint from finishing).
    for (sqlite3_stmt *statement = sqlite3_next_stmt(connection, nullptr); statement;
         statement = sqlite3_next_stmt(connection, statement))
        if (sqlite3_stmt_busy(statement))
            return false;
    return true;
}

QSqlDatabase SqliteDialect::connect(const QString &fileName, const QString &connection,
                                    int busyMsecs, bool first) const
{
    const QString path = DataFiles::pathOf(fileName);
    checkEntry(path);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    db.setDatabaseName(uriOf(path, "rw"));
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(busyMsecs));
    if (!db.open()) {
        const QSqlError err = db.lastError();
        dropConnection(db, connection);
        throw DbError(
            DbError::FileNotFound,
            QStringLiteral("Could not open file '%1'. %2").arg(path, err.text()).trimmed());
    }
    waitFinely(db, busyMsecs);
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
        DbError error = Databases::errorFrom(refused);
        throw DbError(
            error.code(),
            QStringLiteral("The file '%1' could not be opened: %2").arg(path, error.text()));
    }
    // Tables, columns and indexes are checked once per file, on its first connection.
    if (first) {
        const QString schemaError = Schema::ensure(db, fileName, *this);
        if (!schemaError.isEmpty()) {
            dropConnection(db, connection);
            throw DbError(
                DbError::NotADatabase,
                QStringLiteral("The file '%1' could not be prepared: %2").arg(path, schemaError));
        }
    }
    return db;
}

void SqliteDialect::create(const QString &fileName) const
{
    const QString path = QDir::current().absoluteFilePath(fileName);
    if (exists(fileName))
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
                error = Schema::ensure(db, fileName, *this);
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
    if (!error.isEmpty())
        throw DbError(DbError::Generic,
                      QStringLiteral("Could not create the file '%1': %2").arg(path, error));
}

QStringList SqliteDialect::beginWrite(bool light, int waitMsecs, int) const
{
    QStringList statements;
    if (light)
        statements << QStringLiteral("pragma synchronous=NORMAL");
    if (waitMsecs >= 0)
        statements << QStringLiteral("select lock_wait(%1)").arg(waitMsecs);
    // The file's write lock at once, so that a file held by another user fails at the start.
    statements << QStringLiteral("begin immediate");
    return statements;
}

QStringList SqliteDialect::afterWrite(bool light, int waitMsecs, int busyMsecs) const
{
    QStringList statements;
    if (waitMsecs >= 0)
        statements << QStringLiteral("select lock_wait(%1)").arg(busyMsecs);
    if (light)
        statements << QStringLiteral("pragma synchronous=FULL");
    return statements;
}

QStringList SqliteDialect::passStart() const
{
    // The pass writes the same pages again and again: copying them back to the file every
    // 10,000 records rather than every 1,000 writes each page back fewer times.
    return {QStringLiteral("pragma synchronous=NORMAL"),
            QStringLiteral("pragma wal_autocheckpoint=10000")};
}

QStringList SqliteDialect::passEnd() const
{
    // Everything written in the pass reaches the disk now.
    return {QStringLiteral("pragma synchronous=FULL"),
            QStringLiteral("pragma wal_autocheckpoint=1000"),
            QStringLiteral("pragma wal_checkpoint(TRUNCATE)")};
}

QString SqliteDialect::columnType(Schema::Kind kind) const
{
    using K = Schema::Kind;
    switch (kind) {
    case K::Long:
    case K::Date:
        return QStringLiteral("INTEGER");
    case K::Number:
        return QStringLiteral("DOUBLE");
    case K::Text:
        // Compared and ordered without regard to case, as the desktop engine did, with the
        // engine's own NOCASE (so the plain sqlite3 program reads the files too). It folds only
        // the ASCII letters: "é" and "É" stay different, and both sort after every ASCII letter.
        return QStringLiteral("TEXT COLLATE NOCASE");
    case K::Memo:
        return QStringLiteral("TEXT");
    case K::Currency:
        return QStringLiteral("CURRENCY");
    }
    return QStringLiteral("TEXT");
}

QStringList SqliteDialect::indexNames(QSqlDatabase &db) const
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    QStringList names;
    if (!q.exec(QStringLiteral("select name from sqlite_master where type = 'index'")))
        return names;
    while (q.next())
        names << q.value(0).toString();
    return names;
}
