#include "data/Databases.h"
#include "data/RecordSource.h"
#include "support/DataFolder.h"

#include <QFileInfo>
#include <QSqlQuery>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// Browsing writes two derived totals into each vendor shown, with a light commit, while the
// record source walks the vendors. The engine starts its log again from the beginning once no
// read holds on to an older state of the file; a read kept open between steps would make the
// log grow by a page or more with every vendor shown.
TEST(WriteAheadLogTest, ShowingFiveHundredVendorsInARowKeepsTheLogSmall)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    folder.exec("ap.mdb",
                "with recursive n(i) as (select 1 union all select i + 1 from n where i < 600) "
                "insert into vendors (vendnumber, vendname, vendaddr1, vendcity) select i, "
                "'Vendor ' || i, i || ' Long Street Name', 'Springfield' from n");
    folder.exec("ap.mdb",
                "with recursive n(i) as (select 1 union all select i + 1 from n where i < 6000) "
                "insert into invoices (vendnumber, invnumber, invdate, invamount, invstatus) "
                "select 1 + i % 600, 'I' || i, 20260101 + i % 28, i, 1 + i % 5 from n");
    Databases dbs;
    {
        // A checkpoint every 50 pages, so that 500 vendors would pass several.
        QSqlQuery q(dbs.open("ap.mdb"));
        ASSERT_TRUE(q.exec("pragma wal_autocheckpoint=50"));
    }
    RecordSource source(dbs, "datavendor");
    source.setUpdateTable("vendors", "vendnumber");
    source.setDatabaseName("ap.mdb");
    source.setRecordSource("select * from vendors where vendnumber >=0 order by vendnumber");
    source.refresh();
    const QString wal = folder.file("ap.mdb-wal");
    qint64 largest = 0;
    double open = 0;
    double year = 0;
    for (int shown = 0; shown < 500; ++shown) {
        source.edit(RecordSource::Commit::Light);
        source.setValue("vendbalcurrent", open);
        source.setValue("vendbal60", year);
        source.update();
        const QString vendor = source.value("vendnumber").toString();
        open = dbs.scalar("ap.mdb", "select sum(invamount) from invoices where vendnumber = " +
                                        vendor + " and invstatus > 0 and invstatus < 4")
                   .toDouble();
        year = dbs.scalar("ap.mdb", "select sum(invamount) from invoices where vendnumber = " +
                                        vendor + " and invdate between 20260100 and 20261232")
                   .toDouble();
        source.moveNext();
        largest = std::max(largest, QFileInfo(wal).size()); // stat() only: see Databases.h
    }
    EXPECT_EQ(source.value("vendnumber").toInt(), 501);
    EXPECT_GT(largest, 0);
    EXPECT_LT(largest, 512 * 1024);
}

} // namespace
