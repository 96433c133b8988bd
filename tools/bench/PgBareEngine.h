#pragma once

#include "StatementLog.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

struct pg_conn;

// Runs statements recorded on the PostgreSQL server straight through its C client library, on
// connections of its own to the data folder's database (one per database file, its schema
// first on the search path), reading every value of every row. A statement the module ran with
// bound values is prepared once per connection (PQprepare, before any timing) and then run
// with the same values bound (PQexecPrepared), as a program that keeps its statements would;
// the module's own preparing and letting go of statements costs it, not the bare run.
class PgBareEngine {
public:
    PgBareEngine() = default;
    ~PgBareEngine();
    PgBareEngine(const PgBareEngine &) = delete;
    PgBareEngine &operator=(const PgBareEngine &) = delete;

    void prepare(const std::vector<RanStatement> &statements);
    void run(const RanStatement &statement);
    // Rolls back a transaction a run left open, so that it holds no lock for the module.
    void endTransactions();
    // What went wrong in the runs since the last call (each message once).
    QStringList takeFailures();

private:
    struct Connection {
        pg_conn *handle = nullptr;
        QHash<QString, QByteArray> prepared; // statement text -> name of the prepared statement
    };
    Connection *connection(const QString &file);
    void fail(const QString &what);

    QHash<QString, Connection> m_connections;
    QStringList m_failures;
};
