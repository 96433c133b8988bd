#include "data/PagedStatement.h"

#include <gtest/gtest.h>

namespace {

TEST(PagedStatementTest, ARangeOfRowsIsTheStatementWithALimit)
{
    EXPECT_EQ(PagedStatement::rows("select * from vendors order by vendname", 128, 64),
              "select * from vendors order by vendname limit 64 offset 128");
    EXPECT_EQ(PagedStatement::rows(" select * from vendors ; ", 0, 1),
              "select * from vendors limit 1 offset 0");
}

TEST(PagedStatementTest, AStatementWithALimitOfItsOwnIsReadThroughASubquery)
{
    EXPECT_EQ(PagedStatement::rows("select * from vendors limit 5", 2, 2),
              "select * from (select * from vendors limit 5) as paged limit 2 offset 2");
}

TEST(PagedStatementTest, TheCountLeavesTheOrderOut)
{
    EXPECT_EQ(PagedStatement::count("select * from invoices where vendnumber = 1 and invstatus > 0 "
                                    "order by invdate desc"),
              "select count(*) from invoices where vendnumber = 1 and invstatus > 0");
    EXPECT_EQ(PagedStatement::count("SELECT vendors.*, invoices.* FROM invoices INNER JOIN "
                                    "vendors ON invoices.vendnumber = vendors.vendnumber"),
              "select count(*) FROM invoices INNER JOIN vendors ON invoices.vendnumber = "
              "vendors.vendnumber");
}

TEST(PagedStatementTest, WordsInQuotesAndSubqueriesAreNotClauses)
{
    EXPECT_EQ(PagedStatement::count("select * from vendors where vendname >= 'order by limit' "
                                    "order by vendname"),
              "select count(*) from vendors where vendname >= 'order by limit'");
    EXPECT_EQ(PagedStatement::count("select * from vendors where vendnumber in (select "
                                    "vendnumber from invoices order by 1 limit 3)"),
              "select count(*) from vendors where vendnumber in (select vendnumber from "
              "invoices order by 1 limit 3)");
    EXPECT_EQ(PagedStatement::rows("select * from vendors where vendname = 'It''s limit'", 0, 1),
              "select * from vendors where vendname = 'It''s limit' limit 1 offset 0");
}

TEST(PagedStatementTest, GroupsAndDistinctRowsAreCountedWhole)
{
    EXPECT_EQ(PagedStatement::count("select distinct vendnumber from invoices"),
              "select count(*) from (select distinct vendnumber from invoices) as counted");
    EXPECT_EQ(PagedStatement::count("select vendnumber from invoices group by vendnumber"),
              "select count(*) from (select vendnumber from invoices group by vendnumber) as counted");
}

} // namespace
