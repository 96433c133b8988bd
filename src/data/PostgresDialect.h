#pragma once

#include "data/Dialect.h"
#include "data/EngineSettings.h"

// The server engine for shared offices: one PostgreSQL database holds the company; each
// database file the module names is a schema of it ("ap.mdb" is the schema ap_mdb). Text
// columns are citext, so that they compare and order without regard to case as the SQLite
// files do (the database is made with the C locale, so that only ASCII letters fold and
// everything else orders by code point); money is numeric with four decimals. A write locks
// the rows it edits, not the whole database.
class PostgresDialect : public Dialect {
public:
    explicit PostgresDialect(EngineSettings settings);

    QString name() const override { return QStringLiteral("PostgreSQL"); }
    // Beyond the desktop statements: nulls come first in an ascending order and last in a
    // descending one, as on the files (the server's default is the other way round).
    QString map(const QString &statement) const override;
    // The server returns rows of equal order values in whatever order its plan gives, which
    // can differ between two windows' reads: a single table's row id settles them.
    QString withFixedTies(const QString &statement) const override;

    QString placeOf(const QString &fileName) const override;
    bool exists(const QString &fileName) const override;
    // All the files' schemas are in one database, so any connection can tell.
    bool existsThrough(QSqlDatabase &db, const QString &fileName) const override;
    // A new connection costs a server process and its log-in: tens of milliseconds.
    bool keepsConnectionsForReuse() const override { return true; }
    QSqlDatabase connect(const QString &fileName, const QString &connection, int busyMsecs,
                         bool first) const override;
    void create(const QString &fileName) const override;

    QStringList beginWrite(bool light, int waitMsecs, int busyMsecs) const override;
    QStringList afterWrite(bool, int, int) const override { return {}; }
    QString lockRow(const QString &table, const QString &keyColumn) const override;
    // A single statement commits by itself; a light one says for its own transaction that the
    // commit does not wait for the disk.
    QString writtenOnItsOwn(const QString &statement, bool light) const override;
    QString rowIdColumn() const override { return QStringLiteral("ctid"); }
    // The pass's commits do not wait for the disk (each still atomic); the end of the pass puts
    // the server's own setting back.
    QStringList passStart() const override
    {
        return {QStringLiteral("set synchronous_commit = off")};
    }
    QStringList passEnd() const override { return {QStringLiteral("reset synchronous_commit")}; }
    // Another user waits for the rows a batch locks, in turn, not for the database.
    int passRestMsecs() const override { return 0; }

    QString columnType(Schema::Kind kind) const override;
    // Nulls first, as the files order them: the index then serves both directions of map()'s
    // orders.
    QString indexColumns(const QString &columns) const override;
    // The driver reads a forward-only result row by row from the server, and the next
    // statement on the connection ends it.
    bool readsStayOpenBetweenStatements() const override { return false; }
    QStringList indexNames(QSqlDatabase &db) const override;
    QStringList beginSchemaChange(const QString &fileName) const override;
    bool hasCaseSensitiveTables() const override { return false; }
    QStringList afterRebuild() const override { return {}; }

    // The schema that holds the database of that file name ("ap.mdb" is ap_mdb).
    static QString schemaOf(const QString &fileName);
    // A connection for a program that only reads the company (the report runner): its session
    // refuses every write, and nothing is made or checked. Throws DbError when the server
    // refuses.
    QSqlDatabase openForReading(const QString &fileName, const QString &connection) const;
    // A connection to the server's database itself, with no schema chosen, named to the server
    // after the program (for a program that makes a company's schemas: the import). Throws
    // DbError when the server refuses.
    QSqlDatabase openDatabase(const QString &connection, const QString &program) const;
    // Nulls first in an ascending term, last in a descending one, as on the files.
    QString orderTerm(const QString &term) const override;

private:
    // A connection to the server's database with the file's schema first on the search path
    // (and public, where the citext type lives). Throws DbError when the server refuses.
    QSqlDatabase open(const QString &fileName, const QString &connection, int busyMsecs) const;
    QSqlDatabase login(const QString &connection, const QString &program) const;
    bool schemaExists(QSqlDatabase &db, const QString &fileName) const;

    EngineSettings m_settings;
};
