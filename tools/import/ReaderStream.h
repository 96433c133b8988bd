#pragma once

#include "SourceRows.h"

#include <QByteArray>
#include <QString>

// Parses the reader's stream as it arrives, in pieces of any size, and hands each complete
// message to the sink. Throws ImportError on a stream that breaks the protocol.
class ReaderStream {
public:
    explicit ReaderStream(SourceSink &sink) : m_sink(sink) {}
    void feed(const QByteArray &bytes);
    bool finished() const { return m_finished; }
    // The reader's own reason, when it sent one.
    const QString &failure() const { return m_failure; }

private:
    bool parseOne();

    SourceSink &m_sink;
    QByteArray m_buffer;
    qsizetype m_pos = 0;
    SourceTable m_table;
    SourceRow m_row;
    bool m_inTable = false;
    bool m_finished = false;
    QString m_failure;
};
