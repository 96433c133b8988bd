#pragma once

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include "data/DbError.h"
#include "data/Dialect.h"

#include <memory>

class QSqlError;

// The databases of the data folder (the current folder), each opened by its bare file name: an
// SQLite file of that name, or the schema of that name on a PostgreSQL server when the folder's
// engine settings say so.
// Connections are named after the file; a record source reads through a connection of its own.
// Every failure is thrown as a DbError; nothing here talks to the user.
//
// The one rule that keeps shared files safe: nothing in this process may open a database file,
// or its -wal and -shm files, other than through the engine while any connection to that file
// is open. The engine's locks are POSIX advisory locks, which belong to the process: closing ANY
// descriptor of the file drops every lock the process holds on it, the next copy that closes its
// last connection then believes it is alone and deletes the write-ahead log under everyone else.
// So no QFile, copy, checksum or header read of a database file here or anywhere else; a foreign
// file is told apart from the engine's own "not a database" answer (the header is read only
// then, when no connection to it can be open), and sizes and permissions come from stat().
class Databases {
public:
    explicit Databases(std::unique_ptr<Dialect> dialect = {});
    ~Databases();
    Databases(const Databases &) = delete;
    Databases &operator=(const Databases &) = delete;

    // The file's main connection, opened on first use. Never creates a missing file.
    QSqlDatabase open(const QString &fileName);
    // A further connection to the file for a reader that keeps a statement open.
    QSqlDatabase openReader(const QString &fileName, const QString &tag);
    void closeReader(const QString &fileName, const QString &tag);
    // Lets go of the file. Where a new connection costs far more than a statement (a server's),
    // its connections are kept aside, out of any transaction, for the file's next use; closeAll()
    // ends them too. On the files a reader let go of is kept aside only while another connection
    // to the file stays open and only when it holds no read; all are closed with the file's last.
    void close(const QString &fileName);
    void closeAll();
    // Whether the file is in use (connections kept aside do not count).
    bool isOpen(const QString &fileName) const;
    // How many connections were made since this object was made (for the update gate's checks).
    int openCount() const { return m_openCount; }
    // How many connections to the file are kept aside for its next use.
    int spareCount(const QString &fileName) const;
    // After a failed statement: when the server ended the connection of that use (the file's
    // main one for an empty tag), it is let go and true returned, so that the caller may try
    // once more on a new one. Never while the file's write transaction is open on it.
    bool renewIfGone(const QString &fileName, const QString &tag = {});

    // Creates a new, empty database of that file name for the data folder with the module's
    // tables (for the demo generator and a new company); refuses one that is already there.
    static void create(const QString &fileName);
    // Whether the database of that file name is there (a file, or a schema on the server).
    bool exists(const QString &fileName) const;

    const Dialect &dialect() const { return *m_dialect; }

    // A statement with bound values on the file's main connection, prepared on its first use
    // and kept with the connection (a server prepares a statement in a round trip of its own).
    // Values are bound by position; a read is finished by the caller once its rows are taken.
    // The query stays valid until the connection goes.
    QSqlQuery &prepared(const QString &fileName, const QString &statement);

    // A forward-only read of a statement on the file's main connection.
    QSqlQuery select(const QString &fileName, const QString &statement);
    // The first column of the first row (null when there is none).
    QVariant scalar(const QString &fileName, const QString &statement);
    // A statement that changes data, in its own short transaction (or in the file's write
    // transaction when one is open).
    void execute(const QString &fileName, const QString &statement);

    // How long a statement waits for another user's lock before failing.
    void setBusyTimeoutMsecs(int msecs) { m_busyTimeoutMsecs = msecs; }
    int busyTimeoutMsecs() const { return m_busyTimeoutMsecs; }

    // A write transaction on the file's main connection. It takes the file's write lock at once,
    // so that a file held by another user fails at the start and not halfway; waitMsecs bounds
    // that wait (the busy timeout when negative). A light commit does not wait for the disk
    // (still atomic; only the very last such writes can be lost by a power cut). Transactions
    // nest: an inner begin joins the outer one, only the outermost commit writes, and a rollback
    // at any depth makes the whole transaction roll back.
    enum class Commit { Durable, Light };
    void beginWrite(const QString &fileName, Commit commit = Commit::Durable, int waitMsecs = -1);
    void commitWrite(const QString &fileName);
    void rollbackWrite(const QString &fileName);
    bool isWriting(const QString &fileName) const;

    static DbError errorFrom(const QSqlError &error, const QString &statement = {});

private:
    struct Write {
        int depth = 0;
        bool failed = false;
        bool light = false;
        int waitMsecs = -1;
    };
    // The connection that serves the file's main use (an empty tag) or a reader's.
    QSqlDatabase connection(const QString &fileName, const QString &tag);
    void release(const QString &fileName, const QString &connection);
    void dropSpares(const QString &file);
    // A connection kept aside for the file that still answers, "" when there is none.
    QString takeSpare(const QString &file);
    void drop(const QString &connection);
    QString connectionName(const QString &fileName, const QString &tag = {}) const;
    void endWrite(const QString &fileName, Write &write);
    // Runs the statements that open a write transaction; the failed one and its error if any.
    bool runBegin(const QString &fileName, bool light, int waitMsecs, QSqlError &error,
                  QString &failed);

    std::unique_ptr<Dialect> m_dialect;
    QHash<QString, QStringList> m_connections;            // file -> connections in use
    QHash<QString, QString> m_servedBy;                   // use (file and tag) -> its connection
    QHash<QString, QStringList> m_spares;                 // file -> connections kept aside
    QHash<QString, Write> m_writes;                       // file -> its open write transaction
    // connection -> statement -> its query
    QHash<QString, QHash<QString, std::shared_ptr<QSqlQuery>>> m_prepared;
    int m_openCount = 0;
    int m_busyTimeoutMsecs = Dialect::busyTimeoutMsecs;
    QString m_prefix;
};

// Closes a file at the end of a scope unless it was already open before (settings and staff
// files are kept open only for one operation).
class ScopedDatabase {
public:
    ScopedDatabase(Databases &dbs, const QString &fileName);
    ~ScopedDatabase();
    ScopedDatabase(const ScopedDatabase &) = delete;
    ScopedDatabase &operator=(const ScopedDatabase &) = delete;

private:
    Databases &m_dbs;
    QString m_fileName;
    bool m_wasOpen;
};

// A write transaction for a scope: rolls back (and lets go of the write lock) unless commit()
// was reached, also when the scope is left by an error.
class WriteTransaction {
public:
    WriteTransaction(Databases &dbs, const QString &fileName,
                     Databases::Commit commit = Databases::Commit::Durable, int waitMsecs = -1);
    ~WriteTransaction();
    void commit();
    WriteTransaction(const WriteTransaction &) = delete;
    WriteTransaction &operator=(const WriteTransaction &) = delete;

private:
    Databases &m_dbs;
    QString m_fileName;
    bool m_done = false;
};
