#include "PgTraceReader.h"

#include <QRegularExpression>

namespace PgTraceReader {
namespace {

// The start of one record at `at`, or false when a line there is not one (the rest of a
// statement's text that held a line break, or of a message).
struct Header {
    QByteArray sentAt;
    bool fromClient = false;
    qsizetype length = 0;
    QByteArray type;
    qsizetype contentsAt = 0;
};

constexpr qsizetype timeWidth = 26;

bool isTime(const QByteArray &trace, qsizetype at)
{
    if (at + timeWidth > trace.size())
        return false;
    static const char pattern[] = "dddd-dd-dd dd:dd:dd.dddddd";
    for (qsizetype i = 0; i < timeWidth; ++i) {
        const char c = trace[at + i];
        if (pattern[i] == 'd' ? (c < '0' || c > '9') : c != pattern[i])
            return false;
    }
    return true;
}

bool readHeader(const QByteArray &trace, qsizetype at, Header &header)
{
    if (!isTime(trace, at))
        return false;
    qsizetype i = at + timeWidth;
    if (i + 3 > trace.size() || trace[i] != '\t' || (trace[i + 1] != 'F' && trace[i + 1] != 'B') ||
        trace[i + 2] != '\t')
        return false;
    header.sentAt = trace.mid(at, timeWidth);
    header.fromClient = trace[i + 1] == 'F';
    i += 3;
    const qsizetype lengthEnd = trace.indexOf('\t', i);
    if (lengthEnd < 0)
        return false;
    bool number = false;
    header.length = trace.mid(i, lengthEnd - i).toLongLong(&number);
    const qsizetype typeEnd = trace.indexOf('\t', lengthEnd + 1);
    if (!number || typeEnd < 0)
        return false;
    header.type = trace.mid(lengthEnd + 1, typeEnd - lengthEnd - 1);
    header.contentsAt = typeEnd + 1;
    return true;
}

qsizetype nextLine(const QByteArray &trace, qsizetype at)
{
    const qsizetype end = trace.indexOf('\n', at);
    return end < 0 ? trace.size() : end + 1;
}

} // namespace

std::vector<Query> queries(const QByteArray &trace)
{
    std::vector<Query> found;
    qsizetype answering = -1; // the statement whose answer the records now belong to
    qsizetype at = 0;
    while (at < trace.size()) {
        Header header;
        if (!readHeader(trace, at, header)) {
            at = nextLine(trace, at);
            continue;
        }
        // A Query's length counts itself (4 bytes) and the text's closing zero; the text is
        // written as ` "text"` and may hold line breaks.
        if (header.fromClient && header.type == "Query" && header.length >= 5) {
            const qsizetype textAt = header.contentsAt + 2;
            const qsizetype textLength = header.length - 5;
            found.push_back({header.sentAt, QString::fromUtf8(trace.mid(textAt, textLength)), 0});
            answering = qsizetype(found.size()) - 1;
            at = nextLine(trace, std::min(trace.size(), textAt + textLength));
            continue;
        }
        if (!header.fromClient && header.type == "DataRow" && answering >= 0)
            ++found[size_t(answering)].rows;
        if (!header.fromClient && header.type == "ReadyForQuery")
            answering = -1;
        at = nextLine(trace, header.contentsAt);
    }
    return found;
}

Command command(const QString &statement)
{
    static const QRegularExpression prepare(QStringLiteral("^\\s*PREPARE\\s+(\\w+)\\s+AS\\s+(.*)$"),
                                            QRegularExpression::CaseInsensitiveOption |
                                                QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression execute(
        QStringLiteral("^\\s*EXECUTE\\s+(\\w+)\\s*(?:\\((.*)\\))?\\s*$"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression deallocate(
        QStringLiteral("^\\s*DEALLOCATE\\s+(?:PREPARE\\s+)?(\\w+)\\s*$"),
        QRegularExpression::CaseInsensitiveOption);
    using Kind = RanStatement::Kind;
    if (const auto m = prepare.match(statement); m.hasMatch())
        return {Kind::Prepare, m.captured(1), m.captured(2), {}};
    if (const auto m = execute.match(statement); m.hasMatch())
        return {Kind::Execute, m.captured(1), {}, values(m.captured(2))};
    if (const auto m = deallocate.match(statement); m.hasMatch())
        return {Kind::Deallocate, m.captured(1), {}, {}};
    return {Kind::Plain, {}, statement, {}};
}

QStringList values(const QString &list)
{
    QStringList found;
    qsizetype i = 0;
    const qsizetype end = list.size();
    const auto skipSpace = [&] {
        while (i < end && list[i].isSpace())
            ++i;
    };
    skipSpace();
    if (i == end)
        return found;
    while (i < end) {
        skipSpace();
        const qsizetype start = i;
        QString quoted;
        bool isQuoted = false;
        // Up to the next comma outside quotes; a quoted text inside is the value.
        while (i < end && list[i] != QLatin1Char(',')) {
            if (list[i] == QLatin1Char('\'')) {
                isQuoted = true;
                quoted.clear();
                for (++i; i < end; ++i) {
                    if (list[i] == QLatin1Char('\'')) {
                        if (i + 1 < end && list[i + 1] == QLatin1Char('\'')) {
                            quoted += QLatin1Char('\'');
                            ++i;
                            continue;
                        }
                        break;
                    }
                    quoted += list[i];
                }
            }
            ++i;
        }
        if (isQuoted) {
            found << (quoted.isNull() ? QStringLiteral("") : quoted);
        } else {
            const QString bare = list.mid(start, i - start).trimmed();
            if (bare.compare(QLatin1String("NULL"), Qt::CaseInsensitive) == 0)
                found << QString();
            else if (bare.compare(QLatin1String("TRUE"), Qt::CaseInsensitive) == 0)
                found << QStringLiteral("true");
            else if (bare.compare(QLatin1String("FALSE"), Qt::CaseInsensitive) == 0)
                found << QStringLiteral("false");
            else
                found << bare;
        }
        ++i; // the comma
    }
    return found;
}

} // namespace PgTraceReader
