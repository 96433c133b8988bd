#include "ReportRenderer.h"

#include "ReportQuery.h"
#include "ReportValues.h"

#include <QFile>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRawFont>
#include <QSaveFile>

#include <algorithm>
#include <optional>

namespace {

using Def = ReportDefinition;
using F = Def::Format;

constexpr double inch = 72.0; // the painter works in points
constexpr double lineHeight = 11.0;
constexpr double edge = 0.5 * inch;

QString filled(const Def::Template &line, const ReportQuery &rows, bool &anyValue)
{
    QString text;
    anyValue = false;
    bool hasField = false;
    for (const auto &piece : line) {
        if (!piece.field) {
            text += piece.text;
            continue;
        }
        hasField = true;
        const QString value = ReportValues::shown(rows.value(*piece.field), piece.format);
        anyValue = anyValue || !value.isEmpty();
        text += value;
    }
    if (!hasField)
        anyValue = true;
    return text;
}

bool rightAligned(F format)
{
    return format == F::Money || format == F::Number;
}

// The totals of a group or of the whole report: one per column, in ten-thousandths.
struct Totals {
    std::vector<long long> sums;
    long long threshold = 0; // the threshold amount's sum
    long long rows = 0;
    explicit Totals(size_t columns = 0) : sums(columns, 0) {}
};

// A font as glyphs, and room for one line of them.
struct Glyphs {
    QRawFont font;
    quint32 ellipsis = 0;
    double ellipsisAdvance = 0;
    QList<quint32> indexes;
    QList<QPointF> advances, positions;
    void load(const QFont &f)
    {
        font = QRawFont::fromFont(f);
        const QChar dots(0x2026);
        int one = 1;
        font.glyphIndexesForChars(&dots, 1, &ellipsis, &one);
        QPointF advance;
        font.advancesForGlyphIndexes(&ellipsis, &advance, 1);
        ellipsisAdvance = advance.x();
    }
};

class Painter {
public:
    Painter(const Def &def, const RunnerRequest &request, QPagedPaintDevice &device) :
        m_def(def), m_request(request), m_device(device)
    {
    }

    bool begin(QString &error)
    {
        QPageLayout layout(QPageSize(QPageSize::Letter),
                           m_def.landscape ? QPageLayout::Landscape : QPageLayout::Portrait,
                           QMarginsF(0, 0, 0, 0));
        m_device.setPageLayout(layout);
        if (!m_painter.begin(&m_device)) {
            error = QStringLiteral("The output cannot be started.");
            return false;
        }
        const double scale = m_device.logicalDpiX() / inch;
        m_painter.scale(scale, scale);
        // The user's margins shift the whole page (twips: 20 to a point).
        m_painter.translate(m_request.marginLeft / 20.0, m_request.marginTop / 20.0);
        const QSizeF page = layout.fullRect(QPageLayout::Point).size();
        m_width = page.width();
        m_height = page.height();
        m_body = QFont(QStringLiteral("DejaVu Sans"));
        m_body.setPixelSize(8);
        m_bold = m_body;
        m_bold.setBold(true);
        m_title = m_bold;
        m_title.setPixelSize(13);
        m_bodyGlyphs.load(m_body);
        m_boldGlyphs.load(m_bold);
        m_titleGlyphs.load(m_title);
        const QRawFont &raw = m_bodyGlyphs.font;
        m_baseline = (lineHeight + raw.ascent() - raw.descent()) / 2;
        return true;
    }

    void end()
    {
        if (m_page == 0)
            startPage(); // an empty report still has its page
        footer();
        m_painter.end();
    }

    // Room for n more lines on this page, a new page otherwise.
    void need(int lines)
    {
        if (m_page == 0 || m_y + lines * lineHeight > m_height - edge - 2 * lineHeight) {
            if (m_page > 0) {
                footer();
                m_device.newPage();
            }
            startPage();
        }
    }

