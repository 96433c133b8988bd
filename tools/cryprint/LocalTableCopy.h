#pragma once

#include <QString>

class Connection;

// On a company kept on a PostgreSQL server, a report may still read a table of a file on this
// computer (the user-defined fields report reads the record file the module writes for it). The
// table's rows are copied into a temporary table of the runner's own server session, which the
// server drops when the session ends; nothing of the company is written.
namespace LocalTableCopy {

// Copies the table of the SQLite file into pg_temp.<table in lower case>; a NumberedError
// (ReportFailure) says what failed.
void copy(const Connection &server, const QString &file, const QString &table);

} // namespace LocalTableCopy
