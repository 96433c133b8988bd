// Times the vendor picker on a company's data folder: from the start to the first rows shown with
// no kept index (made from the company), with a kept one and nothing changed, and with a kept one
// after one vendor was changed; then every keystroke of a set of searches typed into the real
// window (up to the list's repaint), and the resident memory as the typing goes on, which must
// stay flat however often the list changes.
//
//   apmaster-bench-picker DATA_FOLDER [--rounds N]
#include "BenchUsage.h"
#include "ResidentMemory.h"

#include "PickerCache.h"
#include "PickerIndex.h"
#include "PickerModel.h"
#include "PickerWindow.h"
#include "VendorRows.h"
#include "data/Databases.h"
#include "data/DbError.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QSqlError>
#include <QSqlQuery>
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

// Gives the company's first vendor another name (or its own back): a change made by another
// user between two runs of the picker.
bool renameFirstVendor(const QString &name, QString *previous)
{
    Databases databases;
    QSqlQuery query(databases.open(QStringLiteral("ap.mdb")));
    if (!query.exec(QStringLiteral("select vendname from vendors where vendnumber = "
                                   "(select min(vendnumber) from vendors)")) ||
        !query.next())
        return false;
    *previous = query.value(0).toString();
    query.finish();
    query.prepare(QStringLiteral("update vendors set vendname = ? where vendnumber = "
                                 "(select min(vendnumber) from vendors)"));
    query.addBindValue(name);
    return query.exec();
}

} // namespace

int main(int argc, char *argv[])
{
    if (answeredHelpOrVersion(
            argc, argv, "apmaster-bench-picker", "DATA_FOLDER [--rounds N]",
            "Times the vendor picker (venlookp) on the company in DATA_FOLDER, on either engine:\n"
            "the start up to the first rows shown with no kept index, with a kept one, and with\n"
            "a kept one after the first vendor was renamed (and named back), then each keystroke of a set of\n"
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

    // The kept index goes into a cache folder of the benchmark's own, so that the first run
    // finds none. BENCH_KEEP_INDEX=1 keeps it for a look at the engine's plans.
    QTemporaryDir cache;
    cache.setAutoRemove(qEnvironmentVariableIsEmpty("BENCH_KEEP_INDEX"));
    const QString file = PickerCache::fileFor(cache.path(), QStringLiteral("venlookp"), folder);
    if (!cache.autoRemove())
        std::printf("kept index: %s\n", qPrintable(file));
    const PickerWindow::Texts texts{QStringLiteral("Find a vendor"), QString(),
                                    QStringLiteral("vendors"), QString()};
    const long before = residentKb();
    // From the start to the first rows painted, as the picker does it when it starts.
    const auto open = [&](const char *how) {
        QElapsedTimer timer;
        timer.start();
        std::unique_ptr<PickerIndex> index = PickerCache::open(
            file, VendorRows::columns(), PickerCache::identity(QStringLiteral("venlookp"), folder),
            [&](PickerIndex &kept) { VendorRows::load(kept, folder); });
        const qint64 ready = timer.elapsed();
        {
            PickerModel model(*index);
            PickerWindow window(model, texts);
            window.show();
            window.findChild<QTableView *>(QStringLiteral("list"))->viewport()->repaint();
        }
        std::printf("%-28s first rows shown after %5lld ms (index ready after %lld ms; %d vendors, "
                    "%d written, %d taken out); load %s\n",
                    how, timer.elapsed(), ready, index->count(),
                    index->wasKept() ? index->added() : index->count(), index->removed(),
                    qPrintable(loadAverage()));
        return index;
    };
    std::unique_ptr<PickerIndex> kept;
    QString previous;
    try {
        kept = open("no kept index (cold):");
        kept = open("kept, nothing changed:");
        if (!renameFirstVendor(QStringLiteral("Renamed By The Benchmark"), &previous)) {
            std::fprintf(stderr, "apmaster-bench-picker: the first vendor cannot be renamed\n");
            return 1;
        }
        kept = open("kept, one vendor renamed:");
        QString ours;
        renameFirstVendor(previous, &ours);
        kept = open("kept, the name back again:");
    } catch (const DbError &error) {
        std::fprintf(stderr, "apmaster-bench-picker: %s\n", qPrintable(error.text()));
        return 1;
    }
    PickerIndex &index = *kept;
    std::printf("resident %ld kB -> %ld kB; kept index %lld kB\n", before, residentKb(),
                QFileInfo(file).size() / 1024);

    PickerModel model(index);
    PickerWindow window(model, texts);
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
