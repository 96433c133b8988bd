#include "lists/VendorNotes.h"
#include "vendorscreen/UnsavedEditFixture.h"
#include "vendorscreen/VendorFields.h"

#include <QAction>

namespace {

class UnsavedEditTest : public UnsavedEditFixture {};

TEST_F(UnsavedEditTest, NextAfterAChangedContactAndATypedNoteAsksToSaveFirst)
{
    modify270WithContactAndNote();
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    click(c().cmdnext);
    expectTheSaveQuestion();
}

TEST_F(UnsavedEditTest, YesSavesTheVendorLeftAndItsNoteAsSaveDoes)
{
    modify270WithContactAndNote();
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    click(c().cmdnext);
    expectTheSaveQuestion();
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray Dunn");
    EXPECT_EQ(storedNote(270), "Pays on the 15th Ask for Ray");
    EXPECT_EQ(vendorColumn(288, "vendcontact").toString(), "Sue");
    EXPECT_EQ(noteRows(288), 0);
    // As after Save: back in the lookup, nothing recalled.
    EXPECT_TRUE(inLookupMode());
    EXPECT_FALSE(c().cmdsave->isEnabled());
    EXPECT_EQ(module.dialogs.count("message"), 0);
}

TEST_F(UnsavedEditTest, NoMovesOnAndTheScreenBelongsToTheVendorShown)
{
    modify270WithContactAndNote();
    module.dialogs.yesNoAnswers = {Dialogs::No};
    click(c().cmdnext);
    expectTheSaveQuestion();
    // Nothing of the edit was written.
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray");
    EXPECT_EQ(storedNote(270), "Pays on the 15th");
    // Vendor 288 with its own contact and its own (empty) note, browsed, not modified.
    EXPECT_EQ(field(0), "288");
    EXPECT_EQ(field(9), "Sue");
    EXPECT_TRUE(c().notes->isVisible());
    EXPECT_EQ(c().notes->toPlainText(), "");
    EXPECT_FALSE(c().notes->isEnabled());
    EXPECT_FALSE(module.window->notes().changed());
    EXPECT_EQ(module.window->state().modifyFlag, 0);
    EXPECT_FALSE(c().fravendor->isEnabled());
    EXPECT_FALSE(c().cmdsave->isEnabled());
    EXPECT_TRUE(c().cmdmodify->isEnabled());
    EXPECT_TRUE(c().cmdnext->isEnabled());
}

TEST_F(UnsavedEditTest, AfterNoAModifyAndSaveOfTheNextVendorWritesItsOwnNoteWithoutAConflict)
{
    modify270WithContactAndNote();
    module.dialogs.yesNoAnswers = {Dialogs::No};
    click(c().cmdnext);
    click(c().cmdmodify);
    typeInto(7, "217-555-9999");
    click(c().cmdsave);
    EXPECT_EQ(module.dialogs.count("message"), 0)
        << module.dialogs.texts().join(" / ").toStdString();
    EXPECT_EQ(vendorColumn(288, "vendphone").toString(), "217-555-9999");
    EXPECT_EQ(noteRows(288), 0);
    EXPECT_EQ(storedNote(270), "Pays on the 15th");
}

TEST_F(UnsavedEditTest, CancelStaysOnTheVendorWithTheEditAndSaveThenWritesIt)
{
    modify270WithContactAndNote();
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    click(c().cmdnext);
    EXPECT_EQ(field(0), "270");
    EXPECT_EQ(field(9), "Ray Dunn");
    EXPECT_EQ(c().notes->toPlainText(), "Pays on the 15th Ask for Ray");
    EXPECT_EQ(module.window->state().modifyFlag, 1);
    EXPECT_TRUE(c().cmdsave->isEnabled());
    EXPECT_TRUE(c().cmdnext->isEnabled());
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray");
    click(c().cmdsave);
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray Dunn");
    EXPECT_EQ(storedNote(270), "Pays on the 15th Ask for Ray");
}

TEST_F(UnsavedEditTest, PreviousAsksTooAndCancelKeepsTheVendor)
{
    lookup(0, "288");
    click(c().cmdmodify);
    typeInto(9, "Susan");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    click(c().cmdprevious);
    expectTheSaveQuestion();
    EXPECT_EQ(field(0), "288");
    EXPECT_EQ(field(9), "Susan");
}

TEST_F(UnsavedEditTest, PreviousAnsweredNoShowsThePreviousVendorBrowsed)
{
    lookup(0, "270");
    click(c().cmdnext);
    click(c().cmdmodify);
    typeInto(9, "Susan");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    click(c().cmdprevious);
    EXPECT_EQ(field(0), "270");
    EXPECT_EQ(field(9), "Ray");
    EXPECT_EQ(module.window->state().modifyFlag, 0);
    EXPECT_EQ(vendorColumn(288, "vendcontact").toString(), "Sue");
}

TEST_F(UnsavedEditTest, AnUnchangedModifyMovesWithoutAQuestionAndEndsTheEdit)
{
    lookup(0, "270");
    click(c().cmdmodify);
    click(c().cmdnotes);
    click(c().cmdnext);
    EXPECT_EQ(module.dialogs.shown.size(), 0u);
    EXPECT_EQ(field(0), "288");
    EXPECT_EQ(module.window->state().modifyFlag, 0);
    EXPECT_FALSE(c().fravendor->isEnabled());
}

TEST_F(UnsavedEditTest, AFieldTypedBackToItsOldTextIsNoChange)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Raymond");
    typeInto(9, "Ray");
    click(c().cmdnext);
    EXPECT_EQ(module.dialogs.count("yesnocancel"), 0);
    EXPECT_EQ(field(0), "288");
}

