// Times the report runner rendering a report to PDF (or CSV) without a window on a company's
// data folder: report rows a second, and the resident memory sampled all through the run,
// which must not grow with the number of rows (the rows stream onto the pages).
//
//   apmaster-bench-runner DATA_FOLDER [FROM TO] [--csv] [--report rap014.rpt]
//
// FROM and TO (YYYYMMDD) are the invoice dates of the request (default: the whole of the year
// before this one); the definition is the data folder's, else the one in the source tree.
#include "ReportDefinition.h"
#include "ReportQuery.h"
#include "ReportRenderer.h"
#include "ResidentMemory.h"
#include "RunnerRequest.h"

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPdfWriter>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <thread>

int main(int argc, char *argv[])
{
    // The PDF pages are built in buffers of a few hundred kB, made and freed page after page;
    // without these the C library hands them back to the system and asks again every time.
    mallopt(M_MMAP_THRESHOLD, 64 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 256 * 1024 * 1024);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    const bool csv = args.removeAll(QStringLiteral("--csv")) > 0;
    QString reportFile = QStringLiteral("rap014.rpt");
    const int at = int(args.indexOf(QStringLiteral("--report")));
    if (at >= 0 && at + 1 < args.size()) {
        reportFile = args[at + 1];
        args.remove(at, 2);
    }
    if (args.isEmpty()) {
        std::fprintf(stderr, "Usage: apmaster-bench-runner DATA_FOLDER [FROM TO] [--csv] "
                             "[--report FILE]\n");
        return 2;
    }
    const int lastYear = QDate::currentDate().year() - 1;
    const QString from = args.value(1, QString::number(lastYear * 10000 + 101));
    const QString to = args.value(2, QString::number(lastYear * 10000 + 1231));
    if (!QDir::setCurrent(args[0])) {
        std::fprintf(stderr, "%s is not a folder.\n", qPrintable(args[0]));
        return 2;
    }
    // The runner reads the SQLite files of the data folder; a folder on a database server has
    // none to time.
    if (QFileInfo::exists(QStringLiteral("database.ini"))) {
        std::printf("skipped: %s is on a PostgreSQL server (database.ini), and the report "
                    "runner reads only the SQLite files of a data folder\n",
                    qPrintable(args[0]));
        return 0;
    }
    QString definitionPath = reportFile;
    if (!QFileInfo::exists(definitionPath))
        definitionPath = QStringLiteral(CRYPRINT_DEFINITIONS "/") + reportFile;
    QString error;
    const auto def = ReportDefinition::load(definitionPath, error);
    if (!def) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    QTemporaryDir out;
    RunnerRequest request;
    request.reportFileName = reportFile;
    request.selectionFormula = QStringLiteral("{invoices.invdate} >= %1 and {invoices.invdate} "
                                              "<= %2")
                                   .arg(from, to);
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
    ReportQuery rows;
    long long count = -1;
    if (rows.open(*def, request, error)) {
        QFile file(request.printFileName);
        file.open(QIODevice::WriteOnly);
        const ReportRenderer renderer(*def, request);
        if (csv) {
            count = renderer.csv(rows, file, error);
        } else {
            QPdfWriter pdf(&file);
            pdf.setResolution(720);
            count = renderer.paint(rows, pdf, error);
        }
    }
    const double seconds = double(timer.nsecsElapsed()) / 1e9;
    running = false;
    sampler.join();
    if (count < 0) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    std::printf("%s, invoices %s to %s, to %s: %lld rows in %.2f s, %.0f rows a second, "
                "%.1f MB written\n",
                qPrintable(reportFile), qPrintable(from), qPrintable(to), csv ? "CSV" : "PDF",
                count, seconds, count / std::max(seconds, 1e-9),
                QFileInfo(request.printFileName).size() / 1e6);
    std::printf("resident memory: %.1f MB before, peak %.1f MB; each second:", before / 1024.0,
                peak / 1024.0);
    for (long s : samples)
        std::printf(" %.1f", s / 1024.0);
    std::printf("\n");
    return 0;
}
