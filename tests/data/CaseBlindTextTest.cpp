#include "data/Databases.h"
#include "data/RecordSource.h"
#include "support/DataFolder.h"

#include <QProcess>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QStringList>

#include <gtest/gtest.h>

namespace {

// Text compares and sorts without regard to case, for the ASCII letters only.
class CaseBlindTextTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    RecordSource source{dbs, "datavendor"};

    void SetUp() override
    {
        int number = 100;
        for (const char *name : {"Zenith", "bolt works",
                                 "\xc3\xa9"
                                 "clair",
                                 "Benchmark Supply", "Acme",
                                 "\xc3\x89"
                                 "clair"})
            folder.addVendor(++number, QString::fromUtf8(name));
        folder.exec("ap.mdb", "update vendors set vendcontact = 'Mary Jones' where vendnumber = "
                              "101");
        folder.exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invproduct) values "
                              "(101, 'INV-7', 'Paper'), (102, 'inv-8', 'ink')");
    }
    QString firstName(const QString &sql)
    {
        source.setDatabaseName("ap.mdb");
        source.setRecordSource(sql);
        source.refresh();
        return source.hasRecords() ? source.value("vendname").toString() : QString();
    }
    QStringList names(const QString &sql)
    {
        QStringList values;
        QSqlQuery q = dbs.select("ap.mdb", sql);
        while (q.next())
            values << q.value(0).toString();
        return values;
    }
};

TEST_F(CaseBlindTextTest, ALowerCaseNameLookupFindsTheCapitalisedName)
{
    EXPECT_EQ(firstName("select * from vendors where vendname >= 'benchmark' order by vendname"),
              "Benchmark Supply");
    EXPECT_EQ(firstName("select * from vendors where vendname >= 'BOLT' order by vendname"),
              "bolt works");
    EXPECT_EQ(firstName("select * from vendors where vendname >= 'c' order by vendname"), "Zenith");
}

TEST_F(CaseBlindTextTest, NamesSortWithoutRegardToCaseAndAccentedLettersAfterZ)
{
    EXPECT_EQ(names("select vendname from vendors order by vendname"),
              QStringList({"Acme", "Benchmark Supply", "bolt works", "Zenith",
                           QString::fromUtf8("\xc3\x89"
                                             "clair"),
                           QString::fromUtf8("\xc3\xa9"
                                             "clair")}));
}

TEST_F(CaseBlindTextTest, OnlyAsciiLettersAreFolded)
{
    EXPECT_EQ(names("select vendname from vendors where vendname = 'ACME'"), QStringList("Acme"));
    EXPECT_EQ(names(QString::fromUtf8("select vendname from vendors where vendname = "
                                      "'\xc3\xa9"
                                      "CLAIR'")),
              QStringList(QString::fromUtf8("\xc3\xa9"
                                            "clair")));
}

TEST_F(CaseBlindTextTest, ContactInvoiceNumberAndProductLookupsAreCaseBlind)
{
    EXPECT_EQ(firstName("select * from vendors where vendcontact >= 'mary' order by vendcontact"),
              "Zenith");
    EXPECT_EQ(names("select invnumber from invoices where invnumber = 'inv-7'"),
              QStringList("INV-7"));
    EXPECT_EQ(names("select invproduct from invoices where invproduct >= 'P' order by "
                    "invproduct"),
              QStringList("Paper"));
    EXPECT_EQ(names("select invproduct from invoices order by invproduct"),
              QStringList({"ink", "Paper"}));
}

TEST_F(CaseBlindTextTest, ThePlainSqliteProgramComparesTheSameWay)
{
    SQLITE_FILES_ONLY();
    const QString sqlite = QStandardPaths::findExecutable("sqlite3");
    if (sqlite.isEmpty())
        GTEST_SKIP() << "no sqlite3 program";
    dbs.closeAll();
    QProcess program;
    program.start(sqlite, {"-readonly", folder.file("ap.mdb"),
                           "select vendname from vendors where vendname = 'benchmark supply'"});
    ASSERT_TRUE(program.waitForFinished(10000));
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_EQ(QString::fromUtf8(program.readAllStandardOutput()).trimmed(), "Benchmark Supply");
}

} // namespace
