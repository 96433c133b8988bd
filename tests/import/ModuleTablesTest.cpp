// The module's own tables in an Access file: matched by name without regard to case, given the
// module's columns, types and indexes, dates as YYYYMMDD numbers and money to four decimals.
// No Access sample holds the module's tables and Debian has no program that writes Jet files,
// so these tests hand the import a reader stream written here (through a stand-in reader
// process); the real reader's stream is checked on the real files in AccessFilesTest.
#include "ImportFixture.h"
#include "StreamBuilder.h"

#include "data/Databases.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {
using P = ReaderProtocol::AccessType;

// ap.mdb with vendors and invoices under names of another case, and a table of its own.
StreamBuilder apFile()
{
    StreamBuilder s;
    s.table("VENDORS", 2,
            {{"VendNumber", P::LongInteger},
             {"VENDNAME", P::Text},
             {"vendytd", P::Currency},
             {"VendBal60", P::Double},
             {"Region", P::Text}})
        .row()
        .integer(1001)
        .str("Acme Supply")
        .money(12345678)
        .real(10.00004)
        .str("")
        .row()
        .integer(1002)
        .str("Bolt & Nut")
        .money(-5000)
        .real(0.33335)
        .null()
        .end(2);
    s.table("Invoices", 3,
            {{"vendnumber", P::LongInteger},
             {"invnumber", P::Text},
             {"InvDate", P::DateTime},
             {"invduedate", P::LongInteger},
             {"invamount", P::Double}})
        .row()
        .integer(1001)
        .str("A-1")
        .date(45292.0)
        .integer(20240131)
        .real(12.34567)
        .row()
        .integer(1001)
        .str("A-2")
        .date(-1.25)
        .integer(0)
        .real(0.5)
        .row()
        .integer(1002)
        .str("B-1")
        .null()
        .null()
        .null()
        .end(3);
    s.table("Old Notes", 1, {{"Note", P::Text}}).row().str("kept as it is").end(1);
    return s;
}
} // namespace

TEST(ModuleTables, TablesAndColumnsAreMatchedWithoutRegardToCase)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(fixture.scalar("ap.mdb", "select vendname from vendors where vendnumber = 1001"),
              QVariant("Acme Supply"));
    EXPECT_EQ(fixture.scalar("ap.mdb", "select count(*) from invoices").toInt(), 3);
    EXPECT_EQ(fixture
                  .scalar("ap.mdb", "select count(*) from sqlite_master where name = "
                                    "'VENDORS' collate binary")
                  .toInt(),
              0);
}

TEST(ModuleTables, ModuleTablesGetTheModulesTypesAndIndexes)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    auto type = [&](const char *table, const char *column) {
        return fixture
            .scalar("ap.mdb", QStringLiteral("select type from pragma_table_info('%1') where "
                                             "name = '%2'")
                                  .arg(table, column))
            .toString();
    };
    EXPECT_EQ(type("vendors", "vendnumber"), "INTEGER");
    EXPECT_EQ(type("vendors", "vendytd"), "CURRENCY");
    EXPECT_EQ(type("vendors", "vendbal60"), "CURRENCY");
    EXPECT_EQ(type("invoices", "invdate"), "INTEGER");
    EXPECT_EQ(type("vendors", "vendfax"), "TEXT"); // a column the file lacks is made too
    EXPECT_TRUE(fixture.scalar("ap.mdb", "select sql from sqlite_master where name = 'vendors'")
                    .toString()
                    .contains("vendname TEXT COLLATE NOCASE"));
    EXPECT_EQ(fixture
                  .scalar("ap.mdb", "select count(*) from sqlite_master where type = 'index' "
                                    "and name in ('ix_vendors_name', 'ix_invoices_number')")
                  .toInt(),
              2);
    // A column of a module table that the module does not know is kept with its own type.
    EXPECT_EQ(type("vendors", "Region"), "TEXT");
    EXPECT_EQ(fixture.scalar("ap.mdb", "select Note from \"Old Notes\""),
              QVariant("kept as it is"));
}

