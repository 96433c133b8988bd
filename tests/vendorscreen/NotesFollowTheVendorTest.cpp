#include "lists/VendorNotes.h"
#include "vendorscreen/UnsavedEditFixture.h"

#include <QLabel>

namespace {

class NotesFollowTheVendorTest : public UnsavedEditFixture {};

TEST_F(NotesFollowTheVendorTest, NextShowsTheNextVendorsOwnEmptyNote)
{
    lookup(0, "4569");
    click(c().cmdnotes);
    ASSERT_EQ(c().notes->toPlainText(), "Call before delivery");
    click(c().cmdnext);
    EXPECT_EQ(field(0), "4605");
    EXPECT_TRUE(c().notes->isVisible());
    EXPECT_EQ(c().notes->toPlainText(), "");
    EXPECT_EQ(module.window->notes().recalledVendor(), 4605);
}

TEST_F(NotesFollowTheVendorTest, PreviousShowsThePreviousVendorsNote)
{
    lookup(0, "4569");
    click(c().cmdnext);
    click(c().cmdnotes);
    ASSERT_EQ(c().notes->toPlainText(), "");
    click(c().cmdprevious);
    EXPECT_EQ(field(0), "4569");
    EXPECT_EQ(c().notes->toPlainText(), "Call before delivery");
    EXPECT_EQ(module.window->notes().recalledVendor(), 4569);
}

TEST_F(NotesFollowTheVendorTest, WithTheNotesHiddenAMoveLeavesThemHidden)
{
    lookup(0, "4569");
    click(c().cmdunpaid);
    click(c().cmdnext);
    EXPECT_EQ(field(0), "4605");
    EXPECT_FALSE(c().notes->isVisible());
    EXPECT_EQ(c().gridcaption->text(), "Unpaid Invoices");
}

TEST_F(NotesFollowTheVendorTest, ALookupHitShowsTheNoteOfTheVendorFound)
{
    // The notes box is shown while a new vendor is typed; the lookup then finds vendor 270.
    click(c().cmdadd);
    typeInto(0, "4569");
    click(c().cmdnotes);
    ASSERT_EQ(c().notes->toPlainText(), "Call before delivery");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    click(c().cmdlookup);
    lookup(0, "270");
    EXPECT_EQ(field(0), "270");
    EXPECT_TRUE(c().notes->isVisible());
    EXPECT_EQ(c().notes->toPlainText(), "Pays on the 15th");
    // The vendor found is browsed: the add has ended.
    EXPECT_EQ(module.window->state().addFlag, 0);
    EXPECT_FALSE(c().notes->isEnabled());
    EXPECT_FALSE(c().fravendor->isEnabled());
}

TEST_F(NotesFollowTheVendorTest, ASaveAfterMovingWithTheNotesShownDoesNotCarryTheOldNote)
{
    lookup(0, "4569");
    click(c().cmdnotes);
    click(c().cmdnext);
    click(c().cmdmodify);
    typeInto(9, "Ida Marsh");
    click(c().cmdsave);
    EXPECT_EQ(module.dialogs.count("message"), 0);
    EXPECT_EQ(vendorColumn(4605, "vendcontact").toString(), "Ida Marsh");
    EXPECT_EQ(noteRows(4605), 0);
    EXPECT_EQ(storedNote(4569), "Call before delivery");
}

} // namespace
