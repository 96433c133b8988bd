// Times the vendor picker on a company's data folder: the copy of the vendors into the picker's
// scratch index when it opens, then every keystroke of a set of searches typed into the real
// window (up to the list's repaint), and the resident memory as the typing goes on, which must
// stay flat however often the list changes.
//
//   apmaster-bench-picker DATA_FOLDER [--rounds N]
#include "BenchUsage.h"
#include "ResidentMemory.h"

#include "PickerIndex.h"
#include "PickerModel.h"
#include "PickerWindow.h"
#include "VendorRows.h"
#include "data/DbError.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

// What a bookkeeper types: a city most vendors share, a name, a contact's two names, part of a
// telephone number, a number, a name that is not there, and two words at once.
const char *const searches[] = {"springfield", "o'brien",  "walt king",   "5550194",  "12345",
                                "zzqx",        "edmonton", "cooper sand", "apex snow"};

// The processor time this thread has used, in ms: unlike the wall clock, not stretched by other
// programs on a busy machine.
double threadCpuMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

// The load average of the last minute, as the system reports it.
QString loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QStringLiteral("unknown");
    return QString::fromLatin1(file.readAll()).section(QLatin1Char(' '), 0, 0);
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char *argv[])
{
    if (answeredHelpOrVersion(
            argc, argv, "apmaster-bench-picker", "DATA_FOLDER [--rounds N]",
            "Times the vendor picker (venlookp) on the company in DATA_FOLDER, on either engine:\n"
            "the copy of the vendors into its scratch index, then each keystroke of a set of\n"
            "searches typed into the real window up to the list's repaint, with the number of\n"
            "lines listed and the resident memory. --rounds N types the searches N times (3)\n"
            "and prints the memory after each round, which must stay flat."))
        return 0;
    if (argc < 2) {
        std::fprintf(stderr, "Usage: apmaster-bench-picker DATA_FOLDER [--rounds N]\n");
        return 2;
    }
    int rounds = 3;
    for (int i = 2; i + 1 < argc; ++i) // NOLINT: the value follows its option
        if (QByteArray(argv[i]) == "--rounds")
            rounds = std::max(1, QByteArray(argv[i + 1]).toInt());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QString folder = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
    QDir::setCurrent(folder);

    QTemporaryDir scratch;
    // BENCH_KEEP_INDEX=1 keeps the scratch index for a look at the engine's plans.
    scratch.setAutoRemove(qEnvironmentVariableIsEmpty("BENCH_KEEP_INDEX"));
    if (!scratch.autoRemove())
        std::printf("scratch index kept: %s\n", qPrintable(scratch.filePath("list.db")));
    const long before = residentKb();
    QElapsedTimer timer;
    timer.start();
    PickerIndex index(scratch.filePath(QStringLiteral("list.db")), VendorRows::columns());
    qint64 copied = 0;
    try {
        VendorRows::load(index, folder);
        copied = timer.elapsed();
        index.finish();
    } catch (const DbError &error) {
        std::fprintf(stderr, "apmaster-bench-picker: %s\n", qPrintable(error.text()));
        return 1;
    }
    std::printf("index: %d vendors copied in %lld ms and indexed in %lld ms more; resident %ld kB "
                "-> %ld kB; scratch file %lld kB\n",
                index.count(), copied, timer.elapsed() - copied, before, residentKb(),
                QFileInfo(scratch.filePath(QStringLiteral("list.db"))).size() / 1024);

    PickerModel model(index);
    PickerWindow window(
        model, {QStringLiteral("Find a vendor"), QString(), QStringLiteral("vendors"), QString()});
    window.show();
    auto *search = window.findChild<QLineEdit *>(QStringLiteral("search"));
    auto *list = window.findChild<QTableView *>(QStringLiteral("list"));
    // One keystroke: the key into the box, the list rebuilt, the list painted. The wall time is
    // returned; the processor time goes to `cpu`.
    std::vector<double> cpu;
    double lastCpu = 0;
    const auto keystroke = [&](auto press) {
        QElapsedTimer step;
        const double cpuStart = threadCpuMs();
        step.start();
        press();
        list->viewport()->repaint();
        lastCpu = threadCpuMs() - cpuStart;
        cpu.push_back(lastCpu);
        return step.nsecsElapsed() / 1e6;
    };

    std::vector<double> all;
    double slowest = 0;
    QString slowestText;
    long firstRound = 0;
    for (int round = 1; round <= rounds; ++round) {
        for (const char *text : searches) {
            const QString typed = QString::fromLatin1(text);
            if (round == 1)
                std::printf("\n\"%s\"\n", text);
            for (int i = 0; i < typed.size(); ++i) {
                const double ms =
                    keystroke([&] { QTest::keyClick(search, typed.at(i).toLatin1()); });
                all.push_back(ms);
                if (ms > slowest) {
                    slowest = ms;
                    slowestText = typed.left(i + 1);
                }
                if (round == 1)
                    std::printf("  %-14s %7.2f ms (processor %5.2f ms)  %3d lines%s\n",
                                qPrintable(typed.left(i + 1)), ms, lastCpu, model.rowCount(),
                                index.walking() ? "  (walks the sorted list)" : "");
            }
            // Erased again key by key, as a user corrects a search.
            for (int i = 0; i < typed.size(); ++i) {
                const double ms = keystroke([&] { QTest::keyClick(search, Qt::Key_Backspace); });
                all.push_back(ms);
                if (ms > slowest) {
                    slowest = ms;
                    slowestText = QStringLiteral("(erasing %1)").arg(typed);
                }
            }
        }
        // A heading clicked twice with "spr" typed: the list by city, both ways.
        QTest::keyClicks(search, QStringLiteral("spr"));
        QHeaderView *header = list->horizontalHeader();
        const QPoint city(header->sectionViewportPosition(3) + 5, header->height() / 2);
        for (int click = 0; click < 2; ++click) {
            const double ms =
                keystroke([&] { QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, city); });
            cpu.pop_back(); // a click, not a keystroke
            if (round == 1)
                std::printf("\nheading City clicked (\"spr\" typed): %.2f ms, %d lines\n", ms,
                            model.rowCount());
        }
        search->clear();
        const long resident = residentKb();
        if (round == 1)
            firstRound = resident;
        std::printf("round %d: %zu keystrokes so far, resident %ld kB\n", round, all.size(),
                    resident);
    }
    const auto over16 = [](const std::vector<double> &times) {
        return static_cast<long long>(
            std::count_if(times.begin(), times.end(), [](double ms) { return ms > 16; }));
    };
    std::printf("\nkeystrokes: %zu, median %.2f ms, slowest %.2f ms (%s), over 16 ms: %lld\n",
                all.size(), median(all), slowest, qPrintable(slowestText), over16(all));
    std::printf("processor time per keystroke: median %.2f ms, slowest %.2f ms, over 16 ms: "
                "%lld\n",
                median(cpu), *std::max_element(cpu.begin(), cpu.end()), over16(cpu));
    std::printf("load average of the machine: %s\n", qPrintable(loadAverage()));
    std::printf("resident memory: after the first round %ld kB, after the last %ld kB\n",
                firstRound, residentKb());
    return 0;
}
