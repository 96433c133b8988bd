#include "lists/ListsFixture.h"

#include "data/RecordSource.h"
#include "lists/InvoiceLists.h"
#include "lists/RecordSourceModel.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

namespace {

// Counts the Enter and Return presses that reach a widget.
class EnterCounter : public QObject {
public:
    int presses = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter)
                ++presses;
        }
        return false;
    }
};

class GridBehaviourTest : public ListsFixture {
protected:
    void SetUp() override
    {
        ListsFixture::SetUp();
        addInvoice({.number = "A1", .status = 1});
        addInvoice({.number = "A2", .date = 20260102, .status = 1});
        addCheck(301, 20260105, 10);
        setVendor("12");
    }

    // Presses Enter and Return on a row of the grid; returns how many reached the list area.
    int enterReachingTheArea(QTableView *grid, QSignalSpy &activated)
    {
        EnterCounter counter;
        grid->parentWidget()->installEventFilter(&counter);
        grid->setFocus();
        grid->setCurrentIndex(grid->model()->index(0, 0));
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClick(grid, Qt::Key_Enter, Qt::KeypadModifier);
        grid->parentWidget()->removeEventFilter(&counter);
        EXPECT_EQ(activated.count(), 0);
        return counter.presses;
    }
};

TEST_F(GridBehaviourTest, EnterInTheInvoiceGridIsSwallowed)
{
    click(controls().cmdunpaid);
    QSignalSpy activated(controls().grid1, &QAbstractItemView::activated);
    EXPECT_EQ(enterReachingTheArea(controls().grid1, activated), 0);
}

TEST_F(GridBehaviourTest, EnterInTheCheckGridIsSwallowed)
{
    click(controls().cmdchecks);
    QSignalSpy activated(controls().grid2, &QAbstractItemView::activated);
    EXPECT_EQ(enterReachingTheArea(controls().grid2, activated), 0);
}

TEST_F(GridBehaviourTest, OtherKeysStillMoveInTheGrid)
{
    click(controls().cmdunpaid);
    QTableView *grid = controls().grid1;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 0));
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(grid->currentIndex().row(), 1);
}

TEST_F(GridBehaviourTest, GridsAreReadOnly)
{
    click(controls().cmdunpaid);
    EXPECT_EQ(controls().grid1->editTriggers(), QAbstractItemView::NoEditTriggers);
    EXPECT_FALSE(controls()
                     .grid1->model()
                     ->flags(controls().grid1->model()->index(0, 0))
                     .testFlag(Qt::ItemIsEditable));
}

class LargeVendorTest : public ListsFixture {
protected:
    void SetUp() override
    {
        ListsFixture::SetUp();
        folder.exec("ap.mdb",
                    "with recursive n(i) as "
                    "(select 1 union all select i + 1 from n where i < 20000) "
                    "insert into invoices (vendnumber, invnumber, invdate, invproduct, invamount, "
                    "invstatus, invchecknumber, invglperiod) select 12, 'INV' || i, "
                    "20200101 + i % 28, 'Item', i, 1 + i % 3, 0, 1 from n");
        setVendor("12");
    }
};

TEST_F(LargeVendorTest, FirstRowsShowWithoutReadingTheWholeList)
{
    click(controls().cmdunpaid);
    QTableView *grid = controls().grid1;
    EXPECT_EQ(window().gridCaption(), "Unpaid Invoices");
    // The grid knows how many rows there are, but holds only the pages it shows.
    EXPECT_EQ(grid->model()->rowCount(), 20000);
    EXPECT_LE(window().lists().invoiceModel().heldPages(), 2);
    EXPECT_LE(window().datainvoice().fetchedCount(), 128);
    EXPECT_FALSE(window().datainvoice().allFetched());
    EXPECT_LE(window().lists().cursor().fetchedCount(), 1);
}

TEST_F(LargeVendorTest, TheEndOfTheListIsReachedAtOnceAndMemoryStaysBounded)
{
    window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
    click(controls().cmdunpaid);
    QTableView *grid = controls().grid1;
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 0));
    QTest::keyClick(grid, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid->currentIndex().row(), 19999);
    // The last row is the list's last: the oldest invoice date shown last, newest first.
    const QModelIndex last = grid->model()->index(19999, 0);
    EXPECT_FALSE(grid->model()->data(last).toString().isEmpty());
    grid->scrollToBottom();
    QCoreApplication::processEvents();
    EXPECT_LE(window().lists().invoiceModel().heldPages(), 16);
}

TEST_F(LargeVendorTest, ResortShowsTheSmallestAmountsFirstWithoutReadingThemAll)
{
    click(controls().cmdunpaid);
    clickHeader(controls().grid1, 3);
    EXPECT_EQ(cell(controls().grid1, 0, 3), "$1.00");
    EXPECT_EQ(cell(controls().grid1, 1, 3), "$2.00");
    EXPECT_LE(window().datainvoice().fetchedCount(), 2 * RecordSourceModel::batchSize);
}

} // namespace
