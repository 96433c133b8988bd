#pragma once

#include <QStringList>

// Collects the messages of the module's logging categories while it lives.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    // The captured lines of one category ("vendor.startup"), in order.
    QStringList lines(const QString &category) const;
};
