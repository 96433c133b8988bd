#include "data/OrderKey.h"

#include "data/PagedStatement.h"
#include "data/Schema.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

namespace {

// A value written into a statement as the server reads it.
QString literal(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("null");
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value.toString();
    default:
        return QLatin1Char('\'') +
               value.toString().replace(QLatin1Char('\''), QStringLiteral("''")) +
               QLatin1Char('\'');
    }
}

// The statement with its "?" marks (outside quoted text) replaced by the values, in order.
QString withValues(const QString &statement, const QVariantList &values)
{
    QString sql;
    qsizetype next = 0;
    bool quoted = false;
    for (const QChar c : statement) {
        if (c == QLatin1Char('\''))
            quoted = !quoted;
        if (c == QLatin1Char('?') && !quoted && next < values.size())
            sql += literal(values[next++]);
        else
            sql += c;
    }
    return sql;
}

// The tables read and the index each is read by, in the engine's plan; empty when the plan
// sorts (or cannot be had). The server plans the statement for the values of the row it
// would be read on from; the files plan it for any values.
QStringList indexesOf(QSqlDatabase db, const QString &statement, const QVariantList &values)
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    if (db.driverName() == QLatin1String("QPSQL")) {
        static const QRegularExpression read(
            QStringLiteral(R"(Index(?: Only)? Scan(?: Backward)? using (\w+) on (\w+))"));
        static const QRegularExpression sorts(QStringLiteral(R"(\bSort\b)"));
        if (!q.exec(QStringLiteral("explain ") + withValues(statement, values)))
            return {};
        QStringList reads;
        while (q.next()) {
            const QString line = q.value(0).toString();
            if (sorts.match(line).hasMatch())
                return {};
            const QRegularExpressionMatch m = read.match(line);
            if (m.hasMatch())
                reads << m.captured(2) + QLatin1Char(':') + m.captured(1);
        }
        return reads;
    }
    static const QRegularExpression step(
        QStringLiteral(R"(^(?:SCAN|SEARCH) (\w+)(?: USING (?:COVERING )?INDEX (\w+))?)"));
    if (!q.prepare(QStringLiteral("explain query plan ") + statement))
        return {};
    for (qsizetype i = 0; i < values.size(); ++i)
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
    QVariantList values;
    for (const int field : key.m_fields)
        values << row.value(field);
    const auto limited = [](const QString &sql) { return sql + QStringLiteral(" limit 64"); };
    const QStringList plain = indexesOf(db, PagedStatement::rows(statement, 64, 64), {});
    if (plain.isEmpty() ||
        indexesOf(db, limited(KeyedStatement::from(statement, *order, true)), values) != plain ||
        indexesOf(db, limited(KeyedStatement::from(statement, *order, false)), values) != plain)
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

int OrderKey::bind(QSqlQuery &query, const QSqlRecord &row) const
{
    int mark = 0;
    for (const int field : m_fields)
        query.bindValue(mark++, row.value(field));
    return mark;
}
