#include "data/RecordPass.h"

#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Dialect.h"

#include <QSqlError>
#include <QThread>

#include <algorithm>
#include <limits>
#include <utility>

RecordPass::RecordPass(Databases &dbs, const QString &fileName) : m_dbs(dbs), m_fileName(fileName)
{
    QSqlDatabase db = m_dbs.open(fileName);
    QSqlQuery setup(db);
    for (const QString &statement : m_dbs.dialect().passStart())
        setup.exec(statement);
    // The pass's settings already keep each commit from waiting for the disk.
    m_begin = m_dbs.dialect().beginWrite(false, -1, m_dbs.busyTimeoutMsecs());
}

RecordPass::~RecordPass()
{
    QSqlQuery q(m_dbs.open(m_fileName));
    for (const QString &statement : m_dbs.dialect().passEnd())
        q.exec(statement);
}

QSqlQuery RecordPass::prepare(const QString &statement)
{
    QSqlQuery q(m_dbs.open(m_fileName));
    if (!q.prepare(statement))
        throw Databases::errorFrom(q.lastError(), statement);
    return q;
}

namespace {

// The statement that sets the columns of every record of a range of keys (bound first and last).
QString settingStatement(const QString &table, const QString &key,
                         const QList<RecordPass::Assignment> &assignments)
{
    QStringList sets;
    for (const RecordPass::Assignment &a : assignments)
        sets << a.column + QStringLiteral(" = ") + a.value;
    return QStringLiteral("update %1 set %2 where %3 between ? and ?")
        .arg(table, sets.join(QStringLiteral(", ")), key);
}

} // namespace

// A batch's values worked out ahead of its write, in a table of the connection's own, and what
// the file's version was when they were.
class RecordPass::ValuesAhead {
public:
    ValuesAhead(RecordPass &pass, const QString &table, const QString &key,
                const QList<Assignment> &assignments) :
        m_pass(pass)
    {
        QStringList columns{QStringLiteral("r")}, values, sets;
        for (qsizetype i = 0; i < assignments.size(); ++i) {
            const QString column = QStringLiteral("v%1").arg(i);
            columns << column;
            values << assignments[i].value;
            sets << assignments[i].column + QStringLiteral(" = p.") + column;
        }
        const QString rowId = pass.m_dbs.dialect().rowIdColumn();
        run(QStringLiteral("drop table if exists temp.pass_values"));
        // No key of its own: the write reads it in order and finds each row by its place.
        run(QStringLiteral("create temp table pass_values (%1)").arg(columns.join(", ")));
        m_clear = pass.prepare(QStringLiteral("delete from temp.pass_values"));
        m_workOut = pass.prepare(
            QStringLiteral("insert into temp.pass_values select %1, %2 from %3 where %4 between ? "
                           "and ?")
                .arg(rowId, values.join(QStringLiteral(", ")), table, key));
        m_version = pass.prepare(QStringLiteral("pragma data_version"));
        m_write = pass.prepare(QStringLiteral("update %1 set %2 from temp.pass_values p where "
                                              "%1.%3 = p.r")
                                   .arg(table, sets.join(QStringLiteral(", ")), rowId));
        m_again = pass.prepare(settingStatement(table, key, assignments));
    }
    ~ValuesAhead()
    {
        m_clear.finish();
        m_workOut.finish();
        m_write.finish();
        m_again.finish();
        QSqlQuery(m_pass.m_dbs.open(m_pass.m_fileName))
            .exec(QStringLiteral("drop table if exists temp.pass_values"));
    }
    ValuesAhead(const ValuesAhead &) = delete;
    ValuesAhead &operator=(const ValuesAhead &) = delete;

    // Outside any write transaction: the batch's values as the file holds them now.
    void workOut(const Batch &batch)
    {
        run(QStringLiteral("begin"));
        try {
            if (!m_clear.exec())
                throw Databases::errorFrom(m_clear.lastError(), m_clear.lastQuery());
            exec(m_workOut, batch);
            m_workedOutAt = version();
            run(QStringLiteral("commit"));
        } catch (const DbError &) {
            QSqlQuery(m_pass.m_dbs.open(m_pass.m_fileName)).exec(QStringLiteral("rollback"));
            throw;
        }
    }
    // In the batch's write transaction: the values worked out, or, when another user wrote to
    // the file since, the values worked out again now.
    void write(const Batch &batch)
    {
        if (version() == m_workedOutAt) {
            if (!m_write.exec())
                throw Databases::errorFrom(m_write.lastError(), m_write.lastQuery());
        } else {
            exec(m_again, batch);
        }
    }

private:
    // The number the engine gives the file's contents as this connection sees them; it changes
    // only when another connection commits.
    qlonglong version()
    {
        if (!m_version.exec() || !m_version.next())
            throw Databases::errorFrom(m_version.lastError(), m_version.lastQuery());
        const qlonglong v = m_version.value(0).toLongLong();
        m_version.finish();
        return v;
    }
    void run(const QString &statement)
    {
        // Run as it is: the engine's transaction statements are not prepared.
        QSqlQuery q(m_pass.m_dbs.open(m_pass.m_fileName));
        if (!q.exec(statement))
            throw Databases::errorFrom(q.lastError(), statement);
    }

    RecordPass &m_pass;
    QSqlQuery m_clear, m_workOut, m_version, m_write, m_again;
    qlonglong m_workedOutAt = -1;
};

