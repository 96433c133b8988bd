#include "support/DataFolder.h"
#include "support/ModuleCopy.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// The report runner is another program: it finds the request on the desktop's clipboard. Here a
// copy of the module runs on a virtual X display, and the runner is a script that saves what
// the clipboard holds when it starts.
TEST(RunnerClipboard, TheStartedRunnerFindsTheRequestOnTheDesktopClipboard)
{
    for (const char *tool : {"xvfb-run", "xclip"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
            GTEST_SKIP() << tool << " is not installed (scripts/setup.sh installs it)";
    DataFolder folder;
    folder.addVendor(12, QStringLiteral("Paper Co"));
    folder.writeFile("rap001.rpt", "report definition");
    folder.writeProgram("cryprint.exe",
                        "xclip -selection clipboard -o > clip.part && mv clip.part clipboard.txt");
    folder.writeFile("printmargin.1", "720\n360\n"); // DEMO is system user 1
    QTemporaryDir locks;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    ModuleCopy copy(folder.path(), locks.path(), QStringLiteral("VDR99DEMO"), env,
                    {QStringLiteral("xvfb-run"), QStringLiteral("-a")});
    ASSERT_TRUE(copy.started()) << copy.startLines().join(" | ").toStdString();
    EXPECT_EQ(copy.send(QStringLiteral("menu rptbasica")), QStringList{});
    EXPECT_EQ(copy.send(QStringLiteral("wait clipboard.txt")), QStringList{"found"});
    EXPECT_EQ(folder.readFile("clipboard.txt"),
              "Crystal~\nReportFileName=rap001.rpt~\nWindowTitle=~\nMarginTop=720~\n"
              "MarginLeft=360~\nSortFields(0)=+{vendors.vendname}~");
    EXPECT_EQ(copy.quit(), 0);
}

} // namespace
