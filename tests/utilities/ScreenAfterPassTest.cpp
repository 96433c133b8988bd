#include "utilities/UtilitiesFixture.h"

#include <QTest>

namespace {

// The vendor on the screen when a pass rewrites the vendor file.
class ScreenAfterPassTest : public UtilitiesFixture {
protected:
    void click(QPushButton *button)
    {
        QTest::mouseClick(button, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    void typeInto(int field, const QString &text)
    {
        QLineEdit *box = c().Text1[field];
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_Backspace);
        QTest::keyClicks(box, text);
    }
    void zero(int answer = Dialogs::Yes)
    {
        module.dialogs.yesNoAnswers.push_back(answer);
        menu("eoyzero");
    }
    void recalculate()
    {
        invoice(100, 70, 20250301, 70, 20250315);
        module.dialogs.inputAnswers = {"20250101", "20251231"};
        module.dialogs.yesNoAnswers.push_back(Dialogs::Yes);
        menu("mnurecalc");
    }
};

TEST_F(ScreenAfterPassTest, AfterZeroYtdTheVendorShownHasItsNewYtd)
{
    lookup(0, "100");
    ASSERT_EQ(field(13), "1234.50");
    zero();
    EXPECT_EQ(field(0), "100");
    EXPECT_EQ(field(13), "0.00");
    EXPECT_EQ(field(1), "Acme Office Supply");
}

TEST_F(ScreenAfterPassTest, AfterZeroYtdASaveMeetsNoOtherUsersChange)
{
    lookup(0, "100");
    zero();
    click(c().cmdmodify);
    typeInto(7, "217-555-0101");
    click(c().cmdsave);
    EXPECT_EQ(module.dialogs.count("message"), 0)
        << module.dialogs.texts().join(" / ").toStdString();
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0101");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 0);
}

TEST_F(ScreenAfterPassTest, ZeroYtdInModifyModeWithoutAChangeKeepsModifyingTheNewValues)
{
    lookup(0, "100");
    click(c().cmdmodify);
    zero();
    EXPECT_EQ(module.dialogs.count("yesnocancel"), 0);
    EXPECT_EQ(field(13), "0.00");
    EXPECT_EQ(module.window->state().modifyFlag, 1);
    typeInto(7, "217-555-0102");
    click(c().cmdsave);
    EXPECT_EQ(module.dialogs.count("message"), 0);
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0102");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 0);
}

TEST_F(ScreenAfterPassTest, ZeroYtdAnsweredNoLeavesTheScreenAsItWas)
{
    lookup(0, "100");
    zero(Dialogs::No);
    EXPECT_EQ(field(13), "1234.50");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 1234.5);
}

TEST_F(ScreenAfterPassTest, AfterARecalculationTheVendorShownHasItsNewYtd)
{
    lookup(0, "100");
    recalculate();
    EXPECT_EQ(field(0), "100");
    EXPECT_EQ(field(13), "70.00");
    click(c().cmdmodify);
    typeInto(9, "Bill Jones");
    click(c().cmdsave);
    EXPECT_EQ(module.dialogs.count("message"), 0)
        << module.dialogs.texts().join(" / ").toStdString();
    EXPECT_EQ(vendorColumn(100, "vendcontact").toString(), "Bill Jones");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 70);
}

TEST_F(ScreenAfterPassTest, APassWithTheLookupOpenShowsNothing)
{
    recalculate();
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_EQ(field(0), "");
    EXPECT_EQ(module.dialogs.count("message"), 0);
}

TEST_F(ScreenAfterPassTest, APassWhileAChangedVendorIsOnTheScreenAsksFirstAndCancelRunsNothing)
{
    lookup(0, "100");
    click(c().cmdmodify);
    typeInto(9, "Bill Jones");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    menu("eoyzero");
    ASSERT_EQ(module.dialogs.shown.size(), 1u);
    EXPECT_EQ(module.dialogs.shown[0].kind, "yesnocancel");
    EXPECT_EQ(module.dialogs.shown[0].text, "Save the changes to this vendor?");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 1234.5);
    EXPECT_EQ(field(9), "Bill Jones");
    EXPECT_EQ(module.window->state().modifyFlag, 1);
}

TEST_F(ScreenAfterPassTest, APassAnsweredYesSavesTheVendorThenRuns)
{
    lookup(0, "100");
    click(c().cmdmodify);
    typeInto(9, "Bill Jones");
    module.dialogs.yesNoAnswers = {Dialogs::Yes, Dialogs::Yes};
    menu("eoyzero");
    EXPECT_EQ(vendorColumn(100, "vendcontact").toString(), "Bill Jones");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 0);
    EXPECT_TRUE(c().fralookup->isVisible());
}

TEST_F(ScreenAfterPassTest, APassAnsweredNoRunsAndShowsTheVendorAsStored)
{
    lookup(0, "100");
    click(c().cmdmodify);
    typeInto(9, "Bill Jones");
    module.dialogs.yesNoAnswers = {Dialogs::No, Dialogs::Yes};
    menu("eoyzero");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 0);
    EXPECT_EQ(vendorColumn(100, "vendcontact").toString(), "Bill");
    EXPECT_EQ(field(9), "Bill");
    EXPECT_EQ(field(13), "0.00");
}

TEST_F(ScreenAfterPassTest, TheRecalculationAsksToSaveAChangedVendorFirst)
{
    lookup(0, "100");
    click(c().cmdmodify);
    typeInto(9, "Bill Jones");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    menu("mnurecalc");
    EXPECT_EQ(module.dialogs.count("yesnocancel"), 1);
    EXPECT_EQ(module.dialogs.count("input"), 0);
}

} // namespace
