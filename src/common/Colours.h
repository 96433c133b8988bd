#pragma once

#include <QColor>
#include <QPalette>
#include <QWidget>

// The module's colour values are 24-bit numbers with red in the low byte, green in the middle
// byte and blue in the high byte (0x0000FF is red).
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
constexpr int yellow = 65535;
constexpr int white = 16777215;
} // namespace Colours
