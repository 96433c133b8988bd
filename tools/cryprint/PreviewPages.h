#pragma once

#include "RecordedPages.h"
#include "ReportDefinition.h"
#include "RunnerRequest.h"

#include <QString>

#include <memory>

class ReportLayout;
class ReportQuery;

// A report's pages for the preview, laid out only as far as they are asked for: page 1 is on
// the screen as soon as its rows are read, whatever the length of the report. The first few
// thousand rows come without the engine sorting all of them; the rest are sorted when a page
// needs them.
class PreviewPages {
public:
    PreviewPages(const ReportDefinition &def, const RunnerRequest &request);
    ~PreviewPages();
    PreviewPages(const PreviewPages &) = delete;
    PreviewPages &operator=(const PreviewPages &) = delete;

    // Lays out pages until page n is complete or the report ends; false when page n does
    // not exist.
    bool layOutTo(int page);
    // Lays out a little more (a few rows); false when the report is complete, or when the
    // next row needs all the rows sorted and sortTheRest is false.
    bool layOutSome(int rows, bool sortTheRest);
    // The pages complete so far, and whether that is all of them.
    int count() const { return m_pages.complete(); }
    bool isComplete() const { return m_complete; }
    long long rowsRead() const;
    // The engine's message when the rows cannot be read; the pages so far stay.
    QString error() const { return m_error; }
    void replay(int page, PagePainter &onto) const { m_pages.replay(page, onto); }

private:
    ReportDefinition m_def;
    RunnerRequest m_request;
    std::unique_ptr<ReportQuery> m_rows;
    RecordedPages m_pages;
    std::unique_ptr<ReportLayout> m_layout;
    bool m_complete = false;
    long long m_rowsAtEnd = 0;
    QString m_error;
};
