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

// The server's statements say where nulls go (where the files put them); the reads on by key
// say it the same way each direction, so that the server reads them by the order's index.
TEST(KeyedStatementTest, NullsWhereTheFilesPutThemAreSaidAgainInEitherDirection)
{
    const QString up = "select * from vendors order by vendname nulls first";
    const auto order = KeyedStatement::orderOf(up);
    ASSERT_TRUE(order);
    EXPECT_EQ(order->columns, QStringList{"vendname"});
    EXPECT_EQ(KeyedStatement::from(up, *order, true),
              "select * from vendors where vendname >= ? order by vendname nulls first");
    EXPECT_EQ(KeyedStatement::from(up, *order, false),
              "select * from vendors where vendname <= ? order by vendname desc nulls last");
    const QString down = "select * from checks order by chkdate desc nulls last";
    const auto descending = KeyedStatement::orderOf(down);
    ASSERT_TRUE(descending);
    EXPECT_EQ(KeyedStatement::from(down, *descending, true),
              "select * from checks where chkdate <= ? order by chkdate desc nulls last");
    EXPECT_EQ(KeyedStatement::from(down, *descending, false),
              "select * from checks where chkdate >= ? order by chkdate nulls first");
}

TEST(KeyedStatementTest, NullsElsewhereThanOnTheFilesMakeNoPlainOrder)
{
    EXPECT_FALSE(KeyedStatement::orderOf("select * from vendors order by vendname nulls last"));
    EXPECT_FALSE(KeyedStatement::orderOf("select * from checks order by chkdate desc nulls first"));
    EXPECT_TRUE(KeyedStatement::orderOf("select * from vendors order by vendname"));
}

} // namespace
