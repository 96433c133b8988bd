#pragma once

#include "ReportDefinition.h"
#include "ReportLines.h"
#include "RunnerRequest.h"

#include <QString>
#include <QStringList>

#include <QSizeF>

#include <memory>

class PagePainter;
class ReportQuery;

// Lays a report's rows out on pages as they are read, one row a step, so that a caller can
// stop after any page (the preview lays out only the pages it shows). Only the current row
// and the totals are held, whatever the number of rows.
class ReportLayout {
public:
    // Where a step began: enough to lay the report out again from there (the preview keeps
    // one every few pages instead of the pages themselves). A few hundred bytes.
    struct Mark {
        long long rowsRead = 0; // the rows read before the step
        long long count = 0;
        ReportLines::Totals grand, group;
        bool inGroup = false;
        QString groupKey;
        QStringList last;
        int lastType = 0;
        int page = 0; // the page open when the step began (0: none yet)
        double y = 0;
        QString printed; // the time on the heading, the same on every page
    };

    ReportLayout(const ReportDefinition &def, const RunnerRequest &request, ReportQuery &rows,
                 PagePainter &pages);
    // Goes on from a mark of an earlier layout of the same report; the rows must stand where
    // they stood then (ReportQuery::restartAt(mark.rowsRead)), and the page that was open
    // then is taken as open on the painter.
    ReportLayout(const ReportDefinition &def, const RunnerRequest &request, ReportQuery &rows,
                 PagePainter &pages, const Mark &from);
    ~ReportLayout();
    ReportLayout(const ReportLayout &) = delete;
    ReportLayout &operator=(const ReportLayout &) = delete;

    // Lays out the next row, or after the last one the closing lines, and ends the last page.
    // False once the report is complete.
    bool step();
    // Steps to the end; the number of rows.
    long long run();
    long long rows() const;
    // The state as the step under way began (or the last step, between steps).
    const Mark &stepStart() const;

    // US letter in the definition's orientation, in points.
    static QSizeF pageSize(const ReportDefinition &def);

private:
    struct State;
    std::unique_ptr<State> m_state;
};
