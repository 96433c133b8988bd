#include "RunnerRequest.h"
#include "RunnerCalls.h"

#include "reports/ReportRequest.h"

#include <gtest/gtest.h>

namespace {

std::optional<RunnerRequest> parsed(const QString &text, QString *error = nullptr)
{
    std::optional<RunnerRequest> request;
    const QString message = failureOf([&] { request = RunnerRequest::parse(text); });
    if (error)
        *error = message;
    return request;
}

TEST(RunnerRequestTest, TheModulesVendorListByNameIsReadKeyByKey)
{
    ReportRequest module;
    module.reportFileName = "rap001.rpt";
    module.sortFields[0] = "+{vendors.vendname}";
    const auto request = parsed(module.text(720, 360));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->reportFileName, "rap001.rpt");
    EXPECT_EQ(request->windowTitle, "");
    EXPECT_EQ(request->marginTop, 720);
    EXPECT_EQ(request->marginLeft, 360);
    EXPECT_EQ(request->selectionFormula, "");
    EXPECT_EQ(request->sortFields[0], "+{vendors.vendname}");
    EXPECT_EQ(request->sortFields[1], "");
    EXPECT_FALSE(request->toFile());
}

TEST(RunnerRequestTest, EveryKeyOfAFullRequestFromTheModuleIsRead)
{
    ReportRequest module;
    module.reportFileName = "r.rpt";
    module.windowTitle = "Title";
    module.selectionFormula = "{invoices.vendnumber} =12 and {invoices.invstatus} = 4";
    module.dataFiles = {"d0.mdb", "d1.mdb", "d2.mdb", "d3.mdb", "d4.mdb", "/tmp/d5.mdb"};
    module.sortFields = {"+{a.b}", "-{a.c}", "+{a.d}", "-{a.e}"};
    module.destination = "file";
    module.printFileName = "out.pdf";
    module.printFileType = "PDF";
    const auto request = parsed(module.text(0, 1440));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->windowTitle, "Title");
    EXPECT_EQ(request->marginTop, 0);
    EXPECT_EQ(request->marginLeft, 1440);
    EXPECT_EQ(request->selectionFormula, module.selectionFormula);
    for (size_t i = 0; i < 6; ++i)
        EXPECT_EQ(request->dataFiles[i], module.dataFiles[i]) << i;
    for (size_t i = 0; i < 4; ++i)
        EXPECT_EQ(request->sortFields[i], module.sortFields[i]) << i;
    EXPECT_TRUE(request->toFile()); // "file" in any case
    EXPECT_EQ(request->printFileName, "out.pdf");
    EXPECT_EQ(request->printFileType, "PDF");
}

TEST(RunnerRequestTest, TheUserFieldsWindowsSixthDataFileIsRead)
{
    ReportRequest module;
    module.reportFileName = "miscinfo1v.rpt";
    module.dataFiles[5] = "/home/anne/.cache/velmora/miscreport-anne.mdb";
    const auto request = parsed(module.text(0, 0));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->dataFiles[5], "/home/anne/.cache/velmora/miscreport-anne.mdb");
    EXPECT_EQ(request->dataFiles[4], "");
}

struct BadRequest {
    const char *name;
    const char *text;
    const char *message; // a part of the message
};

class RunnerRequestBadInput : public ::testing::TestWithParam<BadRequest> {};

TEST_P(RunnerRequestBadInput, IsRefusedWithAClearMessage)
{
    QString error;
    EXPECT_FALSE(parsed(QString::fromUtf8(GetParam().text), &error));
    EXPECT_TRUE(error.contains(QString::fromUtf8(GetParam().message))) << error.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, RunnerRequestBadInput,
    ::testing::Values(
        BadRequest{"NoMarker", "ReportFileName=rap001.rpt~", "first line must be \"Crystal~\""},
        BadRequest{"AnotherMarker", "Krystal~\nReportFileName=rap001.rpt~",
                   "first line must be \"Crystal~\", not \"Krystal~\""},
        BadRequest{"Empty", "", "The report request is empty"},
        BadRequest{"UnknownKey", "Crystal~\nReportFileName=a.rpt~\nColour=red~",
                   "unknown key \"Colour\" (line 3)"},
        BadRequest{"SeventhDataFile", "Crystal~\nReportFileName=a.rpt~\nDataFiles(6)=x~",
                   "unknown key \"DataFiles(6)\""},
        BadRequest{"FifthSortField", "Crystal~\nReportFileName=a.rpt~\nSortFields(4)=+{a.b}~",
                   "unknown key \"SortFields(4)\""},
        BadRequest{"NoTilde", "Crystal~\nReportFileName=a.rpt\nWindowTitle=~",
                   "Line 2 of the report request does not end with \"~\""},
        BadRequest{"NoEquals", "Crystal~\nReportFileName=a.rpt~\nhello~",
                   "Line 3 of the report request is not of the form Key=value"},
        BadRequest{"MarginInInches", "Crystal~\nReportFileName=a.rpt~\nMarginTop=0.5~",
                   "MarginTop must be a whole number of twips, not \"0.5\""},
        BadRequest{"EmptyMargin", "Crystal~\nReportFileName=a.rpt~\nMarginLeft=~",
                   "MarginLeft must be a whole number of twips"},
        BadRequest{"TwiceTheSameKey", "Crystal~\nReportFileName=a.rpt~\nReportFileName=b.rpt~",
                   "The key ReportFileName appears twice"},
        BadRequest{"NoReportFile", "Crystal~\nWindowTitle=~", "names no report file"},
        BadRequest{"FileWithoutName",
                   "Crystal~\nReportFileName=a.rpt~\nDestination=File~\nPrintFileType=PDF~",
                   "Destination=File needs a PrintFileName"},
        BadRequest{"FileOfUnknownType",
                   "Crystal~\nReportFileName=a.rpt~\nDestination=File~\nPrintFileName=o~\n"
                   "PrintFileType=DOC~",
                   "PrintFileType must be PDF or CSV, not \"DOC\""},
        BadRequest{"UnknownDestination", "Crystal~\nReportFileName=a.rpt~\nDestination=Fax~",
                   "Destination must be File or Window, not \"Fax\""}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(RunnerRequestTest, AFileDestinationIsTakenInAnyCaseAndCsvInAnyCase)
{
    for (const char *destination : {"File", "FILE", "file", "fILe"}) {
        const auto request = parsed(QStringLiteral("Crystal~\nReportFileName=a.rpt~\n"
                                                   "Destination=%1~\nPrintFileName=o.csv~\n"
                                                   "PrintFileType=csv~")
                                        .arg(QString::fromLatin1(destination)));
        ASSERT_TRUE(request) << destination;
        EXPECT_TRUE(request->toFile()) << destination;
    }
}

TEST(RunnerRequestTest, AFinalLineFeedAndCarriageReturnsAreTolerated)
{
    const auto request = parsed("Crystal~\r\nReportFileName=a.rpt~\r\nMarginTop=15~\n");
    ASSERT_TRUE(request);
    EXPECT_EQ(request->reportFileName, "a.rpt");
    EXPECT_EQ(request->marginTop, 15);
}

TEST(RunnerRequestTest, AValueKeepsItsEqualsSignsAndBlanks)
{
    const auto request = parsed("Crystal~\nReportFileName=a.rpt~\nWindowTitle= A = B ~");
    ASSERT_TRUE(request);
    EXPECT_EQ(request->windowTitle, " A = B ");
}

} // namespace
