#include "lists/ListsFixture.h"

#include "data/RecordSource.h"
#include "lists/InvoiceLists.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

namespace {

class ResortTest : public ListsFixture {
protected:
    void SetUp() override
    {
        ListsFixture::SetUp();
        addInvoice({.number = "B", .date = 20260301, .product = "Toner", .amount = 5, .status = 1});
        addInvoice(
            {.number = "A", .date = 20260201, .product = "Chairs", .amount = 70, .status = 2});
        addInvoice(
            {.number = "C", .date = 20260101, .product = "Paper", .amount = 30, .status = 3});
        addInvoice({.number = "P2", .date = 20251101, .amount = 20, .status = 4, .check = 502});
        addInvoice({.number = "P1", .date = 20251201, .amount = 80, .status = 5, .check = 501});
        setVendor("12");
    }
    QTableView *grid1() { return controls().grid1; }
    QTableView *grid2() { return controls().grid2; }
    QString invoiceStatement() { return window().datainvoice().recordSource(); }
    // The status line while the re-sort runs (read when it yields to events) and after it.
    std::pair<QString, QString> statusDuring(const std::function<void()> &work)
    {
        QString during = "(never yielded)";
        QTimer timer; // gone with this scope, so it never fires after the work
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, [&] { during = window().status(); });
        timer.start(0);
        work();
        return {during, window().status()};
    }
};

TEST_F(ResortTest, HeadingClickOnTheInvoiceGridRunsAndReportsTheResort)
{
    click(controls().cmdunpaid);
    const auto [during, after] = statusDuring([&] { clickHeader(grid1(), 3); });
    EXPECT_EQ(during, "Re-sorting by Amount");
    EXPECT_EQ(after, "Sorted by Amount");
    EXPECT_EQ(invoiceStatement(), "select * from invoices where vendnumber = 12 and invstatus > 0 "
                                  "and invstatus < 4 order by invamount");
    EXPECT_EQ(window().lists().cursor().recordSource(), invoiceStatement());
    EXPECT_EQ(window().lists().query(), invoiceStatement());
}

TEST_F(ResortTest, ResortIsAlwaysAscendingWhateverTheOrderOption)
{
    newToOld();
    click(controls().cmdunpaid);
    ASSERT_EQ(column(grid1(), 0), QStringList({"B", "A", "C"}));
    clickHeader(grid1(), 1);
    EXPECT_EQ(column(grid1(), 0), QStringList({"C", "A", "B"}));
    clickHeader(grid1(), 3);
    EXPECT_EQ(column(grid1(), 0), QStringList({"B", "C", "A"}));
    clickHeader(grid1(), 2);
    EXPECT_EQ(column(grid1(), 0), QStringList({"A", "C", "B"}));
}

TEST_F(ResortTest, ClickingTheCheckDateHeadingOfTheUnpaidListLeavesTheOrderAndClearsTheStatus)
{
    click(controls().cmdunpaid);
    const QString before = invoiceStatement();
    const QStringList rows = column(grid1(), 0);
    window().setStatus("something");
    clickHeader(grid1(), 6);
    EXPECT_EQ(window().status(), "");
    EXPECT_EQ(invoiceStatement(), before);
    EXPECT_EQ(window().lists().cursor().recordSource(), before);
    EXPECT_EQ(column(grid1(), 0), rows);
}

TEST_F(ResortTest, CheckColumnsOfTheUnpaidListAreNotSortable)
{
    click(controls().cmdunpaid);
    const QString before = invoiceStatement();
    for (int k : {5, 6, 7}) {
        const auto [during, after] = statusDuring([&] { window().lists().resortInvoices(k); });
        EXPECT_EQ(after, "") << k;
        EXPECT_EQ(invoiceStatement(), before) << k;
    }
}

TEST_F(ResortTest, ResortingThePaidListFiltersByStatusNotByCheckNumber)
{
    addInvoice({.number = "CHECKED-BUT-OPEN", .date = 20260105, .status = 3, .check = 700});
    addInvoice({.number = "PAID-NO-CHECK", .date = 20260106, .status = 6, .check = 0});
    click(controls().cmdpaid);
    QStringList listed = column(grid1(), 0);
    EXPECT_TRUE(listed.contains("CHECKED-BUT-OPEN"));
    EXPECT_FALSE(listed.contains("PAID-NO-CHECK"));
    clickHeader(grid1(), 0);
    listed = column(grid1(), 0);
    EXPECT_EQ(listed, QStringList({"P1", "P2", "PAID-NO-CHECK"}));
}

TEST_F(ResortTest, NegativeColumnDoesNothing)
{
    click(controls().cmdunpaid);
    const QString before = invoiceStatement();
    window().setStatus("kept");
    window().lists().resortInvoices(-1);
    window().lists().resortChecks(-1);
    EXPECT_EQ(window().status(), "kept");
    EXPECT_EQ(invoiceStatement(), before);
}

TEST_F(ResortTest, ResortWritesTheVendorFieldAsAPlainNumber)
{
    click(controls().cmdunpaid);
    setVendor("12.5");
    window().lists().resortInvoices(1);
    EXPECT_EQ(invoiceStatement(), "select * from invoices where vendnumber = 12.5 and "
                                  "invstatus > 0 and invstatus < 4 order by invdate");
}

