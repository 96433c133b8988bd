#include "frmmisc/UserFieldsFixture.h"

namespace {

class UserFieldsRenameTest : public UserFieldsFixture {
protected:
    void SetUp() override
    {
        UserFieldsFixture::SetUp();
        w = openFor("100");
        ASSERT_NE(w, nullptr);
    }
    void doubleClick(int field)
    {
        QTest::mouseDClick(w->controls().lbldescrip[field], Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    QString label(int field) const { return w->controls().lbldescrip[field]->text(); }
    bool reminderShown() const { return !w->controls().lblreminder->isHidden(); }

    UserFieldsWindow *w = nullptr;
};

TEST_F(UserFieldsRenameTest, ADoubleClickAsksWithThePromptTitleAndTheTrimmedDescription)
{
    module.dialogs.inputAnswers = {"Account rep"};
    doubleClick(2);
    ASSERT_EQ(module.dialogs.count("input"), 1);
    EXPECT_EQ(module.dialogs.shown[0].title, "Misc field# 3");
    EXPECT_EQ(module.dialogs.shown[0].text,
              "Type the new description for this data field and click OK.\nPress ENTER to accept "
              "the default.\n\nLimit: 20 characters in length");
    ASSERT_EQ(module.dialogs.inputDefaults.size(), 1u);
    EXPECT_EQ(module.dialogs.inputDefaults[0], "Sales rep");
    EXPECT_EQ(label(2), "Account rep");
}

TEST_F(UserFieldsRenameTest, ATwentyFiveCharacterAnswerIsStoredAsItsFirstTwentyTrimmed)
{
    module.dialogs.inputAnswers = {"Insurance renewal   due!!"};
    doubleClick(0);
    EXPECT_EQ(label(0), "Insurance renewal");
    w->controls().cmdsave->click();
    EXPECT_EQ(folder.scalar("ap.mdb", "select miscdesc1 from miscinfo").toString(),
              "Insurance renewal");
}

TEST_F(UserFieldsRenameTest, AChangedDescriptionShowsTheReminder)
{
    module.dialogs.inputAnswers = {"Policy ends"};
    doubleClick(0);
    EXPECT_TRUE(reminderShown());
}

TEST_F(UserFieldsRenameTest, TheSameDescriptionAgainShowsNoReminder)
{
    module.dialogs.inputAnswers = {"Insurance expiry"};
    doubleClick(0);
    EXPECT_FALSE(reminderShown());
    EXPECT_EQ(label(0), "Insurance expiry");
}

TEST_F(UserFieldsRenameTest, AnEmptyAnswerAsksWhetherToDeleteAndNoKeepsTheDescription)
{
    module.dialogs.inputAnswers = {""};
    module.dialogs.yesNoAnswers = {Dialogs::No};
    doubleClick(1);
    ASSERT_EQ(module.dialogs.count("yesno"), 1);
    EXPECT_EQ(module.dialogs.last()->text, "Do you want to delete the description?");
    EXPECT_EQ(module.dialogs.last()->buttons, (QStringList{"Yes", "No"}));
    EXPECT_EQ(module.dialogs.last()->defaultAnswer, Dialogs::No);
    EXPECT_EQ(module.dialogs.last()->title, "Yes/No?");
    EXPECT_EQ(module.session.lastYesNo, Dialogs::No);
    EXPECT_EQ(label(1), "W-9 on file");
    EXPECT_FALSE(reminderShown());
}

TEST_F(UserFieldsRenameTest, AnEmptyAnswerAndYesClearsTheDescription)
{
    module.dialogs.inputAnswers = {""};
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    doubleClick(1);
    EXPECT_EQ(module.session.lastYesNo, Dialogs::Yes);
    EXPECT_EQ(label(1), "");
    EXPECT_FALSE(reminderShown());
    w->controls().cmdsave->click();
    EXPECT_EQ(folder.scalar("ap.mdb", "select miscdesc2 from miscinfo").toString(), "");
}

TEST_F(UserFieldsRenameTest, F2InARowRenamesThatRowsDescription)
{
    module.dialogs.inputAnswers = {"Renamed"};
    w->controls().txtsort[4]->setFocus();
    QTest::keyClick(w->controls().txtsort[4], Qt::Key_F2);
    EXPECT_EQ(module.dialogs.shown.at(0).title, "Misc field# 5");
    EXPECT_EQ(label(4), "Renamed");
}

TEST_F(UserFieldsRenameTest, SavingHidesTheReminder)
{
    module.dialogs.inputAnswers = {"Policy ends"};
    doubleClick(0);
    ASSERT_TRUE(reminderShown());
    w->controls().cmdsave->click();
    EXPECT_FALSE(reminderShown());
}

} // namespace
