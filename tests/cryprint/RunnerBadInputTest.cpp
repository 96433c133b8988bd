#include "RunnerCompany.h"

#include <QFile>
#include <QPointF>
#include <QProcess>
#include <QRegularExpression>

namespace {

// Bad input to the real runner: a clear message on standard error, a non-zero exit, no output
// file, and the company's databases untouched (the runner opens them read-only).
class RunnerBadInput : public RunnerCompany {
protected:
    void expectRefused(const QString &request, const QString &message)
    {
        const QStringList before = databaseStamps();
        ASSERT_FALSE(before.isEmpty());
        const Run run = runRequest(request);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.errors, "cryprint: " + message);
        EXPECT_FALSE(QFile::exists(path("out.pdf")));
        EXPECT_EQ(databaseStamps(), before);
    }
    static QString vendorList(const QString &extra = {})
    {
        return "Crystal~\nReportFileName=rap001.rpt~\nWindowTitle=~\nMarginTop=0~\n"
               "MarginLeft=0~\n" +
               extra + "Destination=File~\nPrintFileName=out.pdf~\nPrintFileType=PDF~";
    }
};

TEST_F(RunnerBadInput, ARequestWithoutTheMarkerIsRefused)
{
    expectRefused("ReportFileName=rap001.rpt~\nDestination=File~",
                  "This is not a report request: the first line must be \"Crystal~\", not "
                  "\"ReportFileName=rap001.rpt~\".");
}

TEST_F(RunnerBadInput, AnUnknownKeyIsNamed)
{
    expectRefused(vendorList("Copies=2~\n"),
                  "The report request has an unknown key \"Copies\" (line 6).");
}

TEST_F(RunnerBadInput, AMissingReportFileIsNamedInTheMessage)
{
    QString request = vendorList();
    request.replace("rap001.rpt", "rap099.rpt");
    expectRefused(request, "The report file rap099.rpt cannot be found.");
}

TEST_F(RunnerBadInput, ADefinitionWithAnErrorIsNamedWithItsLine)
{
    QFile definition(path("rap001.rpt"));
    ASSERT_TRUE(definition.open(QIODevice::WriteOnly | QIODevice::Truncate));
    definition.write("title: Vendor List\ntable: 0 vendors ap.mdb\ncolumn: {vendors.vendname} | "
                     "Name | wide | text\n");
    definition.close();
    expectRefused(vendorList(), "The report file rap001.rpt has an error, line 3: the width "
                                "\"wide\" is not a number of inches.");
}

TEST_F(RunnerBadInput, AFormulaNamingAColumnThatDoesNotExistNamesIt)
{
    expectRefused(vendorList("SelectionFormula={vendors.vendnumber} > 1 and "
                             "{vendors.colour} = 'red'~\n"),
                  "Selection formula, position 30: table vendors has no field colour.");
}

TEST_F(RunnerBadInput, AFormulaWithASyntaxErrorNamesThePosition)
{
    expectRefused(vendorList("SelectionFormula={vendors.vendnumber} >> 1~\n"),
                  "Selection formula, position 23: a field, number or text is needed, not "
                  "\">\".");
}

TEST_F(RunnerBadInput, ADataFilesPathThatDoesNotExistIsNamed)
{
    expectRefused(vendorList("DataFiles(0)=/nowhere/ap.mdb~\n"),
                  "The data file /nowhere/ap.mdb given as DataFiles(0) for table vendors cannot "
                  "be found.");
}

TEST_F(RunnerBadInput, ASortFieldOfATableTheReportDoesNotHaveIsNamed)
{
    expectRefused(vendorList("SortFields(0)=+{checks.chkdate}~\n"),
                  "Sort field \"+{checks.chkdate}\": Selection formula, position 1: there is no "
                  "table checks in this report.");
}

TEST_F(RunnerBadInput, AnUnreadableRequestFileIsNamed)
{
    QProcess runner;
    runner.setWorkingDirectory(path(QString()));
    runner.start(QStringLiteral(CRYPRINT_PROGRAM), {QStringLiteral("no-such-request.txt")});
    ASSERT_TRUE(runner.waitForFinished(30000));
    EXPECT_EQ(runner.exitCode(), 1);
    EXPECT_TRUE(QString::fromUtf8(runner.readAllStandardError())
                    .contains("cryprint: The request file no-such-request.txt cannot be read"));
}

// DataFiles(n) points the report's tables at another company's file.
TEST_F(RunnerBadInput, DataFilesPointTheTablesAtAnotherFile)
{
    // A copy of a file: on the server a path that is no file is missing, a bare name is a
    // schema (the server's own tests).
    SQLITE_FILES_ONLY();
    ASSERT_TRUE(QFile::copy(path("ap.mdb"), path("other.mdb")));
    // The copy's own vendor is the only one named so.
    ASSERT_EQ(
        QProcess::execute("sqlite3", {path("other.mdb"), "update vendors set vendname = "
                                                         "'Only In The Other File' where "
                                                         "vendnumber = (select min(vendnumber) "
                                                         "from vendors)"}),
        0);
    const Run run = runRequest(vendorList("DataFiles(0)=other.mdb~\n"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_TRUE(pdfText("out.pdf").contains("Only In The Other File"));
    QFile::remove(path("out.pdf"));
    ASSERT_EQ(runRequest(vendorList()).exitCode, 0);
    EXPECT_FALSE(pdfText("out.pdf").contains("Only In The Other File"));
}

// The request's margins (twips) shift the printed page: 1440 to the inch, 72 points.
TEST_F(RunnerBadInput, MarginsShiftThePrintedPage)
{
    auto titleBox = [this](const QString &request) {
        QFile::remove(path("out.pdf"));
        EXPECT_EQ(runRequest(request).exitCode, 0);
        QProcess tool;
        tool.start("pdftotext", {"-bbox", path("out.pdf"), "-"});
        tool.waitForFinished();
        const QString html = QString::fromUtf8(tool.readAllStandardOutput());
        const QRegularExpression word("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\"[^>]*>Vendor<");
        const auto m = word.match(html);
        return m.hasMatch() ? QPointF(m.captured(1).toDouble(), m.captured(2).toDouble())
                            : QPointF(-1, -1);
    };
    const QPointF plain = titleBox(vendorList());
    QString shifted = vendorList();
    shifted.replace("MarginTop=0~", "MarginTop=720~").replace("MarginLeft=0~", "MarginLeft=1440~");
    const QPointF moved = titleBox(shifted);
    ASSERT_GT(plain.x(), 0);
    EXPECT_NEAR(moved.x() - plain.x(), 72.0, 0.5);
    EXPECT_NEAR(moved.y() - plain.y(), 36.0, 0.5);
}

TEST_F(RunnerBadInput, ACsvFileHoldsTheCaptionsAndOneLinePerVendor)
{
    QString request = vendorList("SortFields(0)=-{vendors.vendnumber}~\n");
    request.replace("PrintFileName=out.pdf", "PrintFileName=out.csv").replace("=PDF~", "=csv~");
    const Run run = runRequest(request);
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    QFile csv(path("out.csv"));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(csv.readAll()).split("\r\n", Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 41);
    EXPECT_EQ(lines[0], "Vendor #,Name,Telephone,Contact,City");
    const QString last = sqliteValue("ap.mdb", "select vendnumber from vendors order by "
                                               "vendnumber desc limit 1");
    EXPECT_TRUE(lines[1].startsWith(last + ",")) << lines[1].toStdString();
}

} // namespace