    void text(double x, double width, const QString &s, bool right, bool bold = false)
    {
        run(bold ? m_boldGlyphs : m_bodyGlyphs, x, m_y + m_baseline, width - 4, s,
            right ? Qt::AlignRight : Qt::AlignLeft);
    }

    // One line of text from its baseline, cut with an ellipsis where it does not fit. The
    // glyphs come straight from the font's character map, with no text layout: the report's
    // texts are plain runs of letters, the layout engine costs more than the rest of the page
    // together, and its ligatures ("fi" as one glyph) would hide the words from PDF readers.
    void run(Glyphs &g, double x, double baseline, double room, const QString &s,
             Qt::Alignment align)
    {
        if (s.isEmpty())
            return;
        g.indexes.resize(s.size());
        int count = int(s.size());
        if (!g.font.glyphIndexesForChars(s.constData(), count, g.indexes.data(), &count))
            return;
        g.indexes.resize(count);
        g.advances.resize(count);
        g.font.advancesForGlyphIndexes(g.indexes.data(), g.advances.data(), count);
        double total = 0;
        for (const QPointF &a : g.advances)
            total += a.x();
        if (total > room) {
            // Cut at the last glyph that leaves room for the ellipsis.
            double used = g.ellipsisAdvance;
            int keep = 0;
            while (keep < count && used + g.advances[keep].x() <= room)
                used += g.advances[keep++].x();
            g.indexes.resize(keep);
            g.indexes.push_back(g.ellipsis);
            g.advances.resize(keep);
            g.advances.push_back(QPointF(g.ellipsisAdvance, 0));
            count = keep + 1;
            total = used;
        }
        g.positions.resize(count);
        double at = 0;
        for (int i = 0; i < count; ++i) {
            g.positions[i] = QPointF(at, 0);
            at += g.advances[i].x();
        }
        QGlyphRun glyphs;
        glyphs.setRawFont(g.font);
        glyphs.setGlyphIndexes(g.indexes);
        glyphs.setPositions(g.positions);
        const double left = align & Qt::AlignRight     ? x + room - total
                            : align & Qt::AlignHCenter ? x + (room - total) / 2
                                                       : x;
        m_painter.drawGlyphRun(QPointF(left, baseline), glyphs);
    }

    // A label's line, its top at y.
    void labelLine(double x, double y, double room, const QString &s)
    {
        run(m_bodyGlyphs, x, y + m_baseline - 1, room, s, Qt::AlignLeft);
    }

    void advance(double lines = 1) { m_y += lines * lineHeight; }
    double y() const { return m_y; }
    void setY(double y) { m_y = y; }
    QPainter &painter() { return m_painter; }
    bool newSheet()
    {
        if (m_page > 0)
            m_device.newPage();
        ++m_page;
        return true;
    }
    int page() const { return m_page; }
    double width() const { return m_width; }

    void columnHeadings()
    {
        double x = edge;
        for (const auto &column : m_def.columns) {
            text(x, column.width * inch, column.caption, rightAligned(column.format), true);
            x += column.width * inch;
        }
        advance();
        m_painter.drawLine(QPointF(edge, m_y), QPointF(x, m_y));
        advance(0.4);
    }

private:
    void startPage()
    {
        ++m_page;
        m_y = edge;
        run(m_titleGlyphs, edge, m_y + 13, m_width - 2 * edge, m_def.title, Qt::AlignHCenter);
        m_y += 24;
        if (m_def.layout == Def::Layout::List)
            columnHeadings();
    }

    void footer()
    {
        run(m_bodyGlyphs, edge, m_height - edge - lineHeight + m_baseline, m_width - 2 * edge,
            QStringLiteral("Page %1").arg(m_page), Qt::AlignHCenter);
    }

