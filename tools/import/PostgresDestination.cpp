#include "PostgresDestination.h"

#include "ImportError.h"
#include "ReaderProtocol.h"

#include "data/DbError.h"
#include "data/Schema.h"

#include <QSqlError>
#include <QSqlRecord>

namespace {
namespace P = ReaderProtocol;
} // namespace

PostgresDestination::PostgresDestination(const EngineSettings &settings) :
    m_settings(settings), m_dialect(settings)
{
}

PostgresDestination::~PostgresDestination()
{
    close();
}

QString PostgresDestination::place() const
{
    return QStringLiteral("the database %1 on %2").arg(m_settings.database, m_settings.host);
}

QString PostgresDestination::keptType(unsigned char accessType)
{
    switch (accessType) {
    case P::Boolean:
    case P::Byte:
    case P::Integer:
        return QStringLiteral("smallint");
    case P::LongInteger:
        return QStringLiteral("integer");
    case P::Currency:
        return QStringLiteral("numeric(19,4)");
    case P::Single:
    case P::Double:
        return QStringLiteral("double precision");
    case P::DateTime:
        return QStringLiteral("timestamp");
    case P::Text:
        // Compared without regard to case, as the desktop engine compared it.
        return QStringLiteral("citext");
    case P::Binary:
    case P::OleObject:
        return QStringLiteral("bytea");
    case P::Numeric:
        return QStringLiteral("numeric");
    default:
        return QStringLiteral("text");
    }
}

// Names the server would fold to lower case anyway, so that statements without quotes find
// the tables and columns kept under the file's own names.
QString PostgresDestination::identifier(const QString &name) const
{
    return TablePlans::quoted(name.toLower());
}

void PostgresDestination::run(const QString &statement)
{
    QSqlQuery q(m_connection->db());
    if (!q.exec(statement))
        throw ImportError(QStringLiteral("%1 refused a statement for '%2': %3 (%4)")
                              .arg(place(), m_fileName, q.lastError().text().trimmed(), statement));
}

void PostgresDestination::start(const QStringList &fileNames)
{
    if (!m_settings.error.isEmpty())
        throw ImportError(m_settings.error);
    try {
        m_connection.emplace(Connection::server(m_settings, QStringLiteral("apmaster-import")));
    } catch (const DbError &error) {
        throw ImportError(error.text());
    }
    QStringList held;
    for (const QString &name : fileNames) {
        QSqlQuery q(m_connection->db());
        q.prepare(QStringLiteral("select 1 from pg_namespace where nspname = ?"));
        q.addBindValue(PostgresDialect::schemaOf(name));
        if (!q.exec())
            throw ImportError(QStringLiteral("The schemas of %1 could not be listed: %2")
                                  .arg(place(), q.lastError().text().trimmed()));
        if (q.next())
            held << QStringLiteral("%1 (schema %2)").arg(name, PostgresDialect::schemaOf(name));
    }
    if (!held.isEmpty())
        throw ImportError(
            QStringLiteral("The database %1 on %2 already holds a company (%3). The import "
                           "writes only into a database that holds none of the files; nothing "
                           "was changed.")
                .arg(m_settings.database, m_settings.host, held.join(QStringLiteral(", "))));
    try {
        m_transaction = std::make_unique<BulkTransaction>(*m_connection);
    } catch (const DbError &error) {
        throw ImportError(
            QStringLiteral("%1 refused to start the import: %2").arg(place(), error.text()));
    }
    // The module's text columns need the case-blind text type.
    run(QStringLiteral("create extension if not exists citext schema public"));
}

void PostgresDestination::beginFile(const QString &fileName)
{
    m_fileName = fileName;
    const QString schema = PostgresDialect::schemaOf(fileName);
    // Without "if not exists": a copy of the module making the same schema meanwhile makes
    // this fail rather than mix two companies.
    run(QStringLiteral("create schema ") + TablePlans::quoted(schema));
    run(QStringLiteral("set local search_path to %1, public").arg(TablePlans::quoted(schema)));
    QSqlDatabase db = m_connection->db();
    const QString error = Schema::makeTablesInTransaction(db, fileName.toLower(), m_dialect);
    if (!error.isEmpty())
        throw ImportError(QStringLiteral("the module's tables could not be made in '%1': %2")
                              .arg(fileName, error.trimmed()));
}

