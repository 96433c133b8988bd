#include "PageView.h"
#include "PreviewPages.h"
#include "PreviewWindow.h"
#include "RunnerCalls.h"
#include "RunnerCompany.h"

#include <QFile>
#include <QLabel>
#include <QTest>

#include <climits>

namespace {

// The texts of a page as the preview replays it.
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

// The preview keeps only the pages near the one asked for and lays the others out again from
// its marks: on the generated company's 480 invoices, one invoice to a label sheet (480 pages),
// and the paid invoices by vendor with their totals.
class PreviewKeptPages : public RunnerCompany {
protected:
    ReportDefinition load(const QString &file)
    {
        QString error;
        const auto def = loadDefinition(file, error);
        EXPECT_TRUE(def) << error.toStdString();
        return def ? *def : ReportDefinition();
    }
    // One invoice a page, in invoice number order.
    ReportDefinition onePerPage()
    {
        QFile file(path("onepage.rpt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("title: One invoice a page\nlayout: labels\ntable: 0 invoices ap.mdb\n"
                   "order: +{invoices.vendnumber}\norder: +{invoices.invnumber}\n"
                   "labels: 1 1 4 1 0.5 0.5 4 1\nline: {invoices.invnumber}\n");
        file.close();
        return load("onepage.rpt");
    }
    static QStringList textsOf(const PreviewPages &pages, int page)
    {
        PageTexts texts;
        pages.replay(page, texts);
        return texts.texts;
    }
    QStringList invoicesInOrder() const
    {
        return sqlite("ap.mdb",
                      "select invnumber from invoices order by vendnumber, invnumber, rowid");
    }
    RunnerRequest request;
};

TEST_F(PreviewKeptPages, AfterTheLastPageOnlyThePagesNearItAreKept)
{
    const ReportDefinition def = onePerPage();
    const QStringList invoices = invoicesInOrder();
    ASSERT_EQ(invoices.size(), 480);
    PreviewPages pages(def, request);
    pages.setPagesAhead(2);
    pages.setPagesBehind(5);
    EXPECT_FALSE(pages.layOutTo(INT_MAX)); // past the end
    EXPECT_TRUE(pages.isComplete());
    EXPECT_EQ(pages.count(), 480);
    EXPECT_LE(pages.pagesKept(), 6);
    EXPECT_GE(pages.pagesKept(), 1);
    ASSERT_TRUE(pages.layOutTo(480));
    EXPECT_EQ(textsOf(pages, 480), QStringList{invoices[479]});
    EXPECT_EQ(textsOf(pages, 475), QStringList{invoices[474]});
    EXPECT_EQ(textsOf(pages, 474), QStringList{}); // let go
    EXPECT_EQ(textsOf(pages, 1), QStringList{});
    EXPECT_LE(pages.pagesKept(), 6);
}

TEST_F(PreviewKeptPages, APageLetGoIsLaidOutAgainWithItsOwnRows)
{
    const ReportDefinition def = onePerPage();
    const QStringList invoices = invoicesInOrder();
    ASSERT_EQ(invoices.size(), 480);
    PreviewPages pages(def, request);
    pages.setPagesAhead(1);
    pages.setPagesBehind(2);
    EXPECT_FALSE(pages.layOutTo(INT_MAX));
    for (const int page : {1, 2, 9, 10, 11, 12, 250, 21, 479, 480, 3}) {
        ASSERT_TRUE(pages.layOutTo(page)) << page;
        EXPECT_EQ(textsOf(pages, page), QStringList{invoices[page - 1]}) << page;
        EXPECT_LE(pages.pagesKept(), 4) << page;
    }
    EXPECT_FALSE(pages.layOutTo(481));
    EXPECT_EQ(pages.count(), 480);
    EXPECT_EQ(pages.rowsRead(), 480);
}

// Pages laid out again from a mark carry the totals and the group of the rows before them: the
// same texts as the first time, the report's total on the last page too.
TEST_F(PreviewKeptPages, PagesLaidOutAgainShowWhatTheyShowedTheFirstTime)
{
    const ReportDefinition def = load("rap004.rpt");
    PreviewPages pages(def, request);
    pages.setPagesAhead(1);
    pages.setPagesBehind(0);
    std::vector<QStringList> first;
    for (int page = 1; pages.layOutTo(page); ++page)
        first.push_back(textsOf(pages, page));
    const int count = int(first.size());
    ASSERT_GT(count, 12); // more than one mark apart
    EXPECT_EQ(pages.count(), count);
    EXPECT_LE(pages.pagesKept(), 2);
    const QString paid = sqliteValue("ap.mdb", "select printf('%.2f', sum(invamount)) from "
                                               "invoices where invcheckdate > 0");
    ASSERT_FALSE(paid.isEmpty());
    EXPECT_TRUE(first.back().contains(withSeparators(paid)))
        << first.back().join('|').toStdString();
    for (const int page : {count, 1, count - 1, 12, 11, 2, count}) {
        ASSERT_TRUE(pages.layOutTo(page)) << page;
        QStringList again = textsOf(pages, page);
        QStringList before = first[size_t(page - 1)];
        // The first time the count of pages was not known yet.
        before.replaceInStrings(QStringLiteral("..."), QString::number(count));
        EXPECT_EQ(again, before) << page;
    }
}

// The window keeps its pages as well: Ctrl+End on the 480 pages, then back to the first.
TEST_F(PreviewKeptPages, TheWindowShowsTheFirstPageAgainAfterTheLast)
{
    const ReportDefinition def = onePerPage();
    const QStringList invoices = invoicesInOrder();
    ASSERT_EQ(invoices.size(), 480);
    request.reportFileName = "onepage.rpt";
    PreviewWindow window(def, request);
    window.preview()->setLookAhead(3);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(window.preview()->currentPage(), 480);
    EXPECT_EQ(textsOf(window.pages(), 480), QStringList{invoices[479]});
    EXPECT_LE(window.pages().pagesKept(), 254); // 250 behind, the page, 3 ahead
    QTest::keyClick(&window, Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(window.preview()->currentPage(), 1);
    EXPECT_EQ(textsOf(window.pages(), 1), QStringList{invoices[0]});
    QTest::keyClick(&window, Qt::Key_PageDown);
    EXPECT_EQ(textsOf(window.pages(), 2), QStringList{invoices[1]});
    EXPECT_EQ(window.findChild<QLabel *>("pagenumber")->text(), "Page 2 of 480");
    EXPECT_LE(window.pages().pagesKept(), 254); // 250 behind, the page, 3 ahead
}

} // namespace
