#include "data/RecordPass.h"

#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Dialect.h"

#include <QSqlError>
#include <QThread>

#include <algorithm>
#include <limits>

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

void RecordPass::inBatches(const QString &table, const QString &key, const QString &write,
                           const std::function<void(const Batch &)> &starting,
                           const std::function<void(const Batch &)> &written)
{
    // Ordered as the engine's index of the key is, so that a batch reads its keys from the index
    // without sorting every key after it.
    QSqlQuery keys = prepare(QStringLiteral("select %1 from %2 where %1 > ? order by %3 limit ?")
                                 .arg(key, table, m_dbs.dialect().orderTerm(key)));
    QSqlQuery writer = prepare(write);
    qlonglong after = std::numeric_limits<qlonglong>::min();
    int size = firstBatch;
    for (;;) {
        const Batch batch = nextBatch(keys, after, size);
        if (batch.count == 0)
            return;
        starting(batch);
        size = nextSize(size, writeBatch(writer, batch));
        written(batch);
        after = batch.last;
        // Another user's save waiting for the lock takes it now.
        if (const int rest = m_dbs.dialect().passRestMsecs(); rest > 0)
            QThread::msleep(static_cast<unsigned long>(rest));
    }
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

qint64 RecordPass::writeBatch(QSqlQuery &write, const Batch &batch)
{
    // Another user's save can hold the lock longer than one wait of the engine (a durable commit
    // on a busy disk): the batch waits again rather than the pass ending half done.
    for (int tries = 1;; ++tries) {
        try {
            return writeOnce(write, batch);
        } catch (const DbError &error) {
            if (error.code() != DbError::RecordLocked || tries >= lockTries)
                throw;
        }
    }
}

qint64 RecordPass::writeOnce(QSqlQuery &write, const Batch &batch)
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
        write.bindValue(0, batch.first);
        write.bindValue(1, batch.last);
        if (!write.exec())
            throw Databases::errorFrom(write.lastError(), write.lastQuery());
        if (!control.exec(QStringLiteral("commit")))
            throw Databases::errorFrom(control.lastError(), QStringLiteral("commit"));
        return held.nsecsElapsed();
    } catch (const DbError &) {
        control.exec(QStringLiteral("rollback")); // lets go of the write lock whatever happened
        throw;
    }
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
