#include "ReportRenderer.h"

#include "PdfPages.h"
#include "RecordedPages.h"
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
    device.setPageLayout(QPageLayout(
        QPageSize(QPageSize::Letter),
        m_def.landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    QPainter painter;
    if (!painter.begin(&device)) {
        error = QStringLiteral("The output cannot be started.");
        return -1;
    }
    const double scale = device.logicalDpiX() / 72.0; // the layout works in points
    painter.scale(scale, scale);
    // A sheet out of the printer cannot be printed again, and each says how many there are:
    // the pages are laid out first, then printed.
    RecordedPages recorded;
    const long long count = ReportLayout(m_def, m_request, rows, recorded).run();
    recorded.setAllLaidOut();
    ScreenPages pages(painter, &device);
    for (int page = 1; page <= recorded.complete(); ++page)
        recorded.replay(page, pages);
    painter.end();
    if (!rows.error().isEmpty()) {
        error = rows.error();
        return -1;
    }
    return count;
}

long long ReportRenderer::pdf(ReportQuery &rows, QIODevice &out, QString &error) const
{
    PdfPages pages(out, ReportLayout::pageSize(m_def), m_def.title);
    const long long count = ReportLayout(m_def, m_request, rows, pages).run();
    if (!rows.error().isEmpty()) {
        error = rows.error();
        return -1;
    }
    if (!pages.finish()) {
        error = QStringLiteral("The PDF file cannot be written: ") + out.errorString();
        return -1;
    }
    return count;
}

long long ReportRenderer::csv(ReportQuery &rows, QIODevice &out, QString &error) const
{
    long long count = 0;
    if (m_def.layout == ReportDefinition::Layout::List) {
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
    const bool csv = request.printFileType.compare(QLatin1String("CSV"), Qt::CaseInsensitive) == 0;
    // The file takes its name only when the whole report was written, and never the name of
    // anything but an earlier report of the same kind.
    OutputFile file(request.printFileName, csv ? OutputFile::Kind::Csv : OutputFile::Kind::Pdf);
    if (!file.open(error))
        return false;
    ReportQuery rows;
    if (!rows.open(def, request, error))
        return false;
    const ReportRenderer renderer(def, request);
    const long long count =
        csv ? renderer.csv(rows, file.device(), error) : renderer.pdf(rows, file.device(), error);
    if (count < 0)
        return false;
    return file.commit(error);
}
