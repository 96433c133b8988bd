#include "support/DataFolder.h"
#include "support/Module.h"

#include <gtest/gtest.h>

namespace {

const QString updateText = QStringLiteral(
    "Before you may continue, you must run the \nDBUPDATE module.  Note that no users may be  \n"
    "using Velmora Office Accounting during an update.  \n\n");

class UpdateGateTest : public ::testing::Test {
protected:
    DataFolder folder;
    Module module{folder.path()};
};

TEST_F(UpdateGateTest, MarkerStopsStartupBeforeAnyDatabaseIsOpened)
{
    folder.writeFile("dbupdate.dat", "anything");
    EXPECT_EQ(module.start("VDR99DEMO"), Startup::UpdatePending);
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text, updateText);
    EXPECT_TRUE(module.dialogs.last()->text.endsWith("during an update.  \n\n"));
    EXPECT_EQ(module.dialogs.last()->title, "Velmora Office Database Update Required");
    EXPECT_EQ(module.dialogs.last()->icon, Dialogs::Icon::Critical);
    EXPECT_EQ(module.session.messageText, "UPDREQ");
    EXPECT_EQ(module.databases.openCount(), 0);
    EXPECT_EQ(
        folder.scalar("user.mdb", "select location from staff where username = 'DEMO'").toString(),
        "Main menu");
    EXPECT_FALSE(module.window->isVisible());
}

TEST_F(UpdateGateTest, PointOfSaleMarkerAddsTheKassorSentence)
{
    folder.writeFile("dbupdate.dat", "");
    folder.writeFile("KASSOR.EXE", "");
    EXPECT_EQ(module.start("VDR99DEMO"), Startup::UpdatePending);
    EXPECT_EQ(module.dialogs.last()->text,
              updateText + "Unless the instructions specify otherwise, it is NOT \n"
                           "necessary to shut down Kassor Point of sale.");
}

TEST_F(UpdateGateTest, PointOfSaleMarkerAloneShowsNothing)
{
    folder.writeFile("KASSOR.EXE", "");
    EXPECT_EQ(module.start("VDR99DEMO"), std::nullopt);
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(module.session.messageText, "");
}

TEST_F(UpdateGateTest, MarkerNameMatchesWithoutRegardToCase)
{
    folder.writeFile("DBUPDATE.DAT", "");
    EXPECT_EQ(module.start("VDR99DEMO"), Startup::UpdatePending);
}

} // namespace
