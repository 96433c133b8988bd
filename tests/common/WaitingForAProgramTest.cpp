#include "common/Processes.h"
#include "support/DataFolder.h"

#include <QCoreApplication>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

// A window that counts its paints.
class CountedWindow : public QWidget {
public:
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *) override { ++paints; }
};

// Runs a program of the data folder that ends after half a second, while the test's timer acts
// in the middle of the wait.
int runSlowProgram(DataFolder &folder, const std::function<void()> &meanwhile)
{
    folder.writeProgram("slow.exe", "sleep 0.5\nexit 3");
    QTimer::singleShot(150, meanwhile);
    SystemProcesses processes;
    return processes.runAndWait(QStringLiteral("slow.exe"));
}

} // namespace

TEST(WaitingForAProgram, TheModulesWindowsGoOnPaintingWhileTheProgramRuns)
{
    DataFolder folder;
    CountedWindow window;
    window.show();
    QCoreApplication::processEvents();
    int paintsBefore = -1;
    int paintsAfterUpdate = -1;
    const int exitCode = runSlowProgram(folder, [&] {
        paintsBefore = window.paints;
        window.update();
        // A repaint asked for now is done before the program ends.
        QTimer::singleShot(100, [&] { paintsAfterUpdate = window.paints; });
    });
    EXPECT_EQ(exitCode, 3);
    ASSERT_GE(paintsBefore, 0) << "nothing ran while the module waited";
    EXPECT_GT(paintsAfterUpdate, paintsBefore);
}

TEST(WaitingForAProgram, ACloseRequestWhileWaitingIsRefusedAndAcceptedAfterwards)
{
    DataFolder folder;
    CountedWindow window;
    window.show();
    QCoreApplication::processEvents();
    bool closedWhileWaiting = true;
    bool visibleWhileWaiting = false;
    runSlowProgram(folder, [&] {
        closedWhileWaiting = window.close();
        visibleWhileWaiting = window.isVisible();
    });
    EXPECT_FALSE(closedWhileWaiting);
    EXPECT_TRUE(visibleWhileWaiting);
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(window.isVisible());
}

TEST(WaitingForAProgram, AProgramThatCannotStartEndsTheWaitAtOnce)
{
    SystemProcesses processes;
    EXPECT_EQ(processes.runAndWait(QStringLiteral("/no/such/program.exe")), Processes::WaitFailed);
}
