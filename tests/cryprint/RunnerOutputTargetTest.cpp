#include "PreviewWindow.h"
#include "ReportDefinition.h"
#include "RunnerCalls.h"
#include "RunnerCompany.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPrinter>

namespace {

// A request that sends a report to a file names that file: any program can put one on the
// clipboard. The real runner writes a new file beside the target and gives it the target's name
// only when the target is absent or an earlier report of the same kind; it never writes over a
// database of the company, a folder, a device or a link to one of those.
class RunnerOutputTarget : public RunnerCompany {
protected:
    static QString request(const QString &target, const QString &type = QStringLiteral("PDF"),
                           const QString &formula = QString())
    {
        return "Crystal~\nReportFileName=rap001.rpt~\nWindowTitle=~\nMarginTop=0~\n"
               "MarginLeft=0~\n" +
               (formula.isEmpty() ? QString() : "SelectionFormula=" + formula + "~\n") +
               "Destination=File~\nPrintFileName=" + target + "~\nPrintFileType=" + type + "~";
    }
    // Every file of the data folder (hidden ones too) with a digest of its bytes, and the
    // company's rows on the server; the request file the test writes is left out.
    QStringList checksums() const
    {
        QStringList sums = databaseStamps();
        const QDir dir(path(QString()));
        for (const QFileInfo &info :
             dir.entryInfoList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name)) {
            if (info.fileName() == QLatin1String("request.txt"))
                continue;
            QFile file(info.filePath());
            QByteArray digest = "(not a plain file)";
            if (info.isFile() && !info.isSymLink() && file.open(QIODevice::ReadOnly))
                digest = QCryptographicHash::hash(file.readAll(), QCryptographicHash::Md5).toHex();
            sums << info.fileName() + QLatin1Char(' ') + QString::fromLatin1(digest);
        }
        return sums;
    }
    void expectRefused(const QString &text, const QString &message)
    {
        const QStringList before = checksums();
        ASSERT_GE(before.size(), 4);
        const Run run = runRequest(text);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.errors, "cryprint: " + message);
        EXPECT_EQ(checksums(), before);
    }
    QByteArray bytes(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString &name, const QByteArray &contents)
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(contents);
    }
};

TEST_F(RunnerOutputTarget, TheCompanysVendorFileIsRefusedAsAPdfAndAsACsv)
{
    expectRefused(request("ap.mdb"),
                  "The output file ap.mdb is a database file of the company; no output is ever "
                  "written over it. Choose another file name.");
    expectRefused(request("ap.mdb", "CSV"),
                  "The output file ap.mdb is a database file of the company; no output is ever "
                  "written over it. Choose another file name.");
}

TEST_F(RunnerOutputTarget, TheLedgerFileIsRefused)
{
    expectRefused(request("gl.mdb"),
                  "The output file gl.mdb is a database file of the company; no output is ever "
                  "written over it. Choose another file name.");
}

TEST_F(RunnerOutputTarget, ADatabaseNameInAnotherFolderIsRefused)
{
    expectRefused(request("../ap.mdb"),
                  "The output file ../ap.mdb is a database file of the company; no output is "
                  "ever written over it. Choose another file name.");
    // The name in capitals is the same file to the module.
    expectRefused(request("AP.MDB"),
                  "The output file AP.MDB is a database file of the company; no output is ever "
                  "written over it. Choose another file name.");
}

TEST_F(RunnerOutputTarget, ALinkToTheVendorFileIsRefusedAndStaysALink)
{
    const QString vendorFile = QFileInfo(path("ap.mdb")).absoluteFilePath();
    ASSERT_TRUE(QFile::link(vendorFile, path("latest.pdf")));
    const QString end =
        QFileInfo::exists(vendorFile) ? QFileInfo(vendorFile).canonicalFilePath() : vendorFile;
    expectRefused(request("latest.pdf"),
                  "The output file latest.pdf (a link to " + end +
                      ") is a database file of the company; no output is ever written over it. "
                      "Choose another file name.");
    EXPECT_TRUE(QFileInfo(path("latest.pdf")).isSymLink());
}

