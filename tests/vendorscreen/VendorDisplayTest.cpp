#include "vendorscreen/VendorDisplay.h"
#include "support/VendorScreen.h"

#include "data/Databases.h"
#include "data/RecordSource.h"
#include "support/DataFolder.h"

#include <QFile>
#include <QGroupBox>
#include <QProcess>
#include <QTest>

namespace {

class VendorDisplayTest : public VendorScreen {};

TEST_F(VendorDisplayTest, FieldsShowTheirColumnsInTheirForms)
{
    lookup(0, "100");
    EXPECT_EQ(field(0), "100");
    EXPECT_EQ(field(1), "Acme Office Supply");
    EXPECT_EQ(field(2), "1 Main St");
    EXPECT_EQ(field(4), "Springfield");
    EXPECT_EQ(field(5), "IL");
    EXPECT_EQ(field(6), "62704");
    EXPECT_EQ(field(7), "217-555-0100");
    EXPECT_EQ(field(9), "Bill");
    EXPECT_EQ(field(11), "1");
    EXPECT_EQ(field(12), "5000");
    EXPECT_EQ(field(13), "1234.50");
    EXPECT_EQ(field(16), "1234.5");
    EXPECT_EQ(field(17), "Net 30");
}

TEST_F(VendorDisplayTest, ZeroYtdShowsTwoDecimals)
{
    lookup(0, "250");
    EXPECT_EQ(field(13), "0.00");
    EXPECT_EQ(field(14), "0.00");
    EXPECT_EQ(field(15), "0.00");
}

TEST(MoneyPattern, NoGroupingAndAlwaysTwoDecimals)
{
    EXPECT_EQ(VendorDisplay::money(0), "0.00");
    EXPECT_EQ(VendorDisplay::money(1234.5), "1234.50");
    EXPECT_EQ(VendorDisplay::money(1234567.891), "1234567.89");
    EXPECT_EQ(VendorDisplay::money(-5), "-5.00");
    EXPECT_EQ(VendorDisplay::money(0.004), "0.00");
}

TEST_F(VendorDisplayTest, NullColumnsShowAsEmptyFields)
{
    lookup(0, "250");
    EXPECT_EQ(field(1), "O'Brien Catering");
    for (int i : {2, 3, 4, 5, 6, 7, 8, 10, 17, 18, 19, 20, 21, 22, 23})
        EXPECT_EQ(field(i), "") << i;
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(VendorDisplayTest, TypeFourShowsZeroAndFiveStays)
{
    lookup(0, "300");
    EXPECT_EQ(field(11), "0");
    lookup(0, "251");
    EXPECT_EQ(field(11), "5");
}

TEST_F(VendorDisplayTest, TypeSevenShowsZero)
{
    folder.exec("ap.mdb", "update vendors set vend1099type = 7 where vendnumber = 100");
    lookup(0, "100");
    EXPECT_EQ(field(11), "0");
}

TEST_F(VendorDisplayTest, TextTypeShowsZero)
{
    // Only a file can hold text in the number column; the server's column refuses it.
    SQLITE_FILES_ONLY();
    folder.exec("ap.mdb", "update vendors set vend1099type = 'x' where vendnumber = 250");
    lookup(0, "250");
    EXPECT_EQ(field(11), "0");
}

TEST(Form1099Names, ValidCodesHaveNames)
{
    EXPECT_EQ(VendorDisplay::form1099Name(0), "None");
    EXPECT_EQ(VendorDisplay::form1099Name(1), "1099-MISC");
    EXPECT_EQ(VendorDisplay::form1099Name(2), "1099-INT");
    EXPECT_EQ(VendorDisplay::form1099Name(3), "1099-DIV");
    EXPECT_EQ(VendorDisplay::form1099Name(5), "1099-NEC");
    EXPECT_EQ(VendorDisplay::form1099Name(4), "");
    EXPECT_EQ(VendorDisplay::form1099Name(6), "");
}

TEST_F(VendorDisplayTest, NullNameGetsTheErrorReport)
{
    folder.exec("ap.mdb", "update vendors set vendname = null where vendnumber = 250");
    lookup(0, "250");
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_TRUE(module.dialogs.last()->text.contains("Null"))
        << module.dialogs.last()->text.toStdString();
    EXPECT_EQ(module.dialogs.last()->title, "Uh-oh...");
}

TEST_F(VendorDisplayTest, ShowingBWritesTheTotalsOfAIntoBAndShowsBsOwn)
{
    folder.exec(
        "ap.mdb",
        "insert into invoices (vendnumber, invnumber, invdate, invamount, invstatus) values "
        "(100, 'A1', 20261001, 100.25, 1), (250, 'B1', 20260105, 40, 2), "
        "(250, 'B2', 20250105, 2, 1)");
    lookup(0, "100");
    EXPECT_EQ(field(14), "100.25");
    EXPECT_EQ(field(15), "100.25");
    c().cmdnext->click();
    EXPECT_EQ(field(0), "250");
    EXPECT_EQ(field(14), "42.00");
    EXPECT_EQ(field(15), "40.00");
    EXPECT_DOUBLE_EQ(vendorColumn(250, "vendbalcurrent").toDouble(), 100.25);
    EXPECT_DOUBLE_EQ(vendorColumn(250, "vendbal60").toDouble(), 100.25);
}

class EmptyVendorFile : public VendorScreen {
protected:
    void addVendors() override {}
};

TEST_F(EmptyVendorFile, FirstDisplaySaysNoRecordAndTheLookupComesBack)
{
    lookup(0, "0");
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text, "No record to display");
    EXPECT_EQ(module.dialogs.last()->title, "A/P Master");
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_FALSE(c().cmdmodify->isEnabled());
}

} // namespace

