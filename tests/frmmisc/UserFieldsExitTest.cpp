#include "frmmisc/UserFieldsFixture.h"

#include <QApplication>
#include <QPointer>

namespace {

// Exit of the user-defined information window with values typed and not saved.
class UserFieldsExitTest : public UserFieldsFixture {
protected:
    void SetUp() override
    {
        UserFieldsFixture::SetUp();
        w = openFor("100");
        ASSERT_NE(w.data(), nullptr);
    }
    void typeValue(int field, const QString &text)
    {
        QLineEdit *box = w->controls().txtinfo[field];
        box->setFocus();
        QTest::keyClick(box, Qt::Key_End);
        QTest::keyClicks(box, text);
    }
    void exit()
    {
        QTest::mouseClick(w->controls().cmdexit, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    QString storedValue(int account, int field)
    {
        return folder
            .scalar("ap.mdb", QStringLiteral("select miscvalue%1 from miscdata where acctid = %2")
                                  .arg(field + 1)
                                  .arg(account))
            .toString();
    }
    bool closed() const { return module.window->userFields() == nullptr; }

    QPointer<UserFieldsWindow> w;
};

TEST_F(UserFieldsExitTest, ExitWithNothingTypedClosesWithoutAQuestion)
{
    exit();
    EXPECT_TRUE(closed());
    EXPECT_EQ(module.dialogs.shown.size(), 0u);
}

TEST_F(UserFieldsExitTest, AltXInAValueBoxIsExitAndTypesNothing)
{
    QLineEdit *box = w->controls().txtinfo[0];
    QApplication::setActiveWindow(w);
    ASSERT_TRUE(QTest::qWaitForWindowActive(w.data()));
    box->setFocus();
    // As the platform delivers the key: through the window, so that shortcuts work. The
    // button's shortcut clicks it after a short animation.
    QTest::keyClick(w->windowHandle(), Qt::Key_X, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return closed(); }, 5000));
    EXPECT_EQ(module.dialogs.shown.size(), 0u);
}

TEST_F(UserFieldsExitTest, ExitWithATypedValueAsksToSaveTheChanges)
{
    typeValue(1, " (signed)");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    exit();
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->kind, "yesnocancel");
    EXPECT_EQ(module.dialogs.last()->text, "Save the changes to this vendor?");
    EXPECT_EQ(module.dialogs.last()->title, "Save Changes?");
    EXPECT_EQ(module.dialogs.last()->buttons, (QStringList{"Yes", "No", "Cancel"}));
    EXPECT_EQ(module.dialogs.last()->defaultAnswer, Dialogs::Yes);
}

TEST_F(UserFieldsExitTest, CancelKeepsTheWindowWithTheTypedValue)
{
    typeValue(1, " (signed)");
    module.dialogs.yesNoAnswers = {Dialogs::Cancel};
    exit();
    EXPECT_FALSE(closed());
    EXPECT_EQ(w->controls().txtinfo[1]->text(), "Yes (signed)");
    EXPECT_EQ(storedValue(100, 1), "Yes");
}

TEST_F(UserFieldsExitTest, YesSavesTheValuesAndCloses)
{
    typeValue(1, " (signed)");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    exit();
    EXPECT_TRUE(closed());
    EXPECT_EQ(storedValue(100, 1), "Yes (signed)");
    EXPECT_EQ(storedValue(100, 0), "06/30/2027");
}

TEST_F(UserFieldsExitTest, NoClosesAndSavesNothing)
{
    typeValue(1, " (signed)");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    exit();
    EXPECT_TRUE(closed());
    EXPECT_EQ(storedValue(100, 1), "Yes");
}

TEST_F(UserFieldsExitTest, ARenamedDescriptionAsksToo)
{
    module.dialogs.inputAnswers = {"Policy ends"};
    QTest::mouseDClick(w->controls().lbldescrip[0], Qt::LeftButton);
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    exit();
    EXPECT_EQ(module.dialogs.count("yesnocancel"), 1);
    EXPECT_TRUE(closed());
    EXPECT_EQ(folder.scalar("ap.mdb", "select miscdesc1 from miscinfo").toString(), "Policy ends");
}

TEST_F(UserFieldsExitTest, AValueTypedAndSavedClosesWithoutAQuestion)
{
    typeValue(2, "!");
    QTest::mouseClick(w->controls().cmdsave, Qt::LeftButton);
    exit();
    EXPECT_EQ(module.dialogs.count("yesnocancel"), 0);
    EXPECT_TRUE(closed());
    EXPECT_EQ(storedValue(100, 2), "Bill!");
}

} // namespace
