#include "TablePlan.h"

#include "ReaderProtocol.h"

namespace TablePlans {
namespace P = ReaderProtocol;

TablePlan planFor(const QString &fileName, const SourceTable &table)
{
    TablePlan plan;
    plan.sourceName = table.name;
    plan.name = table.name;
    const Schema::Table *known = nullptr;
    for (const Schema::Table &t : Schema::tablesOf(fileName.toLower()))
        if (t.name.compare(table.name, Qt::CaseInsensitive) == 0)
            known = &t;
    if (known) {
        plan.name = known->name;
        plan.known = true;
    }
    for (const SourceColumn &source : table.columns) {
        ColumnPlan col;
        col.sourceName = source.name;
        col.name = source.name;
        col.sourceType = source.type;
        if (known) {
            for (const Schema::Column &c : known->columns) {
                if (c.name.compare(source.name, Qt::CaseInsensitive) != 0)
                    continue;
                col.name = c.name;
                col.moduleKind = c.kind;
            }
        }
        col.money =
            col.moduleKind ? *col.moduleKind == Schema::Kind::Currency : source.type == P::Currency;
        plan.columns.push_back(col);
    }
    if (known && !known->columns.empty()) {
        for (std::size_t i = 0; i < plan.columns.size(); ++i)
            if (plan.columns[i].name == known->columns.front().name)
                plan.keyColumn = static_cast<int>(i);
    }
    return plan;
}

QString keptType(unsigned char accessType)
{
    switch (accessType) {
    case P::Boolean:
    case P::Byte:
    case P::Integer:
    case P::LongInteger:
        return QStringLiteral("INTEGER");
    case P::Currency:
        return QStringLiteral("CURRENCY");
    case P::Single:
    case P::Double:
        return QStringLiteral("DOUBLE");
    case P::DateTime:
        return QStringLiteral("DATETIME");
    case P::Text:
        // Compared without regard to case, as the desktop engine compared it.
        return QStringLiteral("TEXT COLLATE NOCASE");
    case P::Binary:
    case P::OleObject:
        return QStringLiteral("BLOB");
    case P::Numeric:
        return QStringLiteral("NUMERIC");
    default:
        return QStringLiteral("TEXT");
    }
}

QString quoted(const QString &name)
{
    QString inner = name;
    inner.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + inner + QLatin1Char('"');
}

} // namespace TablePlans
