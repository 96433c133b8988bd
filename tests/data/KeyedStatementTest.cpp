#include "data/KeyedStatement.h"

#include <gtest/gtest.h>

namespace {

TEST(KeyedStatementTest, AnOrderOfPlainColumnsInOneDirectionIsKnown)
{
    const auto order = KeyedStatement::orderOf(
        "select * from invoices where vendnumber = 1 order by invoices.invnumber, invdate");
    ASSERT_TRUE(order);
    EXPECT_EQ(order->columns, QStringList({"invoices.invnumber", "invdate"}));
    EXPECT_FALSE(order->descending);
    EXPECT_TRUE(KeyedStatement::orderOf("select * from checks order by chkdate DESC")->descending);
}

TEST(KeyedStatementTest, OtherOrdersAreNot)
{
    EXPECT_FALSE(KeyedStatement::orderOf("select * from vendors"));
    EXPECT_FALSE(KeyedStatement::orderOf("select * from vendors order by vendname, vendcity desc"));
    EXPECT_FALSE(KeyedStatement::orderOf("select * from vendors order by upper(vendname)"));
    EXPECT_FALSE(KeyedStatement::orderOf("select * from vendors order by vendname limit 5"));
    EXPECT_FALSE(KeyedStatement::orderOf("select distinct vendname from vendors order by 1"));
}

TEST(KeyedStatementTest, OnwardTheConditionJoinsTheStatementsOwn)
{
    const QString sql = "select * from vendors where vendname >= 'M' order by vendname";
    const auto order = KeyedStatement::orderOf(sql);
    ASSERT_TRUE(order);
    EXPECT_EQ(KeyedStatement::from(sql, *order, true),
              "select * from vendors where vendname >= ? and (vendname >= 'M') order by vendname");
    EXPECT_EQ(KeyedStatement::from(sql, *order, false),
              "select * from vendors where vendname <= ? and (vendname >= 'M') order by vendname "
              "desc");
}

TEST(KeyedStatementTest, SeveralColumnsCompareAsARowAndADescendingOrderTurnsRound)
{
    const QString sql = "select * from invoices order by invnumber desc, invdate desc";
    const auto order = KeyedStatement::orderOf(sql);
    ASSERT_TRUE(order);
    EXPECT_EQ(KeyedStatement::from(sql, *order, true),
              "select * from invoices where (invnumber, invdate) <= (?, ?) order by invnumber "
              "desc, invdate desc");
    EXPECT_EQ(KeyedStatement::from(sql, *order, false),
              "select * from invoices where (invnumber, invdate) >= (?, ?) order by invnumber, "
              "invdate");
}

} // namespace