TEST_F(UnsavedEditTest, AKeyTypedInTheNotesAloneAsks)
{
    lookup(0, "4605");
    click(c().cmdmodify);
    click(c().cmdnotes);
    typeNote("x");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    click(c().cmdprevious);
    expectTheSaveQuestion();
    EXPECT_EQ(field(0), "4605");
}

// Every one of the 24 fields counts as a change.
TEST_F(UnsavedEditTest, AChangeInAnyFieldAsksBeforeNext)
{
    for (int i = 0; i < VendorWindow::fieldCount; ++i) {
        SCOPED_TRACE(i);
        module.dialogs.shown.clear();
        lookup(0, "270");
        click(c().cmdmodify);
        ASSERT_TRUE(c().Text1[i]->isEnabled());
        c().Text1[i]->setText(c().Text1[i]->text() + "7");
        module.dialogs.yesNoAnswers = {Dialogs::Cancel};
        click(c().cmdnext);
        EXPECT_EQ(module.dialogs.count("yesnocancel"), 1);
        EXPECT_EQ(field(0).left(3), "270");
        module.dialogs.yesNoAnswers = {Dialogs::No};
        click(c().cmdcancel);
        ASSERT_TRUE(inLookupMode());
    }
}

TEST_F(UnsavedEditTest, CancelButtonWithAChangeAsksAndNoDropsTheEdit)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Ray Dunn");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    click(c().cmdcancel);
    expectTheSaveQuestion();
    EXPECT_TRUE(inLookupMode());
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray");
}

TEST_F(UnsavedEditTest, CancelButtonAnsweredYesSavesAndEndsInTheLookup)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Ray Dunn");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    click(c().cmdcancel);
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray Dunn");
    EXPECT_TRUE(inLookupMode());
}

TEST_F(UnsavedEditTest, CancelButtonAnsweredCancelKeepsTheEdit)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Ray Dunn");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    click(c().cmdcancel);
    EXPECT_EQ(field(9), "Ray Dunn");
    EXPECT_EQ(module.window->state().modifyFlag, 1);
}

TEST_F(UnsavedEditTest, YesWithARefusedSaveStaysWithTheEdit)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(1, "");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    click(c().cmdnext);
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text, "Vendor number and name are required.");
    EXPECT_EQ(field(0), "270");
    EXPECT_EQ(module.window->state().modifyFlag, 1);
    EXPECT_EQ(vendorColumn(270, "vendname").toString(), "Harbor Freight Lines");
}

