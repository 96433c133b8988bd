#include "ReportValues.h"

#include <cmath>

namespace ReportValues {

long long money(const QVariant &value)
{
    return std::llround(value.toDouble() * 10000.0);
}

QString moneyText(long long tenThousandths, bool separators)
{
    const bool negative = tenThousandths < 0;
    // Rounded to cents, half away from zero.
    unsigned long long cents =
        (static_cast<unsigned long long>(negative ? -tenThousandths : tenThousandths) + 50) / 100;
    // Written from the right into a buffer: no string is built a piece at a time.
    char text[40];
    char *at = text + sizeof text;
    *--at = char('0' + cents % 10);
    *--at = char('0' + cents / 10 % 10);
    *--at = '.';
    const bool any = cents != 0;
    cents /= 100;
    int digits = 0;
    do {
        if (separators && digits > 0 && digits % 3 == 0)
            *--at = ',';
        *--at = char('0' + cents % 10);
        cents /= 10;
        ++digits;
    } while (cents != 0);
    if (negative && any)
        *--at = '-';
    return QString::fromLatin1(at, text + sizeof text - at);
}

QString typeName(int type1099)
{
    switch (type1099) {
    case 1:
    case 4:
        return QStringLiteral("1099-MISC");
    case 2:
        return QStringLiteral("1099-INT");
    case 3:
        return QStringLiteral("1099-DIV");
    case 5:
        return QStringLiteral("1099-NEC");
    default:
        return QStringLiteral("None");
    }
}

bool reportable(int type1099, long long tenThousandths)
{
    const long long threshold = 600LL * 10000;
    // The 1099 run's "$600 or more" prints a form for every kind at 600.00 exactly, so the
    // report says Yes there too.
    switch (type1099) {
    case 1:
    case 2:
    case 3:
    case 4:
    case 5:
        return tenThousandths >= threshold;
    default:
        return false;
    }
}

static QString dateText(const QVariant &value)
{
    const long long n = value.toLongLong();
    if (n <= 0)
        return {};
    if (n < 10000101 || n > 99991231)
        return QString::number(n);
    const auto month = int(n / 100 % 100), day = int(n % 100), year = int(n / 10000);
    const char text[10] = {
        char('0' + month / 10),  char('0' + month % 10),      '/',
        char('0' + day / 10),    char('0' + day % 10),        '/',
        char('0' + year / 1000), char('0' + year / 100 % 10), char('0' + year / 10 % 10),
        char('0' + year % 10)};
    return QString::fromLatin1(text, sizeof text);
}

static QString shownAs(const QVariant &value, ReportDefinition::Format format, bool csv)
{
    using F = ReportDefinition::Format;
    if (value.isNull() && format != F::Money)
        return {};
    switch (format) {
    case F::Money:
        return moneyText(money(value), !csv);
    case F::Number: {
        const double d = value.toDouble();
        return d == std::floor(d) && std::fabs(d) < 1e15 ? QString::number(value.toLongLong())
                                                         : QString::number(d);
    }
    case F::Date:
        return dateText(value);
    case F::Type1099:
        return typeName(value.toInt());
    case F::Text:
    case F::Reportable:
        break;
    }
    return value.toString().trimmed();
}

QString shown(const QVariant &value, ReportDefinition::Format format)
{
    return shownAs(value, format, false);
}

QString forCsv(const QVariant &value, ReportDefinition::Format format)
{
    return shownAs(value, format, true);
}

} // namespace ReportValues
