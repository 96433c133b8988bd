#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

struct sqlite3;
class PgStatementTrace;

// A statement as the engine ran it, the database file it ran on and how many of its rows were
// read. On the SQLite files the bound values are written into the text. On the PostgreSQL
// server the client library prepares a statement with bound values once (Prepare, its text
// with $1, $2, ...) and then runs it by name (Execute: that text and the values as text, a null
// QString for NULL); Deallocate lets it go.
struct RanStatement {
    enum class Kind { Plain, Prepare, Execute, Deallocate };
    QString file;
    QString sql;
    int rows = 0;
    Kind kind = Kind::Plain;
    QStringList values;
    bool onServer = false;

    // One line for a listing: the text, and the values it ran with.
    QString shown() const;
};

// Records every statement the module's connections run between start() and stop(), so that the
// same statements can be run again bare: through the engine's trace hook on the SQLite files,
// through the client library's protocol trace on the PostgreSQL server. Nothing is listened to
// outside a recording.
class StatementLog {
public:
    StatementLog();
    ~StatementLog();
    StatementLog(const StatementLog &) = delete;
    StatementLog &operator=(const StatementLog &) = delete;

    // Listens on every connection open now; a connection opened later is not heard.
    void start();
    std::vector<RanStatement> stop();

private:
    static int traced(unsigned kind, void *self, void *statement, void *text);
    std::vector<sqlite3 *> m_connections;
    std::vector<std::unique_ptr<PgStatementTrace>> m_serverConnections;
    std::vector<RanStatement> m_ran;
    QHash<void *, size_t> m_running; // each statement's latest run in m_ran
};
