#pragma once

#include "SourceRows.h"

#include <QString>

// Reads one Access file through the reader program, a process of its own, and hands its tables
// and rows to the sink. A reader that fails, crashes, sends a broken stream or runs past the
// time limit is stopped and the reason thrown as an ImportError (without the file's name,
// which the caller adds).
class AccessReader {
public:
    AccessReader(QString readerProgram, int timeLimitSecs) :
        m_program(std::move(readerProgram)), m_timeLimitSecs(timeLimitSecs)
    {
    }
    void read(const QString &path, SourceSink &sink) const;

private:
    QString m_program;
    int m_timeLimitSecs;
};
