#include "PreviewWindow.h"
#include "PageView.h"
#include "PreviewPages.h"
#include "RunnerCalls.h"
#include "RunnerCompany.h"

#include <QFile>
#include <QImage>
#include <QLabel>
#include <QScrollBar>
#include <QTest>

namespace {

// The texts of a page as the preview recorded them.
class PageTexts : public PagePainter {
public:
    QStringList texts;
    void beginPage() override {}
    void endPage() override {}
    void text(TextStyle, double, double, double, Qt::Alignment, const QString &s) override
    {
        texts << s;
    }
    void line(QPointF, QPointF) override {}
};

// The preview of the address labels (40 vendors, 30 to a sheet: two pages) on the generated
// company, driven from the keyboard.
class PreviewWindowTest : public RunnerCompany {
protected:
    std::optional<PreviewWindow> window;

    void open(const QString &reportFile)
    {
        QString error;
        def = loadDefinition(reportFile, error);
        ASSERT_TRUE(def) << error.toStdString();
        request.reportFileName = reportFile;
        request.sortFields[0] = QStringLiteral("+{vendors.vendnumber}");
        window.emplace(*def, request);
        window->show();
        // Shortcuts reach the active window only.
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.operator->()));
        QTRY_VERIFY(window->preview()->isComplete());
    }
    QString pageLabel() const
    {
        return window->findChild<QLabel *>(QStringLiteral("pagenumber"))->text();
    }
    std::optional<ReportDefinition> def;
    RunnerRequest request;
};

