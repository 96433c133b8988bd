// Several users' copies of the module on one data folder, each a process of its own, with the
// sqlite3 program (psql on the server) reading from outside between their steps.
#include "support/DataFolder.h"
#include "support/ModuleCopy.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

namespace {

const QString changeReport = QStringLiteral(
    "Velmora Office|Another user has modified this record while you were editing it.\\n"
    "Please reload this vendor and redo your changes.");

// One statement run by another program, as someone at a shell would (the sqlite3 program on
// the file, psql on the server); its output trimmed.
QString outsideRead(const DataFolder &folder, const QString &statement)
{
    return folder.otherProgramRead(QStringLiteral("ap.mdb"), statement);
}

int roundsToRun()
{
    const int asked = qEnvironmentVariableIntValue("APMASTER_ROUNDS");
    return asked > 0 ? asked : 200;
}

class SharedFolder : public ::testing::Test {
protected:
    DataFolder folder;
    QTemporaryDir locks;

    void SetUp() override
    {
        folder.exec("ap.mdb", "insert into vendors (vendnumber, vendname, vendphone, vendglacct, "
                              "vend1099type, vendytd, vendbalcurrent, vendbal60, vendbal90) values "
                              "(10, 'Ten Supplies', '555-0010', 5000, 0, 0, 0, 0, 0), "
                              "(11, 'Eleven Rentals', '555-0011', 5000, 0, 0, 0, 0, 0)");
        folder.exec("ap.mdb", "insert into invoices (vendnumber, invnumber, invdate, invamount, "
                              "invstatus, invchecknumber) values (10, 'A-1', 20260105, 100, 1, 0), "
                              "(10, 'A-2', 20260106, 200, 2, 0), (10, 'A-3', 20260107, 50, 4, 7)");
        folder.exec("user.mdb", "insert into staff (username, location, sysuser, aplevel) values "
                                "('BETTY', 'Main menu', 4, 99), ('CARL', 'Main menu', 5, 99)");
    }
    // Each copy keeps its single-instance lock in a folder of its own, as on another machine.
    QString lockFolder(const QString &user) const { return locks.filePath(user); }
};

TEST_F(SharedFolder, ChangesToldSavedAreKeptAndEveryConflictIsReported)
{
    std::unique_ptr<ModuleCopy> anne;
    ModuleCopy carl(folder.path(), lockFolder("carl"), "VDR99CARL");
    ASSERT_TRUE(carl.started());
    const int rounds = roundsToRun();
    int toldSaved = 0, foundSaved = 0, conflicts = 0, conflictsReported = 0, wrongReports = 0,
        overwritten = 0;
    for (int round = 1; round <= rounds; ++round) {
        // Anne starts her copy again every ten rounds: the save's retry budget lasts as long as
        // the window, and twenty refused saves use it up.
        if (round % 10 == 1) {
            if (anne) {
                EXPECT_EQ(anne->quit(), 0);
            }
            anne = std::make_unique<ModuleCopy>(folder.path(), lockFolder("anne"), "VDR99ANNE");
            ASSERT_TRUE(anne->started());
        }
        // Anne recalls vendor 10; Betty's copy comes and goes; someone reads from a shell.
        anne->send("show 10");
        {
            ModuleCopy betty(folder.path(), lockFolder("betty"), "VDR99BETTY");
            EXPECT_TRUE(betty.started());
            betty.send("show 10");
            betty.send("unpaid");
        }
        outsideRead(folder, "select count(*) from vendors");
        // Carl changes the telephone of vendor 10 on even rounds, of vendor 11 on odd ones.
        const int carlsVendor = round % 2 == 0 ? 10 : 11;
        const QString phone = QStringLiteral("555-%1").arg(round, 4, 10, QLatin1Char('0'));
        carl.send(QStringLiteral("show %1").arg(carlsVendor));
        carl.send("modify");
        carl.send("set 7 " + phone);
        const QStringList carlSaved = carl.send("save");
        if (ModuleCopy::dialogs(carlSaved).isEmpty() && carlSaved.contains("mode lookup")) {
            ++toldSaved;
            if (outsideRead(folder, QStringLiteral("select vendphone from vendors where "
                                                   "vendnumber = %1")
                                        .arg(carlsVendor)) == phone)
                ++foundSaved;
        }
        outsideRead(folder, "select vendname from vendors where vendnumber = 10");
        // Anne renames vendor 10 from her recall: a conflict whenever Carl changed it.
        const QString name = QStringLiteral("Ten Supplies %1").arg(round);
        anne->send("modify");
        anne->send("set 1 " + name);
        const QStringList anneSaved = anne->send("save");
        const QStringList shown = ModuleCopy::dialogs(anneSaved);
        if (carlsVendor == 10) {
            ++conflicts;
            if (shown == QStringList{changeReport})
                ++conflictsReported;
            if (outsideRead(folder, "select vendname from vendors where vendnumber = 10") == name)
                ++overwritten;
        } else if (shown.isEmpty() && anneSaved.contains("mode lookup")) {
            ++toldSaved;
            if (outsideRead(folder, "select vendname from vendors where vendnumber = 10") == name)
                ++foundSaved;
        } else {
            ++wrongReports;
            ADD_FAILURE() << "round " << round << ": " << shown.join(" / ").toStdString();
        }
    }
    std::printf("%d rounds: %d saves told saved, %d of them found in ap.mdb; %d conflicting "
                "saves, %d reported, %d written over the other user's change; %d other reports\n",
                rounds, toldSaved, foundSaved, conflicts, conflictsReported, overwritten,
                wrongReports);
    EXPECT_EQ(toldSaved, rounds + rounds / 2 + rounds % 2);
    EXPECT_EQ(foundSaved, toldSaved);
    EXPECT_EQ(conflictsReported, conflicts);
    EXPECT_EQ(overwritten, 0);
    EXPECT_EQ(wrongReports, 0);
    EXPECT_EQ(anne->quit(), 0);
    EXPECT_EQ(carl.quit(), 0);
    if (!DataFolder::onPostgres()) {
        EXPECT_EQ(outsideRead(folder, "pragma integrity_check"), "ok");
    }
}

TEST_F(SharedFolder, RunningCopyKeepsWorkingAfterAnotherCopyExitsAndAnOutsideRead)
{
    ModuleCopy anne(folder.path(), lockFolder("anne"), "VDR99ANNE");
    ASSERT_TRUE(anne.started());
    anne.send("show 10");
    {
        ModuleCopy betty(folder.path(), lockFolder("betty"), "VDR99BETTY");
        ASSERT_TRUE(betty.started());
        betty.send("show 10");
    }
    EXPECT_EQ(anne.send("show 11"), QStringList{});
    EXPECT_EQ(anne.send("get 1"), QStringList{"value Eleven Rentals"});
    anne.send("show 10");
    EXPECT_EQ(anne.send("unpaid"), QStringList{"rows 2"});
    anne.send("modify");
    anne.send("set 7 555-1111");
    EXPECT_EQ(anne.send("save"), QStringList{"mode lookup"});
    EXPECT_EQ(outsideRead(folder, "select vendphone from vendors where vendnumber = 10"),
              "555-1111");

    EXPECT_EQ(outsideRead(folder, "select count(*) from vendors"), "2");
    EXPECT_EQ(anne.send("show 11"), QStringList{});
    EXPECT_EQ(anne.send("get 7"), QStringList{"value 555-0011"});
    anne.send("show 10");
    EXPECT_EQ(anne.send("unpaid"), QStringList{"rows 2"});
    anne.send("modify");
    anne.send("set 7 555-2222");
    EXPECT_EQ(anne.send("save"), QStringList{"mode lookup"});
    EXPECT_EQ(outsideRead(folder, "select vendphone from vendors where vendnumber = 10"),
              "555-2222");
    EXPECT_EQ(anne.quit(), 0);
}

// The user's copies started from shells with different temporary folders.
QProcessEnvironment shellWithTmpdir(const QString &tmpdir, const QString &runtimeFolder)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("TMPDIR"), tmpdir);
    if (runtimeFolder.isEmpty())
        env.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    else
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtimeFolder);
    return env;
}

