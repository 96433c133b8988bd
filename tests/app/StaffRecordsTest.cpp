#include "app/StaffRecords.h"
#include "common/Clipboard.h"
#include "common/Processes.h"
#include "common/ProgramRunner.h"
#include "common/Prompts.h"
#include "common/Session.h"
#include "support/FixedClock.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "support/DataFolder.h"
#include "support/FakeDialogs.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

class StaffRecordsTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    FakeDialogs dialogs;
    Session session;
    StaffRecords staff{dbs, dialogs, session};

    QString column(const char *name, const QString &user = QStringLiteral("ANNE"))
    {
        return folder
            .scalar("user.mdb", QStringLiteral("select %1 from staff where username = '%2'")
                                    .arg(QString::fromLatin1(name), user))
            .toString();
    }
};

TEST_F(StaffRecordsTest, LowerCaseNameWithBlanksUpdatesTheUpperCasedRow)
{
    folder.exec("user.mdb", "update staff set username = 'Anne' where username = 'ANNE'");
    session.userName = "  anne  ";
    session.staffLocation = "Vendors";
    staff.writeLocation();
    EXPECT_EQ(session.userName, "ANNE");
    EXPECT_EQ(column("location", "Anne"), "Vendors");
    EXPECT_EQ(column("location", "DEMO"), "Main menu");
    EXPECT_EQ(session.sysUser, 3);
}

TEST_F(StaffRecordsTest, WorkIsWrittenEmptyOnEveryLocationWrite)
{
    session.userName = "ANNE";
    session.staffLocation = "Vendors";
    staff.writeLocation();
    EXPECT_EQ(column("work"), "");
    EXPECT_FALSE(
        folder.scalar("user.mdb", "select work from staff where username = 'ANNE'").isNull());
    EXPECT_EQ(session.workDescription, "none");
}

TEST_F(StaffRecordsTest, UnknownUserChangesNoRowAndGetsSysuserZero)
{
    session.userName = "NOBODY";
    session.sysUser = 7;
    session.staffLocation = "Vendors";
    staff.writeLocation();
    EXPECT_EQ(session.sysUser, 0);
    EXPECT_EQ(column("location"), "Main menu");
}

TEST_F(StaffRecordsTest, NullSysuserReadsAsZero)
{
    folder.exec("user.mdb", "update staff set sysuser = null where username = 'ANNE'");
    session.userName = "ANNE";
    staff.writeLocation();
    EXPECT_EQ(session.sysUser, 0);
}

TEST_F(StaffRecordsTest, ApostropheInNameDoesNotChangeTheStatement)
{
    folder.exec("user.mdb",
                "insert into staff (username, location, sysuser) values ('O''NEIL', 'x', 9)");
    session.userName = "o'neil";
    session.staffLocation = "Vendors";
    staff.writeLocation();
    EXPECT_EQ(column("location", "O''NEIL"), "Vendors");
    EXPECT_EQ(column("location"), "Main menu");
    EXPECT_EQ(session.sysUser, 9);
}

TEST_F(StaffRecordsTest, MissingStaffFileIsAnErrorAndNothingIsCreated)
{
    folder.removeDatabase("user.mdb");
    session.userName = "ANNE";
    EXPECT_THROW(staff.writeLocation(), DbError);
    EXPECT_FALSE(QFile::exists(folder.file("user.mdb")));
}

TEST_F(StaffRecordsTest, StaffFileIsClosedAfterTheWrite)
{
    session.userName = "ANNE";
    staff.writeLocation();
    EXPECT_FALSE(dbs.isOpen("user.mdb"));
}

TEST_F(StaffRecordsTest, ReloadReadsLevelsAndDropsTrailingBackslash)
{
    const QString local = folder.file("local") + "\\";
    folder.exec("user.mdb",
                QStringLiteral("update staff set localdrive = '%1', memlevel = 11, arlevel = 12, "
                               "aplevel = 42, gllevel = 14, cflevel = 19, memomail = 1 "
                               "where username = 'ANNE'")
                    .arg(local));
    session.userName = "ANNE";
    staff.reloadUser();
    EXPECT_EQ(session.localDrive, folder.file("local"));
    EXPECT_EQ(session.userLevel, 42);
    EXPECT_EQ(session.memLevel, 11);
    EXPECT_EQ(session.arLevel, 12);
    EXPECT_EQ(session.glLevel, 14);
    EXPECT_EQ(session.cfLevel, 19);
    EXPECT_EQ(session.memoMail, 1);
    EXPECT_TRUE(QDir(folder.file("local")).exists());
}

TEST_F(StaffRecordsTest, EmptyLocalDriveBecomesTheDefaultNodeFolder)
{
    session.userName = "ANNE";
    staff.reloadUser();
    EXPECT_EQ(session.localDrive, "C:\\VLMONODE");
}

TEST_F(StaffRecordsTest, ReloadOfUnknownUserSaysSoAndKeepsTheLevels)
{
    session.userName = "NOBODY";
    session.userLevel = 33;
    staff.reloadUser();
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text, "User not found in database.\nSee system administrator.");
    EXPECT_EQ(dialogs.last()->title, "Velmora Office");
    EXPECT_EQ(dialogs.last()->icon, Dialogs::Icon::Critical);
    EXPECT_EQ(session.userLevel, 33);
}

TEST_F(StaffRecordsTest, AccessDeniedNotice)
{
    Prompts::showAccessDenied(dialogs);
    EXPECT_EQ(dialogs.last()->text, "Access denied.");
    EXPECT_EQ(dialogs.last()->title, "Velmora Office");
    EXPECT_EQ(dialogs.last()->icon, Dialogs::Icon::Information);
}

TEST_F(StaffRecordsTest, VersionCommandCarriesUserProgramVersionAndSysuser)
{
    session.userName = "ANNE";
    session.sysUser = 3;
    SystemProcesses processes;
    FixedClock clock;
    SystemClipboard clipboard;
    const ProgramRunner programs(processes, dialogs, clock, clipboard, session);
    EXPECT_EQ(programs.versionCommand("apmaster"),
              "vinfo32.exe ANNE@apmaster 21.12.28a     SysUser: 3");
}

} // namespace
