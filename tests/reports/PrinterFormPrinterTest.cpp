#include "reports/PrinterFormPrinter.h"
#include "support/PdfWords.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class PrinterFormPrinterTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    QString pdf = dir.filePath("forms.pdf");
    void SetUp() override { qputenv("APMASTER_PRINT_PDF", pdf.toLocal8Bit()); }
    void TearDown() override { qunsetenv("APMASTER_PRINT_PDF"); }
};

TEST_F(PrinterFormPrinterTest, TextLandsWithItsTopLeftCornerAtThePositionInTwips)
{
    PrinterFormPrinter printer("test forms");
    ASSERT_TRUE(printer.begin()) << printer.why().toStdString();
    printer.print(1440, 2880, "HELLO"); // 1 inch across, 2 down: 72 and 144 points
    printer.print(7200, 720, "WORLD");  // 5 inches across, half an inch down
    printer.newPage();
    printer.print(20, 14400, "SECOND"); // 1 point across, 10 inches down
    printer.finish();
    EXPECT_EQ(printer.pdfFile(), pdf);
    const PdfWords words(pdf);
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    ASSERT_EQ(words.pages(), 2);
    EXPECT_NE(words.at(0, "HELLO", 72, 144), nullptr);
    EXPECT_NE(words.at(0, "WORLD", 360, 36), nullptr);
    EXPECT_NE(words.at(1, "SECOND", 1, 720), nullptr);
}

TEST_F(PrinterFormPrinterTest, TheTextIsFixedPitchTenPoint)
{
    PrinterFormPrinter printer("test forms");
    ASSERT_TRUE(printer.begin());
    printer.print(1440, 1440, "IIIII");
    printer.print(1440, 2880, "WWWWW");
    printer.finish();
    const PdfWords words(pdf);
    ASSERT_EQ(words.words().size(), 2u);
    for (const PdfWord &w : words.words()) {
        // Ten-point DejaVu Sans Mono: every character 6.02 points wide, lines 11.66 high.
        EXPECT_NEAR(w.xMax - w.xMin, 30.1, 0.2) << w.text.toStdString();
        EXPECT_NEAR(w.yMax - w.yMin, 11.66, 0.3) << w.text.toStdString();
    }
}

TEST(PrinterFormPrinterTarget, TheSettingNamesTheFileOrTheFolder)
{
    QTemporaryDir dir;
    qputenv("APMASTER_PRINT_PDF", dir.filePath("mine.pdf").toLocal8Bit());
    EXPECT_EQ(PrinterFormPrinter::pdfTarget("1099-NEC forms"), dir.filePath("mine.pdf"));
    qputenv("APMASTER_PRINT_PDF", dir.path().toLocal8Bit());
    const QString inFolder = PrinterFormPrinter::pdfTarget("1099-NEC forms");
    EXPECT_TRUE(inFolder.startsWith(dir.path() + "/1099-NEC forms ")) << inFolder.toStdString();
    EXPECT_TRUE(inFolder.endsWith(".pdf"));
    qunsetenv("APMASTER_PRINT_PDF");
}

} // namespace
