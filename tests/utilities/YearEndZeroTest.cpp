#include "utilities/YearEndZero.h"
#include "common/StatusLine.h"
#include "utilities/UtilitiesFixture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

namespace {

class YearEndZeroTest : public UtilitiesFixture {};

TEST_F(YearEndZeroTest, TheQuestionIsAskedWordForWord)
{
    menu("eoyzero");
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->kind, "yesno");
    EXPECT_EQ(module.dialogs.last()->title, "EOY Zero");
    EXPECT_EQ(module.dialogs.last()->text,
              "This function zeros the YTD totals for all vendors.\nClick YES to continue and "
              "zero the totals; click\nNO to cancel. Note: This process is irreversible.");
}

TEST_F(YearEndZeroTest, TheConfirmationHasYesAndNoWithNoAsTheDefault)
{
    menu("eoyzero");
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->buttons, (QStringList{"Yes", "No"}));
    EXPECT_EQ(module.dialogs.last()->defaultAnswer, Dialogs::No);
}

TEST_F(YearEndZeroTest, AnsweringNoLeavesEveryTotalAndTheStatusLine)
{
    module.window->setStatus("as it was");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    menu("eoyzero");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 1234.5);
    EXPECT_DOUBLE_EQ(column(251, "vendytd"), 600);
    EXPECT_EQ(module.window->status(), "as it was");
}

TEST_F(YearEndZeroTest, YesZeroesEveryVendorsYtdAndNothingElse)
{
    folder.exec("ap.mdb", "update vendors set vendbalcurrent = 77, vendbal90 = 5");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    menu("eoyzero");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors where vendytd <> 0").toInt(),
              0);
    EXPECT_EQ(folder
                  .scalar("ap.mdb", "select count(*) from vendors where vendbalcurrent = 77 "
                                    "and vendbal90 = 5")
                  .toInt(),
              4);
    EXPECT_EQ(module.window->status(), "Vendor YTD totals zeroed.");
    EXPECT_FALSE(c().passprogress->isVisible());
}

TEST_F(YearEndZeroTest, WithoutVendorsTheStatusLineKeepsZeroing)
{
    folder.exec("ap.mdb", "delete from vendors");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    menu("eoyzero");
    EXPECT_EQ(module.window->status(), "Zeroing YTD totals...");
}

// Another user's write goes through between two batches: the pass holds the write lock for one
// batch at a time.
TEST_F(YearEndZeroTest, AnotherUserWritesBetweenTwoBatchesWithoutWaiting)
{
    SQLITE_FILES_ONLY();
    RecordingProgress progress;
    QString otherError = "not run";
    progress.at = 2;
    progress.work = [&] {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "other");
        db.setDatabaseName(folder.file("ap.mdb"));
        db.setConnectOptions("QSQLITE_BUSY_TIMEOUT=0");
        db.open();
        {
            QSqlQuery q(db);
            otherError = q.exec("update vendors set vendfax = 'other' where vendnumber = 300")
                             ? QString()
                             : q.lastError().text();
        }
        db.close();
    };
    QLineEdit line;
    StatusLine status(&line);
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    YearEndZero({module.dialogs, module.databases, module.session, status, progress}).run();
    QSqlDatabase::removeDatabase("other");
    EXPECT_EQ(otherError, "");
    EXPECT_EQ(progress.total, 4);
    EXPECT_EQ(progress.last, 4);
    EXPECT_EQ(progress.ended, 1);
    EXPECT_EQ(vendorColumn(300, "vendfax").toString(), "other");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors where vendytd <> 0").toInt(),
              0);
}

// A vendor another program is writing is zeroed in its turn, once that program lets go.
TEST_F(YearEndZeroTest, AVendorHeldByAnotherProgramIsZeroedWhenItLetsGo)
{
    SQLITE_FILES_ONLY();
    QProcess holder;
    holder.setWorkingDirectory(folder.path());
    holder.start("sqlite3", {"ap.mdb"});
    ASSERT_TRUE(holder.waitForStarted());
    holder.write("begin immediate;\nupdate vendors set vendname = 'Held' where vendnumber = 100;\n"
                 ".shell touch locked.flag\n.shell sleep 0.1\ncommit;\n.quit\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.file("locked.flag")); }, 5000));
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    menu("eoyzero");
    ASSERT_TRUE(holder.state() == QProcess::NotRunning || holder.waitForFinished(5000));
    EXPECT_EQ(module.dialogs.count(), 0) << module.dialogs.last()->text.toStdString();
    EXPECT_EQ(module.window->status(), "Vendor YTD totals zeroed.");
    EXPECT_EQ(vendorColumn(100, "vendname").toString(), "Held");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors where vendytd <> 0").toInt(),
              0);
}

// On the server another program holds a vendor's row: the batch with that vendor waits for it,
// and the vendor is zeroed in its turn once the program lets go.
TEST_F(YearEndZeroTest, AVendorRowHeldOnTheServerIsZeroedWhenItLetsGo)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "a row held on the server; the files' own test holds the file";
    QProcess holder;
    holder.setWorkingDirectory(folder.path());
    holder.start("psql", {"-X", "-q", "-h", qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST"),
                          "-U", "postgres", "-d", folder.serverDatabase()});
    ASSERT_TRUE(holder.waitForStarted());
    holder.write("set search_path to ap_mdb, public;\nbegin;\nupdate vendors set vendname = "
                 "'Held' where vendnumber = 100;\n\\! touch locked.flag\nselect pg_sleep(0.5);\n"
                 "commit;\n\\q\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.file("locked.flag")); }, 5000));
    QElapsedTimer waited;
    waited.start();
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    menu("eoyzero");
    EXPECT_GE(waited.elapsed(), 200); // the pass did meet the held row
    ASSERT_TRUE(holder.state() == QProcess::NotRunning || holder.waitForFinished(5000));
    EXPECT_EQ(module.dialogs.count(), 0) << module.dialogs.last()->text.toStdString();
    EXPECT_EQ(module.window->status(), "Vendor YTD totals zeroed.");
    EXPECT_EQ(vendorColumn(100, "vendname").toString(), "Held");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors where vendytd <> 0").toInt(),
              0);
}

} // namespace
