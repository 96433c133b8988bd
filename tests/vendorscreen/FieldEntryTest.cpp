#include "vendorscreen/FieldEntry.h"
#include "common/Session.h"
#include "data/RecordSource.h"
#include "support/VendorScreen.h"
#include "vendorscreen/VendorFields.h"

#include <QApplication>
#include <QGroupBox>
#include <QTest>

namespace {

struct PromptCase {
    int index;
    const char *text;
};

void PrintTo(const PromptCase &c, std::ostream *os)
{
    *os << "field " << c.index;
}

class FieldPrompts : public ::testing::TestWithParam<PromptCase> {};

TEST_P(FieldPrompts, EachFieldHasItsPromptWordForWord)
{
    EXPECT_EQ(VendorFields::prompt(static_cast<VendorField>(GetParam().index)),
              QString::fromLatin1(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    Fields, FieldPrompts,
    ::testing::Values(
        PromptCase{0, "Vendor numbers must be between 0 - 99999"},
        PromptCase{1, "Vendor name is limited to 30 characters"},
        PromptCase{2, "Address 1, Address 2 and City are limited to 30 characters each"},
        PromptCase{3, "Address 1, Address 2 and City are limited to 30 characters each"},
        PromptCase{4, "Address 1, Address 2 and City are limited to 30 characters each"},
        PromptCase{5, "Type the 2-character abbreviation for the state"},
        PromptCase{6, "Type the ZIP code in XXXXX-XXXX format"},
        PromptCase{7, "Type the telephone number in XXX-XXX-XXXX format"},
        PromptCase{8, "Type the fax telephone number in XXX-XXX-XXXX format"},
        PromptCase{9, "Type the name of the person who is your contact at this company"},
        PromptCase{10, "Type the federal tax ID#"},
        PromptCase{11,
                   "Available types:  0=None   1=1099-MISC   2=1099-INT   3=1099-DIV   5-1099-NEC"},
        PromptCase{12, "Type the G/L account to which payments made to this company are posted"},
        PromptCase{13, "Type the year-to-date purchases you have made with this company (no dollar "
                       "signs, please)"},
        PromptCase{14, "Type the current outstanding balance with this company"},
        PromptCase{15, "Type the 60-day outstanding balance with this company"},
        PromptCase{16, "Type the 90+ day outstanding balance with this company"},
        PromptCase{17, "Type the terms you have with this company"},
        PromptCase{18, "Type the account number assigned to you by this vendor"},
        PromptCase{19, ""}, PromptCase{23, ""}));

class FieldEntryTest : public VendorScreen {
protected:
    void addVendors() override
    {
        VendorScreen::addVendors();
        folder.addVendor(12345, "Twelve Thousand Supplies");
    }
    void focus(int i)
    {
        c().Text1[i]->setFocus(Qt::TabFocusReason);
        QCoreApplication::processEvents();
    }
    QColor base(int i) const { return c().Text1[i]->palette().color(QPalette::Base); }
    void startAdd()
    {
        c().cmdadd->click();
        QCoreApplication::processEvents();
    }
};

TEST_F(FieldEntryTest, FocusedFieldTurnsYellowAndShowsItsPrompt)
{
    lookup(0, "100");
    c().cmdmodify->click();
    focus(7);
    EXPECT_EQ(base(7), QColor(255, 255, 0));
    EXPECT_EQ(module.window->status(), "Type the telephone number in XXX-XXX-XXXX format");
    focus(8);
    EXPECT_EQ(base(7), QColor(255, 255, 255));
    EXPECT_EQ(base(8), QColor(255, 255, 0));
}

TEST_F(FieldEntryTest, FieldsWithoutPromptKeepTheStatusLine)
{
    lookup(0, "100");
    c().cmdmodify->click();
    focus(18);
    focus(19);
    EXPECT_EQ(module.window->status(), "Type the account number assigned to you by this vendor");
}

TEST_F(FieldEntryTest, VendorNumberFieldRebindsToTheWholeTableAndEmptiesInEveryMode)
{
    c().cmdadd->click();
    RecordSource &source = module.window->datavendor();
    source.setRecordSource("select * from vendors where vendnumber >=251 order by vendnumber");
    source.refresh();
    focus(1);
    c().Text1[0]->setText("42");
    focus(0);
    EXPECT_EQ(field(0), "");
    EXPECT_EQ(module.window->datavendor().recordSource(), "vendors");
    EXPECT_EQ(module.window->datavendor().value("vendnumber").toInt(), 100);
}

TEST_F(FieldEntryTest, VendorNumberFieldInModifyModeKeepsTheSaveOnTheEditedVendor)
{
    lookup(0, "251");
    c().cmdmodify->click();
    focus(0);
    EXPECT_EQ(field(0), "");
    EXPECT_EQ(module.window->datavendor().recordSource(), "vendors");
    QTest::keyClicks(c().Text1[0], "251");
    c().Text1[7]->setText("416-555-7777");
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(vendorColumn(251, "vendphone").toString(), "416-555-7777");
    EXPECT_EQ(vendorColumn(100, "vendname").toString(), "Acme Office Supply");
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0100");
}

TEST_F(FieldEntryTest, GlFieldEmptiesOnFocusInAddMode)
{
    startAdd();
    EXPECT_EQ(field(12), "0");
    focus(12);
    EXPECT_EQ(field(12), "");
}

TEST_F(FieldEntryTest, GlFieldKeepsItsTextOnFocusInModifyMode)
{
    lookup(0, "100");
    c().cmdmodify->click();
    focus(12);
    EXPECT_EQ(field(12), "5000");
}

TEST_F(FieldEntryTest, DuplicateNumberNamesTheVendorAndHoldsTheFocus)
{
    startAdd();
    focus(0);
    QTest::keyClicks(c().Text1[0], "12345");
    focus(1);
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "This vendor number belongs to \nTwelve Thousand Supplies\nPlease try again.");
    EXPECT_EQ(module.dialogs.last()->title, "New Vendor Number");
    EXPECT_EQ(module.dialogs.last()->icon, Dialogs::Icon::Information);
    EXPECT_TRUE(c().Text1[0]->hasFocus());
    EXPECT_EQ(module.window->state().addFlag, 1);
}

TEST_F(FieldEntryTest, DuplicateNumberWithLeadingZeroIsFoundToo)
{
    startAdd();
    focus(0);
    QTest::keyClicks(c().Text1[0], "012345");
    focus(1);
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->title, "New Vendor Number");
    EXPECT_TRUE(c().Text1[0]->hasFocus());
}

TEST_F(FieldEntryTest, FreeNumberPassesWithoutMessage)
{
    startAdd();
    focus(0);
    QTest::keyClicks(c().Text1[0], "777");
    focus(1);
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_TRUE(c().Text1[1]->hasFocus());
}

class EmptyVendorFileEntry : public FieldEntryTest {
protected:
    void addVendors() override {}
};

TEST_F(EmptyVendorFileEntry, EmptyVendorFileSkipsTheDuplicateTest)
{
    startAdd();
    focus(0);
    QTest::keyClicks(c().Text1[0], "1");
    focus(1);
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_FALSE(module.window->datavendor().hasRecords());
}

TEST_F(FieldEntryTest, ZipCodeIsUpperCasedOnLeaving)
{
    startAdd();
    focus(6);
    QTest::keyClicks(c().Text1[6], "k1a 0b1");
    focus(7);
    EXPECT_EQ(field(6), "K1A 0B1");
}

TEST_F(FieldEntryTest, FunctionKeyTextPrependsInTelephoneAndReplacesInCity)
{
    startAdd();
    focus(7);
    c().Text1[7]->setText("1234");
    QTest::keyClick(c().Text1[7], Qt::Key_F6);
    EXPECT_EQ(field(7), "555-1234");
    focus(4);
    c().Text1[4]->setText("Old town");
    QTest::keyClick(c().Text1[4], Qt::Key_F6);
    EXPECT_EQ(field(4), "555-");
    QTest::keyClick(c().Text1[4], Qt::Key_F1);
    EXPECT_EQ(field(4), "Springfield");
}

// Each field that takes the function-key texts, and what it does with them.
TEST_F(FieldEntryTest, FunctionKeyTextReplacesCityStateAndZipAndGoesInFrontOfPhoneAndFax)
{
    struct Case {
        int field;
        const char *before;
        const char *afterF6;
    };
    const Case cases[] = {
        {4, "Old town", "555-"}, {5, "IL", "555-"},       {6, "62704", "555-"},
        {7, "1234", "555-1234"}, {8, "9876", "555-9876"}, {3, "Suite 2", "Suite 2"},
        {9, "Bill", "Bill"},
    };
    startAdd();
    for (const Case &k : cases) {
        focus(k.field);
        c().Text1[k.field]->setText(QString::fromLatin1(k.before));
        QTest::keyClick(c().Text1[k.field], Qt::Key_F6);
        EXPECT_EQ(field(k.field), k.afterF6) << "field " << k.field;
    }
    focus(5);
    QTest::keyClick(c().Text1[5], Qt::Key_F1);
    EXPECT_EQ(field(5), "Springfield");
    focus(8);
    c().Text1[8]->setText("0100");
    QTest::keyClick(c().Text1[8], Qt::Key_F1);
    EXPECT_EQ(field(8), "Springfield0100");
}

TEST_F(FieldEntryTest, FunctionKeyTextIsIgnoredByOtherFieldsAndEmptyTextsDoNothing)
{
    startAdd();
    focus(1);
    c().Text1[1]->setText("Name");
    QTest::keyClick(c().Text1[1], Qt::Key_F6);
    EXPECT_EQ(field(1), "Name");
    focus(7);
    c().Text1[7]->setText("1234");
    QTest::keyClick(c().Text1[7], Qt::Key_F9);
    EXPECT_EQ(field(7), "1234");
}

TEST_F(FieldEntryTest, UnknownGlAccountSaysSoAndHoldsTheFocus)
{
    startAdd();
    focus(12);
    QTest::keyClicks(c().Text1[12], "9999");
    focus(13);
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text, "# 9999 does not exist");
    EXPECT_EQ(module.dialogs.last()->title, "Invalid G/L Account");
    EXPECT_EQ(module.dialogs.last()->icon, Dialogs::Icon::Critical);
    EXPECT_TRUE(c().Text1[12]->hasFocus());
}

