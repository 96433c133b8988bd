#include "lists/ListsFixture.h"

#include "data/RecordSource.h"
#include "lists/InvoiceLists.h"
#include "lists/OpenInvoiceTotals.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

namespace {

class InvoiceListsTest : public ListsFixture {
protected:
    void SetUp() override
    {
        ListsFixture::SetUp();
        // Vendor 12: three unpaid, two paid, one neither; vendor 13 has one of each.
        addInvoice({.number = "U-MAR", .date = 20260315, .amount = 30, .status = 1});
        addInvoice({.number = "U-JAN", .date = 20260110, .amount = 10, .status = 3});
        addInvoice({.number = "U-FEB", .date = 20260205, .amount = 20, .status = 2});
        addInvoice({.number = "P-APR",
                    .date = 20260401,
                    .amount = 40,
                    .status = 4,
                    .check = 501,
                    .checkDate = 20260420,
                    .checkAmount = 40});
        addInvoice({.number = "P-DEC",
                    .date = 20251201,
                    .amount = 50,
                    .status = 5,
                    .check = 499,
                    .checkDate = 20251220,
                    .checkAmount = 50});
        addInvoice({.number = "VOID", .date = 20260201, .amount = 99, .status = 0});
        addInvoice({.vendor = 13, .number = "OTHER-U", .status = 1});
        addInvoice({.vendor = 13, .number = "OTHER-P", .status = 4, .check = 7});
        setVendor("12");
    }
    QTableView *grid1() { return controls().grid1; }
    QTableView *grid2() { return controls().grid2; }
    QString invoiceStatement() { return window().datainvoice().recordSource(); }
    QString checkStatement() { return window().datachecks().recordSource(); }
};

TEST_F(InvoiceListsTest, UnpaidNewToOldListsOpenInvoicesNewestFirst)
{
    newToOld();
    click(controls().cmdunpaid);
    const QString sql = "select * from invoices where vendnumber = 12 and invstatus > 0 and "
                        "invstatus <= 3 order by invdate desc";
    EXPECT_EQ(invoiceStatement(), sql);
    EXPECT_EQ(window().datainvoice().databaseName(), "ap.mdb");
    EXPECT_EQ(window().lists().query(), sql);
    EXPECT_EQ(window().lists().cursor().recordSource(), sql);
    EXPECT_EQ(window().lists().cursor().databaseName(), "ap.mdb");
    EXPECT_EQ(column(grid1(), 0), QStringList({"U-MAR", "U-FEB", "U-JAN"}));
}

TEST_F(InvoiceListsTest, UnpaidOldToNewListsOpenInvoicesOldestFirst)
{
    oldToNew();
    click(controls().cmdunpaid);
    EXPECT_EQ(invoiceStatement(), "select * from invoices where vendnumber = 12 and invstatus > 0 "
                                  "and invstatus <= 3 order by invdate");
    EXPECT_EQ(column(grid1(), 0), QStringList({"U-JAN", "U-FEB", "U-MAR"}));
}

TEST_F(InvoiceListsTest, PaidNewToOldListsInvoicesWithACheckNumberNewestFirst)
{
    // Paid by check number, whatever the status says.
    addInvoice({.number = "CHECKED-OPEN", .date = 20260301, .status = 2, .check = 600});
    newToOld();
    click(controls().cmdpaid);
    EXPECT_EQ(invoiceStatement(), "select * from invoices where vendnumber = 12 and "
                                  "invchecknumber > 0 order by invdate desc");
    EXPECT_EQ(column(grid1(), 0), QStringList({"P-APR", "CHECKED-OPEN", "P-DEC"}));
}

TEST_F(InvoiceListsTest, PaidOldToNewListsInvoicesWithACheckNumberOldestFirst)
{
    oldToNew();
    click(controls().cmdpaid);
    EXPECT_EQ(invoiceStatement(), "select * from invoices where vendnumber = 12 and "
                                  "invchecknumber > 0 order by invdate");
    EXPECT_EQ(column(grid1(), 0), QStringList({"P-DEC", "P-APR"}));
}

TEST_F(InvoiceListsTest, ChecksNewToOldListsChecksByDateDescending)
{
    addCheck(301, 20260105, 10);
    addCheck(303, 20260310, 30);
    addCheck(302, 20260201, 20);
    addCheck(900, 20260401, 90, "R", 1, 13);
    newToOld();
    click(controls().cmdchecks);
    EXPECT_EQ(checkStatement(),
              "select * from checks where chkpayeenum = 12 order by chkdate desc");
    EXPECT_EQ(window().datachecks().databaseName(), "ap.mdb");
    EXPECT_EQ(column(grid2(), 0), QStringList({"303", "302", "301"}));
}

TEST_F(InvoiceListsTest, OldToNewChecksComeUnorderedWhileInvoiceListsAreByDateAscending)
{
    // Same date: nothing but the order of entry tells them apart.
    addCheck(303, 20260310, 30);
    addCheck(301, 20260310, 10);
    addCheck(302, 20260310, 20);
    oldToNew();
    click(controls().cmdchecks);
    EXPECT_EQ(checkStatement(), "select * from checks where chkpayeenum = 12");
    EXPECT_EQ(column(grid2(), 0), QStringList({"303", "301", "302"}));
    click(controls().cmdunpaid);
    EXPECT_EQ(column(grid1(), 1), QStringList({"01/10/2026", "02/05/2026", "03/15/2026"}));
    click(controls().cmdpaid);
    EXPECT_EQ(column(grid1(), 1), QStringList({"12/01/2025", "04/01/2026"}));
}

TEST_F(InvoiceListsTest, VendorWithNoInvoicesGetsAnEmptyGridWithItsCaption)
{
    folder.addVendor(14, "Nobody");
    setVendor("14");
    click(controls().cmdunpaid);
    EXPECT_EQ(window().gridCaption(), "Unpaid Invoices");
    EXPECT_FALSE(grid1()->isHidden());
    EXPECT_EQ(grid1()->model()->rowCount(), 0);
    click(controls().cmdpaid);
    EXPECT_EQ(window().gridCaption(), "Paid Invoices");
    EXPECT_EQ(grid1()->model()->rowCount(), 0);
    click(controls().cmdchecks);
    EXPECT_EQ(window().gridCaption(), "Checks");
    EXPECT_EQ(grid2()->model()->rowCount(), 0);
}

TEST_F(InvoiceListsTest, EachListSetsItsCaption)
{
    click(controls().cmdunpaid);
    EXPECT_EQ(controls().gridcaption->text(), "Unpaid Invoices");
    click(controls().cmdpaid);
    EXPECT_EQ(controls().gridcaption->text(), "Paid Invoices");
    click(controls().cmdchecks);
    EXPECT_EQ(controls().gridcaption->text(), "Checks");
}

TEST_F(InvoiceListsTest, InvoiceListsShowTheInvoiceGridAndChecksTheCheckGrid)
{
    click(controls().cmdchecks);
    EXPECT_TRUE(grid1()->isHidden());
    EXPECT_FALSE(grid2()->isHidden());
    click(controls().cmdpaid);
    EXPECT_FALSE(grid1()->isHidden());
    EXPECT_TRUE(grid2()->isHidden());
}

TEST_F(InvoiceListsTest, UnpaidListAllowsEditingRowsButNotAddingOrDeleting)
{
    click(controls().cmdunpaid);
    const InvoiceLists::RowEditPermissions p = window().lists().invoicePermissions();
    EXPECT_FALSE(p.addRows);
    EXPECT_FALSE(p.deleteRows);
    EXPECT_TRUE(p.editRows);
    EXPECT_TRUE(grid1()->property("allowUpdate").toBool());
}

TEST_F(InvoiceListsTest, PaidListAllowsNoRowChanges)
{
    click(controls().cmdunpaid);
    click(controls().cmdpaid);
    const InvoiceLists::RowEditPermissions p = window().lists().invoicePermissions();
    EXPECT_FALSE(p.addRows);
    EXPECT_FALSE(p.deleteRows);
    EXPECT_FALSE(p.editRows);
}

TEST_F(InvoiceListsTest, ChecksListLeavesTheInvoiceGridOptionsAlone)
{
    click(controls().cmdunpaid);
    click(controls().cmdchecks);
    EXPECT_TRUE(window().lists().invoicePermissions().editRows);
}

TEST_F(InvoiceListsTest, LoadingAListHidesNotesAndSplitPanelAndResetsSplitCaption)
{
    controls().notes->show();
    controls().frasplit->show();
    controls().cmdsplit->setText("Hide Split Detail");
    click(controls().cmdpaid);
    EXPECT_TRUE(controls().notes->isHidden());
    EXPECT_TRUE(controls().frasplit->isHidden());
    EXPECT_EQ(controls().cmdsplit->text(), "Show Split Detail");
}

TEST_F(InvoiceListsTest, ListStoresTheWholeVendorNumberAndTheListKind)
{
    setVendor("12.4");
    click(controls().cmdunpaid);
    EXPECT_EQ(window().lists().vendor(), 12);
    EXPECT_EQ(window().lists().kind(), 1);
    EXPECT_EQ(invoiceStatement().left(46), "select * from invoices where vendnumber = 12 a");
    click(controls().cmdpaid);
    EXPECT_EQ(window().lists().kind(), 2);
    setVendor("13");
    click(controls().cmdchecks);
    EXPECT_EQ(window().lists().kind(), 3);
    EXPECT_EQ(window().lists().vendor(), 13);
}

TEST_F(InvoiceListsTest, UnpaidListRecomputesTheOpenTotal)
{
    ASSERT_DOUBLE_EQ(window().totals().openTotal(), 0.0);
    click(controls().cmdunpaid);
    EXPECT_DOUBLE_EQ(window().totals().openTotal(), 60.0);
}

TEST_F(InvoiceListsTest, PaidListDoesNotRecomputeTheOpenTotal)
{
    click(controls().cmdunpaid);
    addInvoice({.number = "U-LATE", .date = 20260420, .amount = 15, .status = 1});
    click(controls().cmdpaid);
    EXPECT_DOUBLE_EQ(window().totals().openTotal(), 60.0);
    click(controls().cmdunpaid);
    EXPECT_DOUBLE_EQ(window().totals().openTotal(), 75.0);
}

TEST_F(InvoiceListsTest, VendorNumberBelowOneDoesNothing)
{
    for (const char *text : {"", "0", "0.9", "-5", "abc"}) {
        setVendor(QString::fromLatin1(text));
        for (QPushButton *button :
             {controls().cmdunpaid, controls().cmdpaid, controls().cmdchecks}) {
            click(button);
            EXPECT_TRUE(button->isEnabled()) << text;
        }
        EXPECT_TRUE(invoiceStatement().isEmpty()) << text;
        EXPECT_TRUE(checkStatement().isEmpty()) << text;
        EXPECT_TRUE(grid1()->isHidden()) << text;
        EXPECT_TRUE(grid2()->isHidden()) << text;
        EXPECT_EQ(window().gridCaption(), "") << text;
        EXPECT_EQ(window().lists().kind(), 0) << text;
    }
}

TEST_F(InvoiceListsTest, PressedButtonIsDisabledWhileItsListLoadsAndEnabledAfter)
{
    bool enabledDuringLoad = true;
    QTimer timer; // gone with this scope, so it never fires after the test
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout,
                     [&] { enabledDuringLoad = controls().cmdpaid->isEnabled(); });
    timer.start(0);
    click(controls().cmdpaid);
    EXPECT_FALSE(enabledDuringLoad);
    EXPECT_TRUE(controls().cmdpaid->isEnabled());
}

