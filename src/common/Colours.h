#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

#include <algorithm>
#include <cmath>

// Colours arrive from the settings as one integer laid out blue-green-red from the top byte down,
// the reverse of a QRgb (0x0000FF is red), and are converted here, never reinterpreted.
namespace Colours {
inline QColor fromBgr(int value)
{
    return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF);
}
inline int toBgr(const QColor &colour)
{
    return colour.red() | (colour.green() << 8) | (colour.blue() << 16);
}
// The background an entry field is typed on.
inline void setEntryBackground(QWidget *field, int bgr)
{
    // A locked field keeps the platform's locked look.
    QPalette p = field->palette();
    p.setColor(QPalette::Active, QPalette::Base, fromBgr(bgr));
    p.setColor(QPalette::Inactive, QPalette::Base, fromBgr(bgr));
    field->setPalette(p);
}
// How far apart two colours are for the eye: 1 (the same) to 21 (black on white). Text wants
// at least 4.5.
inline double contrast(const QColor &a, const QColor &b)
{
    auto luminance = [](const QColor &c) {
        auto channel = [](double v) {
            return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) +
               0.0722 * channel(c.blueF());
    };
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}
// Black or white, whichever reads better on that background.
inline QColor textOn(const QColor &background)
{
    const QColor black(Qt::black), white(Qt::white);
    return contrast(black, background) >= contrast(white, background) ? black : white;
}
constexpr int yellow = 65535;
constexpr int white = 16777215;
} // namespace Colours
