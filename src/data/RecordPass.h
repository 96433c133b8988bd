#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QSqlQuery>
#include <QString>
#include <QStringList>

#include <functional>

class Databases;

// A pass over every record of a table that writes the records in batches, each batch one
// statement over a range of keys in a transaction of its own. A batch holds the write lock for a
// few milliseconds at most: its size follows the time the batches before it took. Between two
// batches the pass rests outside any transaction where a batch locks the whole file, so that
// another user's save waiting for the lock gets in; that user waits one batch at most. Where the
// values written take work to find (sums over other tables), that work is done before the batch
// takes the lock, and is the rest. Each batch commits without waiting for the disk (a power cut
// can lose the last batches written, never part of one, and never harms the file); the end of the
// pass makes everything written durable. A pass stopped part-way leaves whole batches written and
// the rest as they were.
class RecordPass {
public:
    // How many times one batch waits for another user's lock (each wait as long as a statement
    // waits) before the pass gives up.
    static constexpr int lockTries = 20;
    // The time a batch aims to hold the write lock (the rest after it is the engine's).
    static constexpr int batchMsecs = 8;
    // The sizes a batch may take, in records (the largest lets a batch of quick writes, such as
    // zeroing a total, last its whole time).
    static constexpr int firstBatch = 32;
    static constexpr int largestBatch = 16384;

    // A column a pass sets and the expression it sets it to, worked out on the row being written
    // (named by the table's name); it may read other tables.
    struct Assignment {
        QString column;
        QString value;
    };

    // One batch: the first and last key of the range it writes, and how many records it holds.
    struct Batch {
        qlonglong first = 0;
        qlonglong last = 0;
        int count = 0;
    };

    RecordPass(Databases &dbs, const QString &fileName);
    ~RecordPass();
    RecordPass(const RecordPass &) = delete;
    RecordPass &operator=(const RecordPass &) = delete;

    // Runs `write` (a statement taking the first and the last key of a range, in that order)
    // over every key of the table, a batch of keys in order at a time. `starting` hears of each
    // batch before it is written, `written` after it was committed.
    void inBatches(const QString &table, const QString &key, const QString &write,
                   const std::function<void(const Batch &)> &starting,
                   const std::function<void(const Batch &)> &written);
    // The same for statements that set columns to values worked out from other tables. Where a
    // batch locks the whole file, the batch's values are worked out first, outside any write
    // transaction, and written under the lock; if another user wrote to the file in between,
    // they are worked out again under the lock, so that a batch always writes the values of one
    // moment. `starting` hears of each batch before it is written.
    void inBatches(const QString &table, const QString &key, const QList<Assignment> &assignments,
                   const std::function<void(const Batch &)> &starting,
                   const std::function<void(const Batch &)> &written);

private:
    class ValuesAhead;

    // The statement reading the keys after one (bound), at most a number of them (bound).
    QSqlQuery keysAfter(const QString &table, const QString &key);
    // The next batch of keys after `after`, at most `count` of them (read outside any
    // transaction); an empty batch at the end.
    Batch nextBatch(QSqlQuery &keys, qlonglong after, int count);
    // Runs `write` in a transaction of its own, waiting again for another user's lock; the time
    // the transaction held the lock, in nanoseconds.
    qint64 writeBatch(const std::function<void()> &write);
    qint64 writeOnce(const std::function<void()> &write);
    static void exec(QSqlQuery &statement, const Batch &batch);
    // Lets another user waiting for the write lock in: the rest is `restedNsecs` shorter.
    void rest(qint64 restedNsecs) const;
    QSqlQuery prepare(const QString &statement);
    // The size of the next batch from the time this one took.
    static int nextSize(int size, qint64 tookNsecs);

    Databases &m_dbs;
    QString m_fileName;
    QStringList m_begin; // the statements that open each batch's transaction
};
