#include "lists/ListFormats.h"

#include "common/Numbers.h"

#include <QDate>
#include <QLocale>
#include <QVariant>

#include <cmath>

namespace ListFormats {

QString date(const QVariant &value)
{
    if (value.isNull())
        return {};
    const long long number = value.toLongLong();
    if (number == 0)
        return {};
    const QDate day(static_cast<int>(number / 10000), static_cast<int>(number / 100 % 100),
                    static_cast<int>(number % 100));
    if (!day.isValid())
        return QString::number(number);
    return day.toString(QStringLiteral("MM/dd/yyyy"));
}

QString currency(double value)
{
    // Cents are rounded half away from zero, as the amounts are kept to four decimals.
    const double cents = std::round(std::fabs(value) * 100.0);
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QString amount = QLatin1Char('$') + english.toString(cents / 100.0, 'f', 2);
    return value < 0 && cents > 0 ? QLatin1Char('(') + amount + QLatin1Char(')') : amount;
}

QString invoiceStatus(const QVariant &value)
{
    const double code = value.toDouble();
    QString shown = Numbers::plain(code);
    if (code >= 1 && code <= 3)
        shown += QStringLiteral("  Open");
    else if (code > 3)
        shown += QStringLiteral("  Paid");
    return shown;
}

QString accountNumber(double value)
{
    return QString::number(value, 'f', 3);
}

} // namespace ListFormats
