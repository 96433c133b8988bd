#include "lists/ListsFixture.h"

#include "data/RecordSource.h"
#include "lists/RecordSourceModel.h"

#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

namespace {

// Vendor 12 with 20,000 unpaid invoices INV1 to INV20000, dated in the order of their numbers.
class LongListTest : public ListsFixture {
protected:
    void SetUp() override
    {
        ListsFixture::SetUp();
        folder.exec("ap.mdb",
                    "with recursive n(i) as "
                    "(select 1 union all select i + 1 from n where i < 20000) "
                    "insert into invoices (vendnumber, invnumber, invdate, invproduct, invamount, "
                    "invstatus, invchecknumber, invglperiod) select 12, 'INV' || i, "
                    "20000000 + i, 'Item', i, 1 + i % 3, 0, 1 from n");
        setVendor("12");
        oldToNew();
        click(controls().cmdunpaid);
    }
    QTableView *grid() { return controls().grid1; }
    // The row of the grid shown at the bottom of its viewport.
    int lastRowShown() { return grid()->rowAt(grid()->viewport()->height() - 2); }
};

TEST_F(LongListTest, TheGridKnowsEveryRowAtOnceButReadsOnlyTheFirst)
{
    EXPECT_EQ(grid()->model()->rowCount(), 20000);
    EXPECT_EQ(cell(grid(), 0, 0), "INV1");
    EXPECT_LE(window().datainvoice().fetchedCount(), 1);
    EXPECT_LE(static_cast<RecordSourceModel *>(grid()->model())->heldPages(), 2);
}

TEST_F(LongListTest, OneCtrlEndReachesTheLastRow)
{
    grid()->setFocus();
    grid()->setCurrentIndex(grid()->model()->index(0, 0));
    QTest::keyClick(grid(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid()->currentIndex().row(), 19999);
    EXPECT_EQ(cell(grid(), 19999, 0), "INV20000");
    EXPECT_TRUE(QTest::qWaitFor([&] { return lastRowShown() == 19999; }));
}

TEST_F(LongListTest, TheScrollBarAtTheBottomShowsTheLastRow)
{
    QScrollBar *bar = grid()->verticalScrollBar();
    bar->setValue(bar->maximum());
    EXPECT_TRUE(QTest::qWaitFor([&] { return lastRowShown() == 19999; }));
    EXPECT_EQ(cell(grid(), 19998, 0), "INV19999");
}

TEST_F(LongListTest, ScrollingTheWholeListKeepsOnlyAFewPages)
{
    auto *model = static_cast<RecordSourceModel *>(grid()->model());
    QScrollBar *bar = grid()->verticalScrollBar();
    for (int value = 0; value <= bar->maximum(); value += 7 * bar->pageStep()) {
        bar->setValue(value);
        grid()->viewport()->repaint();
    }
    EXPECT_EQ(cell(grid(), 10000, 0), "INV10001");
    EXPECT_LE(model->heldPages(), 16);
}

TEST_F(LongListTest, AResortReachesItsLastRowAtOnce)
{
    clickHeader(grid(), 3);
    EXPECT_EQ(cell(grid(), 0, 3), "$1.00");
    EXPECT_EQ(cell(grid(), 19999, 3), "$20,000.00");
}

} // namespace
