#include "data/Databases.h"
#include "data/Schema.h"
#include "data/SqliteDialect.h"
#include "support/DataFolder.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

// ap.mdb as the second layout made it: text columns compared with regard to case, the date
// index without the amounts, and an index of the user's own.
class SchemaUpgradeTest : public ::testing::Test {
protected:
    DataFolder folder;

    void SetUp() override
    {
        SQLITE_FILES_ONLY();
        for (const Schema::Table &table : Schema::tablesOf("ap.mdb")) {
            QStringList defs;
            for (const Schema::Column &c : table.columns)
                defs << c.name + (c.kind == Schema::Kind::Text ? " TEXT" : " INTEGER");
            folder.exec("ap.mdb", "drop table " + table.name);
            folder.exec("ap.mdb",
                        QStringLiteral("create table %1 (%2)").arg(table.name, defs.join(", ")));
        }
        folder.exec("ap.mdb", "create index ix_vendors_name on vendors (vendname)");
        folder.exec("ap.mdb", "create index ix_invoices_vendor_date on invoices "
                              "(vendnumber, invdate, invstatus, invchecknumber)");
        folder.exec("ap.mdb", "create index ix_custom_city on vendors (vendcity)");
        folder.exec("ap.mdb", "insert into vendors (rowid, vendnumber, vendname, vendcity) values "
                              "(7, 100, 'Benchmark Supply', 'Leeds'), (3, 101, 'acme', 'York'), "
                              "(12, 102, 'Zenith', null)");
        folder.exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invproduct, "
                              "invamount, invstatus) values (100, 'INV-1', 'Paper', 12.5, 1)");
        folder.exec("ap.mdb", "update schema_version set version = 2");
    }
    QStringList column(Databases &dbs, const QString &sql)
    {
        QStringList values;
        QSqlQuery q = dbs.select("ap.mdb", sql);
        while (q.next())
            values << q.value(0).toString();
        return values;
    }
    int count(Databases &dbs, const QString &sql) { return dbs.scalar("ap.mdb", sql).toInt(); }
};

TEST_F(SchemaUpgradeTest, TextColumnsBecomeCaseBlindAndTheRowsKeepTheirNumbers)
{
    Databases dbs;
    EXPECT_TRUE(dbs.scalar("ap.mdb", "select sql from sqlite_master where name = 'vendors'")
                    .toString()
                    .contains("vendname TEXT COLLATE NOCASE"));
    EXPECT_EQ(column(dbs, "select rowid || ':' || vendname from vendors order by rowid"),
              QStringList({"3:acme", "7:Benchmark Supply", "12:Zenith"}));
    EXPECT_EQ(column(dbs, "select vendname from vendors where vendname >= 'b' order by vendname"),
              QStringList({"Benchmark Supply", "Zenith"}));
    EXPECT_EQ(count(dbs, "select count(*) from invoices where invnumber = 'inv-1'"), 1);
    EXPECT_EQ(count(dbs, "select version from schema_version"), 4);
}

TEST_F(SchemaUpgradeTest, RetiredIndexesGoTheNewOnesComeAndTheUsersOwnStays)
{
    Databases dbs;
    const auto has = [&](const char *name) {
        return count(dbs, QStringLiteral("select count(*) from sqlite_master where type = "
                                         "'index' and name = '%1'")
                              .arg(QLatin1String(name))) == 1;
    };
    EXPECT_FALSE(has("ix_invoices_vendor_date"));
    EXPECT_TRUE(has("ix_invoices_vendor_date_amount"));
    EXPECT_TRUE(has("ix_invoices_unpaid_amount"));
    EXPECT_TRUE(has("ix_invoices_paid_checknumber"));
    EXPECT_TRUE(has("ix_vendors_name"));
    EXPECT_TRUE(has("ix_custom_city"));
    EXPECT_EQ(count(dbs, "select count(*) from sqlite_master where name like '%_nocase'"), 0);
}

TEST_F(SchemaUpgradeTest, TheStepsRunAgainChangeNothing)
{
    {
        Databases dbs;
        dbs.open("ap.mdb");
    }
    folder.exec("ap.mdb", "update schema_version set version = 2");
    Databases dbs;
    EXPECT_EQ(count(dbs, "select count(*) from vendors"), 3);
    EXPECT_EQ(count(dbs, "select count(*) from invoices"), 1);
    EXPECT_EQ(count(dbs, "select version from schema_version"), 4);
    QSqlDatabase db = dbs.open("ap.mdb");
    EXPECT_EQ(Schema::ensure(db, "ap.mdb", SqliteDialect()), QString());
    EXPECT_EQ(column(dbs, "select vendname from vendors order by vendname"),
              QStringList({"acme", "Benchmark Supply", "Zenith"}));
}

TEST_F(SchemaUpgradeTest, TheCheckpointAfterARebuildLeavesNoLogBehind)
{
    Databases dbs;
    dbs.open("ap.mdb");
    EXPECT_LT(QFileInfo(folder.file("ap.mdb-wal")).size(), 64 * 1024);
}

} // namespace
