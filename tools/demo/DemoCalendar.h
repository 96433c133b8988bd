#pragma once

#include <vector>

namespace Demo {

// The two years of the demo books, last year and the given year, to 31 December of the given
// year, with a check run every Friday. Days are Julian day numbers; dates are YYYYMMDD.
class Calendar {
public:
    explicit Calendar(int year);

    int year() const { return m_year; }
    int firstDay() const { return m_firstDay; } // 1 January of last year
    int lastDay() const { return m_lastDay; }   // 31 December of the year
    int firstDayOfYear() const { return m_yearStart; }
    // YYYYMMDD of a day from firstDay() to 90 days after lastDay().
    int dateOf(int day) const { return m_dates[std::size_t(day - m_firstDay)]; }
    static int dayOf(int year, int month, int day);

    int runCount() const { return m_runCount; }
    int runDay(int run) const { return m_firstRunDay + 7 * run; }
    // The first check run on or after the day; -1 when it would fall after lastDay().
    int runOnOrAfter(int day) const;

private:
    int m_year;
    int m_firstDay;
    int m_lastDay;
    int m_yearStart;
    int m_firstRunDay;
    int m_runCount;
    std::vector<int> m_dates;
};

} // namespace Demo
