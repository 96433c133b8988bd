#include "frmmisc/UserFieldsFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QScreen>
#include <QSettings>
#include <QWindow>

namespace {

QString accessibleName(QWidget *w)
{
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(w);
    return face ? face->text(QAccessible::Name) : QStringLiteral("<no interface>");
}

// The user-defined information window as the vendor screen opens it over the always-on-top
// main window: in front, with the keyboard, wholly on the screen, where the user left it.
class UserFieldsInFrontTest : public UserFieldsFixture {
protected:
    void SetUp() override
    {
        // No place remembered from an earlier test (a window closing with its owner saves it).
        QSettings(QSettings::NativeFormat, QSettings::UserScope, "Velmora", "apmaster").clear();
        UserFieldsFixture::SetUp();
        module.window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(module.window));
    }
};

TEST_F(UserFieldsInFrontTest, TheWindowOpensAboveTheTopmostMainWindowAndTakesTheKeyboard)
{
    ASSERT_TRUE(module.window->isTopmost());
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(w->isVisible());
    EXPECT_TRUE(w->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    ASSERT_NE(w->windowHandle(), nullptr);
    EXPECT_EQ(w->windowHandle()->transientParent(), module.window->windowHandle());
    EXPECT_TRUE(QTest::qWaitFor([w] { return QApplication::activeWindow() == w; }, 5000));
    EXPECT_EQ(QApplication::focusWidget(), w->controls().txtinfo[0]);
    EXPECT_FALSE(c().cmdudf->isEnabled());
}

TEST_F(UserFieldsInFrontTest, UnderAMainWindowThatIsNoLongerOnTopTheWindowIsAnOrdinaryOne)
{
    module.window->setTopmost(false); // as after a report
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    EXPECT_FALSE(w->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(QTest::qWaitFor([w] { return QApplication::activeWindow() == w; }, 5000));
}

TEST_F(UserFieldsInFrontTest, TheMainWindowLeavingTheTopTakesTheOpenWindowAlongKeepingTheKeyboard)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([w] { return QApplication::activeWindow() == w; }, 5000));
    module.window->setTopmost(false); // as before the report runner starts
    EXPECT_FALSE(module.window->isTopmost());
    EXPECT_TRUE(w->isVisible());
    // No longer above other programs' windows, so that the report preview can come in front.
    EXPECT_FALSE(w->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(QTest::qWaitFor([w] { return QApplication::activeWindow() == w; }, 5000));
    module.window->setTopmost(true);
    EXPECT_TRUE(w->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(w->isVisible());
}

TEST_F(UserFieldsInFrontTest, ClosingTheWindowGivesTheButtonAndTheKeyboardBack)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    w->controls().cmdexit->click();
    EXPECT_TRUE(QTest::qWaitFor([this] { return c().cmdudf->isEnabled(); }, 5000));
    EXPECT_EQ(module.window->userFields(), nullptr);
}

TEST_F(UserFieldsInFrontTest, TheWindowComesBackWithTheSizeAndPlaceTheUserLeftItAt)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    w->resize(560, 420);
    w->move(40, 30);
    w->controls().cmdexit->click();
    ASSERT_TRUE(QTest::qWaitFor([this] { return c().cmdudf->isEnabled(); }, 5000));
    w = openFor("250");
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->size(), QSize(560, 420));
    EXPECT_EQ(w->pos(), QPoint(40, 30));
}

TEST_F(UserFieldsInFrontTest, AFirstOpeningIsCentredOnTheFreePartOfTheScreen)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    const QRect area = w->screen()->availableGeometry();
    EXPECT_TRUE(area.contains(w->frameGeometry())) << w->frameGeometry().x();
    // Centred before the desktop framed it: off by no more than the frame.
    const QSize frame = w->frameGeometry().size() - w->size();
    EXPECT_LE(std::abs(w->frameGeometry().center().x() - area.center().x()), frame.width());
    EXPECT_LE(std::abs(w->frameGeometry().center().y() - area.center().y()), frame.height());
    EXPECT_EQ(w->size(), QSize(640, 600));
}

TEST_F(UserFieldsInFrontTest, APlaceRememberedOffTheScreenIsBroughtBackOnIt)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    const QRect area = w->screen()->availableGeometry();
    w->move(area.right() - 100, area.bottom() - 50); // mostly off the right and bottom edges
    EXPECT_EQ(w->frameGeometry().right(), area.right() - 100 + w->frameGeometry().width() - 1);
    w->controls().cmdexit->click();
    ASSERT_TRUE(QTest::qWaitFor([this] { return c().cmdudf->isEnabled(); }, 5000));
    w = openFor("100");
    ASSERT_NE(w, nullptr);
    EXPECT_TRUE(area.contains(w->frameGeometry()));
    EXPECT_EQ(w->frameGeometry().right(), area.right());
    EXPECT_EQ(w->frameGeometry().bottom(), area.bottom());
}

TEST_F(UserFieldsInFrontTest, ValuesAreNamedForScreenReadersByTheirDescriptions)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    const auto &wc = w->controls();
    EXPECT_EQ(accessibleName(wc.txtinfo[0]), "Insurance expiry");
    EXPECT_EQ(accessibleName(wc.txtinfo[1]), "W-9 on file");
    EXPECT_EQ(accessibleName(wc.txtinfo[2]), "Sales rep");
    EXPECT_EQ(accessibleName(wc.txtinfo[3]), "Field 4"); // no description
    EXPECT_EQ(accessibleName(wc.txtinfo[29]), "Last field");
    EXPECT_EQ(accessibleName(wc.txtsort[0]), "Sort position of field 1");
    EXPECT_EQ(accessibleName(wc.txtsort[29]), "Sort position of field 30");
    EXPECT_EQ(accessibleName(wc.cmdsave), "Save");
    EXPECT_EQ(accessibleName(wc.cmdexit), "Exit");
    for (int i = 0; i < UserFieldsWindow::fieldCount; ++i) {
        EXPECT_FALSE(accessibleName(wc.txtinfo[i]).isEmpty()) << i;
        EXPECT_FALSE(accessibleName(wc.txtsort[i]).isEmpty()) << i;
    }
}

TEST_F(UserFieldsInFrontTest, ARenamedDescriptionRenamesItsValueForScreenReaders)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    module.dialogs.inputAnswers.push_back(QStringLiteral("Renewal date"));
    QTest::mouseDClick(w->controls().lbldescrip[3], Qt::LeftButton);
    EXPECT_EQ(accessibleName(w->controls().txtinfo[3]), "Renewal date");
    module.dialogs.yesNoAnswers.push_back(Dialogs::Yes); // clear the description
    QTest::keyClick(w->controls().txtinfo[0], Qt::Key_F2);
    EXPECT_EQ(w->controls().lbldescrip[0]->text(), "");
    EXPECT_EQ(accessibleName(w->controls().txtinfo[0]), "Field 1");
}

TEST_F(UserFieldsInFrontTest, EveryInputOfTheWindowHasAName)
{
    UserFieldsWindow *w = openFor("100");
    ASSERT_NE(w, nullptr);
    int inputs = 0;
    for (QWidget *input : w->findChildren<QWidget *>()) {
        if (input->objectName().startsWith(QLatin1String("qt_")) || // the menu bar's own
            (!qobject_cast<QLineEdit *>(input) && !qobject_cast<QAbstractButton *>(input)))
            continue;
        ++inputs;
        EXPECT_FALSE(accessibleName(input).isEmpty()) << input->objectName().toStdString();
    }
    EXPECT_EQ(inputs, 65); // 30 values, 30 sort boxes, 5 buttons
}

} // namespace
