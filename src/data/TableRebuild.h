#pragma once

#include "data/Schema.h"

#include <QString>
#include <QStringList>

class QSqlDatabase;

// The engine cannot change a column's collation in place: a table whose text columns should
// compare without regard to case is made again (a new table, its rows copied with their row
// numbers, the old one dropped, the new one renamed), inside the caller's transaction.
namespace TableRebuild {
// Whether a text column of the table, as the file holds it, lacks the case-blind collation.
bool lacksNocase(QSqlDatabase &db, const Schema::Table &table);
// Makes the table again with the case-blind collation on every text column of the layout.
// Columns the layout does not know keep their declared type; indexes the layout does not name
// are made again, except `retired` ones. The layout's indexes are left to the caller.
bool withNocase(QSqlDatabase &db, const Schema::Table &table, const QStringList &retired,
                QString &error);
} // namespace TableRebuild
