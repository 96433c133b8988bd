#include "data/RecordSource.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "support/DataFolder.h"

#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

namespace {

class RecordSourceTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    RecordSource source{dbs, "datavendor"};

    void SetUp() override
    {
        for (int n : {100, 250, 251, 300, 400})
            folder.addVendor(n, QStringLiteral("Vendor %1").arg(n));
        source.setUpdateTable("vendors", "vendnumber");
    }
    void bind(const QString &sql)
    {
        source.setDatabaseName("ap.mdb");
        source.setRecordSource(sql);
        source.refresh();
    }
    int number() { return source.value("vendnumber").toInt(); }
    int errorOf(const std::function<void()> &work)
    {
        try {
            work();
        } catch (const DbError &e) {
            return e.code();
        }
        return 0;
    }
};

TEST_F(RecordSourceTest, RefreshStandsOnTheFirstRowAndWalksInTheStatementsOrder)
{
    bind("select * from vendors where vendnumber >=250 order by vendnumber");
    EXPECT_EQ(number(), 250);
    source.moveNext();
    EXPECT_EQ(number(), 251);
    source.moveNext();
    EXPECT_EQ(number(), 300);
    source.movePrevious();
    EXPECT_EQ(number(), 251);
}

TEST_F(RecordSourceTest, MovingPastTheLastRowLeavesNoCurrentRecord)
{
    bind("select * from vendors where vendnumber >=400 order by vendnumber");
    EXPECT_FALSE(source.eof());
    source.moveNext();
    EXPECT_TRUE(source.eof());
    EXPECT_EQ(errorOf([&] { source.current(); }), DbError::NoCurrentRecord);
    EXPECT_EQ(errorOf([&] { source.moveNext(); }), DbError::NoCurrentRecord);
}

TEST_F(RecordSourceTest, MovingBeforeTheFirstRowLeavesNoCurrentRecord)
{
    bind("select * from vendors order by vendnumber");
    source.movePrevious();
    EXPECT_TRUE(source.bof());
    EXPECT_EQ(errorOf([&] { number(); }), DbError::NoCurrentRecord);
}

TEST_F(RecordSourceTest, AnEmptyResultHasNoCurrentRecord)
{
    bind("select * from vendors where vendnumber >=100000 order by vendnumber");
    EXPECT_FALSE(source.hasRecords());
    EXPECT_TRUE(source.bof());
    EXPECT_TRUE(source.eof());
    EXPECT_EQ(errorOf([&] { source.current(); }), DbError::NoCurrentRecord);
}

TEST_F(RecordSourceTest, ABadStatementIsAnEngineErrorNotACrash)
{
    source.setDatabaseName("ap.mdb");
    source.setRecordSource("select * from vendors where vendname >= 'O'Brien' order by vendname");
    EXPECT_NE(errorOf([&] { source.refresh(); }), 0);
    EXPECT_FALSE(source.isBound());
}

TEST_F(RecordSourceTest, ShowingTheFirstRowDoesNotReadTheRest)
{
    folder.exec(
        "ap.mdb",
        "with recursive n(i) as (select 1000 union all select i + 1 from n where i < 20999) "
        "insert into vendors (vendnumber, vendname) select i, 'Bulk ' || i from n");
    bind("select * from vendors where vendnumber >=0 order by vendnumber");
    EXPECT_EQ(number(), 100);
    EXPECT_EQ(source.fetchedCount(), 1);
    source.moveNext();
    source.moveNext();
    // The next window, and the first row kept for a step back.
    EXPECT_EQ(source.fetchedCount(), 65);
}

TEST_F(RecordSourceTest, EditAndUpdateWriteTheCurrentRowByItsKey)
{
    bind("select * from vendors where vendnumber >=250 order by vendnumber");
    source.edit();
    source.setValue("vendname", "Renamed");
    source.setValue("vendytd", 599.99995);
    source.update();
    EXPECT_EQ(source.value("vendname").toString(), "Renamed");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendname from vendors where vendnumber = 250").toString(),
        "Renamed");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendytd from vendors where vendnumber = 250").toDouble(),
        600.0);
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendname from vendors where vendnumber = 251").toString(),
        "Vendor 251");
}

