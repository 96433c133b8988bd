#include "StatementLog.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>

#include <sqlite3.h>

namespace {
sqlite3 *handleOf(const QSqlDatabase &db)
{
    if (!db.isOpen() || !db.driver())
        return nullptr;
    const QVariant handle = db.driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}
} // namespace

StatementLog::~StatementLog()
{
    stop();
}

void StatementLog::start()
{
    stop();
    for (const QString &name : QSqlDatabase::connectionNames()) {
        sqlite3 *db = handleOf(QSqlDatabase::database(name, false));
        if (!db)
            continue;
        sqlite3_trace_v2(db, SQLITE_TRACE_STMT | SQLITE_TRACE_ROW, &StatementLog::traced, this);
        m_connections.push_back(db);
    }
}

std::vector<RanStatement> StatementLog::stop()
{
    for (sqlite3 *db : m_connections)
        sqlite3_trace_v2(db, 0, nullptr, nullptr);
    m_connections.clear();
    m_running.clear();
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
    log->m_ran.push_back(
        {QString::fromUtf8(file ? file : ""),
         QString::fromUtf8(expanded ? expanded : static_cast<const char *>(text))});
    sqlite3_free(expanded);
    return 0;
}
