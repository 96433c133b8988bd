#pragma once

#include <QString>

// The numeric value of a text the way the module reads typed numbers: leading blanks skipped,
// then an optional sign, digits and one decimal point; whatever follows is ignored, and a text
// with no number at its start is 0 ("12abc" is 12, "abc" is 0, "-5.5x" is -5.5).
namespace Numbers {
double leading(const QString &text);
// The leading value rounded to a whole number (half away from zero), clamped to 32 bits.
long long leadingWhole(const QString &text);
// A number written the plain way: no grouping, no exponent, no trailing zeros ("600", "0.01").
QString plain(double value);
} // namespace Numbers
