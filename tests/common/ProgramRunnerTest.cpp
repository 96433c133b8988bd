#include "common/ProgramRunner.h"
#include "common/Clipboard.h"
#include "common/Processes.h"
#include "common/Session.h"
#include "support/DataFolder.h"
#include "support/FakeDialogs.h"
#include "support/FixedClock.h"
#include "support/Module.h"

#include <QAction>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

namespace {

// The clipboard as another program leaves it: the help viewer of these tests writes what it
// would put on the clipboard into a file of the data folder.
class ViewerClipboard : public Clipboard {
public:
    explicit ViewerClipboard(const DataFolder &folder) : m_folder(folder) {}
    void clear() override
    {
        QFile::remove(m_folder.file("clipboard.txt"));
        ++clears;
    }
    void setText(const QString &) override {}
    QString text() const override { return m_folder.readFile("clipboard.txt"); }
    int clears = 0;

private:
    const DataFolder &m_folder;
};

class ProgramRunnerTest : public ::testing::Test {
protected:
    DataFolder folder;
    FakeDialogs dialogs;
    FixedClock clock{QDateTime(QDate(2026, 3, 4), QTime(10, 15))};
    ViewerClipboard clipboard{folder};
    SystemProcesses processes;
    Session session;
    ProgramRunner runner{processes, dialogs, clock, clipboard, session};

    void SetUp() override
    {
        session.userName = "ANNE";
        session.staffLocation = "Vendors";
        runner.setHelpSettleMsecs(5000);
    }
    // Waits until a started program has written its line to the file.
    bool appears(const QString &name, int msecs = 5000) { return folder.waitForLine(name, msecs); }
};

TEST_F(ProgramRunnerTest, LookupProgramExitingWithOneWarnsLogsBackupAndReturnsZero)
{
    folder.writeProgram("venlookp.exe", "exit 1");
    session.messageText = "lookup";
    EXPECT_EQ(runner.runAndWait("venlookp.exe"), 0);
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text, "WARNING - PREMATURE USER TERMINATION OF BACKUP PROCEDURE");
    EXPECT_EQ(dialogs.last()->title, "CAUTION");
    EXPECT_EQ(dialogs.last()->icon, Dialogs::Icon::Critical);
    EXPECT_EQ(session.staffLocation, "Backup/Restore");
    const QString log = folder.readFile("lastbkup.dat");
    EXPECT_TRUE(log.endsWith("-ANNE-Backup/Restore-lookup\n")) << log.toStdString();
    EXPECT_EQ(log.count('\n'), 1);
    EXPECT_FALSE(QFile::exists(folder.file("admlog.ini")));
}

TEST_F(ProgramRunnerTest, ProgramEndingWellReturnsZeroWithoutWarning)
{
    folder.writeProgram("gllookup.exe", "echo ran > ran.txt; exit 0");
    EXPECT_EQ(runner.runAndWait("gllookup.exe"), 0);
    EXPECT_EQ(dialogs.count(), 0);
    EXPECT_TRUE(QFile::exists(folder.file("ran.txt")));
    EXPECT_FALSE(QFile::exists(folder.file("lastbkup.dat")));
}

TEST_F(ProgramRunnerTest, RunAndWaitReallyWaitsForTheProgram)
{
    folder.writeProgram("prtctrl.exe", "sleep 0.3; echo done > done.txt");
    runner.runAndWait("prtctrl.exe");
    EXPECT_TRUE(QFile::exists(folder.file("done.txt")));
}

TEST_F(ProgramRunnerTest, ArgumentsReachTheProgram)
{
    folder.writeProgram("vinfo32.exe", "echo \"$@\" > args.txt");
    runner.runAndWait("vinfo32.exe ANNE@apmaster 21.12.28a     SysUser: 3");
    EXPECT_EQ(folder.readFile("args.txt"), "ANNE@apmaster 21.12.28a SysUser: 3\n");
}

TEST_F(ProgramRunnerTest, MissingProgramGivesTheWarningAndLogLine)
{
    EXPECT_EQ(runner.runAndWait("nosuchprogram.exe"), 0);
    EXPECT_EQ(dialogs.last()->text, "WARNING - PREMATURE USER TERMINATION OF BACKUP PROCEDURE");
    EXPECT_TRUE(QFile::exists(folder.file("lastbkup.dat")));
}

TEST_F(ProgramRunnerTest, LogLineGoesToAdminLogOutsideBackups)
{
    session.messageText = "note";
    runner.writeAdminLog();
    runner.writeAdminLog();
    const QString log = folder.readFile("admlog.ini");
    EXPECT_EQ(log.count('\n'), 2);
    EXPECT_TRUE(log.section('\n', 0, 0).endsWith("-ANNE-Vendors-note"));
    EXPECT_TRUE(
        log.startsWith(QLocale::system().toString(QDate(2026, 3, 4), QLocale::ShortFormat)));
}

