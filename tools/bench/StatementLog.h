#pragma once

#include <QHash>
#include <QString>

#include <vector>

struct sqlite3;

// A statement as the engine ran it (bound values written in), the file it ran on and how many
// of its rows were read.
struct RanStatement {
    QString file;
    QString sql;
    int rows = 0;
};

// Records every statement the module's connections run between start() and stop(), through the
// engine's trace hook, so that the same statements can be run again bare.
class StatementLog {
public:
    StatementLog() = default;
    ~StatementLog();
    StatementLog(const StatementLog &) = delete;
    StatementLog &operator=(const StatementLog &) = delete;

    // Listens on every connection open now; a connection opened later is not heard.
    void start();
    std::vector<RanStatement> stop();

private:
    static int traced(unsigned kind, void *self, void *statement, void *text);
    std::vector<sqlite3 *> m_connections;
    std::vector<RanStatement> m_ran;
    QHash<void *, size_t> m_running; // each statement's latest run in m_ran
};
