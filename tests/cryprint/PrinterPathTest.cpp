#include "ReportQuery.h"
#include "ReportRenderer.h"
#include "RunnerCalls.h"
#include "RunnerCompany.h"
#include "support/PdfWords.h"

#include <QFile>
#include <QPrinter>

namespace {

// What the preview's Print sends to a printer: the report painted onto a QPrinter, here one
// that writes a PDF file, read back by position. The runner's own PDF writer lays out the same
// page, so each left-aligned word must stand where that file puts it; the request's margins
// (twips) shift the whole page.
class PrinterPath : public RunnerCompany {
protected:
    RunnerRequest request(int marginLeft, int marginTop) const
    {
        RunnerRequest r;
        r.reportFileName = "rap001.rpt";
        r.marginLeft = marginLeft;
        r.marginTop = marginTop;
        return r;
    }

    // Prints rap001 through the printer path; the number of rows printed.
    long long print(const RunnerRequest &r, const QString &file)
    {
        QString error;
        const auto def = loadDefinition(r.reportFileName, error);
        EXPECT_TRUE(def) << error.toStdString();
        if (!def)
            return -1;
        ReportQuery rows;
        EXPECT_TRUE(openRows(rows, *def, r, error)) << error.toStdString();
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path(file));
        long long printed = -1;
        EXPECT_EQ(failureOf([&] { printed = ReportRenderer(*def, r).paint(rows, printer); }),
                  QString());
        return printed;
    }

    // The same request through the runner's own PDF writer.
    void writePdf(const RunnerRequest &r, const QString &file)
    {
        QString error;
        const auto def = loadDefinition(r.reportFileName, error);
        ASSERT_TRUE(def) << error.toStdString();
        ReportQuery rows;
        ASSERT_TRUE(openRows(rows, *def, r, error)) << error.toStdString();
        QFile out(path(file));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        long long written = -1;
        EXPECT_EQ(failureOf([&] { written = ReportRenderer(*def, r).pdf(rows, out); }), QString());
        EXPECT_GT(written, 0);
    }

    // The first vendor's name (by number), whose first word the tests look for.
    QString firstNameWord() const
    {
        return sqliteValue("ap.mdb", "select vendname from vendors order by vendnumber limit 1")
            .section(' ', 0, 0);
    }

    static const PdfWord *first(const PdfWords &pdf, const QString &text)
    {
        const auto found = pdf.find(0, text);
        return found.empty() ? nullptr : found.front();
    }
};

TEST_F(PrinterPath, EveryVendorIsPrintedOnAsManyPagesAsTheRunnersOwnFile)
{
    EXPECT_EQ(print(request(0, 0), "printed.pdf"),
              sqliteValue("ap.mdb", "select count(*) from vendors").toLongLong());
    writePdf(request(0, 0), "written.pdf");
    const PdfWords printed(path("printed.pdf"));
    const PdfWords written(path("written.pdf"));
    ASSERT_TRUE(printed.ok()) << printed.error().toStdString();
    ASSERT_TRUE(written.ok()) << written.error().toStdString();
    EXPECT_GE(printed.pages(), 1);
    EXPECT_EQ(printed.pages(), written.pages());
    EXPECT_TRUE(printed.pageText(0).contains("Vendor List"));
}

TEST_F(PrinterPath, TheFirstRowStandsWhereTheRunnersOwnFilePutsIt)
{
    print(request(0, 0), "printed.pdf");
    writePdf(request(0, 0), "written.pdf");
    const PdfWords printed(path("printed.pdf"));
    const PdfWords written(path("written.pdf"));
    const QString word = firstNameWord();
    const PdfWord *onPaper = first(printed, word);
    const PdfWord *inFile = first(written, word);
    ASSERT_NE(onPaper, nullptr) << word.toStdString();
    ASSERT_NE(inFile, nullptr) << word.toStdString();
    EXPECT_NEAR(onPaper->xMin, inFile->xMin, 1.0);
    // The fonts differ (the printer's sans serif, the file's Helvetica): the baselines agree,
    // the boxes' tops within a little.
    EXPECT_NEAR(onPaper->yMax, inFile->yMax, 2.0);
    const PdfWord *caption = first(printed, "Name");
    ASSERT_NE(caption, nullptr);
    EXPECT_NEAR(caption->xMin, onPaper->xMin, 1.0);
    EXPECT_LT(caption->yMax, onPaper->yMin);
}

TEST_F(PrinterPath, TheRequestsMarginsShiftThePrintedPage)
{
    print(request(0, 0), "plain.pdf");
    // One inch from the left, half an inch from the top.
    print(request(1440, 720), "shifted.pdf");
    const PdfWords plain(path("plain.pdf"));
    const PdfWords shifted(path("shifted.pdf"));
    const QString word = firstNameWord();
    const PdfWord *before = first(plain, word);
    const PdfWord *after = first(shifted, word);
    ASSERT_NE(before, nullptr);
    ASSERT_NE(after, nullptr);
    EXPECT_NEAR(after->xMin - before->xMin, 72.0, 0.5);
    EXPECT_NEAR(after->yMin - before->yMin, 36.0, 0.5);
    const PdfWord *titleBefore = first(plain, "Vendor");
    const PdfWord *titleAfter = first(shifted, "Vendor");
    ASSERT_NE(titleBefore, nullptr);
    ASSERT_NE(titleAfter, nullptr);
    EXPECT_NEAR(titleAfter->xMin - titleBefore->xMin, 72.0, 0.5);
    EXPECT_NEAR(titleAfter->yMin - titleBefore->yMin, 36.0, 0.5);
}

TEST_F(PrinterPath, ATwentyTwipLeftMarginMovesThePageOnePointRight)
{
    print(request(0, 0), "plain.pdf");
    print(request(20, 0), "point.pdf");
    const PdfWords plain(path("plain.pdf"));
    const PdfWords point(path("point.pdf"));
    const QString word = firstNameWord();
    const PdfWord *before = first(plain, word);
    const PdfWord *after = first(point, word);
    ASSERT_NE(before, nullptr);
    ASSERT_NE(after, nullptr);
    EXPECT_NEAR(after->xMin - before->xMin, 1.0, 0.2);
    EXPECT_NEAR(after->yMin - before->yMin, 0.0, 0.05);
}

} // namespace
