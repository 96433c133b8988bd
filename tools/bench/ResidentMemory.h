#pragma once

#include <QFile>

// The process's resident memory in kB (VmRSS), 0 where the system does not tell.
inline long residentKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    // The file reports no size, so it is read whole rather than line by line to its end.
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').constFirst().toLong();
    return 0;
}
