#include "data/Databases.h"

#include "data/DbError.h"
#include "data/Dialect.h"

#include <QSqlError>
#include <QSqlQuery>

namespace {
int s_instance = 0;
// Enough for a file's main connection and the readers of a screen's lookup and lists.
constexpr qsizetype maxSparesPerFile = 4;
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

void Databases::create(const QString &fileName)
{
    Dialect::forDataFolder()->create(fileName);
}

bool Databases::exists(const QString &fileName) const
{
    // A connection kept aside is out of any transaction, so a question on it disturbs nothing.
    for (const QStringList &names : m_spares) {
        if (names.isEmpty())
            continue;
        QSqlDatabase db = QSqlDatabase::database(names.first(), false);
        return m_dialect->existsThrough(db, fileName);
    }
    return m_dialect->exists(fileName);
}

QSqlDatabase Databases::open(const QString &fileName)
{
    return connection(fileName, {});
}

QSqlDatabase Databases::openReader(const QString &fileName, const QString &tag)
{
    return connection(fileName, tag);
}

QSqlDatabase Databases::connection(const QString &fileName, const QString &tag)
{
    const QString use = connectionName(fileName, tag);
    const QString served = m_servedBy.value(use);
    if (!served.isEmpty())
        return QSqlDatabase::database(served);
    const QString file = fileName.toLower();
    QString name = takeSpare(file);
    QSqlDatabase db;
    if (!name.isEmpty()) {
        db = QSqlDatabase::database(name);
    } else {
        // A connection kept aside keeps its first name, so a new one may need another.
        name = use;
        for (int n = 2; QSqlDatabase::contains(name); ++n)
            name = use + QStringLiteral("#%1").arg(n);
        db = m_dialect->connect(fileName, name, m_busyTimeoutMsecs,
                                !isOpen(fileName) && spareCount(fileName) == 0);
        ++m_openCount;
    }
    m_servedBy.insert(use, name);
    m_connections[file].append(name);
    return db;
}

QString Databases::takeSpare(const QString &file)
{
    while (!m_spares.value(file).isEmpty()) {
        const QString name = m_spares[file].takeLast();
        if (m_spares[file].isEmpty())
            m_spares.remove(file);
        // The server may have ended the session while it was kept (a restart, an idle limit):
        // a question costs far less than a new connection and finds that out. Only this process
        // ends its connections to a file.
        if (!m_dialect->keepsConnectionsForReuse())
            return name;
        bool alive = false;
        {
            QSqlQuery q(QSqlDatabase::database(name));
            alive = q.exec(QStringLiteral("select 1"));
        }
        if (alive)
            return name;
        drop(name);
    }
    return {};
}

void Databases::closeReader(const QString &fileName, const QString &tag)
{
    const QString name = m_servedBy.take(connectionName(fileName, tag));
    if (!name.isEmpty())
        release(fileName, name);
}

void Databases::release(const QString &fileName, const QString &connection)
{
    const QString file = fileName.toLower();
    m_connections[file].removeAll(connection);
    if (m_connections.value(file).isEmpty())
        m_connections.remove(file);
    const bool inUse = m_connections.contains(file);
    // Only a connection out of any transaction is kept: the next use starts clean.
    bool keep = m_writes.value(file).depth == 0 && m_spares.value(file).size() < maxSparesPerFile;
    if (keep && !m_dialect->keepsConnectionsForReuse()) {
        QSqlDatabase db = QSqlDatabase::database(connection, false);
        keep = inUse && m_dialect->keepsConnectionsWhileInUse() && m_dialect->holdsNothing(db);
    }
    if (keep)
        m_spares[file].append(connection);
    else
        drop(connection);
    // A file let go of entirely is left to others as if this process had never opened it: a
    // utility may then need it to itself, or put another file in its place.
    if (!inUse && !m_dialect->keepsConnectionsForReuse())
        dropSpares(file);
}

void Databases::dropSpares(const QString &file)
{
    const QStringList names = m_spares.take(file);
    for (const QString &name : names)
        drop(name);
}

void Databases::drop(const QString &connection)
{
    m_prepared.remove(connection); // its statements go before it
    {
        QSqlDatabase db = QSqlDatabase::database(connection, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
}

void Databases::close(const QString &fileName)
{
    const QString file = fileName.toLower();
    const QStringList names = m_connections.value(file);
    for (auto it = m_servedBy.begin(); it != m_servedBy.end();)
        it = names.contains(it.value()) ? m_servedBy.erase(it) : std::next(it);
    for (const QString &name : names)
        release(fileName, name);
    m_writes.remove(file);
}

void Databases::closeAll()
{
    const QStringList files = m_connections.keys();
    for (const QString &file : files)
        close(file);
    const QStringList withSpares = m_spares.keys();
    for (const QString &file : withSpares)
        dropSpares(file);
}

bool Databases::isOpen(const QString &fileName) const
{
    return !m_connections.value(fileName.toLower()).isEmpty();
}

int Databases::spareCount(const QString &fileName) const
{
    return int(m_spares.value(fileName.toLower()).size());
}

QSqlQuery Databases::select(const QString &fileName, const QString &statement)
{
    const QString sql = m_dialect->map(statement);
    for (int attempt = 1;; ++attempt) {
        QSqlQuery q(open(fileName));
        // A read the caller walks while running other statements must then be taken whole.
        q.setForwardOnly(m_dialect->readsStayOpenBetweenStatements());
        if (q.exec(sql))
            return q;
        const QSqlError error = q.lastError();
        q = QSqlQuery();
        if (attempt > 1 || !renewIfGone(fileName))
            throw errorFrom(error, statement);
    }
}

QSqlQuery &Databases::prepared(const QString &fileName, const QString &statement)
{
    QSqlDatabase db = open(fileName);
    std::shared_ptr<QSqlQuery> &kept = m_prepared[db.connectionName()][statement];
    if (!kept) {
        auto q = std::make_shared<QSqlQuery>(db);
        // A kept statement reads a row or writes: a read the server would hand over row by row
        // would keep the connection busy until its next statement, so it is taken whole there.
        q->setForwardOnly(m_dialect->readsStayOpenBetweenStatements());
        if (!q->prepare(statement)) {
            const QSqlError error = q->lastError();
            m_prepared[db.connectionName()].remove(statement);
            throw errorFrom(error, statement);
        }
        kept = std::move(q);
    }
    return *kept;
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
    const bool light = commit == Commit::Light;
    QSqlError error;
    QString failed;
    // Nothing is written yet: a connection the server ended can be replaced and the start tried
    // again.
    if (!runBegin(fileName, light, waitMsecs, error, failed) && renewIfGone(fileName) &&
        runBegin(fileName, light, waitMsecs, error, failed))
        failed.clear();
    if (!failed.isEmpty())
        throw errorFrom(error, failed);
    m_writes.insert(key, Write{1, false, light, waitMsecs});
}

bool Databases::runBegin(const QString &fileName, bool light, int waitMsecs, QSqlError &error,
                         QString &failed)
{
    QSqlQuery q(open(fileName));
    failed.clear();
    for (const QString &statement : m_dialect->beginWrite(light, waitMsecs, m_busyTimeoutMsecs)) {
        if (!q.exec(statement)) {
            error = q.lastError();
            failed = statement;
            break;
        }
    }
    if (failed.isEmpty())
        return true;
    q.exec(QStringLiteral("rollback"));
    for (const QString &statement : m_dialect->afterWrite(light, waitMsecs, m_busyTimeoutMsecs))
        q.exec(statement);
    return false;
}

bool Databases::renewIfGone(const QString &fileName, const QString &tag)
{
    const QString use = connectionName(fileName, tag);
    const QString name = m_servedBy.value(use);
    if (name.isEmpty() || (tag.isEmpty() && isWriting(fileName)))
        return false;
    bool alive = false;
    {
        QSqlQuery q(QSqlDatabase::database(name, false));
        alive = q.exec(QStringLiteral("select 1"));
    }
    if (alive)
        return false;
    const QString file = fileName.toLower();
    m_servedBy.remove(use);
    m_connections[file].removeAll(name);
    if (m_connections.value(file).isEmpty())
        m_connections.remove(file);
    drop(name);
    return true;
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