QSqlQuery RecordPass::keysAfter(const QString &table, const QString &key)
{
    // Ordered as the engine's index of the key is, so that a batch reads its keys from the index
    // without sorting every key after it.
    return prepare(QStringLiteral("select %1 from %2 where %1 > ? order by %3 limit ?")
                       .arg(key, table, m_dbs.dialect().orderTerm(key)));
}

void RecordPass::inBatches(const QString &table, const QString &key, const QString &write,
                           const std::function<void(const Batch &)> &starting,
                           const std::function<void(const Batch &)> &written)
{
    QSqlQuery keys = keysAfter(table, key);
    QSqlQuery writer = prepare(write);
    int size = firstBatch;
    bool first = true;
    for (Batch batch = nextBatch(keys, std::numeric_limits<qlonglong>::min(), size);
         batch.count > 0; batch = nextBatch(keys, batch.last, size)) {
        // Another user's save waiting for the lock the last batch held takes it now, while the
        // pass sleeps (not while it works, which on a busy machine can leave the save no turn).
        if (!std::exchange(first, false))
            rest(0);
        starting(batch);
        size = nextSize(size, writeBatch([&] { exec(writer, batch); }));
        written(batch);
    }
}

void RecordPass::inBatches(const QString &table, const QString &key,
                           const QList<Assignment> &assignments,
                           const std::function<void(const Batch &)> &starting,
                           const std::function<void(const Batch &)> &written)
{
    // Where the engine locks only the rows a batch writes (it needs no rest), the batch is one
    // statement that works out and writes its values at once.
    if (m_dbs.dialect().passRestMsecs() <= 0) {
        inBatches(table, key, settingStatement(table, key, assignments), starting, written);
        return;
    }
    ValuesAhead ahead(*this, table, key, assignments);
    QSqlQuery keys = keysAfter(table, key);
    int size = firstBatch;
    QElapsedTimer sinceWrite;
    for (Batch batch = nextBatch(keys, std::numeric_limits<qlonglong>::min(), size);
         batch.count > 0; batch = nextBatch(keys, batch.last, size)) {
        QElapsedTimer took;
        took.start();
        ahead.workOut(batch); // another user's save waiting for the lock takes it meanwhile
        const qint64 workedOut = took.nsecsElapsed();
        starting(batch);
        // Working the values out was the rest; a batch too small for that sleeps the remainder.
        if (sinceWrite.isValid())
            rest(sinceWrite.nsecsElapsed());
        // Sized by the time both took: the write works the values out again when another user
        // wrote in between, and then holds the lock that long.
        size = nextSize(size, workedOut + writeBatch([&] { ahead.write(batch); }));
        sinceWrite.start();
        written(batch);
    }
}

void RecordPass::rest(qint64 restedNsecs) const
{
    const qint64 rest = m_dbs.dialect().passRestMsecs() * qint64(1000000) - restedNsecs;
    if (rest > 0)
        QThread::usleep(static_cast<unsigned long>((rest + 999) / 1000));
}

RecordPass::Batch RecordPass::nextBatch(QSqlQuery &keys, qlonglong after, int count)
{
    keys.bindValue(0, after);
    keys.bindValue(1, count);
    if (!keys.exec())
        throw Databases::errorFrom(keys.lastError(), keys.lastQuery());
    Batch batch;
    while (keys.next()) {
        const qlonglong key = keys.value(0).toLongLong();
        if (batch.count++ == 0)
            batch.first = key;
        batch.last = key;
    }
    keys.finish();
    return batch;
}

qint64 RecordPass::writeBatch(const std::function<void()> &write)
{
    // Another user's save can hold the lock longer than one wait of the engine (a durable commit
    // on a busy disk): the batch waits again rather than the pass ending half done.
    for (int tries = 1;; ++tries) {
        try {
            return writeOnce(write);
        } catch (const DbError &error) {
            if (error.code() != DbError::RecordLocked || tries >= lockTries)
                throw;
        }
    }
}

qint64 RecordPass::writeOnce(const std::function<void()> &write)
{
    QElapsedTimer held;
    // Transaction statements are run as they are: the server engine prepares no such statement.
    QSqlQuery control(m_dbs.open(m_fileName));
    for (const QString &statement : m_begin) {
        if (!control.exec(statement)) {
            const QSqlError error = control.lastError();
            control.exec(QStringLiteral("rollback"));
            throw Databases::errorFrom(error, statement);
        }
    }
    held.start(); // a wait for another user's lock is behind (on the files) or in the write
    try {
        write();
        if (!control.exec(QStringLiteral("commit")))
            throw Databases::errorFrom(control.lastError(), QStringLiteral("commit"));
        return held.nsecsElapsed();
    } catch (const DbError &) {
        control.exec(QStringLiteral("rollback")); // lets go of the write lock whatever happened
        throw;
    }
}

void RecordPass::exec(QSqlQuery &statement, const Batch &batch)
{
    statement.bindValue(0, batch.first);
    statement.bindValue(1, batch.last);
    if (!statement.exec())
        throw Databases::errorFrom(statement.lastError(), statement.lastQuery());
}

int RecordPass::nextSize(int size, qint64 tookNsecs)
{
    // Aimed at the batch's time, growing or shrinking at most fourfold a batch so that one
    // slow or quick moment of the machine does not swing it.
    const double aim = batchMsecs * 1e6;
    const double scaled = size * aim / double(std::max<qint64>(tookNsecs, 1));
    const double bounded = std::clamp(scaled, size / 4.0, size * 4.0);
    return std::clamp(int(bounded), 1, largestBatch);
}
