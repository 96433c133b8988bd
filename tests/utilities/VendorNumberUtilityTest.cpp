#include "utilities/VendorNumberUtility.h"
#include "common/Clipboard.h"
#include "common/Processes.h"
#include "utilities/UtilitiesFixture.h"

#include <QFile>
#include <QTest>

namespace {

TEST(VendorNumberJob, TheLevelIsTwoDigitsAndTheNameTrimmed)
{
    EXPECT_EQ(VendorNumberUtility::jobArgument("CVN", 7, " JSMITH "), "CVN07JSMITH");
    EXPECT_EQ(VendorNumberUtility::jobArgument("CVN", 12, "JSMITH"), "CVN12JSMITH");
    EXPECT_EQ(VendorNumberUtility::jobArgument("MVN", 0, "ANNE"), "MVN00ANNE");
    EXPECT_EQ(VendorNumberUtility::jobArgument("MVN", 99, "ANNE"), "MVN99ANNE");
}

class VendorNumberUtilityTest : public UtilitiesFixture {
protected:
    void SetUp() override
    {
        UtilitiesFixture::SetUp();
        folder.writeProgram("chanum.exe", "echo \"$@\" > job.txt");
    }
    QString job()
    {
        EXPECT_TRUE(folder.waitForLine("job.txt"));
        return folder.readFile("job.txt").trimmed();
    }
};

TEST_F(VendorNumberUtilityTest, ChangeStartsTheUtilityWithTheJobAndTheReloadedLevel)
{
    // The level comes from the staff record read again now, not from start-up.
    folder.exec("user.mdb", "update staff set aplevel = 7 where username = 'DEMO'");
    module.services.clipboard.setText("before");
    menu("mnuchavennumber");
    EXPECT_EQ(job(), "CVN07DEMO");
    EXPECT_EQ(module.session.userLevel, 7);
    EXPECT_EQ(module.services.clipboard.text(), "DEMO");
    EXPECT_EQ(module.session.jobArgument, "CVN07DEMO");
}

TEST_F(VendorNumberUtilityTest, MergeStartsTheUtilityWithItsOwnJob)
{
    folder.exec("user.mdb", "update staff set aplevel = 12 where username = 'DEMO'");
    module.window->action("mnumergevendor")->setEnabled(true);
    menu("mnumergevendor");
    EXPECT_EQ(job(), "MVN12DEMO");
}

TEST_F(VendorNumberUtilityTest, TheClipboardGetsTheUserNameAsItIsUntrimmed)
{
    RecordingProgress unused;
    module.session.userName = "DEMO  ";
    VendorNumberUtility utility(
        {module.services.clipboard, module.services.processes, module.session}, {}, {});
    utility.changeNumber();
    EXPECT_EQ(module.services.clipboard.text(), "DEMO  ");
    EXPECT_EQ(job(), "CVN99DEMO");
}

TEST_F(VendorNumberUtilityTest, BothEntriesCancelAnUnsavedEditFirst)
{
    for (const char *entry : {"mnuchavennumber", "mnumergevendor"}) {
        module.window->action(entry)->setEnabled(true);
        lookup(0, "100");
        c().cmdmodify->click();
        c().Text1[7]->setText("999-999-9999");
        ASSERT_EQ(module.window->state().modifyFlag, 1);
        menu(entry);
        EXPECT_EQ(module.window->state().modifyFlag, 0) << entry;
        EXPECT_TRUE(c().fralookup->isVisible()) << entry;
        EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0100") << entry;
    }
}

TEST_F(VendorNumberUtilityTest, AMissingUtilityIsIgnored)
{
    QFile::remove(folder.file("chanum.exe"));
    menu("mnuchavennumber");
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
