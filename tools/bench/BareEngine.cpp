#include "BareEngine.h"

#include "BenchSupport.h"

#include <sqlite3.h>

BareEngine::~BareEngine()
{
    for (sqlite3 *db : std::as_const(m_connections))
        sqlite3_close_v2(db);
}

sqlite3 *BareEngine::connection(const QString &file)
{
    if (sqlite3 *db = m_connections.value(file))
        return db;
    sqlite3 *db = nullptr;
    // Through the engine, like every other connection of this process.
    if (sqlite3_open_v2(file.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE, nullptr) !=
        SQLITE_OK) {
        sqlite3_close_v2(db);
        return nullptr;
    }
    sqlite3_busy_timeout(db, 3000);
    m_connections.insert(file, db);
    return db;
}

void BareEngine::run(const RanStatement &statement)
{
    if (statement.onServer) {
        m_server.run(statement);
        return;
    }
    sqlite3 *db = connection(statement.file);
    if (!db)
        return;
    const QByteArray sql = statement.sql.toUtf8();
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.constData(), int(sql.size()), &stmt, nullptr) != SQLITE_OK) {
        sqlite3_finalize(stmt);
        return;
    }
    // As many rows as the module read, every value of each.
    int read = 0;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
        const int columns = sqlite3_column_count(stmt);
        for (int i = 0; i < columns; ++i)
            if (sqlite3_column_type(stmt, i) == SQLITE_TEXT)
                sqlite3_column_text(stmt, i);
        if (++read >= statement.rows)
            break;
    }
    sqlite3_finalize(stmt);
}

double BareEngine::medianMs(const std::vector<RanStatement> &statements, int runs)
{
    if (statements.empty())
        return 0;
    m_server.prepare(statements);
    return ::medianMs(runs, [&] {
        for (const RanStatement &statement : statements)
            run(statement);
        // A write the step left open (it never does) must not hold the lock for the module.
        for (sqlite3 *db : std::as_const(m_connections))
            if (!sqlite3_get_autocommit(db))
                sqlite3_exec(db, "rollback", nullptr, nullptr, nullptr);
        m_server.endTransactions();
    });
}
