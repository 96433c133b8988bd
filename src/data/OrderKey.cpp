#include "data/OrderKey.h"

#include "data/PagedStatement.h"
#include "data/Schema.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

namespace {

// The tables read and the index each is read by, in the engine's plan; empty when the plan
// sorts (or cannot be had).
QStringList indexesOf(QSqlDatabase db, const QString &statement, int marks)
{
    static const QRegularExpression step(
        QStringLiteral(R"(^(?:SCAN|SEARCH) (\w+)(?: USING (?:COVERING )?INDEX (\w+))?)"));
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (!q.prepare(QStringLiteral("explain query plan ") + statement))
        return {};
    for (int i = 0; i < marks; ++i)
        q.addBindValue(QVariant());
    if (!q.exec())
        return {};
    QStringList reads;
    while (q.next()) {
        const QString detail = q.value(3).toString();
        if (detail.contains(QLatin1String("TEMP B-TREE")))
            return {};
        const QRegularExpressionMatch m = step.match(detail);
        if (m.hasMatch())
            reads << m.captured(1) + QLatin1Char(':') + m.captured(2);
    }
    return reads;
}

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

// The engine's NOCASE: only the ASCII letters are folded.
QString foldAscii(QString text)
{
    for (QChar &c : text)
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() + ('a' - 'A'));
    return text;
}

} // namespace

std::optional<OrderKey> OrderKey::of(QSqlDatabase db, const QString &statement,
                                     const QSqlRecord &row)
{
    const std::optional<KeyedStatement::Order> order = KeyedStatement::orderOf(statement);
    if (!order)
        return std::nullopt;
    OrderKey key;
    key.m_order = *order;
    for (const QString &column : order->columns) {
        const QString name = column.section(QLatin1Char('.'), -1);
        int found = -1;
        for (int i = 0; i < row.count(); ++i) {
            if (row.fieldName(i).compare(name, Qt::CaseInsensitive) != 0)
                continue;
            if (found >= 0)
                return std::nullopt; // two columns of that name: which one orders is unclear
            found = i;
        }
        const std::optional<Schema::Kind> kind = Schema::layoutKind(name);
        if (found < 0 || !kind || *kind == Schema::Kind::Memo)
            return std::nullopt;
        key.m_fields.push_back(found);
        key.m_text.push_back(*kind == Schema::Kind::Text);
    }
    const int marks = static_cast<int>(order->columns.size());
    const auto limited = [](const QString &sql) { return sql + QStringLiteral(" limit 64"); };
    const QStringList plain = indexesOf(db, PagedStatement::rows(statement, 64, 64), 0);
    if (plain.isEmpty() ||
        indexesOf(db, limited(KeyedStatement::from(statement, *order, true)), marks) != plain ||
        indexesOf(db, limited(KeyedStatement::from(statement, *order, false)), marks) != plain)
        return std::nullopt;
    return key;
}

OrderKey::Same OrderKey::same(const QSqlRecord &a, const QSqlRecord &b) const
{
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const QVariant x = a.value(m_fields[i]);
        const QVariant y = b.value(m_fields[i]);
        if (x.isNull() || y.isNull())
            return Same::Unknown;
        if (m_text[i]) {
            if (x.typeId() != QMetaType::QString || y.typeId() != QMetaType::QString)
                return Same::Unknown;
            if (foldAscii(x.toString()) != foldAscii(y.toString()))
                return Same::No;
        } else {
            if (!isNumber(x) || !isNumber(y))
                return Same::Unknown;
            if (x.toDouble() != y.toDouble())
                return Same::No;
        }
    }
    return Same::Yes;
}

bool OrderKey::complete(const QSqlRecord &row) const
{
    for (const int field : m_fields)
        if (row.isNull(field))
            return false;
    return true;
}

void OrderKey::bind(QSqlQuery &query, const QSqlRecord &row) const
{
    for (const int field : m_fields)
        query.addBindValue(row.value(field));
}
