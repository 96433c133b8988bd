#pragma once

#include "RecordedPages.h"
#include "ReportDefinition.h"
#include "ReportLayout.h"
#include "RunnerRequest.h"

#include <QString>

#include <memory>
#include <vector>

class ReportQuery;

// A report's pages for the preview, laid out only as far as they are asked for: page 1 is on
// the screen as soon as its rows are read, whatever the length of the report. The first few
// thousand rows come without the engine sorting all of them; the rest are sorted when a page
// needs them. Only the pages near the one shown are kept, with a mark every few pages from
// which a page that was let go is laid out again, so memory stays the same however far the
// user goes.
class PreviewPages {
public:
    PreviewPages(const ReportDefinition &def, const RunnerRequest &request);
    ~PreviewPages();
    PreviewPages(const PreviewPages &) = delete;
    PreviewPages &operator=(const PreviewPages &) = delete;

    // Lays out pages until page n is complete or the report ends, and keeps the pages around
    // it from then on; false when page n does not exist.
    bool layOutTo(int page);
    // Lays out a little more (a few rows); false when the report is complete, or when the
    // next row needs all the rows sorted and sortTheRest is false.
    bool layOutSome(int rows, bool sortTheRest);
    // The pages complete so far, and whether that is all of them.
    int count() const { return m_pages.complete(); }
    bool isComplete() const { return m_complete; }
    // The rows laid out so far; all of them once the report is complete.
    long long rowsRead() const;
    // The engine's message when the rows cannot be read; the pages so far stay.
    QString error() const { return m_error; }
    // Draws page n when it is kept (a page laid out by layOutTo is, until another is asked for).
    void replay(int page, PagePainter &onto) const { m_pages.replay(page, onto); }
    // How many pages after the one asked for are kept (the view lays out that far ahead), and
    // how many before it.
    void setPagesAhead(int pages);
    void setPagesBehind(int pages);
    // The pages held now.
    int pagesKept() const { return m_pages.kept(); }

    // How far apart the marks are.
    static constexpr int pagesBetweenMarks = 10;

private:
    void pageBegun(int page);
    void keepAround();
    // Lays out again from the last mark at or before page n.
    void restartBefore(int page);
    void finished();

    ReportDefinition m_def;
    RunnerRequest m_request;
    std::unique_ptr<ReportQuery> m_rows;
    RecordedPages m_pages;
    std::unique_ptr<ReportLayout> m_layout;
    std::vector<ReportLayout::Mark> m_marks; // mark n: page n * pagesBetweenMarks + 1 begins
    int m_focus = 1;                         // the page asked for last
    int m_ahead = 200;
    int m_behind = 250;
    bool m_complete = false;
    long long m_rowsAtEnd = 0;
    QString m_error;
};
