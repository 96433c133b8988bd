#include "reports/ReportRequest.h"

#include <gtest/gtest.h>

namespace {

TEST(ReportRequestTest, AVendorListByNameWithoutMarginsIsWordForWord)
{
    ReportRequest request;
    request.reportFileName = "rap001.rpt";
    request.sortFields[0] = "+{vendors.vendname}";
    EXPECT_EQ(request.text(0, 0),
              "Crystal~\nReportFileName=rap001.rpt~\nWindowTitle=~\n"
              "MarginTop=0~\nMarginLeft=0~\nSortFields(0)=+{vendors.vendname}~");
}

TEST(ReportRequestTest, AnEmptySelectionFormulaHasNoLineButTheEmptyTitleHasOne)
{
    ReportRequest request;
    request.reportFileName = "rap006.rpt";
    const QString text = request.text(0, 0);
    EXPECT_FALSE(text.contains("SelectionFormula"));
    EXPECT_TRUE(text.contains("\nWindowTitle=~\n"));
    EXPECT_EQ(text, "Crystal~\nReportFileName=rap006.rpt~\nWindowTitle=~\nMarginTop=0~\n"
                    "MarginLeft=0~");
}

TEST(ReportRequestTest, EveryOptionalLineComesInItsOrderWhenGiven)
{
    ReportRequest request;
    request.reportFileName = "r.rpt";
    request.windowTitle = "T";
    request.selectionFormula = "{a.b} = 1";
    request.dataFiles = {"d0", "", "d2", "", "d4"};
    request.sortFields = {"", "+{s.one}", "", "+{s.three}"};
    request.destination = "1";
    request.printFileName = "out.txt";
    request.printFileType = "8";
    EXPECT_EQ(request.text(720, -15),
              "Crystal~\nReportFileName=r.rpt~\nWindowTitle=T~\nMarginTop=720~\nMarginLeft=-15~\n"
              "SelectionFormula={a.b} = 1~\nDataFiles(0)=d0~\nDataFiles(2)=d2~\nDataFiles(4)=d4~\n"
              "SortFields(1)=+{s.one}~\nSortFields(3)=+{s.three}~\nDestination=1~\n"
              "PrintFileName=out.txt~\nPrintFileType=8~");
}

TEST(ReportRequestTest, TheSixthDataFileComesAfterTheFifthAndBeforeTheSortFields)
{
    ReportRequest request;
    request.reportFileName = "miscinfo1v.rpt";
    request.dataFiles[4] = "d4";
    request.dataFiles[5] = "/tmp/miscreport-anne.mdb";
    request.sortFields[0] = "+{s.one}";
    EXPECT_EQ(request.text(0, 0),
              "Crystal~\nReportFileName=miscinfo1v.rpt~\nWindowTitle=~\nMarginTop=0~\n"
              "MarginLeft=0~\nDataFiles(4)=d4~\nDataFiles(5)=/tmp/miscreport-anne.mdb~\n"
              "SortFields(0)=+{s.one}~");
}

TEST(ReportRequestTest, AnEmptySixthDataFileHasNoLine)
{
    ReportRequest request;
    request.reportFileName = "r.rpt";
    request.dataFiles[4] = "d4";
    EXPECT_FALSE(request.text(0, 0).contains("DataFiles(5)"));
}

TEST(ReportRequestTest, ClearingEmptiesTheRequestButKeepsTheReportFile)
{
    ReportRequest request;
    request.reportFileName = "r.rpt";
    request.windowTitle = "T";
    request.selectionFormula = "x";
    request.dataFiles[3] = "d";
    request.dataFiles[5] = "d5";
    request.sortFields[2] = "s";
    request.clear();
    EXPECT_TRUE(request.dataFiles[5].isEmpty());
    EXPECT_EQ(request.reportFileName, "r.rpt");
    EXPECT_TRUE(request.windowTitle.isEmpty());
    EXPECT_TRUE(request.selectionFormula.isEmpty());
    EXPECT_TRUE(request.dataFiles[3].isEmpty());
    EXPECT_TRUE(request.sortFields[2].isEmpty());
}

} // namespace
