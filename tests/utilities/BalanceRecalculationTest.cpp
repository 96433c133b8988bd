#include "utilities/BalanceRecalculation.h"
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

class BalanceRecalculationTest : public UtilitiesFixture {
protected:
    void SetUp() override
    {
        UtilitiesFixture::SetUp();
        folder.exec("ap.mdb", "update vendors set vendbalcurrent = 999, vendytd = 888");
        // Vendor 100: invoices in and out of 2025, some paid by checks in and out of it.
        invoice(100, 10.25, 20250101, 10.25, 20250110);
        invoice(100, 20, 20251231, 20, 20260105);
        invoice(100, 40, 20241231, 40, 20250101);
        invoice(100, 80, 20260101);
        invoice(250, 5, 20250615, 5, 20251231);
    }
    // The range, and Yes to the question before anything is written.
    void recalculate(const QString &from, const QString &to)
    {
        module.dialogs.inputAnswers = {from, to};
        module.dialogs.yesNoAnswers = {Dialogs::Yes};
        menu("mnurecalc");
    }
};

TEST_F(BalanceRecalculationTest, AsksOnceBeforeWritingWithNoAsTheDefault)
{
    recalculate("20250101", "20251231");
    EXPECT_EQ(module.dialogs.count("yesno"), 1);
    ASSERT_EQ(module.dialogs.shown.size(), 3u);
    const FakeDialogs::Shown &asked = module.dialogs.shown[2];
    EXPECT_EQ(asked.kind, "yesno");
    EXPECT_EQ(asked.text, "Recalculate the balances of every vendor from 20250101 to 20251231?");
    EXPECT_EQ(asked.title, "Recalculate Balances");
    EXPECT_EQ(asked.buttons, (QStringList{"Yes", "No"}));
    EXPECT_EQ(asked.defaultAnswer, Dialogs::No);
}

TEST_F(BalanceRecalculationTest, AnsweringNoToTheQuestionWritesNothing)
{
    module.window->setStatus("as it was");
    module.dialogs.inputAnswers = {"20250101", "20251231"};
    module.dialogs.yesNoAnswers = {Dialogs::No};
    menu("mnurecalc");
    EXPECT_EQ(module.dialogs.count("yesno"), 1);
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 999);
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 888);
    EXPECT_DOUBLE_EQ(column(300, "vendytd"), 888);
    EXPECT_EQ(module.window->status(), "as it was");
}

TEST_F(BalanceRecalculationTest, TheQuestionNamesTheRangeEarlierDateFirst)
{
    recalculate("20251231", "20250101");
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "Recalculate the balances of every vendor from 20250101 to 20251231?");
}

TEST_F(BalanceRecalculationTest, TheDatesAreAskedForInvoices)
{
    recalculate("", "");
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->title, "FROM Date - Invoices");
}

TEST_F(BalanceRecalculationTest, BalanceAddsInvoiceAmountsAndYtdAddsChecksEachByItsOwnDate)
{
    recalculate("20250101", "20251231");
    // Invoices dated in 2025 (paid or not): 10.25 + 20; checks dated in 2025: 10.25 + 40.
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 30.25);
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 50.25);
    EXPECT_DOUBLE_EQ(column(250, "vendbalcurrent"), 5);
    EXPECT_DOUBLE_EQ(column(250, "vendytd"), 5);
    EXPECT_EQ(module.window->status(),
              "Vendor balances recalculated between 20250101 and 20251231");
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(BalanceRecalculationTest, AVendorWithoutInvoicesInTheRangeEndsWithZeros)
{
    recalculate("20250101", "20251231");
    EXPECT_DOUBLE_EQ(column(300, "vendbalcurrent"), 0);
    EXPECT_DOUBLE_EQ(column(300, "vendytd"), 0);
    EXPECT_TRUE(vendorColumn(300, "vendytd").isValid());
    EXPECT_FALSE(vendorColumn(300, "vendytd").isNull());
}

TEST_F(BalanceRecalculationTest, TheRangeIncludesBothEnds)
{
    recalculate("20251231", "20260101");
    // Invoices of 20251231 and 20260101; the checks of 20251231 (vendor 250) and none else.
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 100);
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 0);
    EXPECT_DOUBLE_EQ(column(250, "vendytd"), 5);
}

TEST_F(BalanceRecalculationTest, AFromDateOf19990100IsAccepted)
{
    recalculate("19990100", "20251231");
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 70.25);
    EXPECT_DOUBLE_EQ(column(300, "vendytd"), 0);
}

TEST_F(BalanceRecalculationTest, ADateJustBelow19990100InEitherPlaceEndsTheRunSilently)
{
    for (const auto &[from, to] :
         {std::pair{"19990099", "20251231"}, std::pair{"19981231", "19990099"}}) {
        module.dialogs.shown.clear();
        module.window->setStatus("as it was");
        recalculate(from, to);
        EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 999) << from;
        EXPECT_DOUBLE_EQ(column(300, "vendytd"), 888) << from;
        EXPECT_EQ(module.dialogs.count(), 0) << from;
        EXPECT_EQ(module.dialogs.count("yesno"), 0) << from;
        EXPECT_EQ(module.window->status(), "as it was");
    }
}

TEST_F(BalanceRecalculationTest, CancellingTheDatesChangesNothing)
{
    recalculate("", "");
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 888);
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(BalanceRecalculationTest, AFromDateAfterTheToDateIsTakenTheOtherWayRound)
{
    recalculate("20251231", "20250101");
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 30.25);
    EXPECT_EQ(module.window->status(),
              "Vendor balances recalculated between 20250101 and 20251231");
}