TEST_F(RecordSourceTest, LightCommitLeavesTheNextWriteDurable)
{
    SQLITE_FILES_ONLY();
    bind("select * from vendors order by vendnumber");
    source.edit(RecordSource::Commit::Light);
    source.setValue("vendbalcurrent", 1.5);
    source.update();
    EXPECT_EQ(dbs.scalar("ap.mdb", "pragma synchronous").toInt(), 2); // FULL again
    EXPECT_EQ(folder.scalar("ap.mdb", "select vendbalcurrent from vendors where vendnumber = 100")
                  .toDouble(),
              1.5);
}

TEST_F(RecordSourceTest, EditHoldsTheWriteLockUntilUpdate)
{
    // The edited row itself: the files lock all of it, the server the row.
    bind("select * from vendors order by vendnumber");
    source.edit();
    Databases other;
    other.setBusyTimeoutMsecs(50);
    EXPECT_THROW(other.execute("ap.mdb", "update vendors set vendfax = 'x' where vendnumber = 100"),
                 DbError);
    source.cancelUpdate();
    EXPECT_NO_THROW(
        other.execute("ap.mdb", "update vendors set vendfax = 'x' where vendnumber = 100"));
}

TEST_F(RecordSourceTest, UpdateAtOnceWritesTheCurrentRowByItsKeyAndTheRowHeldShowsIt)
{
    bind("select * from vendors where vendnumber >=250 order by vendnumber");
    source.updateAtOnce({{"vendbalcurrent", 12.34566}, {"vendbal60", 7.5}},
                        RecordSource::Commit::Light);
    EXPECT_DOUBLE_EQ(source.value("vendbalcurrent").toDouble(), 12.3457);
    EXPECT_DOUBLE_EQ(source.value("vendbal60").toDouble(), 7.5);
    EXPECT_EQ(folder.scalar("ap.mdb", "select vendbalcurrent from vendors where vendnumber = 250")
                  .toDouble(),
              12.3457);
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendbal60 from vendors where vendnumber = 250").toDouble(),
        7.5);
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors where vendbal60 <> 0").toInt(),
              1);
    EXPECT_FALSE(dbs.isWriting("ap.mdb"));
}

TEST_F(RecordSourceTest, UpdateAtOnceInsideAWriteTransactionIsUndoneWithIt)
{
    bind("select * from vendors order by vendnumber");
    {
        WriteTransaction tx(dbs, "ap.mdb");
        source.updateAtOnce({{"vendbal60", 3.0}}, RecordSource::Commit::Light);
        EXPECT_EQ(
            dbs.scalar("ap.mdb", "select vendbal60 from vendors where vendnumber = 100").toDouble(),
            3.0);
    }
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendbal60 from vendors where vendnumber = 100").toDouble(),
        0.0);
}

TEST_F(RecordSourceTest, UpdateAtOnceOfARowAnotherUserHoldsFailsAsLockedAndWritesNothing)
{
    dbs.setBusyTimeoutMsecs(50);
    bind("select * from vendors order by vendnumber");
    Databases other;
    RecordSource holder(other, "holder");
    holder.setUpdateTable("vendors", "vendnumber");
    holder.setDatabaseName("ap.mdb");
    holder.setRecordSource("select * from vendors order by vendnumber");
    holder.refresh();
    holder.edit();
    EXPECT_EQ(errorOf([&] {
                  source.updateAtOnce({{"vendbal60", 9.0}}, RecordSource::Commit::Light);
              }),
              DbError::RecordLocked);
    holder.cancelUpdate();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendbal60 from vendors where vendnumber = 100").toDouble(),
        0.0);
    source.updateAtOnce({{"vendbal60", 9.0}}, RecordSource::Commit::Light);
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendbal60 from vendors where vendnumber = 100").toDouble(),
        9.0);
}

