#include "data/SqliteDialect.h"

#include <gtest/gtest.h>

TEST(CriterionDialect, EmptyTextComparedWithADateColumnFindsRowsWithoutADate)
{
    SqliteDialect d;
    EXPECT_EQ(d.mapCriterion("invnumber = 'A' and invdate = '' and invchecknumber = 0"),
              "invnumber = 'A' and coalesce(invdate, 0) = 0 and invchecknumber = 0");
    EXPECT_EQ(d.mapCriterion("chkdate=''"), "coalesce(chkdate, 0) = 0");
}

TEST(CriterionDialect, QuotedTextAndOtherColumnsAreLeftAlone)
{
    SqliteDialect d;
    EXPECT_EQ(d.mapCriterion("invnumber = 'invdate = '''"), "invnumber = 'invdate = '''");
    EXPECT_EQ(d.mapCriterion("invnumber = '' and invdate = 20260101"),
              "invnumber = '' and invdate = 20260101");
    EXPECT_EQ(d.mapCriterion("invnumber = 'O''Hara' and invdate = ''"),
              "invnumber = 'O''Hara' and coalesce(invdate, 0) = 0");
}

TEST(CriterionDialect, WholeStatementsKeepTheirEmptyTextComparisons)
{
    SqliteDialect d;
    EXPECT_EQ(d.map("update invoices set invdate = '' where invnumber = 'A'"),
              "update invoices set invdate = '' where invnumber = 'A'");
}

TEST(CriterionDialect, CriterionsGetTheStatementMappingsToo)
{
    SqliteDialect d;
    EXPECT_EQ(d.mapCriterion("ucase$(vendname) = 'X'"), "upper(vendname) = 'X'");
}
