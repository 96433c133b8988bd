#pragma once

#include <QVariant>

#include <cmath>

// Currency amounts: four decimals, rounded on every write and every sum, so that a total of
// 600.00 never compares as 599.9999.
namespace Money {
inline double round4(double value)
{
    return std::round(value * 10000.0) / 10000.0;
}
// A sum read from the engine: null (no rows) counts as 0.
inline double fromSum(const QVariant &value)
{
    return value.isNull() ? 0.0 : round4(value.toDouble());
}
} // namespace Money
