#include "RunnerPlacement.h"
#include "RunningPrograms.h"
#include "support/DataFolder.h"
#include "support/ModuleCopy.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

// The programs as a new company gets them: linked from the build tree, as the demo generator
// does beside its own folder.
const QString buildPrograms =
    QFileInfo(QStringLiteral(VLMOHELP_PROGRAM)).absolutePath() + QStringLiteral("/../demo");

void writeText(const QString &path, const QByteArray &text)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The real module in a process of its own on a virtual X display, with the real help viewer,
// text editor and version window in its data folder; the desktop's PDF viewer is a stand-in
// that writes the file it was given to viewer.txt and ends with the exit code in viewer.code.
// The clipboard is the display's, shared by the module and the programs it starts.
class ModuleHelp : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const char *tool : {"xvfb-run", "xdotool"})
            if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
                GTEST_SKIP() << tool << " is not installed (scripts/setup.sh installs it)";
        placeHelp(folder.path(), buildPrograms);
        placeVersionWindow(folder.path(), buildPrograms);
        ASSERT_TRUE(QFileInfo(folder.file("manual-ACCTPAY.pdf")).isFile());
        ASSERT_TRUE(QFileInfo(folder.file("vendor1.txt")).isFile());
        writeText(viewer("viewer"), "#!/bin/sh\n"
                                    "cd \"$(dirname \"$0\")\"\n"
                                    "printf '%s\\n' \"$@\" > viewer.part\n"
                                    "mv viewer.part viewer.txt\n"
                                    "exit $(cat viewer.code 2>/dev/null || echo 0)\n");
        QFile::setPermissions(viewer("viewer"), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    }

    void TearDown() override
    {
        for (const RunningProgram &left :
             runningPrograms(QStringLiteral("vlmedit.exe"), folder.path()))
            endProgram(left.pid);
        for (const RunningProgram &left :
             runningPrograms(QStringLiteral("vinfo32.exe"), folder.path()))
            endProgram(left.pid);
    }

    std::unique_ptr<ModuleCopy> startModule()
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        env.insert(QStringLiteral("APMASTER_PDF_VIEWER"), viewer("viewer"));
        auto copy =
            std::make_unique<ModuleCopy>(folder.path(), locks.path(), QStringLiteral("VDR99DEMO"),
                                         env, QStringList{"xvfb-run", "-a"});
        EXPECT_TRUE(copy->started()) << copy->startLines().join(" | ").toStdString();
        return copy;
    }

    QString canonical(const QString &name) const
    {
        return QDir(folder.path()).canonicalPath() + QLatin1Char('/') + name;
    }

    // Whether a window of that title is on the program's display.
    static bool windowShown(const RunningProgram &program, const QString &title)
    {
        QProcess search;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DISPLAY"), program.display);
        env.insert(QStringLiteral("XAUTHORITY"), program.authority);
        search.setProcessEnvironment(env);
        search.start(QStringLiteral("xdotool"), {"search", "--sync", "--onlyvisible", "--name",
                                                 QRegularExpression::escape(title)});
        return search.waitForFinished(20000) && search.exitCode() == 0 &&
               !search.readAllStandardOutput().trimmed().isEmpty();
    }

    DataFolder folder;
    QTemporaryDir locks;
    QTemporaryDir viewerFolder;
    QString viewer(const QString &name) const { return viewerFolder.filePath(name); }
};

TEST_F(ModuleHelp, HelpHandsTheCompanysManualToThePdfViewer)
{
    const auto module = startModule();
    EXPECT_EQ(ModuleCopy::dialogs(module->send(QStringLiteral("help"))), QStringList{});
    EXPECT_EQ(module->send(QStringLiteral("wait ") + viewer("viewer.txt")), QStringList{"found"});
    EXPECT_EQ(readText(viewer("viewer.txt")), canonical("manual-ACCTPAY.pdf") + "\n");
    // The manual was shown: the editor is not opened as well.
    EXPECT_TRUE(runningPrograms(QStringLiteral("vlmedit.exe"), folder.path()).isEmpty());
    EXPECT_EQ(module->quit(), 0);
}

TEST_F(ModuleHelp, AViewerThatCannotOpenTheManualLeavesNohelpAndTheEditorOpensTheHelpText)
{
    writeText(viewer("viewer.code"), "1\n");
    const auto module = startModule();
    EXPECT_EQ(ModuleCopy::dialogs(module->send(QStringLiteral("help"))), QStringList{});
    // The viewer was asked, refused, and the editor came up with the plain-text help.
    EXPECT_EQ(readText(viewer("viewer.txt")), canonical("manual-ACCTPAY.pdf") + "\n");
    const RunningProgram editor = waitForProgram(QStringLiteral("vlmedit.exe"), folder.path());
    ASSERT_NE(editor.pid, 0) << "the text editor was not started in the data folder";
    EXPECT_EQ(editor.arguments, QStringList{"vendor1.txt"});
    EXPECT_TRUE(windowShown(editor, QStringLiteral("vendor1.txt - Velmora Office text editor")));
    endProgram(editor.pid);
    EXPECT_EQ(module->quit(), 0);
}

TEST_F(ModuleHelp, WithoutTheManualHelpOpensTheHelpTextInTheEditor)
{
    ASSERT_TRUE(QFile::remove(folder.file("manual-ACCTPAY.pdf")));
    const auto module = startModule();
    EXPECT_EQ(ModuleCopy::dialogs(module->send(QStringLiteral("help"))), QStringList{});
    const RunningProgram editor = waitForProgram(QStringLiteral("vlmedit.exe"), folder.path());
    ASSERT_NE(editor.pid, 0) << "the text editor was not started in the data folder";
    EXPECT_EQ(editor.arguments, QStringList{"vendor1.txt"});
    // No manual, no viewer: the stand-in was never asked.
    EXPECT_FALSE(QFileInfo::exists(viewer("viewer.txt")));
    endProgram(editor.pid);
    EXPECT_EQ(module->quit(), 0);
}

TEST_F(ModuleHelp, VersionInformationStartsTheVersionWindowWithTheModulesArguments)
{
    const auto module = startModule();
    // The module waits for the window: the answer comes when it is closed.
    module->post(QStringLiteral("menu mnuversion"));
    const RunningProgram window = waitForProgram(QStringLiteral("vinfo32.exe"), folder.path());
    ASSERT_NE(window.pid, 0) << "the version window was not started in the data folder";
    EXPECT_EQ(window.arguments, (QStringList{"DEMO@apmaster-copy", "21.12.28a", "SysUser:", "1"}));
    ASSERT_TRUE(windowShown(window, QStringLiteral("Version information")));
    // Closed from outside as a user does, with Escape in the window: a normal end, no warning.
    QProcess close;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), window.display);
    env.insert(QStringLiteral("XAUTHORITY"), window.authority);
    close.setProcessEnvironment(env);
    close.start(QStringLiteral("sh"),
                {"-c", "w=$(xdotool search --onlyvisible --name 'Version information' | head -1) &&"
                       " xdotool windowfocus --sync $w && xdotool key Escape"});
    ASSERT_TRUE(close.waitForFinished(20000));
    EXPECT_EQ(close.exitCode(), 0) << close.readAllStandardError().toStdString();
    EXPECT_EQ(ModuleCopy::dialogs(module->answer()), QStringList{});
    EXPECT_TRUE(runningPrograms(QStringLiteral("vinfo32.exe"), folder.path()).isEmpty());
    EXPECT_FALSE(QFileInfo::exists(folder.file("lastbkup.dat")));
    EXPECT_EQ(module->quit(), 0);
}

} // namespace
