#include "data/Databases.h"
#include "data/PagedStatement.h"
#include "lists/ListQueries.h"
#include "support/DataFolder.h"

#include <QRegularExpression>
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

    // The engine's plan, its steps joined by "; ". The server is told to avoid reading a
    // whole table and sorting wherever an index can serve, so that the plan shows whether one
    // can even on a table of a few rows.
    QString plan(const QString &sql)
    {
        if (DataFolder::onPostgres()) {
            dbs.select("ap.mdb", "set enable_seqscan = off").finish();
            dbs.select("ap.mdb", "set enable_sort = off").finish();
            dbs.select("ap.mdb", "set enable_incremental_sort = off").finish();
        }
        QSqlQuery q = dbs.select("ap.mdb", (DataFolder::onPostgres() ? "explain " :
                                                                       "explain query plan ") +
                                               sql);
        QStringList steps;
        while (q.next())
            steps << q.value(DataFolder::onPostgres() ? 0 : 3).toString().trimmed();
        return steps.join("; ");
    }
    static bool readsAnIndex(const QString &how)
    {
        return how.contains("USING INDEX") || how.contains("USING COVERING INDEX") ||
               how.contains(QRegularExpression("Index (Only )?Scan"));
    }
    static bool sorts(const QString &how)
    {
        return how.contains("TEMP B-TREE") || how.contains(QRegularExpression("(^|; |-> )Sort"));
    }
    // Read from the index alone, without the table's rows. The server reads a table's rows
    // beside the index until the table was vacuumed, and on a table of a few rows any index
    // costs the same to it: there, an index read is what can be shown.
    static bool fromIndexAlone(const QString &how, const QString &index)
    {
        if (DataFolder::onPostgres())
            return readsAnIndex(how) && !how.contains("Seq Scan");
        return how.contains("USING COVERING INDEX " + index);
    }
    void expectIndexed(const QString &sql, bool sortAllowed = false)
    {
        const QString how = plan(sql);
        EXPECT_TRUE(readsAnIndex(how)) << sql.toStdString() << " -> " << how.toStdString();
        if (!sortAllowed) {
            EXPECT_FALSE(sorts(how)) << sql.toStdString() << " -> " << how.toStdString();
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
    EXPECT_TRUE(fromIndexAlone(plan(open), "ix_invoices_unpaid_amount"))
        << plan(open).toStdString();
    EXPECT_TRUE(fromIndexAlone(plan(year), "ix_invoices_vendor_date_amount"))
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
        EXPECT_TRUE(fromIndexAlone(how, "")) << how.toStdString();
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
