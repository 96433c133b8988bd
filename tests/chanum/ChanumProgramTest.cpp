#include "ChanumFixture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLocale>
#include <QStandardPaths>
#include <QTest>

namespace {

const QString demo = QStringLiteral("clipboard DEMO");

// A change moves the vendor and every row that refers to it, amounts unchanged to the cent.
TEST_F(ChanumProgram, AChangeMovesEveryRowOfTheVendorToTheNewNumberInOneGo)
{
    const Run r = run("CVN99DEMO", {demo, "input 120", "input 950", "yes"});
    ASSERT_EQ(r.exitCode, 0) << r.output.toStdString() << r.errors.toStdString();
    EXPECT_EQ(read("select vendname, cast(round(vendbalcurrent * 100) as integer), "
                   "cast(round(vendytd * 100) as integer) from vendors where vendnumber = 950"),
              "Acme Paper|34575|30030");
    EXPECT_EQ(read("select count(*), cast(round(sum(invamount) * 100) as integer), "
                   "cast(round(sum(invcheckamount) * 100) as integer) from invoices where "
                   "vendnumber = 950"),
              "3|39580|35035");
    EXPECT_EQ(read("select count(*), cast(round(sum(chkamount) * 100) as integer) from checks "
                   "where chkpayeenum = 950"),
              "2|35035");
    EXPECT_EQ(read("select notes from vendnotes where vendnumber = 950"), "Call before delivery");
    EXPECT_EQ(read("select miscvalue1, miscvalue2, miscvalue3 from miscdata where acctid = 950"),
              "West|Sam|Blue");
    for (const char *sql : {"select count(*) from vendors where vendnumber = 120",
                            "select count(*) from invoices where vendnumber = 120",
                            "select count(*) from checks where chkpayeenum = 120",
                            "select count(*) from vendnotes where vendnumber = 120",
                            "select count(*) from miscdata where acctid = 120"})
        EXPECT_EQ(read(sql), "0") << sql;
    // The other vendors are as they were; the totals of the whole file are unchanged.
    EXPECT_EQ(read("select count(*), cast(round(sum(invamount) * 100) as integer) from invoices"),
              "6|169609");
    EXPECT_EQ(read("select count(*) from invoices where vendnumber = 130"), "2");
    EXPECT_TRUE(r.output.contains("Vendor 120 is now vendor 950.")) << r.output.toStdString();
}

// Before anything the user sees both vendors' counts and money, and the answer No leaves all.
TEST_F(ChanumProgram, TheQuestionShowsCountsAndTotalsAndNoChangesNothing)
{
    const QString before = everything();
    const Run r = run("MVN99DEMO", {demo, "input 120", "input 130", "no"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_TRUE(r.output.contains("question: Velmora Office Message: Vendor 120 Acme Paper\\n"
                                  "  3 invoices totalling 395.80 (paid 350.35)\\n"
                                  "  2 checks totalling 350.35\\n"
                                  "  notes: yes, user-defined values: yes\\n"
                                  "  balance 345.75, YTD 300.30\\n\\n"
                                  "Vendor 130 Brook Supply\\n"
                                  "  2 invoices totalling 300.30 (paid 199.99)"))
        << r.output.toStdString();
    EXPECT_TRUE(r.output.contains("-> no"));
    EXPECT_EQ(everything(), before);
    EXPECT_FALSE(QFile::exists(folder.file("admlog.ini")));
}

// A merge moves the history, appends the notes under a dated line, keeps the target's
// user-defined values and lists the conflicts, recalculates over the current year, deletes.
TEST_F(ChanumProgram, AMergeMovesTheHistoryRecalculatesTheTargetAndDeletesTheMergedVendor)
{
    const Run r = run("MVN99DEMO", {demo, "input 120", "input 130", "yes"});
    ASSERT_EQ(r.exitCode, 0) << r.output.toStdString() << r.errors.toStdString();
    EXPECT_EQ(read("select count(*) from vendors where vendnumber = 120"), "0");
    EXPECT_EQ(read("select count(*), cast(round(sum(invamount) * 100) as integer), "
                   "cast(round(sum(invcheckamount) * 100) as integer) from invoices where "
                   "vendnumber = 130"),
              "5|69610|55034");
    EXPECT_EQ(read("select count(*), cast(round(sum(chkamount) * 100) as integer) from checks "
                   "where chkpayeenum = 130"),
              "3|55034");
    // Balance: invoices dated this year (100.10 + 200.20 + 300.30 + 45.45); YTD: paid this
    // year (199.99 + 300.30); the aged balances of both added.
    EXPECT_EQ(read("select cast(round(vendbalcurrent * 100) as integer), cast(round(vendytd * "
                   "100) as integer), cast(round(vendbal60 * 100) as integer), "
                   "cast(round(vendbal90 * 100) as integer) from vendors where vendnumber = 130"),
              "64605|50029|1100|700");
    EXPECT_EQ(read("select notes from vendnotes where vendnumber = 130"),
              "Net 30 only\r\n---- " + QDate::currentDate().toString(Qt::ISODate) +
                  ": notes of vendor 120 (Acme Paper), merged into this vendor ----\r\n"
                  "Call before delivery");
    EXPECT_EQ(read("select count(*) from vendnotes where vendnumber = 120"), "0");
    EXPECT_EQ(read("select miscvalue1, miscvalue2, miscvalue3 from miscdata where acctid = 130"),
              "East|Sam|Blue");
    EXPECT_EQ(read("select count(*) from miscdata where acctid = 120"), "0");
    EXPECT_TRUE(
        r.output.contains("Region: kept \"East\" of vendor 130, not \"West\" of vendor 120"))
        << r.output.toStdString();
    EXPECT_FALSE(r.output.contains("Rep: kept")) << r.output.toStdString();
    // Vendor 140 is untouched, and the whole file's money is what it was.
    EXPECT_EQ(read("select cast(round(vendbalcurrent * 100) as integer) from vendors where "
                   "vendnumber = 140"),
              "99999");
    EXPECT_EQ(read("select count(*), cast(round(sum(invamount) * 100) as integer) from invoices"),
              "6|169609");
    EXPECT_EQ(read("select count(*), cast(round(sum(chkamount) * 100) as integer) from checks"),
              "4|55134");
}

// One line in the administrator's log, in the module's form: date-time-user-location-message.
TEST_F(ChanumProgram, ADoneJobWritesOneLineToTheAdministratorsLog)
{
    const Run r = run("MVN99DEMO", {demo, "input 120", "input 130", "yes"});
    ASSERT_EQ(r.exitCode, 0) << r.output.toStdString();
    const QString log = folder.readFile("admlog.ini");
    EXPECT_EQ(log.count('\n'), 1) << log.toStdString();
    EXPECT_TRUE(log.startsWith(
        QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat) + "-"))
        << log.toStdString();
    EXPECT_TRUE(log.endsWith("-DEMO-Vendor numbers-Merged vendor 120 into vendor 130\n"))
        << log.toStdString();
}

struct Refusal {
    const char *argument;
    QStringList answers;
    const char *message;
};

// Each bad input is a clear message; the exit code says so and nothing is changed.
TEST_F(ChanumProgram, BadInputIsRefusedWithAClearMessageAndChangesNothing)
{
    const QString before = everything();
    const QString thousand = "MVN99" + QString(995, 'D');
    const std::vector<Refusal> cases{
        {"CVN", {demo}, "has no two-digit user level"},
        {"CVNxxBOB", {"clipboard BOB"}, "has no two-digit user level"},
        {"CVN99O'BRIEN", {"clipboard O'BRIEN"}, "holds a quote"},
        {"CVN99NOBODY",
         {"clipboard NOBODY", "input 120", "input 950", "yes"},
         "The user NOBODY is not on the staff list of this company."},
        {"CVN99DEMO",
         {"clipboard ANNE", "input 120", "input 950", "yes"},
         "The clipboard does not hold the user name DEMO"},
        {"CVN99DEMO",
         {demo, "input 120", "input 130", "yes"},
         "Vendor number 130 is already in use (Brook Supply)."},
        {"MVN99DEMO",
         {demo, "input 120", "input 120", "yes"},
         "A vendor cannot be merged into itself (120)."},
        {"MVN99DEMO", {demo, "input 555", "input 130", "yes"}, "There is no vendor 555."},
        {"MVN99DEMO",
         {demo, "input 120", "input 556", "yes"},
         "There is no vendor 556 to merge into."},
        {"CVN99DEMO", {demo, "input 12a", "input 950", "yes"}, "\"12a\" is not a vendor number"},
        {"CVN99DEMO", {demo, "input 120", "input 0", "yes"}, "\"0\" is not a vendor number"},
        {"CVN99DEMO",
         {demo, "input 120", "input 2147483648", "yes"},
         "\"2147483648\" is not a vendor number"}};
    for (const Refusal &c : cases) {
        const Run r = run(QString::fromUtf8(c.argument), c.answers);
        EXPECT_EQ(r.exitCode, 1) << c.argument << ": " << r.output.toStdString();
        EXPECT_TRUE(r.output.contains(QString::fromUtf8(c.message)))
            << c.argument << ": " << r.output.toStdString();
        EXPECT_FALSE(r.output.contains("question:")) << r.output.toStdString();
    }
    const Run r = run(thousand, {"clipboard " + QString(995, 'D')});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.output.contains("The job argument is 1000 characters long"))
        << r.output.toStdString();
    EXPECT_EQ(everything(), before);
    EXPECT_FALSE(QFile::exists(folder.file("admlog.ini")));
}

// The renumbering level of the module's settings: one below is refused, the level itself runs.
TEST_F(ChanumProgram, ALevelBelowTheRenumberingLevelIsRefusedAndTheLevelItselfRuns)
{
    folder.exec("config.mdb", "update ap set apaccess1 = 50");
    const Run below = run("CVN49DEMO", {demo, "input 120", "input 950", "yes"});
    EXPECT_EQ(below.exitCode, 1);
    EXPECT_TRUE(below.output.contains("Access denied. See system administrator.\\nChanging and "
                                      "merging vendor numbers needs level 50; DEMO has level 49."))
        << below.output.toStdString();
    EXPECT_EQ(read("select count(*) from vendors where vendnumber = 120"), "1");
    const Run at = run("CVN50DEMO", {demo, "input 120", "input 950", "yes"});
    EXPECT_EQ(at.exitCode, 0) << at.output.toStdString();
    EXPECT_EQ(read("select count(*) from vendors where vendnumber = 950"), "1");
}

// Without the settings' renumbering level nobody may renumber.
TEST_F(ChanumProgram, SettingsWithoutARenumberingLevelRefuseEveryone)
{
    folder.exec("config.mdb", "update ap set apaccess1 = null");
    const Run r = run("CVN99DEMO", {demo, "input 120", "input 950", "yes"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.output.contains("give no level for changing vendor numbers"))
        << r.output.toStdString();
    EXPECT_EQ(read("select count(*) from vendors where vendnumber = 120"), "1");
}

// Another user saving the vendor holds its lock for a moment: the merge waits, then goes on.
TEST_F(ChanumProgram, AMergeWaitsForAVendorThatIsBeingSavedAndThenGoesOn)
{
    ASSERT_TRUE(holdVendor(120, 1));
    QElapsedTimer waited;
    waited.start();
    const Run r = run("MVN99DEMO", {demo, "input 120", "input 130", "yes"});
    EXPECT_EQ(r.exitCode, 0) << r.output.toStdString() << r.errors.toStdString();
    EXPECT_GE(waited.elapsed(), 300);
    EXPECT_TRUE(r.errors.contains("waiting (try 1 of 20)")) << r.errors.toStdString();
    EXPECT_EQ(read("select count(*) from vendors where vendnumber = 120"), "0");
}

// A lock held for longer than the save's retries: the merge reports and changes nothing.
TEST_F(ChanumProgram, AMergeWhileAnotherProcessHoldsTheLockWaitsThenReportsAndChangesNothing)
{
    const QString before = everything();
    ASSERT_TRUE(holdVendor(120, 12));
    const Run r = run("MVN99DEMO", {demo, "input 120", "input 130", "yes"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.errors.contains("waiting (try 19 of 20)")) << r.errors.toStdString();
    EXPECT_TRUE(r.output.contains("Vendor 120 or 130 is being saved by another user, and the "
                                  "vendor file stayed busy through 20 tries.\\nNothing was "
                                  "changed."))
        << r.output.toStdString();
    ASSERT_TRUE(holder.waitForFinished(30000));
    EXPECT_EQ(everything(), before);
    EXPECT_FALSE(QFile::exists(folder.file("admlog.ini")));
}

// The program killed inside its transaction: the file is sound and holds what it held.
TEST_F(ChanumProgram, AMergeKilledPartWayLeavesTheDatabaseAsBefore)
{
    const QString before = everything();
    const QString counts = read("select count(*), cast(round(sum(invamount) * 100) as integer) "
                                "from invoices");
    QProcess chanum;
    start(chanum, "MVN99DEMO", {demo, "input 120", "input 130", "yes"},
          {QStringLiteral("--hold-before-commit")});
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return QFile::exists(folder.file("chanum.holding")); }, 30000))
        << chanum.readAllStandardOutput().toStdString();
    chanum.kill();
    ASSERT_TRUE(chanum.waitForFinished(10000));
    if (!DataFolder::onPostgres()) {
        EXPECT_EQ(read("pragma integrity_check"), "ok");
    }
    EXPECT_EQ(counts, "6|169609");
    EXPECT_EQ(read("select count(*), cast(round(sum(invamount) * 100) as integer) from invoices"),
              counts);
    EXPECT_EQ(read("select count(*) from vendors"), "3");
    EXPECT_EQ(everything(), before);
}

