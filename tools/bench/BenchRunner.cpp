// Times the report runner rendering a report to PDF (or CSV) without a window on a company's
// data folder: report rows a second of wall and of processor time, and the resident memory
// sampled all through the run, which must not grow with the number of rows (the rows stream
// onto the pages). With --preview it times the preview window instead: from its start to its
// first page painted.
//
//   apmaster-bench-runner DATA_FOLDER [FROM TO] [--csv | --preview] [--report rap014.rpt]
//
// FROM and TO (YYYYMMDD) are the invoice dates of the request (default: the whole of the year
// before this one; a report without invoices takes every row); the definition is the data
// folder's, else the one in the source tree.
#include "BenchUsage.h"
#include "PageView.h"
#include "PreviewPages.h"
#include "PreviewWindow.h"
#include "ReportDefinition.h"
#include "ReportQuery.h"
#include "ReportRenderer.h"
#include "ResidentMemory.h"
#include "RunnerRequest.h"

#include "common/NumberedError.h"

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPrinter>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <optional>
#include <sys/resource.h>
#include <thread>

namespace {

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// The preview window from its start to its first page painted, and then to its last page.
int timePreview(const ReportDefinition &def, const RunnerRequest &request, bool print)
{
    QElapsedTimer timer;
    timer.start();
    const double processorBefore = processorSeconds();
    PreviewWindow window(def, request);
    window.show();
    window.preview()->widget()->grab(); // paints page 1
    const double first = double(timer.nsecsElapsed()) / 1e6;
    const double firstProcessor = (processorSeconds() - processorBefore) * 1000;
    if (!window.pages().error().isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(window.pages().error()));
        return 1;
    }
    const long long rowsThen = window.pages().rowsRead();
    timer.restart();
    window.preview()->showLastPage();
    window.preview()->widget()->grab();
    const double last = double(timer.nsecsElapsed()) / 1e6;
    std::printf("%s preview: page 1 painted after %.0f ms, %.0f ms of processor (%lld rows "
                "read); the last page (%d of %d, %lld rows) %.1f s later; resident memory "
                "%.1f MB, %d pages kept\n",
                qPrintable(request.reportFileName), first, firstProcessor, rowsThen,
                window.preview()->currentPage(), window.preview()->pageCount(),
                window.pages().rowsRead(), last / 1000, residentKb() / 1024.0,
                window.pages().pagesKept());
    // Back from the end: the page before it is kept; the first and the middle ones are laid
    // out again from the nearest mark.
    const auto timed = [&window](const char *what, int page) {
        QElapsedTimer step;
        step.start();
        window.preview()->setCurrentPage(page);
        window.preview()->widget()->grab();
        std::printf("  %s (page %d): %.1f ms; resident memory %.1f MB, %d pages kept\n", what,
                    window.preview()->currentPage(), double(step.nsecsElapsed()) / 1e6,
                    residentKb() / 1024.0, window.pages().pagesKept());
    };
    const int pages = window.preview()->pageCount();
    timed("Previous from the last page", pages - 1);
    timed("Ctrl+Home", 1);
    timed("Next", 2);
    timed("the middle page", pages / 2);
    timed("Previous from the middle page", pages / 2 - 1);
    timed("the last page again", pages);
    if (print) {
        // The preview's Print to a PDF file through Qt's printer: counted, then laid out again
        // onto the printer, a page at a time.
        QTemporaryDir out;
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(out.filePath(QStringLiteral("printed.pdf")));
        QElapsedTimer step;
        step.start();
        try {
            window.printTo(printer);
        } catch (const NumberedError &e) {
            std::fprintf(stderr, "%s\n", qPrintable(e.text()));
            return 1;
        }
        std::printf("  Print to a PDF file: %.1f s; resident memory %.1f MB\n",
                    double(step.nsecsElapsed()) / 1e9, residentKb() / 1024.0);
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    if (answeredHelpOrVersion(argc, argv, "apmaster-bench-runner",
                              "DATA_FOLDER [FROM TO] [--csv | --preview [--print]] [--report FILE]",
                              "Times the report runner on a company's data folder: FILE "
                              "(rap014.rpt unless given) rendered to PDF, or CSV with --csv, "
                              "rows a second and memory; with --preview, the preview window "
                              "up to its first page painted, its last page and the steps back "
                              "from it (and with --print, its Print to a PDF file). FROM and "
                              "TO (YYYYMMDD) limit the invoice dates (the whole of last year "
                              "unless given)."))
        return 0;
    // The PDF pages are built in buffers of a few hundred kB, made and freed page after page;
    // without these the C library hands them back to the system and asks again every time.
    mallopt(M_MMAP_THRESHOLD, 64 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const bool csv = args.removeAll(QStringLiteral("--csv")) > 0;
    const bool preview = args.removeAll(QStringLiteral("--preview")) > 0;
    const bool print = args.removeAll(QStringLiteral("--print")) > 0;
    QString reportFile = QStringLiteral("rap014.rpt");
    const int at = int(args.indexOf(QStringLiteral("--report")));
    if (at >= 0 && at + 1 < args.size()) {
        reportFile = args[at + 1];
        args.remove(at, 2);
    }
    if (args.isEmpty()) {
        std::fprintf(stderr, "Usage: apmaster-bench-runner DATA_FOLDER [FROM TO] [--csv] "
                             "[--preview] [--report FILE]\n");
        return 2;
    }
    const int lastYear = QDate::currentDate().year() - 1;
    const QString from = args.value(1, QString::number(lastYear * 10000 + 101));
    const QString to = args.value(2, QString::number(lastYear * 10000 + 1231));
    if (!QDir::setCurrent(args[0])) {
        std::fprintf(stderr, "%s is not a folder.\n", qPrintable(args[0]));
        return 2;
    }
    QString definitionPath = reportFile;
    if (!QFileInfo::exists(definitionPath))
        definitionPath = QStringLiteral(CRYPRINT_DEFINITIONS "/") + reportFile;
    std::optional<ReportDefinition> def;
    try {
        def = ReportDefinition::load(definitionPath);
    } catch (const NumberedError &e) {
        std::fprintf(stderr, "%s\n", qPrintable(e.text()));
        return 1;
    }
    QTemporaryDir out;
    RunnerRequest request;
    request.reportFileName = reportFile;
    if (std::any_of(def->tables.begin(), def->tables.end(),
                    [](const auto &t) { return t.name == QLatin1String("invoices"); }))
        request.selectionFormula = QStringLiteral("{invoices.invdate} >= %1 and "
                                                  "{invoices.invdate} <= %2")
                                       .arg(from, to);
    if (preview)
        return timePreview(*def, request, print);
    request.destination = QStringLiteral("File");
    request.printFileType = csv ? QStringLiteral("CSV") : QStringLiteral("PDF");
    request.printFileName =
        out.filePath(csv ? QStringLiteral("out.csv") : QStringLiteral("out.pdf"));

    const long before = residentKb();
    std::atomic<bool> running{true};
    std::atomic<long> peak{before};
    std::vector<long> samples; // once a second
    std::thread sampler([&] {
        int tick = 0;
        while (running) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            const long now = residentKb();
            if (now > peak)
                peak = now;
            if (++tick % 20 == 0)
                samples.push_back(now);
        }
    });
    QElapsedTimer timer;
    timer.start();
    const double processorBefore = processorSeconds();
    ReportQuery rows;
    long long count = -1;
    QString error;
    try {
        rows.open(*def, request);
        QFile file(request.printFileName);
        file.open(QIODevice::WriteOnly);
        const ReportRenderer renderer(*def, request);
        count = csv ? renderer.csv(rows, file) : renderer.pdf(rows, file);
    } catch (const NumberedError &e) {
        error = e.text();
    }
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    const double processor = processorSeconds() - processorBefore;
    running = false;
    sampler.join();
    if (count < 0) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    std::printf("%s, invoices %s to %s, to %s: %lld rows in %.2f s, %.0f rows a second; "
                "%.2f s of processor, %.0f rows a second of processor; %.1f MB written\n",
                qPrintable(reportFile), qPrintable(from), qPrintable(to), csv ? "CSV" : "PDF",
                count, seconds, count / std::max(seconds, 1e-9), processor,
                count / std::max(processor, 1e-9), QFileInfo(request.printFileName).size() / 1e6);
    std::printf("resident memory: %.1f MB before, peak %.1f MB; each second:", before / 1024.0,
                peak / 1024.0);
    for (long s : samples)
        std::printf(" %.1f", s / 1024.0);
    std::printf("\n");
    return 0;
}
