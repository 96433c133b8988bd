#include "ReportRenderer.h"

#include "PdfPages.h"
#include "ReportFailure.h"
#include "ReportLayout.h"
#include "ReportLines.h"
#include "ReportQuery.h"
#include "ScreenPages.h"

#include "common/OutputFile.h"

#include <QFile>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>

using namespace ReportLines;

namespace {

QString csvField(const QString &s)
{
    if (!s.contains(QLatin1Char(',')) && !s.contains(QLatin1Char('"')) &&
        !s.contains(QLatin1Char('\n')) && !s.contains(QLatin1Char('\r')))
        return s;
    return QLatin1Char('"') + QString(s).replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
           QLatin1Char('"');
}

// Counts the pages of a layout and draws nothing.
class PageTally : public PagePainter {
public:
    int pages = 0;
    void beginPage() override { ++pages; }
    void endPage() override {}
    void text(TextStyle, double, double, double, Qt::Alignment, const QString &) override {}
    void line(QPointF, QPointF) override {}
};

// Pages drawn on another painter with the number of pages known beforehand.
class CountedPages : public PagePainter {
public:
    CountedPages(PagePainter &onto, int pages) : m_onto(onto), m_count(QString::number(pages)) {}
    void beginPage() override { m_onto.beginPage(); }
    void endPage() override { m_onto.endPage(); }
    void text(TextStyle style, double x, double baseline, double room, Qt::Alignment align,
              const QString &s) override
    {
        m_onto.text(style, x, baseline, room, align, s);
    }
    void line(QPointF from, QPointF to) override { m_onto.line(from, to); }
    void pageCount(double x, double baseline) override
    {
        m_onto.text(TextStyle::Body, x, baseline, 100, Qt::AlignLeft, m_count);
    }

private:
    PagePainter &m_onto;
    QString m_count;
};

// The rows ended because the engine failed.
void failOnRowsError(const ReportQuery &rows)
{
    if (!rows.error().isEmpty())
        ReportFailure::raise(rows.error());
}

void csvLine(QIODevice &out, const QStringList &fields)
{
    QStringList quotedFields;
    for (const QString &f : fields)
        quotedFields << csvField(f);
    out.write((quotedFields.join(QLatin1Char(',')) + QStringLiteral("\r\n")).toUtf8());
}

} // namespace

long long ReportRenderer::paint(ReportQuery &rows, QPagedPaintDevice &device) const
{
    // A sheet out of the printer cannot be printed again, and each says how many there are:
    // the pages are counted first, then laid out again onto the printer, so that no more than
    // a page is held at a time.
    PageTally tally;
    ReportLayout(m_def, m_request, rows, tally).run();
    if (rows.error().isEmpty())
        rows.restartAt(0);
    failOnRowsError(rows);
    device.setPageLayout(QPageLayout(
        QPageSize(QPageSize::Letter),
        m_def.landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    QPainter painter;
    if (!painter.begin(&device))
        ReportFailure::raise(QStringLiteral("The output cannot be started."));
    const double scale = device.logicalDpiX() / 72.0; // the layout works in points
    painter.scale(scale, scale);
    ScreenPages sheets(painter, &device);
    CountedPages pages(sheets, tally.pages);
    const long long count = ReportLayout(m_def, m_request, rows, pages).run();
    painter.end();
    failOnRowsError(rows);
    return count;
}

long long ReportRenderer::pdf(ReportQuery &rows, QIODevice &out) const
{
    PdfPages pages(out, ReportLayout::pageSize(m_def), m_def.title);
    const long long count = ReportLayout(m_def, m_request, rows, pages).run();
    failOnRowsError(rows);
    if (!pages.finish())
        ReportFailure::raise(QStringLiteral("The PDF file cannot be written: ") +
                             out.errorString());
    return count;
}

long long ReportRenderer::csv(ReportQuery &rows, QIODevice &out) const
{
    long long count = 0;
    if (m_def.layout == ReportDefinition::Layout::List) {
        QStringList captions;
        for (const auto &column : m_def.columns)
            captions << column.caption;
        csvLine(out, captions);
        const Positions at(m_def, rows);
        Totals group(m_def.columns.size());
        QString key;
        bool inGroup = false;
        QStringList last;
        int lastType = 0;
        while (true) {
            const bool more = rows.next();
            const QString k = more && m_def.group ? rows.value(at.group).toString() : QString();
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
            add(m_def, at, rows, group);
            ++count;
            last = rowCells(m_def, at, rows, true);
            if (at.thresholdType >= 0)
                lastType = rows.value(at.thresholdType).toInt();
            if (m_def.detail)
                csvLine(out, last);
        }
    } else {
        const Positions at(m_def, rows);
        while (rows.next()) {
            QStringList fields = recordLines(m_def, at, rows);
            for (const auto &[description, value] : recordPairs(m_def, at, rows))
                fields << description << value;
            csvLine(out, fields);
            ++count;
        }
    }
    failOnRowsError(rows);
    return count;
}

void writeReportFile(const ReportDefinition &def, const RunnerRequest &request)
{
    const bool csv = request.printFileType.compare(QLatin1String("CSV"), Qt::CaseInsensitive) == 0;
    // The file takes its name only when the whole report was written, and never the name of
    // anything but an earlier report of the same kind.
    OutputFile file(request.printFileName, csv ? OutputFile::Kind::Csv : OutputFile::Kind::Pdf);
    QString error;
    if (!file.open(error))
        ReportFailure::raise(error);
    ReportQuery rows;
    rows.open(def, request);
    const ReportRenderer renderer(def, request);
    if (csv)
        renderer.csv(rows, file.device());
    else
        renderer.pdf(rows, file.device());
    if (!file.commit(error))
        ReportFailure::raise(error);
}
