// The import into a data folder set to the PostgreSQL engine: each Access file becomes the
// schema of its name, the module's tables get the server's types of the module, and everything
// is written in one transaction, so that a failure or a refusal leaves the database as it was.
// These run in the tests on that engine and are skipped on the SQLite files.
#include "ImportFixture.h"
#include "StreamBuilder.h"

#include "support/DataFolder.h"
#include "support/SharedTestData.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {
using P = ReaderProtocol::AccessType;

class ServerImport : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!DataFolder::onPostgres())
            GTEST_SKIP() << "the import into PostgreSQL runs in the tests on that engine";
    }
    // The type the server gave a column of a schema's table.
    QString typeOf(DataFolder &target, const QString &schema, const QString &table,
                   const QString &column)
    {
        return target
            .scalar("",
                    QStringLiteral("select case when data_type = 'USER-DEFINED' then udt_name "
                                   "when data_type = 'numeric' and numeric_precision is not null "
                                   "then format('numeric(%s,%s)', numeric_precision, "
                                   "numeric_scale) else data_type end from "
                                   "information_schema.columns where table_schema = '%1' and "
                                   "table_name = '%2' and column_name = '%3'")
                        .arg(schema, table, column))
            .toString();
    }
    QStringList schemas(DataFolder &target)
    {
        QStringList names;
        const QString list =
            target
                .scalar("", "select coalesce(string_agg(nspname, ',' order by nspname), '') from "
                            "pg_namespace where nspname like '%\\_mdb'")
                .toString();
        if (!list.isEmpty())
            names = list.split(',');
        return names;
    }
    ImportFixture fixture;
};

// ap.mdb with the module's vendors and invoices (under names of another case) and a table of
// its own.
StreamBuilder apFile()
{
    StreamBuilder s;
    s.table("VENDORS", 3,
            {{"VendNumber", P::LongInteger},
             {"VENDNAME", P::Text},
             {"vendytd", P::Currency},
             {"Region", P::Text}})
        .row()
        .integer(1001)
        .str("Acme Supply")
        .money(12345678)
        .str("North")
        .row()
        .integer(1002)
        .str("Bolt & Nut")
        .money(-5000)
        .null()
        .row()
        .integer(1003)
        .str("O'Hara")
        .money(1)
        .str("")
        .end(3);
    s.table("Invoices", 2,
            {{"vendnumber", P::LongInteger},
             {"invnumber", P::Text},
             {"InvDate", P::DateTime},
             {"invamount", P::Double}})
        .row()
        .integer(1001)
        .str("A-1")
        .date(45292.0)
        .real(12.34567)
        .row()
        .integer(1002)
        .str("B-1")
        .date(-1.0)
        .real(0.5)
        .end(2);
    s.table("Old Notes", 2, {{"Note", P::Text}, {"Paid", P::Currency}, {"Seen", P::DateTime}})
        .row()
        .str("kept as it is")
        .money(25000)
        .date(45292.5)
        .row()
        .null()
        .null()
        .null()
        .end(2);
    return s;
}

QString sample(const char *name)
{
    return SharedTestData::find(QStringLiteral("access/") + QLatin1String(name));
}
} // namespace

