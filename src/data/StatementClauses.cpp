#include "data/StatementClauses.h"

namespace {
bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$');
}
} // namespace

StatementClauses StatementClauses::of(const QString &sql)
{
    StatementClauses found;
    int depth = 0;
    QChar quote;
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql.at(i);
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar(); // a doubled quote closes and opens again: the same
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"') || c == QLatin1Char('`')) {
            quote = c;
            continue;
        }
        if (c == QLatin1Char('[')) {
            quote = QLatin1Char(']');
            continue;
        }
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')'))
            --depth;
        if (depth != 0 || !c.isLetter() || (i > 0 && isWordChar(sql.at(i - 1))))
            continue;
        qsizetype end = i;
        while (end < sql.size() && isWordChar(sql.at(end)))
            ++end;
        const QString word = sql.mid(i, end - i).toLower();
        if (word == QLatin1String("from") && found.from < 0)
            found.from = i;
        else if (word == QLatin1String("where") && found.where < 0)
            found.where = i;
        else if (word == QLatin1String("order") && found.order < 0)
            found.order = i;
        else if (word == QLatin1String("group") || word == QLatin1String("having") ||
                 word == QLatin1String("limit") || word == QLatin1String("union") ||
                 word == QLatin1String("intersect") || word == QLatin1String("except") ||
                 word == QLatin1String("distinct"))
            found.other = true;
        i = end - 1;
    }
    return found;
}

QString bareStatement(const QString &sql)
{
    QString s = sql.trimmed();
    while (s.endsWith(QLatin1Char(';')))
        s = s.chopped(1).trimmed();
    return s;
}
