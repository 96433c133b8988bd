#include "lists/RecordSourceModel.h"
#include "data/Databases.h"
#include "data/RecordSource.h"
#include "lists/ListColumns.h"
#include "support/DataFolder.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

class RecordSourceModelTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    RecordSource source{dbs, "datachecks"};

    void SetUp() override
    {
        folder.exec("ap.mdb",
                    "with recursive n(i) as "
                    "(select 1 union all select i + 1 from n where i < 200) "
                    "insert into checks (chkpayeenum, chkpayeename, chknum, chkdate, chkamount, "
                    "chkref, chkstatus) select 12, 'Payee', i, 20260101 + i % 28, i * 1.5, 'R', 1 "
                    "from n");
    }
    void bind(const QString &sql)
    {
        source.setDatabaseName("ap.mdb");
        source.setRecordSource(sql);
        source.refresh();
    }
    static QDate today() { return QDate(2026, 11, 21); }
};

TEST_F(RecordSourceModelTest, TheRowCountIsKnownAtOnceAndTheLastRowReadsRight)
{
    RecordSourceModel model(source, ListColumns::checks(), today);
    EXPECT_EQ(model.rowCount(), 0);
    bind("select * from checks order by chknum");
    EXPECT_EQ(model.rowCount(), 200);
    EXPECT_FALSE(model.canFetchMore({}));
    EXPECT_EQ(model.index(199, 0).data().toString(), "200");
    EXPECT_EQ(model.index(198, 0).data().toString(), "199");
    EXPECT_EQ(model.index(0, 0).data().toString(), "1");
    EXPECT_FALSE(model.index(200, 0).data().isValid());
    // The last page and the first: nothing between was read.
    EXPECT_EQ(model.heldPages(), 2);
}

TEST_F(RecordSourceModelTest, OnlyTheLastPagesUsedAreKept)
{
    folder.exec("ap.mdb",
                "with recursive n(i) as "
                "(select 201 union all select i + 1 from n where i < 5000) "
                "insert into checks (chkpayeenum, chkpayeename, chknum, chkdate, chkamount, "
                "chkref, chkstatus) select 12, 'Payee', i, 20260101, i, 'R', 1 from n");
    RecordSourceModel model(source, ListColumns::checks(), today);
    bind("select * from checks order by chknum");
    ASSERT_EQ(model.rowCount(), 5000);
    for (int row = 0; row < 5000; row += 7)
        EXPECT_EQ(model.index(row, 0).data().toString(), QString::number(row + 1)) << row;
    EXPECT_EQ(model.heldPages(), RecordSourceModel::keptPages);
    EXPECT_EQ(model.index(0, 0).data().toString(), "1");
    EXPECT_LE(model.heldPages(), 16);
}

TEST_F(RecordSourceModelTest, ADescendingListShowsItsOldestRowLast)
{
    RecordSourceModel model(source, ListColumns::checks(), today);
    bind("select * from checks order by chknum desc");
    EXPECT_EQ(model.index(0, 0).data().toString(), "200");
    EXPECT_EQ(model.index(199, 0).data().toString(), "1");
}

TEST_F(RecordSourceModelTest, RefreshResetsTheModel)
{
    RecordSourceModel model(source, ListColumns::checks(), today);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    bind("select * from checks where chknum <= 3 order by chknum desc");
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(model.rowCount(), 3);
    EXPECT_EQ(model.index(0, 0).data().toString(), "3");
    source.setRecordSource(QString());
    source.refresh();
    EXPECT_EQ(resets.count(), 2);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(RecordSourceModelTest, CellsShowFormattedValuesAndKeepTheStoredOnes)
{
    RecordSourceModel model(source, ListColumns::checks(), today);
    bind("select * from checks where chknum = 10");
    ASSERT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.index(0, 1).data().toString(), "01/11/2026");
    EXPECT_EQ(model.index(0, 1).data(RecordSourceModel::RawRole).toLongLong(), 20260111);
    EXPECT_EQ(model.index(0, 5).data().toString(), "$15.00");
    EXPECT_EQ(model.index(0, 7).data().toString(), "2026");
    EXPECT_EQ(model.index(0, 8).data().toString(), "314");
    EXPECT_EQ(model.index(0, 5).data(Qt::TextAlignmentRole).value<Qt::Alignment>(),
              Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(model.headerData(3, Qt::Horizontal).toString(), "Payee");
}

TEST_F(RecordSourceModelTest, ModelOutlivingItsSourceReadsNothing)
{
    auto own = std::make_unique<RecordSource>(dbs, "temporary");
    RecordSourceModel model(*own, ListColumns::checks(), today);
    own->setDatabaseName("ap.mdb");
    own->setRecordSource("select * from checks");
    own->refresh();
    own.reset();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.index(0, 0).data().isValid());
}

} // namespace
