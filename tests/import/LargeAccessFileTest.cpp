// The generator of large Access files for timing the import (apmaster-bench-make-jet): the file
// it makes is read whole by the real reader, with every appended row and its money.
#include "ImportFixture.h"

#include "support/SharedTestData.h"

#include <QProcess>

#include <gtest/gtest.h>

TEST(LargeAccessFile, RowsAppendedToASampleAreReadWholeByTheImport)
{
    const QString sample = SharedTestData::find(QStringLiteral("access/nwind.mdb"));
    FAIL_WITHOUT_SHARED_FILE(sample, QStringLiteral("access/nwind.mdb"));
    ImportFixture fixture;
    QProcess make;
    make.start(QStringLiteral(APMASTER_MAKE_JET_PROGRAM),
               {sample, fixture.sourceFile("ap.mdb"), "Orders", "2000"});
    ASSERT_TRUE(make.waitForFinished(30000));
    ASSERT_EQ(make.exitCode(), 0) << make.readAllStandardError().toStdString();
    ASSERT_EQ(fixture.run(), QString());
    const TableSummary *orders = nullptr;
    for (const TableSummary &t : fixture.summary().files.at(0).tables)
        if (t.name == "Orders")
            orders = &t;
    ASSERT_NE(orders, nullptr);
    EXPECT_EQ(orders->rowsRead, 2830);
    EXPECT_EQ(orders->rowsWritten, 2830);
    ASSERT_EQ(orders->totals.size(), 1u);
    EXPECT_EQ(orders->totals[0].read, 124802491900);
    EXPECT_EQ(orders->totals[0].written, 124802491900);
    // The appended keys count up from above the highest there, with nothing lost or doubled.
    EXPECT_EQ(fixture.scalar("ap.mdb", "select count(distinct OrderID) from Orders").toInt(), 2830);
    EXPECT_EQ(
        fixture.scalar("ap.mdb", "select min(OrderID) from Orders where OrderID > 11077").toInt(),
        11078);
    EXPECT_EQ(fixture.scalar("ap.mdb", "select max(OrderID) from Orders").toInt(), 13077);
    // The other tables of the copy are as they were.
    EXPECT_EQ(fixture.scalar("ap.mdb", "select count(*) from \"Order Details\"").toInt(), 2155);
}
