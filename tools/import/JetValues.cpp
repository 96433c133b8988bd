#include "JetValues.h"

#include <cmath>

namespace JetValues {

std::optional<DateTime> dateTime(double stored)
{
    // 100-01-01 and 9999-12-31 are the ends of the range the stored value may take.
    if (!std::isfinite(stored) || stored < -657434.0 || stored >= 2958466.0)
        return std::nullopt;
    const double days = std::trunc(stored);
    long long seconds = std::llround(std::fabs(stored - days) * 86400.0);
    QDate date = QDate(1899, 12, 30).addDays(static_cast<qint64>(days));
    if (seconds >= 86400) { // rounded up to the next midnight
        seconds = 0;
        date = date.addDays(1);
    }
    return DateTime{date, static_cast<int>(seconds)};
}

QString isoText(const DateTime &value)
{
    const int s = value.seconds;
    return QStringLiteral("%1-%2-%3 %4:%5:%6")
        .arg(value.date.year(), 4, 10, QLatin1Char('0'))
        .arg(value.date.month(), 2, 10, QLatin1Char('0'))
        .arg(value.date.day(), 2, 10, QLatin1Char('0'))
        .arg(s / 3600, 2, 10, QLatin1Char('0'))
        .arg(s / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(s % 60, 2, 10, QLatin1Char('0'));
}

int yyyymmdd(const QDate &date)
{
    return date.year() * 10000 + date.month() * 100 + date.day();
}

bool isYyyymmdd(qint64 value)
{
    if (value < 1000101 || value > 99991231)
        return false;
    const int v = static_cast<int>(value);
    return QDate(v / 10000, v / 100 % 100, v % 100).isValid();
}

QString moneyText(qint64 tenThousandths)
{
    const bool negative = tenThousandths < 0;
    const quint64 magnitude =
        negative ? 0 - static_cast<quint64>(tenThousandths) : static_cast<quint64>(tenThousandths);
    return QStringLiteral("%1%2.%3")
        .arg(negative ? QStringLiteral("-") : QString())
        .arg(magnitude / 10000)
        .arg(magnitude % 10000, 4, 10, QLatin1Char('0'));
}

} // namespace JetValues
