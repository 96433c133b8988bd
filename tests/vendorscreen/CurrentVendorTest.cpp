#include "lists/CurrentVendor.h"
#include "lists/InvoiceLists.h"
#include "lists/VendorNotes.h"
#include "reports/ReportMenu.h"
#include "vendorscreen/ScreenModes.h"
#include "vendorscreen/UnsavedEditFixture.h"

#include <QSignalSpy>
#include <QSqlRecord>

namespace {

TEST(CurrentVendorValueTest, ReadsTheNumberTheWayTypedNumbersAreRead)
{
    CurrentVendor vendor;
    EXPECT_EQ(vendor.numberText(), "");
    EXPECT_FALSE(vendor.isSet());
    vendor.setNumberText(QStringLiteral(" 12.6abc"));
    EXPECT_DOUBLE_EQ(vendor.value(), 12.6);
    EXPECT_EQ(vendor.number(), 13);
    EXPECT_TRUE(vendor.isSet());
}

TEST(CurrentVendorValueTest, IsSetFromOneUpwards)
{
    CurrentVendor vendor;
    vendor.setNumberText(QStringLiteral("0.99"));
    EXPECT_FALSE(vendor.isSet());
    EXPECT_EQ(vendor.number(), 1);
    vendor.setNumberText(QStringLiteral("1"));
    EXPECT_TRUE(vendor.isSet());
}

TEST(CurrentVendorValueTest, ANumberSetAloneIsNoChangeOfVendor)
{
    CurrentVendor vendor;
    QSignalSpy changed(&vendor, &CurrentVendor::changed);
    vendor.setNumberText(QStringLiteral("270"));
    vendor.setRow(QSqlRecord());
    EXPECT_EQ(changed.count(), 0);
    vendor.shown();
    EXPECT_EQ(changed.count(), 1);
}

class CurrentVendorTest : public UnsavedEditFixture {
protected:
    CurrentVendor &current() { return module.window->current(); }
    QString shownName() { return current().row().value(QStringLiteral("vendname")).toString(); }
};

TEST_F(CurrentVendorTest, ALookupHitMakesTheVendorFoundCurrentOnce)
{
    QSignalSpy changed(&current(), &CurrentVendor::changed);
    lookup(0, "4569");
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(current().number(), 4569);
    EXPECT_EQ(shownName(), "Prairie Electric");
}

TEST_F(CurrentVendorTest, EachMoveChangesTheVendorOnce)
{
    lookup(0, "270");
    QSignalSpy changed(&current(), &CurrentVendor::changed);
    click(c().cmdnext);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(current().number(), 288);
    EXPECT_EQ(shownName(), "Keystone Paper");
    click(c().cmdnext);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(current().number(), 4569);
    click(c().cmdprevious);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(current().number(), 288);
}

TEST_F(CurrentVendorTest, AMovePastTheLastVendorChangesNothing)
{
    lookup(0, "4605");
    QSignalSpy changed(&current(), &CurrentVendor::changed);
    click(c().cmdnext);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(module.dialogs.last()->text, "No record to display");
}

TEST_F(CurrentVendorTest, ALookupThatFindsNoVendorChangesNothing)
{
    QSignalSpy changed(&current(), &CurrentVendor::changed);
    lookup(0, "9999");
    EXPECT_EQ(changed.count(), 0);
    EXPECT_FALSE(current().isSet());
}

TEST_F(CurrentVendorTest, ANumberTypedForANewVendorIsTheCurrentNumberWithoutAChange)
{
    click(c().cmdadd);
    EXPECT_EQ(current().numberText(), "");
    QSignalSpy changed(&current(), &CurrentVendor::changed);
    typeInto(0, "4605");
    EXPECT_EQ(current().number(), 4605);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(CurrentVendorTest, CancelLeavesNoCurrentVendor)
{
    lookup(0, "270");
    ASSERT_TRUE(current().isSet());
    module.dialogs.yesNoAnswers = {Dialogs::No};
    click(c().cmdcancel);
    EXPECT_EQ(current().numberText(), "");
    EXPECT_FALSE(current().isSet());
}

TEST_F(CurrentVendorTest, ShowingTheVendorAgainRereadsItWithoutAChange)
{
    lookup(0, "288");
    folder.exec("ap.mdb", "update vendors set vendcontact = 'Sal' where vendnumber = 288");
    QSignalSpy changed(&current(), &CurrentVendor::changed);
    QSignalSpy reread(&current(), &CurrentVendor::reread);
    module.window->modes().showAgain();
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(reread.count(), 1);
    EXPECT_EQ(current().row().value(QStringLiteral("vendcontact")).toString(), "Sal");
}

TEST_F(CurrentVendorTest, TheOpenListFollowsAMoveToTheNextVendor)
{
    lookup(0, "270");
    click(c().cmdpaid);
    ASSERT_EQ(module.window->lists().vendor(), 270);
    click(c().cmdnext);
    EXPECT_EQ(module.window->lists().vendor(), 288);
    EXPECT_EQ(module.window->lists().kind(), InvoiceLists::Paid);
    EXPECT_TRUE(module.window->lists().query().contains("= 288"));
}

TEST_F(CurrentVendorTest, TheNotesFollowALookupHitWhileShown)
{
    lookup(0, "4569");
    click(c().cmdnotes);
    ASSERT_EQ(module.window->notes().recalledVendor(), 4569);
    module.dialogs.yesNoAnswers = {Dialogs::No};
    click(c().cmdcancel);
    // Cancel lets go of the note; the vendor found next brings its own.
    EXPECT_EQ(module.window->notes().recalledVendor(), -1);
    click(c().cmdnotes);
    lookup(0, "270");
    EXPECT_EQ(module.window->notes().recalledVendor(), -1);
    click(c().cmdnotes);
    EXPECT_EQ(module.window->notes().recalledVendor(), 270);
    EXPECT_EQ(c().notes->toPlainText(), "Pays on the 15th");
}

TEST_F(CurrentVendorTest, AVendorReportAsksForTheVendorOnTheScreen)
{
    module.window->reports().run(QStringLiteral("rptunpaid"));
    EXPECT_EQ(module.dialogs.last()->text, "You must recall a vendor account first.");
    EXPECT_EQ(module.window->reports().request().reportFileName, "");
    lookup(0, "288");
    module.dialogs.shown.clear();
    module.window->reports().run(QStringLiteral("rptunpaid"));
    // The report goes to the runner (which this folder lacks) instead of asking for a vendor.
    EXPECT_EQ(module.window->reports().request().reportFileName, "rap003.rpt");
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text, "cryprint.exe cannot be found");
}

} // namespace
