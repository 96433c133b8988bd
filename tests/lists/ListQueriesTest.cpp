#include "lists/ListQueries.h"

#include <gtest/gtest.h>

TEST(ListQueries, UnpaidInBothOrders)
{
    EXPECT_EQ(ListQueries::unpaid(12, true), "select * from invoices where vendnumber = 12 and "
                                             "invstatus > 0 and invstatus <= 3 order by invdate");
    EXPECT_EQ(ListQueries::unpaid(12, false),
              "select * from invoices where vendnumber = 12 and "
              "invstatus > 0 and invstatus <= 3 order by invdate desc");
}

TEST(ListQueries, PaidInBothOrders)
{
    EXPECT_EQ(ListQueries::paid(7, true),
              "select * from invoices where vendnumber = 7 and invchecknumber > 0 "
              "order by invdate");
    EXPECT_EQ(ListQueries::paid(7, false), "select * from invoices where vendnumber = 7 and "
                                           "invchecknumber > 0 order by invdate desc");
}

TEST(ListQueries, AscendingChecksHaveNoOrderClause)
{
    EXPECT_EQ(ListQueries::checks(3, true), "select * from checks where chkpayeenum = 3");
    EXPECT_EQ(ListQueries::checks(3, false),
              "select * from checks where chkpayeenum = 3 order by chkdate desc");
}

TEST(ListQueries, InvoiceResortFilterFollowsTheCaption)
{
    EXPECT_EQ(*ListQueries::invoiceResort("12", "Paid Invoices", 1),
              "select * from invoices where vendnumber = 12 and invstatus > 0 and invstatus > 3 "
              "order by invdate");
    EXPECT_EQ(*ListQueries::invoiceResort("12", "Unpaid Invoices", 1),
              "select * from invoices where vendnumber = 12 and invstatus > 0 and invstatus < 4 "
              "order by invdate");
    // Any other caption (no list yet) filters like the unpaid list, and sorts every column.
    EXPECT_EQ(*ListQueries::invoiceResort("12", "", 6),
              "select * from invoices where vendnumber = 12 and invstatus > 0 and invstatus < 4 "
              "order by invcheckdate");
}

TEST(ListQueries, CheckColumnsOfTheUnpaidListCannotBeSorted)
{
    for (int k : {5, 6, 7})
        EXPECT_FALSE(ListQueries::invoiceResort("12", "Unpaid Invoices", k).has_value()) << k;
    for (int k : {4, 8, 9})
        EXPECT_TRUE(ListQueries::invoiceResort("12", "Unpaid Invoices", k).has_value()) << k;
}

TEST(ListQueries, ColumnsBeyondTheClausesGetTheFilterAlone)
{
    EXPECT_EQ(*ListQueries::invoiceResort("12", "Paid Invoices", 9),
              "select * from invoices where vendnumber = 12 and invstatus > 0 and invstatus > 3");
    EXPECT_EQ(*ListQueries::invoiceResort("12", "Paid Invoices", 42),
              "select * from invoices where vendnumber = 12 and invstatus > 0 and invstatus > 3");
    EXPECT_EQ(ListQueries::checkResort("12", 7), "select * from checks where chkpayeenum = 12");
    EXPECT_EQ(ListQueries::checkResort("12", 8), "select * from checks where chkpayeenum = 12");
}

TEST(ListQueries, CriterionQuotesTheDateOnlyWhenItIsEmpty)
{
    EXPECT_EQ(ListQueries::invoiceCriterion("A-1", "20260301", "0"),
              "invnumber = 'A-1' and invdate = 20260301 and invchecknumber = 0");
    EXPECT_EQ(ListQueries::invoiceCriterion("A-1", "", "501"),
              "invnumber = 'A-1' and invdate = '' and invchecknumber = 501");
}

TEST(ListQueries, CriterionDoublesApostrophesInTheInvoiceNumber)
{
    EXPECT_EQ(ListQueries::invoiceCriterion("O'Hara", "20260301", "0"),
              "invnumber = 'O''Hara' and invdate = 20260301 and invchecknumber = 0");
}
