#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString program = QStringLiteral(VLMOHELP_PROGRAM);

void writeText(const QString &path, const QByteArray &text, bool executable = false)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    if (executable)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner);
}

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// vlmohelp run as the module runs it, in a data folder, with a stand-in PDF viewer that writes
// the file it was given to viewer.txt and ends with the code of viewer.code (0 without it).
class HelpViewerProgram : public ::testing::Test {
protected:
    void SetUp() override
    {
        writeText(stand.filePath("viewer"),
                  "#!/bin/sh\ncd \"$(dirname \"$0\")\"\nprintf '%s\\n' \"$@\" > viewer.txt\n"
                  "exit $(cat viewer.code 2>/dev/null || echo 0)\n",
                  true);
    }

    struct Run {
        int exitCode = -1;
        QString errors;
    };

    Run run(const QString &executable, const QStringList &arguments,
            const QString &viewer = QString())
    {
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("APMASTER_PDF_VIEWER"),
                   viewer.isNull() ? stand.filePath("viewer") : viewer);
        process.setProcessEnvironment(env);
        process.setWorkingDirectory(data.path());
        process.start(executable, arguments);
        EXPECT_TRUE(process.waitForFinished(30000));
        // Only the program's own lines: Qt may add its warnings about the environment.
        const QStringList lines = QString::fromLocal8Bit(process.readAllStandardError())
                                      .split(QLatin1Char('\n'))
                                      .filter(QRegularExpression(QStringLiteral("^vlmohelp: ")));
        return {process.exitCode(), lines.join(QLatin1Char('\n'))};
    }

    QString canonical(const QString &name) const
    {
        return QDir(data.path()).canonicalPath() + QLatin1Char('/') + name;
    }

    QTemporaryDir data, stand;
};

TEST_F(HelpViewerProgram, TheManualOfTheDataFolderGoesToTheViewer)
{
    writeText(data.filePath("manual-ACCTPAY.pdf"), "%PDF-1.4 the manual\n");
    const Run done = run(program, {"manual-ACCTPAY.pdf"});
    EXPECT_EQ(done.exitCode, 0) << done.errors.toStdString();
    EXPECT_EQ(readText(stand.filePath("viewer.txt")), canonical("manual-ACCTPAY.pdf") + "\n");
}

TEST_F(HelpViewerProgram, TheViewerSettingMayCarryTheViewersOwnWords)
{
    writeText(data.filePath("manual-ACCTPAY.pdf"), "%PDF-1.4 the manual\n");
    const Run done = run(program, {"manual-ACCTPAY.pdf"},
                         stand.filePath("viewer") + QStringLiteral(" --page 1"));
    EXPECT_EQ(done.exitCode, 0) << done.errors.toStdString();
    EXPECT_EQ(readText(stand.filePath("viewer.txt")),
              "--page\n1\n" + canonical("manual-ACCTPAY.pdf") + "\n");
}

TEST_F(HelpViewerProgram, WithoutAManualInTheFolderTheInstalledOneIsOpened)
{
    // An installed layout: bin/vlmohelp beside share/apmaster/manual-ACCTPAY.pdf.
    QTemporaryDir prefix;
    QDir(prefix.path()).mkpath(QStringLiteral("bin"));
    const QString installed = prefix.filePath("bin/vlmohelp");
    ASSERT_TRUE(QFile::copy(program, installed));
    writeText(prefix.filePath("share/apmaster/manual-ACCTPAY.pdf"), "%PDF-1.4 installed\n");
    const Run done = run(installed, {"manual-ACCTPAY.pdf"});
    EXPECT_EQ(done.exitCode, 0) << done.errors.toStdString();
    EXPECT_EQ(readText(stand.filePath("viewer.txt")),
              QDir(prefix.path()).canonicalPath() + "/share/apmaster/manual-ACCTPAY.pdf\n");
}

TEST_F(HelpViewerProgram, AMissingManualIsNamedAndNoViewerIsStarted)
{
    const Run done = run(program, {"manual-ACCTPAY.pdf"});
    EXPECT_EQ(done.exitCode, 1);
    EXPECT_EQ(done.errors.trimmed(), "vlmohelp: the manual manual-ACCTPAY.pdf is neither in " +
                                         QDir(data.path()).canonicalPath() + " nor installed");
    EXPECT_FALSE(QFileInfo::exists(stand.filePath("viewer.txt")));
}

TEST_F(HelpViewerProgram, AViewerThatRefusesTheManualIsReportedWithItsExitCode)
{
    writeText(data.filePath("manual-ACCTPAY.pdf"), "%PDF-1.4 the manual\n");
    writeText(stand.filePath("viewer.code"), "4\n");
    const Run done = run(program, {"manual-ACCTPAY.pdf"});
    EXPECT_EQ(done.exitCode, 1);
    EXPECT_EQ(done.errors.trimmed(), "vlmohelp: the PDF viewer " + stand.filePath("viewer") +
                                         " could not open the manual (exit code 4)");
}

TEST_F(HelpViewerProgram, AViewerThatIsNotInstalledIsReported)
{
    writeText(data.filePath("manual-ACCTPAY.pdf"), "%PDF-1.4 the manual\n");
    const Run done = run(program, {"manual-ACCTPAY.pdf"}, stand.filePath("no-such-viewer"));
    EXPECT_EQ(done.exitCode, 1);
    EXPECT_TRUE(done.errors.startsWith("vlmohelp: the PDF viewer " +
                                       stand.filePath("no-such-viewer") + " could not be started"))
        << done.errors.toStdString();
}

TEST_F(HelpViewerProgram, WithoutTheManualsNameItSaysWhatItExpects)
{
    const Run done = run(program, {});
    EXPECT_EQ(done.exitCode, 1);
    EXPECT_EQ(done.errors.trimmed(),
              "vlmohelp: expects the manual's file name, e.g. \"vlmohelp manual-ACCTPAY.pdf\"");
}

// On a real display the clipboard's text lives in the program that put it there: the viewer
// keeps NOHELP on offer until another program takes the clipboard, then ends.
TEST_F(HelpViewerProgram, OnADisplayNohelpStaysOnTheClipboardUntilAnotherProgramTakesIt)
{
    for (const char *tool : {"xvfb-run", "xclip"})
        if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
            GTEST_SKIP() << tool << " is not installed (scripts/setup.sh installs it)";
    writeText(data.filePath("try.sh"),
              "\"$1\" manual-ACCTPAY.pdf 2>/dev/null & pid=$!\n"
              "for i in $(seq 200); do\n"
              "  [ \"$(xclip -selection clipboard -o 2>/dev/null)\" = NOHELP ] && break\n"
              "  sleep 0.05\n"
              "done\n"
              "xclip -selection clipboard -o > clipboard.txt\n"
              "echo other | xclip -selection clipboard -i\n"
              "wait $pid; echo $? > code.txt\n");
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    process.setProcessEnvironment(env);
    process.setWorkingDirectory(data.path());
    process.start(QStringLiteral("xvfb-run"), {"-a", "sh", data.filePath("try.sh"), program});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(readText(data.filePath("clipboard.txt")), "NOHELP");
    EXPECT_EQ(readText(data.filePath("code.txt")), "1\n");
}

} // namespace
