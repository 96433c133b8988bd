#include "PgStatementTrace.h"

#include "PgTraceReader.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>

#include <libpq-fe.h>

#include <cstdlib>

PgStatementTrace::PgStatementTrace(pg_conn *connection, QString connectionName, QString file) :
    m_connection(connection), m_connectionName(std::move(connectionName)), m_file(std::move(file))
{
    learnPrepared();
    m_stream = open_memstream(&m_buffer, &m_size);
    if (!m_stream)
        return;
    // With the time of each message, so that several connections' statements can be ordered.
    PQsetTraceFlags(m_connection, 0);
    PQtrace(m_connection, m_stream);
}

PgStatementTrace::~PgStatementTrace()
{
    end();
    std::free(m_buffer);
}

bool PgStatementTrace::stillOpen() const
{
    const QSqlDatabase db = QSqlDatabase::database(m_connectionName, false);
    if (!db.isOpen() || !db.driver())
        return false;
    const QVariant handle = db.driver()->handle();
    return qstrcmp(handle.typeName(), "pg_conn*") == 0 &&
           *static_cast<pg_conn *const *>(handle.constData()) == m_connection;
}

void PgStatementTrace::end()
{
    if (!m_stream)
        return;
    // A connection the module closed meanwhile is gone, and with it the trace's hold on the
    // stream (closing a connection leaves the stream to its owner).
    if (stillOpen())
        PQuntrace(m_connection);
    else
        m_connection = nullptr;
    std::fclose(m_stream);
    m_stream = nullptr;
}

void PgStatementTrace::learnPrepared()
{
    if (!m_connection)
        return;
    // Only between statements: a connection still handing over rows takes no other statement.
    const PGTransactionStatusType status = PQtransactionStatus(m_connection);
    if (status != PQTRANS_IDLE && status != PQTRANS_INTRANS)
        return;
    PGresult *result = PQexec(m_connection, "select statement from pg_prepared_statements");
    if (PQresultStatus(result) == PGRES_TUPLES_OK)
        for (int row = 0; row < PQntuples(result); ++row) {
            const auto command =
                PgTraceReader::command(QString::fromUtf8(PQgetvalue(result, row, 0)));
            if (command.kind == RanStatement::Kind::Prepare)
                m_prepared.insert(command.name, command.text);
        }
    PQclear(result);
}

std::vector<PgStatementTrace::Timed> PgStatementTrace::finish()
{
    end();
    std::vector<Timed> ran;
    const QByteArray trace(m_buffer ? m_buffer : "", qsizetype(m_size));
    std::vector<QString> names; // of the statement each Execute runs
    bool unknown = false;
    for (const PgTraceReader::Query &query : PgTraceReader::queries(trace)) {
        const PgTraceReader::Command command = PgTraceReader::command(query.text);
        RanStatement statement{m_file,       command.text,   query.rows,
                               command.kind, command.values, true};
        if (command.kind == RanStatement::Kind::Prepare)
            m_prepared.insert(command.name, command.text);
        if (command.kind == RanStatement::Kind::Execute) {
            statement.sql = m_prepared.value(command.name);
            unknown = unknown || statement.sql.isEmpty();
        }
        if (command.kind == RanStatement::Kind::Deallocate)
            statement.sql = query.text;
        ran.push_back({query.sentAt, statement});
        names.push_back(command.name);
    }
    // A statement prepared after the list was read, outside the trace: ask once more.
    if (unknown) {
        learnPrepared();
        for (size_t i = 0; i < ran.size(); ++i)
            if (ran[i].statement.kind == RanStatement::Kind::Execute &&
                ran[i].statement.sql.isEmpty())
                ran[i].statement.sql = m_prepared.value(names[i]);
    }
    return ran;
}
