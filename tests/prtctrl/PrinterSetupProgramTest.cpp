#include "PrinterSetupWindow.h"
#include "RunnerPlacement.h"
#include "common/Clipboard.h"
#include "common/Processes.h"
#include "common/ProgramRunner.h"
#include "common/Session.h"
#include "reports/PrinterChoice.h"
#include "reports/PrinterFormPrinter.h"
#include "support/DataFolder.h"
#include "support/FakeDialogs.h"
#include "support/FixedClock.h"
#include "support/PdfWords.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

class NoClipboard : public Clipboard {
public:
    void clear() override {}
    void setText(const QString &) override {}
    QString text() const override { return {}; }
};

// Each test has a configuration folder of its own, for the child program (XDG_CONFIG_HOME) and
// for this process (QSettings' user path), so that no test sees another's or the user's choice.
class PrinterSetupProgramTest : public ::testing::Test {
protected:
    QTemporaryDir config;
    QTemporaryDir output;

    void SetUp() override
    {
        qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, config.path());
        qunsetenv("APMASTER_PRINT_PDF");
        qunsetenv("APMASTER_PRTCTRL_SET");
    }
    void TearDown() override
    {
        qunsetenv("APMASTER_PRINT_PDF");
        qunsetenv("APMASTER_PRTCTRL_SET");
    }

    struct Result {
        int exitCode;
        QString out;
        QString err;
    };
    Result runProgram(const QStringList &arguments)
    {
        QProcess process;
        process.start(QStringLiteral(PRTCTRL_PROGRAM), arguments);
        EXPECT_TRUE(process.waitForFinished(30000));
        return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardOutput()),
                QString::fromLocal8Bit(process.readAllStandardError())};
    }
    QString savedFile() const { return config.filePath("Velmora/apmaster.conf"); }
};

TEST_F(PrinterSetupProgramTest, SetSavesThePdfTargetPaperAndSourceForTheUser)
{
    const QString pdf = output.filePath("chosen.pdf");
    const Result result = runProgram({"--set", "pdf=" + pdf, "paper=Legal", "source=Manual"});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    const PrinterChoice choice = PrinterChoice::load();
    EXPECT_TRUE(choice.saved());
    EXPECT_EQ(choice.pdfTarget, pdf);
    EXPECT_EQ(choice.printer, "");
    EXPECT_EQ(choice.paper, "Legal");
    EXPECT_EQ(choice.source, "Manual");
}

TEST_F(PrinterSetupProgramTest, The1099PrintingWritesTheChosenPdf)
{
    const QString pdf = output.filePath("chosen.pdf");
    ASSERT_EQ(runProgram({"--set", "pdf=" + pdf, "paper=Legal", "source=Auto"}).exitCode, 0);
    PrinterFormPrinter printer("1099-NEC forms");
    EXPECT_EQ(printer.pdfFile(), pdf);
    ASSERT_TRUE(printer.begin()) << printer.why().toStdString();
    printer.print(1440, 2880, "PAYER"); // 1 inch across, 2 down: 72 and 144 points
    ASSERT_TRUE(printer.finish()) << printer.why().toStdString();
    const PdfWords words(pdf);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    EXPECT_NE(words.at(0, "PAYER", 72, 144), nullptr);
    // The chosen paper: Legal is 8.5 by 14 inches.
    QProcess info;
    info.start("pdfinfo", {pdf});
    ASSERT_TRUE(info.waitForFinished(30000));
    const QString text = QString::fromLocal8Bit(info.readAllStandardOutput());
    EXPECT_TRUE(text.contains("Page size:       612 x 1008 pts")) << text.toStdString();
}

TEST_F(PrinterSetupProgramTest, AChosenFolderTakesTheJobNamedFile)
{
    ASSERT_EQ(runProgram({"--set", "pdf=" + output.path()}).exitCode, 0);
    const QString target = PrinterFormPrinter::pdfTarget("1099-MISC forms");
    EXPECT_TRUE(target.startsWith(output.path() + "/1099-MISC forms ")) << target.toStdString();
}

TEST_F(PrinterSetupProgramTest, TheEnvironmentSettingWinsOverTheSavedChoice)
{
    ASSERT_EQ(runProgram({"--set", "pdf=" + output.filePath("saved.pdf")}).exitCode, 0);
    qputenv("APMASTER_PRINT_PDF", output.filePath("setting.pdf").toLocal8Bit());
    EXPECT_EQ(PrinterFormPrinter::pdfTarget("1099-NEC forms"), output.filePath("setting.pdf"));
    qunsetenv("APMASTER_PRINT_PDF");
    EXPECT_EQ(PrinterFormPrinter::pdfTarget("1099-NEC forms"), output.filePath("saved.pdf"));
}

