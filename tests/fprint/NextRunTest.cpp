#include "AdjusterFixture.h"

#include "reports/ReportMenu.h"
#include "support/Module.h"
#include "support/PdfWords.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <csignal>

namespace {

// A demo company made by the real generator, with one 1099-NEC vendor: the first, paid 1,500.00.
class NextRun : public AdjusterFixture {
protected:
    void SetUp() override
    {
        AdjusterFixture::SetUp();
        QProcess demo;
        demo.start(QStringLiteral(APMASTER_DEMO_PROGRAM),
                   {m_folder.path(), "--vendors", "12", "--invoices", "60", "--seed", "3", "--year",
                    "2025"});
        ASSERT_TRUE(demo.waitForFinished(60000));
        ASSERT_EQ(demo.exitCode(), 0) << demo.readAllStandardError().toStdString();
        sql("update vendors set vend1099type = 0");
        sql("update vendors set vend1099type = 5, vendytd = 1500, vendname = 'Lindqvist "
            "Carpentry' where vendnumber = (select min(vendnumber) from vendors)");
    }
    void sql(const QString &statement)
    {
        ASSERT_EQ(QProcess::execute("sqlite3", {path("ap.mdb"), statement}), 0);
    }
    // The module's 1099-NEC run for every vendor of $600 or more, into a PDF file.
    PdfWords necRun(const QString &pdf)
    {
        qputenv("APMASTER_PRINT_PDF", path(pdf).toLocal8Bit());
        Module module(m_folder.path());
        EXPECT_EQ(module.start("VDR99DEMO"), std::nullopt);
        module.dialogs.yesNoAnswers = {Dialogs::Yes, Dialogs::No, Dialogs::No, Dialogs::Yes};
        module.window->action(QStringLiteral("rpt1099nec"))->trigger();
        QCoreApplication::processEvents();
        qunsetenv("APMASTER_PRINT_PDF");
        return PdfWords(path(pdf));
    }
};

// The process ids of the adjusters running in the folder (their program and current folder).
QList<qint64> adjustersIn(const QString &folder)
{
    QList<qint64> found;
    const QString program = QFileInfo(QStringLiteral(FPRINT_PROGRAM)).canonicalFilePath();
    for (const QString &entry : QDir("/proc").entryList(QDir::Dirs)) {
        bool numeric = false;
        const qint64 pid = entry.toLongLong(&numeric);
        if (numeric && QFile::symLinkTarget("/proc/" + entry + "/exe") == program &&
            QFile::symLinkTarget("/proc/" + entry + "/cwd") ==
                QFileInfo(folder).canonicalFilePath())
            found << pid;
    }
    return found;
}

} // namespace

TEST_F(NextRun, AdjustFormsPrintingStartsTheAdjusterInTheDataFolder)
{
    ASSERT_TRUE(QFile::remove(path("1099misc.lof")));
    qputenv("APMASTER_SYSTEM_LAYOUTS", APMASTER_SYSTEM_LAYOUTS);
    Module module(m_folder.path());
    ASSERT_EQ(module.start("VDR99DEMO"), std::nullopt);
    module.window->action(QStringLiteral("mnueditprintspec"))->trigger();
    qunsetenv("APMASTER_SYSTEM_LAYOUTS");
    // The adjuster opens on 1099-MISC and makes the missing file from the system copy.
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return bytesOf("1099misc.lof") == shipped("1099misc.lof"); }, 20000));
    EXPECT_EQ(module.dialogs.count(), 0); // started without waiting, no warning
    QList<qint64> running;
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return !(running = adjustersIn(m_folder.path())).isEmpty(); }, 5000));
    for (qint64 pid : running)
        ::kill(static_cast<pid_t>(pid), SIGTERM);
}

TEST_F(NextRun, TheCompanyHasTheAdjusterWhereTheModuleStartsIt)
{
    const QFileInfo link(path("fprint.exe"));
    ASSERT_TRUE(link.isSymLink());
    EXPECT_EQ(link.canonicalFilePath(),
              QFileInfo(QStringLiteral(FPRINT_PROGRAM)).canonicalFilePath());
    const Run result = run({"--version"}, path("fprint.exe"));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.out.startsWith("fprint ")) << result.out.toStdString();
}

TEST_F(NextRun, AMovedElementPrintsAtItsNewPlaceInTheNext1099Run)
{
    // The demo layout: origin (0.25, 0.25), the recipient's name (element 11) at (0.1, 1.6).
    const PdfWords before = necRun("before.pdf");
    ASSERT_TRUE(before.ok()) << before.error().toStdString();
    EXPECT_NE(before.at(0, "LINDQVIST", 25.2, 133.2), nullptr) << before.pageText(0).toStdString();

    // Moved a quarter inch down and to 1 inch across: (0.25 + 1) * 72 and (0.25 + 1.85) * 72.
    const Run moved = run({"--set", "1099nec.lof", "11=1,1.85"}, path("fprint.exe"));
    ASSERT_EQ(moved.exitCode, 0) << moved.err.toStdString();
    const PdfWords after = necRun("after.pdf");
    ASSERT_TRUE(after.ok()) << after.error().toStdString();
    EXPECT_NE(after.at(0, "LINDQVIST", 90, 151.2), nullptr) << after.pageText(0).toStdString();
    EXPECT_EQ(after.at(0, "LINDQVIST", 25.2, 133.2), nullptr);
    // The rest of the form stays: the amount in box 1 at (0.25 + 3.7, 0.25 + 1.2).
    EXPECT_NE(after.at(0, "1500.00", 284.4, 104.4), nullptr) << after.pageText(0).toStdString();
}

TEST_F(NextRun, TheNecPayerBlockMovedAQuarterInchPrintsAQuarterInchLower)
{
    // The payer's five lines are elements 2 to 6 at 0.3, 0.44, ... inches down.
    QStringList words = {"--set", "1099nec.lof"};
    const double lines[] = {0.3, 0.44, 0.58, 0.72, 0.86};
    for (int element = 2; element <= 6; ++element)
        words << QStringLiteral("%1=0.1,%2").arg(element).arg(lines[element - 2] + 0.25);
    const Run moved = run(words, path("fprint.exe"));
    ASSERT_EQ(moved.exitCode, 0) << moved.err.toStdString();
    const PdfWords pdf = necRun("payer.pdf");
    ASSERT_TRUE(pdf.ok()) << pdf.error().toStdString();
    // The payer's name (element 2, the layout's third line) at (0.25 + 0.1, 0.25 + 0.55) inches:
    // 25.2 and 57.6 points; it was at 39.6.
    const QString name = QString::fromLatin1(bytesOf("1099nec.lof").split('\n').at(2))
                             .section('"', 1, 1)
                             .section(' ', 0, 0);
    ASSERT_FALSE(name.isEmpty());
    EXPECT_NE(pdf.at(0, name, 25.2, 57.6), nullptr) << pdf.pageText(0).toStdString();
    EXPECT_EQ(pdf.at(0, name, 25.2, 39.6), nullptr);
}
