#include "data/PagedStatement.h"

#include <QList>

namespace PagedStatement {
namespace {

bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$');
}

// Where each of the words stands at the statement's top level: outside quoted text, quoted
// names and parentheses. -1 for a word that is not there; the first place for each.
struct TopLevel {
    qsizetype from = -1;
    qsizetype order = -1; // "order" of "order by"
    bool other = false;   // group, having, limit, union, distinct, ...: count the statement whole
};

TopLevel topLevel(const QString &sql)
{
    TopLevel found;
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

QString trimmedEnd(const QString &sql)
{
    QString s = sql.trimmed();
    while (s.endsWith(QLatin1Char(';')))
        s = s.chopped(1).trimmed();
    return s;
}

} // namespace

QString rows(const QString &statement, long long offset, int count)
{
    const QString sql = trimmedEnd(statement);
    const QString range = QStringLiteral(" limit %1 offset %2").arg(count).arg(offset);
    // A statement with a limit of its own is read through a subquery.
    if (topLevel(sql).other)
        return QStringLiteral("select * from (") + sql + QLatin1Char(')') + range;
    return sql + range;
}

QString count(const QString &statement)
{
    const QString sql = trimmedEnd(statement);
    const TopLevel at = topLevel(sql);
    if (at.other || at.from < 0)
        return QStringLiteral("select count(*) from (") + sql + QLatin1Char(')');
    const QString body = at.order < 0 ? sql.mid(at.from) : sql.mid(at.from, at.order - at.from);
    return QStringLiteral("select count(*) ") + body.trimmed();
}

} // namespace PagedStatement
