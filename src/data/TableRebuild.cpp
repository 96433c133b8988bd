#include "data/TableRebuild.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace TableRebuild {
namespace {

bool run(QSqlDatabase &db, const QString &sql, QString &error)
{
    QSqlQuery q(db);
    if (q.exec(sql))
        return true;
    error = q.lastError().text();
    return false;
}

QString createStatement(QSqlDatabase &db, const QString &type, const QString &name)
{
    QSqlQuery q(db);
    q.prepare(QStringLiteral("select sql from sqlite_master where type = ? and name = ?"));
    q.addBindValue(type);
    q.addBindValue(name);
    return q.exec() && q.next() ? q.value(0).toString() : QString();
}

bool isLayoutText(const Schema::Table &table, const QString &column)
{
    for (const Schema::Column &c : table.columns)
        if (c.name.compare(column, Qt::CaseInsensitive) == 0)
            return c.kind == Schema::Kind::Text;
    return false;
}

bool hasNocase(const QString &createSql, const QString &column)
{
    const QRegularExpression declared(
        QStringLiteral(R"re((?:^|[(,\s])"?%1"?\s+\w+\s+collate\s+nocase\b)re")
            .arg(QRegularExpression::escape(column)),
        QRegularExpression::CaseInsensitiveOption);
    return declared.match(createSql).hasMatch();
}

struct ColumnNow {
    QString name;
    QString type;
};

std::vector<ColumnNow> columnsNow(QSqlDatabase &db, const QString &table)
{
    std::vector<ColumnNow> columns;
    QSqlQuery q(db);
    if (q.exec(QStringLiteral("pragma table_info(%1)").arg(table)))
        while (q.next())
            columns.push_back({q.value(1).toString(), q.value(2).toString()});
    return columns;
}

} // namespace

bool lacksNocase(QSqlDatabase &db, const Schema::Table &table)
{
    const QString sql = createStatement(db, QStringLiteral("table"), table.name);
    if (sql.isEmpty())
        return false;
    for (const Schema::Column &c : table.columns)
        if (c.kind == Schema::Kind::Text && !hasNocase(sql, c.name))
            return true;
    return false;
}

bool withNocase(QSqlDatabase &db, const Schema::Table &table, const QStringList &retired,
                QString &error)
{
    QStringList keptIndexes;
    {
        QSqlQuery q(db);
        q.prepare(QStringLiteral("select name, sql from sqlite_master where type = 'index' and "
                                 "tbl_name = ? and sql is not null"));
        q.addBindValue(table.name);
        if (!q.exec()) {
            error = q.lastError().text();
            return false;
        }
        QStringList layout;
        for (const QString &index : table.indexes)
            layout << index.section(QLatin1Char('('), 0, 0);
        while (q.next())
            if (!layout.contains(q.value(0).toString()) && !retired.contains(q.value(0).toString()))
                keptIndexes << q.value(1).toString();
    }
    QStringList defs;
    QStringList names;
    for (const ColumnNow &c : columnsNow(db, table.name)) {
        names << c.name;
        defs << c.name + QLatin1Char(' ') +
                    (isLayoutText(table, c.name) ? QStringLiteral("TEXT COLLATE NOCASE") : c.type);
    }
    if (names.isEmpty()) {
        error = QStringLiteral("The table %1 has no columns.").arg(table.name);
        return false;
    }
    const QString fresh = table.name + QStringLiteral("_nocase");
    const QString list = names.join(QStringLiteral(", "));
    if (!run(db, QStringLiteral("drop table if exists %1").arg(fresh), error) ||
        !run(db, QStringLiteral("create table %1 (%2)").arg(fresh, defs.join(", ")), error) ||
        !run(db,
             QStringLiteral("insert into %1 (rowid, %2) select rowid, %2 from %3")
                 .arg(fresh, list, table.name),
             error) ||
        !run(db, QStringLiteral("drop table %1").arg(table.name), error) ||
        !run(db, QStringLiteral("alter table %1 rename to %2").arg(fresh, table.name), error))
        return false;
    for (const QString &index : keptIndexes)
        if (!run(db, index, error))
            return false;
    return true;
}

} // namespace TableRebuild
