#pragma once

#include <QHash>
#include <QSqlDatabase>
#include <QString>
#include <QVariant>

#include "data/DbError.h"

#include <memory>

#include "data/Dialect.h"
class QSqlError;
class QSqlQuery;

// The database files of the data folder (the current folder), each opened by its bare file name.
// Connections are named after the file; a record source reads through a connection of its own.
// Every failure is thrown as a DbError; nothing here talks to the user.
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
    void close(const QString &fileName);
    void closeAll();
    bool isOpen(const QString &fileName) const;
    // How many times a file was opened since this object was made (for the update gate's checks).
    int openCount() const { return m_openCount; }

    const Dialect &dialect() const { return *m_dialect; }

    // A forward-only read of a statement on the file's main connection.
    QSqlQuery select(const QString &fileName, const QString &statement);
    // The first column of the first row (null when there is none).
    QVariant scalar(const QString &fileName, const QString &statement);
    // A statement that changes data, in its own short transaction.
    void execute(const QString &fileName, const QString &statement);

    // How long a statement waits for another user's lock before failing.
    void setBusyTimeoutMsecs(int msecs) { m_busyTimeoutMsecs = msecs; }
    int busyTimeoutMsecs() const { return m_busyTimeoutMsecs; }

    // The file of that name in the data folder, matched without regard to case.
    static QString pathOf(const QString &fileName);
    static DbError errorFrom(const QSqlError &error, const QString &statement = {});

private:
    QSqlDatabase connect(const QString &fileName, const QString &connection);
    QString connectionName(const QString &fileName, const QString &tag = {}) const;

    std::unique_ptr<Dialect> m_dialect;
    QHash<QString, QStringList> m_connections; // file -> connection names
    int m_openCount = 0;
    int m_busyTimeoutMsecs = 3000;
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

// Rolls the transaction back unless commit() was reached.
class TransactionGuard {
public:
    explicit TransactionGuard(QSqlDatabase db);
    ~TransactionGuard();
    void commit();
    TransactionGuard(const TransactionGuard &) = delete;
    TransactionGuard &operator=(const TransactionGuard &) = delete;

private:
    QSqlDatabase m_db;
    bool m_done = false;
};
