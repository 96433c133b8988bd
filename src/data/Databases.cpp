#include "data/Databases.h"

#include "data/DbError.h"
#include "data/Dialect.h"

#include <QSqlError>
#include <QSqlQuery>

namespace {
int s_instance = 0;
} // namespace

Databases::Databases(std::unique_ptr<Dialect> dialect) :
    m_dialect(dialect ? std::move(dialect) : Dialect::forDataFolder()),
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
    // SQLite gives its result codes, PostgreSQL its five-character states.
    if (native == QLatin1String("5") || native == QLatin1String("6") ||
        native == QLatin1String("55P03") || native == QLatin1String("40P01") ||
        native == QLatin1String("40001") ||
        text.contains(QLatin1String("locked"), Qt::CaseInsensitive))
        code = DbError::RecordLocked;
    else if (native == QLatin1String("42P01") ||
             text.contains(QLatin1String("no such table"), Qt::CaseInsensitive))
        code = DbError::NoSuchTable;
    else if (native == QLatin1String("42703") ||
             text.contains(QLatin1String("no such column"), Qt::CaseInsensitive))
        code = DbError::NoSuchColumn;
    else if (native == QLatin1String("8") || native == QLatin1String("25006"))
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
    QSqlDatabase db = m_dialect->connect(fileName, connection, m_busyTimeoutMsecs,
                                         !isOpen(fileName));
    ++m_openCount;
    m_connections[fileName.toLower()].append(connection);
    return db;
}

void Databases::create(const QString &fileName)
{
    Dialect::forDataFolder()->create(fileName);
}

bool Databases::exists(const QString &fileName) const
{
    return m_dialect->exists(fileName);
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
    // A read the caller walks while running other statements must then be taken whole.
    q.setForwardOnly(m_dialect->readsStayOpenBetweenStatements());
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
    QSqlError error;
    QString failed;
    for (const QString &statement : m_dialect->beginWrite(light, waitMsecs, m_busyTimeoutMsecs)) {
        if (!q.exec(statement)) {
            error = q.lastError();
            failed = statement;
            break;
        }
    }
    if (!failed.isEmpty()) {
        q.exec(QStringLiteral("rollback"));
        for (const QString &statement : m_dialect->afterWrite(light, waitMsecs, m_busyTimeoutMsecs))
            q.exec(statement);
        throw errorFrom(error, failed);
    }
    m_writes.insert(key, Write{1, false, light, waitMsecs});
}

void Databases::endWrite(const QString &fileName, Write &write)
{
    const QString key = fileName.toLower();
    const Write ended = write;
    m_writes.remove(key);
    QSqlQuery q(open(fileName));
    QSqlError error;
    bool ok = true;
    if (!ended.failed) {
        ok = q.exec(QStringLiteral("commit"));
        if (!ok) {
            error = q.lastError();
            q.exec(QStringLiteral("rollback")); // let go of the write lock whatever happened
        }
    } else {
        q.exec(QStringLiteral("rollback"));
    }
    for (const QString &statement :
         m_dialect->afterWrite(ended.light, ended.waitMsecs, m_busyTimeoutMsecs))
        q.exec(statement);
    if (!ok)
        throw errorFrom(error, QStringLiteral("commit"));
    if (ended.failed)
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