TEST_F(BalanceRecalculationTest, AnswersThatAreNoDatesAreAskedAgainOrCompleted)
{
    // "abc" is asked again; "2025" is completed with this year (2026) into 20262025.
    module.dialogs.inputAnswers = {"abc", "20250101", "2025"};
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    menu("mnurecalc");
    EXPECT_EQ(module.dialogs.count("input"), 3);
    EXPECT_EQ(module.window->status(),
              "Vendor balances recalculated between 20250101 and 20262025");
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 110.25);
}

TEST_F(BalanceRecalculationTest, AToDateOfEightNinesIsTakenAsItStandsAndCoversEveryLaterDate)
{
    // The prompt checks the length only: 99999999 is a number above every stored date.
    recalculate("20250101", "99999999");
    EXPECT_EQ(module.window->status(),
              "Vendor balances recalculated between 20250101 and 99999999");
    // Invoices of 20250101, 20251231 and 20260101; checks of 20250101, 20250110, 20260105.
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 110.25);
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 70.25);
}

TEST_F(BalanceRecalculationTest, EachVendorIsShownInTheStatusLineAsItIsRecalculated)
{
    RecordingProgress progress;
    QLineEdit line;
    StatusLine status(&line);
    QStringList seen;
    progress.at = 5; // after the first batch of the second pass (the first pass zeroed four)
    progress.work = [&] { seen << line.text(); };
    BalanceRecalculation(
        {module.dialogs, module.clock, module.databases, module.session, status, progress})
        .recalculate(20250101, 20251231);
    EXPECT_EQ(seen, QStringList{"Recalculating vendor # 100"});
    EXPECT_EQ(progress.total, 8);
    EXPECT_EQ(progress.last, 8);
}

TEST_F(BalanceRecalculationTest, AnotherUserWritesBetweenTwoBatchesOfEitherPass)
{
    SQLITE_FILES_ONLY();
    for (int at : {2, 6}) {
        RecordingProgress progress;
        QString otherError = "not run";
        progress.at = at;
        progress.work = [&] {
            QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "other");
            db.setDatabaseName(folder.file("ap.mdb"));
            db.setConnectOptions("QSQLITE_BUSY_TIMEOUT=0");
            db.open();
            {
                QSqlQuery q(db);
                otherError = q.exec("update vendors set vendfax = 'x' where vendnumber = 300")
                                 ? QString()
                                 : q.lastError().text();
            }
            db.close();
        };
        QLineEdit line;
        StatusLine status(&line);
        BalanceRecalculation(
            {module.dialogs, module.clock, module.databases, module.session, status, progress})
            .recalculate(20250101, 20251231);
        QSqlDatabase::removeDatabase("other");
        EXPECT_EQ(otherError, "") << "after record " << at;
    }
}

// Another user adds an invoice while a batch is under way (its vendor shown, nothing of it written
// yet): the batch's totals count it.
TEST_F(BalanceRecalculationTest, AnInvoiceAnotherUserAddsWhileABatchIsUnderWayCountsInItsTotals)
{
    RecordingProgress progress;
    QLineEdit line;
    StatusLine status(&line);
    int added = 0;
    QObject::connect(&line, &QLineEdit::textChanged, [&](const QString &text) {
        if (text == "Recalculating vendor # 100" && added++ == 0)
            invoice(250, 7, 20250701, 6, 20250702);
    });
    BalanceRecalculation(
        {module.dialogs, module.clock, module.databases, module.session, status, progress})
        .recalculate(20250101, 20251231);
    EXPECT_EQ(added, 1);
    EXPECT_DOUBLE_EQ(column(250, "vendbalcurrent"), 12);
    EXPECT_DOUBLE_EQ(column(250, "vendytd"), 11);
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 30.25);
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 50.25);
}

// Another program holds the file's write lock for several of the engine's waits when the pass
// starts: the pass waits for it and ends as usual, without a report.
TEST_F(BalanceRecalculationTest, APassWaitsForAWriteLockHeldLongerThanOneWait)
{
    SQLITE_FILES_ONLY();
    QProcess holder;
    holder.setWorkingDirectory(folder.path());
    holder.start("sqlite3", {"ap.mdb"});
    ASSERT_TRUE(holder.waitForStarted());
    holder.write("begin immediate;\nupdate vendors set vendfax = 'held' where vendnumber = 300;\n"
                 ".shell touch locked.flag\n.shell sleep 1\ncommit;\n.quit\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.file("locked.flag")); }, 5000));
    QElapsedTimer waited;
    waited.start();
    recalculate("20250101", "20251231");
    EXPECT_GE(waited.elapsed(), 500); // it did meet the lock, for more than one 200 ms wait
    ASSERT_TRUE(holder.state() == QProcess::NotRunning || holder.waitForFinished(5000));
    EXPECT_EQ(module.dialogs.count("message"), 0) << module.dialogs.last()->text.toStdString();
    EXPECT_EQ(module.window->status(),
              "Vendor balances recalculated between 20250101 and 20251231");
    EXPECT_DOUBLE_EQ(column(100, "vendbalcurrent"), 30.25);
    EXPECT_DOUBLE_EQ(column(100, "vendytd"), 50.25);
    EXPECT_DOUBLE_EQ(column(300, "vendytd"), 0);
    EXPECT_EQ(vendorColumn(300, "vendfax").toString(), "held");
}

} // namespace
