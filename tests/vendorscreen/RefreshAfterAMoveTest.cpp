#include "lists/InvoiceLists.h"
#include "lists/VendorNotes.h"
#include "vendorscreen/UnsavedEditFixture.h"

#include <QLabel>
#include <QTableView>

namespace {

// Next shows the vendor it reaches first, then lists its list and reads its note again. A
// database error in that second part is reported and leaves the vendor reached on the screen,
// browsed, with nothing written or lost.
class RefreshAfterAMoveTest : public UnsavedEditFixture {
protected:
    int vendorRows()
    {
        return folder.scalar("ap.mdb", QStringLiteral("select count(*) from vendors")).toInt();
    }
    void expectQuarryStoneWorksBrowsed()
    {
        EXPECT_EQ(field(0), "4605");
        EXPECT_EQ(field(1), "Quarry Stone Works");
        EXPECT_EQ(field(9), "Ida");
        EXPECT_FALSE(c().fravendor->isEnabled());
        EXPECT_TRUE(c().cmdmodify->isEnabled());
        EXPECT_TRUE(c().cmdnext->isEnabled());
        EXPECT_TRUE(c().cmdprevious->isEnabled());
        EXPECT_FALSE(c().cmdsave->isEnabled());
        EXPECT_EQ(module.window->state().addFlag, 0);
        EXPECT_EQ(module.window->state().modifyFlag, 0);
    }
    void expectNothingLost()
    {
        EXPECT_EQ(vendorRows(), 4);
        EXPECT_EQ(vendorColumn(4569, "vendname").toString(), "Prairie Electric");
        EXPECT_EQ(vendorColumn(4605, "vendname").toString(), "Quarry Stone Works");
        EXPECT_EQ(vendorColumn(4605, "vendcontact").toString(), "Ida");
    }
};

TEST_F(RefreshAfterAMoveTest, AFailingCheckListAfterNextIsReportedAndTheVendorReachedStaysShown)
{
    lookup(0, "4569");
    click(c().cmdchecks);
    ASSERT_EQ(c().gridcaption->text(), "Checks");
    ASSERT_TRUE(c().grid2->isVisible());
    ASSERT_EQ(module.dialogs.count(), 0);
    folder.exec("ap.mdb", "drop table checks");

    click(c().cmdnext);

    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_TRUE(module.dialogs.last()->text.startsWith("Error 3078: "))
        << module.dialogs.last()->text.toStdString();
    EXPECT_TRUE(
        module.dialogs.last()->text.endsWith("\nIf this keeps happening, call Velmora Data."));
    EXPECT_EQ(module.dialogs.last()->title, "Uh-oh...");
    expectQuarryStoneWorksBrowsed();
    expectNothingLost();
    // The screen goes on: Previous reaches the vendor before, and its list fails the same way.
    click(c().cmdprevious);
    EXPECT_EQ(field(0), "4569");
    EXPECT_EQ(field(1), "Prairie Electric");
    EXPECT_EQ(module.dialogs.count(), 2);
}

TEST_F(RefreshAfterAMoveTest, AFailingNoteAfterNextGetsTheUnexpectedReportAndTheVendorStaysShown)
{
    lookup(0, "4569");
    click(c().cmdnotes);
    ASSERT_EQ(c().notes->toPlainText(), "Call before delivery");
    ASSERT_EQ(module.dialogs.count(), 0);
    folder.exec("ap.mdb", "drop table vendnotes");

    click(c().cmdnext);

    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text,
              "Code 3078 near 0Unexpected problem... Call Velmora Data.");
    EXPECT_EQ(module.dialogs.last()->title, "DEMO @ Apmaster");
    expectQuarryStoneWorksBrowsed();
    expectNothingLost();
    // The note of the vendor left is not carried to the one reached.
    EXPECT_NE(module.window->notes().recalledVendor(), 4569);
    click(c().cmdprevious);
    EXPECT_EQ(field(0), "4569");
    EXPECT_EQ(module.dialogs.count(), 2);
}

TEST_F(RefreshAfterAMoveTest, WithTheDatabaseWholeNextListsTheChecksOfTheVendorReached)
{
    folder.exec("ap.mdb", "insert into checks (chknum, chkpayeenum, chkamount) values "
                          "(5001, 4569, 10), (5002, 4605, 20), (5003, 4605, 30)");
    lookup(0, "4569");
    click(c().cmdchecks);
    ASSERT_EQ(module.window->lists().vendor(), 4569);
    ASSERT_EQ(c().grid2->model()->rowCount(), 1);

    click(c().cmdnext);

    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(field(0), "4605");
    EXPECT_EQ(module.window->lists().vendor(), 4605);
    EXPECT_EQ(c().grid2->model()->rowCount(), 2);
}

} // namespace
