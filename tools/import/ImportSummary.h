#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// What the import did, per file and table: rows read and written, the money totals of each
// money column on both sides, and warnings.
struct MoneyTotal {
    QString column;
    qint64 read = 0;    // ten-thousandths
    qint64 written = 0; // ten-thousandths
};

struct TableSummary {
    QString sourceName;
    QString name;
    qint64 rowsRead = 0;
    qint64 rowsWritten = 0;
    std::vector<MoneyTotal> totals;
    QStringList warnings;
};

struct FileSummary {
    QString name;
    std::vector<TableSummary> tables;
    QStringList warnings; // about the file as a whole
};

struct ImportSummary {
    QString source;
    QString destination;
    std::vector<FileSummary> files;
    // Why the summary could not be added to the import log, or empty.
    QString logProblem;
    // The summary as the terminal and the import log show it.
    QString text() const;
};
