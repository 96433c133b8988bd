#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class Dialect;
class QSqlDatabase;

// The tables and columns of each database file the module names, created when missing.
namespace Schema {

enum class Kind { Long, Number, Text, Memo, Currency, Date };

struct Column {
    QString name;
    Kind kind;
};

struct Table {
    QString name;
    std::vector<Column> columns;
    QStringList indexes; // "name(columns)" pieces
};

// The tables a database file (by its lower-case file name, "ap.mdb") holds; none for others.
const std::vector<Table> &tablesOf(const QString &fileName);
// The kind of a column of any table of any file; Text when unknown.
Kind columnKind(const QString &table, const QString &column);
bool isMoney(const QString &table, const QString &column);
// The kind of a column of that name (a name has one kind in every table that has it); none
// when no table of the layout has such a column.
std::optional<Kind> layoutKind(const QString &column);

// The version the steps below bring a file to.
constexpr int currentVersion = 4;

// Brings the open database up to the current version: creates missing tables, columns and
// indexes, drops the indexes of earlier layouts, and makes tables whose text columns compare
// with regard to case again with the case-blind collation (keeping their rows). Re-runnable; a file
// at the current version with everything in place is only looked at, not written. Returns the
// engine's error text, or "" on success.
QString ensure(QSqlDatabase &db, const QString &fileName, const Dialect &dialect);

// For a new, empty database filled in the same transaction as it is made (the import): the
// file's tables and its layout version, and afterwards, once the rows are in, its indexes.
// Both run inside the caller's open transaction and neither opens nor ends one. Return the
// engine's error text, or "" on success.
QString makeTablesInTransaction(QSqlDatabase &db, const QString &fileName, const Dialect &dialect);
QString makeIndexesInTransaction(QSqlDatabase &db, const QString &fileName, const Dialect &dialect);

} // namespace Schema
