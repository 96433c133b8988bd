#include "common/QtDialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <utility>

namespace {

// The main window and a window of its own (as the user fields window is), both shown; the
// second one active, as when the user works in it.
class QtDialogsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        main.show();
        own = new QWidget(&main, Qt::Window);
        own->show();
        own->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(own));
    }
    // Answers the next modal dialog from the event loop, noting the window it was put over.
    void answerNextDialog(const std::function<void(QWidget *)> &answer)
    {
        QTimer::singleShot(0, [this, answer] {
            ASSERT_TRUE(
                QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }, 5000));
            QWidget *dialog = QApplication::activeModalWidget();
            ASSERT_NE(dialog, nullptr);
            over = dialog->parentWidget();
            answer(dialog);
        });
    }

    QWidget main;
    QWidget *own = nullptr;
    QPointer<QWidget> over;
    QtDialogs dialogs{&main};
};

TEST_F(QtDialogsTest, AnInputBoxAskedFromAWindowOfTheMainOneIsPutOverItAndGivesItBackTheKeyboard)
{
    answerNextDialog([](QWidget *dialog) {
        auto *box = qobject_cast<QInputDialog *>(dialog);
        ASSERT_NE(box, nullptr);
        box->setTextValue(QStringLiteral("Policy expiry"));
        box->accept();
    });
    EXPECT_EQ(dialogs.input("Type the new description", "Misc field# 1", "old"), "Policy expiry");
    EXPECT_EQ(over, own);
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == own; }, 5000));
}

TEST_F(QtDialogsTest, AYesNoQuestionFromAWindowOfTheMainOneIsPutOverItAndGivesItBackTheKeyboard)
{
    answerNextDialog([](QWidget *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        ASSERT_NE(box, nullptr);
        box->button(QMessageBox::No)->click();
    });
    EXPECT_EQ(dialogs.yesNo("Do you want to delete the description?", "Yes/No?"), Dialogs::No);
    EXPECT_EQ(over, own);
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == own; }, 5000));
}

// Enter presses the default button; Escape the button that does nothing.
TEST_F(QtDialogsTest, EnterOnAQuestionWhoseDefaultIsNoAnswersNo)
{
    answerNextDialog([](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    EXPECT_EQ(dialogs.yesNo("Click YES to finish the deletion, NO to cancel", "Delete Vendor?",
                            Dialogs::No),
              Dialogs::No);
}

TEST_F(QtDialogsTest, EnterOnAQuestionWhoseDefaultIsYesAnswersYes)
{
    answerNextDialog([](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    EXPECT_EQ(dialogs.yesNo("Click YES to print the 1099's", "1099"), Dialogs::Yes);
}

TEST_F(QtDialogsTest, AYesNoCancelQuestionHasTheThreeButtonsAndEscapeIsCancel)
{
    QMessageBox::StandardButtons buttons;
    answerNextDialog([&buttons](QWidget *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        ASSERT_NE(box, nullptr);
        buttons = box->standardButtons();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(dialogs.yesNoCancel("Save the changes to this vendor?", "Save Changes?"),
              Dialogs::Cancel);
    EXPECT_EQ(buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
}

TEST_F(QtDialogsTest, AYesNoCancelQuestionAnswersEachButton)
{
    for (const auto &[button, answer] :
         {std::pair{QMessageBox::Yes, Dialogs::Yes}, std::pair{QMessageBox::No, Dialogs::No},
          std::pair{QMessageBox::Cancel, Dialogs::Cancel}}) {
        answerNextDialog([button](QWidget *dialog) {
            qobject_cast<QMessageBox *>(dialog)->button(button)->click();
        });
        EXPECT_EQ(dialogs.yesNoCancel("Save the changes to this vendor?", "Save Changes?"), answer);
    }
}

TEST_F(QtDialogsTest, EnterOnAYesNoCancelQuestionSaves)
{
    answerNextDialog([](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    EXPECT_EQ(dialogs.yesNoCancel("Save the changes to this vendor?", "Save Changes?"),
              Dialogs::Yes);
}

TEST_F(QtDialogsTest, AMessageWhileAForeignWindowIsActiveGoesOverTheMainWindow)
{
    QWidget stranger; // not one of the main window's own
    stranger.show();
    stranger.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&stranger));
    answerNextDialog([](QWidget *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        ASSERT_NE(box, nullptr);
        box->accept();
    });
    dialogs.message("No record to display", Dialogs::Icon::Information, "A/P Master");
    EXPECT_EQ(over, &main);
}

} // namespace
