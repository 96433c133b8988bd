#include "PreviewPages.h"

#include "ReportLayout.h"
#include "ReportQuery.h"

namespace {

// The rows read at first through a statement limited to them: a dozen pages and more.
constexpr long long quickRows = 5000;

} // namespace

PreviewPages::PreviewPages(const ReportDefinition &def, const RunnerRequest &request) :
    m_def(def), m_request(request), m_rows(std::make_unique<ReportQuery>())
{
    m_rows->setQuickStart(quickRows);
    if (!m_rows->open(m_def, m_request, m_error)) {
        m_complete = true;
        return;
    }
    m_layout = std::make_unique<ReportLayout>(m_def, m_request, *m_rows, m_pages);
}

PreviewPages::~PreviewPages() = default;

bool PreviewPages::layOutTo(int page)
{
    while (!m_complete && m_pages.complete() < page)
        layOutSome(1, true);
    return page >= 1 && page <= m_pages.complete();
}

bool PreviewPages::layOutSome(int rows, bool sortTheRest)
{
    for (int i = 0; i < rows && !m_complete; ++i) {
        if (!sortTheRest && m_rows->quickRowsUsedUp())
            return false;
        if (!m_layout->step()) {
            m_complete = true;
            m_pages.setAllLaidOut();
            m_error = m_rows->error();
            m_rowsAtEnd = m_layout->rows();
            // The rows end here; the engine's connection is no longer needed.
            m_layout.reset();
            m_rows.reset();
        }
    }
    return !m_complete;
}

long long PreviewPages::rowsRead() const
{
    return m_layout ? m_layout->rows() : m_rowsAtEnd;
}
