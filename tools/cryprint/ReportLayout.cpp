#include "ReportLayout.h"

#include "PagePainter.h"
#include "PdfPages.h"
#include "ReportLines.h"
#include "ReportQuery.h"
#include "SelectionWords.h"

#include <QDateTime>

#include <QPageLayout>
#include <QPageSize>
#include <QRectF>

#include <algorithm>

using namespace ReportLines;

namespace {

using Def = ReportDefinition;

constexpr double inch = 72.0;
constexpr double lineHeight = 11.0;
constexpr double edge = 0.5 * inch;
// The body text's baseline below the top of its line: the face centred in the line.
constexpr double baseline = 8.25;
constexpr double countGap = 1.5;

// The page being filled: its lines from the top; on each new page the title, the company, when
// it was printed, what was selected and "Page N of M", and the column headings.
// The request's margins shift everything.
class Sheet {
public:
    Sheet(const Def &def, const RunnerRequest &request, PagePainter &pages,
          const QString &company) :
        m_def(def),
        m_pages(pages), m_size(ReportLayout::pageSize(def)),
        // Twips: 20 to a point.
        m_shift(request.marginLeft / 20.0, request.marginTop / 20.0),
        m_company(company.isEmpty() ? QStringLiteral("No company record in config.mdb") : company),
        m_printed(QStringLiteral("Printed ") +
                  QDateTime::currentDateTime().toString(QStringLiteral("MM/dd/yyyy h:mm AP"))),
        m_selection(selectionInWords(request.selectionFormula, def))
    {
    }

    // Room for n more lines on this page, a new page otherwise.
    void need(int lines)
    {
        if (m_page == 0 || m_y + lines * lineHeight > m_size.height() - edge - 2 * lineHeight) {
            if (m_page > 0)
                m_pages.endPage();
            startPage();
        }
    }

    void text(double x, double width, const QString &s, bool right, bool bold = false)
    {
        put(bold ? TextStyle::Bold : TextStyle::Body, x, m_y + baseline, width - 4, s,
            right ? Qt::AlignRight : Qt::AlignLeft);
    }

    // A label's line, its top at y.
    void labelLine(double x, double y, double room, const QString &s)
    {
        put(TextStyle::Body, x, y + baseline - 1, room, s, Qt::AlignLeft);
    }

    void advance(double lines = 1) { m_y += lines * lineHeight; }
    double width() const { return m_size.width(); }
    int page() const { return m_page; }
    double y() const { return m_y; }
    const QString &printed() const { return m_printed; }
    // Goes on where an earlier layout stood, with its page open.
    void resume(int page, double y, const QString &printed)
    {
        m_page = page;
        m_y = y;
        m_printed = printed;
    }

    // A new sheet of labels: no title or page number.
    void newSheet()
    {
        if (m_page > 0)
            m_pages.endPage();
        m_pages.beginPage();
        ++m_page;
    }

    // Ends the last page; an empty report still has its page.
    void finish(bool labels)
    {
        if (labels) {
            if (m_page == 0)
                newSheet();
        } else if (m_page == 0) {
            startPage();
        }
        m_pages.endPage();
    }

private:
    void put(TextStyle style, double x, double base, double room, const QString &s,
             Qt::Alignment align)
    {
        m_pages.text(style, x + m_shift.x(), base + m_shift.y(), room, align, s);
    }

    void startPage()
    {
        m_pages.beginPage();
        ++m_page;
        m_y = edge;
        put(TextStyle::Title, edge, m_y + 13, width() - 2 * edge, m_def.title, Qt::AlignHCenter);
        m_y += 24;
        const double room = width() - 2 * edge;
        put(TextStyle::Bold, edge, m_y + baseline, room * 0.65, m_company, Qt::AlignLeft);
        put(TextStyle::Body, edge + room * 0.65, m_y + baseline, room * 0.35, m_printed,
            Qt::AlignRight);
        advance();
        put(TextStyle::Body, edge, m_y + baseline, room * 0.75, m_selection, Qt::AlignLeft);
        pageOfAll(edge + room);
        advance(1.6);
        if (m_def.layout == Def::Layout::List)
            columnHeadings();
    }

    void columnHeadings()
    {
        double x = edge;
        for (const auto &column : m_def.columns) {
            text(x, column.width * inch, column.caption, rightAligned(column.format), true);
            x += column.width * inch;
        }
        advance();
        m_pages.line(QPointF(edge, m_y) + m_shift, QPointF(x, m_y) + m_shift);
        advance(0.4);
    }

