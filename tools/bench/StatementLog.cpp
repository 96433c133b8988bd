#include "StatementLog.h"

#include "PgStatementTrace.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>

#include <sqlite3.h>

#include <algorithm>

namespace {
// The engine's own handle of an open connection, when it is of that type.
template <typename Handle> Handle *handleOf(const QSqlDatabase &db, const char *typeName)
{
    if (!db.isOpen() || !db.driver())
        return nullptr;
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), typeName) != 0)
        return nullptr;
    return *static_cast<Handle *const *>(handle.constData());
}

// The database file a connection of the module's data layer is named after: "apdb<n>:<file>",
// or "apdb<n>:<file>#<reader>" ("" for a connection of anything else).
QString fileOfConnection(const QString &connection)
{
    static const QRegularExpression named(QStringLiteral("^apdb\\d+:([^#]+)(?:#.*)?$"));
    const QRegularExpressionMatch match = named.match(connection);
    return match.hasMatch() ? match.captured(1) : QString();
}
} // namespace

QString RanStatement::shown() const
{
    const QString text = sql.isEmpty() ? QStringLiteral("(a statement prepared earlier)") : sql;
    switch (kind) {
    case Kind::Plain:
        return text;
    case Kind::Prepare:
        return QStringLiteral("prepare: ") + text;
    case Kind::Deallocate:
        return text;
    case Kind::Execute:
        break;
    }
    QStringList shownValues;
    for (const QString &value : values)
        shownValues << (value.isNull() ? QStringLiteral("NULL")
                                       : QLatin1Char('\'') + value + QLatin1Char('\''));
    return text + QStringLiteral("  <- (") + shownValues.join(QStringLiteral(", ")) +
           QLatin1Char(')');
}

StatementLog::StatementLog() = default;

StatementLog::~StatementLog()
{
    stop();
}

void StatementLog::start()
{
    stop();
    for (const QString &name : QSqlDatabase::connectionNames()) {
        const QSqlDatabase db = QSqlDatabase::database(name, false);
        if (sqlite3 *handle = handleOf<sqlite3>(db, "sqlite3*")) {
            sqlite3_trace_v2(handle, SQLITE_TRACE_STMT | SQLITE_TRACE_ROW, &StatementLog::traced,
                             this);
            m_connections.push_back(handle);
            continue;
        }
        const QString file = fileOfConnection(name);
        if (pg_conn *handle = handleOf<pg_conn>(db, "pg_conn*"); handle && !file.isEmpty())
            m_serverConnections.push_back(std::make_unique<PgStatementTrace>(handle, name, file));
    }
}

std::vector<RanStatement> StatementLog::stop()
{
    for (sqlite3 *db : m_connections)
        sqlite3_trace_v2(db, 0, nullptr, nullptr);
    m_connections.clear();
    m_running.clear();
    // Each server connection has a trace of its own; their statements go in the order sent.
    std::vector<PgStatementTrace::Timed> timed;
    for (const auto &trace : m_serverConnections)
        for (PgStatementTrace::Timed &one : trace->finish())
            timed.push_back(std::move(one));
    m_serverConnections.clear();
    std::stable_sort(timed.begin(), timed.end(),
                     [](const auto &a, const auto &b) { return a.sentAt < b.sentAt; });
    for (PgStatementTrace::Timed &one : timed)
        m_ran.push_back(std::move(one.statement));
    return std::exchange(m_ran, {});
}

int StatementLog::traced(unsigned kind, void *self, void *statement, void *text)
{
    auto *log = static_cast<StatementLog *>(self);
    if (kind == SQLITE_TRACE_ROW) {
        const auto run = log->m_running.constFind(statement);
        if (run != log->m_running.cend())
            ++log->m_ran[*run].rows;
        return 0;
    }
    if (kind != SQLITE_TRACE_STMT)
        return 0;
    // Statements of triggers come as comments; only the statements the module runs count.
    if (qstrncmp(static_cast<const char *>(text), "--", 2) == 0)
        return 0;
    auto *stmt = static_cast<sqlite3_stmt *>(statement);
    char *expanded = sqlite3_expanded_sql(stmt);
    const char *file = sqlite3_db_filename(sqlite3_db_handle(stmt), "main");
    log->m_running.insert(statement, log->m_ran.size());
    RanStatement ran;
    ran.file = QString::fromUtf8(file ? file : "");
    ran.sql = QString::fromUtf8(expanded ? expanded : static_cast<const char *>(text));
    log->m_ran.push_back(std::move(ran));
    sqlite3_free(expanded);
    return 0;
}
