#include "support/FakeDialogs.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

TEST(DialogsLog, EveryDialogIsLoggedOnOneLineWithTitleAndText)
{
    LogCapture log;
    FakeDialogs dialogs;
    dialogs.message("first\nsecond", Dialogs::Icon::Information, "Oops...");
    dialogs.yesNo("Delete?", "Delete Vendor?");
    dialogs.input("Type it", "Vendor #");
    const QStringList lines = log.lines("vendor.dialog");
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0], "message Oops... | first\\nsecond");
    EXPECT_EQ(lines[1], "yesno Delete Vendor? | Delete?");
    EXPECT_EQ(lines[2], "input Vendor # | Type it");
}

TEST(DialogsLog, MessageWithoutTitleGetsTheProgramsTitle)
{
    FakeDialogs dialogs;
    dialogs.message("No record to display", Dialogs::Icon::Information);
    EXPECT_EQ(dialogs.last()->title, "A/P Master");
}

TEST(FakeDialogsAnswers, QueuesAnswerInOrderAndEmptyQueuesSayNoAndCancel)
{
    FakeDialogs dialogs;
    dialogs.yesNoAnswers = {Dialogs::Yes};
    dialogs.inputAnswers = {"0131"};
    EXPECT_EQ(dialogs.yesNo("a", "b"), Dialogs::Yes);
    EXPECT_EQ(dialogs.yesNo("a", "b"), Dialogs::No);
    EXPECT_EQ(dialogs.input("a", "b"), "0131");
    EXPECT_EQ(dialogs.input("a", "b"), "");
}