TEST_F(InvoiceListsTest, DatesAndMoneyAreShownReadably)
{
    addInvoice({.number = "BIG", .date = 20261121, .amount = 1234.5, .status = 1, .due = 0});
    oldToNew();
    click(controls().cmdunpaid);
    const int last = grid1()->model()->rowCount() - 1;
    EXPECT_EQ(cell(grid1(), last, 0), "BIG");
    EXPECT_EQ(cell(grid1(), last, 1), "11/21/2026");
    EXPECT_EQ(cell(grid1(), last, 3), "$1,234.50");
    EXPECT_EQ(cell(grid1(), last, 4), ""); // no due date
    EXPECT_EQ(cell(grid1(), last, 5), ""); // no check yet
    EXPECT_EQ(grid1()->model()->index(last, 1).data(Qt::UserRole).toLongLong(), 20261121);
}

TEST_F(InvoiceListsTest, StatusColumnNamesEachCodeAndKeepsTheStoredValue)
{
    oldToNew();
    click(controls().cmdunpaid);
    ASSERT_EQ(grid1()->model()->rowCount(), 3);
    EXPECT_EQ(cell(grid1(), 0, 9), "3  Open"); // U-JAN
    EXPECT_EQ(cell(grid1(), 1, 9), "2  Open"); // U-FEB
    EXPECT_EQ(cell(grid1(), 2, 9), "1  Open"); // U-MAR
    EXPECT_EQ(grid1()->model()->index(0, 9).data(Qt::UserRole).toInt(), 3);
    click(controls().cmdpaid);
    ASSERT_EQ(grid1()->model()->rowCount(), 2);
    EXPECT_EQ(cell(grid1(), 0, 9), "5  Paid"); // P-DEC
    EXPECT_EQ(cell(grid1(), 1, 9), "4  Paid"); // P-APR
    EXPECT_EQ(grid1()->model()->index(1, 9).data(Qt::UserRole).toInt(), 4);
}

