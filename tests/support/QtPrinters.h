#pragma once

#include <QString>
#include <QVariant>

#include <ostream>

// Readable failure messages for Qt values.
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QVariant &value, std::ostream *os)
{
    *os << "QVariant(" << value.toString().toStdString() << ')';
}
