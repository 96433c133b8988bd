#include "vendorscreen/VendorLookup.h"
#include "data/RecordSource.h"
#include "support/VendorScreen.h"

#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QTest>

namespace {

class VendorLookupTest : public VendorScreen {
protected:
    void addVendors() override
    {
        VendorScreen::addVendors();
        folder.exec(
            "ap.mdb",
            "insert into vendors (vendnumber, vendname, vendcontact, vendglacct) values "
            "(260, 'O''Briens Bakery', 'Carl', 5000.5), (270, 'Obelisk Signs', 'Dora', 5000)");
        folder.exec(
            "ap.mdb",
            "insert into invoices (vendnumber, invnumber, invchecknumber, invproduct) values "
            "(251, 'INV-7', 1001, 'Paper'), (100, 'INV-8', 1002, 'Toner'), "
            "(300, 'INV-9', 1002, 'Chairs')");
    }
};

struct StatementCase {
    int method;
    const char *entry;
    const char *statement;
};

void PrintTo(const StatementCase &c, std::ostream *os)
{
    *os << "method " << c.method << " '" << c.entry << "'";
}

class LookupStatements : public ::testing::TestWithParam<StatementCase> {};

TEST_P(LookupStatements, EachMethodBuildsItsStatement)
{
    EXPECT_EQ(VendorLookup::statement(GetParam().method, QString::fromLatin1(GetParam().entry)),
              QString::fromLatin1(GetParam().statement));
}

INSTANTIATE_TEST_SUITE_P(
    Methods, LookupStatements,
    ::testing::Values(
        StatementCase{0, "250", "select * from vendors where vendnumber >=250 order by vendnumber"},
        StatementCase{0, "abc", "select * from vendors where vendnumber >=0 order by vendnumber"},
        StatementCase{1, "Acme",
                      "select * from vendors where vendname >= 'Acme' order by vendname"},
        StatementCase{2, "Bill",
                      "select * from vendors where vendcontact >= 'Bill' order by vendcontact"},
        StatementCase{
            3, "INV-7",
            "select * from invoices, vendors, vendors inner join invoices on "
            "invoices.vendnumber = vendors.vendnumber where invoices.invnumber = 'INV-7'"},
        StatementCase{
            4, "1002",
            "select * from invoices, vendors, invoices inner join vendors on "
            "invoices.vendnumber = vendors.vendnumber where invoices.invchecknumber = 1002"},
        StatementCase{5, "Pa",
                      "select * from invoices, vendors, invoices inner join vendors on "
                      "invoices.vendnumber = vendors.vendnumber where invoices.invproduct >= 'Pa' "
                      "order by invproduct"},
        StatementCase{6, "5000", "select * from vendors where vendglacct = 5000 order by vendname"},
        StatementCase{6, "5000.5",
                      "select * from vendors where vendglacct = 5000.5 order by vendname"},
        StatementCase{6, "x", "select * from vendors where vendglacct = 0 order by vendname"}));

TEST_F(VendorLookupTest, NumberFindsThatVendorOrTheNextHigherAndNextWalksInNumberOrder)
{
    lookup(0, "252");
    EXPECT_EQ(field(0), "260");
    c().cmdnext->click();
    EXPECT_EQ(field(0), "270");
    c().cmdnext->click();
    EXPECT_EQ(field(0), "300");
    lookup(0, "250");
    EXPECT_EQ(field(0), "250");
    EXPECT_EQ(module.window->state().lastLookupNumber, 250);
}

TEST_F(VendorLookupTest, NameWithApostropheIsDoubledInTheEntryAndFindsFromThatNameOn)
{
    lookup(1, "O'Brien");
    EXPECT_EQ(c().lookupinput->text(), "O''Brien");
    EXPECT_EQ(field(1), "O'Brien Catering");
    c().cmdnext->click();
    EXPECT_EQ(field(1), "O'Briens Bakery");
    c().cmdnext->click();
    EXPECT_EQ(field(1), "Obelisk Signs");
    EXPECT_EQ(module.window->state().lastLookupStatement,
              "select * from vendors where vendname >= 'O''Brien' order by vendname");
}

TEST_F(VendorLookupTest, OnlyTheFirstApostropheIsDoubled)
{
    EXPECT_EQ(VendorLookup::doubleFirstApostrophe("O'Br'ien"), "O''Br'ien");
    lookup(1, "O'Br'ien");
    EXPECT_EQ(c().lookupinput->text(), "O''Br'ien");
    EXPECT_EQ(module.dialogs.count(), 0);
    // "O'Br'ien" as typed sorts just below "O'Brien Catering".
    EXPECT_EQ(field(1), "O'Brien Catering");
}

TEST_F(VendorLookupTest, ContactLooksUpFromTheGivenValueOn)
{
    lookup(2, "C");
    EXPECT_EQ(field(9), "Carl");
    c().cmdnext->click();
    EXPECT_EQ(field(9), "Dora");
}

TEST_F(VendorLookupTest, InvoiceNumberThatDoesNotExistSaysNoRecord)
{
    lookup(3, "NO-SUCH");
    EXPECT_EQ(module.dialogs.last()->text, "No record to display");
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_FALSE(c().cmdnext->isEnabled());
}

TEST_F(VendorLookupTest, InvoiceNumberFindsItsVendor)
{
    lookup(3, "INV-7");
    EXPECT_EQ(field(0), "251");
    EXPECT_EQ(field(1), "Northern Lights Printing");
}

TEST_F(VendorLookupTest, CheckNumberFindsEveryVendorItPaid)
{
    lookup(4, "1002");
    QStringList found{field(0)};
    c().cmdnext->click();
    found << field(0);
    found.sort();
    EXPECT_EQ(found.join(','), "100,300");
}

TEST_F(VendorLookupTest, ProductLooksUpFromTheGivenValueInProductOrder)
{
    lookup(5, "P");
    EXPECT_EQ(field(0), "251");
    c().cmdnext->click();
    EXPECT_EQ(field(0), "100");
}

TEST_F(VendorLookupTest, GlAccountFindsOnlyThatAccountInNameOrder)
{
    lookup(6, "5000");
    QStringList names{field(1)};
    while (true) {
        c().cmdnext->click();
        if (c().fralookup->isVisible())
            break;
        names << field(1);
    }
    EXPECT_EQ(names.join('|'),
              "Acme Office Supply|Northern Lights Printing|Obelisk Signs|Zenith Hall Rentals");
}

TEST_F(VendorLookupTest, SqlFragmentsInTheEntryNeverChangeTheStatement)
{
    const QString entries[] = {"x' or 1=1 --", "a'b' or vendname > '", "'; delete from vendors; --",
                               "Robert'); drop table vendors;--", QString(500, QChar('A'))};
    for (const QString &entry : entries) {
        for (int method : {1, 2, 3, 5}) {
            lookup(method, entry);
            EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors").toInt(), 6);
            c().cmdcancel->click();
        }
    }
    for (const auto &shown : module.dialogs.shown)
        EXPECT_EQ(shown.text, "No record to display") << shown.text.toStdString();
}

TEST_F(VendorLookupTest, TextInANumericMethodReadsAsZero)
{
    lookup(0, "abc");
    EXPECT_EQ(field(0), "100");
    lookup(4, "'; drop table invoices");
    EXPECT_EQ(module.dialogs.last()->text, "No record to display");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from invoices").toInt(), 3);
    lookup(6, "five thousand");
    EXPECT_EQ(module.dialogs.last()->text, "No record to display");
}

TEST_F(VendorLookupTest, ByNameCheckedPresetsVendorName)
{
    module.window->action("byname")->trigger();
    c().cmdcancel->click();
    EXPECT_TRUE(c().Option1[1]->isChecked());
    module.window->action("bynumber")->trigger();
    c().cmdcancel->click();
    EXPECT_TRUE(c().Option1[0]->isChecked());
}

TEST_F(VendorLookupTest, EnterInTheEntryFieldPressesGo)
{
    c().Option1[1]->setChecked(true);
    c().lookupinput->setFocus();
    QTest::keyClicks(c().lookupinput, "Zen");
    QTest::keyClick(c().lookupinput, Qt::Key_Return);
    EXPECT_EQ(field(0), "300");
}

TEST_F(VendorLookupTest, EntryFieldEmptiesAndTurnsYellowOnFocusWithItsPrompt)
{
    c().lookupinput->setText("old");
    c().Option1[2]->setFocus();
    c().lookupinput->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(c().lookupinput->text(), "");
    EXPECT_EQ(c().lookupinput->palette().color(QPalette::Base), QColor(255, 255, 0));
    EXPECT_EQ(module.window->status(),
              "Type a suitable entry for the lookup method chosen; then press ENTER.");
    c().Option1[2]->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(c().lookupinput->palette().color(QPalette::Base), QColor(255, 255, 255));
}

TEST_F(VendorLookupTest, CancelLookupHidesThePanelOnly)
{
    c().cmdcancellookup->click();
    EXPECT_FALSE(c().fralookup->isVisible());
    EXPECT_FALSE(c().fravendor->isEnabled());
    EXPECT_TRUE(c().cmdadd->isEnabled());
}

TEST_F(VendorLookupTest, F5InTheEntryRunsTheVendorLookupProgram)
{
    folder.writeProgram("venlookp.exe", "echo ran > venlookp.txt");
    c().lookupinput->setFocus();
    QTest::keyClick(c().lookupinput, Qt::Key_F5);
    EXPECT_EQ(folder.readFile("venlookp.txt"), "ran\n");
}

} // namespace
