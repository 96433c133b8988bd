#include "PreviewWindow.h"
#include "RunnerCompany.h"

#include <QFile>
#include <QPrintPreviewWidget>
#include <QTest>

namespace {

// The preview of the address labels (40 vendors, 30 to a sheet: two pages) on the generated
// company, driven from the keyboard.
class PreviewWindowTest : public RunnerCompany {
protected:
    std::optional<PreviewWindow> window;

    void open(const QString &reportFile)
    {
        QString error;
        def = ReportDefinition::load(reportFile, error);
        ASSERT_TRUE(def) << error.toStdString();
        request.reportFileName = reportFile;
        request.sortFields[0] = QStringLiteral("+{vendors.vendnumber}");
        window.emplace(*def, request);
        window->show();
        // Shortcuts reach the active window only.
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.operator->()));
        QTRY_VERIFY(window->preview()->pageCount() > 0);
    }
    std::optional<ReportDefinition> def;
    RunnerRequest request;
};

TEST_F(PreviewWindowTest, PagesTurnWithPageDownAndUpAndCtrlHomeAndEnd)
{
    open("rap007a.rpt");
    QPrintPreviewWidget *pages = window->preview();
    EXPECT_EQ(pages->pageCount(), 2);
    EXPECT_EQ(pages->currentPage(), 1);
    QTest::keyClick(window.operator->(), Qt::Key_PageDown);
    EXPECT_EQ(pages->currentPage(), 2);
    QTest::keyClick(window.operator->(), Qt::Key_PageUp);
    EXPECT_EQ(pages->currentPage(), 1);
    QTest::keyClick(window.operator->(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(pages->currentPage(), 2);
    QTest::keyClick(window.operator->(), Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(pages->currentPage(), 1);
}

TEST_F(PreviewWindowTest, ZoomInAndOutFromTheKeyboard)
{
    open("rap001.rpt");
    QPrintPreviewWidget *pages = window->preview();
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
    ASSERT_TRUE(window->exportTo(path("export.csv"), "CSV", error)) << error.toStdString();
    QFile csv(path("export.csv"));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(csv.readAll()).split("\r\n", Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 41);
    EXPECT_EQ(lines[0], "Vendor #,Name,Telephone,Contact,City");
    const QString first = sqliteValue("ap.mdb", "select vendnumber || ',' || vendname from vendors "
                                                "order by vendnumber limit 1");
    EXPECT_TRUE(lines[1].startsWith(first)) << lines[1].toStdString();
}

TEST_F(PreviewWindowTest, EscapeClosesThePreview)
{
    open("rap001.rpt");
    ASSERT_TRUE(window->isVisible());
    QTest::keyClick(window.operator->(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

} // namespace
