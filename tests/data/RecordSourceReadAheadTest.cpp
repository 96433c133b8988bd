#include "data/Databases.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "support/DataFolder.h"

#include <gtest/gtest.h>

namespace {

class CountingObserver : public RecordSourceObserver {
public:
    int before = 0;
    int after = 0;
    int gone = 0;
    void rowsAboutToReset() override { ++before; }
    void rowsReset() override { ++after; }
    void sourceDestroyed() override { ++gone; }
};

class RecordSourceReadAheadTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    RecordSource source{dbs, "datavendor"};

    void SetUp() override
    {
        for (int n = 1; n <= 10; ++n)
            folder.addVendor(n, QStringLiteral("Vendor %1").arg(n));
    }
    void bind(const QString &sql)
    {
        source.setDatabaseName("ap.mdb");
        source.setRecordSource(sql);
        source.refresh();
    }
};

TEST_F(RecordSourceReadAheadTest, FetchMoreReadsAheadWithoutMovingTheCursor)
{
    bind("select * from vendors order by vendnumber");
    EXPECT_EQ(source.fetchedCount(), 1);
    EXPECT_EQ(source.fetchMore(4), 4);
    EXPECT_EQ(source.fetchedCount(), 5);
    EXPECT_EQ(source.value("vendnumber").toInt(), 1);
    EXPECT_EQ(source.rowAt(4).value("vendnumber").toInt(), 5);
    source.moveNext();
    EXPECT_EQ(source.value("vendnumber").toInt(), 2);
    EXPECT_FALSE(source.allFetched());
}

TEST_F(RecordSourceReadAheadTest, FetchMoreStopsAtTheEnd)
{
    bind("select * from vendors order by vendnumber");
    EXPECT_EQ(source.fetchMore(100), 9);
    EXPECT_TRUE(source.allFetched());
    EXPECT_EQ(source.fetchMore(1), 0);
    EXPECT_EQ(source.fetchedCount(), 10);
}

TEST_F(RecordSourceReadAheadTest, MovingOverReadAheadRowsReachesTheEndOnce)
{
    bind("select * from vendors where vendnumber <= 3 order by vendnumber");
    source.fetchMore(10);
    source.moveNext();
    source.moveNext();
    EXPECT_EQ(source.value("vendnumber").toInt(), 3);
    source.moveNext();
    EXPECT_TRUE(source.eof());
}

TEST_F(RecordSourceReadAheadTest, RowAtOutsideTheFetchedRowsIsNoCurrentRecord)
{
    bind("select * from vendors order by vendnumber");
    try {
        source.rowAt(5);
        FAIL() << "no error";
    } catch (const DbError &e) {
        EXPECT_EQ(e.code(), DbError::NoCurrentRecord);
    }
}

TEST_F(RecordSourceReadAheadTest, UnboundSourceHasNothingToFetch)
{
    EXPECT_TRUE(source.allFetched());
    EXPECT_EQ(source.fetchMore(5), 0);
}

TEST_F(RecordSourceReadAheadTest, ObserverIsToldAroundEveryRefreshAlsoAFailedOne)
{
    CountingObserver observer;
    source.setObserver(&observer);
    bind("select * from vendors");
    EXPECT_EQ(observer.before, 1);
    EXPECT_EQ(observer.after, 1);
    EXPECT_THROW(bind("select * from nowhere"), DbError);
    EXPECT_EQ(observer.before, 2);
    EXPECT_EQ(observer.after, 2);
    source.setObserver(nullptr);
    bind("select * from vendors");
    EXPECT_EQ(observer.after, 2);
}

TEST_F(RecordSourceReadAheadTest, ObserverIsToldWhenTheSourceGoes)
{
    CountingObserver observer;
    {
        RecordSource shortLived(dbs, "short");
        shortLived.setObserver(&observer);
    }
    EXPECT_EQ(observer.gone, 1);
}

TEST_F(RecordSourceReadAheadTest, FindFirstWithAnEmptyDateFindsRowsWithoutADate)
{
    folder.exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invdate) values "
                          "(1, 'A', 20260101), (1, 'B', null), (1, 'C', 0)");
    RecordSource invoices(dbs, "datainvoice");
    invoices.setDatabaseName("ap.mdb");
    invoices.setRecordSource("select * from invoices where vendnumber = 1 order by invnumber");
    invoices.refresh();
    ASSERT_TRUE(invoices.findFirst("invnumber = 'B' and invdate = '' and invchecknumber is null"));
    EXPECT_EQ(invoices.value("invnumber").toString(), "B");
    ASSERT_TRUE(invoices.findFirst("invnumber = 'C' and invdate = ''"));
    EXPECT_EQ(invoices.value("invnumber").toString(), "C");
    EXPECT_FALSE(invoices.findFirst("invnumber = 'A' and invdate = ''"));
}

} // namespace
