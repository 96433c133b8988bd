#pragma once

#include "StatementLog.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <cstdio>
#include <vector>

struct pg_conn;

// The statements one of the module's PostgreSQL connections runs while it is traced, read from
// the client library's protocol trace of that connection, written to memory. A statement the
// driver prepared before the trace started is looked up in the session's list of prepared
// statements, asked for only while the connection is not in the middle of a statement.
class PgStatementTrace {
public:
    // Starts tracing the module's connection of that name, whose statements run on the database
    // file `file`. The module may close the connection before the trace ends.
    PgStatementTrace(pg_conn *connection, QString connectionName, QString file);
    ~PgStatementTrace();
    PgStatementTrace(const PgStatementTrace &) = delete;
    PgStatementTrace &operator=(const PgStatementTrace &) = delete;

    struct Timed {
        QByteArray sentAt;
        RanStatement statement;
    };
    // Ends the trace; the statements it saw, in order.
    std::vector<Timed> finish();

private:
    void end();
    void learnPrepared();
    bool stillOpen() const;

    pg_conn *m_connection;
    QString m_connectionName;
    QString m_file;
    FILE *m_stream = nullptr;
    char *m_buffer = nullptr;
    size_t m_size = 0;
    QHash<QString, QString> m_prepared; // prepared statement's name -> its text
};