    // "Page N of " and the count, which only the end of the report knows, on the heading's line
    // of the selection; ending at `right` as if the count had as many digits as N. A little
    // more than the space before the count keeps the two words apart in a printer's own face.
    void pageOfAll(double right)
    {
        const QString page = QStringLiteral("Page %1 of ").arg(m_page);
        const double used = PdfPages::width(TextStyle::Body, page) +
                            PdfPages::width(TextStyle::Body, QString::number(m_page));
        const double x = right - used;
        const double base = m_y + baseline;
        put(TextStyle::Body, x, base, used + 20, page, Qt::AlignLeft);
        m_pages.pageCount(x + PdfPages::width(TextStyle::Body, page) + countGap + m_shift.x(),
                          base + m_shift.y());
    }

    const Def &m_def;
    PagePainter &m_pages;
    QSizeF m_size;
    QPointF m_shift;
    QString m_company, m_printed, m_selection;
    double m_y = edge;
    int m_page = 0;
};

} // namespace

struct ReportLayout::State {
    const Def &def;
    ReportQuery &rows;
    const Positions at;
    Sheet sheet;
    long long count = 0;
    bool done = false;
    // A list's groups.
    Totals grand, group;
    bool inGroup = false;
    QString groupKey;
    QStringList last; // the group's last row, for a summary line
    int lastType = 0;
    ReportLayout::Mark before; // as the step under way began

    State(const Def &d, const RunnerRequest &request, ReportQuery &r, PagePainter &pages) :
        def(d), rows(r), at(d, r), sheet(d, request, pages, r.companyName()),
        grand(d.columns.size()), group(d.columns.size())
    {
    }

    void markStepStart();
    void resume(const ReportLayout::Mark &from);
    bool listStep();
    bool cardStep();
    bool labelStep();
    // lead: a text over the first columns that are empty on a total line.
    void line(const QStringList &cells, bool bold, const QString &lead = QString());
    // A total line: the lead in the first columns, the sums under their columns.
    void totalLine(const Totals &t, const QString &lead);
    void countLine();
};

// Called at every row, so it only assigns: the totals' vectors keep their room, the texts are
// shared.
void ReportLayout::State::markStepStart()
{
    before.rowsRead = rows.rowsRead();
    before.count = count;
    before.grand.sums = grand.sums;
    before.grand.threshold = grand.threshold;
    before.grand.rows = grand.rows;
    before.group.sums = group.sums;
    before.group.threshold = group.threshold;
    before.group.rows = group.rows;
    before.inGroup = inGroup;
    before.groupKey = groupKey;
    before.last = last;
    before.lastType = lastType;
    before.page = sheet.page();
    before.y = sheet.y();
    before.printed = sheet.printed();
}

void ReportLayout::State::resume(const ReportLayout::Mark &from)
{
    count = from.count;
    grand = from.grand;
    group = from.group;
    inGroup = from.inGroup;
    groupKey = from.groupKey;
    last = from.last;
    lastType = from.lastType;
    sheet.resume(from.page, from.y, from.printed);
    before = from;
}

void ReportLayout::State::line(const QStringList &cells, bool bold, const QString &lead)
{
    double x = edge;
    size_t i = 0;
    if (!lead.isEmpty()) {
        double width = 0;
        for (; i < def.columns.size() && cells[int(i)].isEmpty(); ++i)
            width += def.columns[i].width * inch;
        sheet.text(x, width, lead, false, bold);
        x += width;
    }
    for (; i < def.columns.size(); ++i) {
        const auto &column = def.columns[i];
        sheet.text(x, column.width * inch, cells[int(i)], rightAligned(column.format), bold);
        x += column.width * inch;
    }
    sheet.advance();
}

void ReportLayout::State::totalLine(const Totals &t, const QString &lead)
{
    QStringList cells = totalCells(def, QStringList(qsizetype(def.columns.size())), 0, t, false);
    for (size_t i = 0; i < def.columns.size(); ++i)
        if (def.columns[i].reportable)
            cells[int(i)].clear();
    line(cells, true, lead);
}

void ReportLayout::State::countLine()
{
    sheet.text(edge, sheet.width() - 2 * edge,
               QStringLiteral("%1 %2").arg(count).arg(def.countNoun), false);
    sheet.advance();
}