TEST_F(PrinterSetupProgramTest, AnUnknownPrinterIsRefusedAndTheSavedChoiceKept)
{
    ASSERT_EQ(runProgram({"--set", "pdf=" + output.filePath("kept.pdf")}).exitCode, 0);
    const Result result = runProgram({"--set", "printer=No Such Printer 42"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.contains(
        "The printer \"No Such Printer 42\" is not installed on this workstation."))
        << result.err.toStdString();
    EXPECT_EQ(PrinterChoice::load().pdfTarget, output.filePath("kept.pdf"));
}

TEST_F(PrinterSetupProgramTest, AnUnknownPaperSizeIsRefusedAndNothingSaved)
{
    const Result result = runProgram({"--set", "pdf=" + output.filePath("a.pdf"), "paper=Tabloid"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.contains(
        "The paper size \"Tabloid\" is not known; choose one of Letter, Legal, A4."))
        << result.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(savedFile()));
    // The last listed size is accepted.
    EXPECT_EQ(runProgram({"--set", "pdf=" + output.filePath("a.pdf"), "paper=A4"}).exitCode, 0);
    EXPECT_EQ(PrinterChoice::load().paper, "A4");
}

TEST_F(PrinterSetupProgramTest, AnUnknownPaperSourceIsRefused)
{
    const Result result = runProgram({"--set", "source=Drawer9"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.err.contains("The paper source \"Drawer9\" is not known"))
        << result.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(savedFile()));
}

TEST_F(PrinterSetupProgramTest, ADatabaseFileAsPdfTargetIsRefusedAndLeftAsItWas)
{
    const QString database = output.filePath("ap.mdb");
    {
        QFile file(database);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("company data");
    }
    const Result result = runProgram({"--set", "pdf=" + database});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(
        result.err.contains("The output file " + database + " is a database file of the company"))
        << result.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(savedFile()));
    QFile file(database);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("company data"));
}

TEST_F(PrinterSetupProgramTest, TheModuleRunsItAndWaitsWithoutTheWarning)
{
    DataFolder folder(DataFolder::Start::Empty);
    const QString placed =
        placePrinterSetup(folder.path(), QFileInfo(QStringLiteral(PRTCTRL_PROGRAM)).path());
    ASSERT_TRUE(placed.contains("prtctrl.exe -> ")) << placed.toStdString();
    EXPECT_EQ(QFileInfo(folder.file("prtctrl.exe")).symLinkTarget(),
              QFileInfo(QStringLiteral(PRTCTRL_PROGRAM)).canonicalFilePath());

    FakeDialogs dialogs;
    FixedClock clock{QDateTime(QDate(2026, 3, 4), QTime(10, 15))};
    NoClipboard clipboard;
    SystemProcesses processes;
    Session session;
    session.userName = "ANNE";
    ProgramRunner runner{processes, dialogs, clock, clipboard, session};

    const QString pdf = output.filePath("from-module.pdf");
    qputenv("APMASTER_PRTCTRL_SET", ("pdf=" + pdf + " paper=Legal").toLocal8Bit());
    EXPECT_EQ(runner.runAndWait("prtctrl.exe"), 0);
    EXPECT_EQ(dialogs.count(), 0);
    EXPECT_EQ(PrinterChoice::load().pdfTarget, pdf);
    EXPECT_EQ(PrinterChoice::load().paper, "Legal");

    // A refused choice ends the program with code 2, which the module reports as a premature end.
    qputenv("APMASTER_PRTCTRL_SET", "paper=Tabloid");
    runner.runAndWait("prtctrl.exe");
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text, "WARNING - PREMATURE USER TERMINATION OF BACKUP PROCEDURE");
}

TEST_F(PrinterSetupProgramTest, TheWindowSavesThePdfChoiceOnOk)
{
    const QString pdf = output.filePath("window.pdf");
    PrinterSetupWindow window(PrinterChoice::load(), {});
    window.show();
    auto *printer = window.findChild<QComboBox *>("printer");
    auto *target = window.findChild<QLineEdit *>("pdf");
    auto *paper = window.findChild<QComboBox *>("paper");
    ASSERT_TRUE(printer && target && paper);
    EXPECT_FALSE(target->isEnabled());
    printer->setFocus();
    QTest::keyClick(printer, Qt::Key_End); // the last entry: no printer, write a PDF
    EXPECT_EQ(printer->currentText(), PrinterSetupWindow::pdfEntry());
    EXPECT_TRUE(target->isEnabled());
    QTest::keyClicks(target, pdf);
    paper->setFocus();
    QTest::keyClick(paper, Qt::Key_Down); // Letter -> Legal
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(window.result(), QDialog::Accepted);
    const PrinterChoice choice = PrinterChoice::load();
    EXPECT_EQ(choice.pdfTarget, pdf);
    EXPECT_EQ(choice.paper, "Legal");
}

TEST_F(PrinterSetupProgramTest, TheWindowRefusesADatabaseFileAndStaysOpenSavingNothing)
{
    const QString database = output.filePath("ap.mdb");
    PrinterSetupWindow window(PrinterChoice::load(), {});
    window.show();
    auto *printer = window.findChild<QComboBox *>("printer");
    auto *target = window.findChild<QLineEdit *>("pdf");
    ASSERT_TRUE(printer && target);
    printer->setFocus();
    QTest::keyClick(printer, Qt::Key_End);
    QTest::keyClicks(target, database);
    QString shown;
    QTimer::singleShot(0, &window, [&shown] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box) {
            shown = box->text();
            box->accept();
        }
    });
    QTest::keyClick(&window, Qt::Key_Return);
    EXPECT_EQ(shown, "The output file " + database +
                         " is a database file of the company; no output is ever written over "
                         "it. Choose another file name.");
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(QFileInfo::exists(savedFile()));
}

} // namespace
