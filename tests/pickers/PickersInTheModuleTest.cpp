// The pickers run as the module runs them: real child processes of the real module, started
// by F5 from the links in the company's data folder. Each picker is told what to type by the
// keys of APMASTER_PICKER_KEYS, which it types into its own window as a user would.
#include "RunnerPlacement.h"
#include "common/PickedAnswer.h"
#include "support/VendorScreen.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QTemporaryDir>
#include <QTest>

namespace {

class PickersInTheModule : public VendorScreen {
protected:
    QTemporaryDir cacheHome; // the pickers keep their indexes here, not in the user's cache

    void SetUp() override
    {
        VendorScreen::SetUp();
        qputenv("XDG_CACHE_HOME", QFile::encodeName(cacheHome.path()));
        const QString programs = QFileInfo(QStringLiteral(VENLOOKP_PROGRAM)).path();
        const QString placed = placePickers(folder.path(), programs);
        ASSERT_TRUE(placed.contains("venlookp.exe -> ")) << placed.toStdString();
        ASSERT_TRUE(placed.contains("gllookup.exe -> ")) << placed.toStdString();
    }
    void TearDown() override
    {
        qunsetenv("APMASTER_PICKER_KEYS");
        qunsetenv("XDG_CACHE_HOME");
    }

    void typeInPicker(const char *keys) { qputenv("APMASTER_PICKER_KEYS", keys); }
    void focus(int i)
    {
        c().Text1[i]->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
    }
    void pressF5(QWidget *widget)
    {
        QTest::keyClick(widget, Qt::Key_F5);
        QCoreApplication::processEvents();
    }
    bool warned() const
    {
        for (const FakeDialogs::Shown &shown : module.dialogs.shown)
            if (shown.title == "CAUTION")
                return true;
        return false;
    }
};

TEST_F(PickersInTheModule, F5InTheLookupWithANameTypedShowsThatVendor)
{
    typeInPicker("northern{ENTER}");
    c().lookupinput->setFocus(Qt::TabFocusReason);
    pressF5(c().lookupinput);
    EXPECT_FALSE(warned());
    EXPECT_EQ(field(0), "251");
    EXPECT_EQ(field(1), "Northern Lights Printing");
    EXPECT_TRUE(c().fralookup->isHidden());
    EXPECT_TRUE(c().Option1[0]->isChecked());
    EXPECT_FALSE(QFileInfo::exists(PickedAnswer::pathFor(QCoreApplication::applicationPid())));
}

TEST_F(PickersInTheModule, F5InTheLookupFindsAVendorByPartOfItsCityIgnoringCase)
{
    typeInPicker("TORON{ENTER}");
    c().lookupinput->setFocus(Qt::TabFocusReason);
    pressF5(c().lookupinput);
    EXPECT_EQ(field(0), "251");
    EXPECT_EQ(field(4), "Toronto");
}

TEST_F(PickersInTheModule, F5InTheNumberFieldPutsThePickedNumberThereAndTheFieldsCheckShowsIt)
{
    c().cmdadd->click();
    focus(0);
    typeInPicker("zenith{ENTER}");
    pressF5(c().Text1[0]);
    EXPECT_EQ(field(0), "300");
    // Taken as a typed number with Enter: the number field is left and its check names the
    // vendor the number belongs to, holding the focus there.
    ASSERT_TRUE(QTest::qWaitFor([&] { return module.dialogs.count() > 0; }, 5000));
    EXPECT_EQ(module.dialogs.last()->text,
              "This vendor number belongs to \nZenith Hall Rentals\nPlease try again.");
    EXPECT_EQ(module.dialogs.last()->title, "New Vendor Number");
    EXPECT_FALSE(warned());
    EXPECT_TRUE(QTest::qWaitFor([&] { return c().Text1[0]->hasFocus(); }, 2000));
}

TEST_F(PickersInTheModule, F5InTheNumberFieldOfAVendorBeingChangedTakesTheNumberAndMovesOn)
{
    lookup(0, "100");
    c().cmdmodify->click();
    focus(0);
    typeInPicker("o'bri{ENTER}");
    pressF5(c().Text1[0]);
    EXPECT_EQ(field(0), "250");
    EXPECT_TRUE(QTest::qWaitFor([&] { return c().Text1[1]->hasFocus(); }, 5000));
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(PickersInTheModule, F5InTheGlFieldPutsTheAccountThereAndTheCheckAcceptsIt)
{
    c().cmdadd->click();
    focus(12);
    typeInPicker("hall{ENTER}");
    pressF5(c().Text1[12]);
    EXPECT_EQ(field(12), "5100");
    EXPECT_TRUE(QTest::qWaitFor([&] { return c().Text1[13]->hasFocus(); }, 5000));
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(module.session.messageText, "5100");
    EXPECT_EQ(module.session.accountName, "Hall rental");
}

TEST_F(PickersInTheModule, F5InTheGlFieldArrowsMoveThroughTheListInNameOrder)
{
    c().cmdadd->click();
    focus(12);
    typeInPicker("{DOWN}{DOWN}{UP}{ENTER}");
    pressF5(c().Text1[12]);
    // Name order: Cash (1000), Hall rental (5100), Office supplies (5000); one line down.
    EXPECT_EQ(field(12), "5100");
    EXPECT_TRUE(QTest::qWaitFor([&] { return c().Text1[13]->hasFocus(); }, 5000));
}

TEST_F(PickersInTheModule, EscapeInThePickerLeavesTheFieldAsItWasWithoutAWarning)
{
    c().cmdadd->click();
    focus(12);
    QTest::keyClicks(c().Text1[12], "1000");
    typeInPicker("hall{ESC}");
    pressF5(c().Text1[12]);
    EXPECT_EQ(field(12), "1000");
    EXPECT_TRUE(c().Text1[12]->hasFocus());
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(PickersInTheModule, SearchTextWithQuotesPercentUnderscoreAndSqlPicksNothingAndHarmsNothing)
{
    c().lookupinput->setFocus(Qt::TabFocusReason);
    typeInPicker("x{%}_'\"; drop table vendors; --{ENTER}{ESC}");
    pressF5(c().lookupinput);
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_FALSE(c().fralookup->isHidden());
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors").toInt(), 4);
    // A percent sign and an underscore are no wildcards: "100%" is the number 100.
    typeInPicker("100{%}_{ENTER}");
    pressF5(c().lookupinput);
    EXPECT_EQ(field(1), "Acme Office Supply");
}

class PickersWithoutRows : public PickersInTheModule {
protected:
    void addVendors() override { folder.exec("gl.mdb", "delete from gl0"); }
};

TEST_F(PickersWithoutRows, ACompanyWithoutVendorsPicksNothingAndGivesNoWarning)
{
    c().lookupinput->setFocus(Qt::TabFocusReason);
    typeInPicker("acme{ENTER}{BACKSPACE}{BACKSPACE}{BACKSPACE}{BACKSPACE}{ENTER}{ESC}");
    pressF5(c().lookupinput);
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_FALSE(c().fralookup->isHidden());
    EXPECT_EQ(c().lookupinput->text(), "");
}

TEST_F(PickersWithoutRows, AChartWithoutAccountsPicksNothingAndTheFieldKeepsItsText)
{
    c().cmdadd->click();
    focus(12);
    QTest::keyClicks(c().Text1[12], "77");
    typeInPicker("{ENTER}{ESC}");
    pressF5(c().Text1[12]);
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(field(12), "77");
    EXPECT_TRUE(c().Text1[12]->hasFocus());
}

TEST_F(PickersWithoutRows, AMissingChartOfAccountsEndsThePickerWithTheModulesWarning)
{
    folder.removeDatabase("gl.mdb");
    c().cmdadd->click();
    focus(12);
    typeInPicker("{ENTER}");
    pressF5(c().Text1[12]);
    ASSERT_GE(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.shown.front().text,
              "WARNING - PREMATURE USER TERMINATION OF BACKUP PROCEDURE");
    EXPECT_EQ(field(12), "");
}

} // namespace