TEST_F(RecordSourceTest, ALightWriteOnItsOwnSkipsTheDiskForItselfOnly)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "the files' light write runs in a write transaction of its own";
    dbs.execute("ap.mdb", "set synchronous_commit = on");
    const QString light =
        dbs.dialect().writtenOnItsOwn("update vendors set vendfax = ? where vendnumber = ?", true);
    QSqlQuery &q =
        dbs.prepared("ap.mdb", light + " returning current_setting('synchronous_commit')");
    q.bindValue(0, "x");
    q.bindValue(1, 250);
    ASSERT_TRUE(q.exec()) << q.lastError().text().toStdString();
    ASSERT_TRUE(q.next());
    EXPECT_EQ(q.value(0).toString(), "off");
    q.finish();
    EXPECT_EQ(dbs.scalar("ap.mdb", "show synchronous_commit").toString(), "on");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendfax from vendors where vendnumber = 250").toString(),
        "x");
    const QString durable =
        dbs.dialect().writtenOnItsOwn("update vendors set vendfax = ? where vendnumber = ?", false);
    EXPECT_EQ(durable, "update vendors set vendfax = ? where vendnumber = ?");
}

TEST_F(RecordSourceTest, ALightUpdateAtOnceInsideADurableTransactionLeavesItDurable)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "the files' commit setting has its own test";
    bind("select * from vendors order by vendnumber");
    dbs.execute("ap.mdb", "set synchronous_commit = on");
    WriteTransaction tx(dbs, "ap.mdb");
    source.updateAtOnce({{"vendbal60", 4.0}}, RecordSource::Commit::Light);
    EXPECT_EQ(dbs.scalar("ap.mdb", "show synchronous_commit").toString(), "on");
    tx.commit();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendbal60 from vendors where vendnumber = 100").toDouble(),
        4.0);
}

TEST_F(RecordSourceTest, UpdateWithoutEditIsAnError)
{
    bind("select * from vendors order by vendnumber");
    EXPECT_EQ(errorOf([&] { source.update(); }), 3020);
}

TEST_F(RecordSourceTest, AddNewInsertsARow)
{
    bind("vendors");
    EXPECT_EQ(source.value("vendnumber").toInt(), 100);
    source.addNew();
    source.setValue("vendnumber", 777);
    source.setValue("vendname", "New one");
    source.update();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendname from vendors where vendnumber = 777").toString(),
        "New one");
}

TEST_F(RecordSourceTest, DeleteRemovesTheCurrentRowOnly)
{
    bind("select * from vendors where vendnumber >=250 order by vendnumber");
    source.deleteCurrent();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 250").toInt(), 0);
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors").toInt(), 4);
}

TEST_F(RecordSourceTest, FindFirstMatchesACriterionAndMakesItCurrent)
{
    bind("select * from vendors");
    EXPECT_TRUE(source.findFirst("vendnumber = 300"));
    EXPECT_EQ(source.value("vendname").toString(), "Vendor 300");
    EXPECT_FALSE(source.findFirst("vendnumber = 301"));
    EXPECT_EQ(source.value("vendname").toString(), "Vendor 300");
}

TEST_F(RecordSourceTest, RereadSeesAnotherUsersChange)
{
    bind("select * from vendors where vendnumber >=250 order by vendnumber");
    folder.exec("ap.mdb",
                "update vendors set vendname = 'Changed elsewhere' where vendnumber = 250");
    EXPECT_EQ(source.value("vendname").toString(), "Vendor 250");
    EXPECT_EQ(source.reread().value("vendname").toString(), "Changed elsewhere");
}

TEST_F(RecordSourceTest, WritesGoThroughWhileTheCursorIsOpenOnALargeResult)
{
    folder.exec("ap.mdb",
                "with recursive n(i) as (select 1000 union all select i + 1 from n where i < 5999) "
                "insert into vendors (vendnumber, vendname) select i, 'Bulk ' || i from n");
    bind("select * from vendors order by vendnumber");
    folder.exec("ap.mdb", "update vendors set vendname = 'Other user' where vendnumber = 5000");
    source.edit();
    source.setValue("vendname", "Mine");
    EXPECT_NO_THROW(source.update());
}

TEST_F(RecordSourceTest, EmptyDatabaseNameLetsGoOfTheFile)
{
    bind("select * from vendors order by vendnumber");
    EXPECT_TRUE(source.isBound());
    source.setDatabaseName("");
    source.setRecordSource("");
    source.refresh();
    EXPECT_FALSE(source.isBound());
    EXPECT_FALSE(dbs.isOpen("ap.mdb"));
}

} // namespace
