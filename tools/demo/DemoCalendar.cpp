#include "DemoCalendar.h"

#include <QDate>

namespace Demo {

namespace {
constexpr int friday = 5;
constexpr int daysAfterLast = 90; // due dates run past the end of the books
} // namespace

Calendar::Calendar(int year) :
    m_year(year), m_firstDay(dayOf(year - 1, 1, 1)), m_lastDay(dayOf(year, 12, 31)),
    m_yearStart(dayOf(year, 1, 1))
{
    const QDate first = QDate::fromJulianDay(m_firstDay);
    m_firstRunDay = m_firstDay + (friday - first.dayOfWeek() + 7) % 7;
    m_runCount = (m_lastDay - m_firstRunDay) / 7 + 1;
    m_dates.reserve(std::size_t(m_lastDay - m_firstDay + daysAfterLast + 1));
    for (int day = m_firstDay; day <= m_lastDay + daysAfterLast; ++day) {
        const QDate date = QDate::fromJulianDay(day);
        m_dates.push_back(date.year() * 10000 + date.month() * 100 + date.day());
    }
}

int Calendar::dayOf(int year, int month, int day)
{
    return int(QDate(year, month, day).toJulianDay());
}

int Calendar::runOnOrAfter(int day) const
{
    if (day <= m_firstRunDay)
        return 0;
    const int run = (day - m_firstRunDay + 6) / 7;
    return runDay(run) > m_lastDay ? -1 : run;
}

} // namespace Demo