void PostgresDestination::beginTable(const TablePlan &plan)
{
    m_table = plan.name;
    QStringList names;
    for (const ColumnPlan &c : plan.columns)
        names << identifier(c.name);
    if (plan.known) {
        const QSqlRecord existing = m_connection->db().record(plan.name);
        for (const ColumnPlan &c : plan.columns)
            if (!existing.contains(c.name.toLower()))
                run(QStringLiteral("alter table %1 add column %2 %3")
                        .arg(identifier(plan.name), identifier(c.name), keptType(c.sourceType)));
        // A new module table may start with a row of its own (the user fields' descriptions);
        // the file's rows take its place.
        run(QStringLiteral("delete from ") + identifier(plan.name));
    } else {
        QStringList defs;
        for (const ColumnPlan &c : plan.columns)
            defs << identifier(c.name) + QLatin1Char(' ') + keptType(c.sourceType);
        run(QStringLiteral("create table %1 (%2)").arg(identifier(plan.name), defs.join(", ")));
    }
    m_insert = QSqlQuery(m_connection->db());
    QStringList marks;
    for (qsizetype i = 0; i < names.size(); ++i)
        marks << QStringLiteral("?");
    const QString sql = QStringLiteral("insert into %1 (%2) values (%3)")
                            .arg(identifier(plan.name), names.join(", "), marks.join(", "));
    if (!m_insert.prepare(sql))
        throw ImportError(
            QStringLiteral("%1 refused a statement for '%2': %3 (%4)")
                .arg(place(), m_fileName, m_insert.lastError().text().trimmed(), sql));
}

void PostgresDestination::insert(const QVariantList &values)
{
    for (qsizetype i = 0; i < values.size(); ++i)
        m_insert.bindValue(int(i), values[i]);
    if (!m_insert.exec())
        throw ImportError(QStringLiteral("a row could not be written to table '%1' of '%2': %3")
                              .arg(m_table, m_fileName, m_insert.lastError().text().trimmed()));
}

void PostgresDestination::endTable()
{
    m_insert.finish();
    m_insert = QSqlQuery();
}

qint64 PostgresDestination::rowCount()
{
    QSqlQuery q(m_connection->db());
    if (!q.exec(QStringLiteral("select count(*) from ") + identifier(m_table)) || !q.next())
        throw ImportError(QStringLiteral("table '%1' of '%2' could not be counted: %3")
                              .arg(m_table, m_fileName, q.lastError().text().trimmed()));
    return q.value(0).toLongLong();
}

qint64 PostgresDestination::moneyTotal(const QString &column)
{
    // Amounts are exact decimals on the server; the sum is made whole ten-thousandths there.
    QSqlQuery q(m_connection->db());
    if (!q.exec(QStringLiteral("select (coalesce(sum(%1), 0) * 10000)::bigint from %2")
                    .arg(identifier(column), identifier(m_table))) ||
        !q.next())
        throw ImportError(QStringLiteral("column '%1' of table '%2' could not be added up: %3")
                              .arg(column, m_table, q.lastError().text().trimmed()));
    return q.value(0).toLongLong();
}

void PostgresDestination::endFile()
{
    // The indexes are made once, from the rows, rather than kept up row by row.
    QSqlDatabase db = m_connection->db();
    const QString error = Schema::makeIndexesInTransaction(db, m_fileName.toLower(), m_dialect);
    if (!error.isEmpty())
        throw ImportError(QStringLiteral("the module's indexes could not be made in '%1': %2")
                              .arg(m_fileName, error.trimmed()));
}

void PostgresDestination::commit()
{
    m_fileName.clear();
    try {
        m_transaction->commit();
    } catch (const DbError &error) {
        throw ImportError(
            QStringLiteral("%1 refused a statement for '': %2").arg(place(), error.text()));
    }
    m_transaction.reset();
}

void PostgresDestination::close()
{
    m_insert = QSqlQuery();
    m_transaction.reset(); // rolls back what was not committed
    m_connection.reset();
}
