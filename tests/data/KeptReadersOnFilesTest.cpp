#include "data/Databases.h"
#include "data/SqliteDialect.h"
#include "support/DataFolder.h"

#include <QFileInfo>
#include <QSqlQuery>

#include <gtest/gtest.h>

// Opening a file's connection reads its schema again, so a reader let go of while the file stays
// open in this process is kept for the next reader. It holds nothing another user could notice,
// and it goes with the file's last connection.
namespace {

QVariant firstValue(QSqlDatabase db, const QString &statement)
{
    QSqlQuery q(db);
    if (!q.exec(statement) || !q.next())
        return {};
    return q.value(0);
}

// Another user's write followed by a checkpoint that empties the write-ahead log, which only
// succeeds when no connection reads an older state of the file: what the program printed.
QString writeAndCheckpointOutside(DataFolder &folder)
{
    QString output;
    const QString errors =
        folder.otherProgram("ap.mdb",
                            "insert into vendors (vendnumber, vendname) values (9, 'Outside'); "
                            "pragma wal_checkpoint(truncate);",
                            &output);
    EXPECT_EQ(errors, QString());
    return output.trimmed();
}

TEST(KeptReadersOnFiles, AReaderLetGoBesideTheOpenFileServesTheNextReader)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    folder.addVendor(5, "Kept");
    Databases dbs;
    dbs.open("ap.mdb");
    EXPECT_EQ(
        firstValue(dbs.openReader("ap.mdb", "lookup"), "select vendname from vendors").toString(),
        "Kept");
    dbs.closeReader("ap.mdb", "lookup");
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 1);
    EXPECT_EQ(dbs.openCount(), 2);
    EXPECT_EQ(
        firstValue(dbs.openReader("ap.mdb", "lookup"), "select count(*) from vendors").toInt(), 1);
    EXPECT_EQ(dbs.openCount(), 2);
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 0);
}

TEST(KeptReadersOnFiles, AKeptReaderLeavesAnotherUserFreeToWriteAndCheckpointAndSeesTheWrite)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    folder.addVendor(5, "Kept");
    Databases dbs;
    dbs.open("ap.mdb");
    firstValue(dbs.openReader("ap.mdb", "lookup"), "select vendname from vendors");
    dbs.closeReader("ap.mdb", "lookup");
    ASSERT_EQ(dbs.spareCount("ap.mdb"), 1);
    EXPECT_EQ(writeAndCheckpointOutside(folder), "0|0|0");
    EXPECT_EQ(QFileInfo(folder.file("ap.mdb-wal")).size(), 0);
    EXPECT_EQ(firstValue(dbs.openReader("ap.mdb", "lookup"),
                         "select vendname from vendors where vendnumber = 9")
                  .toString(),
              "Outside");
    EXPECT_EQ(dbs.openCount(), 2);
}

TEST(KeptReadersOnFiles, AReaderLetGoInsideATransactionIsClosedAndHoldsUpNoOne)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    folder.addVendor(5, "Kept");
    Databases dbs;
    dbs.open("ap.mdb");
    {
        QSqlQuery q(dbs.openReader("ap.mdb", "lookup"));
        ASSERT_TRUE(q.exec("begin"));
        ASSERT_TRUE(q.exec("select count(*) from vendors"));
        ASSERT_TRUE(q.next());
        q.finish();
    }
    dbs.closeReader("ap.mdb", "lookup");
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 0);
    EXPECT_EQ(writeAndCheckpointOutside(folder), "0|0|0");
    EXPECT_EQ(QFileInfo(folder.file("ap.mdb-wal")).size(), 0);
}

TEST(KeptReadersOnFiles, AReaderLetGoWhenNothingElseHoldsTheFileIsClosed)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    Databases dbs;
    firstValue(dbs.openReader("gl.mdb", "accounts"), "select count(*) from gl0");
    ASSERT_TRUE(QFileInfo::exists(folder.file("gl.mdb-wal")));
    dbs.closeReader("gl.mdb", "accounts");
    EXPECT_EQ(dbs.spareCount("gl.mdb"), 0);
    // The engine removes the write-ahead log with the last connection to the file.
    EXPECT_FALSE(QFileInfo::exists(folder.file("gl.mdb-wal")));
}

TEST(KeptReadersOnFiles, TheFilesLastConnectionTakesTheKeptReadersWithIt)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    Databases dbs;
    dbs.open("ap.mdb");
    firstValue(dbs.openReader("ap.mdb", "lookup"), "select count(*) from vendors");
    firstValue(dbs.openReader("ap.mdb", "list"), "select count(*) from invoices");
    dbs.closeReader("ap.mdb", "lookup");
    dbs.closeReader("ap.mdb", "list");
    ASSERT_EQ(dbs.spareCount("ap.mdb"), 2);
    ASSERT_TRUE(QFileInfo::exists(folder.file("ap.mdb-wal")));
    dbs.close("ap.mdb");
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 0);
    EXPECT_FALSE(dbs.isOpen("ap.mdb"));
    EXPECT_FALSE(QFileInfo::exists(folder.file("ap.mdb-wal")));
}

TEST(KeptReadersOnFiles, ClosingAFileWithAReaderOpenKeepsNothingOfEither)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    Databases dbs;
    dbs.open("ap.mdb");
    firstValue(dbs.openReader("ap.mdb", "lookup"), "select count(*) from vendors");
    dbs.close("ap.mdb");
    EXPECT_EQ(dbs.spareCount("ap.mdb"), 0);
    EXPECT_FALSE(QFileInfo::exists(folder.file("ap.mdb-wal")));
}

TEST(KeptReadersOnFiles, AConnectionWithAReadUnderWayOrATransactionHoldsSomething)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    folder.addVendor(5, "First");
    folder.addVendor(6, "Second");
    Databases dbs;
    const SqliteDialect files;
    {
        QSqlDatabase db = dbs.openReader("ap.mdb", "lookup");
        EXPECT_TRUE(files.holdsNothing(db));
        QSqlQuery q(db);
        q.setForwardOnly(true);
        ASSERT_TRUE(q.exec("select vendname from vendors order by vendnumber"));
        ASSERT_TRUE(q.next());
        EXPECT_FALSE(files.holdsNothing(db));
        ASSERT_TRUE(q.next());
        EXPECT_FALSE(q.next()); // the read reached its end
        EXPECT_TRUE(files.holdsNothing(db));
        ASSERT_TRUE(q.exec("select vendname from vendors order by vendnumber"));
        ASSERT_TRUE(q.next());
        q.finish();
        EXPECT_TRUE(files.holdsNothing(db));
        ASSERT_TRUE(q.exec("begin"));
        EXPECT_FALSE(files.holdsNothing(db));
        ASSERT_TRUE(q.exec("rollback"));
        EXPECT_TRUE(files.holdsNothing(db));
    }
    dbs.closeReader("ap.mdb", "lookup");
}

} // namespace
