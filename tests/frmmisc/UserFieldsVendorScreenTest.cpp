#include "frmmisc/UserFieldsFixture.h"

#include <QAction>

namespace {

class UserFieldsVendorScreenTest : public UserFieldsFixture {
protected:
    bool closedAndEnabled()
    {
        return module.window->userFields() == nullptr && c().cmdudf->isEnabled() &&
               QTest::qWaitFor([&] { return !module.window->findChild<UserFieldsWindow *>(); });
    }
};

TEST_F(UserFieldsVendorScreenTest, VendorNumberZeroDoesNotOpenTheWindow)
{
    EXPECT_EQ(openFor("0"), nullptr);
    EXPECT_EQ(module.window->findChild<UserFieldsWindow *>(), nullptr);
    EXPECT_TRUE(c().cmdudf->isEnabled());
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(UserFieldsVendorScreenTest, AnEmptyVendorNumberDoesNotOpenTheWindow)
{
    EXPECT_EQ(openFor(""), nullptr);
    EXPECT_EQ(module.window->findChild<UserFieldsWindow *>(), nullptr);
}

TEST_F(UserFieldsVendorScreenTest, AVendorNumberJustBelowOneDoesNotOpenTheWindow)
{
    EXPECT_EQ(openFor("0.99"), nullptr);
    EXPECT_EQ(openFor("-5"), nullptr);
}

TEST_F(UserFieldsVendorScreenTest, VendorNumberOneOpensTheWindow)
{
    UserFieldsWindow *w = openFor("1");
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(w->call().account, 1);
    EXPECT_EQ(w->windowTitle(), "User Defined Information - acct#: 1");
}

TEST_F(UserFieldsVendorScreenTest, TheButtonIsDisabledWhileTheWindowIsOpen)
{
    ASSERT_NE(openFor("100"), nullptr);
    EXPECT_FALSE(c().cmdudf->isEnabled());
}

TEST_F(UserFieldsVendorScreenTest, AUserAtTheEditingLevelCallsItDor)
{
    module.session.accessLevel[1] = 50;
    module.session.userLevel = 50;
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->call().code, "DOR");
    EXPECT_EQ(w->call().kindNumber(), 3);
}

TEST_F(UserFieldsVendorScreenTest, AUserJustBelowTheEditingLevelCallsItVen)
{
    module.session.accessLevel[1] = 50;
    module.session.userLevel = 49;
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->call().code, "VEN");
    EXPECT_EQ(w->call().kindNumber(), 3);
    EXPECT_EQ(values(*w)[0], "06/30/2027"); // the same fields either way
}

TEST_F(UserFieldsVendorScreenTest, TheCallingCodeIsLeftInTheMessageText)
{
    module.session.accessLevel[1] = 99;
    module.session.userLevel = 10;
    // Opening reads the code and then uses the message text for its own reads; the code the
    // window was called with is the one it shows.
    UserFieldsWindow *w = openFor("250");
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->call().code + w->call().accountText(), "VEN250");
}

TEST_F(UserFieldsVendorScreenTest, CancelClosesTheWindowAndEnablesTheButton)
{
    lookup(0, "100");
    ASSERT_NE(openFor(field(0)), nullptr);
    c().cmdcancel->click();
    QCoreApplication::processEvents();
    EXPECT_TRUE(closedAndEnabled());
}

TEST_F(UserFieldsVendorScreenTest, NextClosesTheWindowAndEnablesTheButton)
{
    lookup(0, "100");
    ASSERT_NE(openFor(field(0)), nullptr);
    c().cmdnext->click();
    QCoreApplication::processEvents();
    EXPECT_TRUE(closedAndEnabled());
}

TEST_F(UserFieldsVendorScreenTest, PreviousClosesTheWindow)
{
    lookup(0, "250");
    ASSERT_NE(openFor(field(0)), nullptr);
    c().cmdprevious->click();
    QCoreApplication::processEvents();
    EXPECT_TRUE(closedAndEnabled());
}

TEST_F(UserFieldsVendorScreenTest, ModifyClosesTheWindow)
{
    lookup(0, "100");
    ASSERT_NE(openFor(field(0)), nullptr);
    c().cmdmodify->click();
    QCoreApplication::processEvents();
    EXPECT_TRUE(closedAndEnabled());
}

TEST_F(UserFieldsVendorScreenTest, AddClosesTheWindow)
{
    // Add is pressed in lookup mode, where it is enabled.
    ASSERT_NE(openFor("100"), nullptr);
    ASSERT_TRUE(c().cmdadd->isEnabled());
    c().cmdadd->click();
    QCoreApplication::processEvents();
    EXPECT_TRUE(closedAndEnabled());
}

TEST_F(UserFieldsVendorScreenTest, ClosingTheVendorScreenClosesTheWindow)
{
    lookup(0, "100");
    QPointer<UserFieldsWindow> w = openFor(field(0));
    ASSERT_FALSE(w.isNull());
    module.window->close();
    QCoreApplication::processEvents();
    EXPECT_TRUE(w.isNull() || !w->isVisible());
    EXPECT_TRUE(closedAndEnabled());
}

TEST_F(UserFieldsVendorScreenTest, ClosingTheWindowItselfEnablesTheButton)
{
    ASSERT_NE(openFor("100"), nullptr);
    module.window->userFields()->close();
    EXPECT_TRUE(closedAndEnabled());
}

TEST_F(UserFieldsVendorScreenTest, TheButtonOpensTheWindowAgainAfterItClosed)
{
    ASSERT_NE(openFor("100"), nullptr);
    module.window->userFields()->close();
    UserFieldsWindow *again = openFor("250");
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(again->isVisible());
    EXPECT_EQ(again->call().account, 250);
}

} // namespace
