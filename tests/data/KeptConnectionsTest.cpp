#include "data/Databases.h"
#include "support/DataFolder.h"

#include <QSqlQuery>

#include <gtest/gtest.h>

// A connection to the server costs tens of milliseconds, a statement a fraction of one: on the
// server a file's connections are kept for its next use when they are let go. The files close
// them when nothing else of this process holds the file (see KeptReadersOnFilesTest.cpp).
namespace {

QVariant firstValue(QSqlDatabase db, const QString &statement)
{
    QSqlQuery q(db);
    if (!q.exec(statement) || !q.next())
        return {};
    return q.value(0);
}

TEST(KeptConnections, AReaderLetGoIsUsedAgainOnTheServerAndClosedOnTheFiles)
{
    DataFolder folder;
    Databases dbs;
    dbs.openReader("ap.mdb", "lookup");
    EXPECT_EQ(dbs.openCount(), 1);
    dbs.closeReader("ap.mdb", "lookup");
    EXPECT_FALSE(dbs.isOpen("ap.mdb"));
    const QVariant one =
        firstValue(dbs.openReader("ap.mdb", "list"), "select count(*) from vendors");
    EXPECT_EQ(one.toInt(), 0);
    if (DataFolder::onPostgres()) {
        EXPECT_EQ(dbs.openCount(), 1);
    } else {
        EXPECT_EQ(dbs.openCount(), 2);
    }
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 0);
}

TEST(KeptConnections, AClosedFileKeepsItsConnectionOnlyOnTheServer)
{
    DataFolder folder;
    Databases dbs;
    dbs.open("gl.mdb");
    dbs.close("gl.mdb");
    EXPECT_FALSE(dbs.isOpen("gl.mdb"));
    EXPECT_EQ(dbs.spareCount("gl.mdb"), DataFolder::onPostgres() ? 1 : 0);
    dbs.closeAll();
    EXPECT_EQ(dbs.spareCount("gl.mdb"), 0);
}

TEST(KeptConnections, FourAreKeptPerFileAndTheFifthIsClosed)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "the files keep no connection";
    DataFolder folder;
    Databases dbs;
    for (const char *tag : {"a", "b", "c", "d", "e"})
        dbs.openReader("ap.mdb", tag);
    dbs.closeReader("ap.mdb", "a");
    dbs.closeReader("ap.mdb", "b");
    dbs.closeReader("ap.mdb", "c");
    dbs.closeReader("ap.mdb", "d");
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 4);
    dbs.closeReader("ap.mdb", "e");
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 4);
    EXPECT_EQ(dbs.spareCount("gl.mdb"), 0);
}

TEST(KeptConnections, AFileClosedInTheMiddleOfAWriteKeepsNothingOfIt)
{
    DataFolder folder;
    Databases dbs;
    dbs.beginWrite("ap.mdb");
    QSqlQuery(dbs.open("ap.mdb"))
        .exec("insert into vendors (vendnumber, vendname) values (7, 'Half written')");
    dbs.close("ap.mdb");
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 0);
    EXPECT_FALSE(dbs.isWriting("ap.mdb"));
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors").toInt(), 0);
    EXPECT_EQ(dbs.scalar("ap.mdb", "select count(*) from vendors").toInt(), 0);
}

TEST(KeptConnections, AKeptConnectionTheServerEndedIsReplacedByANewOne)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "the files keep no connection";
    DataFolder folder;
    Databases dbs;
    const int pid =
        firstValue(dbs.openReader("ap.mdb", "lookup"), "select pg_backend_pid()").toInt();
    ASSERT_GT(pid, 0);
    dbs.closeReader("ap.mdb", "lookup");
    ASSERT_EQ(dbs.spareCount("ap.mdb"), 1);
    EXPECT_EQ(
        folder.otherProgram("ap.mdb", QStringLiteral("select pg_terminate_backend(%1)").arg(pid)),
        "");
    folder.addVendor(12, "After the restart");
    const QVariant name =
        firstValue(dbs.openReader("ap.mdb", "lookup"), "select vendname from vendors");
    EXPECT_EQ(name.toString(), "After the restart");
    EXPECT_EQ(dbs.openCount(), 2);
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 0);
}

TEST(KeptConnections, WhetherAFileIsThereIsToldRightlyWithAConnectionKept)
{
    DataFolder folder;
    Databases dbs;
    dbs.open("gl.mdb");
    dbs.close("gl.mdb");
    EXPECT_TRUE(dbs.exists("ap.mdb"));
    EXPECT_TRUE(dbs.exists("gl.mdb"));
    EXPECT_FALSE(dbs.exists("ar.mdb"));
    folder.removeDatabase("ap.mdb");
    EXPECT_FALSE(dbs.exists("ap.mdb"));
}

TEST(KeptConnections, AKeptConnectionServesTheFileItWasMadeForOnly)
{
    DataFolder folder;
    folder.addVendor(3, "In ap");
    Databases dbs;
    dbs.open("ap.mdb");
    dbs.close("ap.mdb");
    // gl.mdb has no vendors table: a connection of ap.mdb's would find one.
    EXPECT_FALSE(QSqlQuery(dbs.open("gl.mdb")).exec("select count(*) from vendors"));
    EXPECT_EQ(dbs.scalar("ap.mdb", "select vendname from vendors").toString(), "In ap");
}

} // namespace

namespace {

TEST(KeptConnections, AReadAfterTheServerEndedTheFilesSessionRunsOnANewOne)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "a file's connection is not ended from outside";
    DataFolder folder;
    folder.addVendor(21, "Still here");
    Databases dbs;
    const int pid = dbs.scalar("ap.mdb", "select pg_backend_pid()").toInt();
    ASSERT_GT(pid, 0);
    EXPECT_EQ(
        folder.otherProgram("ap.mdb", QStringLiteral("select pg_terminate_backend(%1)").arg(pid)),
        "");
    EXPECT_EQ(dbs.scalar("ap.mdb", "select vendname from vendors").toString(), "Still here");
    EXPECT_EQ(dbs.openCount(), 2);
}

TEST(KeptConnections, AWriteAfterTheServerEndedTheFilesSessionStartsOnANewOne)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "a file's connection is not ended from outside";
    DataFolder folder;
    Databases dbs;
    const int pid = dbs.scalar("ap.mdb", "select pg_backend_pid()").toInt();
    EXPECT_EQ(
        folder.otherProgram("ap.mdb", QStringLiteral("select pg_terminate_backend(%1)").arg(pid)),
        "");
    dbs.execute("ap.mdb", "insert into vendors (vendnumber, vendname) values (22, 'Written')");
    EXPECT_EQ(folder.scalar("ap.mdb", "select vendname from vendors").toString(), "Written");
}

} // namespace