    const Def &m_def;
    const RunnerRequest &m_request;
    QPagedPaintDevice &m_device;
    QPainter m_painter;
    QFont m_body, m_bold, m_title;
    Glyphs m_bodyGlyphs, m_boldGlyphs, m_titleGlyphs;
    double m_baseline = 8;
    double m_width = 612, m_height = 792, m_y = edge;
    int m_page = 0;
};

// The texts of a row's columns (the 1099 verdict is a group's, so empty here).
QStringList rowCells(const Def &def, const ReportQuery &rows, bool csv)
{
    QStringList cells;
    for (const auto &column : def.columns) {
        const QVariant value = column.reportable ? QVariant() : rows.value(column.field);
        cells << (column.reportable ? QString()
                  : csv             ? ReportValues::forCsv(value, column.format)
                                    : ReportValues::shown(value, column.format));
    }
    return cells;
}

// A group's or the report's line: the totals in their columns, the 1099 verdict, and the
// values of the group's last row in the other columns.
QStringList totalCells(const Def &def, QStringList cells, int type1099, const struct Totals &t,
                       bool csv);

QStringList totalCells(const Def &def, QStringList cells, int type1099, const Totals &t, bool csv)
{
    for (size_t i = 0; i < def.columns.size(); ++i) {
        const auto &column = def.columns[i];
        if (column.reportable)
            cells[int(i)] = ReportValues::reportable(type1099, t.threshold) ? QStringLiteral("Yes")
                                                                            : QStringLiteral("No");
        else if (column.total)
            cells[int(i)] = column.format == F::Money ? ReportValues::moneyText(t.sums[i], !csv)
                                                      : QString::number(t.sums[i] / 10000);
    }
    return cells;
}

void add(const Def &def, const ReportQuery &rows, Totals &totals)
{
    ++totals.rows;
    for (size_t i = 0; i < def.columns.size(); ++i)
        if (def.columns[i].total)
            totals.sums[i] += ReportValues::money(rows.value(def.columns[i].field));
    if (!def.thresholdAmount.table.isEmpty())
        totals.threshold += ReportValues::money(rows.value(def.thresholdAmount));
}

long long paintList(const Def &def, ReportQuery &rows, Painter &p)
{
    Totals grand(def.columns.size()), group(def.columns.size());
    bool inGroup = false;
    QString groupKey;
    QStringList last; // the group's last row, for a summary line
    int lastType = 0;
    // lead: a text over the first columns that are empty on a total line.
    auto line = [&](const QStringList &cells, bool bold, const QString &lead = QString()) {
        double x = edge;
        size_t i = 0;
        if (!lead.isEmpty()) {
            double width = 0;
            for (; i < def.columns.size() && cells[int(i)].isEmpty(); ++i)
                width += def.columns[i].width * inch;
            p.text(x, width, lead, false, bold);
            x += width;
        }
        for (; i < def.columns.size(); ++i) {
            const auto &column = def.columns[i];
            p.text(x, column.width * inch, cells[int(i)], rightAligned(column.format), bold);
            x += column.width * inch;
        }
        p.advance();
    };
    // A total line: "Total" in the first column, the sums under their columns.
    auto totalLine = [&](const Totals &t, const QString &lead) {
        QStringList blank;
        for (size_t i = 0; i < def.columns.size(); ++i)
            blank << QString();
        QStringList cells = totalCells(def, blank, 0, t, false);
        for (size_t i = 0; i < def.columns.size(); ++i)
            if (def.columns[i].reportable)
                cells[int(i)].clear();
        line(cells, true, lead);
    };
    long long count = 0;
    while (true) {
        const bool more = rows.next();
        const QString key = more && def.group ? rows.value(*def.group).toString() : QString();
        if (def.group && inGroup && (!more || key != groupKey)) {
            if (def.detail) {
                p.need(2);
                totalLine(group, QStringLiteral("Total"));
                p.advance(0.5);
            } else {
                p.need(1);
                line(totalCells(def, last, lastType, group, false), false);
            }
            inGroup = false;
        }
        if (!more)
            break;
        if (def.group && !inGroup) {
            group = Totals(def.columns.size());
            groupKey = key;
            inGroup = true;
            bool any = false;
            const QString heading = filled(def.groupHeader, rows, any);
            if (def.detail && !heading.isEmpty()) {
                p.need(3);
                p.text(edge, p.width() - 2 * edge, heading, false, true);
                p.advance();
            }
        }
        ++count;
        add(def, rows, group);
        add(def, rows, grand);
        if (def.detail) {
            p.need(1);
            line(rowCells(def, rows, false), false);
        } else {
            last = rowCells(def, rows, false);
            if (!def.thresholdType.table.isEmpty())
                lastType = rows.value(def.thresholdType).toInt();
        }
    }
    p.need(3);
    p.advance(0.5);
    const bool totals = std::any_of(def.columns.begin(), def.columns.end(),
                                    [](const Def::Column &c) { return c.total; });
    if (totals)
        totalLine(grand, QStringLiteral("Report total"));
    p.text(edge, p.width() - 2 * edge, QStringLiteral("%1 %2").arg(count).arg(def.countNoun),
           false);
    p.advance();
    return count;
}

// The lines of a label or card that have something to show.
QStringList recordLines(const Def &def, const ReportQuery &rows)
{
    QStringList out;
    for (const auto &line : def.lines) {
        bool any = false;
        const QString text = filled(line, rows, any);
        if (any && !text.trimmed().isEmpty())
            out << text;
    }
    return out;
}

// The description and value pairs of a card, up to the record's count.
std::vector<std::pair<QString, QString>> recordPairs(const Def &def, const ReportQuery &rows)
{
    std::vector<std::pair<QString, QString>> out;
    if (!def.pairs)
        return out;
    const int count = std::min(def.pairs->most, rows.value(def.pairs->count).toInt());
    for (int i = 1; i <= count; ++i) {
        const QString n = QString::number(i);
        out.emplace_back(
            rows.value({def.pairs->description.table, def.pairs->description.column + n})
                .toString(),
            rows.value({def.pairs->value.table, def.pairs->value.column + n}).toString());
    }
    return out;
}

long long paintCards(const Def &def, ReportQuery &rows, Painter &p)
{
    long long count = 0;
    while (rows.next()) {
        const QStringList lines = recordLines(def, rows);
        const auto pairs = recordPairs(def, rows);
        p.need(int(lines.size() + pairs.size()) + 1);
        for (int i = 0; i < lines.size(); ++i) {
            p.text(edge, p.width() - 2 * edge, lines[i], false, i == 0);
            p.advance();
        }
        for (const auto &[description, value] : pairs) {
            p.text(edge + 0.25 * inch, 2.0 * inch, description, false);
            p.text(edge + 2.25 * inch, p.width() - 2 * edge - 2.25 * inch, value, false);
            p.advance();
        }
        p.advance(0.6);
        ++count;
    }
    p.need(1);
    p.text(edge, p.width() - 2 * edge, QStringLiteral("%1 %2").arg(count).arg(def.countNoun),
           false);
    return count;
}

long long paintLabels(const Def &def, ReportQuery &rows, Painter &p)
{
    const auto &s = def.sheet;
    const int perSheet = s.across * s.down;
    long long count = 0;
    while (rows.next()) {
        const int slot = int(count % perSheet);
        if (slot == 0)
            p.newSheet();
        const double x = (s.left + (slot % s.across) * s.pitchX) * inch + 6;
        const double top = (s.top + (slot / s.across) * s.pitchY) * inch;
        const QStringList lines = recordLines(def, rows);
        const int fit = std::max(1, int((s.height * inch - 4) / 9.5));
        // The lines sit in the middle of the label's height.
        double y =
            top +
            std::max(2.0, (s.height * inch - std::min<int>(fit, int(lines.size())) * 9.5) / 2);
        for (int i = 0; i < lines.size() && i < fit; ++i) {
            p.labelLine(x, y, s.width * inch - 10, lines[i]);
            y += 9.5;
        }
        ++count;
    }
    if (count == 0)
        p.newSheet();
    return count;
}

QString csvField(const QString &s)
{
    if (!s.contains(QLatin1Char(',')) && !s.contains(QLatin1Char('"')) &&
        !s.contains(QLatin1Char('\n')) && !s.contains(QLatin1Char('\r')))
        return s;
    return QLatin1Char('"') + QString(s).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

void csvLine(QIODevice &out, const QStringList &fields)
{
    QStringList quotedFields;
    for (const QString &f : fields)
        quotedFields << csvField(f);
    out.write((quotedFields.join(QLatin1Char(',')) + QStringLiteral("\r\n")).toUtf8());
}

} // namespace

long long ReportRenderer::paint(ReportQuery &rows, QPagedPaintDevice &device, QString &error) const
{
    Painter p(m_def, m_request, device);
    if (!p.begin(error))
        return -1;
    long long count = 0;
    switch (m_def.layout) {
    case Def::Layout::List:
        count = paintList(m_def, rows, p);
        break;
    case Def::Layout::Cards:
        count = paintCards(m_def, rows, p);
        break;
    case Def::Layout::Labels:
        count = paintLabels(m_def, rows, p);
        break;
    }
    if (m_def.layout == Def::Layout::Labels)
        p.painter().end();
    else
        p.end();
    if (!rows.error().isEmpty()) {
        error = rows.error();
        return -1;
    }
    return count;
}

long long ReportRenderer::csv(ReportQuery &rows, QIODevice &out, QString &error) const
{
    long long count = 0;
    if (m_def.layout == Def::Layout::List) {
        QStringList captions;
        for (const auto &column : m_def.columns)
            captions << column.caption;
        csvLine(out, captions);
        Totals group(m_def.columns.size());
        QString key;
        bool inGroup = false;
        QStringList last;
        int lastType = 0;
        while (true) {
            const bool more = rows.next();
            const QString k = more && m_def.group ? rows.value(*m_def.group).toString() : QString();
            if (!m_def.detail && inGroup && (!more || k != key)) {
                csvLine(out, totalCells(m_def, last, lastType, group, true));
                inGroup = false;
            }
            if (!more)
                break;
            if (!inGroup) {
                group = Totals(m_def.columns.size());
                key = k;
                inGroup = true;
            }
            add(m_def, rows, group);
            ++count;
            last = rowCells(m_def, rows, true);
            if (!m_def.thresholdType.table.isEmpty())
                lastType = rows.value(m_def.thresholdType).toInt();
            if (m_def.detail)
                csvLine(out, last);
        }
    } else {
        while (rows.next()) {
            QStringList fields = recordLines(m_def, rows);
            for (const auto &[description, value] : recordPairs(m_def, rows))
                fields << description << value;
            csvLine(out, fields);
            ++count;
        }
    }
    if (!rows.error().isEmpty()) {
        error = rows.error();
        return -1;
    }
    return count;
}

bool writeReportFile(const ReportDefinition &def, const RunnerRequest &request, QString &error)
{
    ReportQuery rows;
    if (!rows.open(def, request, error))
        return false;
    const ReportRenderer renderer(def, request);
    // The file appears only when the whole report was written.
    QSaveFile file(request.printFileName);
    if (!file.open(QIODevice::WriteOnly)) {
        error = QStringLiteral("The file %1 cannot be written: %2")
                    .arg(request.printFileName, file.errorString());
        return false;
    }
    long long count = 0;
    if (request.printFileType.compare(QLatin1String("CSV"), Qt::CaseInsensitive) == 0) {
        count = renderer.csv(rows, file, error);
    } else {
        QPdfWriter pdf(&file);
        pdf.setResolution(720);
        pdf.setTitle(def.title);
        pdf.setCreator(QStringLiteral("cryprint"));
        count = renderer.paint(rows, pdf, error);
    }
    if (count < 0)
        return false;
    if (!file.commit()) {
        error = QStringLiteral("The file %1 cannot be written: %2")
                    .arg(request.printFileName, file.errorString());
        return false;
    }
    return true;
}
