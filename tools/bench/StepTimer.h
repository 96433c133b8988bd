#pragma once

#include "BareEngine.h"
#include "StatementLog.h"

#include <functional>
#include <vector>

class PaintCounter;
class QWidget;

// Times the steps of a benchmark and prints one line for each as it ends: the median time, the
// time of the same statements run bare on the same files, and their ratio. Output is line
// buffered, so a long run shows its figures as they come. With BENCH_STATEMENTS set in the
// environment, each step's statements are listed under it.
class StepTimer {
public:
    // A step slower than one frame is marked.
    static constexpr double frameMs = 16.0;

    explicit StepTimer(int runs);

    // Runs `prepare` (not timed), then times `work` up to the moment `painted` is painted again,
    // `runs` times; before that, once to warm up and once with the statements it runs recorded,
    // and those are timed bare.
    void step(const char *name, const std::function<void()> &prepare,
              const std::function<void()> &work, QWidget *painted = nullptr);
    // One side of a comparison: `work` after `prepare`, timed until the screen has painted it
    // (the events it left are handled, the paints among them); `window` and `fields` are
    // where its paint events are counted.
    struct Side {
        std::function<void()> prepare;
        std::function<void()> work;
        const QWidget *window = nullptr;
        std::vector<const QWidget *> fields;
    };
    // Times the module's step against the same step bare, runs taking turns after a warm-up,
    // and prints both medians, their ratio and the paint events of each: of the whole window,
    // of the fields, and the most one field received.
    void versus(const char *name, const Side &module, const Side &bare, PaintCounter &paints);
    static void versusHeading();

    // A figure timed by the caller, without a bare time.
    static void single(const char *name, double ms, const QString &note = {});
    static void note(const QString &text);
    static void memory(const char *when);

private:
    int m_runs;
    StatementLog m_log;
    BareEngine m_bare;
};