TEST(ModuleTables, TheModuleOpensTheImportedFileWithoutChangingIt)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    const QString previous = QDir::currentPath();
    QDir::setCurrent(fixture.data());
    {
        Databases dbs;
        EXPECT_EQ(dbs.scalar("ap.mdb", "select vendname from vendors where vendnumber = 1002"),
                  QVariant("Bolt & Nut"));
        EXPECT_EQ(dbs.scalar("ap.mdb", "select count(*) from vendors where vendname = "
                                       "'ACME SUPPLY'")
                      .toInt(),
                  1);
    }
    QDir::setCurrent(previous);
}

TEST(ModuleTables, DatesBecomeYyyymmddNumbers)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    const QVariantList dates =
        fixture.column("ap.mdb", "select invdate from invoices order by rowid");
    ASSERT_EQ(dates.size(), 3);
    EXPECT_EQ(dates[0], QVariant(qlonglong(20240101)));
    EXPECT_EQ(dates[1], QVariant(qlonglong(18991229)));
    EXPECT_TRUE(dates[2].isNull());
    const QVariantList due =
        fixture.column("ap.mdb", "select invduedate from invoices order by rowid");
    EXPECT_EQ(due[0], QVariant(qlonglong(20240131)));
    EXPECT_EQ(due[1], QVariant(qlonglong(0)));
}

TEST(ModuleTables, ADateWithATimeOfDayKeepsItsDayWithAWarning)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_TRUE(fixture.summary().text().contains(
        "warning: invdate: 1 dates had a time of day, which the module does not keep; the day "
        "was kept"))
        << fixture.summary().text().toStdString();
}

TEST(ModuleTables, MoneyIsRoundedToFourDecimalsAndTotalled)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    const QVariantList amounts =
        fixture.column("ap.mdb", "select invamount from invoices order by rowid");
    EXPECT_EQ(amounts[0].toDouble(), 12.3457);
    EXPECT_EQ(amounts[1].toDouble(), 0.5);
    EXPECT_EQ(
        fixture.scalar("ap.mdb", "select vendytd from vendors where vendnumber = 1001").toDouble(),
        1234.5678);
    EXPECT_EQ(fixture.scalar("ap.mdb", "select vendbal60 from vendors where vendnumber = 1001")
                  .toDouble(),
              10.0);
    const QString text = fixture.summary().text();
    EXPECT_TRUE(text.contains("    total of vendytd: 1234.0678 read, 1234.0678 written"))
        << text.toStdString();
    EXPECT_TRUE(text.contains("    total of invamount: 12.8457 read, 12.8457 written"));
    EXPECT_TRUE(text.contains("  VENDORS (as vendors): 2 rows read, 2 rows written"));
}

TEST(ModuleTables, NullAndEmptyTextStayApart)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(fixture
                  .scalar("ap.mdb", "select Region is null from vendors where vendnumber = "
                                    "1001")
                  .toInt(),
              0);
    EXPECT_EQ(
        fixture.scalar("ap.mdb", "select Region = '' from vendors where vendnumber = 1001").toInt(),
        1);
    EXPECT_EQ(fixture
                  .scalar("ap.mdb", "select Region is null from vendors where vendnumber = "
                                    "1002")
                  .toInt(),
              1);
}

TEST(ModuleTables, TheUserFieldDescriptionsOfTheFileReplaceTheNewTablesEmptyRow)
{
    ImportFixture fixture;
    fixture.writeSource("emp.mdb", jetHeader());
    StreamBuilder s;
    s.table("MiscInfo", 1, {{"miscid", P::LongInteger}, {"miscdesc1", P::Text}})
        .row()
        .integer(7)
        .str("Shirt size")
        .end(1)
        .endOfFile();
    fixture.useStream(s.bytes());
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(fixture.scalar("emp.mdb", "select count(*) from miscinfo").toInt(), 1);
    EXPECT_EQ(fixture.scalar("emp.mdb", "select miscdesc1 from miscinfo where miscid = 7"),
              QVariant("Shirt size"));
}