TEST_F(UnsavedEditTest, LookupWhileAddingAsksAndCancelKeepsTheNewVendor)
{
    click(c().cmdadd);
    typeInto(0, "9100");
    typeInto(1, "New Vendor Co");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    click(c().cmdlookup);
    expectTheSaveQuestion();
    EXPECT_EQ(field(0), "9100");
    EXPECT_EQ(field(1), "New Vendor Co");
    EXPECT_EQ(module.window->state().addFlag, 1);
}

TEST_F(UnsavedEditTest, LookupWhileAddingAnsweredYesAddsTheVendor)
{
    click(c().cmdadd);
    typeInto(0, "9100");
    typeInto(1, "New Vendor Co");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    click(c().cmdlookup);
    EXPECT_EQ(vendorColumn(9100, "vendname").toString(), "New Vendor Co");
    EXPECT_TRUE(inLookupMode());
}

TEST_F(UnsavedEditTest, LookupWhileAddingAnsweredNoOpensTheLookupAndAddsNothing)
{
    click(c().cmdadd);
    typeInto(0, "9100");
    typeInto(1, "New Vendor Co");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    click(c().cmdlookup);
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_EQ(field(1), "");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 9100").toInt(), 0);
}

TEST_F(UnsavedEditTest, AnUnchangedAddOpensTheLookupWithoutAQuestion)
{
    click(c().cmdadd);
    click(c().cmdlookup);
    EXPECT_EQ(module.dialogs.shown.size(), 0u);
    EXPECT_TRUE(c().fralookup->isVisible());
}

TEST_F(UnsavedEditTest, ClosingTheWindowWithAChangeAsksAndCancelKeepsItOpen)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Ray Dunn");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    EXPECT_FALSE(module.window->close());
    expectTheSaveQuestion();
    EXPECT_TRUE(module.window->isVisible());
    EXPECT_EQ(field(9), "Ray Dunn");
}

TEST_F(UnsavedEditTest, ClosingTheWindowAnsweredYesSavesAndCloses)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Ray Dunn");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    EXPECT_TRUE(module.window->close());
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray Dunn");
}

TEST_F(UnsavedEditTest, ClosingTheWindowAnsweredNoClosesWithoutSaving)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Ray Dunn");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    EXPECT_TRUE(module.window->close());
    expectTheSaveQuestion();
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray");
}

TEST_F(UnsavedEditTest, ChangingAVendorNumberFromTheMenuAsksAndCancelKeepsTheEdit)
{
    for (const char *entry : {"mnuchavennumber", "mnumergevendor"}) {
        SCOPED_TRACE(entry);
        module.dialogs.shown.clear();
        lookup(0, "270");
        click(c().cmdmodify);
        typeInto(9, "Ray Dunn");
        module.dialogs.yesNoAnswers = {Dialogs::Cancel};
        module.window->action(QString::fromLatin1(entry))->trigger();
        QCoreApplication::processEvents();
        expectTheSaveQuestion();
        EXPECT_EQ(field(9), "Ray Dunn");
        EXPECT_EQ(module.window->state().modifyFlag, 1);
        module.dialogs.yesNoAnswers = {Dialogs::No};
        click(c().cmdcancel);
    }
}

TEST_F(UnsavedEditTest, ChangingAVendorNumberFromTheMenuAnsweredYesSavesFirst)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Ray Dunn");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    module.window->action("mnuchavennumber")->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray Dunn");
    EXPECT_TRUE(inLookupMode());
}

TEST_F(UnsavedEditTest, ChangingAVendorNumberFromTheMenuAnsweredNoDropsTheEdit)
{
    lookup(0, "270");
    click(c().cmdmodify);
    typeInto(9, "Ray Dunn");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    module.window->action("mnumergevendor")->trigger();
    QCoreApplication::processEvents();
    EXPECT_EQ(vendorColumn(270, "vendcontact").toString(), "Ray");
    EXPECT_TRUE(inLookupMode());
}

} // namespace
