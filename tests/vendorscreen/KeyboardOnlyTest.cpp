#include "support/VendorScreen.h"

#include <QApplication>
#include <QGroupBox>
#include <QTest>

#include <functional>

namespace {

// A bookkeeper who never touches the mouse: Add, every field typed with Enter between them,
// Save, then the new vendor found again by name and by number.
class KeyboardOnlyTest : public VendorScreen {
protected:
    void SetUp() override
    {
        VendorScreen::SetUp();
        QApplication::setActiveWindow(module.window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(module.window));
    }
    QWidget *focused() const { return QApplication::focusWidget(); }
    // Keys go in through the window, as the platform delivers them, so that shortcuts work.
    // A button's Alt shortcut clicks it after a short animation, and Enter moves on by a Tab
    // posted to the window: the key has had its effect once `done` holds.
    bool press(Qt::Key key, Qt::KeyboardModifiers modifiers, const std::function<bool()> &done)
    {
        QTest::keyClick(module.window->windowHandle(), key, modifiers);
        return QTest::qWaitFor(done, 5000);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(module.window->windowHandle(), key, modifiers);
        QCoreApplication::processEvents();
    }
    void type(const QString &text)
    {
        for (const QChar ch : text)
            QTest::keyClick(module.window->windowHandle(), ch.toLatin1());
        QCoreApplication::processEvents();
    }
};

TEST_F(KeyboardOnlyTest, AddTypeEveryFieldWithEnterSaveAndFindAgain)
{
    EXPECT_EQ(focused(), c().lookupinput);
    ASSERT_TRUE(press(Qt::Key_A, Qt::AltModifier, [&] { return module.window->state().addFlag; }));
    ASSERT_EQ(focused(), c().Text1[0]);

    const QStringList typed = {"4321",
                               "Keyboard Stationers",
                               "12 Key Lane",
                               "Suite 4",
                               "Springfield",
                               "IL",
                               "62704-1234",
                               "217-555-0123",
                               "217-555-0124",
                               "Kim Lee",
                               "36-1234567",
                               "1",
                               "5000",
                               "0",
                               "0",
                               "0",
                               "0",
                               "Net 30",
                               "MBR-77",
                               "kim@keyboard.example",
                               "217-555-0125",
                               "Lou Park",
                               "lou@keyboard.example",
                               "217-555-0126"};
    for (int i = 0; i < 24; ++i) {
        ASSERT_EQ(focused(), c().Text1[i]) << "field " << i;
        type(typed[i]);
        QWidget *next = i < 23 ? c().Text1[i + 1] : nullptr;
        press(Qt::Key_Return, Qt::NoModifier, [&] { return next ? focused() == next : true; });
    }
    EXPECT_EQ(module.dialogs.count(), 0) << module.dialogs.last()->text.toStdString();
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(field(i), typed[i]) << "field " << i;

    ASSERT_TRUE(press(Qt::Key_S, Qt::AltModifier, [&] { return c().fralookup->isVisible(); }));
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(vendorColumn(4321, "vendname").toString(), "Keyboard Stationers");
    EXPECT_EQ(vendorColumn(4321, "vendzip").toString(), "62704-1234");
    EXPECT_EQ(vendorColumn(4321, "vcontact2phone").toString(), "217-555-0126");
    ASSERT_TRUE(c().fralookup->isVisible());

    // By name: from the entry field back to the method buttons, one to the right, then type.
    ASSERT_EQ(focused(), c().lookupinput);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(focused(), c().Option1[0]) << focused()->objectName().toStdString();
    press(Qt::Key_Right);
    EXPECT_TRUE(c().Option1[1]->isChecked());
    press(Qt::Key_Tab);
    ASSERT_EQ(focused(), c().lookupinput);
    type("Keyboard");
    press(Qt::Key_Return, Qt::NoModifier, [&] { return !c().fralookup->isVisible(); });
    EXPECT_EQ(field(0), "4321");
    EXPECT_EQ(field(1), "Keyboard Stationers");

    // By number.
    ASSERT_TRUE(press(Qt::Key_C, Qt::AltModifier, [&] { return c().fralookup->isVisible(); }));
    ASSERT_EQ(focused(), c().lookupinput);
    EXPECT_TRUE(c().Option1[0]->isChecked()); // the lookup opens on "Vendor #" again
    type("4321");
    press(Qt::Key_Return, Qt::NoModifier, [&] { return !c().fralookup->isVisible(); });
    EXPECT_EQ(field(0), "4321");
    EXPECT_EQ(field(7), "217-555-0123");
}

} // namespace
