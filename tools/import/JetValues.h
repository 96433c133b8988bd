#pragma once

#include <QDate>
#include <QString>

#include <optional>

// The values as the Access file stores them, turned into what the module keeps.
namespace JetValues {

struct DateTime {
    QDate date;
    int seconds = 0; // of the day
};

// A stored date and time: whole days since 1899-12-30 (negative before it), the time of day in
// the fraction taken without its sign (-1.25 is 1899-12-29 06:00). None for a value outside
// the years 100 to 9999.
std::optional<DateTime> dateTime(double stored);
// "YYYY-MM-DD HH:MM:SS", how a date of a table the module does not know is kept.
QString isoText(const DateTime &value);
// The number YYYYMMDD the module keeps its dates as.
int yyyymmdd(const QDate &date);
// Whether a number is a date of the form YYYYMMDD that the calendar has.
bool isYyyymmdd(qint64 value);
// Ten-thousandths (the stored Currency value) as a decimal with four places, exact.
QString moneyText(qint64 tenThousandths);

} // namespace JetValues