TEST_F(ProgramRunnerTest, HelpViewerLeavingNohelpOpensThePlainTextHelpInTheEditor)
{
    folder.writeProgram("vlmohelp.exe", "printf NOHELP > clipboard.txt; echo \"$@\" > viewer.txt");
    folder.writeProgram("vlmedit.exe", "echo \"$@\" > editor.txt");
    bool topmostDropped = false;
    runner.help([&] { topmostDropped = true; });
    EXPECT_TRUE(topmostDropped);
    EXPECT_EQ(clipboard.clears, 1);
    EXPECT_EQ(folder.readFile("viewer.txt"), "manual-ACCTPAY.pdf\n");
    ASSERT_TRUE(appears("editor.txt"));
    EXPECT_EQ(folder.readFile("editor.txt"), "vendor1.txt\n");
}

TEST_F(ProgramRunnerTest, HelpViewerShowingTheManualLeavesTheEditorAlone)
{
    folder.writeProgram("vlmohelp.exe", "echo shown > viewer.txt");
    folder.writeProgram("vlmedit.exe", "echo \"$@\" > editor.txt");
    runner.help({});
    EXPECT_TRUE(appears("viewer.txt"));
    // An editor started by mistake would have written its file well within a second.
    EXPECT_FALSE(appears("editor.txt", 1000));
}

TEST_F(ProgramRunnerTest, WithoutHelpViewerTheEditorOpensThePlainTextHelp)
{
    folder.writeProgram("vlmedit.exe", "echo \"$@\" > editor.txt");
    runner.help({});
    ASSERT_TRUE(appears("editor.txt"));
    EXPECT_EQ(folder.readFile("editor.txt"), "vendor1.txt\n");
    EXPECT_EQ(clipboard.clears, 0);
}

TEST(ProgramLookup, CurrentFolderComesBeforeTheSearchPath)
{
    DataFolder folder;
    folder.writeProgram("sh", "exit 0");
    EXPECT_EQ(SystemProcesses::resolveProgram("sh"), folder.file("sh"));
    EXPECT_FALSE(SystemProcesses::resolveProgram("env").isEmpty());
    EXPECT_TRUE(SystemProcesses::resolveProgram("no-such-program.exe").isEmpty());
}

TEST(ProgramLookup, ASuiteProgramMissingFromTheDataFolderIsFoundInstalledBesideTheModule)
{
    // Names of no real program, so that an installed package on the search path cannot answer.
    DataFolder folder;
    QTemporaryDir installedDir;
    const QString installed = installedDir.path();
    for (const char *name : {"vlmprobe", "vlmprobe2"}) {
        QFile program(installed + "/" + name);
        ASSERT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\nexit 0\n");
    }
    QFile::setPermissions(installed + "/vlmprobe", QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(SystemProcesses::resolveProgram("vlmprobe.exe", installed), installed + "/vlmprobe");
    // Only a suite name with ".exe" is looked for there, and only a program that may be run.
    EXPECT_TRUE(SystemProcesses::resolveProgram("vlmprobe", installed).isEmpty());
    EXPECT_TRUE(SystemProcesses::resolveProgram("vlmprobe2.exe", installed).isEmpty());
    EXPECT_TRUE(SystemProcesses::resolveProgram(".exe", installed).isEmpty());
    EXPECT_TRUE(SystemProcesses::resolveProgram("vlmprobe.exe", QString()).isEmpty());
    // The data folder's own program comes first.
    folder.writeProgram("vlmprobe.exe", "exit 0");
    EXPECT_EQ(SystemProcesses::resolveProgram("vlmprobe.exe", installed),
              folder.file("vlmprobe.exe"));
}

TEST(VersionInformation, MenuRunsTheVersionViewerWithUserAndSysuser)
{
    DataFolder folder;
    folder.writeProgram("vinfo32.exe", "echo \"$@\" > args.txt");
    Module module(folder.path());
    ASSERT_EQ(module.start("VDR99DEMO"), std::nullopt);
    module.window->action("mnuversion")->trigger();
    const QString args = folder.readFile("args.txt");
    EXPECT_TRUE(args.startsWith("DEMO@")) << args.toStdString();
    EXPECT_TRUE(args.endsWith(" 21.12.28a SysUser: 1\n")) << args.toStdString();
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST(HelpButton, OpensTheEditorAndDropsAlwaysOnTop)
{
    DataFolder folder;
    folder.writeProgram("vlmohelp.exe", "printf NOHELP > clipboard.txt");
    folder.writeProgram("vlmedit.exe", "echo \"$@\" > editor.txt");
    Module module(folder.path());
    ASSERT_EQ(module.start("VDR99DEMO"), std::nullopt);
    EXPECT_TRUE(module.window->isTopmost());
    module.window->controls().cmdhelp->click();
    EXPECT_FALSE(module.window->isTopmost());
    EXPECT_TRUE(module.window->controls().cmdhelp->isEnabled());
}

} // namespace
