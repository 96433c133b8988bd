#include "frmmisc/UserFieldsFixture.h"

#include <QApplication>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>

namespace {

class UserFieldsEntryTest : public UserFieldsFixture {
protected:
    void SetUp() override
    {
        UserFieldsFixture::SetUp();
        w = openFor("300");
        ASSERT_NE(w, nullptr);
        w->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    }
    QString menuCaption() const { return w->controls().mnufile->title().remove('&'); }

    UserFieldsWindow *w = nullptr;
};

TEST_F(UserFieldsEntryTest, AValueBoxTakesFiftyCharactersAndRefusesTheFiftyFirst)
{
    QLineEdit *box = w->controls().txtinfo[7];
    box->setFocus();
    const QString fifty(50, QLatin1Char('x'));
    QTest::keyClicks(box, fifty);
    EXPECT_EQ(box->text(), fifty);
    QTest::keyClicks(box, "y");
    EXPECT_EQ(box->text(), fifty);
}

TEST_F(UserFieldsEntryTest, EnterInAValueBoxMovesOnAsTabWould)
{
    w->controls().txtinfo[3]->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return w->controls().txtinfo[3]->hasFocus(); }));
    QTest::keyClick(w->controls().txtinfo[3], Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return w->controls().txtsort[3]->hasFocus(); }));
}

TEST_F(UserFieldsEntryTest, TabGoesAlongTheRowThenDownToTheNextRow)
{
    w->controls().txtinfo[0]->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return w->controls().txtinfo[0]->hasFocus(); }));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), w->controls().txtsort[0]);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), w->controls().txtinfo[1]);
    w->controls().txtsort[29]->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), w->controls().cmdsave);
}

TEST_F(UserFieldsEntryTest, TabbingDownScrollsTheFocusedRowIntoView)
{
    auto *rows = w->findChild<QScrollArea *>("rows");
    ASSERT_NE(rows, nullptr);
    w->controls().txtinfo[0]->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return w->controls().txtinfo[0]->hasFocus(); }));
    for (int i = 0; i < 2 * 27; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QLineEdit *box = w->controls().txtinfo[27];
    ASSERT_EQ(QApplication::focusWidget(), box);
    EXPECT_GT(rows->verticalScrollBar()->value(), 0);
    const QRect shown = rows->viewport()->rect();
    const QRect at(box->mapTo(rows->viewport(), QPoint(0, 0)), box->size());
    EXPECT_TRUE(shown.contains(at)) << at.y() << " in " << shown.height();
}

TEST_F(UserFieldsEntryTest, TheModeMenuOpensWithAltM)
{
    EXPECT_TRUE(w->controls().mnufile->title().contains("&Mode"));
}

TEST_F(UserFieldsEntryTest, TheButtonsHaveMnemonics)
{
    EXPECT_EQ(w->controls().cmdsave->text(), "&Save");
    EXPECT_EQ(w->controls().cmdprint->text(), "&Print");
    EXPECT_EQ(w->controls().cmdselect->text(), "S&elect");
    EXPECT_EQ(w->controls().cmdhelp->text(), "&Help");
    EXPECT_EQ(w->controls().cmdexit->text(), "E&xit");
}

TEST_F(UserFieldsEntryTest, TheWindowOpensInSingleAccountMode)
{
    EXPECT_TRUE(w->controls().mnusingle->isChecked());
    EXPECT_FALSE(w->controls().mnuall->isChecked());
    EXPECT_EQ(menuCaption(), "Single Account Mode");
    EXPECT_FALSE(w->allAccountsMode());
}

TEST_F(UserFieldsEntryTest, ChoosingAllAccountsChecksItUnchecksSingleAndCaptionsTheMenu)
{
    w->controls().mnuall->trigger();
    EXPECT_TRUE(w->controls().mnuall->isChecked());
    EXPECT_FALSE(w->controls().mnusingle->isChecked());
    EXPECT_EQ(menuCaption(), "All Accounts Mode");
    EXPECT_TRUE(w->allAccountsMode());
}

TEST_F(UserFieldsEntryTest, ChoosingSingleAgainChecksItUnchecksAllAndCaptionsTheMenu)
{
    w->controls().mnuall->trigger();
    w->controls().mnusingle->trigger();
    EXPECT_TRUE(w->controls().mnusingle->isChecked());
    EXPECT_FALSE(w->controls().mnuall->isChecked());
    EXPECT_EQ(menuCaption(), "Single Account Mode");
    EXPECT_FALSE(w->allAccountsMode());
}

TEST_F(UserFieldsEntryTest, ChoosingTheCheckedEntryAgainKeepsItChecked)
{
    w->controls().mnusingle->trigger();
    EXPECT_TRUE(w->controls().mnusingle->isChecked());
    EXPECT_FALSE(w->controls().mnuall->isChecked());
}

TEST_F(UserFieldsEntryTest, SelectNumbersTheDescribedFieldsInOrder)
{
    w->controls().txtsort[10]->setText("5");
    w->controls().cmdselect->click();
    EXPECT_EQ(w->controls().txtsort[0]->text(), "1");
    EXPECT_EQ(w->controls().txtsort[1]->text(), "2");
    EXPECT_EQ(w->controls().txtsort[2]->text(), "3");
    EXPECT_EQ(w->controls().txtsort[3]->text(), "");
    EXPECT_EQ(w->controls().txtsort[10]->text(), "");
    EXPECT_EQ(w->controls().txtsort[29]->text(), "4");
}

TEST_F(UserFieldsEntryTest, ExitClosesTheWindow)
{
    QPointer<UserFieldsWindow> guard(w);
    w->controls().cmdexit->click();
    EXPECT_FALSE(w->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return guard.isNull(); }));
    EXPECT_EQ(module.window->userFields(), nullptr);
    EXPECT_TRUE(c().cmdudf->isEnabled());
}

} // namespace