TEST_F(PreviewWindowTest, PagesTurnWithPageDownAndUpAndCtrlHomeAndEnd)
{
    open("rap007a.rpt");
    PageView *pages = window->preview();
    EXPECT_EQ(pages->pageCount(), 2);
    EXPECT_EQ(pages->currentPage(), 1);
    EXPECT_EQ(pageLabel(), "Page 1 of 2");
    QTest::keyClick(window.operator->(), Qt::Key_PageDown);
    EXPECT_EQ(pages->currentPage(), 2);
    QTest::keyClick(window.operator->(), Qt::Key_PageUp);
    EXPECT_EQ(pages->currentPage(), 1);
    QTest::keyClick(window.operator->(), Qt::Key_PageDown);
    EXPECT_EQ(pages->currentPage(), 2); // there is no third page
    QTest::keyClick(window.operator->(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(pages->currentPage(), 2);
    EXPECT_EQ(pageLabel(), "Page 2 of 2");
    QTest::keyClick(window.operator->(), Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(pages->currentPage(), 1);
}

TEST_F(PreviewWindowTest, ZoomInAndOutFromTheKeyboard)
{
    open("rap001.rpt");
    PageView *pages = window->preview();
    pages->setZoomFactor(1.0);
    QTest::keyClick(window.operator->(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(pages->zoomFactor(), 1.0);
    pages->setZoomFactor(1.0);
    QTest::keyClick(window.operator->(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_LT(pages->zoomFactor(), 1.0);
}

TEST_F(PreviewWindowTest, TheCaptionIsTheRequestsTitleOrElseTheReports)
{
    open("rap001.rpt");
    EXPECT_EQ(window->windowTitle(), "Vendor List");
    request.windowTitle = QStringLiteral("Vendors of 2024");
    window.emplace(*def, request);
    EXPECT_EQ(window->windowTitle(), "Vendors of 2024");
}

TEST_F(PreviewWindowTest, ExportWritesTheReportAsCsv)
{
    open("rap001.rpt");
    QString error;
    ASSERT_EQ(failureOf([&] { window->exportTo(path("export.csv"), "CSV"); }), QString());
    QFile csv(path("export.csv"));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(csv.readAll()).split("\r\n", Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 41);
    EXPECT_EQ(lines[0], "Vendor #,Name,Telephone,Contact,City");
    const QString first = sqliteValue("ap.mdb", "select vendnumber || ',' || vendname from vendors "
                                                "order by vendnumber limit 1");
    EXPECT_TRUE(lines[1].startsWith(first)) << lines[1].toStdString();
}

// Every invoice by date (480 on the company, a dozen pages): the window shows page 1 when only
// its rows are read; the other pages follow while the window is idle.
TEST_F(PreviewWindowTest, PageOneIsShownBeforeTheRestOfTheReportIsLaidOut)
{
    QString error;
    def = loadDefinition("rap014.rpt", error);
    ASSERT_TRUE(def) << error.toStdString();
    request.reportFileName = "rap014.rpt";
    window.emplace(*def, request);
    const PageView *pages = window->preview();
    EXPECT_EQ(pages->currentPage(), 1);
    EXPECT_EQ(pages->pageCount(), 1);
    EXPECT_FALSE(pages->isComplete());
    EXPECT_EQ(pageLabel(), "Page 1 of many");
    const long long all = sqliteValue("ap.mdb", "select count(*) from invoices").toLongLong();
    ASSERT_EQ(all, 480);
    EXPECT_GT(window->pages().rowsRead(), 20);
    EXPECT_LT(window->pages().rowsRead(), 80);

    PageTexts first;
    window->pages().replay(1, first);
    const QStringList oldest = sqlite("ap.mdb", "select invnumber from invoices order by "
                                                "invdate, vendnumber, invnumber limit 2");
    ASSERT_EQ(oldest.size(), 2);
    EXPECT_EQ(first.texts.value(0), "Invoices by Date");
    EXPECT_TRUE(first.texts.contains(oldest[0]));
    EXPECT_TRUE(first.texts.contains(oldest[1]));
    // The count of pages is not known yet.
    EXPECT_TRUE(first.texts.contains("Page 1 of "));
    EXPECT_TRUE(first.texts.contains("..."));
    EXPECT_FALSE(first.texts.contains("480 invoices"));

    QTRY_VERIFY(pages->isComplete());
    EXPECT_GT(pages->pageCount(), 8);
    PageTexts again;
    window->pages().replay(1, again);
    EXPECT_TRUE(again.texts.contains(QString::number(pages->pageCount())));
    EXPECT_FALSE(again.texts.contains("..."));
    EXPECT_EQ(window->pages().rowsRead(), 480);
    EXPECT_EQ(pageLabel(), QStringLiteral("Page 1 of %1").arg(pages->pageCount()));
    PageTexts last;
    window->pages().replay(pages->pageCount(), last);
    EXPECT_TRUE(last.texts.contains("480 invoices"));
}

// While idle the preview lays out only so far ahead of the page shown; the last page lays out
// the rest.
TEST_F(PreviewWindowTest, ALongReportIsLaidOutToItsEndOnlyForItsLastPage)
{
    QString error;
    def = loadDefinition("rap014.rpt", error);
    ASSERT_TRUE(def) << error.toStdString();
    request.reportFileName = "rap014.rpt";
    window.emplace(*def, request);
    PageView *pages = window->preview();
    pages->setLookAhead(2);
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.operator->()));
    QTRY_COMPARE(pages->pageCount(), 3);
    QTest::qWait(50);
    EXPECT_EQ(pages->pageCount(), 3);
    EXPECT_FALSE(pages->isComplete());
    QTest::keyClick(window.operator->(), Qt::Key_PageDown);
    EXPECT_EQ(pages->currentPage(), 2);
    QTRY_COMPARE(pages->pageCount(), 4);
    QTest::keyClick(window.operator->(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(pages->isComplete());
    EXPECT_GT(pages->pageCount(), 8);
    EXPECT_EQ(pages->currentPage(), pages->pageCount());
    EXPECT_EQ(pageLabel(), QStringLiteral("Page %1 of %1").arg(pages->pageCount()));
}

// The page is painted from its recording: dark text on white paper, from its top.
TEST_F(PreviewWindowTest, ThePageShownIsPaintedWithItsText)
{
    open("rap001.rpt");
    const QImage page = window->preview()->widget()->grab().toImage();
    ASSERT_GT(page.height(), 500);
    auto darkPixels = [&page](int fromY, int toY) {
        int dark = 0;
        for (int y = fromY; y < toY; ++y)
            for (int x = 0; x < page.width(); ++x)
                dark += qGray(page.pixel(x, y)) < 128 ? 1 : 0;
        return dark;
    };
    // The title and column headings in the top tenth, nothing in the margin above them.
    EXPECT_GT(darkPixels(0, page.height() / 10), 200);
    EXPECT_EQ(darkPixels(0, page.height() / 40), 0);
    EXPECT_EQ(window->preview()->verticalScrollBar()->value(), 0);
}

TEST_F(PreviewWindowTest, EscapeClosesThePreview)
{
    open("rap001.rpt");
    ASSERT_TRUE(window->isVisible());
    QTest::keyClick(window.operator->(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

} // namespace
