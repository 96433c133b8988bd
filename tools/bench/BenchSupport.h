#pragma once

#include <QElapsedTimer>
#include <QString>

#include <algorithm>
#include <functional>
#include <vector>

// The median of several runs of a piece of work, in milliseconds.
inline double medianMs(int runs, const std::function<void()> &work)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}
