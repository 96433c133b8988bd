// The report runner on a data folder whose company is on a PostgreSQL server: the real program
#include "RunnerCalls.h"
// run in the folder, its rows compared with what the test put in (skipped on the files, where
// the runner's other tests run on a generated company).
#include "ReportDefinition.h"
#include "ReportQuery.h"

#include "data/DbError.h"
#include "data/EngineSettings.h"
#include "data/PostgresDialect.h"
#include "support/DataFolder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

namespace {

class ServerRunner : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!DataFolder::onPostgres())
            GTEST_SKIP() << "runs in the tests on the PostgreSQL engine";
        const QDir definitions(QStringLiteral(CRYPRINT_DEFINITIONS));
        for (const QString &name : definitions.entryList({"*.rpt"}, QDir::Files))
            ASSERT_TRUE(QFile::copy(definitions.filePath(name), folder.file(name)));
        folder.addVendor(30, "Zeta Hauling");
        folder.addVendor(10, "Alpha Paper");
        folder.addVendor(20, "beta's Repairs");
    }

    struct Run {
        int exitCode = -1;
        QString errors;
        QStringList lines; // of the CSV file written
    };
    // Runs the real runner on a request sent to a CSV file.
    Run runToCsv(const QString &lines)
    {
        folder.writeFile("request.txt", ("Crystal~\n" + lines +
                                         "Destination=File~\nPrintFileName=out.csv~\n"
                                         "PrintFileType=CSV~\n")
                                            .toUtf8());
        QFile::remove(folder.file("out.csv"));
        QProcess runner;
        runner.setWorkingDirectory(folder.path());
        runner.start(QStringLiteral(CRYPRINT_PROGRAM), {folder.file("request.txt")});
        Run run;
        EXPECT_TRUE(runner.waitForFinished(60000));
        run.exitCode = runner.exitCode();
        run.errors = QString::fromUtf8(runner.readAllStandardError());
        if (QFile::exists(folder.file("out.csv")))
            run.lines = folder.readFile("out.csv").split("\r\n", Qt::SkipEmptyParts);
        return run;
    }

    // The first field of each row after the captions.
    static QStringList firstFields(const Run &run)
    {
        QStringList fields;
        for (qsizetype i = 1; i < run.lines.size(); ++i)
            fields << run.lines[i].section(',', 0, 0);
        return fields;
    }

    DataFolder folder;
};

TEST_F(ServerRunner, TheVendorListHasTheVendorsInNumberOrder)
{
    const Run run = runToCsv("ReportFileName=rap001.rpt~\n");
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_EQ(firstFields(run), (QStringList{"10", "20", "30"}));
    ASSERT_EQ(run.lines.size(), 4);
    EXPECT_TRUE(run.lines[2].startsWith("20,beta's Repairs,")) << run.lines[2].toStdString();
}

TEST_F(ServerRunner, NamesSortWithoutRegardToCaseAndAnEmptyNameComesFirstAsOnTheFiles)
{
    folder.exec("ap.mdb", "insert into vendors (vendnumber) values (40)");
    const Run up = runToCsv("ReportFileName=rap001.rpt~\nSortFields(0)=+{vendors.vendname}~\n");
    EXPECT_EQ(up.exitCode, 0) << up.errors.toStdString();
    EXPECT_EQ(firstFields(up), (QStringList{"40", "10", "20", "30"}));
    const Run down = runToCsv("ReportFileName=rap001.rpt~\nSortFields(0)=-{vendors.vendname}~\n");
    EXPECT_EQ(down.exitCode, 0) << down.errors.toStdString();
    EXPECT_EQ(firstFields(down), (QStringList{"30", "20", "10", "40"}));
}

TEST_F(ServerRunner, ASelectionFormulaWithQuotesAndStatementTextOnlySelects)
{
    const Run run = runToCsv("ReportFileName=rap001.rpt~\nSelectionFormula={vendors.vendname} = "
                             "\"beta's Repairs\" or {vendors.vendname} = \"x'); drop table "
                             "vendors; --\"~\n");
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_EQ(firstFields(run), QStringList{"20"});
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors").toInt(), 3);
}

