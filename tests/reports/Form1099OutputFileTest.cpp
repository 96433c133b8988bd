#include "reports/PrinterFormPrinter.h"
#include "reports/ReportMenu.h"
#include "support/PdfWords.h"
#include "support/VendorScreen.h"

#include <QAction>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>

namespace {

// The setting that sends the 1099 forms to a PDF file names the file on the user's word: the
// forms never take the name of a database of the company, a folder or a device, and a file
// there is replaced only by complete forms.
class Form1099OutputFile : public VendorScreen {
protected:
    void SetUp() override
    {
        VendorScreen::SetUp();
        QByteArray layout = "\"MISC 2026\",0.25,0.5,3.5,0\n";
        for (int n = 1; n <= 25; ++n)
            layout += QStringLiteral("\"BOX%1\",1,%2\n").arg(n).arg(0.25 * n).toLatin1();
        folder.writeFile("1099misc.lof", layout);
    }
    void TearDown() override { qunsetenv("APMASTER_PRINT_PDF"); }

    // Prints the 1099-MISC forms of every vendor with a balance, the setting naming target.
    void printTo(const QString &target)
    {
        qputenv("APMASTER_PRINT_PDF", target.toLocal8Bit());
        module.dialogs.yesNoAnswers = {Dialogs::No, Dialogs::No, Dialogs::No, Dialogs::Yes};
        module.window->action(QStringLiteral("rpt1099"))->trigger();
        QCoreApplication::processEvents();
    }
    QStringList checksums() const
    {
        QStringList sums;
        const QDir dir(folder.path());
        for (const QFileInfo &info : dir.entryInfoList(QDir::Files | QDir::Hidden, QDir::Name)) {
            QFile file(info.filePath());
            EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << info.fileName().toStdString();
            sums << info.fileName() + ' ' +
                        QCryptographicHash::hash(file.readAll(), QCryptographicHash::Md5).toHex();
        }
        return sums;
    }
};

TEST_F(Form1099OutputFile, TheVendorFileAsTheSettingIsRefusedAndNothingIsPrinted)
{
    const QStringList before = checksums();
    printTo(folder.file("ap.mdb"));
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->title, "Uh-oh...");
    EXPECT_EQ(module.dialogs.last()->text,
              "The output file " + folder.file("ap.mdb") +
                  " is a database file of the company; no output is ever written over it. "
                  "Choose another file name. Nothing was printed.");
    EXPECT_EQ(checksums(), before);
}

TEST_F(Form1099OutputFile, TheDataFolderAsTheSettingGetsAFileOfItsOwnInIt)
{
    // A folder in the setting is where the forms go, under a name of their own.
    printTo(folder.path());
    ASSERT_NE(module.dialogs.last(), nullptr);
    const QString text = module.dialogs.last()->text;
    EXPECT_TRUE(text.startsWith("The forms were written to " + folder.path() + "/1099-MISC"))
        << text.toStdString();
    EXPECT_EQ(QDir(folder.path()).entryList({"1099-MISC*.pdf"}, QDir::Files).size(), 1);
}

TEST_F(Form1099OutputFile, ALinkToTheVendorFileIsRefusedAndStaysALink)
{
    ASSERT_TRUE(QFile::link(folder.file("ap.mdb"), folder.file("forms.pdf")));
    printTo(folder.file("forms.pdf"));
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_TRUE(module.dialogs.last()->text.contains(" is a database file of the company"))
        << module.dialogs.last()->text.toStdString();
    EXPECT_TRUE(QFileInfo(folder.file("forms.pdf")).isSymLink());
}

TEST_F(Form1099OutputFile, EarlierFormsAreReplacedByCompleteOnes)
{
    folder.writeFile("forms.pdf", "%PDF-1.4 forms of last year");
    printTo(folder.file("forms.pdf"));
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "The forms were written to " + folder.file("forms.pdf") + ".");
    const PdfWords words(folder.file("forms.pdf"));
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    EXPECT_TRUE(words.pageText(0).contains("ACME OFFICE SUPPLY"));
    EXPECT_TRUE(QDir(folder.path()).entryList({".forms.pdf*"}, QDir::Hidden).isEmpty());
}

TEST(PrinterFormPrinterOutput, ATextFileInTheSettingIsLeftAsItIs)
{
    QTemporaryDir dir;
    QFile notes(dir.filePath("notes.pdf"));
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
    notes.write("Remember the 1099s.\n");
    notes.close();
    qputenv("APMASTER_PRINT_PDF", dir.filePath("notes.pdf").toLocal8Bit());
    PrinterFormPrinter printer("1099-MISC forms");
    EXPECT_FALSE(printer.begin());
    EXPECT_EQ(printer.why(), "The output file " + dir.filePath("notes.pdf") +
                                 " exists and is not a PDF file (its first bytes say otherwise); "
                                 "it is left as it is. Choose another file name.");
    qunsetenv("APMASTER_PRINT_PDF");
    ASSERT_TRUE(notes.open(QIODevice::ReadOnly));
    EXPECT_EQ(notes.readAll(), "Remember the 1099s.\n");
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"notes.pdf"});
}

TEST(PrinterFormPrinterOutput, FormsNotFinishedLeaveTheEarlierFile)
{
    QTemporaryDir dir;
    QFile earlier(dir.filePath("forms.pdf"));
    ASSERT_TRUE(earlier.open(QIODevice::WriteOnly));
    earlier.write("%PDF-1.4 earlier");
    earlier.close();
    qputenv("APMASTER_PRINT_PDF", dir.filePath("forms.pdf").toLocal8Bit());
    {
        PrinterFormPrinter printer("1099-MISC forms");
        ASSERT_TRUE(printer.begin()) << printer.why().toStdString();
        printer.print(1440, 1440, "HALF");
        // Never finished: the job was dropped.
    }
    qunsetenv("APMASTER_PRINT_PDF");
    ASSERT_TRUE(earlier.open(QIODevice::ReadOnly));
    EXPECT_EQ(earlier.readAll(), "%PDF-1.4 earlier");
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"forms.pdf"});
}

} // namespace