TEST_F(ResortTest, ResortKeepsTheDatabaseNameTheListSet)
{
    click(controls().cmdpaid);
    clickHeader(grid1(), 8);
    EXPECT_EQ(window().datainvoice().databaseName(), "ap.mdb");
    EXPECT_EQ(window().datainvoice().recordSource(),
              "select * from invoices where vendnumber = 12 and invstatus > 0 and invstatus > 3 "
              "order by invglperiod, invdate");
}

TEST_F(ResortTest, CheckHeadingClickRunsAndReportsTheResort)
{
    addCheck(302, 20260201, 20, "Zeta");
    addCheck(301, 20260105, 10, "Alpha");
    click(controls().cmdchecks);
    const auto [during, after] = statusDuring([&] { clickHeader(grid2(), 4); });
    EXPECT_EQ(during, "Re-sorting by Reference");
    EXPECT_EQ(after, "Sorted by Reference");
    EXPECT_EQ(window().datachecks().recordSource(),
              "select * from checks where chkpayeenum = 12 order by chkref");
    EXPECT_EQ(column(grid2(), 4), QStringList({"Alpha", "Zeta"}));
}

// Each heading of the invoice grid, for the unpaid and the paid list.
struct InvoiceClause {
    int column;
    const char *caption;
    const char *clause;
};

void PrintTo(const InvoiceClause &k, std::ostream *os)
{
    *os << k.column << " \"" << k.caption << "\" -> \"" << k.clause << '"';
}

class InvoiceResortClauseTest : public ResortTest,
                                public ::testing::WithParamInterface<InvoiceClause> {};

TEST_P(InvoiceResortClauseTest, UnpaidListAppendsTheColumnsClause)
{
    const InvoiceClause k = GetParam();
    click(controls().cmdunpaid);
    const QString before = invoiceStatement();
    clickHeader(grid1(), k.column);
    if (k.column >= 5 && k.column <= 7) {
        EXPECT_EQ(invoiceStatement(), before);
        EXPECT_EQ(window().status(), "");
        return;
    }
    EXPECT_EQ(invoiceStatement(), QString("select * from invoices where vendnumber = 12 and "
                                          "invstatus > 0 and invstatus < 4") +
                                      k.clause);
    EXPECT_EQ(window().status(), QString("Sorted by ") + k.caption);
}

TEST_P(InvoiceResortClauseTest, PaidListAppendsTheColumnsClause)
{
    const InvoiceClause k = GetParam();
    click(controls().cmdpaid);
    clickHeader(grid1(), k.column);
    EXPECT_EQ(invoiceStatement(), QString("select * from invoices where vendnumber = 12 and "
                                          "invstatus > 0 and invstatus > 3") +
                                      k.clause);
    EXPECT_EQ(window().status(), QString("Sorted by ") + k.caption);
}

INSTANTIATE_TEST_SUITE_P(
    Headings, InvoiceResortClauseTest,
    ::testing::Values(InvoiceClause{0, "Invoice #", " order by invnumber, invdate"},
                      InvoiceClause{1, "Date", " order by invdate"},
                      InvoiceClause{2, "Product", " order by invproduct"},
                      InvoiceClause{3, "Amount", " order by invamount"},
                      InvoiceClause{4, "Due", " order by invduedate"},
                      InvoiceClause{5, "Check #", " order by invchecknumber"},
                      InvoiceClause{6, "Check date", " order by invcheckdate"},
                      InvoiceClause{7, "Check amount", " order by invcheckamount"},
                      InvoiceClause{8, "G/L period", " order by invglperiod, invdate"},
                      InvoiceClause{9, "Status", ""}, InvoiceClause{10, "G/L account", ""}),
    [](const ::testing::TestParamInfo<InvoiceClause> &info) {
        return "Column" + std::to_string(info.param.column);
    });

struct CheckClause {
    int column;
    const char *caption;
    const char *clause;
};

void PrintTo(const CheckClause &k, std::ostream *os)
{
    *os << k.column << " \"" << k.caption << "\" -> \"" << k.clause << '"';
}

class CheckResortClauseTest : public ResortTest,
                              public ::testing::WithParamInterface<CheckClause> {};

TEST_P(CheckResortClauseTest, ChecksListAppendsTheColumnsClause)
{
    const CheckClause k = GetParam();
    click(controls().cmdchecks);
    clickHeader(grid2(), k.column);
    EXPECT_EQ(window().datachecks().recordSource(),
              QString("select * from checks where chkpayeenum = 12") + k.clause);
    EXPECT_EQ(window().status(), QString("Sorted by ") + k.caption);
}

INSTANTIATE_TEST_SUITE_P(Headings, CheckResortClauseTest,
                         ::testing::Values(CheckClause{0, "Check #", " order by chknum"},
                                           CheckClause{1, "Date", " order by chkdate"},
                                           CheckClause{2, "Vendor #", " order by chkpayeenum"},
                                           CheckClause{3, "Payee", " order by chkpayeename"},
                                           CheckClause{4, "Reference", " order by chkref"},
                                           CheckClause{5, "Amount", " order by chkamount"},
                                           CheckClause{6, "Status", " order by chkstatus"},
                                           CheckClause{7, "Tax year", ""},
                                           CheckClause{8, "Age (days)", ""}),
                         [](const ::testing::TestParamInfo<CheckClause> &info) {
                             return "Column" + std::to_string(info.param.column);
                         });

} // namespace
