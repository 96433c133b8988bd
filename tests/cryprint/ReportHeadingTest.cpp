#include "RunnerCompany.h"

#include <QDate>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace {

// Every page of a report says whose books it is, when it was printed, what was selected and
// which page of how many it is, so that a printed report can be filed.
class ReportHeading : public RunnerCompany {
protected:
    static QString request(const QString &report, const QString &formula = QString())
    {
        return "Crystal~\nReportFileName=" + report + "~\nWindowTitle=~\nMarginTop=0~\n" +
               "MarginLeft=0~\n" +
               (formula.isEmpty() ? QString() : "SelectionFormula=" + formula + "~\n") +
               "Destination=File~\nPrintFileName=out.pdf~\nPrintFileType=PDF~";
    }
    // The text of each page of out.pdf.
    QStringList pages() const
    {
        QStringList texts = pdfText("out.pdf").split('\f');
        if (!texts.isEmpty() && texts.last().trimmed().isEmpty())
            texts.removeLast();
        return texts;
    }
    void companyStatement(const QString &sql)
    {
        if (m_server) {
            QProcess psql;
            psql.start("psql", {"-h", qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST"), "-U",
                                "postgres", "-d", m_server->serverDatabase(), "-c",
                                QString(sql).replace("company", "config_mdb.company")});
            ASSERT_TRUE(psql.waitForFinished(30000));
            ASSERT_EQ(psql.exitCode(), 0) << psql.readAllStandardError().toStdString();
            return;
        }
        ASSERT_EQ(QProcess::execute("sqlite3", {path("config.mdb"), sql}), 0);
    }
};

TEST_F(ReportHeading, EveryPageNamesTheCompanyThePrintingAndItsPageOfAll)
{
    const QDate before = QDate::currentDate();
    const Run run = runRequest(request("rap014.rpt"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const QDate after = QDate::currentDate();
    const QStringList texts = pages();
    ASSERT_GE(texts.size(), 3);
    const QRegularExpression printed("Printed (\\d\\d/\\d\\d/\\d{4}) \\d{1,2}:\\d\\d [AP]M");
    for (int i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE(i + 1);
        const QString &page = texts[i];
        EXPECT_TRUE(page.contains("Invoices by Date"));
        EXPECT_TRUE(page.contains("Greater Springfield Chamber of Commerce"));
        const auto stamp = printed.match(page);
        ASSERT_TRUE(stamp.hasMatch()) << page.left(400).toStdString();
        const QDate day = QDate::fromString(stamp.captured(1), "MM/dd/yyyy");
        EXPECT_TRUE(day == before || day == after) << stamp.captured(1).toStdString();
        EXPECT_TRUE(page.contains("Selection: All records"));
        EXPECT_TRUE(page.contains(QStringLiteral("Page %1 of %2").arg(i + 1).arg(texts.size())))
            << page.right(200).toStdString();
    }
}

TEST_F(ReportHeading, TheSelectionIsSaidInWordsWithItsDates)
{
    const QString vendor = sqliteValue("ap.mdb", "select min(vendnumber) from vendors");
    const Run run = runRequest(request("rap014.rpt", "{invoices.vendnumber} = " + vendor +
                                                         " and {invoices.invdate} >= 20240101 "
                                                         "and {invoices.invdate} <= 20240630"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const QStringList texts = pages();
    ASSERT_EQ(texts.size(), 1);
    EXPECT_TRUE(
        texts[0].contains("Selection: Vendor # " + vendor + "; Date from 01/01/2024 to 06/30/2024"))
        << texts[0].left(600).toStdString();
    EXPECT_TRUE(texts[0].contains("Page 1 of 1"));
}

TEST_F(ReportHeading, AFormulaOfAnotherShapeIsShownAsWritten)
{
    const Run run =
        runRequest(request("rap001.rpt", "{vendors.vendnumber} > 0 or {vendors.vendnumber} < 0"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_TRUE(pages().value(0).contains(
        "Selection: {vendors.vendnumber} > 0 or {vendors.vendnumber} < 0"));
}

TEST_F(ReportHeading, ACompanyWithoutItsCompanyRecordStillPrintsAndTheHeadingSaysSo)
{
    companyStatement("delete from company");
    const Run run = runRequest(request("rap001.rpt"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const QString page = pages().value(0);
    EXPECT_TRUE(page.contains("No company record in config.mdb")) << page.toStdString();
    EXPECT_FALSE(page.contains("Greater Springfield"));
    const QString first = sqliteValue("ap.mdb", "select vendname from vendors order by "
                                                "vendnumber limit 1");
    EXPECT_TRUE(page.contains(first));
}

TEST_F(ReportHeading, ACompanyWithoutItsSettingsFileStillPrints)
{
    SQLITE_FILES_ONLY();
    ASSERT_TRUE(QFile::rename(path("config.mdb"), path("config-away.mdb")));
    const Run run = runRequest(request("rap001.rpt"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_TRUE(pages().value(0).contains("No company record in config.mdb"));
}

TEST_F(ReportHeading, ThePageOfAllStandsInTheHeadingOnTheSelectionsLine)
{
    ASSERT_EQ(runRequest(request("rap014.rpt")).exitCode, 0);
    QProcess tool;
    tool.start("pdftotext", {"-bbox", "-f", "2", "-l", "2", path("out.pdf"), "-"});
    ASSERT_TRUE(tool.waitForFinished(30000));
    const QString html = QString::fromUtf8(tool.readAllStandardOutput());
    const QRegularExpression word("xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" "
                                  "yMax=\"[0-9.]+\">([^<]+)<");
    QList<QStringList> words;
    for (auto it = word.globalMatch(html); it.hasNext();) {
        const auto m = it.next();
        words << QStringList{m.captured(4), m.captured(1), m.captured(2), m.captured(3)};
    }
    const QString count = QString::number(pages().size());
    qsizetype of = -1;
    for (qsizetype i = 0; i + 1 < words.size(); ++i)
        if (words[i][0] == "of" && words[i + 1][0] == count && i >= 2 && words[i - 1][0] == "2")
            of = i;
    ASSERT_GE(of, 0) << html.right(800).toStdString();
    EXPECT_NEAR(words[of + 1][2].toDouble(), words[of][2].toDouble(), 0.5);
    EXPECT_GT(words[of + 1][1].toDouble(), words[of][3].toDouble());
    EXPECT_LT(words[of + 1][1].toDouble() - words[of][3].toDouble(), 4.0);
    // At the right of the heading: ending near the right margin of the landscape page (792
    // points wide, half an inch of margin), on the line that says the selection.
    EXPECT_NEAR(words[of + 1][3].toDouble(), 756.0, 8.0);
    qsizetype selection = -1;
    for (qsizetype i = 0; i < words.size(); ++i)
        if (words[i][0] == "Selection:")
            selection = i;
    ASSERT_GE(selection, 0);
    EXPECT_NEAR(words[of][2].toDouble(), words[selection][2].toDouble(), 0.5);
    EXPECT_LT(words[of][2].toDouble(), 100.0); // in the heading, not at the foot
}

} // namespace