TEST(ModuleTables, AValueThatIsNotADateStopsTheImportAndIsNamed)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    StreamBuilder s;
    s.table("invoices", 2, {{"vendnumber", P::LongInteger}, {"invdate", P::Text}})
        .row()
        .integer(1001)
        .str("20240131")
        .row()
        .integer(1002)
        .str("2024-13-45")
        .end(2)
        .endOfFile();
    fixture.useStream(s.bytes());
    const QString message = fixture.run();
    EXPECT_TRUE(message.contains("table 'invoices', column 'invdate', row 2 (vendnumber '1002'): "
                                 "the value '2024-13-45' cannot be kept, as it is not a date of "
                                 "the form YYYYMMDD"))
        << message.toStdString();
    EXPECT_TRUE(message.contains("Nothing was written to")) << message.toStdString();
    EXPECT_EQ(fixture.dataEntries().join(","), QStringLiteral("(no data folder)"));
}

TEST(ModuleTables, ACalendarDateThatDoesNotExistIsRefused)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    StreamBuilder s;
    s.table("checks", 1, {{"chknum", P::LongInteger}, {"chkdate", P::LongInteger}})
        .row()
        .integer(501)
        .integer(20230229)
        .end(1)
        .endOfFile();
    fixture.useStream(s.bytes());
    const QString message = fixture.run();
    EXPECT_TRUE(message.contains("column 'chkdate', row 1 (chknum '501'): the value "
                                 "'20230229' cannot be kept"))
        << message.toStdString();
}

TEST(ModuleTables, TextInAMoneyColumnIsRefused)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    StreamBuilder s;
    s.table("vendors", 1, {{"vendnumber", P::LongInteger}, {"vendytd", P::Text}})
        .row()
        .integer(9)
        .str("twelve")
        .end(1)
        .endOfFile();
    fixture.useStream(s.bytes());
    EXPECT_TRUE(fixture.run().contains("column 'vendytd', row 1 (vendnumber '9'): the value "
                                       "'twelve' cannot be kept, as it is not a number"));
}

TEST(ModuleTables, AFileNameInCapitalsIsTheModulesFileToo)
{
    ImportFixture fixture;
    fixture.writeSource("AP.MDB", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(fixture.dataEntries().join(","), "AP.MDB,import.log");
    EXPECT_EQ(fixture
                  .scalar("AP.MDB", "select type from pragma_table_info('invoices') where "
                                    "name = 'invdate'")
                  .toString(),
              "INTEGER");
}

TEST(ModuleTables, MoneyTotalsOfAThousandLargeAmountsAreAddedUpExactly)
{
    // Added up as floating-point numbers, these thousand amounts miss their total by a
    // ten-thousandth; the comparison of both sides must not.
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    StreamBuilder s;
    s.table("vendors", 1000, {{"vendnumber", P::LongInteger}, {"vendytd", P::Currency}});
    for (int i = 0; i < 1000; ++i)
        s.row().integer(i + 1).money(123456789012); // 12,345,678.9012
    s.end(1000);
    s.table("Ledger", 100, {{"Amount", P::Currency}});
    for (int i = 0; i < 100; ++i)
        s.row().money(10000000000001); // 1,000,000,000.0001
    fixture.useStream(s.end(100).endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    const std::vector<TableSummary> &tables = fixture.summary().files.at(0).tables;
    ASSERT_EQ(tables.size(), 2u);
    ASSERT_EQ(tables[0].totals.size(), 1u);
    EXPECT_EQ(tables[0].totals[0].read, 123456789012000);
    EXPECT_EQ(tables[0].totals[0].written, 123456789012000);
    ASSERT_EQ(tables[1].totals.size(), 1u);
    EXPECT_EQ(tables[1].totals[0].read, 1000000000000100);
    EXPECT_EQ(tables[1].totals[0].written, 1000000000000100);
}