TEST_F(ServerImport, EachFileBecomesTheSchemaOfItsNameWithTheModulesTypes)
{
    DataFolder target(DataFolder::Start::Empty);
    fixture.useDataFolder(target.path());
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(schemas(target).join(","), "ap_mdb");
    EXPECT_EQ(typeOf(target, "ap_mdb", "vendors", "vendname"), "citext");
    EXPECT_EQ(typeOf(target, "ap_mdb", "vendors", "vendytd"), "numeric(19,4)");
    EXPECT_EQ(typeOf(target, "ap_mdb", "vendors", "vendnumber"), "bigint");
    EXPECT_EQ(typeOf(target, "ap_mdb", "invoices", "invdate"), "bigint");
    // Columns and tables the module does not know get the type nearest to the Access one.
    EXPECT_EQ(typeOf(target, "ap_mdb", "vendors", "region"), "citext");
    EXPECT_EQ(typeOf(target, "ap_mdb", "old notes", "note"), "citext");
    EXPECT_EQ(typeOf(target, "ap_mdb", "old notes", "paid"), "numeric(19,4)");
    EXPECT_EQ(typeOf(target, "ap_mdb", "old notes", "seen"), "timestamp without time zone");
    // The module's indexes are there, made after the rows.
    EXPECT_EQ(target
                  .scalar("", "select count(*) from pg_indexes where schemaname = 'ap_mdb' "
                              "and indexname = 'ix_vendors_number'")
                  .toInt(),
              1);
}

TEST_F(ServerImport, RowsAndMoneyTotalsAreEqualOnBothSides)
{
    DataFolder target(DataFolder::Start::Empty);
    fixture.useDataFolder(target.path());
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(target.scalar("ap.mdb", "select count(*) from vendors").toInt(), 3);
    EXPECT_EQ(target.scalar("ap.mdb", "select count(*) from invoices").toInt(), 2);
    EXPECT_EQ(target.scalar("ap.mdb", "select count(*) from \"old notes\"").toInt(), 2);
    EXPECT_EQ(target.scalar("ap.mdb", "select sum(vendytd)::text from vendors").toString(),
              "1234.0679");
    EXPECT_EQ(target.scalar("ap.mdb", "select vendytd::text from vendors where vendnumber = 1003")
                  .toString(),
              "0.0001");
    EXPECT_EQ(target.scalar("ap.mdb", "select invdate from invoices where invnumber = 'A-1'")
                  .toLongLong(),
              20240101);
    EXPECT_EQ(target.scalar("ap.mdb", "select invdate from invoices where invnumber = 'B-1'")
                  .toLongLong(),
              18991229);
    // Text compares without regard to case, as in the module's files.
    EXPECT_EQ(target
                  .scalar("ap.mdb", "select vendnumber from vendors where vendname = "
                                    "'o''hara'")
                  .toInt(),
              1003);
    // An empty text stays apart from a missing one.
    EXPECT_EQ(target.scalar("ap.mdb", "select count(*) from vendors where region = ''").toInt(), 1);
    EXPECT_EQ(target.scalar("ap.mdb", "select count(*) from vendors where region is null").toInt(),
              1);
    EXPECT_EQ(target
                  .scalar("ap.mdb", "select seen::text from \"old notes\" where note is not "
                                    "null")
                  .toString(),
              "2024-01-01 12:00:00");
    const FileSummary &file = fixture.summary().files.at(0);
    ASSERT_EQ(file.tables.size(), 3u);
    EXPECT_EQ(file.tables[0].rowsRead, 3);
    EXPECT_EQ(file.tables[0].rowsWritten, 3);
    ASSERT_EQ(file.tables[0].totals.size(), 1u);
    EXPECT_EQ(file.tables[0].totals[0].read, 12340679);
    EXPECT_EQ(file.tables[0].totals[0].written, 12340679);
    EXPECT_TRUE(QFile::exists(target.file("import.log")));
}

TEST_F(ServerImport, TheJetThreeSampleArrivesWhole)
{
    const QString path = sample("nwind.mdb");
    FAIL_WITHOUT_SHARED_FILE(path, QStringLiteral("access/nwind.mdb"));
    DataFolder target(DataFolder::Start::Empty);
    fixture.useDataFolder(target.path());
    fixture.copyIntoSource(path, "nwind.mdb");
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(target.scalar("nwind.mdb", "select count(*) from \"order details\"").toInt(), 2155);
    EXPECT_EQ(target.scalar("nwind.mdb", "select count(*) from orders").toInt(), 830);
    EXPECT_EQ(target.scalar("nwind.mdb", "select count(*) from \"umsätze\"").toInt() > 0, true);
    EXPECT_EQ(target.scalar("nwind.mdb", "select sum(freight)::text from orders").toString(),
              "64942.6900");
    EXPECT_EQ(target.scalar("nwind.mdb", "select sum(unitprice)::text from products").toString(),
              "2222.7100");
    for (const TableSummary &t : fixture.summary().files.at(0).tables) {
        EXPECT_EQ(t.rowsRead, t.rowsWritten) << t.name.toStdString();
        for (const MoneyTotal &m : t.totals)
            EXPECT_EQ(m.read, m.written) << t.name.toStdString() << " " << m.column.toStdString();
    }
}

