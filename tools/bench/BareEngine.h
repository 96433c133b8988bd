#pragma once

#include "PgBareEngine.h"
#include "StatementLog.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

struct sqlite3;

// Runs statements straight through the engine's C interface, on connections of its own to the
// same databases, reading as many rows as the module read (every column of each), to show
// what a step costs without the module: SQLite's on the files, the client library's on the
// PostgreSQL server (see PgBareEngine).
class BareEngine {
public:
    BareEngine() = default;
    ~BareEngine();
    BareEngine(const BareEngine &) = delete;
    BareEngine &operator=(const BareEngine &) = delete;

    // The median time in milliseconds of running all the statements, in order, `runs` times.
    double medianMs(const std::vector<RanStatement> &statements, int runs);
    // What failed in the bare runs since the last call.
    QStringList takeFailures() { return m_server.takeFailures(); }

private:
    sqlite3 *connection(const QString &file);
    void run(const RanStatement &statement);
    QHash<QString, sqlite3 *> m_connections;
    PgBareEngine m_server;
};