TEST_F(FieldEntryTest, KnownGlAccountLetsTheFocusGo)
{
    startAdd();
    focus(12);
    QTest::keyClicks(c().Text1[12], "5000");
    focus(13);
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_TRUE(c().Text1[13]->hasFocus());
    EXPECT_EQ(module.session.accountName, "Office supplies and postage");
}

TEST_F(FieldEntryTest, EnterInAnyFieldMovesToTheNextAndNeverReachesTheField)
{
    lookup(0, "100");
    c().cmdmodify->click();
    for (int i = 1; i < 11; ++i) {
        focus(i);
        const QString before = field(i);
        QTest::keyClick(c().Text1[i], Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return c().Text1[i + 1]->hasFocus(); }, 2000)) << i;
        EXPECT_EQ(field(i), before) << i;
    }
}

TEST_F(FieldEntryTest, F5InTheNumberFieldRunsTheVendorLookupProgram)
{
    folder.writeProgram("venlookp.exe", "echo ran >> lookups.txt");
    folder.writeProgram("gllookup.exe", "echo gl >> lookups.txt");
    startAdd();
    focus(0);
    QTest::keyClick(c().Text1[0], Qt::Key_F5);
    focus(12);
    QTest::keyClick(c().Text1[12], Qt::Key_F5);
    EXPECT_EQ(folder.readFile("lookups.txt"), "ran\ngl\n");
}

TEST_F(FieldEntryTest, LookupProgramThatFailsGivesTheWarning)
{
    folder.writeProgram("venlookp.exe", "exit 3");
    startAdd();
    focus(0);
    QTest::keyClick(c().Text1[0], Qt::Key_F5);
    EXPECT_EQ(module.dialogs.last()->text,
              "WARNING - PREMATURE USER TERMINATION OF BACKUP PROCEDURE");
    EXPECT_TRUE(folder.readFile("lastbkup.dat").contains("Backup/Restore"));
}

} // namespace
