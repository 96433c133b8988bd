#include "lists/ListsFixture.h"

#include "data/RecordSource.h"
#include "lists/InvoiceLists.h"
#include "lists/SplitDetail.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

namespace {

QStringList texts(const QListWidget *list)
{
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}

class SplitDetailTest : public ListsFixture {
protected:
    void SetUp() override
    {
        ListsFixture::SetUp();
        setVendor("12");
        oldToNew();
    }
    QStringList numbers() { return texts(controls().List1); }
    QStringList names() { return texts(controls().List3); }
    QStringList amounts() { return texts(controls().List2); }
    void selectRow(int row) { controls().grid1->selectRow(row); }
    void pressSplit() { click(controls().cmdsplit); }
};

TEST_F(SplitDetailTest, SplitButtonOpensThePanelWithEachLinesNumberNameAndAmount)
{
    addInvoice({.number = "S1", .status = 1});
    setSplit("S1", 1, 5000, 120.5);
    setSplit("S1", 2, 5100, 1234.5);
    setSplit("S1", 3, 1000, 10);
    click(controls().cmdunpaid);
    pressSplit();
    EXPECT_FALSE(controls().frasplit->isHidden());
    EXPECT_EQ(numbers(), QStringList({"5000.000", "5100.000", "1000.000"}));
    EXPECT_EQ(names(), QStringList({"Office supplies", "Hall rental", "Cash"}));
    EXPECT_EQ(amounts(), QStringList({"$120.50", "$1,234.50", "$10.00"}));
}

TEST_F(SplitDetailTest, OnlyTheFirstSplitSetShowsOneLineInEachList)
{
    addInvoice({.number = "S1", .status = 1});
    setSplit("S1", 1, 5000, 75);
    click(controls().cmdunpaid);
    pressSplit();
    EXPECT_EQ(numbers(), QStringList({"5000.000"}));
    EXPECT_EQ(names(), QStringList({"Office supplies"}));
    EXPECT_EQ(amounts(), QStringList({"$75.00"}));
}

TEST_F(SplitDetailTest, SplitsLeftAtZeroOrBelowOneShowNothing)
{
    addInvoice({.number = "S1", .status = 1});
    setSplit("S1", 1, 0, 5);
    setSplit("S1", 2, 0.5, 6);
    setSplit("S1", 3, 5100, 7);
    click(controls().cmdunpaid);
    pressSplit();
    EXPECT_EQ(numbers(), QStringList({"5100.000"}));
    EXPECT_EQ(names(), QStringList({"Hall rental"}));
    EXPECT_EQ(amounts(), QStringList({"$7.00"}));
}

TEST_F(SplitDetailTest, AccountWithAFractionIsShownWithThreeDecimalsAndFoundByItsPlainNumber)
{
    folder.exec("gl.mdb", "insert into gl0 (glacctnum, glacctname) values (5000.25, 'Stamps')");
    addInvoice({.number = "S1", .status = 1});
    setSplit("S1", 1, 5000.25, 3);
    click(controls().cmdunpaid);
    window().openAccountNames(); // the snapshot is taken at start-up; take it again
    pressSplit();
    EXPECT_EQ(numbers(), QStringList({"5000.250"}));
    EXPECT_EQ(names(), QStringList({"Stamps"}));
}

TEST_F(SplitDetailTest, InvoiceWithAnEmptyDateIsStillFound)
{
    addInvoice({.number = "DATED", .date = 20260101, .status = 1});
    addInvoice({.number = "UNDATED", .date = QVariant(), .status = 1});
    setSplit("DATED", 1, 1000, 1);
    setSplit("UNDATED", 1, 5100, 2);
    click(controls().cmdunpaid);
    ASSERT_EQ(column(controls().grid1, 0), QStringList({"UNDATED", "DATED"}));
    EXPECT_EQ(cell(controls().grid1, 0, 1), "");
    selectRow(0);
    pressSplit();
    EXPECT_EQ(names(), QStringList({"Hall rental"}));
    EXPECT_EQ(amounts(), QStringList({"$2.00"}));
}

TEST_F(SplitDetailTest, InvoiceWithAZeroDateIsFoundLikeAnEmptyOne)
{
    addInvoice({.number = "DATED", .date = 20260101, .status = 1});
    addInvoice({.number = "ZERO", .date = 0, .status = 1});
    setSplit("ZERO", 1, 5100, 2);
    click(controls().cmdunpaid);
    ASSERT_EQ(column(controls().grid1, 0), QStringList({"ZERO", "DATED"}));
    selectRow(0);
    pressSplit();
    EXPECT_EQ(names(), QStringList({"Hall rental"}));
}

TEST_F(SplitDetailTest, SameNumberAndDateAreToldApartByTheCheckNumber)
{
    addInvoice({.number = "TWIN", .date = 20260301, .status = 4, .check = 101});
    setSplit("TWIN", 1, 1000, 1);
    addInvoice({.number = "TWIN", .date = 20260301, .status = 4, .check = 102});
    folder.exec("ap.mdb", "update invoices set splitgl1 = 5100, splitamt1 = 2 "
                          "where invchecknumber = 102");
    click(controls().cmdpaid);
    const QStringList checks = column(controls().grid1, 5);
    ASSERT_EQ(checks.size(), 2);
    for (int row = 0; row < 2; ++row) {
        selectRow(row);
        pressSplit(); // open
        EXPECT_EQ(names(), QStringList({checks[row] == "101" ? "Cash" : "Hall rental"}))
            << "row " << row;
        pressSplit(); // close
    }
}

TEST_F(SplitDetailTest, AccountMissingFromTheChartShowsTheNameOfTheChartsFirstRecord)
{
    addInvoice({.number = "S1", .status = 1});
    setSplit("S1", 1, 5100, 4);
    setSplit("S1", 2, 7777, 5);
    click(controls().cmdunpaid);
    pressSplit();
    // The search fails and the snapshot stays on its first record, the first account entered.
    EXPECT_EQ(numbers(), QStringList({"5100.000", "7777.000"}));
    EXPECT_EQ(names(), QStringList({"Hall rental", "Cash"}));
    EXPECT_EQ(amounts(), QStringList({"$4.00", "$5.00"}));
}

TEST_F(SplitDetailTest, SplitButtonTogglesThePanelAndItsCaption)
{
    addInvoice({.number = "S1", .status = 1});
    setSplit("S1", 1, 5000, 1);
    click(controls().cmdunpaid);
    pressSplit();
    EXPECT_FALSE(controls().frasplit->isHidden());
    EXPECT_EQ(controls().cmdsplit->text(), "Hide Split Detail");
    pressSplit();
    EXPECT_TRUE(controls().frasplit->isHidden());
    EXPECT_EQ(controls().cmdsplit->text(), "Show Split Detail");
    EXPECT_TRUE(controls().cmdsplit->isEnabled());
}

TEST_F(SplitDetailTest, PanelIsCentredAcrossAndAThirdDownTheListPane)
{
    addInvoice({.number = "S1", .status = 1});
    click(controls().cmdunpaid);
    window().resize(1000, 700);
    controls().listpane->resize(900, 390); // as if laid out at that size
    pressSplit();
    const QGroupBox *panel = controls().frasplit;
    ASSERT_EQ(panel->parentWidget(), controls().listpane);
    ASSERT_EQ(panel->width(), 500);
    ASSERT_EQ(panel->height(), 250);
    EXPECT_EQ(panel->x(), 200); // (900 - 500) / 2
    EXPECT_EQ(panel->y(), 46);  // (390 - 250) / 3
}

TEST_F(SplitDetailTest, LoadingAListHidesThePanelAndResetsTheCaption)
{
    addInvoice({.number = "S1", .status = 1});
    click(controls().cmdunpaid);
    pressSplit();
    ASSERT_FALSE(controls().frasplit->isHidden());
    click(controls().cmdunpaid);
    EXPECT_TRUE(controls().frasplit->isHidden());
    EXPECT_EQ(controls().cmdsplit->text(), "Show Split Detail");
}

TEST_F(SplitDetailTest, VendorNumberBelowOneDoesNothing)
{
    addInvoice({.number = "S1", .status = 1});
    click(controls().cmdunpaid);
    setVendor("0");
    pressSplit();
    EXPECT_TRUE(controls().frasplit->isHidden());
    EXPECT_EQ(controls().cmdsplit->text(), "Show Split Detail");
    EXPECT_TRUE(controls().cmdsplit->isEnabled());
}

TEST_F(SplitDetailTest, SplitButtonIsDisabledWhileItRuns)
{
    addInvoice({.number = "S1", .status = 1});
    setSplit("S1", 1, 5000, 1);
    click(controls().cmdunpaid);
    bool enabledDuring = true;
    QObject::connect(controls().List1->model(), &QAbstractItemModel::rowsInserted, controls().List1,
                     [&] { enabledDuring = controls().cmdsplit->isEnabled(); });
    pressSplit();
    EXPECT_FALSE(enabledDuring);
    EXPECT_TRUE(controls().cmdsplit->isEnabled());
}

TEST_F(SplitDetailTest, NothingOpensWhileTheCheckListShows)
{
    addInvoice({.number = "S1", .status = 1});
    addCheck(301, 20260105, 10);
    click(controls().cmdchecks);
    pressSplit();
    EXPECT_TRUE(controls().frasplit->isHidden());
    EXPECT_EQ(controls().cmdsplit->text(), "Show Split Detail");
}

TEST_F(SplitDetailTest, NothingOpensForAnEmptyList)
{
    click(controls().cmdunpaid);
    pressSplit();
    EXPECT_TRUE(controls().frasplit->isHidden());
}

TEST_F(SplitDetailTest, WithoutASelectedRowTheFirstRowIsShown)
{
    addInvoice({.number = "FIRST", .date = 20260101, .status = 1});
    addInvoice({.number = "SECOND", .date = 20260102, .status = 1});
    setSplit("FIRST", 1, 1000, 1);
    setSplit("SECOND", 1, 5100, 2);
    click(controls().cmdunpaid);
    pressSplit();
    EXPECT_EQ(names(), QStringList({"Cash"}));
}

TEST_F(SplitDetailTest, InvoiceTheCriterionDoesNotFindOpensAnEmptyPanel)
{
    // No check number on file: the criterion asks for check number 0 and finds nothing.
    addInvoice({.number = "FIRST", .date = 20260101, .status = 1});
    addInvoice({.number = "NOCHECK", .date = 20260102, .status = 1});
    setSplit("FIRST", 1, 1000, 1);
    setSplit("NOCHECK", 1, 5100, 2);
    folder.exec("ap.mdb", "update invoices set invchecknumber = null where invnumber = 'NOCHECK'");
    click(controls().cmdunpaid);
    selectRow(1);
    pressSplit();
    EXPECT_FALSE(controls().frasplit->isHidden());
    EXPECT_EQ(controls().cmdsplit->text(), "Hide Split Detail");
    EXPECT_TRUE(numbers().isEmpty());
    EXPECT_TRUE(names().isEmpty());
    EXPECT_TRUE(amounts().isEmpty());
}

TEST_F(SplitDetailTest, InvoiceNumberWithAnApostropheIsFound)
{
    addInvoice({.number = "O''Hara-1", .status = 1});
    setSplit("O''Hara-1", 1, 5100, 2);
    click(controls().cmdunpaid);
    ASSERT_EQ(cell(controls().grid1, 0, 0), "O'Hara-1");
    pressSplit();
    EXPECT_EQ(names(), QStringList({"Hall rental"}));
}

TEST_F(SplitDetailTest, DoubleClickOnARowOpensThePanelForThatRow)
{
    addInvoice({.number = "FIRST", .date = 20260101, .status = 1});
    addInvoice({.number = "SECOND", .date = 20260102, .status = 1});
    setSplit("FIRST", 1, 1000, 1);
    setSplit("SECOND", 1, 5100, 2);
    click(controls().cmdunpaid);
    doubleClickRow(controls().grid1, 1);
    EXPECT_EQ(controls().grid1->currentIndex().row(), 1);
    EXPECT_FALSE(controls().frasplit->isHidden());
    EXPECT_EQ(names(), QStringList({"Hall rental"}));
    doubleClickRow(controls().grid1, 1);
    EXPECT_TRUE(controls().frasplit->isHidden());
    EXPECT_EQ(controls().cmdsplit->text(), "Show Split Detail");
}

TEST_F(SplitDetailTest, RowActivatedSelectsTheRowAndMovesTheListCursorToIt)
{
    addInvoice({.number = "FIRST", .date = 20260101, .status = 1});
    addInvoice({.number = "SECOND", .date = 20260102, .status = 1});
    setSplit("SECOND", 1, 5100, 2);
    click(controls().cmdunpaid);
    window().split().rowActivated(1);
    EXPECT_EQ(controls().grid1->selectionModel()->selectedRows().value(0).row(), 1);
    EXPECT_EQ(window().lists().cursor().value("invnumber").toString(), "SECOND");
    EXPECT_EQ(names(), QStringList({"Hall rental"}));
}

} // namespace