TEST_F(ServerRunner, ADataFilesFileWithNoSchemaIsNamedAndNothingIsWritten)
{
    const Run run = runToCsv("ReportFileName=rap001.rpt~\nDataFiles(0)=/elsewhere/old.mdb~\n");
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.errors.contains("DataFiles(0)")) << run.errors.toStdString();
    EXPECT_TRUE(run.errors.contains("/elsewhere/old.mdb")) << run.errors.toStdString();
    EXPECT_TRUE(run.errors.contains("cannot be found")) << run.errors.toStdString();
    EXPECT_FALSE(QFile::exists(folder.file("out.csv")));
}

TEST_F(ServerRunner, ADataFilesBareFileNamePicksItsSchemaWhateverTheCase)
{
    const Run run = runToCsv("ReportFileName=rap001.rpt~\nDataFiles(0)=AP.MDB~\n");
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_EQ(firstFields(run), (QStringList{"10", "20", "30"}));
}

TEST_F(ServerRunner, ADataFilesBareFileNameWithNoSchemaIsNamed)
{
    const Run run = runToCsv("ReportFileName=rap001.rpt~\nDataFiles(0)=old.mdb~\n");
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.errors.contains("old.mdb given as DataFiles(0)")) << run.errors.toStdString();
    EXPECT_FALSE(QFile::exists(folder.file("out.csv")));
}

TEST_F(ServerRunner, TheRunnersSessionRefusesToWrite)
{
    const PostgresDialect dialect(*EngineSettings::ofDataFolder());
    {
        QSqlDatabase db = dialect.openForReading("ap.mdb", "runner-session");
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec("select count(*) from ap_mdb.vendors"));
        EXPECT_FALSE(q.exec("insert into ap_mdb.vendors (vendnumber) values (99)"));
        EXPECT_EQ(q.lastError().nativeErrorCode(), "25006");
        EXPECT_FALSE(q.exec("update ap_mdb.vendors set vendname = 'changed'"));
    }
    QSqlDatabase::removeDatabase("runner-session");
    EXPECT_EQ(folder
                  .scalar("ap.mdb", "select count(*) from vendors where vendname = 'changed' "
                                    "or vendnumber = 99")
                  .toInt(),
              0);
}

TEST_F(ServerRunner, TheFirstRowsAndTheRestComeOnceEachInTheReportsOrder)
{
    // Five invoices, three of them on one date: the ties are settled the same way in the
    // limited statement and in the whole one.
    folder.exec("ap.mdb",
                "insert into invoices (vendnumber, invnumber, invdate, invamount, invstatus) "
                "values (10, 'A-1', 20250105, 1, 1), (20, 'B-1', 20250102, 2, 1), "
                "(10, 'A-2', 20250102, 3, 1), (10, 'A-2', 20250102, 4, 1), "
                "(30, 'C-1', 20250101, 5, 1)");
    QString error;
    const auto def = loadDefinition("rap014.rpt", error);
    ASSERT_TRUE(def) << error.toStdString();
    for (const long long quickRows : {0LL, 1LL, 2LL, 3LL, 4LL, 5LL, 6LL}) {
        RunnerRequest request;
        request.reportFileName = "rap014.rpt";
        ReportQuery rows;
        rows.setQuickStart(quickRows);
        ASSERT_TRUE(openRows(rows, *def, request, error)) << error.toStdString();
        QStringList amounts;
        while (rows.next())
            amounts << QString::number(rows.value({"invoices", "invamount"}).toDouble());
        EXPECT_EQ(rows.error(), QString());
        ASSERT_EQ(amounts.size(), 5) << quickRows;
        EXPECT_EQ(amounts.first(), "5");
        EXPECT_EQ(amounts.last(), "1");
        // The two equal rows come in either order, but once each.
        EXPECT_EQ(amounts[3], "2") << quickRows;
        QStringList sorted = amounts;
        sorted.sort();
        EXPECT_EQ(sorted, (QStringList{"1", "2", "3", "4", "5"})) << quickRows;
    }
}

} // namespace
