#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// Reads the values of a layout file in order: values are separated by commas or line ends, a
// value may stand in double quotes (then it may hold commas), unquoted values are trimmed and
// blank lines are skipped. Values run on across lines, as a record of five or three values is
// read one value after another.
class LayoutRecords {
public:
    explicit LayoutRecords(const QString &text);

    // What is wrong with the text, for the user ("line 4 opens a quote it never closes"); empty
    // when it reads well.
    QString error() const { return m_error; }
    bool atEnd() const { return m_next >= m_values.size(); }
    // The next value; nothing at the end.
    std::optional<QString> next();
    // The line the last value read stood on, from 1.
    int line() const { return m_lastLine; }

private:
    void readLine(const QString &line, int number);

    QStringList m_values;
    QList<int> m_lines;
    qsizetype m_next = 0;
    int m_lastLine = 0;
    QString m_error;
};
