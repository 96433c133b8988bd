#pragma once

#include "TablePlan.h"

#include <QString>
#include <QVariantList>

// Where the converted tables go: SqliteDestination writes the module's SQLite files,
// PostgresDestination a schema per file on the server. Failures are thrown as ImportError.
class ImportDestination {
public:
    virtual ~ImportDestination() = default;
    // A new database of that file name ("ap.mdb"), with the module's tables when it knows them.
    virtual void beginFile(const QString &fileName) = 0;
    virtual void beginTable(const TablePlan &plan) = 0;
    virtual void insert(const QVariantList &values) = 0;
    virtual void endTable() = 0;
    // What the current table holds, read back after endTable().
    virtual qint64 rowCount() = 0;
    // The total of a money column in ten-thousandths, added up exactly.
    virtual qint64 moneyTotal(const QString &column) = 0;
    virtual void endFile() = 0;
};
