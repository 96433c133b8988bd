#include "PgBareEngine.h"

#include "data/EngineSettings.h"
#include "data/PostgresDialect.h"

#include <libpq-fe.h>

PgBareEngine::~PgBareEngine()
{
    for (const Connection &c : std::as_const(m_connections))
        PQfinish(c.handle);
}

void PgBareEngine::fail(const QString &what)
{
    if (!m_failures.contains(what))
        m_failures << what;
}

QStringList PgBareEngine::takeFailures()
{
    return std::exchange(m_failures, {});
}

PgBareEngine::Connection *PgBareEngine::connection(const QString &file)
{
    if (const auto found = m_connections.find(file); found != m_connections.end())
        return found->handle ? &*found : nullptr;
    Connection &made = m_connections[file];
    const std::optional<EngineSettings> settings = EngineSettings::ofDataFolder();
    if (!settings || !settings->error.isEmpty()) {
        fail(QStringLiteral("the data folder names no database server"));
        return nullptr;
    }
    const QByteArray host = settings->host.toUtf8();
    const QByteArray port = QByteArray::number(settings->port);
    const QByteArray database = settings->database.toUtf8();
    const QByteArray user = settings->user.toUtf8();
    const char *keys[] = {"host", "port", "dbname", "user", "application_name", nullptr};
    const char *values[] = {host.constData(),     port.constData(),
                            database.constData(), user.isEmpty() ? nullptr : user.constData(),
                            "apmaster-bench",     nullptr};
    PGconn *handle = PQconnectdbParams(keys, values, 0);
    if (PQstatus(handle) != CONNECTION_OK) {
        fail(QString::fromUtf8(PQerrorMessage(handle)).trimmed());
        PQfinish(handle);
        return nullptr;
    }
    const QByteArray path = QStringLiteral("set search_path to %1, public")
                                .arg(PostgresDialect::schemaOf(file))
                                .toUtf8();
    PQclear(PQexec(handle, path.constData()));
    made.handle = handle;
    return &made;
}

void PgBareEngine::prepare(const std::vector<RanStatement> &statements)
{
    for (const RanStatement &statement : statements) {
        if (statement.kind != RanStatement::Kind::Execute || statement.sql.isEmpty())
            continue;
        Connection *c = connection(statement.file);
        if (!c || c->prepared.contains(statement.sql))
            continue;
        const QByteArray name = "bare" + QByteArray::number(c->prepared.size() + 1);
        PGresult *result =
            PQprepare(c->handle, name.constData(), statement.sql.toUtf8().constData(), 0, nullptr);
        if (PQresultStatus(result) == PGRES_COMMAND_OK)
            c->prepared.insert(statement.sql, name);
        else
            fail(QString::fromUtf8(PQresultErrorMessage(result)).trimmed());
        PQclear(result);
    }
}

void PgBareEngine::run(const RanStatement &statement)
{
    // The module's preparing and letting go of its statements has no counterpart here.
    if (statement.kind == RanStatement::Kind::Prepare ||
        statement.kind == RanStatement::Kind::Deallocate)
        return;
    Connection *c = connection(statement.file);
    if (!c)
        return;
    PGresult *result = nullptr;
    if (statement.kind == RanStatement::Kind::Execute) {
        const QByteArray name = c->prepared.value(statement.sql);
        if (name.isEmpty())
            return;
        std::vector<QByteArray> texts;
        std::vector<const char *> values;
        texts.reserve(size_t(statement.values.size()));
        for (const QString &value : statement.values) {
            texts.push_back(value.toUtf8());
            values.push_back(value.isNull() ? nullptr : texts.back().constData());
        }
        result = PQexecPrepared(c->handle, name.constData(), int(values.size()), values.data(),
                                nullptr, nullptr, 0);
    } else {
        result = PQexec(c->handle, statement.sql.toUtf8().constData());
    }
    const ExecStatusType status = PQresultStatus(result);
    if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK)
        fail(QString::fromUtf8(PQresultErrorMessage(result)).trimmed());
    // Every value of every row that came back.
    const int rows = PQntuples(result);
    const int columns = PQnfields(result);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            PQgetvalue(result, row, column);
    PQclear(result);
}

void PgBareEngine::endTransactions()
{
    for (const Connection &c : std::as_const(m_connections))
        if (c.handle && PQtransactionStatus(c.handle) != PQTRANS_IDLE)
            PQclear(PQexec(c.handle, "rollback"));
}