namespace {

// Another user edits the vendor about to be shown (the files: the file's write lock; the server:
// the vendor's row) longer than a statement waits: the vendor is shown all the same, and only the
// totals stamp is left out, to be written by the next display.
TEST_F(VendorDisplayTest, AVendorIsShownWhileAnotherUserEditsItAndOnlyTheStampIsLeftOut)
{
    folder.exec("ap.mdb",
                "insert into invoices (vendnumber, invnumber, invdate, invamount, invstatus) "
                "values (250, 'B1', 20260105, 40, 2), (251, 'N1', 20250105, 7, 1)");
    lookup(0, "250");
    Databases other;
    RecordSource holder(other, "holder");
    holder.setUpdateTable("vendors", "vendnumber");
    holder.setDatabaseName("ap.mdb");
    holder.setRecordSource("select * from vendors where vendnumber = 251");
    holder.refresh();
    holder.edit();
    c().cmdnext->click();
    EXPECT_EQ(field(0), "251");
    EXPECT_EQ(field(1), "Northern Lights Printing");
    EXPECT_EQ(module.dialogs.count(), 0);
    holder.cancelUpdate();
    EXPECT_DOUBLE_EQ(vendorColumn(251, "vendbalcurrent").toDouble(), 0.0);
    c().cmdprevious->click();
    EXPECT_EQ(field(0), "250");
    EXPECT_DOUBLE_EQ(vendorColumn(250, "vendbalcurrent").toDouble(), 7.0);
    EXPECT_DOUBLE_EQ(vendorColumn(250, "vendbal60").toDouble(), 0.0);
    c().cmdnext->click();
    EXPECT_DOUBLE_EQ(vendorColumn(251, "vendbalcurrent").toDouble(), 40.0);
    EXPECT_DOUBLE_EQ(vendorColumn(251, "vendbal60").toDouble(), 40.0);
}

// Another program holds the file's write lock longer than a statement waits: the vendor is shown
// all the same, and only the totals stamp (written again by the next display) is left out.
TEST_F(VendorDisplayTest, AVendorIsShownWhileAnotherProgramHoldsTheWriteLock)
{
    SQLITE_FILES_ONLY();
    QProcess holder;
    holder.setWorkingDirectory(folder.path());
    holder.start("sqlite3", {"ap.mdb"});
    ASSERT_TRUE(holder.waitForStarted());
    holder.write("begin immediate;\nupdate vendors set vendfax = 'x' where vendnumber = 300;\n"
                 ".shell touch locked.flag\n.shell sleep 1\ncommit;\n.quit\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.file("locked.flag")); }, 5000));
    lookup(0, "100");
    EXPECT_EQ(field(0), "100");
    EXPECT_EQ(field(1), "Acme Office Supply");
    EXPECT_EQ(module.dialogs.count(), 0);
    ASSERT_TRUE(holder.state() == QProcess::NotRunning || holder.waitForFinished(5000));
}

// The same with the vendor's row held by another user's program on the server (psql, in a
// process of its own, holding the row for a second, longer than a statement waits here).
TEST_F(VendorDisplayTest, AVendorIsShownWhileAnotherProgramHoldsItsRowOnTheServer)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "about the server's row locks; the files' write lock has its own test";
    folder.exec("ap.mdb",
                "insert into invoices (vendnumber, invnumber, invdate, invamount, invstatus) "
                "values (250, 'B1', 20260105, 40, 2)");
    lookup(0, "250");
    QProcess holder;
    holder.setWorkingDirectory(folder.path());
    holder.start("psql", {"-X", "-q", "-v", "ON_ERROR_STOP=1", "-h",
                          qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST"), "-U", "postgres",
                          "-d", folder.serverDatabase()});
    ASSERT_TRUE(holder.waitForStarted());
    holder.write("set search_path to ap_mdb, public;\nbegin;\n"
                 "select 1 from vendors where vendnumber = 251 for update;\n"
                 "\\! touch locked.flag\nselect pg_sleep(1);\ncommit;\n\\q\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.file("locked.flag")); }, 5000));
    c().cmdnext->click();
    EXPECT_EQ(field(0), "251");
    EXPECT_EQ(field(1), "Northern Lights Printing");
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_DOUBLE_EQ(vendorColumn(251, "vendbalcurrent").toDouble(), 0.0); // the stamp left out
    ASSERT_TRUE(holder.state() == QProcess::NotRunning || holder.waitForFinished(5000));
    EXPECT_EQ(holder.exitCode(), 0) << holder.readAllStandardError().toStdString();
    // The next display writes it.
    c().cmdprevious->click();
    c().cmdnext->click();
    EXPECT_DOUBLE_EQ(vendorColumn(251, "vendbalcurrent").toDouble(), 40.0);
}

} // namespace