bool ReportLayout::State::listStep()
{
    const bool more = rows.next();
    const QString key = more && def.group ? rows.value(at.group).toString() : QString();
    if (def.group && inGroup && (!more || key != groupKey)) {
        if (def.detail) {
            sheet.need(2);
            totalLine(group, QStringLiteral("Total"));
            sheet.advance(0.5);
        } else {
            sheet.need(1);
            line(totalCells(def, last, lastType, group, false), false);
        }
        inGroup = false;
    }
    if (!more) {
        sheet.need(3);
        sheet.advance(0.5);
        if (std::any_of(def.columns.begin(), def.columns.end(),
                        [](const Def::Column &c) { return c.total; }))
            totalLine(grand, QStringLiteral("Report total"));
        countLine();
        return false;
    }
    if (def.group && !inGroup) {
        group = Totals(def.columns.size());
        groupKey = key;
        inGroup = true;
        bool any = false;
        const QString heading = filled(def.groupHeader, at.groupHeader, rows, any);
        if (def.detail && !heading.isEmpty()) {
            sheet.need(3);
            sheet.text(edge, sheet.width() - 2 * edge, heading, false, true);
            sheet.advance();
        }
    }
    ++count;
    add(def, at, rows, group);
    add(def, at, rows, grand);
    if (def.detail) {
        sheet.need(1);
        line(rowCells(def, at, rows, false), false);
    } else {
        last = rowCells(def, at, rows, false);
        if (at.thresholdType >= 0)
            lastType = rows.value(at.thresholdType).toInt();
    }
    return true;
}

bool ReportLayout::State::cardStep()
{
    if (!rows.next()) {
        sheet.need(1);
        countLine();
        return false;
    }
    const QStringList lines = recordLines(def, at, rows);
    const auto pairs = recordPairs(def, at, rows);
    sheet.need(int(lines.size() + pairs.size()) + 1);
    for (int i = 0; i < lines.size(); ++i) {
        sheet.text(edge, sheet.width() - 2 * edge, lines[i], false, i == 0);
        sheet.advance();
    }
    for (const auto &[description, value] : pairs) {
        sheet.text(edge + 0.25 * inch, 2.0 * inch, description, false);
        sheet.text(edge + 2.25 * inch, sheet.width() - 2 * edge - 2.25 * inch, value, false);
        sheet.advance();
    }
    sheet.advance(0.6);
    ++count;
    return true;
}

bool ReportLayout::State::labelStep()
{
    if (!rows.next())
        return false;
    const auto &s = def.sheet;
    const int perSheet = s.across * s.down;
    const int slot = int(count % perSheet);
    if (slot == 0)
        sheet.newSheet();
    const double x = (s.left + (slot % s.across) * s.pitchX) * inch + 6;
    const double top = (s.top + (slot / s.across) * s.pitchY) * inch;
    const QStringList lines = recordLines(def, at, rows);
    const int fit = std::max(1, int((s.height * inch - 4) / 9.5));
    // The lines sit in the middle of the label's height.
    double y =
        top + std::max(2.0, (s.height * inch - std::min<int>(fit, int(lines.size())) * 9.5) / 2);
    for (int i = 0; i < lines.size() && i < fit; ++i) {
        sheet.labelLine(x, y, s.width * inch - 10, lines[i]);
        y += 9.5;
    }
    ++count;
    return true;
}

ReportLayout::ReportLayout(const ReportDefinition &def, const RunnerRequest &request,
                           ReportQuery &rows, PagePainter &pages) :
    m_state(std::make_unique<State>(def, request, rows, pages))
{
}

ReportLayout::ReportLayout(const ReportDefinition &def, const RunnerRequest &request,
                           ReportQuery &rows, PagePainter &pages, const Mark &from) :
    ReportLayout(def, request, rows, pages)
{
    m_state->resume(from);
}

ReportLayout::~ReportLayout() = default;

const ReportLayout::Mark &ReportLayout::stepStart() const
{
    return m_state->before;
}

bool ReportLayout::step()
{
    State &s = *m_state;
    if (s.done)
        return false;
    s.markStepStart();
    bool more = false;
    switch (s.def.layout) {
    case Def::Layout::List:
        more = s.listStep();
        break;
    case Def::Layout::Cards:
        more = s.cardStep();
        break;
    case Def::Layout::Labels:
        more = s.labelStep();
        break;
    }
    if (!more) {
        s.sheet.finish(s.def.layout == Def::Layout::Labels);
        s.done = true;
    }
    return more;
}

long long ReportLayout::run()
{
    while (step()) {
    }
    return m_state->count;
}

long long ReportLayout::rows() const
{
    return m_state->count;
}

QSizeF ReportLayout::pageSize(const ReportDefinition &def)
{
    const QPageLayout layout(QPageSize(QPageSize::Letter),
                             def.landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                             QMarginsF(0, 0, 0, 0));
    return layout.fullRect(QPageLayout::Point).size();
}
