#include "data/Connection.h"
#include "data/DbError.h"
#include "data/EngineSettings.h"
#include "data/PostgresDialect.h"
#include "data/SqliteDialect.h"

#include "support/DataFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QVariant scalarOf(const Connection &connection, const QString &statement)
{
    QSqlQuery q(connection.db());
    if (!q.exec(statement) || !q.next())
        return {};
    return q.value(0);
}

TEST(Connection, ReadOnlyReadsTheFoldersDatabaseOnItsEngineAndRefusesEveryWrite)
{
    DataFolder folder;
    const Connection staff = Connection::readOnly(folder.path(), QStringLiteral("user.mdb"));
    EXPECT_EQ(staff.onServer(), DataFolder::onPostgres());
    EXPECT_EQ(scalarOf(staff, QStringLiteral("select count(*) from staff")).toInt(), 2);
    EXPECT_THROW(staff.execute(QStringLiteral("delete from staff")), DbError);
    EXPECT_EQ(
        folder.scalar(QStringLiteral("user.mdb"), QStringLiteral("select count(*) from staff"))
            .toInt(),
        2);
}

TEST(Connection, ReadOnlyNamesAMissingDatabaseFileNotFound)
{
    DataFolder folder;
    folder.removeDatabase(QStringLiteral("gl.mdb"));
    try {
        Connection::readOnly(folder.path(), QStringLiteral("gl.mdb"));
        FAIL() << "a missing database was opened";
    } catch (const DbError &error) {
        EXPECT_EQ(error.code(), DbError::FileNotFound);
    }
    EXPECT_NO_THROW(Connection::readOnly(folder.path(), QStringLiteral("ap.mdb")));
}

TEST(Connection, AServerThatCannotBeReachedIsNoMissingFile)
{
    QTemporaryDir dir;
    EngineSettings settings;
    settings.host = dir.filePath(QStringLiteral("no-server"));
    settings.database = QStringLiteral("velmora");
    try {
        Connection::serverReader(settings, QStringLiteral("user.mdb"));
        FAIL() << "a connection to no server was made";
    } catch (const DbError &error) {
        EXPECT_NE(error.code(), DbError::FileNotFound);
        EXPECT_TRUE(error.text().contains(QLatin1String("refused"))) << qPrintable(error.text());
    }
}

TEST(Connection, AReadOnlyFileIsNeverMadeAndALocalFileIs)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("record.mdb"));
    EXPECT_THROW(Connection::readOnlyFile(path).execute(QStringLiteral("select 1")), DbError);
    EXPECT_FALSE(QFileInfo::exists(path));
    {
        const Connection local = Connection::localFile(path);
        local.execute(QStringLiteral("create table t (x integer)"));
    }
    EXPECT_TRUE(QFileInfo::exists(path));
    const Connection reader = Connection::readOnlyFile(path);
    EXPECT_EQ(scalarOf(reader, QStringLiteral("select count(*) from t")).toInt(), 0);
    EXPECT_THROW(reader.execute(QStringLiteral("insert into t values (1)")), DbError);
}

TEST(Connection, ABulkTransactionWritesOnlyWhenCommitted)
{
    QTemporaryDir dir;
    const Connection local = Connection::localFile(dir.filePath(QStringLiteral("bulk.mdb")));
    local.execute(QStringLiteral("create table t (x integer)"));
    {
        BulkTransaction transaction(local);
        local.execute(QStringLiteral("insert into t values (1)"));
    }
    EXPECT_EQ(scalarOf(local, QStringLiteral("select count(*) from t")).toInt(), 0);
    {
        BulkTransaction transaction(local);
        local.execute(QStringLiteral("insert into t values (1)"));
        local.execute(QStringLiteral("insert into t values (2)"));
        transaction.commit();
    }
    EXPECT_EQ(scalarOf(local, QStringLiteral("select count(*) from t")).toInt(), 2);
}

TEST(Connection, ABulkTransactionOnAFileAnotherHoldsFailsAtTheStart)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("held.mdb"));
    const Connection holder = Connection::localFile(path);
    holder.execute(QStringLiteral("create table t (x integer)"));
    BulkTransaction held(holder);
    const Connection other = Connection::localFile(path);
    try {
        BulkTransaction transaction(other);
        FAIL() << "the write lock was taken twice";
    } catch (const DbError &error) {
        EXPECT_EQ(error.code(), DbError::RecordLocked);
    }
}

TEST(Connection, TheServersOrderTermsPutNullsWhereTheFilesDo)
{
    EngineSettings settings;
    settings.host = QStringLiteral("localhost");
    settings.database = QStringLiteral("velmora");
    const PostgresDialect server(settings);
    EXPECT_EQ(server.orderTerm(QStringLiteral("\"ap\".\"name\"")),
              QStringLiteral("\"ap\".\"name\" nulls first"));
    EXPECT_EQ(server.orderTerm(QStringLiteral("name DESC")),
              QStringLiteral("name DESC nulls last"));
    EXPECT_EQ(server.orderTerm(QStringLiteral("name desc nulls first")),
              QStringLiteral("name desc nulls first"));
    EXPECT_EQ(server.rowIdColumn(), QStringLiteral("ctid"));
    const SqliteDialect files;
    EXPECT_EQ(files.orderTerm(QStringLiteral("name DESC")), QStringLiteral("name DESC"));
    EXPECT_EQ(files.rowIdColumn(), QStringLiteral("rowid"));
}

} // namespace
