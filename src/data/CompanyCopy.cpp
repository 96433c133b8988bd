#include "data/CompanyCopy.h"

#include "data/Connection.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Dialect.h"
#include "data/Money.h"
#include "data/Schema.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <cmath>

namespace CompanyCopy {
namespace {

// The data folder is the current folder while the target is written; restored at the end.
class InFolder {
public:
    explicit InFolder(const QString &folder) : m_before(QDir::currentPath())
    {
        if (!QDir::setCurrent(folder))
            throw Error(QStringLiteral("The data folder '%1' is not there.").arg(folder));
    }
    ~InFolder() { QDir::setCurrent(m_before); }
    InFolder(const InFolder &) = delete;
    InFolder &operator=(const InFolder &) = delete;

private:
    QString m_before;
};

// The database files of the source folder: SQLite files named *.mdb.
QStringList sourceFiles(const QDir &folder)
{
    QStringList files;
    for (const QFileInfo &info :
         folder.entryInfoList({QStringLiteral("*.mdb"), QStringLiteral("*.MDB")}, QDir::Files)) {
        if (info.size() == 0)
            continue;
        files << info.fileName();
    }
    files.removeDuplicates();
    if (files.isEmpty())
        throw Error(QStringLiteral("The folder '%1' holds no database files (*.mdb) to copy.")
                        .arg(folder.absolutePath()));
    return files;
}

Connection openSource(const QString &path)
{
    try {
        Connection source = Connection::readOnlyFile(path);
        source.execute(QStringLiteral("select count(*) from sqlite_master"));
        return source;
    } catch (const DbError &) {
        throw Error(QStringLiteral("The file '%1' is not an SQLite database this tool can copy; "
                                   "nothing was copied from it.")
                        .arg(path));
    }
}

QStringList tablesOf(QSqlDatabase &db)
{
    QSqlQuery q(db);
    q.exec(QStringLiteral("select name from sqlite_master where type = 'table' and name not like "
                          "'sqlite%' and name <> 'schema_version' order by name"));
    QStringList names;
    while (q.next())
        names << q.value(0).toString();
    return names;
}

// The PostgreSQL type of a column the module's layout does not know, from its SQLite type.
QString typeFor(const QString &declared)
{
    const QString t = declared.toUpper();
    if (t.contains(QLatin1String("INT")))
        return QStringLiteral("bigint");
    if (t.contains(QLatin1String("CURRENCY")))
        return QStringLiteral("numeric(19,4)");
    if (t.contains(QLatin1String("REAL")) || t.contains(QLatin1String("DOUB")) ||
        t.contains(QLatin1String("FLOA")) || t.contains(QLatin1String("NUM")))
        return QStringLiteral("double precision");
    return QStringLiteral("text");
}

void run(QSqlQuery &q, const QString &sql)
{
    if (!q.exec(sql))
        throw Error(QStringLiteral("%1 (%2)").arg(q.lastError().text(), sql));
}

// Makes the table and the columns the layout does not know on the target.
void makeRoom(QSqlDatabase &source, QSqlDatabase &target, const QString &table)
{
    QSqlQuery info(source);
    info.exec(QStringLiteral("pragma table_info(\"%1\")").arg(table));
    const QSqlRecord existing = target.record(table);
    QStringList defs;
    QSqlQuery q(target);
    while (info.next()) {
        const QString column = info.value(1).toString();
        const QString type = typeFor(info.value(2).toString());
        if (existing.isEmpty())
            defs << QStringLiteral("\"%1\" %2").arg(column.toLower(), type);
        else if (!existing.contains(column.toLower()))
            run(q, QStringLiteral("alter table %1 add column \"%2\" %3")
                       .arg(table, column.toLower(), type));
    }
    if (existing.isEmpty())
        run(q, QStringLiteral("create table \"%1\" (%2)").arg(table.toLower(), defs.join(", ")));
}

long long copyRows(QSqlDatabase &source, Databases &target, const QString &file,
                   const QString &table, const std::function<void(const QString &)> &progress)
{
    QSqlQuery read(source);
    read.setForwardOnly(true);
    if (!read.exec(QStringLiteral("select * from \"%1\"").arg(table)))
        throw Error(read.lastError().text());
    const QSqlRecord shape = read.record();
    QStringList columns, marks;
    std::vector<bool> money;
    for (int i = 0; i < shape.count(); ++i) {
        columns << QStringLiteral("\"%1\"").arg(shape.fieldName(i).toLower());
        marks << QStringLiteral("?");
        money.push_back(Schema::isMoney(table, shape.fieldName(i)));
    }
    WriteTransaction transaction(target, file, Databases::Commit::Durable);
    QSqlQuery write(target.open(file));
    // A new schema may start with rows of its own (the one row of user-field descriptions):
    // the source's rows take their place.
    run(write, QStringLiteral("delete from \"%1\"").arg(table.toLower()));
    if (!write.prepare(QStringLiteral("insert into \"%1\" (%2) values (%3)")
                           .arg(table.toLower(), columns.join(", "), marks.join(", "))))
        throw Error(write.lastError().text());
    long long rows = 0;
    while (read.next()) {
        for (int i = 0; i < shape.count(); ++i) {
            const QVariant value = read.value(i);
            write.bindValue(
                i, money[i] && !value.isNull() ? QVariant(Money::round4(value.toDouble())) : value);
        }
        if (!write.exec())
            throw Error(QStringLiteral("%1, row %2: %3")
                            .arg(table)
                            .arg(rows + 1)
                            .arg(write.lastError().text()));
        if (++rows % 10000 == 0 && progress)
            progress(QStringLiteral("  %1: %2 rows").arg(table).arg(rows));
    }
    write.finish();
    transaction.commit();
    return rows;
}

QVariant valueOf(QSqlDatabase &db, const QString &sql)
{
    QSqlQuery q(db);
    if (!q.exec(sql) || !q.next())
        throw Error(QStringLiteral("%1 (%2)").arg(q.lastError().text(), sql));
    return q.value(0);
}

TableResult compare(QSqlDatabase &source, QSqlDatabase &target, const QString &file,
                    const QString &table)
{
    TableResult result{file, table, 0, 0, {}};
    const QString count = QStringLiteral("select count(*) from \"%1\"");
    result.sourceRows = valueOf(source, count.arg(table)).toLongLong();
    result.targetRows = valueOf(target, count.arg(table.toLower())).toLongLong();
    const QSqlRecord shape = source.record(table);
    for (int i = 0; i < shape.count(); ++i) {
        const QString column = shape.fieldName(i);
        if (!Schema::isMoney(table, column))
            continue;
        // Each side adds up whole ten-thousandths, as the copy wrote the values: a sum of
        // millions of amounts as floating point drifts by more than one.
        const QString sum = QStringLiteral(
            "select coalesce(sum(cast(round(%1 * 10000) as bigint)), 0) from \"%2\"");
        result.money.push_back(
            {column, valueOf(source, sum.arg(column, table)).toLongLong() / 10000.0,
             valueOf(target, sum.arg(column, table.toLower())).toLongLong() / 10000.0});
    }
    return result;
}

} // namespace

bool TableResult::matches() const
{
    if (sourceRows != targetRows)
        return false;
    for (const MoneyTotal &m : money)
        if (std::fabs(m.source - m.target) >= 0.00005)
            return false;
    return true;
}

std::vector<TableResult> copy(const QString &sourceFolder, const QString &targetFolder,
                              const std::function<void(const QString &)> &progress)
{
    const QDir source(sourceFolder);
    if (!source.exists())
        throw Error(QStringLiteral("The folder '%1' is not there.").arg(sourceFolder));
    const QStringList files = sourceFiles(source);
    InFolder inTarget(targetFolder);
    const std::unique_ptr<Dialect> dialect = Dialect::forDataFolder();
    if (dialect->name() != QLatin1String("PostgreSQL"))
        throw Error(QStringLiteral("The data folder '%1' has no database.ini naming a PostgreSQL "
                                   "database to copy into.")
                        .arg(targetFolder));
    for (const QString &file : files)
        if (dialect->exists(file))
            throw Error(QStringLiteral("The database already holds %1; a company is copied only "
                                       "into an empty database. Nothing was copied.")
                            .arg(dialect->placeOf(file)));
    std::vector<TableResult> results;
    Databases target;
    for (const QString &file : files) {
        if (progress)
            progress(file);
        try {
            Databases::create(file);
        } catch (const DbError &error) {
            throw Error(error.text());
        }
        const Connection reader = openSource(source.absoluteFilePath(file));
        QSqlDatabase from = reader.db();
        try {
            QSqlDatabase to = target.open(file);
            for (const QString &table : tablesOf(from)) {
                makeRoom(from, to, table);
                const long long rows = copyRows(from, target, file, table, progress);
                if (progress)
                    progress(QStringLiteral("  %1: %2 rows").arg(table).arg(rows));
                results.push_back(compare(from, to, file, table));
            }
        } catch (const DbError &error) {
            throw Error(error.text());
        }
        target.close(file);
    }
    return results;
}

} // namespace CompanyCopy
