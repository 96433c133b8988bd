#include "RunnerCompany.h"

#include <QFile>

namespace {

// A report whose columns stand in another order than the fields of its statement (the group's
// field and the heading's come first there): each value still lands in its own column.
class RunnerColumnOrder : public RunnerCompany {
protected:
    void SetUp() override
    {
        RunnerCompany::SetUp();
        QFile file(path("columns.rpt"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("title: Columns in their own order\nlayout: list\n"
                   "table: 0 vendors ap.mdb\n"
                   "group: {vendors.vendnumber} | Vendor {vendors.vendname}\n"
                   "column: {vendors.vendcity} | City | 1.6 | text\n"
                   "column: {vendors.vendname} | Name | 2.6 | text\n"
                   "column: {vendors.vendnumber} | Number | 0.9 | number\n"
                   "count: vendors\n");
    }
    static QString request(const QString &out, const QString &type)
    {
        return toFile("Crystal~\nReportFileName=columns.rpt~", out, type);
    }
    static QString csvField(const QString &s)
    {
        return s.contains(',') || s.contains('"') ? '"' + QString(s).replace("\"", "\"\"") + '"'
                                                  : s;
    }
};

TEST_F(RunnerColumnOrder, EachCsvValueIsInItsColumn)
{
    const Run run = runRequest(request("out.csv", "CSV"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    QFile csv(path("out.csv"));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(csv.readAll()).split("\r\n", Qt::SkipEmptyParts);
    const QStringList vendors =
        sqlite("ap.mdb", "select trim(vendcity) || char(9) || trim(vendname) || char(9) || "
                         "vendnumber from vendors order by vendnumber");
    ASSERT_EQ(vendors.size(), 40);
    ASSERT_EQ(lines.size(), 41);
    EXPECT_EQ(lines[0], "City,Name,Number");
    for (int i = 0; i < vendors.size(); ++i) {
        const QStringList v = vendors[i].split('\t');
        ASSERT_EQ(v.size(), 3);
        EXPECT_EQ(lines[i + 1], csvField(v[0]) + ',' + csvField(v[1]) + ',' + v[2]);
    }
}

TEST_F(RunnerColumnOrder, EachPdfValueIsInItsColumn)
{
    const Run run = runRequest(request("out.pdf", "PDF"));
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const QStringList lines = pdfText("out.pdf").split('\n');
    const QStringList vendors =
        sqlite("ap.mdb", "select trim(vendcity) || char(9) || trim(vendname) || char(9) || "
                         "vendnumber from vendors where length(trim(vendcity)) between 3 and 18 "
                         "and length(trim(vendname)) between 3 and 28 order by vendnumber limit 5");
    ASSERT_EQ(vendors.size(), 5);
    for (const QString &vendor : vendors) {
        const QStringList v = vendor.split('\t');
        ASSERT_EQ(v.size(), 3);
        // The detail line: the only one with the city before the name.
        const auto line = std::find_if(lines.begin(), lines.end(), [&](const QString &l) {
            return l.contains(v[0] + "  ") && l.contains(v[1]);
        });
        ASSERT_NE(line, lines.end()) << vendor.toStdString();
        EXPECT_LT(line->indexOf(v[0]), line->indexOf(v[1])) << line->toStdString();
        EXPECT_TRUE(line->trimmed().endsWith(' ' + v[2])) << line->toStdString();
    }
}

} // namespace
