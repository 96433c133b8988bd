#include "PreviewPages.h"

#include "ReportQuery.h"

#include "common/NumberedError.h"

#include <algorithm>
#include <climits>

namespace {

// The rows read at first through a statement limited to them: a dozen pages and more.
constexpr long long quickRows = 5000;
// A page more than this many pages ahead of the layout is reached from the mark before it (the
// rows read again from there) rather than by laying out every page between.
constexpr int farAhead = 1000;

} // namespace

PreviewPages::PreviewPages(const ReportDefinition &def, const RunnerRequest &request) :
    m_def(def), m_request(request), m_rows(std::make_unique<ReportQuery>())
{
    m_rows->setQuickStart(quickRows);
    try {
        m_rows->open(m_def, m_request);
    } catch (const NumberedError &e) {
        // The window opens with the message where the page number goes.
        m_error = e.text();
        m_complete = true;
        return;
    }
    m_pages.onPageBegun([this](int page) { pageBegun(page); });
    m_layout = std::make_unique<ReportLayout>(m_def, m_request, *m_rows, m_pages);
}

PreviewPages::~PreviewPages()
{
    m_layout.reset(); // it reads from the rows
}

void PreviewPages::pageBegun(int page)
{
    // The step that begins page n is where the layout can start again for it.
    const auto index = size_t((page - 1) / pagesBetweenMarks);
    if ((page - 1) % pagesBetweenMarks == 0 && index == m_marks.size() && m_layout)
        m_marks.push_back(m_layout->stepStart());
    keepAround();
}

void PreviewPages::keepAround()
{
    // Going to the end: the pages just behind the layout, whatever it passes.
    const int near = std::min(m_focus, std::max(1, m_pages.current()));
    const int last = m_focus > INT_MAX - m_ahead ? INT_MAX : m_focus + m_ahead;
    m_pages.keep(std::max(1, near - m_behind), last);
}

void PreviewPages::setPagesAhead(int pages)
{
    m_ahead = std::max(1, pages);
    keepAround();
}

void PreviewPages::setPagesBehind(int pages)
{
    m_behind = std::max(0, pages);
    keepAround();
}

bool PreviewPages::layOutTo(int page)
{
    if (page < 1)
        return false;
    m_focus = page;
    keepAround();
    if (m_pages.has(page))
        return true;
    if (m_complete && page > m_pages.complete())
        return false;
    const auto markIndex = size_t((std::max(1, page - m_behind) - 1) / pagesBetweenMarks);
    // The page under way counts as passed when it is not being recorded.
    const bool passed = !m_layout || m_pages.current() > page ||
                        (m_pages.current() == page && !m_pages.holds(page));
    const bool markFarAhead =
        markIndex < m_marks.size() && m_marks[markIndex].page > m_pages.current() + farAhead;
    if (passed || markFarAhead)
        restartBefore(page);
    while (m_layout && !m_pages.has(page))
        layOutSome(1, true);
    return m_pages.has(page);
}

void PreviewPages::restartBefore(int page)
{
    if (m_marks.empty() || !m_rows)
        return;
    const auto index = std::min(size_t((std::max(1, page - m_behind) - 1) / pagesBetweenMarks),
                                m_marks.size() - 1);
    const ReportLayout::Mark mark = m_marks[index];
    m_layout.reset();
    if (!m_rows->restartAt(mark.rowsRead)) {
        m_error = m_rows->error();
        return;
    }
    m_pages.continueAfter(mark.page);
    m_layout = std::make_unique<ReportLayout>(m_def, m_request, *m_rows, m_pages, mark);
}

bool PreviewPages::layOutSome(int rows, bool sortTheRest)
{
    for (int i = 0; i < rows && m_layout; ++i) {
        if (!sortTheRest && m_rows->quickRowsUsedUp())
            return false;
        if (!m_layout->step())
            finished();
    }
    return m_layout != nullptr;
}

void PreviewPages::finished()
{
    m_complete = true;
    m_pages.setAllLaidOut();
    m_error = m_rows->error();
    m_rowsAtEnd = m_layout->rows();
    // The rows stay open (on a server, in their snapshot) for pages laid out again.
    m_layout.reset();
}

long long PreviewPages::rowsRead() const
{
    // Once the report was laid out to its end, all of its rows (a page laid out again reads
    // some of them again).
    return m_complete || !m_layout ? m_rowsAtEnd : m_layout->rows();
}
