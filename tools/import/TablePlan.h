#pragma once

#include "SourceRows.h"

#include "data/Schema.h"

#include <QString>

#include <optional>
#include <vector>

// Where each table and column of an Access file goes: a table the module knows (matched by
// name without regard to case) gets the module's name, columns and types; anything else is
// kept under its own name with the type nearest to its Access type.
struct ColumnPlan {
    QString sourceName;
    QString name;
    unsigned char sourceType = 0;
    std::optional<Schema::Kind> moduleKind; // none: kept as the file has it
    bool money = false;                     // totals are compared after the import
};

struct TablePlan {
    QString sourceName;
    QString name;
    bool known = false;
    std::vector<ColumnPlan> columns;
    // The column that names a row in a message (the module's first column, else the first).
    int keyColumn = 0;
};

namespace TablePlans {
TablePlan planFor(const QString &fileName, const SourceTable &table);
// The declared SQLite type of a column kept as the file has it.
QString keptType(unsigned char accessType);
// A name quoted for a statement.
QString quoted(const QString &name);
} // namespace TablePlans
