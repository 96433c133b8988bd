#include "ValueConversion.h"

#include "JetValues.h"
#include "ReaderProtocol.h"

#include "data/Money.h"

#include <cmath>

namespace ValueConversion {
namespace {
namespace P = ReaderProtocol;
using Kind = Schema::Kind;

Converted ok(const QVariant &v)
{
    return {v, {}, false};
}

Converted refused(const QString &reason)
{
    return {{}, reason, false};
}

// The number a value holds, for the module's number, money and date columns.
std::optional<double> numberOf(const SourceValue &v)
{
    switch (v.tag) {
    case P::integerValue:
        return double(v.integer);
    case P::realValue:
        return v.real;
    case P::moneyValue:
        return double(v.integer) / 10000.0;
    case P::textValue: {
        bool parsed = false;
        const double d = QString::fromUtf8(v.bytes).trimmed().toDouble(&parsed);
        if (parsed && std::isfinite(d))
            return d;
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

bool isBlankText(const SourceValue &v)
{
    return v.tag == P::textValue && QString::fromUtf8(v.bytes).trimmed().isEmpty();
}

Converted toLong(const SourceValue &v)
{
    if (v.tag == P::integerValue)
        return ok(v.integer);
    const auto n = numberOf(v);
    if (!n || v.tag == P::dateValue)
        return refused(QStringLiteral("it is not a number"));
    if (*n != std::trunc(*n) || std::fabs(*n) > 9.2e18)
        return refused(QStringLiteral("it is not a whole number"));
    return ok(qint64(*n));
}

Converted toDate(const SourceValue &v)
{
    if (v.tag == P::dateValue) {
        const auto dt = JetValues::dateTime(v.real);
        if (!dt)
            return refused(QStringLiteral("it is not a date of the years 100 to 9999"));
        Converted c = ok(JetValues::yyyymmdd(dt->date));
        c.timeDropped = dt->seconds != 0;
        return c;
    }
    const Converted whole = toLong(v);
    if (!whole.refusal.isEmpty())
        return refused(QStringLiteral("it is not a date of the form YYYYMMDD"));
    const qint64 n = whole.value.toLongLong();
    // 0 is how an empty date is kept.
    if (n != 0 && !JetValues::isYyyymmdd(n))
        return refused(QStringLiteral("it is not a date of the form YYYYMMDD"));
    return ok(n);
}

QString textOf(const SourceValue &v)
{
    switch (v.tag) {
    case P::integerValue:
        return QString::number(v.integer);
    case P::realValue:
        return QString::number(v.real, 'g', QLocale::FloatingPointShortest);
    case P::moneyValue:
        return JetValues::moneyText(v.integer);
    case P::dateValue: {
        const auto dt = JetValues::dateTime(v.real);
        return dt ? JetValues::isoText(*dt) : QString::number(v.real);
    }
    default:
        return QString::fromUtf8(v.bytes);
    }
}

Converted toModule(Kind kind, const SourceValue &v)
{
    if (v.tag == P::bytesValue)
        return refused(QStringLiteral("it is binary data"));
    if (kind != Kind::Text && kind != Kind::Memo && isBlankText(v))
        return ok(QVariant()); // an empty entry of a number stays empty
    switch (kind) {
    case Kind::Long:
        return toLong(v);
    case Kind::Date:
        return toDate(v);
    case Kind::Number:
    case Kind::Currency: {
        if (v.tag == P::dateValue)
            return refused(QStringLiteral("it is a date, not a number"));
        const auto n = numberOf(v);
        if (!n)
            return refused(QStringLiteral("it is not a number"));
        return ok(kind == Kind::Currency ? Money::round4(*n) : *n);
    }
    case Kind::Text:
    case Kind::Memo:
        return ok(textOf(v));
    }
    return ok(textOf(v));
}

Converted kept(const ColumnPlan &column, const SourceValue &v)
{
    switch (v.tag) {
    case P::integerValue:
        return ok(v.integer);
    case P::realValue:
        return ok(v.real);
    case P::moneyValue:
        return ok(Money::round4(double(v.integer) / 10000.0));
    case P::dateValue: {
        const auto dt = JetValues::dateTime(v.real);
        if (!dt)
            return refused(QStringLiteral("it is not a date of the years 100 to 9999"));
        return ok(JetValues::isoText(*dt));
    }
    case P::bytesValue:
        return ok(v.bytes);
    default:
        if (column.sourceType == P::Numeric)
            return ok(textOf(v).toDouble());
        return ok(QString::fromUtf8(v.bytes));
    }
}
} // namespace

Converted convert(const ColumnPlan &column, const SourceValue &value)
{
    if (value.isNull())
        return ok(QVariant());
    return column.moduleKind ? toModule(*column.moduleKind, value) : kept(column, value);
}

QString shown(const SourceValue &value)
{
    if (value.isNull())
        return QStringLiteral("(empty)");
    if (value.tag == P::bytesValue)
        return QStringLiteral("(%1 bytes of binary data)").arg(value.bytes.size());
    if (value.tag == P::dateValue)
        return QString::number(value.real, 'g', 17) + QStringLiteral(" (a stored date)");
    return QLatin1Char('\'') + textOf(value).left(80) + QLatin1Char('\'');
}

} // namespace ValueConversion
