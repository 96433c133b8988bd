#include "ReportLines.h"

#include "ReportQuery.h"
#include "ReportValues.h"

namespace ReportLines {

using Def = ReportDefinition;
using F = Def::Format;

QString filled(const Def::Template &line, const ReportQuery &rows, bool &anyValue)
{
    QString text;
    anyValue = false;
    bool hasField = false;
    for (const auto &piece : line) {
        if (!piece.field) {
            text += piece.text;
            continue;
        }
        hasField = true;
        const QString value = ReportValues::shown(rows.value(*piece.field), piece.format);
        anyValue = anyValue || !value.isEmpty();
        text += value;
    }
    if (!hasField)
        anyValue = true;
    return text;
}

bool rightAligned(F format)
{
    return format == F::Money || format == F::Number;
}

QStringList rowCells(const Def &def, const ReportQuery &rows, bool csv)
{
    QStringList cells;
    for (const auto &column : def.columns) {
        const QVariant value = column.reportable ? QVariant() : rows.value(column.field);
        cells << (column.reportable ? QString()
                  : csv             ? ReportValues::forCsv(value, column.format)
                                    : ReportValues::shown(value, column.format));
    }
    return cells;
}

QStringList totalCells(const Def &def, QStringList cells, int type1099, const Totals &t, bool csv)
{
    for (size_t i = 0; i < def.columns.size(); ++i) {
        const auto &column = def.columns[i];
        if (column.reportable)
            cells[int(i)] = ReportValues::reportable(type1099, t.threshold) ? QStringLiteral("Yes")
                                                                            : QStringLiteral("No");
        else if (column.total)
            cells[int(i)] = column.format == F::Money ? ReportValues::moneyText(t.sums[i], !csv)
                                                      : QString::number(t.sums[i] / 10000);
    }
    return cells;
}

void add(const Def &def, const ReportQuery &rows, Totals &totals)
{
    ++totals.rows;
    for (size_t i = 0; i < def.columns.size(); ++i)
        if (def.columns[i].total)
            totals.sums[i] += ReportValues::money(rows.value(def.columns[i].field));
    if (!def.thresholdAmount.table.isEmpty())
        totals.threshold += ReportValues::money(rows.value(def.thresholdAmount));
}

QStringList recordLines(const Def &def, const ReportQuery &rows)
{
    QStringList out;
    for (const auto &line : def.lines) {
        bool any = false;
        const QString text = filled(line, rows, any);
        if (any && !text.trimmed().isEmpty())
            out << text;
    }
    return out;
}

std::vector<std::pair<QString, QString>> recordPairs(const Def &def, const ReportQuery &rows)
{
    std::vector<std::pair<QString, QString>> out;
    if (!def.pairs)
        return out;
    const int count = std::min(def.pairs->most, rows.value(def.pairs->count).toInt());
    for (int i = 1; i <= count; ++i) {
        const QString n = QString::number(i);
        out.emplace_back(
            rows.value({def.pairs->description.table, def.pairs->description.column + n})
                .toString(),
            rows.value({def.pairs->value.table, def.pairs->value.column + n}).toString());
    }
    return out;
}

} // namespace ReportLines
