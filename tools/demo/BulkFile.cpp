#include "BulkFile.h"

#include "DemoError.h"

#include "data/DbError.h"
#include "data/Schema.h"
#include "data/SqliteDialect.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>

namespace Demo {
namespace {

void removeFileSet(const QString &path)
{
    for (const char *ending : {"", "-wal", "-shm", "-journal"}) {
        const QString name = path + QLatin1String(ending);
        if (QFile::exists(name) && !QFile::remove(name))
            throw Error(QStringLiteral("Could not replace %1.").arg(name));
    }
}

const Schema::Table &tableOf(const QString &fileName, const QString &table)
{
    for (const Schema::Table &t : Schema::tablesOf(fileName))
        if (t.name == table)
            return t;
    throw Error(QStringLiteral("%1 has no table %2.").arg(fileName, table));
}

} // namespace

bool BulkFile::canReplace(const QString &path)
{
    QFile file(path);
    if (!file.exists() || file.size() == 0)
        return true;
    return file.open(QIODevice::ReadOnly) && file.read(16).startsWith("SQLite format 3");
}

BulkFile::BulkFile(const QDir &folder, const QString &fileName) :
    m_fileName(fileName), m_path(folder.absoluteFilePath(fileName))
{
    if (!canReplace(m_path))
        throw Error(
            QStringLiteral("%1 is not an SQLite database; it was left as it is.").arg(m_path));
    removeFileSet(m_path);
    QFile empty(m_path);
    if (!empty.open(QIODevice::WriteOnly))
        throw Error(QStringLiteral("Could not create %1: %2").arg(m_path, empty.errorString()));
    empty.close();

    try {
        m_connection.emplace(Connection::localFile(m_path));
    } catch (const DbError &error) {
        throw Error(QStringLiteral("Could not open %1: %2").arg(m_path, error.text()));
    }
    QSqlDatabase db = m_connection->db();
    const QString schemaError = Schema::ensure(db, fileName, SqliteDialect());
    if (!schemaError.isEmpty())
        throw Error(
            QStringLiteral("Could not create the tables of %1: %2").arg(m_path, schemaError));
    execute(QStringLiteral("pragma journal_mode=WAL"));
    execute(QStringLiteral("pragma synchronous=OFF"));
    execute(QStringLiteral("pragma cache_size=-262144")); // 256 MB
    execute(QStringLiteral("pragma temp_store=MEMORY"));
}

BulkFile::~BulkFile() = default; // a transaction not committed is rolled back

QSqlDatabase BulkFile::database() const
{
    return m_connection ? m_connection->db() : QSqlDatabase();
}

void BulkFile::begin()
{
    try {
        m_transaction = std::make_unique<BulkTransaction>(*m_connection);
    } catch (const DbError &error) {
        throw Error(QStringLiteral("%1: %2").arg(m_fileName, error.text()));
    }
}

void BulkFile::commit()
{
    try {
        if (m_transaction)
            m_transaction->commit();
    } catch (const DbError &error) {
        throw Error(QStringLiteral("%1: %2").arg(m_fileName, error.text()));
    }
    m_transaction.reset();
}

void BulkFile::execute(const QString &statement)
{
    QSqlQuery q(database());
    if (!q.exec(statement))
        throw Error(QStringLiteral("%1: %2 (%3)").arg(m_fileName, q.lastError().text(), statement));
}

void BulkFile::dropIndexes(const QString &table)
{
    for (const QString &index : tableOf(m_fileName, table).indexes)
        execute(
            QStringLiteral("drop index if exists %1").arg(index.section(QLatin1Char('('), 0, 0)));
}

void BulkFile::createIndexes(const QString &table)
{
    for (const QString &index : tableOf(m_fileName, table).indexes) {
        const qsizetype paren = index.indexOf(QLatin1Char('('));
        execute(QStringLiteral("create index if not exists %1 on %2 %3")
                    .arg(index.left(paren), table, index.mid(paren)));
    }
}

void BulkFile::finish()
{
    execute(QStringLiteral("pragma synchronous=FULL"));
    execute(QStringLiteral("pragma wal_checkpoint(TRUNCATE)"));
    m_transaction.reset();
    m_connection.reset();
}

Insert::Insert(const BulkFile &file, const QString &table, const QStringList &columns) :
    m_query(file.database()), m_table(table)
{
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i)
        marks << QStringLiteral("?");
    const QString statement =
        QStringLiteral("insert into %1 (%2) values (%3)")
            .arg(table, columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
    if (!m_query.prepare(statement))
        throw Error(QStringLiteral("%1: %2").arg(statement, m_query.lastError().text()));
}

void Insert::exec()
{
    m_next = 0;
    if (!m_query.exec())
        throw Error(QStringLiteral("Could not add a row to %1: %2")
                        .arg(m_table, m_query.lastError().text()));
}

} // namespace Demo
