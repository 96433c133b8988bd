#include "data/Databases.h"
#include "data/DbError.h"
#include "data/OrderKey.h"
#include "data/RecordSource.h"
#include "support/DataFolder.h"

#include <QRegularExpression>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// Each row with the engine's own row number beside it, to tell rows with equal values apart.
QString withRowNumber()
{
    return DataFolder::onPostgres() ? "select *, ctid as rowid from"
                                    : "select *, rowid as rowid from";
}

class CountingObserver : public RecordSourceObserver {
public:
    int before = 0;
    int after = 0;
    int gone = 0;
    void rowsAboutToReset() override { ++before; }
    void rowsReset() override { ++after; }
    void sourceDestroyed() override { ++gone; }
};

class RecordSourceWindowTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    RecordSource source{dbs, "datavendor"};

    void SetUp() override
    {
        for (int n = 1; n <= 10; ++n)
            folder.addVendor(n, QStringLiteral("Vendor %1").arg(n));
        source.setUpdateTable("vendors", "vendnumber");
    }
    void bind(const QString &sql)
    {
        source.setDatabaseName("ap.mdb");
        source.setRecordSource(sql);
        source.refresh();
    }
    // Vendors 1001 to 1000 + count more, named after their numbers.
    void addMany(int count)
    {
        folder.exec("ap.mdb",
                    QStringLiteral("with recursive n(i) as (select 1001 union all select i + 1 "
                                   "from n where i < %1) insert into vendors (vendnumber, "
                                   "vendname) select i, 'Bulk ' || i from n")
                        .arg(1000 + count));
    }
    int number() { return source.value("vendnumber").toInt(); }
};

TEST_F(RecordSourceWindowTest, ARefreshReadsTheFirstRowOnly)
{
    bind("select * from vendors order by vendnumber");
    EXPECT_EQ(number(), 1);
    EXPECT_EQ(source.fetchedCount(), 1);
    EXPECT_FALSE(source.allFetched());
}

TEST_F(RecordSourceWindowTest, ReadRowsReadsByPositionWithoutMovingTheCursor)
{
    bind("select * from vendors order by vendnumber");
    const std::vector<QSqlRecord> rows = source.readRows(4, 3);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].value("vendnumber").toInt(), 5);
    EXPECT_EQ(rows[2].value("vendnumber").toInt(), 7);
    EXPECT_EQ(number(), 1);
    EXPECT_EQ(source.fetchedCount(), 1);
}

TEST_F(RecordSourceWindowTest, ReadRowsAtTheEndGivesTheRowsThereAre)
{
    bind("select * from vendors order by vendnumber desc");
    const std::vector<QSqlRecord> last = source.readRows(8, 5);
    ASSERT_EQ(last.size(), 2u);
    EXPECT_EQ(last[1].value("vendnumber").toInt(), 1);
    EXPECT_TRUE(source.readRows(10, 5).empty());
}

TEST_F(RecordSourceWindowTest, RowCountIsKnownWithoutWalking)
{
    bind("select * from vendors where vendnumber >= 4 order by vendname");
    EXPECT_EQ(source.rowCount(), 7);
    EXPECT_EQ(source.fetchedCount(), 1);
}

TEST_F(RecordSourceWindowTest, UnboundSourceHasNoRows)
{
    EXPECT_TRUE(source.allFetched());
    EXPECT_EQ(source.rowCount(), 0);
    EXPECT_TRUE(source.readRows(0, 5).empty());
}

TEST_F(RecordSourceWindowTest, WalkingFiveThousandRowsHoldsNoMoreThanTwoWindows)
{
    addMany(5000);
    bind("select * from vendors where vendnumber >= 0 order by vendnumber");
    int most = 0;
    for (int i = 0; i < 5000; ++i) {
        source.moveNext();
        most = std::max(most, source.fetchedCount());
    }
    EXPECT_EQ(number(), 5991);
    EXPECT_LE(most, 128);
    EXPECT_GT(most, 64);
}

TEST_F(RecordSourceWindowTest, NextAndPreviousWalkTheWholeResultInOrderBothWays)
{
    addMany(2000);
    bind("select * from vendors where vendnumber >= 0 order by vendnumber desc");
    QList<int> forward;
    while (!source.eof()) {
        forward << number();
        source.moveNext();
    }
    ASSERT_EQ(forward.size(), 2010);
    EXPECT_EQ(forward.first(), 3000);
    EXPECT_EQ(forward.last(), 1);
    QList<int> back;
    source.movePrevious();
    while (!source.bof()) {
        back.prepend(number());
        source.movePrevious();
    }
    EXPECT_EQ(back, forward);
}

