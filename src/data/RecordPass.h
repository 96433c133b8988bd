#pragma once

#include <QElapsedTimer>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <functional>
#include <vector>

class Databases;

// A pass over every record of a table that writes one record per transaction, so that another
// user waits for one record at most. Each record's transaction commits without waiting for the
// disk (a power cut can lose the last records written, never half of one, and never harms the
// file); the end of the pass makes everything written durable. The pass rests a fifth of its
// time outside any transaction: another user waiting for the write lock would otherwise have to
// catch the few microseconds between two records.
class RecordPass {
public:
    // How many times one record waits for another user's lock (each wait as long as a
    // statement waits) before the pass gives up.
    static constexpr int lockTries = 20;

    RecordPass(Databases &dbs, const QString &fileName);
    ~RecordPass();
    RecordPass(const RecordPass &) = delete;
    RecordPass &operator=(const RecordPass &) = delete;

    // A statement prepared once for the pass, its values bound by position on each use.
    QSqlQuery prepare(const QString &statement);
    // Runs a prepared write with these values as one record's own transaction.
    void writeRecord(QSqlQuery &write, const std::vector<QVariant> &values);
    // The first column of a prepared read with these values (null when there is no row).
    QVariant scalar(QSqlQuery &read, const std::vector<QVariant> &values);
    // The keys of a table in order, a batch at a time (the read ends before the records are
    // written): the keys after `after`, at most `count` of them.
    std::vector<qlonglong> keysAfter(const QString &table, const QString &key, qlonglong after,
                                     int count);
    // Every key in order, handing each to `work`; a batch is read, then written, then the next.
    void forEachKey(const QString &table, const QString &key,
                    const std::function<void(qlonglong)> &work);

private:
    // One try at a record's own transaction.
    void writeOnce(QSqlQuery &write, const std::vector<QVariant> &values);
    void exec(QSqlQuery &query, const std::vector<QVariant> &values);

    Databases &m_dbs;
    QString m_fileName;
    QElapsedTimer m_sinceRest;
    QString m_begin; // the statement that opens each record's transaction
};
