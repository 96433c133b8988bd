#pragma once

#include "data/Dialect.h"

// The embedded engine: each database the module names is an SQLite file of that name in the
// data folder, shared through the engine's file locks and its write-ahead log.
class SqliteDialect : public Dialect {
public:
    QString name() const override { return QStringLiteral("SQLite"); }
    QString map(const QString &statement) const override;

    QString placeOf(const QString &fileName) const override;
    bool exists(const QString &fileName) const override;
    // Opening a connection reads the file's schema again; an idle one kept beside another
    // connection of this process to the file takes no lock of its own.
    bool keepsConnectionsWhileInUse() const override { return true; }
    bool holdsNothing(QSqlDatabase &db) const override;
    QSqlDatabase connect(const QString &fileName, const QString &connection, int busyMsecs,
                         bool first) const override;
    void create(const QString &fileName) const override;

    QStringList beginWrite(bool light, int waitMsecs, int busyMsecs) const override;
    QStringList afterWrite(bool light, int waitMsecs, int busyMsecs) const override;
    QString lockRow(const QString &, const QString &) const override { return {}; }
    QString rowIdColumn() const override { return QStringLiteral("rowid"); }
    QStringList passStart() const override;
    QStringList passEnd() const override;
    int passRestMsecs() const override { return 2; }

    QString columnType(Schema::Kind kind) const override;
    QStringList indexNames(QSqlDatabase &db) const override;
    QStringList beginSchemaChange(const QString &) const override
    {
        return {QStringLiteral("begin immediate")};
    }
    bool hasCaseSensitiveTables() const override { return true; }
    QStringList afterRebuild() const override
    {
        return {QStringLiteral("pragma wal_checkpoint(TRUNCATE)")};
    }
};