TEST_F(RecordSourceWindowTest, SteppingBackAndForthAcrossAWindowEdgeGivesTheNeighbours)
{
    addMany(200);
    bind("select * from vendors where vendnumber > 1000 order by vendnumber");
    // Positions 64 and 65 lie on either side of the first window's edge.
    for (int i = 0; i < 64; ++i)
        source.moveNext();
    EXPECT_EQ(number(), 1065);
    source.moveNext();
    EXPECT_EQ(number(), 1066);
    source.movePrevious();
    EXPECT_EQ(number(), 1065);
    source.movePrevious();
    EXPECT_EQ(number(), 1064);
    source.moveNext();
    EXPECT_EQ(number(), 1065);
}

TEST_F(RecordSourceWindowTest, TheEndIsFoundWhereTheRowsEnd)
{
    bind("select * from vendors where vendnumber >= 3 order by vendnumber");
    for (int i = 0; i < 8; ++i) {
        EXPECT_FALSE(source.eof()) << i;
        source.moveNext();
    }
    EXPECT_TRUE(source.eof());
    EXPECT_TRUE(source.allFetched());
    EXPECT_THROW(source.moveNext(), DbError);
    source.movePrevious();
    EXPECT_EQ(number(), 10);
}

TEST_F(RecordSourceWindowTest, MoveFirstReturnsToTheFirstRowFromDeepIn)
{
    addMany(300);
    bind("select * from vendors order by vendnumber");
    for (int i = 0; i < 200; ++i)
        source.moveNext();
    source.moveFirst();
    EXPECT_EQ(number(), 1);
}

TEST_F(RecordSourceWindowTest, EditAndRereadWorkDeepInTheResult)
{
    addMany(300);
    bind("select * from vendors order by vendnumber");
    for (int i = 0; i < 150; ++i)
        source.moveNext();
    ASSERT_EQ(number(), 1141);
    source.edit();
    source.setValue("vendname", "Renamed deep");
    source.update();
    EXPECT_EQ(source.value("vendname").toString(), "Renamed deep");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select vendname from vendors where vendnumber = 1141").toString(),
        "Renamed deep");
    folder.exec("ap.mdb", "update vendors set vendcity = 'Elsewhere' where vendnumber = 1141");
    EXPECT_EQ(source.reread().value("vendcity").toString(), "Elsewhere");
}

TEST_F(RecordSourceWindowTest, DeleteDeepInTheResultStandsOnTheNextRowAndKeepsTheOrder)
{
    addMany(300);
    bind("select * from vendors order by vendnumber");
    for (int i = 0; i < 63; ++i)
        source.moveNext();
    ASSERT_EQ(number(), 1054);
    source.deleteCurrent();
    EXPECT_EQ(number(), 1055);
    source.movePrevious();
    EXPECT_EQ(number(), 1053);
    int rest = 0;
    while (!source.eof()) {
        source.moveNext();
        ++rest;
    }
    EXPECT_EQ(rest, 247);
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors").toInt(), 309);
}

TEST_F(RecordSourceWindowTest, DeletingTheLastRowLeavesNoRecords)
{
    bind("select * from vendors where vendnumber = 7");
    source.deleteCurrent();
    EXPECT_FALSE(source.hasRecords());
    EXPECT_TRUE(source.eof());
}

TEST_F(RecordSourceWindowTest, FindFirstWorksWhereverTheCursorStands)
{
    addMany(300);
    bind("select * from vendors order by vendnumber");
    for (int i = 0; i < 250; ++i)
        source.moveNext();
    ASSERT_TRUE(source.findFirst("vendnumber = 1003"));
    EXPECT_EQ(number(), 1003);
    EXPECT_FALSE(source.findFirst("vendnumber = 99999"));
}

// Walks a statement's whole result with the source both ways and compares with one read of it.
class RecordSourceTiesTest : public RecordSourceWindowTest {
protected:
    QStringList oneRead(const QString &sql, const QString &column)
    {
        QStringList values;
        QSqlQuery q = dbs.select("ap.mdb", sql);
        while (q.next())
            values << q.value(column).toString() + "/" + q.value("rowid").toString();
        return values;
    }
    void expectWalksBothWays(const QString &sql, const QString &column)
    {
        // The files return equal names in row order; the server in the order of the row id
        // that settles them.
        const QString table = QRegularExpression("from (\\w+)").match(sql).captured(1);
        const QString oneReadSql = QString(sql).replace("select * from", withRowNumber()) +
                                   (DataFolder::onPostgres() ? ", " + table + ".ctid" : "");
        const QStringList expected = oneRead(oneReadSql, column);
        bind(QString(sql).replace("select * from", withRowNumber()));
        QStringList forward;
        while (!source.eof()) {
            forward << source.value(column).toString() + "/" + source.value("rowid").toString();
            source.moveNext();
        }
        EXPECT_EQ(forward, expected) << sql.toStdString();
        QStringList back;
        source.movePrevious();
        while (!source.bof()) {
            back.prepend(source.value(column).toString() + "/" + source.value("rowid").toString());
            source.movePrevious();
        }
        EXPECT_EQ(back, expected) << sql.toStdString();
    }
    // 3,000 vendors whose names repeat in runs longer than a window, in three spellings.
    void addRepeatedNames()
    {
        folder.exec("ap.mdb",
                    "with recursive n(i) as (select 1 union all select i + 1 from n where i < "
                    "3000) insert into vendors (vendnumber, vendname, vendglacct) select 1000 + i, "
                    "case i % 3 when 0 then 'Same Name' when 1 then 'SAME NAME' else 'same name' "
                    "end || case when i < 1500 then '' else ' ' || (i / 100) end, 5000 + i % 2 "
                    "from n");
    }
};

