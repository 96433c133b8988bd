#include "vendorscreen/ScreenModes.h"
#include "common/Session.h"
#include "data/RecordSource.h"
#include "support/VendorScreen.h"

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QTableView>

namespace {

class ScreenModesTest : public VendorScreen {
protected:
    std::map<std::string, bool> buttons() const
    {
        return {{"add", c().cmdadd->isEnabled()},           {"lookup", c().cmdlookup->isEnabled()},
                {"previous", c().cmdprevious->isEnabled()}, {"next", c().cmdnext->isEnabled()},
                {"modify", c().cmdmodify->isEnabled()},     {"save", c().cmdsave->isEnabled()},
                {"delete", c().cmddelete->isEnabled()},     {"cancel", c().cmdcancel->isEnabled()}};
    }
    using States = std::map<std::string, bool>;
};

TEST_F(ScreenModesTest, LookupModeButtons)
{
    EXPECT_EQ(buttons(), (States{{"add", true},
                                 {"lookup", true},
                                 {"previous", false},
                                 {"next", false},
                                 {"modify", false},
                                 {"save", false},
                                 {"delete", false},
                                 {"cancel", true}}));
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_FALSE(c().fravendor->isEnabled());
    EXPECT_FALSE(c().notes->isVisible());
}

TEST_F(ScreenModesTest, BrowseModeButtonsAfterALookupHit)
{
    lookup(0, "100");
    EXPECT_EQ(buttons(), (States{{"add", false},
                                 {"lookup", false},
                                 {"previous", true},
                                 {"next", true},
                                 {"modify", true},
                                 {"save", false},
                                 {"delete", false},
                                 {"cancel", true}}));
    EXPECT_FALSE(c().fralookup->isVisible());
    EXPECT_EQ(module.window->status(), "Select an action button along the top of the screen.");
}

TEST_F(ScreenModesTest, AddModeUnlocksTheFrameAndPresetsTheFigures)
{
    c().cmdadd->click();
    EXPECT_EQ(module.window->state().addFlag, 1);
    EXPECT_TRUE(c().fravendor->isEnabled());
    EXPECT_FALSE(c().fralookup->isVisible());
    EXPECT_TRUE(c().cmdsave->isEnabled());
    EXPECT_TRUE(c().cmdadd->isEnabled());
    EXPECT_TRUE(c().notes->isEnabled());
    for (int i = 11; i <= 16; ++i) {
        EXPECT_EQ(field(i), "0") << i;
        EXPECT_TRUE(c().Text1[i]->isEnabled()) << i;
    }
    EXPECT_EQ(module.window->datavendor().recordSource(), "vendors");
}

TEST_F(ScreenModesTest, ModifyModeButtons)
{
    lookup(0, "100");
    c().cmdmodify->click();
    EXPECT_EQ(module.window->state().modifyFlag, 1);
    EXPECT_TRUE(c().cmdsave->isEnabled());
    EXPECT_TRUE(c().cmddelete->isEnabled());
    EXPECT_TRUE(c().cmdmodify->isEnabled());
    EXPECT_FALSE(c().cmdadd->isEnabled());
    EXPECT_TRUE(c().notes->isEnabled());
    EXPECT_TRUE(c().fravendor->isEnabled());
    EXPECT_EQ(module.window->status(), "Click on a field to edit");
}

TEST_F(ScreenModesTest, AddPressedInModifyModeSaysOopsAndKeepsTheEdit)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[1]->setText("Changed name");
    module.window->modes().add();
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text, "You are currently in edit mode. You must close\n"
                                           "the current screen before you can add a new vendor.");
    EXPECT_EQ(module.dialogs.last()->title, "Oops...");
    EXPECT_EQ(module.window->state().modifyFlag, 1);
    EXPECT_EQ(module.window->state().addFlag, 0);
    EXPECT_EQ(field(1), "Changed name");
}

TEST_F(ScreenModesTest, ModifyPressedInAddModeSaysOops)
{
    c().cmdadd->click();
    module.window->modes().modify();
    EXPECT_EQ(module.dialogs.last()->text, "You are currently in add vendor mode. You must close\n"
                                           "the current screen before you can edit a vendor.");
    EXPECT_EQ(module.dialogs.last()->title, "Oops...");
    EXPECT_EQ(module.window->state().modifyFlag, 0);
    EXPECT_EQ(module.window->state().addFlag, 1);
}

TEST_F(ScreenModesTest, CancelReturnsToTheLookupWithEverythingReleased)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().cmdcancel->click();
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_FALSE(c().fravendor->isEnabled());
    EXPECT_FALSE(c().grid1->isVisible());
    EXPECT_EQ(module.window->state().modifyFlag, 0);
    EXPECT_EQ(field(0), "");
    EXPECT_FALSE(module.window->datavendor().isBound());
    EXPECT_TRUE(module.window->datavendor().databaseName().isEmpty());
    EXPECT_TRUE(c().cmdadd->isEnabled());
    EXPECT_FALSE(c().cmdnext->isEnabled());
}

TEST_F(ScreenModesTest, NextAndPreviousWalkTheLookupsResult)
{
    lookup(0, "100");
    c().cmdnext->click();
    EXPECT_EQ(field(0), "250");
    c().cmdnext->click();
    EXPECT_EQ(field(0), "251");
    c().cmdprevious->click();
    EXPECT_EQ(field(0), "250");
    EXPECT_TRUE(c().cmdnext->isEnabled());
}

