#pragma once

#include "ReportDefinition.h"

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

class ReportQuery;

// The texts of a report's lines from the current row, shared by the pages and the CSV file.
namespace ReportLines {

// Where each field the definition shows stands in the rows: found once before the rows are
// read, so that each row's values are taken by position (no names looked up per value).
struct Positions {
    Positions(const ReportDefinition &def, const ReportQuery &rows);
    std::vector<int> columns;            // by column; -1 for the 1099 verdict
    std::vector<std::vector<int>> lines; // by line of a label or card, by piece; -1 for text
    std::vector<int> groupHeader;        // by piece
    int group = -1, thresholdType = -1, thresholdAmount = -1, pairCount = -1;
    std::vector<std::pair<int, int>> pairs; // description and value of pair n at n - 1
};

// The totals of a group or of the whole report: one per column, in ten-thousandths.
struct Totals {
    std::vector<long long> sums;
    long long threshold = 0; // the threshold amount's sum
    long long rows = 0;
    explicit Totals(size_t columns = 0) : sums(columns, 0) {}
};

// A template filled from the row (at: its pieces' positions); anyValue says whether a field had
// something (or the template has no field).
QString filled(const ReportDefinition::Template &line, const std::vector<int> &at,
               const ReportQuery &rows, bool &anyValue);
bool rightAligned(ReportDefinition::Format format);
// The texts of a row's columns (the 1099 verdict is a group's, so empty here).
QStringList rowCells(const ReportDefinition &def, const Positions &at, const ReportQuery &rows,
                     bool csv);
// A group's or the report's line: the totals in their columns, the 1099 verdict, and the
// given cells (the group's last row) in the other columns.
QStringList totalCells(const ReportDefinition &def, QStringList cells, int type1099,
                       const Totals &t, bool csv);
void add(const ReportDefinition &def, const Positions &at, const ReportQuery &rows, Totals &totals);
// The lines of a label or card that have something to show.
QStringList recordLines(const ReportDefinition &def, const Positions &at, const ReportQuery &rows);
// The description and value pairs of a card, up to the record's count.
std::vector<std::pair<QString, QString>> recordPairs(const ReportDefinition &def,
                                                     const Positions &at, const ReportQuery &rows);

} // namespace ReportLines
