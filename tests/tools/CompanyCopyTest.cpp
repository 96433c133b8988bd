#include "data/CompanyCopy.h"

#include "data/SqliteDialect.h"
#include "support/DataFolder.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// A company's SQLite files in a folder of their own, as an office has them today.
class SqliteCompany {
public:
    SqliteCompany()
    {
        const QString before = QDir::currentPath();
        QDir::setCurrent(m_dir.path());
        for (const char *file : {"ap.mdb", "gl.mdb"})
            SqliteDialect().create(QString::fromLatin1(file));
        QDir::setCurrent(before);
        exec("ap.mdb", "insert into vendors (vendnumber, vendname, vendytd) values "
                       "(1, 'O''Brien & Sons', 600.1234), (2, 'paper co', 0.0001), "
                       "(3, 'Hall; drop table vendors', 1234567.5)");
        exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invdate, invamount) values "
                       "(1, 'A-1', 18991231, 99.99), (1, 'A-2', 20261124, 0.01)");
        exec("ap.mdb", "create table extras (note TEXT, amount REAL)");
        exec("ap.mdb", "insert into extras values ('kept as it is', 2.5)");
        exec("gl.mdb", "insert into gl0 (glacctnum, glacctname) values (5000, 'Office')");
    }
    QString path() const { return m_dir.path(); }
    void exec(const QString &file, const QString &sql)
    {
        {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "sqlite-company");
            db.setDatabaseName(QDir(m_dir.path()).filePath(file));
            ASSERT_TRUE(db.open());
            QSqlQuery q(db);
            ASSERT_TRUE(q.exec(sql)) << sql.toStdString();
        }
        QSqlDatabase::removeDatabase("sqlite-company");
    }

private:
    QTemporaryDir m_dir;
};

class CompanyCopyTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!DataFolder::onPostgres())
            GTEST_SKIP() << "the copy writes into PostgreSQL; it runs in the tests on that engine";
    }
};

TEST_F(CompanyCopyTest, EveryRowAndMoneyTotalArrivesAndIsCompared)
{
    SqliteCompany company;
    DataFolder target(DataFolder::Start::Empty);
    const auto results = CompanyCopy::copy(company.path(), target.path());
    ASSERT_FALSE(results.empty());
    for (const auto &r : results)
        EXPECT_TRUE(r.matches()) << r.file.toStdString() << " " << r.table.toStdString();
    EXPECT_EQ(target.scalar("ap.mdb", "select count(*) from vendors").toInt(), 3);
    EXPECT_EQ(target.scalar("ap.mdb", "select vendytd::text from vendors where vendnumber = 1")
                  .toString(),
              "600.1234");
    EXPECT_EQ(target.scalar("ap.mdb", "select vendytd::text from vendors where vendnumber = 2")
                  .toString(),
              "0.0001");
    EXPECT_EQ(
        target.scalar("ap.mdb", "select vendname from vendors where vendnumber = 3").toString(),
        "Hall; drop table vendors");
    EXPECT_EQ(target
                  .scalar("ap.mdb", "select vendnumber from vendors where vendname = "
                                    "'O''BRIEN & SONS'")
                  .toInt(),
              1);
    EXPECT_EQ(target.scalar("ap.mdb", "select invdate from invoices where invnumber = 'A-1'")
                  .toLongLong(),
              18991231);
    EXPECT_EQ(target.scalar("ap.mdb", "select note from extras").toString(), "kept as it is");
    EXPECT_EQ(target.scalar("gl.mdb", "select glacctname from gl0").toString(), "Office");
    bool sawVendors = false;
    for (const auto &r : results) {
        if (r.table != "vendors")
            continue;
        sawVendors = true;
        EXPECT_EQ(r.sourceRows, 3);
        EXPECT_EQ(r.targetRows, 3);
        for (const auto &m : r.money) {
            if (m.column == "vendytd") {
                EXPECT_DOUBLE_EQ(m.source, 1235167.6235);
                EXPECT_DOUBLE_EQ(m.target, 1235167.6235);
            }
        }
    }
    EXPECT_TRUE(sawVendors);
}

TEST_F(CompanyCopyTest, TheTotalsOfManyLargeAmountsAreAddedUpExactly)
{
    // Added up as floating point, a thousand amounts of this size drift by more than a
    // ten-thousandth, and a sound copy would be reported as differing.
    SqliteCompany company;
    company.exec("ap.mdb", "with recursive n(i) as (select 1 union all select i + 1 from n "
                           "where i < 1000) insert into invoices (vendnumber, invnumber, "
                           "invamount) select 2, 'L' || i, 999999999.9999 from n");
    DataFolder target(DataFolder::Start::Empty);
    const auto results = CompanyCopy::copy(company.path(), target.path());
    bool sawInvoices = false;
    for (const auto &r : results) {
        EXPECT_TRUE(r.matches()) << r.file.toStdString() << " " << r.table.toStdString();
        if (r.table != "invoices")
            continue;
        for (const auto &m : r.money) {
            if (m.column != "invamount")
                continue;
            sawInvoices = true;
            EXPECT_NEAR(m.source, 1000000000099.9, 0.0002);
            EXPECT_NEAR(m.target, 1000000000099.9, 0.0002);
        }
    }
    EXPECT_TRUE(sawInvoices);
}

TEST_F(CompanyCopyTest, ADatabaseThatAlreadyHoldsTheCompanyIsRefusedAndLeftAsItIs)
{
    SqliteCompany company;
    DataFolder target; // already holds ap.mdb and gl.mdb
    target.addVendor(77, "Kept");
    try {
        CompanyCopy::copy(company.path(), target.path());
        FAIL() << "no error";
    } catch (const CompanyCopy::Error &error) {
        EXPECT_TRUE(QString::fromStdString(error.what())
                        .contains("a company is copied only into "
                                  "an empty database"))
            << error.what();
    }
    EXPECT_EQ(target.scalar("ap.mdb", "select count(*) from vendors").toInt(), 1);
}

TEST_F(CompanyCopyTest, AFolderWithoutDatabaseFilesIsRefused)
{
    QTemporaryDir empty;
    DataFolder target(DataFolder::Start::Empty);
    try {
        CompanyCopy::copy(empty.path(), target.path());
        FAIL() << "no error";
    } catch (const CompanyCopy::Error &error) {
        EXPECT_TRUE(QString::fromStdString(error.what()).contains("holds no database files"));
    }
}

TEST(CompanyCopy, ATargetWithoutServerSettingsIsRefused)
{
    SqliteCompany company;
    QTemporaryDir plainFolder;
    try {
        CompanyCopy::copy(company.path(), plainFolder.path());
        FAIL() << "no error";
    } catch (const CompanyCopy::Error &error) {
        EXPECT_TRUE(QString::fromStdString(error.what()).contains("has no database.ini"));
    }
}

} // namespace