TEST_F(ServerImport, AFailureHalfWayLeavesNoSchemaBehind)
{
    DataFolder target(DataFolder::Start::Empty);
    fixture.useDataFolder(target.path());
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.writeSource("gl.mdb", jetHeader());
    // ap.mdb passes whole; gl.mdb stops after a table and a row of the next.
    const QByteArray ap = apFile().endOfFile().bytes();
    StreamBuilder gl;
    gl.table("gl0", 1, {{"glacctnum", P::LongInteger}}).row().integer(5000).end(1);
    gl.table("extra", 2, {{"n", P::LongInteger}}).row().integer(1);
    QFile apStream(fixture.sourceFile("ap.stream"));
    ASSERT_TRUE(apStream.open(QIODevice::WriteOnly));
    apStream.write(ap);
    apStream.close();
    QFile glStream(fixture.sourceFile("gl.stream"));
    ASSERT_TRUE(glStream.open(QIODevice::WriteOnly));
    glStream.write(gl.bytes());
    glStream.close();
    fixture.useReaderScript(
        QStringLiteral("case \"$1\" in *ap.mdb) cat '%1';; *) cat '%2'; "
                       "exit 3;; esac")
            .arg(fixture.sourceFile("ap.stream"), fixture.sourceFile("gl.stream")));
    const QString message = fixture.run(20);
    EXPECT_TRUE(message.contains("The import stopped at '" + fixture.sourceFile("gl.mdb") + "'"))
        << message.toStdString();
    EXPECT_TRUE(message.contains("Nothing was written to the database " + target.serverDatabase()))
        << message.toStdString();
    EXPECT_EQ(schemas(target).join(","), "");
    EXPECT_FALSE(QFile::exists(target.file("import.log")));
}

TEST_F(ServerImport, AValueThatCannotBeKeptLeavesNoSchemaBehind)
{
    DataFolder target(DataFolder::Start::Empty);
    fixture.useDataFolder(target.path());
    fixture.writeSource("ap.mdb", jetHeader());
    StreamBuilder s;
    s.table("vendors", 2, {{"vendnumber", P::LongInteger}, {"vendytd", P::Text}})
        .row()
        .integer(1)
        .str("10.5")
        .row()
        .integer(2)
        .str("ten")
        .end(2)
        .endOfFile();
    fixture.useStream(s.bytes());
    const QString message = fixture.run(20);
    EXPECT_TRUE(message.contains("table 'vendors', column 'vendytd', row 2 (vendnumber '2')"))
        << message.toStdString();
    EXPECT_EQ(schemas(target).join(","), "");
}

