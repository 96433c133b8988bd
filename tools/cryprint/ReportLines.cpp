#include "ReportLines.h"

#include "ReportQuery.h"
#include "ReportValues.h"

#include <algorithm>

namespace ReportLines {

using Def = ReportDefinition;
using F = Def::Format;

namespace {

std::vector<int> piecePositions(const Def::Template &line, const ReportQuery &rows)
{
    std::vector<int> at;
    at.reserve(line.size());
    for (const auto &piece : line)
        at.push_back(piece.field ? rows.positionOf(*piece.field) : -1);
    return at;
}

int positionOf(const Def::Field &field, const ReportQuery &rows)
{
    return field.table.isEmpty() ? -1 : rows.positionOf(field);
}

} // namespace

Positions::Positions(const Def &def, const ReportQuery &rows)
{
    for (const auto &column : def.columns)
        columns.push_back(column.reportable ? -1 : rows.positionOf(column.field));
    for (const auto &line : def.lines)
        lines.push_back(piecePositions(line, rows));
    groupHeader = piecePositions(def.groupHeader, rows);
    if (def.group)
        group = rows.positionOf(*def.group);
    thresholdType = positionOf(def.thresholdType, rows);
    thresholdAmount = positionOf(def.thresholdAmount, rows);
    if (def.pairs) {
        pairCount = rows.positionOf(def.pairs->count);
        for (int i = 1; i <= def.pairs->most; ++i) {
            const QString n = QString::number(i);
            pairs.emplace_back(
                rows.positionOf({def.pairs->description.table, def.pairs->description.column + n}),
                rows.positionOf({def.pairs->value.table, def.pairs->value.column + n}));
        }
    }
}

QString filled(const Def::Template &line, const std::vector<int> &at, const ReportQuery &rows,
               bool &anyValue)
{
    QString text;
    anyValue = false;
    bool hasField = false;
    for (size_t i = 0; i < line.size(); ++i) {
        const auto &piece = line[i];
        if (!piece.field) {
            text += piece.text;
            continue;
        }
        hasField = true;
        const QString value = ReportValues::shown(rows.value(at[i]), piece.format);
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

QStringList rowCells(const Def &def, const Positions &at, const ReportQuery &rows, bool csv)
{
    QStringList cells;
    cells.reserve(qsizetype(def.columns.size()));
    for (size_t i = 0; i < def.columns.size(); ++i) {
        const auto &column = def.columns[i];
        if (column.reportable) {
            cells.emplace_back();
            continue;
        }
        const QVariant value = rows.value(at.columns[i]);
        cells << (csv ? ReportValues::forCsv(value, column.format)
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

void add(const Def &def, const Positions &at, const ReportQuery &rows, Totals &totals)
{
    ++totals.rows;
    for (size_t i = 0; i < def.columns.size(); ++i)
        if (def.columns[i].total)
            totals.sums[i] += ReportValues::money(rows.value(at.columns[i]));
    if (at.thresholdAmount >= 0)
        totals.threshold += ReportValues::money(rows.value(at.thresholdAmount));
}

QStringList recordLines(const Def &def, const Positions &at, const ReportQuery &rows)
{
    QStringList out;
    for (size_t i = 0; i < def.lines.size(); ++i) {
        bool any = false;
        const QString text = filled(def.lines[i], at.lines[i], rows, any);
        if (any && !text.trimmed().isEmpty())
            out << text;
    }
    return out;
}

std::vector<std::pair<QString, QString>> recordPairs(const Def &def, const Positions &at,
                                                     const ReportQuery &rows)
{
    std::vector<std::pair<QString, QString>> out;
    if (!def.pairs)
        return out;
    const int count = std::min(def.pairs->most, rows.value(at.pairCount).toInt());
    for (int i = 0; i < count; ++i)
        out.emplace_back(rows.value(at.pairs[size_t(i)].first).toString(),
                         rows.value(at.pairs[size_t(i)].second).toString());
    return out;
}

} // namespace ReportLines