// Started as the vendor screen starts it: the user name is found on the desktop's clipboard.
TEST_F(ChanumProgram, TheUserNameIsReadFromTheDesktopClipboard)
{
    for (const char *tool : {"xvfb-run", "xclip"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
            GTEST_SKIP() << tool << " is not installed (scripts/setup.sh installs it)";
    QFile file(folder.file("answers.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("input 120\ninput 950\nyes\n");
    file.close();
    QProcess shell;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "xcb");
    shell.setProcessEnvironment(env);
    shell.setWorkingDirectory(folder.path());
    shell.start("xvfb-run", {"-a", "sh", "-c",
                             "printf 'DEMO ' | xclip -selection clipboard && exec \"$0\" "
                             "--answers answers.txt CVN99DEMO",
                             QStringLiteral(CHANUM_PROGRAM)});
    ASSERT_TRUE(shell.waitForFinished(60000));
    const QString output = QString::fromUtf8(shell.readAllStandardOutput());
    EXPECT_EQ(shell.exitCode(), 0)
        << output.toStdString() << shell.readAllStandardError().toStdString();
    EXPECT_EQ(read("select count(*) from vendors where vendnumber = 950"), "1");
}

TEST_F(ChanumProgram, AnAnswersFileThatCannotBeReadIsNamedAndEndsTheProgramWithCodeOne)
{
    const QString missing = folder.file(QStringLiteral("no-such-answers.txt"));
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(QStringLiteral(CHANUM_PROGRAM),
                  {QStringLiteral("--answers"), missing, QStringLiteral("CVN99DEMO")});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    const QString errors = QString::fromUtf8(process.readAllStandardError());
    EXPECT_TRUE(errors.contains("chanum: The answers file " + missing + " cannot be read: "))
        << errors.toStdString();
    EXPECT_TRUE(QString::fromUtf8(process.readAllStandardOutput()).isEmpty());
}

} // namespace
