#include "data/Databases.h"
#include "data/Money.h"
#include "support/DataFolder.h"

#include <gtest/gtest.h>

namespace {

class TablesTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;

    void vendor(int number, int type, const char *ytd)
    {
        folder.exec(
            "ap.mdb",
            QStringLiteral("insert into vendors (vendnumber, vendname, vend1099type, vendytd) "
                           "values (%1, 'V%1', %2, %3)")
                .arg(number)
                .arg(type)
                .arg(QString::fromLatin1(ytd)));
    }
    int count(const char *sql) { return dbs.scalar("ap.mdb", QString::fromLatin1(sql)).toInt(); }
};

TEST_F(TablesTest, TypeFourAt600IsCountedForTheMiscForm)
{
    vendor(1, 4, "600");
    EXPECT_EQ(count("SELECT Count(*) FROM vendors WHERE vendytd >= 600 and (vend1099type = 1 or "
                    "vend1099type = 4)"),
              1);
}

TEST_F(TablesTest, NecAtExactly600IsNotCountedWhileMiscAt600Is)
{
    vendor(1, 5, "600");
    vendor(2, 1, "600");
    EXPECT_EQ(count("SELECT Count(*) FROM vendors WHERE vendytd > 600 and vend1099type = 5"), 0);
    EXPECT_EQ(count("SELECT Count(*) FROM vendors WHERE vendytd >= 600 and (vend1099type = 1 or "
                    "vend1099type = 4)"),
              1);
    EXPECT_EQ(count("SELECT Count(*) FROM vendors WHERE vendytd > 0 and vend1099type = 5"), 1);
}

TEST_F(TablesTest, AmountsAddingUpTo600CompareAsExactly600)
{
    folder.exec("ap.mdb", "insert into invoices (vendnumber, invamount, invstatus) values "
                          "(1, 100.1, 1), (1, 200.2, 1), (1, 299.7, 2)");
    const double open =
        Money::fromSum(dbs.scalar("ap.mdb", "select sum(invamount) from invoices where vendnumber "
                                            "= 1 and invstatus > 0 and invstatus < 4"));
    EXPECT_EQ(open, 600.0);
    EXPECT_TRUE(open >= 600);
}

TEST_F(TablesTest, StatusZeroIsNeitherOpenNorPaidButPaidListGoesByCheckNumber)
{
    folder.exec("ap.mdb",
                "insert into invoices (vendnumber, invnumber, invstatus, invchecknumber) values "
                "(1, 'Z', 0, 1001), (1, 'O', 2, 0), (1, 'P', 4, 1002)");
    EXPECT_EQ(count("select count(*) from invoices where vendnumber = 1 and invstatus > 0 and "
                    "invstatus <= 3"),
              1);
    EXPECT_EQ(count("select count(*) from invoices where vendnumber = 1 and invstatus > 3"), 1);
    EXPECT_EQ(count("select count(*) from invoices where vendnumber = 1 and invchecknumber > 0"),
              2);
}

TEST_F(TablesTest, NullSumReadsAsZero)
{
    EXPECT_EQ(Money::fromSum(dbs.scalar(
                  "ap.mdb", "select sum(invamount) from invoices where vendnumber = 99")),
              0.0);
}

TEST(MoneyRounding, FourDecimalsOnEveryValue)
{
    EXPECT_EQ(Money::round4(599.99995), 600.0);
    EXPECT_EQ(Money::round4(0.1 + 0.2), 0.3);
    EXPECT_EQ(Money::round4(-5.00004), -5.0);
    EXPECT_EQ(Money::round4(12.34567), 12.3457);
}

} // namespace
