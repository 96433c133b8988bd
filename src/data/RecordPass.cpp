#include "data/RecordPass.h"

#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Dialect.h"

#include <QSqlError>
#include <QThread>

#include <limits>

RecordPass::RecordPass(Databases &dbs, const QString &fileName) : m_dbs(dbs), m_fileName(fileName)
{
    QSqlDatabase db = m_dbs.open(fileName);
    QSqlQuery setup(db);
    for (const QString &statement : m_dbs.dialect().passStart())
        setup.exec(statement);
    // Neither a light commit nor a wait of its own is asked for: one statement begins.
    m_begin = m_dbs.dialect().beginWrite(false, -1, m_dbs.busyTimeoutMsecs()).front();
    m_sinceRest.start();
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

void RecordPass::exec(QSqlQuery &query, const std::vector<QVariant> &values)
{
    for (size_t i = 0; i < values.size(); ++i)
        query.bindValue(static_cast<int>(i), values[i]);
    if (!query.exec())
        throw Databases::errorFrom(query.lastError(), query.lastQuery());
}

void RecordPass::writeRecord(QSqlQuery &write, const std::vector<QVariant> &values)
{
    if (m_sinceRest.elapsed() >= 8) {
        QThread::msleep(2);
        m_sinceRest.restart();
    }
    // Another user's save can hold the lock longer than one wait of the engine (a durable commit
    // on a busy disk): the record waits again rather than the pass ending half done.
    for (int tries = 1;; ++tries) {
        try {
            writeOnce(write, values);
            return;
        } catch (const DbError &error) {
            if (error.code() != DbError::RecordLocked || tries >= lockTries)
                throw;
        }
    }
}

void RecordPass::writeOnce(QSqlQuery &write, const std::vector<QVariant> &values)
{
    // Transaction statements are run as they are: the server engine prepares no such statement.
    QSqlQuery control(m_dbs.open(m_fileName));
    if (!control.exec(m_begin))
        throw Databases::errorFrom(control.lastError(), m_begin);
    try {
        exec(write, values);
        if (!control.exec(QStringLiteral("commit")))
            throw Databases::errorFrom(control.lastError(), QStringLiteral("commit"));
    } catch (const DbError &) {
        control.exec(QStringLiteral("rollback")); // lets go of the write lock whatever happened
        throw;
    }
}

QVariant RecordPass::scalar(QSqlQuery &read, const std::vector<QVariant> &values)
{
    exec(read, values);
    const QVariant value = read.next() ? read.value(0) : QVariant();
    read.finish();
    return value;
}

std::vector<qlonglong> RecordPass::keysAfter(const QString &table, const QString &key,
                                             qlonglong after, int count)
{
    QSqlQuery q = prepare(
        QStringLiteral("select %1 from %2 where %1 > ? order by %1 limit ?").arg(key, table));
    exec(q, {after, count});
    std::vector<qlonglong> keys;
    while (q.next())
        keys.push_back(q.value(0).toLongLong());
    q.finish();
    return keys;
}

void RecordPass::forEachKey(const QString &table, const QString &key,
                            const std::function<void(qlonglong)> &work)
{
    qlonglong after = std::numeric_limits<qlonglong>::min();
    for (;;) {
        const std::vector<qlonglong> keys = keysAfter(table, key, after, 1000);
        if (keys.empty())
            return;
        for (const qlonglong k : keys)
            work(k);
        after = keys.back();
    }
}
