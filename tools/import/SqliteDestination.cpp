#include "SqliteDestination.h"

#include "ImportError.h"

#include "data/DbError.h"
#include "data/Schema.h"
#include "data/SqliteDialect.h"

#include <QDir>
#include <QFile>
#include <QSqlError>
#include <QSqlRecord>

#include <fcntl.h>
#include <unistd.h>

using TablePlans::quoted;

SqliteDestination::~SqliteDestination()
{
    close();
}

QSqlDatabase SqliteDestination::db() const
{
    return m_connection ? m_connection->db() : QSqlDatabase();
}

void SqliteDestination::run(const QString &statement)
{
    QSqlQuery q(db());
    if (!q.exec(statement))
        throw ImportError(QStringLiteral("the new file '%1' refused a statement: %2 (%3)")
                              .arg(m_fileName, q.lastError().text(), statement));
}

void SqliteDestination::beginFile(const QString &fileName)
{
    close();
    m_fileName = fileName;
    try {
        m_connection.emplace(Connection::localFile(QDir(m_folder).absoluteFilePath(fileName)));
    } catch (const DbError &error) {
        throw ImportError(
            QStringLiteral("the new file '%1' could not be made: %2").arg(fileName, error.text()));
    }
    // The module's files run in write-ahead-log mode; the import itself needs no durability
    // per statement, as the finished file is flushed to disk before it is moved into place.
    run(QStringLiteral("pragma journal_mode=WAL"));
    run(QStringLiteral("pragma synchronous=OFF"));
    run(QStringLiteral("pragma cache_size=-65536")); // 64 MB, for making the indexes
    QSqlDatabase database = db();
    const QString error = Schema::ensure(database, fileName.toLower(), SqliteDialect());
    if (!error.isEmpty())
        throw ImportError(QStringLiteral("the module's tables could not be made in '%1': %2")
                              .arg(fileName, error));
}

void SqliteDestination::beginTable(const TablePlan &plan)
{
    m_table = plan.name;
    QStringList names;
    for (const ColumnPlan &c : plan.columns)
        names << quoted(c.name);
    if (plan.known) {
        const QSqlRecord existing = db().record(plan.name);
        for (const ColumnPlan &c : plan.columns)
            if (!existing.contains(c.name))
                run(QStringLiteral("alter table %1 add column %2 %3")
                        .arg(quoted(plan.name), quoted(c.name),
                             TablePlans::keptType(c.sourceType)));
        // A new module table may start with a row of its own (the user fields' descriptions);
        // the file's rows take its place.
        run(QStringLiteral("delete from ") + quoted(plan.name));
        // Rows go in faster without the indexes; endFile() makes them again from the rows.
        for (const Schema::Table &table : Schema::tablesOf(m_fileName.toLower()))
            if (table.name == plan.name)
                for (const QString &index : table.indexes)
                    run(QStringLiteral("drop index if exists ") +
                        index.section(QLatin1Char('('), 0, 0));
    } else {
        QStringList defs;
        for (const ColumnPlan &c : plan.columns)
            defs << quoted(c.name) + QLatin1Char(' ') + TablePlans::keptType(c.sourceType);
        run(QStringLiteral("create table %1 (%2)").arg(quoted(plan.name), defs.join(", ")));
    }
    try {
        m_transaction = std::make_unique<BulkTransaction>(*m_connection);
    } catch (const DbError &error) {
        throw ImportError(QStringLiteral("the new file '%1' refused a statement: %2")
                              .arg(m_fileName, error.text()));
    }
    m_insert = QSqlQuery(db());
    QStringList marks;
    for (qsizetype i = 0; i < names.size(); ++i)
        marks << QStringLiteral("?");
    const QString sql = QStringLiteral("insert into %1 (%2) values (%3)")
                            .arg(quoted(plan.name), names.join(", "), marks.join(", "));
    if (!m_insert.prepare(sql))
        throw ImportError(QStringLiteral("the new file '%1' refused a statement: %2 (%3)")
                              .arg(m_fileName, m_insert.lastError().text(), sql));
}

void SqliteDestination::insert(const QVariantList &values)
{
    for (qsizetype i = 0; i < values.size(); ++i)
        m_insert.bindValue(int(i), values[i]);
    if (!m_insert.exec())
        throw ImportError(QStringLiteral("a row could not be written to table '%1' of '%2': %3")
                              .arg(m_table, m_fileName, m_insert.lastError().text()));
}

void SqliteDestination::endTable()
{
    m_insert.finish();
    m_insert = QSqlQuery();
    try {
        m_transaction->commit();
    } catch (const DbError &error) {
        throw ImportError(QStringLiteral("the new file '%1' refused a statement: %2")
                              .arg(m_fileName, error.text()));
    }
    m_transaction.reset();
}

qint64 SqliteDestination::rowCount()
{
    QSqlQuery q(db());
    if (!q.exec(QStringLiteral("select count(*) from ") + quoted(m_table)) || !q.next())
        throw ImportError(QStringLiteral("table '%1' of '%2' could not be counted: %3")
                              .arg(m_table, m_fileName, q.lastError().text()));
    return q.value(0).toLongLong();
}

qint64 SqliteDestination::moneyTotal(const QString &column)
{
    // Each amount as whole ten-thousandths first: a sum of the stored floating-point values
    // drifts by more than that over a hundred thousand rows.
    QSqlQuery q(db());
    if (!q.exec(QStringLiteral("select coalesce(sum(cast(round(%1 * 10000) as integer)), 0) "
                               "from %2")
                    .arg(quoted(column), quoted(m_table))) ||
        !q.next())
        throw ImportError(QStringLiteral("column '%1' of table '%2' could not be added up: %3")
                              .arg(column, m_table, q.lastError().text()));
    return q.value(0).toLongLong();
}

void SqliteDestination::endFile()
{
    QString error;
    {
        QSqlDatabase database = db();
        error = Schema::ensure(database, m_fileName.toLower(), SqliteDialect());
    }
    if (!error.isEmpty())
        throw ImportError(QStringLiteral("the module's indexes could not be made in '%1': %2")
                              .arg(m_fileName, error));
    // Everything into the file itself, so that it travels alone.
    run(QStringLiteral("pragma wal_checkpoint(TRUNCATE)"));
    close();
    // The finished file reaches the disk before it is moved into place.
    const int fd = ::open(
        QFile::encodeName(QDir(m_folder).absoluteFilePath(m_fileName)).constData(), O_RDONLY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

void SqliteDestination::close()
{
    m_insert = QSqlQuery();
    m_transaction.reset(); // rolls back a table not finished
    m_connection.reset();
}
