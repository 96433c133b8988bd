#include "common/Processes.h"
#include "support/DataFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

// A company made by the real demo generator is ready for reports: the module finds the runner
// under the suite's name where it looks for programs (the data folder first, then the search
// path) and every report definition it asks for, and the runner found so prints each of them.
class NewCompanyReports : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_previous = QDir::currentPath();
        if (DataFolder::onPostgres())
            m_server = std::make_unique<DataFolder>(DataFolder::Start::Empty);
        QStringList arguments = {folder(), "--vendors", "12",     "--invoices", "120",
                                 "--seed", "3",         "--year", "2024"};
        if (m_server)
            arguments << "--postgres";
        QProcess demo;
        demo.start(QStringLiteral(APMASTER_DEMO_PROGRAM), arguments);
        ASSERT_TRUE(demo.waitForFinished(60000));
        ASSERT_EQ(demo.exitCode(), 0) << demo.readAllStandardError().toStdString();
        m_summary = QString::fromUtf8(demo.readAllStandardOutput());
        QDir::setCurrent(folder());
    }
    void TearDown() override { QDir::setCurrent(m_previous); }
    QString folder() const { return m_server ? m_server->path() : m_dir.filePath("company"); }

    QTemporaryDir m_dir;
    std::unique_ptr<DataFolder> m_server;
    QString m_previous;
    QString m_summary;
};

TEST_F(NewCompanyReports, TheRunnerIsFoundUnderTheSuitesNameInTheDataFolder)
{
    const QString found = SystemProcesses::resolveProgram(QStringLiteral("cryprint.exe"));
    EXPECT_EQ(found, QDir(folder()).absoluteFilePath("cryprint.exe"));
    EXPECT_EQ(QFileInfo(found).canonicalFilePath(),
              QFileInfo(QStringLiteral(CRYPRINT_PROGRAM)).canonicalFilePath());
    EXPECT_TRUE(m_summary.contains("  reports      cryprint.exe -> ")) << m_summary.toStdString();
    EXPECT_TRUE(m_summary.contains("               15 report definitions from "))
        << m_summary.toStdString();
}

TEST_F(NewCompanyReports, EveryShippedReportPrintsThroughTheRunnerFound)
{
    const QString runner = SystemProcesses::resolveProgram(QStringLiteral("cryprint.exe"));
    ASSERT_FALSE(runner.isEmpty());
    const QStringList definitions =
        QDir(QStringLiteral(CRYPRINT_DEFINITIONS)).entryList({"*.rpt"}, QDir::Files);
    ASSERT_EQ(definitions.size(), 15);
    for (const QString &definition : definitions) {
        SCOPED_TRACE(definition.toStdString());
        ASSERT_TRUE(QFileInfo(QDir(folder()).filePath(definition)).isFile());
        // The user-defined information reports read the copy of the record that the window
        // writes just before it asks for them (DataFiles(5)); they are run there.
        if (definition.startsWith("miscinfo"))
            continue;
        QFile request(QDir(folder()).filePath("request.txt"));
        ASSERT_TRUE(request.open(QIODevice::WriteOnly | QIODevice::Truncate));
        request.write(("Crystal~\nReportFileName=" + definition +
                       "~\nWindowTitle=~\nMarginTop=0~\nMarginLeft=0~\nDestination=File~\n"
                       "PrintFileName=out.pdf~\nPrintFileType=PDF~")
                          .toUtf8());
        request.close();
        QProcess run;
        run.setWorkingDirectory(folder());
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        run.setProcessEnvironment(env);
        run.start(runner, {"request.txt"});
        ASSERT_TRUE(run.waitForFinished(60000));
        EXPECT_EQ(run.exitCode(), 0) << run.readAllStandardError().toStdString();
        QFile out(QDir(folder()).filePath("out.pdf"));
        ASSERT_TRUE(out.open(QIODevice::ReadOnly));
        EXPECT_TRUE(out.read(5) == "%PDF-");
        out.close();
        out.remove();
    }
}

} // namespace
