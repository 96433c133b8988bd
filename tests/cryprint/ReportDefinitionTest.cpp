#include "ReportDefinition.h"
#include "RunnerCalls.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

std::optional<ReportDefinition> parsed(const QString &text, QString *error = nullptr)
{
    std::optional<ReportDefinition> def;
    const QString message = failureOf([&] { def = ReportDefinition::parse(text); });
    if (error)
        *error = message;
    return def;
}

TEST(ReportDefinitionTest, EveryReportTheModuleCanRequestIsShippedAndReads)
{
    const QDir dir(QStringLiteral(CRYPRINT_DEFINITIONS));
    for (const char *name :
         {"rap001", "rap002", "rap003", "rap003a", "rap004", "rap005", "rap006", "rap007",
          "rap007a", "rap007b", "rap014", "1099pv", "miscinfo1v", "miscinfo1m", "miscinfo1e"}) {
        QString error;
        const auto def = loadDefinition(dir.filePath(QString::fromLatin1(name) + ".rpt"), error);
        EXPECT_TRUE(def) << name << ": " << error.toStdString();
        if (def) {
            EXPECT_FALSE(def->title.isEmpty()) << name;
        }
    }
}

TEST(ReportDefinitionTest, AListWithAJoinGroupAndTotalIsRead)
{
    QString error;
    const auto def = parsed("# comment\n"
                            "title: Open Invoices\n"
                            "orientation: landscape\n"
                            "table: 0 invoices ap.mdb\n"
                            "table: 1 vendors ap.mdb\n"
                            "join: {vendors.vendnumber} = {invoices.vendnumber}\n"
                            "filter: {invoices.invstatus} >= 1\n"
                            "group: {invoices.vendnumber} | Vendor {vendors.vendname}\n"
                            "order: +{invoices.invdate}\n"
                            "column: {invoices.invnumber} | Invoice # | 1.1 | text\n"
                            "column: {invoices.invamount} | Amount | 1.2 | money | total\n",
                            &error);
    ASSERT_TRUE(def) << error.toStdString();
    EXPECT_EQ(def->title, "Open Invoices");
    EXPECT_TRUE(def->landscape);
    ASSERT_EQ(def->tables.size(), 2u);
    EXPECT_EQ(def->tables[1].name, "vendors");
    EXPECT_EQ(def->tables[1].file, "ap.mdb");
    EXPECT_EQ(def->joins[0].right.column, "vendnumber");
    EXPECT_EQ(def->filter, "{invoices.invstatus} >= 1");
    ASSERT_TRUE(def->group);
    EXPECT_EQ(def->group->column, "vendnumber");
    ASSERT_EQ(def->columns.size(), 2u);
    EXPECT_EQ(def->columns[0].caption, "Invoice #");
    EXPECT_DOUBLE_EQ(def->columns[1].width, 1.2);
    EXPECT_EQ(def->columns[1].format, ReportDefinition::Format::Money);
    EXPECT_TRUE(def->columns[1].total);
    EXPECT_FALSE(def->columns[0].total);
    EXPECT_EQ(def->order, QStringList{"+{invoices.invdate}"});
}

struct BadDefinition {
    const char *name;
    const char *text;
    const char *message;
};

class BadReportDefinition : public ::testing::TestWithParam<BadDefinition> {};

TEST_P(BadReportDefinition, IsAMessageWithTheLine)
{
    QString error;
    EXPECT_FALSE(parsed(QString::fromUtf8(GetParam().text), &error));
    EXPECT_EQ(error.toStdString(), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, BadReportDefinition,
    ::testing::Values(
        BadDefinition{"UnknownKey", "title: T\ncolour: red\n", "line 2: unknown key \"colour\""},
        BadDefinition{"NoColon", "title T\n", "line 1: \"title T\" is not of the form key: value"},
        BadDefinition{"NoTable", "title: T\ncolumn: {v.a} | A | 1 | text\n",
                      "the definition names no table"},
        BadDefinition{"TableIndexOutOfRange", "table: 6 vendors ap.mdb\n",
                      "line 1: a table line is \"table: INDEX NAME FILE\" (index 0 to 5)"},
        BadDefinition{"TableTwice", "table: 0 vendors ap.mdb\ntable: 0 checks ap.mdb\n",
                      "line 2: table checks (index 0) is listed twice"},
        BadDefinition{"MissingJoin",
                      "table: 0 vendors ap.mdb\ntable: 1 checks ap.mdb\n"
                      "column: {vendors.vendname} | N | 1 | text\n",
                      "each table after the first needs one join line (2 tables, 0 joins)"},
        BadDefinition{"WidthNotANumber", "table: 0 v a.mdb\ncolumn: {v.a} | A | wide | text\n",
                      "line 2: the width \"wide\" is not a number of inches"},
        BadDefinition{"ZeroWidth", "table: 0 v a.mdb\ncolumn: {v.a} | A | 0 | text\n",
                      "line 2: the width \"0\" is not a number of inches"},
        BadDefinition{"UnknownFormat", "table: 0 v a.mdb\ncolumn: {v.a} | A | 1 | euro\n",
                      "line 2: unknown format \"euro\""},
        BadDefinition{"TotalOfText", "table: 0 v a.mdb\ncolumn: {v.a} | A | 1 | text | total\n",
                      "line 2: only money and number columns have totals"},
        BadDefinition{"ColumnWithoutBraces", "table: 0 v a.mdb\ncolumn: v.a | A | 1 | text\n",
                      "line 2: \"v.a\" is not a {table.field} reference"},
        BadDefinition{"NoColumns", "title: T\ntable: 0 v a.mdb\n",
                      "a list needs at least one column"},
        BadDefinition{"LabelsWithoutLines", "layout: labels\ntable: 0 v a.mdb\n",
                      "labels and cards need at least one line"},
        BadDefinition{"LabelSheetHalfALabel",
                      "layout: labels\ntable: 0 v a.mdb\nlabels: 2.5 10 1 1 0 0 1 1\nline: x\n",
                      "line 3: labels is \"labels: ACROSS DOWN WIDTH HEIGHT LEFT TOP PITCHX "
                      "PITCHY\" (inches)"},
        BadDefinition{"LineWithABrokenReference",
                      "layout: cards\ntable: 0 v a.mdb\nline: Name {v.name\n",
                      "line 3: \"Name {v.name\" holds a \"{\" that is not a {table.field} "
                      "reference"},
        BadDefinition{"ReportableWithoutThreshold",
                      "table: 0 v a.mdb\ncolumn: @reportable | Due | 1 | text\n",
                      "@reportable needs a threshold line"}),
    [](const auto &info) { return std::string(info.param.name); });

} // namespace
