#pragma once

#include "data/Schema.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <memory>

// What differs between the engines: how a database the module names by its file name is found,
// opened and created, how a write transaction takes its locks, and the few statements the
// module writes in the desktop engine's dialect that have to be said differently. Nothing above
// the data layer knows which engine runs.
class Dialect {
public:
    virtual ~Dialect() = default;
    // How long a statement waits for another user's lock before failing, on every connection
    // of every program (the module may set its own; see Databases::setBusyTimeoutMsecs).
    static constexpr int busyTimeoutMsecs = 3000;

    virtual QString name() const = 0;
    // The statement as this engine accepts it, with the same rows in the same order.
    virtual QString map(const QString &statement) const = 0;
    // A search criterion (the condition of a find-first) as this engine accepts it. Beyond
    // map(), a date column compared with an empty text finds the rows without a date.
    QString mapCriterion(const QString &criterion) const;
    // The mapped statement ordered so that rows of equal order values come in one fixed order
    // on every read, as a record source reading it a window at a time needs.
    virtual QString withFixedTies(const QString &statement) const { return statement; }
    // One term of an order clause ("name" or "name DESC") as this engine orders it, with
    // nulls where the files put them (first in an ascending order, last in a descending one),
    // for a program that writes its own statements without map().
    virtual QString orderTerm(const QString &term) const { return term; }

    // The engine of the data folder (the current folder): PostgreSQL when the folder holds the
    // engine settings file, the SQLite files otherwise.
    static std::unique_ptr<Dialect> forDataFolder();
    // The same for a folder that is not the current one (the launcher's choice).
    static std::unique_ptr<Dialect> forFolder(const QString &folder);

    // Where the database of that file name lives, as messages name it.
    virtual QString placeOf(const QString &fileName) const = 0;
    // Whether the database of that file name is there (never creates it).
    virtual bool exists(const QString &fileName) const = 0;
    // The same, asked through an open connection of this engine to any of the folder's files
    // where that saves making a connection for the question.
    virtual bool existsThrough(QSqlDatabase &db, const QString &fileName) const
    {
        Q_UNUSED(db);
        return exists(fileName);
    }
    // Whether connections let go of are better kept for the next use (making one costs far more
    // than a statement).
    virtual bool keepsConnectionsForReuse() const { return false; }
    // Whether a connection let go of is kept while another connection of this process to the
    // same database stays open (then it changes nothing for anyone else), and only when it holds
    // nothing (see holdsNothing).
    virtual bool keepsConnectionsWhileInUse() const { return false; }
    // Whether the connection is out of any transaction and has no read under way, so that
    // keeping it holds no lock and keeps no snapshot of the database from other users.
    virtual bool holdsNothing(QSqlDatabase &db) const
    {
        Q_UNUSED(db);
        return true;
    }
    // An open connection to an existing database under that connection name, its tables made
    // ready when `first` (no other connection of this process is open to it). Throws DbError.
    virtual QSqlDatabase connect(const QString &fileName, const QString &connection, int busyMsecs,
                                 bool first) const = 0;
    // A new database of that file name with the module's tables; refuses one already there.
    virtual void create(const QString &fileName) const = 0;

    // The statements that open a write transaction. It holds what the engine locks for writing
    // at once (SQLite: the whole file); waitMsecs bounds the wait for another user's lock. A
    // light commit may skip waiting for the disk.
    virtual QStringList beginWrite(bool light, int waitMsecs, int busyMsecs) const = 0;
    // Statements run after the transaction ended, to undo what beginWrite set for it.
    virtual QStringList afterWrite(bool light, int waitMsecs, int busyMsecs) const = 0;
    // A statement with one bound key value that locks that row for the rest of the write
    // transaction, or "" when the transaction holds it already.
    virtual QString lockRow(const QString &table, const QString &keyColumn) const = 0;
    // A change of rows that ends in its where clause, written as a transaction of its own in the
    // one round trip of that statement (its rows locked by the statement itself, and a light
    // commit not waiting for the disk), run when no write transaction is open; "" when the
    // engine needs beginWrite's statements around it.
    virtual QString writtenOnItsOwn(const QString &statement, bool light) const
    {
        Q_UNUSED(statement);
        Q_UNUSED(light);
        return {};
    }
    // The column that names a row of any table by its place in the table.
    virtual QString rowIdColumn() const = 0;
    // Settings for a pass over many records (a batch of them a transaction, each commit not
    // waiting for the disk) and after it.
    virtual QStringList passStart() const = 0;
    virtual QStringList passEnd() const = 0;
    // How long a pass rests between two batches, so that another user waiting for the lock a
    // batch held gets it.
    virtual int passRestMsecs() const = 0;

    // The column type a kind of column is created with.
    virtual QString columnType(Schema::Kind kind) const = 0;
    // The column list of an index ("a, b") as this engine makes it, so that the index serves
    // the orders map() writes.
    virtual QString indexColumns(const QString &columns) const { return columns; }
    // Whether a forward-only read may stay open while other statements run on its connection
    // (a row read, then another statement, then the next row).
    virtual bool readsStayOpenBetweenStatements() const { return true; }
    // The names of the indexes the connection's database holds.
    virtual QStringList indexNames(QSqlDatabase &db) const = 0;
    // The statements that open the transaction in which tables are made, so that two copies
    // making them at once take turns.
    virtual QStringList beginSchemaChange(const QString &fileName) const = 0;
    // Whether tables made before text compared without regard to case can be found (and are
    // made again); an engine whose tables were always made so has none.
    virtual bool hasCaseSensitiveTables() const = 0;
    // Statements run after tables were made again, to give back their space.
    virtual QStringList afterRebuild() const = 0;

protected:
    // The statements of the desktop engine that neither engine accepts as written, said so
    // that both do.
    static QString mapDesktopStatement(const QString &statement);
};
