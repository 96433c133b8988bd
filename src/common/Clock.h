#pragma once

#include <QDateTime>

// Today's date and the time of day; tests fix them.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }
    int currentYear() const { return today().year(); }
};

class SystemClock : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};
