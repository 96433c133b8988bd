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
    const unsigned long long cents =
        (static_cast<unsigned long long>(negative ? -tenThousandths : tenThousandths) + 50) / 100;
    QString whole = QString::number(cents / 100);
    if (separators)
        for (int i = int(whole.size()) - 3; i > 0; i -= 3)
            whole.insert(i, QLatin1Char(','));
    return (negative && cents ? QStringLiteral("-") : QString()) + whole + QLatin1Char('.') +
           QStringLiteral("%1").arg(cents % 100, 2, 10, QLatin1Char('0'));
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
    return QStringLiteral("%1/%2/%3")
        .arg(n / 100 % 100, 2, 10, QLatin1Char('0'))
        .arg(n % 100, 2, 10, QLatin1Char('0'))
        .arg(n / 10000);
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
