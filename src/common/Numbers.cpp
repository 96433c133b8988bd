#include "common/Numbers.h"

#include <cmath>
#include <limits>

namespace Numbers {

double leading(const QString &text)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && (text.at(i) == QLatin1Char(' ') || text.at(i) == QLatin1Char('\t')))
        ++i;
    QString number;
    if (i < n && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+')))
        number += text.at(i++);
    bool point = false;
    bool digits = false;
    for (; i < n; ++i) {
        const QChar c = text.at(i);
        if (c.isDigit() && c.unicode() < 128) {
            number += c;
            digits = true;
        } else if (c == QLatin1Char('.') && !point) {
            number += c;
            point = true;
        } else {
            break;
        }
    }
    if (!digits)
        return 0.0;
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok && std::isfinite(value) ? value : 0.0;
}

long long leadingWhole(const QString &text)
{
    const double value = std::round(leading(text));
    if (value > std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (value < std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<long long>(value);
}

QString plain(double value)
{
    if (value == std::floor(value) && std::fabs(value) < 1e15)
        return QString::number(static_cast<long long>(value));
    QString text = QString::number(value, 'f', 6);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

} // namespace Numbers
