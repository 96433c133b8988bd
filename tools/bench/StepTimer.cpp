#include "StepTimer.h"

#include "PaintCounter.h"
#include "ResidentMemory.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {
double runOnce(const std::function<void()> &prepare, const std::function<void()> &work,
               QWidget *painted)
{
    prepare();
    QCoreApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    work();
    QCoreApplication::processEvents();
    if (painted)
        painted->repaint();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

struct Paints {
    int window = 0, fields = 0, mostOnOneField = 0;
};

// One run of a side, timed until the screen is painted: the work and then the events it left,
// among them the paint that shows it; the paint events counted meanwhile.
double runSide(const StepTimer::Side &side, PaintCounter &counter, Paints &paints)
{
    side.prepare();
    QCoreApplication::processEvents();
    counter.start();
    QElapsedTimer timer;
    timer.start();
    side.work();
    QCoreApplication::processEvents();
    const double ms = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    paints = {counter.inWindow(side.window), counter.on(side.fields),
              counter.mostOnOneOf(side.fields)};
    return ms;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}
} // namespace

StepTimer::StepTimer(int runs) : m_runs(std::max(1, runs))
{
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::printf("%-44s %9s   %9s %7s   %s\n", "step", "module", "bare", "ratio", "spread");
}

void StepTimer::step(const char *name, const std::function<void()> &prepare,
                     const std::function<void()> &work, QWidget *painted)
{
    // One run to open what the step opens (a connection is heard only once open), one with its
    // statements recorded, then the timed runs.
    runOnce(prepare, work, painted);
    prepare();
    QCoreApplication::processEvents();
    m_log.start();
    work();
    QCoreApplication::processEvents();
    if (painted)
        painted->repaint();
    const std::vector<RanStatement> ran = m_log.stop();
    const double bare = m_bare.medianMs(ran, m_runs);

    std::vector<double> msecs;
    for (int i = 0; i < m_runs; ++i)
        msecs.push_back(runOnce(prepare, work, painted));
    std::sort(msecs.begin(), msecs.end());
    const double median = msecs[msecs.size() / 2];

    const char *slow = median > frameMs ? "  > one frame" : "";
    if (ran.empty())
        std::printf("%-44s %9.2f ms %12s %7s   %.2f to %.2f, no statements%s\n", name, median, "-",
                    "-", msecs.front(), msecs.back(), slow);
    else
        std::printf("%-44s %9.2f ms %9.2f ms %6.1fx   %.2f to %.2f, %zu statements%s\n", name,
                    median, bare, median / bare, msecs.front(), msecs.back(), ran.size(), slow);
    if (qEnvironmentVariableIsSet("BENCH_STATEMENTS"))
        for (const RanStatement &statement : ran)
            std::printf("    [%d rows] %s\n", statement.rows, qPrintable(statement.shown()));
    for (const QString &failure : m_bare.takeFailures())
        std::printf("    bare run failed: %s\n", qPrintable(failure));
}

void StepTimer::single(const char *name, double ms, const QString &note)
{
    std::printf("%-44s %9.2f ms %s\n", name, ms, qPrintable(note));
}

void StepTimer::note(const QString &text)
{
    std::printf("  %s\n", qPrintable(text));
}

void StepTimer::memory(const char *when)
{
    std::printf("%-44s %9.1f MB resident\n", when, static_cast<double>(residentKb()) / 1024.0);
}

void StepTimer::versusHeading()
{
    std::printf("\n%-44s %9s   %9s %7s   %s\n", "step against the bare display", "module", "bare",
                "ratio", "paint events (window, fields, most on one field)");
}

void StepTimer::versus(const char *name, const Side &module, const Side &bare, PaintCounter &paints)
{
    Paints moduleSeen, bareSeen;
    runSide(module, paints, moduleSeen);
    runSide(bare, paints, bareSeen);
    std::vector<double> moduleMs, bareMs;
    Paints moduleMost, bareMost;
    for (int i = 0; i < m_runs; ++i) {
        moduleMs.push_back(runSide(module, paints, moduleSeen));
        bareMs.push_back(runSide(bare, paints, bareSeen));
        moduleMost = {std::max(moduleMost.window, moduleSeen.window),
                      std::max(moduleMost.fields, moduleSeen.fields),
                      std::max(moduleMost.mostOnOneField, moduleSeen.mostOnOneField)};
        bareMost = {std::max(bareMost.window, bareSeen.window),
                    std::max(bareMost.fields, bareSeen.fields),
                    std::max(bareMost.mostOnOneField, bareSeen.mostOnOneField)};
    }
    const double m = median(moduleMs);
    const double b = median(bareMs);
    std::printf("%-44s %9.2f ms %9.2f ms %6.2fx   module %d, %d, %d; bare %d, %d, %d%s\n", name, m,
                b, m / b, moduleMost.window, moduleMost.fields, moduleMost.mostOnOneField,
                bareMost.window, bareMost.fields, bareMost.mostOnOneField,
                m > frameMs ? "  > one frame" : "");
}
