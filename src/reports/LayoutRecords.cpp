#include "reports/LayoutRecords.h"

LayoutRecords::LayoutRecords(const QString &text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size() && m_error.isEmpty(); ++i)
        readLine(lines[i], i + 1);
}

void LayoutRecords::readLine(const QString &line, int number)
{
    if (line.trimmed().isEmpty())
        return;
    qsizetype at = 0;
    const qsizetype size = line.size();
    for (;;) {
        while (at < size && (line[at] == QLatin1Char(' ') || line[at] == QLatin1Char('\t')))
            ++at;
        QString value;
        if (at < size && line[at] == QLatin1Char('"')) {
            const qsizetype close = line.indexOf(QLatin1Char('"'), at + 1);
            if (close < 0) {
                m_error = QStringLiteral("line %1 opens a quote it never closes").arg(number);
                return;
            }
            value = line.mid(at + 1, close - at - 1);
            // Anything between the closing quote and the next comma is not part of the value.
            at = line.indexOf(QLatin1Char(','), close + 1);
            if (at < 0)
                at = size;
        } else {
            qsizetype comma = line.indexOf(QLatin1Char(','), at);
            if (comma < 0)
                comma = size;
            value = line.mid(at, comma - at).trimmed();
            at = comma;
        }
        m_values << value;
        m_lines << number;
        if (at >= size)
            return;
        ++at; // past the comma: another value follows, empty if nothing does
    }
}

std::optional<QString> LayoutRecords::next()
{
    if (atEnd())
        return std::nullopt;
    m_lastLine = m_lines[m_next];
    return m_values[m_next++];
}