TEST_F(RunnerOutputTarget, ADeviceIsRefused)
{
    expectRefused(request("/dev/null"),
                  "The output file /dev/null is a device or another special file, not a plain "
                  "file. Choose another file name.");
}

TEST_F(RunnerOutputTarget, TheDataFolderItselfIsRefused)
{
    expectRefused(request("."), "The output file . is a folder, not a file. Choose another file "
                                "name.");
    const QString folder = QFileInfo(path(QString())).absoluteFilePath();
    expectRefused(request(folder, "CSV"),
                  "The output file " + folder +
                      " is a folder, not a file. Choose another file name.");
}

TEST_F(RunnerOutputTarget, ALinkToTheDataFolderIsRefused)
{
    const QString folder = QFileInfo(path(QString())).canonicalFilePath();
    ASSERT_TRUE(QFile::link(folder, path("reports.pdf")));
    expectRefused(request("reports.pdf"),
                  "The output file reports.pdf (a link to " + folder +
                      ") is a folder, not a file. Choose another file name.");
}

TEST_F(RunnerOutputTarget, AnSqliteDatabaseUnderAnotherNameIsToldByItsFirstBytes)
{
    QByteArray database("SQLite format 3", 16);
    database += QByteArray(84, '\1');
    write("vendors-2023.pdf", database);
    expectRefused(request("vendors-2023.pdf"),
                  "The output file vendors-2023.pdf is a database file of the company (its first "
                  "bytes say so); no output is ever written over it. Choose another file name.");
    EXPECT_EQ(bytes("vendors-2023.pdf"), database);
}