TEST_F(InvoiceListsTest, InvoiceColumnsHaveTheirCaptionsInOrder)
{
    QStringList captions;
    for (int c = 0; c < grid1()->model()->columnCount(); ++c)
        captions << grid1()->model()->headerData(c, Qt::Horizontal).toString();
    EXPECT_EQ(captions,
              QStringList({"Invoice #", "Date", "Product", "Amount", "Due", "Check #", "Check date",
                           "Check amount", "G/L period", "Status", "G/L account"}));
    EXPECT_EQ(grid2()->model()->columnCount(), 9);
}

TEST_F(InvoiceListsTest, InvoiceListColumnsKeepTheirDesignShareOfTheGridWidth)
{
    click(controls().cmdunpaid);
    const int width = grid1()->width();
    ASSERT_GT(width, 300);
    // The invoice grid's columns as designed, on a grid designed 950 wide.
    const int designed[11] = {90, 75, 135, 90, 75, 65, 80, 95, 70, 65, 80};
    for (int c = 0; c < 11; ++c)
        EXPECT_EQ(grid1()->columnWidth(c), width * designed[c] / 950) << "column " << c;
}

TEST_F(InvoiceListsTest, ColumnsFollowANewGridWidthWhenTheListIsLoadedAgain)
{
    click(controls().cmdpaid);
    const int before = grid1()->columnWidth(2);
    window().resize(window().width() - 200, window().height());
    click(controls().cmdpaid);
    EXPECT_LT(grid1()->columnWidth(2), before);
    EXPECT_EQ(grid1()->columnWidth(2), grid1()->width() * 135 / 950);
}

