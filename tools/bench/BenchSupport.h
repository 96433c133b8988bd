#pragma once

#include "common/Dialogs.h"

#include <QElapsedTimer>
#include <QString>

#include <algorithm>
#include <functional>
#include <vector>

// Dialogs that nobody answers: the benchmark counts them and says No or Cancel.
class SilentDialogs : public Dialogs {
public:
    int shown = 0;
    QString lastText;

protected:
    void showMessage(const QString &text, Icon, const QString &) override
    {
        ++shown;
        lastText = text;
    }
    int askYesNo(const QString &, const QString &) override { return No; }
    QString askInput(const QString &, const QString &, const QString &) override { return {}; }
};

// The median of several runs of a piece of work, in milliseconds.
inline double medianMs(int runs, const std::function<void()> &work)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(timer.nsecsElapsed() / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}
