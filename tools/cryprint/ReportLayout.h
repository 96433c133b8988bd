#pragma once

#include "ReportDefinition.h"
#include "RunnerRequest.h"

#include <QSizeF>

#include <memory>

class PagePainter;
class ReportQuery;

// Lays a report's rows out on pages as they are read, one row a step, so that a caller can
// stop after any page (the preview lays out only the pages it shows). Only the current row
// and the totals are held, whatever the number of rows.
class ReportLayout {
public:
    ReportLayout(const ReportDefinition &def, const RunnerRequest &request, ReportQuery &rows,
                 PagePainter &pages);
    ~ReportLayout();
    ReportLayout(const ReportLayout &) = delete;
    ReportLayout &operator=(const ReportLayout &) = delete;

    // Lays out the next row, or after the last one the closing lines, and ends the last page.
    // False once the report is complete.
    bool step();
    // Steps to the end; the number of rows.
    long long run();
    long long rows() const;

    // US letter in the definition's orientation, in points.
    static QSizeF pageSize(const ReportDefinition &def);

private:
    struct State;
    std::unique_ptr<State> m_state;
};
