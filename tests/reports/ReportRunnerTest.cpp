#include "reports/ReportRunner.h"
#include "common/Clipboard.h"
#include "common/Processes.h"
#include "common/StatusLine.h"
#include "reports/PrintMargins.h"
#include "reports/ReportRequest.h"
#include "support/DataFolder.h"
#include "support/FakeDialogs.h"

#include <QFile>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class ReportRunnerTest : public ::testing::Test {
protected:
    DataFolder folder;
    FakeDialogs dialogs;
    SystemClipboard clipboard;
    SystemProcesses processes;
    QLineEdit line;
    StatusLine status{&line};
    PrintMargins margins{3};
    QStringList seenWhenTopmostWentOff;
    ReportRunner runner{{clipboard, processes, dialogs, status}, margins, [this] {
                            seenWhenTopmostWentOff << clipboard.text() << status.text();
                        }};
    ReportRequest request;

    void SetUp() override
    {
        request.reportFileName = "rap014.rpt";
        request.selectionFormula = "{invoices.invdate} >= 1";
        request.sortFields[0] = "+{vendors.vendname}";
        request.dataFiles[1] = "ap.mdb";
        request.windowTitle = "Title";
        clipboard.setText("what the user copied");
    }
    QString expected() const
    {
        return "Crystal~\nReportFileName=rap014.rpt~\nWindowTitle=Title~\nMarginTop=0~\n"
               "MarginLeft=0~\nSelectionFormula={invoices.invdate} >= 1~\nDataFiles(1)=ap.mdb~\n"
               "SortFields(0)=+{vendors.vendname}~";
    }
};

TEST_F(ReportRunnerTest, AMissingRunnerIsReportedAndTheClipboardIsReplacedAnyway)
{
    runner.runReport(request);
    EXPECT_EQ(clipboard.text(), expected());
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text, "cryprint.exe cannot be found");
    EXPECT_EQ(dialogs.last()->title, Dialogs::defaultTitle());
}

TEST_F(ReportRunnerTest, AMissingRunnerIsReportedBeforeAMissingReportFile)
{
    runner.runReport(request);
    EXPECT_EQ(dialogs.texts(), QStringList{"cryprint.exe cannot be found"});
}

TEST_F(ReportRunnerTest, AMissingReportFileIsNamed)
{
    folder.writeProgram("cryprint.exe", "exit 0");
    runner.runReport(request);
    EXPECT_EQ(dialogs.texts(), QStringList{"rap014.rpt cannot be found"});
}

TEST_F(ReportRunnerTest, TheRequestIsClearedButForTheReportFile)
{
    runner.runReport(request);
    EXPECT_EQ(request.reportFileName, "rap014.rpt");
    EXPECT_TRUE(request.selectionFormula.isEmpty());
    EXPECT_TRUE(request.sortFields[0].isEmpty());
    EXPECT_TRUE(request.dataFiles[1].isEmpty());
    EXPECT_TRUE(request.windowTitle.isEmpty());
}

TEST_F(ReportRunnerTest, TheWindowLeavesTheTopBeforeAnythingElse)
{
    runner.printReport(request);
    EXPECT_EQ(seenWhenTopmostWentOff, (QStringList{"what the user copied", "Creating report..."}));
}

TEST_F(ReportRunnerTest, PrintReportShowsItsStatusTexts)
{
    runner.printReport(request);
    EXPECT_EQ(line.text(), "Report complete");
}

TEST_F(ReportRunnerTest, TheRunnerIsStartedAndNotWaitedFor)
{
    folder.writeProgram("cryprint.exe", "sleep 2; echo ran > ran.txt");
    folder.writeFile("rap014.rpt", "definition");
    QElapsedTimer timer;
    timer.start();
    runner.runReport(request);
    EXPECT_LT(timer.elapsed(), 1500);
    EXPECT_EQ(dialogs.count(), 0);
    EXPECT_FALSE(QFile::exists(folder.file("ran.txt")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(folder.file("ran.txt")); }, 10000));
}

TEST_F(ReportRunnerTest, TheRunnersProcessIdIsKeptAndNoneWhenItIsMissing)
{
    request.reportTaskId = 7;
    runner.runReport(request);
    EXPECT_EQ(request.reportTaskId, 7); // not started: nothing new to keep
    folder.writeProgram("cryprint.exe", "echo $$ > pid.txt");
    folder.writeFile("rap014.rpt", "definition");
    runner.runReport(request);
    ASSERT_TRUE(folder.waitForLine("pid.txt", 10000));
    const qint64 pid = folder.readFile("pid.txt").trimmed().toLongLong();
    EXPECT_GT(pid, 1);
    EXPECT_EQ(request.reportTaskId, pid);
}

TEST_F(ReportRunnerTest, WithoutAMarginFileTheMarginLinesReadZero)
{
    runner.runReport(request);
    EXPECT_TRUE(clipboard.text().contains("\nMarginTop=0~\nMarginLeft=0~\n"));
}

TEST_F(ReportRunnerTest, TheMarginFileIsReadAgainForEveryRequest)
{
    folder.writeFile("printmargin.3", "720\n1440\n");
    runner.runReport(request);
    EXPECT_TRUE(clipboard.text().contains("\nMarginTop=720~\nMarginLeft=1440~\n"));
    QFile::remove(folder.file("printmargin.3"));
    request.reportFileName = "rap014.rpt";
    runner.runReport(request);
    EXPECT_TRUE(clipboard.text().contains("\nMarginTop=0~\nMarginLeft=0~"));
}

} // namespace