TEST_F(RecordSourceTiesTest, NameRunsLongerThanAWindowWalkInOrderBothWays)
{
    addRepeatedNames();
    expectWalksBothWays("select * from vendors where vendname >= 'a' order by vendname",
                        "vendname");
    expectWalksBothWays("select * from vendors where vendname >= 'a' order by vendname desc",
                        "vendname");
}

TEST_F(RecordSourceTiesTest, AnOrderWithinAnotherColumnsValueWalksInOrderBothWays)
{
    addRepeatedNames();
    expectWalksBothWays("select * from vendors where vendglacct = 5001 order by vendname",
                        "vendname");
}

TEST_F(RecordSourceTiesTest, ATwoColumnOrderWalksInOrderBothWays)
{
    folder.exec("ap.mdb",
                "with recursive n(i) as (select 1 union all select i + 1 from n where i < 2500) "
                "insert into invoices (vendnumber, invnumber, invdate, invstatus) select 7, "
                "'N' || (i % 40), 20260000 + i % 3, 1 + i % 3 from n");
    expectWalksBothWays("select * from invoices where vendnumber = 7 and invstatus > 0 and "
                        "invstatus < 4 order by invnumber, invdate",
                        "invnumber");
}

TEST_F(RecordSourceTiesTest, AnOrderNoIndexServesWalksInOrderBothWays)
{
    addRepeatedNames();
    expectWalksBothWays("select * from vendors where vendnumber > 0 order by vendcity, vendname",
                        "vendname");
}

TEST_F(RecordSourceWindowTest, AFailedReadLeavesTheCursorWhereItWas)
{
    bind("select * from vendors order by vendnumber");
    folder.exec("ap.mdb", "alter table vendors rename to vendors_gone");
    EXPECT_THROW(source.moveNext(), DbError);
    EXPECT_EQ(number(), 1);
    EXPECT_FALSE(source.bof());
}

TEST_F(RecordSourceWindowTest, ObserverIsToldAroundEveryRefreshAlsoAFailedOne)
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

TEST_F(RecordSourceWindowTest, ObserverIsToldWhenTheSourceGoes)
{
    CountingObserver observer;
    {
        RecordSource shortLived(dbs, "short");
        shortLived.setObserver(&observer);
    }
    EXPECT_EQ(observer.gone, 1);
}

TEST_F(RecordSourceWindowTest, FindFirstWithAnEmptyDateFindsRowsWithoutADate)
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

// A walk reads on from the rows it holds by their order values (where an index serves the
// order), on the server as on the files, rather than skipping every row before them.
TEST_F(RecordSourceWindowTest, AnOrderAnIndexServesIsReadOnByKeyOnEitherEngine)
{
    addMany(3000);
    if (DataFolder::onPostgres()) // the server plans by the table's statistics, kept up by itself
        folder.exec("ap.mdb", "analyze vendors");
    QSqlDatabase db = dbs.open("ap.mdb");
    QSqlRecord first;
    {
        QSqlQuery q(db);
        ASSERT_TRUE(q.exec("select * from vendors order by vendnumber limit 1"));
        ASSERT_TRUE(q.next());
        first = q.record();
    }
    const std::optional<OrderKey> key =
        OrderKey::of(db, dbs.dialect().map("select * from vendors order by vendnumber"), first);
    ASSERT_TRUE(key);
    EXPECT_EQ(key->order().columns, QStringList{"vendnumber"});
    EXPECT_TRUE(
        OrderKey::of(db, dbs.dialect().map("select * from vendors order by vendname"), first));
    // No index serves this order: the engine sorts, and only reading by position is right.
    EXPECT_FALSE(
        OrderKey::of(db, dbs.dialect().map("select * from vendors order by vendcity"), first));
}

} // namespace
