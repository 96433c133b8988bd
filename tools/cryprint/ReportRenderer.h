#pragma once

#include "ReportDefinition.h"
#include "RunnerRequest.h"

#include <QString>

class QIODevice;
class QPagedPaintDevice;
class ReportQuery;

// Prints a report's rows as they are read: page by page on a paged device (a printer), into a
// PDF file written as it goes, or as CSV lines. Only the current row, the group's totals and the
// current page are held, whatever the number of rows.
class ReportRenderer {
public:
    ReportRenderer(const ReportDefinition &def, const RunnerRequest &request) :
        m_def(def), m_request(request)
    {
    }

    // Sets the device's page (US letter, the definition's orientation, no margins of its own)
    // and prints every row. Each returns the number of rows printed; a NumberedError
    // (ReportFailure) says what failed.
    long long paint(ReportQuery &rows, QPagedPaintDevice &device) const;
    // A PDF file of US letter pages, each written to out as it is complete.
    long long pdf(ReportQuery &rows, QIODevice &out) const;
    long long csv(ReportQuery &rows, QIODevice &out) const;

private:
    const ReportDefinition &m_def;
    const RunnerRequest &m_request;
};

// Runs a request to a file (PDF or CSV): opens the rows and renders them. The NumberedError's
// message says what went wrong.
void writeReportFile(const ReportDefinition &def, const RunnerRequest &request);
