#pragma once

#include <QElapsedTimer>
#include <QSqlQuery>
#include <QString>
#include <QStringList>

#include <functional>

class Databases;

// A pass over every record of a table that writes the records in batches, each batch one
// statement over a range of keys in a transaction of its own. A batch holds the write lock for a
// few milliseconds at most: its size follows the time the batches before it took. Between two
// batches the pass rests outside any transaction where a batch locks the whole file, so that
// another user's save waiting for the lock gets in; that user waits one batch at most. Each batch
// commits without waiting for the disk (a power cut can lose the last batches written, never part
// of one, and never harms the file); the end of the pass makes everything written durable. A pass
// stopped part-way leaves whole batches written and the rest as they were.
class RecordPass {
public:
    // How many times one batch waits for another user's lock (each wait as long as a statement
    // waits) before the pass gives up.
    static constexpr int lockTries = 20;
    // The time a batch aims to hold the write lock (the rest after it is the engine's).
    static constexpr int batchMsecs = 8;
    // The sizes a batch may take, in records.
    static constexpr int firstBatch = 32;
    static constexpr int largestBatch = 4096;

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

private:
    // The next batch of keys after `after`, at most `count` of them (read outside any
    // transaction); an empty batch at the end.
    Batch nextBatch(QSqlQuery &keys, qlonglong after, int count);
    // Writes the batch in a transaction of its own, waiting again for another user's lock; the
    // time the transaction held the lock, in nanoseconds.
    qint64 writeBatch(QSqlQuery &write, const Batch &batch);
    qint64 writeOnce(QSqlQuery &write, const Batch &batch);
    QSqlQuery prepare(const QString &statement);
    // The size of the next batch from the time this one took.
    static int nextSize(int size, qint64 tookNsecs);

    Databases &m_dbs;
    QString m_fileName;
    QStringList m_begin; // the statements that open each batch's transaction
};
