#include "data/RecordHelpers.h"

#include "common/Session.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Dialect.h"
#include "data/Schema.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

namespace RecordHelpers {
namespace {

int typeCodeOf(const QString &table, const QSqlField &field)
{
    switch (Schema::columnKind(table, field.name())) {
    case Schema::Kind::Long:
    case Schema::Kind::Date:
        return 3;
    case Schema::Kind::Number:
        return 5;
    case Schema::Kind::Currency:
        return 6;
    case Schema::Kind::Memo:
        return 203;
    case Schema::Kind::Text:
        break;
    }
    return 202;
}

QString tableOf(const QString &query)
{
    static const QRegularExpression from(QStringLiteral(R"(\bfrom\s+(\w+))"),
                                         QRegularExpression::CaseInsensitiveOption);
    return from.match(query).captured(1);
}

} // namespace

QString withMdbExtension(const QString &fileName)
{
    if (fileName.toUpper().endsWith(QLatin1String(".MDB")))
        return fileName;
    return fileName + QStringLiteral(".MDB");
}

bool loadRecord(Databases &dbs, Session &session, const QString &fileName, const QString &query)
{
    const QString name = withMdbExtension(fileName);
    if (!dbs.exists(name))
        return false;
    ScopedDatabase scope(dbs, name);
    QSqlQuery q = dbs.select(name, query);
    const QSqlRecord shape = q.record();
    const QString table = tableOf(query);
    const bool hasRow = q.next();
    RecordArrays arrays;
    for (int i = 0; i < shape.count(); ++i)
        arrays.fields.push_back({shape.fieldName(i), typeCodeOf(table, shape.field(i)),
                                 hasRow ? q.value(i) : QVariant()});
    q.finish();
    session.record = arrays;
    if (!hasRow)
        session.messageText = QStringLiteral("QUIT");
    QCoreApplication::processEvents();
    return true;
}

bool saveRecord(Databases &dbs, Session &session, const QString &fileName, const QString &query,
                bool addNew)
{
    const QString name = withMdbExtension(fileName);
    if (!dbs.exists(name))
        return false;
    ScopedDatabase scope(dbs, name);
    QSqlDatabase db = dbs.open(name);
    const QString table = tableOf(query);
    QStringList columns;
    for (const auto &f : session.record.fields)
        columns << f.name;
    QString sql;
    QVariant rowid;
    if (addNew) {
        QStringList marks;
        for (qsizetype i = 0; i < columns.size(); ++i)
            marks << QStringLiteral("?");
        sql = QStringLiteral("insert into %1 (%2) values (%3)")
                  .arg(table, columns.join(", "), marks.join(", "));
    } else {
        // The row the query stands on, found again by the engine's own row number.
        static const QRegularExpression star(QStringLiteral(R"(^\s*select\s+\*)"),
                                             QRegularExpression::CaseInsensitiveOption);
        QString rowQuery = query;
        const QString rowIdColumn = dbs.dialect().rowIdColumn();
        rowQuery.replace(star, QStringLiteral("select ") + rowIdColumn);
        rowid = dbs.scalar(name, rowQuery);
        if (rowid.isNull())
            throw DbError::noCurrentRecord();
        QStringList sets;
        for (const QString &c : columns)
            sets << c + QStringLiteral(" = ?");
        sql = QStringLiteral("update %1 set %2 where %3 = ?")
                  .arg(table, sets.join(", "), rowIdColumn);
    }
    WriteTransaction tx(dbs, name);
    QSqlQuery q(db);
    if (!q.prepare(sql))
        throw Databases::errorFrom(q.lastError(), sql);
    for (const auto &f : session.record.fields)
        q.addBindValue(f.value);
    if (!addNew)
        q.addBindValue(rowid);
    if (!q.exec())
        throw Databases::errorFrom(q.lastError(), sql);
    tx.commit();
    return true;
}

} // namespace RecordHelpers
