#include "data/Dialect.h"

#include "data/EngineSettings.h"
#include "data/PostgresDialect.h"
#include "data/SqliteDialect.h"

#include <QRegularExpression>

namespace {
// The lookups by invoice, check and product name the joined tables twice ("from invoices,
// vendors, vendors inner join invoices on ..."). Both spellings mean the inner join of each
// invoice with its vendor; vendor columns come first so that the first column is the vendor
// number the display reads.
QString mapTwiceNamedJoin(const QString &statement)
{
    static const QRegularExpression join(
        QStringLiteral(R"(^\s*select\s+\*\s+from\s+invoices\s*,\s*vendors\s*,\s*)"
                       R"((?:vendors\s+inner\s+join\s+invoices|invoices\s+inner\s+join\s+vendors))"
                       R"(\s+on\s+invoices\.vendnumber\s*=\s*vendors\.vendnumber\s+where\s+)"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = join.match(statement);
    if (!match.hasMatch())
        return statement;
    return QStringLiteral("select vendors.*, invoices.* from invoices inner join vendors on "
                          "invoices.vendnumber = vendors.vendnumber where ") +
           statement.mid(match.capturedEnd());
}

// ucase$(x) is upper(x). Only outside quoted text, so a value that holds the word is left alone.
QString mapUcase(const QString &statement)
{
    static const QLatin1String ucase("ucase$(");
    QString out;
    out.reserve(statement.size());
    bool quoted = false;
    for (qsizetype i = 0; i < statement.size(); ++i) {
        const QChar c = statement.at(i);
        if (c == QLatin1Char('\'')) {
            quoted = !quoted;
        } else if (!quoted &&
                   statement.mid(i, ucase.size()).compare(ucase, Qt::CaseInsensitive) == 0) {
            out += QStringLiteral("upper(");
            i += ucase.size() - 1;
            continue;
        }
        out += c;
    }
    return out;
}
// A date column compared with an empty quoted text ("invdate = ''") asks for a row without a
// date. Dates are stored as numbers, so that is a null or a 0; the engines would compare the
// number with the text and find nothing (or refuse). Only outside quoted text.
QString mapEmptyDate(const QString &statement)
{
    static const QRegularExpression emptyDate(QStringLiteral(R"((\w*date)\s*=\s*''(?!'))"),
                                              QRegularExpression::CaseInsensitiveOption);
    QString out;
    out.reserve(statement.size());
    bool quoted = false;
    for (qsizetype i = 0; i < statement.size(); ++i) {
        const QChar c = statement.at(i);
        const bool wordStart = i == 0 || !(statement.at(i - 1).isLetterOrNumber() ||
                                           statement.at(i - 1) == QLatin1Char('_'));
        if (!quoted && wordStart) {
            const QRegularExpressionMatch m =
                emptyDate.match(statement, i, QRegularExpression::NormalMatch,
                                QRegularExpression::AnchorAtOffsetMatchOption);
            if (m.hasMatch()) {
                out += QStringLiteral("coalesce(%1, 0) = 0").arg(m.captured(1));
                i = m.capturedEnd() - 1;
                continue;
            }
        }
        if (c == QLatin1Char('\''))
            quoted = !quoted;
        out += c;
    }
    return out;
}
} // namespace

std::unique_ptr<Dialect> Dialect::forDataFolder()
{
    if (std::optional<EngineSettings> settings = EngineSettings::ofDataFolder())
        return std::make_unique<PostgresDialect>(std::move(*settings));
    return std::make_unique<SqliteDialect>();
}

std::unique_ptr<Dialect> Dialect::forFolder(const QString &folder)
{
    if (std::optional<EngineSettings> settings = EngineSettings::ofFolder(folder))
        return std::make_unique<PostgresDialect>(std::move(*settings));
    return std::make_unique<SqliteDialect>();
}

QString Dialect::mapCriterion(const QString &criterion) const
{
    return mapEmptyDate(map(criterion));
}

QString Dialect::mapDesktopStatement(const QString &statement)
{
    return mapUcase(mapTwiceNamedJoin(statement));
}
