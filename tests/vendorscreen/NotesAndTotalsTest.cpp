#include "lists/OpenInvoiceTotals.h"
#include "lists/VendorNotes.h"
#include "support/VendorScreen.h"

#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTest>

namespace {

class NotesTest : public VendorScreen {};

TEST_F(NotesTest, VendorWithoutNotesInViewModeShowsAnEmptyUnchangedBox)
{
    lookup(0, "250");
    c().notes->setPlainText("left over");
    c().cmdnotes->click();
    EXPECT_TRUE(c().notes->isVisible());
    EXPECT_EQ(c().notes->toPlainText(), "");
    EXPECT_FALSE(c().notes->isEnabled());
    EXPECT_EQ(module.window->notes().changed(), false);
    EXPECT_FALSE(c().grid1->isVisible());
    EXPECT_FALSE(c().grid2->isVisible());
    EXPECT_EQ(c().cmdsplit->text(), "Show Split Detail");
    EXPECT_TRUE(c().cmdnotes->isEnabled());
}

TEST_F(NotesTest, VendorWithoutNotesInModifyModeGetsTheFocusInTheBox)
{
    lookup(0, "250");
    c().cmdmodify->click();
    c().cmdnotes->click();
    QCoreApplication::processEvents();
    EXPECT_TRUE(c().notes->isEnabled());
    EXPECT_TRUE(c().notes->hasFocus());
    EXPECT_EQ(c().notes->palette().color(QPalette::Base), QColor(255, 255, 0));
}

TEST_F(NotesTest, NewVendorInAddModeGetsTheFocusInTheBox)
{
    c().cmdadd->click();
    c().Text1[0]->setText("900");
    c().cmdnotes->click();
    QCoreApplication::processEvents();
    EXPECT_TRUE(c().notes->hasFocus());
}

TEST_F(NotesTest, NullNotesShowAsEmptyText)
{
    folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values (250, null)");
    lookup(0, "250");
    c().cmdnotes->click();
    EXPECT_EQ(c().notes->toPlainText(), "");
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(NotesTest, ADatabaseErrorInTheNotesButtonIsReportedAndTheProgramGoesOn)
{
    lookup(0, "250");
    folder.exec("ap.mdb", "drop table vendnotes");
    c().cmdnotes->click();
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "Code 3078 near 0Unexpected problem... Call Velmora Data.");
    EXPECT_EQ(module.dialogs.last()->title, "DEMO @ Apmaster");
    EXPECT_TRUE(c().cmdnotes->isEnabled());
    // The screen still works: the next vendor is shown.
    c().cmdnext->click();
    EXPECT_EQ(field(0), "251");
}

TEST_F(NotesTest, TheCaptionOverTheBoxSaysNotesNotTheLastList)
{
    lookup(0, "250");
    c().cmdunpaid->click();
    ASSERT_EQ(c().gridcaption->text(), "Unpaid Invoices");
    c().cmdnotes->click();
    EXPECT_EQ(c().gridcaption->text(), "Notes");
}

TEST_F(NotesTest, StoredNotesAreShown)
{
    folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values (250, 'Call before "
                          "delivery\nGate code 42')");
    lookup(0, "250");
    c().cmdnotes->click();
    EXPECT_EQ(c().notes->toPlainText(), "Call before delivery\nGate code 42");
}

TEST_F(NotesTest, TypingInTheBoxMarksTheNotesChanged)
{
    lookup(0, "250");
    c().cmdmodify->click();
    c().cmdnotes->click();
    QTest::keyClicks(c().notes, "x");
    EXPECT_EQ(module.window->notes().changed(), true);
    EXPECT_EQ(c().notes->toPlainText(), "x");
}

TEST_F(NotesTest, NoVendorNumberDoesNothing)
{
    c().cmdnotes->click();
    EXPECT_FALSE(c().notes->isVisible());
    EXPECT_TRUE(c().cmdnotes->isEnabled());
}

TEST_F(NotesTest, BoxTurnsWhiteWhenLeft)
{
    lookup(0, "250");
    c().cmdmodify->click();
    c().cmdnotes->click();
    QCoreApplication::processEvents();
    c().Text1[1]->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(c().notes->palette().color(QPalette::Base), QColor(255, 255, 255));
}

class TotalsTest : public VendorScreen {
protected:
    void addVendors() override
    {
        VendorScreen::addVendors();
        // The fixed clock reads 21 November 2026.
        folder.exec(
            "ap.mdb",
            "insert into invoices (vendnumber, invnumber, invdate, invamount, invstatus) values "
            "(100, 'D31', 20261231, 10.10, 4), (100, 'J1', 20270101, 20.20, 1), "
            "(100, 'J2', 20260101, 1.01, 2), (100, 'X0', 20250601, 5, 3), "
            "(100, 'Z', 20260601, 100, 0)");
    }
    void totalsFor(const QString &number)
    {
        c().Text1[0]->setText(number);
        module.window->totals().compute();
    }
};

TEST_F(TotalsTest, VendorWithoutOpenInvoicesHasZeroNotNull)
{
    totalsFor("250");
    EXPECT_EQ(module.window->totals().openTotal(), 0.0);
    EXPECT_EQ(module.window->totals().yearTotal(), 0.0);
}

TEST_F(TotalsTest, OpenTotalSumsStatusOneToThree)
{
    totalsFor("100");
    EXPECT_DOUBLE_EQ(module.window->totals().openTotal(), 26.21);
}

TEST_F(TotalsTest, DecemberThirtyFirstCountsAndNextJanuaryFirstDoesNot)
{
    totalsFor("100");
    EXPECT_DOUBLE_EQ(module.window->totals().yearTotal(), 111.11);
}

TEST_F(TotalsTest, StatusLineIsRestoredAfterwards)
{
    module.window->setStatus("before");
    totalsFor("100");
    EXPECT_EQ(module.window->status(), "before");
}

TEST_F(TotalsTest, NumberBelowOneKeepsTotalsAndTheRetrievingMessage)
{
    totalsFor("100");
    module.window->setStatus("before");
    totalsFor("0");
    EXPECT_EQ(module.window->status(), "Retrieving open invoices... one moment please...");
    EXPECT_DOUBLE_EQ(module.window->totals().openTotal(), 26.21);
}

} // namespace
