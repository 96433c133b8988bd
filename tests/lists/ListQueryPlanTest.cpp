#include "data/Databases.h"
#include "data/PagedStatement.h"
#include "lists/ListQueries.h"
#include "support/DataFolder.h"

#include <QSqlQuery>
#include <QStringList>

#include <gtest/gtest.h>

#include <optional>

namespace {

// How the engine means to run each statement the lists and the totals run, on a file made by
// the module's schema: from an index, and in an index's order where one can give it.
class ListQueryPlanTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;

    QString plan(const QString &sql)
    {
        QSqlQuery q = dbs.select("ap.mdb", "explain query plan " + sql);
        QStringList steps;
        while (q.next())
            steps << q.value(3).toString();
        return steps.join("; ");
    }
    void expectIndexed(const QString &sql, bool sortAllowed = false)
    {
        const QString how = plan(sql);
        EXPECT_TRUE(how.contains("USING INDEX") || how.contains("USING COVERING INDEX"))
            << sql.toStdString() << " -> " << how.toStdString();
        if (!sortAllowed) {
            EXPECT_FALSE(how.contains("TEMP B-TREE"))
                << sql.toStdString() << " -> " << how.toStdString();
        }
    }
    // The statement as a list reads it: a page of rows, and the count of all of them.
    void expectListIndexed(const QString &sql, bool sortAllowed = false)
    {
        expectIndexed(PagedStatement::rows(sql, 128, 64), sortAllowed);
        expectIndexed(PagedStatement::count(sql));
    }
};

TEST_F(ListQueryPlanTest, TheOpenInvoiceAndYearTotalsAreReadFromAnIndexAlone)
{
    const QString open = "select sum(invamount) from invoices where vendnumber = 12 and "
                         "invstatus > 0 and invstatus < 4";
    const QString year = "select sum(invamount) from invoices where vendnumber = 12 and invdate "
                         "between 20260100 and 20261232";
    EXPECT_TRUE(plan(open).contains("USING COVERING INDEX ix_invoices_unpaid_amount"))
        << plan(open).toStdString();
    EXPECT_TRUE(plan(year).contains("USING COVERING INDEX ix_invoices_vendor_date_amount"))
        << plan(year).toStdString();
}

TEST_F(ListQueryPlanTest, TheListsComeInIndexOrder)
{
    for (bool oldToNew : {true, false}) {
        expectListIndexed(ListQueries::unpaid(12, oldToNew));
        expectListIndexed(ListQueries::paid(12, oldToNew));
        expectListIndexed(ListQueries::checks(12, oldToNew));
    }
}

TEST_F(ListQueryPlanTest, TheInvoiceListsAreCountedFromAnIndexAlone)
{
    for (const QString &sql : {ListQueries::unpaid(12, true), ListQueries::paid(12, true)}) {
        const QString how = plan(PagedStatement::count(sql));
        EXPECT_TRUE(how.contains("USING COVERING INDEX")) << how.toStdString();
    }
}

TEST_F(ListQueryPlanTest, EveryInvoiceResortComesInIndexOrder)
{
    int statements = 0;
    for (const char *caption : {"Unpaid Invoices", "Paid Invoices"}) {
        for (int column = 0; column <= 8; ++column) {
            const std::optional<QString> sql = ListQueries::invoiceResort("12", caption, column);
            if (!sql)
                continue;
            expectListIndexed(*sql);
            ++statements;
        }
    }
    EXPECT_EQ(statements, 15);
}

TEST_F(ListQueryPlanTest, CheckResortsFindTheVendorsChecksByIndex)
{
    // A vendor has one check per check run, so sorting them is cheap, whereas an index for
    // each sort would each hold every check of the file.
    for (int column = 0; column <= 6; ++column)
        expectListIndexed(ListQueries::checkResort("12", column), true);
    expectListIndexed(ListQueries::checkResort("12", 1));
}

} // namespace
