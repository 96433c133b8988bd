#include "SelectionWords.h"

#include <QDate>
#include <QRegularExpression>

#include <vector>

namespace {

struct Comparison {
    QString table, field, op, value;
};

QString caption(const ReportDefinition &def, const QString &table, const QString &field)
{
    for (const auto &column : def.columns)
        if (column.field.table.compare(table, Qt::CaseInsensitive) == 0 &&
            column.field.column.compare(field, Qt::CaseInsensitive) == 0 &&
            !column.caption.isEmpty())
            return column.caption;
    // The fields the module selects on, where a report does not show them as a column.
    static const std::pair<const char *, const char *> known[] = {
        {"vendnumber", "Vendor #"},     {"invdate", "Invoice date"},
        {"invcheckdate", "Check date"}, {"invstatus", "Invoice status"},
        {"chkdate", "Check date"},      {"invduedate", "Due date"}};
    for (const auto &[name, words] : known)
        if (field.compare(QLatin1String(name), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(words);
    return field;
}

QString valueInWords(const QString &field, const QString &value)
{
    if (value.size() >= 2 && value.startsWith(QLatin1Char('\'')) &&
        value.endsWith(QLatin1Char('\'')))
        return value.mid(1, value.size() - 2).replace(QStringLiteral("''"), QStringLiteral("'"));
    if (field.contains(QLatin1String("date"), Qt::CaseInsensitive) && value.size() == 8) {
        const QDate date = QDate::fromString(value, QStringLiteral("yyyyMMdd"));
        if (date.isValid())
            return date.toString(QStringLiteral("MM/dd/yyyy"));
    }
    return value;
}

} // namespace

QString selectionInWords(const QString &formula, const ReportDefinition &def)
{
    const QString text = formula.trimmed();
    if (text.isEmpty())
        return QStringLiteral("Selection: All records");
    static const QRegularExpression joiner(QStringLiteral("\\s+and\\s+"),
                                           QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression comparison(QStringLiteral(
        "^\\{(\\w+)\\.(\\w+)\\}\\s*(<>|>=|<=|=|>|<)\\s*(-?[0-9.]+|'(?:[^']|'')*')$"));
    std::vector<Comparison> parts;
    for (const QString &part : text.split(joiner)) {
        const auto match = comparison.match(part.trimmed());
        if (!match.hasMatch())
            return QStringLiteral("Selection: ") + text;
        parts.push_back(
            {match.captured(1), match.captured(2), match.captured(3), match.captured(4)});
    }
    QStringList words;
    std::vector<bool> used(parts.size(), false);
    for (size_t i = 0; i < parts.size(); ++i) {
        if (used[i])
            continue;
        const Comparison &c = parts[i];
        const QString name = caption(def, c.table, c.field);
        const QString value = valueInWords(c.field, c.value);
        // A range: the field from one value to another.
        if (c.op == QLatin1String(">=")) {
            size_t j = i + 1;
            while (j < parts.size() && (used[j] || parts[j].op != QLatin1String("<=") ||
                                        parts[j].table.compare(c.table, Qt::CaseInsensitive) != 0 ||
                                        parts[j].field.compare(c.field, Qt::CaseInsensitive) != 0))
                ++j;
            if (j < parts.size()) {
                used[j] = true;
                words << QStringLiteral("%1 from %2 to %3")
                             .arg(name, value, valueInWords(c.field, parts[j].value));
                continue;
            }
        }
        if (c.op == QLatin1String("="))
            words << name + QLatin1Char(' ') + value;
        else if (c.op == QLatin1String(">="))
            words << QStringLiteral("%1 from %2").arg(name, value);
        else if (c.op == QLatin1String("<="))
            words << QStringLiteral("%1 up to %2").arg(name, value);
        else if (c.op == QLatin1String(">"))
            words << QStringLiteral("%1 after %2").arg(name, value);
        else if (c.op == QLatin1String("<"))
            words << QStringLiteral("%1 before %2").arg(name, value);
        else
            words << QStringLiteral("%1 not %2").arg(name, value);
    }
    return QStringLiteral("Selection: ") + words.join(QStringLiteral("; "));
}
