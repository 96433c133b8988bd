#pragma once

#include "common/Clock.h"

// A clock that always reads the same moment.
class FixedClock : public Clock {
public:
    explicit FixedClock(QDateTime at = QDateTime(QDate(2026, 11, 21), QTime(9, 30))) :
        m_at(std::move(at))
    {
    }
    QDateTime now() const override { return m_at; }
    void set(const QDateTime &at) { m_at = at; }

private:
    QDateTime m_at;
};