TEST_F(ScreenModesTest, NextOnTheLastVendorShowsNoRecordAndReturnsToLookup)
{
    lookup(0, "300");
    c().cmdnext->click();
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text, "No record to display");
    EXPECT_EQ(module.dialogs.last()->icon, Dialogs::Icon::Information);
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_FALSE(c().cmdnext->isEnabled());
}

TEST_F(ScreenModesTest, PreviousOnTheFirstVendorShowsNoRecordAndReturnsToLookup)
{
    lookup(0, "100");
    c().cmdprevious->click();
    EXPECT_EQ(module.dialogs.last()->text, "No record to display");
    EXPECT_TRUE(c().fralookup->isVisible());
}

TEST_F(ScreenModesTest, DeleteIsAllowedWithUnpaidBelowOneCent)
{
    lookup(0, "250");
    c().cmdmodify->click();
    c().Text1[13]->setText("0.00");
    c().Text1[14]->setText("0.004");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    c().cmddelete->click();
    EXPECT_EQ(module.dialogs.last()->kind, "yesno");
    EXPECT_EQ(module.dialogs.last()->text, "Click YES to finish the deletion, NO to cancel");
    EXPECT_EQ(module.dialogs.last()->title, "Delete Vendor?");
    EXPECT_EQ(module.dialogs.last()->buttons, (QStringList{"Yes", "No"}));
    // Enter alone does not delete.
    EXPECT_EQ(module.dialogs.last()->defaultAnswer, Dialogs::No);
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 250").toInt(), 0);
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_FALSE(c().cmddelete->isEnabled());
}

TEST_F(ScreenModesTest, DeleteIsRefusedWithNegativeUnpaid)
{
    lookup(0, "250");
    c().cmdmodify->click();
    c().Text1[14]->setText("-5.00");
    c().cmddelete->click();
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "This account has active YTD purchases and/or unpaid invoices and \r\n"
              "cannot be deleted until the year has closed and balances are zero. ");
    EXPECT_EQ(module.dialogs.last()->title, "Delete Vendor");
    EXPECT_EQ(module.dialogs.last()->icon, Dialogs::Icon::Critical);
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 250").toInt(), 1);
    EXPECT_EQ(module.dialogs.count("yesno"), 0);
}

TEST_F(ScreenModesTest, DeleteIsRefusedWithYtdPurchases)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().cmddelete->click();
    EXPECT_EQ(module.dialogs.last()->title, "Delete Vendor");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 100").toInt(), 1);
}

TEST_F(ScreenModesTest, DeleteIsAllowedWhenOnlyTheNinetyDayBalanceIsSet)
{
    lookup(0, "250");
    c().cmdmodify->click();
    c().Text1[15]->setText("75.00");
    c().Text1[16]->setText("1234.5");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    c().cmddelete->click();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 250").toInt(), 0);
}

TEST_F(ScreenModesTest, AnsweringNoToDeleteKeepsTheVendorAndTheMode)
{
    lookup(0, "250");
    c().cmdmodify->click();
    module.dialogs.yesNoAnswers = {Dialogs::No};
    c().cmddelete->click();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 250").toInt(), 1);
    EXPECT_EQ(module.window->state().modifyFlag, 1);
    EXPECT_TRUE(c().cmddelete->isEnabled());
}

TEST_F(ScreenModesTest, DeletingLeavesInvoicesChecksAndNotesAlone)
{
    folder.exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invstatus, invamount) "
                          "values (250, 'P1', 4, 10)");
    folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values (250, 'keep')");
    lookup(0, "250");
    c().cmdmodify->click();
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    c().cmddelete->click();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from invoices where vendnumber = 250").toInt(), 1);
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select notes from vendnotes where vendnumber = 250").toString(),
        "keep");
}

class JuniorScreen : public ScreenModesTest {
protected:
    QString argument() const override { return QStringLiteral("VDR90ANNE"); }
};

TEST_F(JuniorScreen, LevelNinetyCannotEditTheKeptFigures)
{
    lookup(0, "100");
    c().cmdmodify->click();
    for (int i = 13; i <= 16; ++i)
        EXPECT_FALSE(c().Text1[i]->isEnabled()) << i;
    EXPECT_TRUE(c().Text1[12]->isEnabled());
}

TEST_F(ScreenModesTest, LevelNinetyOneCanEditTheKeptFigures)
{
    module.session.userLevel = 91;
    lookup(0, "100");
    c().cmdmodify->click();
    for (int i = 13; i <= 16; ++i)
        EXPECT_TRUE(c().Text1[i]->isEnabled()) << i;
}

class LowLevelScreen : public ScreenModesTest {
protected:
    void addVendors() override
    {
        ScreenModesTest::addVendors();
        folder.exec("config.mdb", "update ap set apaccess1 = 50");
    }
    QString argument() const override { return QStringLiteral("VDR49ANNE"); }
};

TEST_F(LowLevelScreen, AddModifyAndDeleteNeedTheEditingLevel)
{
    c().cmdadd->click();
    EXPECT_EQ(module.dialogs.last()->text, "Access denied.");
    EXPECT_EQ(module.window->state().addFlag, 0);
    lookup(0, "250");
    c().cmdmodify->click();
    EXPECT_EQ(module.window->state().modifyFlag, 0);
    module.window->modes().remove();
    EXPECT_EQ(module.dialogs.count(), 3);
    EXPECT_EQ(module.dialogs.count("yesno"), 0);
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 250").toInt(), 1);
}

} // namespace