TEST_F(InvoiceListsTest, OpeningTheLookupFitsTheCheckGridToo)
{
    click(controls().cmdchecks); // the check list itself does not fit the columns
    grid2()->setColumnWidth(3, 5);
    window().openLookup();
    EXPECT_EQ(grid2()->columnWidth(3), grid2()->width() * 220 / 950);
}

TEST_F(InvoiceListsTest, RefreshOpenListListsTheUnpaidInvoicesOfTheVendorNowOnScreen)
{
    click(controls().cmdunpaid);
    setVendor("13");
    window().lists().refreshOpenList();
    EXPECT_EQ(window().gridCaption(), "Unpaid Invoices");
    EXPECT_EQ(column(grid1(), 0), QStringList({"OTHER-U"}));
}

TEST_F(InvoiceListsTest, RefreshOpenListListsThePaidInvoicesAgain)
{
    click(controls().cmdpaid);
    setVendor("13");
    window().lists().refreshOpenList();
    EXPECT_EQ(window().gridCaption(), "Paid Invoices");
    EXPECT_EQ(column(grid1(), 0), QStringList({"OTHER-P"}));
}

TEST_F(InvoiceListsTest, RefreshOpenListListsTheChecksAgain)
{
    addCheck(900, 20260401, 90, "R", 1, 13);
    click(controls().cmdchecks);
    setVendor("13");
    window().lists().refreshOpenList();
    EXPECT_EQ(column(grid2(), 0), QStringList({"900"}));
}

TEST_F(InvoiceListsTest, RefreshOpenListDoesNothingWhileNoListIsShown)
{
    window().lists().refreshOpenList();
    EXPECT_TRUE(invoiceStatement().isEmpty());
    EXPECT_TRUE(checkStatement().isEmpty());
}

TEST_F(InvoiceListsTest, RefreshChecksIfShownOnlyWhenTheCheckGridShows)
{
    addCheck(900, 20260401, 90, "R", 1, 13);
    click(controls().cmdunpaid);
    setVendor("13");
    window().lists().refreshChecksIfShown();
    EXPECT_EQ(column(grid1(), 0), QStringList({"U-MAR", "U-FEB", "U-JAN"}));
    EXPECT_TRUE(checkStatement().isEmpty());
    setVendor("12");
    click(controls().cmdchecks);
    setVendor("13");
    window().lists().refreshChecksIfShown();
    EXPECT_EQ(column(grid2(), 0), QStringList({"900"}));
}

} // namespace
