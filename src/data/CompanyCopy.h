#pragma once

#include "common/ProgramError.h"

#include <QString>

#include <functional>
#include <vector>

// A one-way copy of a company from the SQLite files of one data folder into the PostgreSQL
// database that another data folder's database.ini names, for an office that outgrows the
// files. Every table and row is copied; afterwards the rows and the money totals of both sides
// are counted again and compared.
namespace CompanyCopy {

struct MoneyTotal {
    QString column;
    double source = 0;
    double target = 0;
};

struct TableResult {
    QString file;
    QString table;
    long long sourceRows = 0;
    long long targetRows = 0;
    std::vector<MoneyTotal> money;
    bool matches() const;
};

// Why the copy stopped, worded for the person who ran it.
class Error : public ProgramError {
public:
    explicit Error(const QString &text) : ProgramError(text) {}
};

// Copies every database file of the source folder. The target folder must name a PostgreSQL
// database that does not hold any of the files yet. Throws Error with a clear message.
std::vector<TableResult> copy(const QString &sourceFolder, const QString &targetFolder,
                              const std::function<void(const QString &)> &progress = {});

} // namespace CompanyCopy
