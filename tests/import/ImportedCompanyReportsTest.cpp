// A company made by the real apmaster-import is ready for reports: the runner under the suite's
// name and the report definitions are in the new data folder, and the vendor list prints.
#include "ImportFixture.h"
#include "StreamBuilder.h"

#include "common/Processes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

namespace {
using P = ReaderProtocol::AccessType;

TEST(ImportedCompanyReports, TheVendorListPrintsThroughTheRunnerTheImportPutThere)
{
    ImportFixture fixture;
    fixture.writeSource("ap.mdb", jetHeader());
    StreamBuilder s;
    s.table("Vendors", 2, {{"VendNumber", P::LongInteger}, {"VendName", P::Text}})
        .row()
        .integer(1001)
        .str("Acme Supply")
        .row()
        .integer(1002)
        .str("Bolt & Nut")
        .end(2)
        .endOfFile();
    QTemporaryDir work;
    QFile stream(work.filePath("stream.bin"));
    ASSERT_TRUE(stream.open(QIODevice::WriteOnly));
    stream.write(s.bytes());
    stream.close();
    QFile reader(work.filePath("reader.sh"));
    ASSERT_TRUE(reader.open(QIODevice::WriteOnly));
    reader.write("#!/bin/sh\nexec cat '" + stream.fileName().toUtf8() + "'\n");
    reader.close();
    reader.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    QProcess import;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("APMASTER_MDB_READER", reader.fileName());
    import.setProcessEnvironment(env);
    import.start(QStringLiteral(APMASTER_IMPORT_PROGRAM), {fixture.source(), fixture.data()});
    ASSERT_TRUE(import.waitForFinished(60000));
    ASSERT_EQ(import.exitCode(), 0) << import.readAllStandardError().toStdString();
    const QString out = QString::fromUtf8(import.readAllStandardOutput());
    EXPECT_TRUE(out.contains("  reports      cryprint.exe -> ")) << out.toStdString();

    const QString previous = QDir::currentPath();
    QDir::setCurrent(fixture.data());
    const QString runner = SystemProcesses::resolveProgram(QStringLiteral("cryprint.exe"));
    QDir::setCurrent(previous);
    EXPECT_EQ(runner, fixture.dataFile("cryprint.exe"));
    ASSERT_TRUE(QFileInfo(fixture.dataFile("rap001.rpt")).isFile());
    QFile request(fixture.dataFile("request.txt"));
    ASSERT_TRUE(request.open(QIODevice::WriteOnly));
    request.write("Crystal~\nReportFileName=rap001.rpt~\nWindowTitle=~\nMarginTop=0~\n"
                  "MarginLeft=0~\nDestination=File~\nPrintFileName=vendors.pdf~\n"
                  "PrintFileType=PDF~");
    request.close();
    QProcess run;
    env.insert("QT_QPA_PLATFORM", "offscreen");
    run.setProcessEnvironment(env);
    run.setWorkingDirectory(fixture.data());
    run.start(runner, {"request.txt"});
    ASSERT_TRUE(run.waitForFinished(60000));
    ASSERT_EQ(run.exitCode(), 0) << run.readAllStandardError().toStdString();
    QProcess text;
    text.start("pdftotext", {"-layout", fixture.dataFile("vendors.pdf"), "-"});
    ASSERT_TRUE(text.waitForFinished(30000));
    const QString page = QString::fromUtf8(text.readAllStandardOutput());
    EXPECT_TRUE(page.contains("Acme Supply")) << page.toStdString();
    EXPECT_TRUE(page.contains("Bolt & Nut")) << page.toStdString();
}

} // namespace