TEST_F(RunnerOutputTarget, AnAccessDatabaseUnderAnotherNameIsToldByItsFirstBytes)
{
    const QByteArray database =
        QByteArray("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24) + QByteArray(100, '\0');
    write("old.csv", database);
    expectRefused(request("old.csv", "CSV"),
                  "The output file old.csv is a database file of the company (its first bytes "
                  "say so); no output is ever written over it. Choose another file name.");
    EXPECT_EQ(bytes("old.csv"), database);
}

TEST_F(RunnerOutputTarget, AFileOfAnotherKindIsLeftAsItIs)
{
    write("notes.pdf", "Call Adams about the March invoice.\n");
    expectRefused(request("notes.pdf"),
                  "The output file notes.pdf exists and is not a PDF file (its first bytes say "
                  "otherwise); it is left as it is. Choose another file name.");
    // A PDF is not a CSV file either.
    ASSERT_EQ(runRequest(request("vendors.pdf")).exitCode, 0);
    expectRefused(request("vendors.pdf", "CSV"),
                  "The output file vendors.pdf exists and is not a CSV file (its first bytes say "
                  "otherwise); it is left as it is. Choose another file name.");
}

TEST_F(RunnerOutputTarget, AnEarlierReportOfTheSameKindIsReplaced)
{
    const QString first = sqliteValue("ap.mdb", "select vendname from vendors order by "
                                                "vendnumber limit 1");
    ASSERT_FALSE(first.isEmpty());
    const QString only =
        "{vendors.vendnumber} = " + sqliteValue("ap.mdb", "select min(vendnumber) from vendors");
    ASSERT_EQ(runRequest(request("vendors.pdf")).exitCode, 0);
    ASSERT_EQ(runRequest(request("vendors.csv", "CSV")).exitCode, 0);
    EXPECT_EQ(QString::fromUtf8(bytes("vendors.csv")).count("\r\n"), 41);
    Run run = runRequest(request("vendors.pdf", "PDF", "{vendors.vendnumber} < 0"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_FALSE(pdfText("vendors.pdf").contains(first));
    run = runRequest(request("vendors.csv", "CSV", only));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_EQ(QString::fromUtf8(bytes("vendors.csv")).count("\r\n"), 2);
    // Nothing is left beside them.
    const QStringList hidden =
        QDir(path(QString())).entryList({".vendors*"}, QDir::Files | QDir::Hidden);
    EXPECT_TRUE(hidden.isEmpty()) << hidden.join(' ').toStdString();
}

TEST_F(RunnerOutputTarget, AnEmptyFileIsWrittenOver)
{
    write("empty.pdf", QByteArray());
    const Run run = runRequest(request("empty.pdf"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_TRUE(bytes("empty.pdf").startsWith("%PDF-"));
}

TEST_F(RunnerOutputTarget, AReportThatFailsLeavesTheGoodOneAndNoWorkFile)
{
    ASSERT_EQ(runRequest(request("vendors.pdf")).exitCode, 0);
    const QByteArray good = bytes("vendors.pdf");
    ASSERT_TRUE(good.startsWith("%PDF-"));
    const QStringList before = checksums();
    const Run run = runRequest(request("vendors.pdf", "PDF", "{vendors.colour} = 'red'"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors, "cryprint: Selection formula, position 1: table vendors has no field "
                          "colour.");
    EXPECT_EQ(bytes("vendors.pdf"), good);
    EXPECT_EQ(checksums(), before);
}

TEST_F(RunnerOutputTarget, ALinkToAnEarlierReportIsWrittenThroughAndStaysALink)
{
    ASSERT_EQ(runRequest(request("march.pdf")).exitCode, 0);
    ASSERT_TRUE(QFile::link(path("march.pdf"), path("latest.pdf")));
    const Run run = runRequest(request("latest.pdf", "PDF", "{vendors.vendnumber} < 0"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_TRUE(QFileInfo(path("latest.pdf")).isSymLink());
    EXPECT_EQ(bytes("march.pdf"), bytes("latest.pdf"));
    const QString first = sqliteValue("ap.mdb", "select vendname from vendors order by "
                                                "vendnumber limit 1");
    EXPECT_FALSE(pdfText("march.pdf").contains(first));
}

// The preview's export and its print dialog's "print to file" name a file on the user's word
// as well.
TEST_F(RunnerOutputTarget, ThePreviewExportsAndPrintsToFilesByTheSameRule)
{
    QString error;
    const auto def = loadDefinition("rap001.rpt", error);
    ASSERT_TRUE(def) << error.toStdString();
    RunnerRequest vendors;
    vendors.reportFileName = "rap001.rpt";
    PreviewWindow window(*def, vendors);
    const QStringList before = checksums();
    error = failureOf([&] { window.exportTo(path("ap.mdb"), "CSV"); });
    EXPECT_EQ(error, "The output file " + path("ap.mdb") +
                         " is a database file of the company; no output is ever written over "
                         "it. Choose another file name.");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path("gl.mdb"));
    error = failureOf([&] { window.printTo(printer); });
    EXPECT_EQ(error, "The output file " + path("gl.mdb") +
                         " is a database file of the company; no output is ever written over "
                         "it. Choose another file name.");
    printer.setOutputFileName(path(QString()));
    error = failureOf([&] { window.printTo(printer); });
    EXPECT_TRUE(error.endsWith(" is a folder, not a file. Choose another file name."))
        << error.toStdString();
    EXPECT_EQ(checksums(), before);
    // A file of its own is written whole.
    printer.setOutputFileName(path("printed.pdf"));
    ASSERT_EQ(failureOf([&] { window.printTo(printer); }), QString());
    const QString first = sqliteValue("ap.mdb", "select vendname from vendors order by "
                                                "vendnumber limit 1");
    const QString printed = pdfText("printed.pdf");
    EXPECT_TRUE(printed.contains(first));
    // The printed pages are counted before they go out.
    const int sheets = int(printed.count('\f'));
    ASSERT_GE(sheets, 1);
    EXPECT_TRUE(printed.contains(QStringLiteral("Page 1 of %1").arg(sheets)))
        << printed.right(300).toStdString();
}

} // namespace