TEST_F(SharedFolder, SecondCopyWithAnotherTmpdirIsRefused)
{
    QTemporaryDir runtime, tmp1, tmp2;
    ModuleCopy first(folder.path(), "-", "VDR99ANNE", shellWithTmpdir(tmp1.path(), runtime.path()));
    ASSERT_TRUE(first.started());
    ModuleCopy second(folder.path(), "-", "VDR99ANNE",
                      shellWithTmpdir(tmp2.path(), runtime.path()));
    EXPECT_FALSE(second.started());
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_EQ(ModuleCopy::dialogs(second.startLines()),
              QStringList{"Uh-oh...|The module is already running."});
    EXPECT_EQ(first.send("show 10"), QStringList{});
    EXPECT_EQ(first.quit(), 0);
}

TEST_F(SharedFolder, WithoutARuntimeFolderSetTheCopiesStillMeetWhateverTheirTmpdir)
{
    QTemporaryDir tmp1, tmp2;
    ModuleCopy first(folder.path(), "-", "VDR99ANNE", shellWithTmpdir(tmp1.path(), {}));
    ASSERT_TRUE(first.started());
    ModuleCopy second(folder.path(), "-", "VDR99ANNE", shellWithTmpdir(tmp2.path(), {}));
    EXPECT_FALSE(second.started());
    EXPECT_EQ(ModuleCopy::dialogs(second.startLines()),
              QStringList{"Uh-oh...|The module is already running."});
    EXPECT_EQ(first.quit(), 0);
}

TEST_F(SharedFolder, KilledCopyLeavesTheVendorWithTheNotesOfTheSameSave)
{
    folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values (10, 'note 555-0010')");
    const int kills = 20;
    int whole = 0;
    for (int kill = 0; kill < kills; ++kill) {
        ModuleCopy anne(folder.path(), lockFolder("anne"), "VDR99ANNE");
        ASSERT_TRUE(anne.started());
        for (int save = 1; save <= 40; ++save) {
            const QString phone = QStringLiteral("%1-%2").arg(kill).arg(save);
            anne.post("show 10");
            anne.post("modify");
            anne.post("set 7 " + phone);
            anne.post("notes note " + phone);
            anne.post("save");
        }
        // Each kill aims at another moment of the stream of saves.
        QThread::msleep(20 + static_cast<unsigned long>(kill) * 17);
        anne.kill();
        const QString phone =
            outsideRead(folder, "select vendphone from vendors where vendnumber = 10");
        const QString notes =
            outsideRead(folder, "select notes from vendnotes where vendnumber = 10");
        if (notes == "note " + phone)
            ++whole;
        else
            ADD_FAILURE() << "kill " << kill << ": telephone " << phone.toStdString()
                          << " with notes " << notes.toStdString();
    }
    std::printf("%d kills during saves: %d left the vendor with the notes of the same save\n",
                kills, whole);
    EXPECT_EQ(whole, kills);
    if (!DataFolder::onPostgres()) {
        EXPECT_EQ(outsideRead(folder, "pragma integrity_check"), "ok");
    }
}

} // namespace