TEST_F(ServerImport, ADatabaseThatHoldsOneOfTheFilesIsRefusedAndLeftAsItIs)
{
    DataFolder target; // holds ap.mdb, gl.mdb, config.mdb and user.mdb
    target.addVendor(77, "Kept");
    fixture.useDataFolder(target.path());
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.writeSource("emp.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    const QString message = fixture.run(20);
    EXPECT_TRUE(message.startsWith("The database " + target.serverDatabase() + " on " +
                                   qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST") +
                                   " already holds a company (ap.mdb (schema ap_mdb))."))
        << message.toStdString();
    EXPECT_TRUE(message.contains("nothing was changed")) << message.toStdString();
    EXPECT_EQ(target.scalar("ap.mdb", "select count(*) from vendors").toInt(), 1);
    EXPECT_EQ(target.scalar("ap.mdb", "select vendname from vendors").toString(), "Kept");
    EXPECT_EQ(schemas(target).join(","), "ap_mdb,config_mdb,gl_mdb,user_mdb");
}

TEST_F(ServerImport, ADatabaseHoldingOtherFilesOnlyIsUsed)
{
    DataFolder target; // holds ap.mdb, gl.mdb, config.mdb and user.mdb
    fixture.useDataFolder(target.path());
    fixture.writeSource("emp.mdb", jetHeader());
    StreamBuilder s;
    s.table("EmpInfo", 1, {{"empid", P::LongInteger}}).row().integer(4).end(1).endOfFile();
    fixture.useStream(s.bytes());
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(schemas(target).join(","), "ap_mdb,config_mdb,emp_mdb,gl_mdb,user_mdb");
    EXPECT_EQ(target.scalar("emp.mdb", "select count(*) from empinfo").toInt(), 1);
}

TEST_F(ServerImport, MoneyTotalsOfLargeAmountsAreAddedUpExactly)
{
    DataFolder target(DataFolder::Start::Empty);
    fixture.useDataFolder(target.path());
    fixture.writeSource("ap.mdb", jetHeader());
    StreamBuilder s;
    s.table("Ledger", 100, {{"Amount", P::Currency}});
    for (int i = 0; i < 100; ++i)
        s.row().money(10000000000001); // 1,000,000,000.0001
    fixture.useStream(s.end(100).endOfFile().bytes());
    ASSERT_EQ(fixture.run(), QString());
    const TableSummary &ledger = fixture.summary().files.at(0).tables.at(0);
    ASSERT_EQ(ledger.totals.size(), 1u);
    EXPECT_EQ(ledger.totals[0].read, 1000000000000100);
    EXPECT_EQ(ledger.totals[0].written, 1000000000000100);
    EXPECT_EQ(target.scalar("ap.mdb", "select sum(amount)::text from ledger").toString(),
              "100000000000.0100");
}

namespace {

// The import log lies in a folder that may hold other files: a log that is a link to a
// database, or anything but text, is left as it is and the summary says why; a text log keeps
// its earlier runs.
TEST_F(ServerImport, TheLogIsNeverWrittenOverADatabaseAndKeepsEarlierRuns)
{
    DataFolder target(DataFolder::Start::Empty);
    fixture.useDataFolder(target.path());
    fixture.writeSource("ap.mdb", jetHeader());
    fixture.useStream(apFile().endOfFile().bytes());
    const QByteArray database = QByteArray("SQLite format 3", 16) + QByteArray(84, '\1');
    target.writeFile("books.sqlite", database);
    ASSERT_TRUE(QFile::link(target.file("books.sqlite"), target.file("import.log")));
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(fixture.summary().logProblem,
              "The output file " + target.file("import.log") + " (a link to " +
                  QFileInfo(target.file("books.sqlite")).canonicalFilePath() +
                  ") is a database file of the company (its first bytes say so); no output is "
                  "ever written over it. Choose another file name.");
    EXPECT_EQ(target.readFile("books.sqlite").toLatin1(), database);
    EXPECT_TRUE(QFileInfo(target.file("import.log")).isSymLink());

    DataFolder again(DataFolder::Start::Empty);
    fixture.useDataFolder(again.path());
    again.writeFile("import.log", "2025-12-01T09:00:00 the first import\n");
    ASSERT_EQ(fixture.run(), QString());
    EXPECT_EQ(fixture.summary().logProblem, QString());
    const QString log = again.readFile("import.log");
    EXPECT_TRUE(log.startsWith("2025-12-01T09:00:00 the first import\n")) << log.toStdString();
    EXPECT_TRUE(log.contains("ap.mdb")) << log.toStdString();
}

} // namespace
