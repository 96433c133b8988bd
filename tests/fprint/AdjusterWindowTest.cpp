#include "AdjusterFixture.h"

#include "AdjusterWindow.h"
#include "LayoutFiles.h"
#include "LayoutPageView.h"
#include "support/FakeDialogs.h"
#include "support/PdfWords.h"

#include <QApplication>
#include <QCheckBox>
#include <QCoreApplication>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <memory>

namespace {

enum Column { Number, Text, X, Y };

class AdjusterWindowTest : public AdjusterFixture {
protected:
    std::unique_ptr<AdjusterWindow> open(const QString &name)
    {
        auto window = std::make_unique<AdjusterWindow>(
            dialogs, LayoutFiles(m_folder.path(), QStringLiteral(APMASTER_SYSTEM_LAYOUTS)),
            QSizeF(8.5, 11), name);
        window->show();
        QApplication::setActiveWindow(window.get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        return window;
    }
    static QTableWidget *table(AdjusterWindow &w)
    {
        return w.findChild<QTableWidget *>("elements");
    }
    static QString cell(AdjusterWindow &w, int row, int column)
    {
        return table(w)->item(row, column)->text();
    }
    static void click(AdjusterWindow &w, const char *name)
    {
        QPushButton *button = w.findChild<QPushButton *>(name);
        ASSERT_NE(button, nullptr) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }
    // Types into a cell as the user does: F2, the text, Enter.
    static void type(AdjusterWindow &w, int row, int column, const QString &text)
    {
        QTableWidget *t = table(w);
        t->setFocus();
        t->setCurrentCell(row, column);
        QTest::keyClick(t, Qt::Key_F2);
        QWidget *editor = QApplication::focusWidget();
        ASSERT_NE(editor, nullptr);
        ASSERT_NE(editor, t);
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        // The delegate commits the typed text with the next round of events.
        QTest::qWait(0);
        QCoreApplication::processEvents();
    }

    FakeDialogs dialogs;
};

const char *const layoutFiles[] = {"1099misc.lof", "1099int.lof", "1099div.lof", "1099nec.lof"};

} // namespace

TEST_F(AdjusterWindowTest, TheTableShowsEveryElementWithItsTextAndPositionInInches)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    EXPECT_EQ(table(*w)->rowCount(), 15);
    EXPECT_EQ(cell(*w, 0, Text), "SYSTEM NEC");
    EXPECT_EQ(cell(*w, 0, X), "0.25");
    EXPECT_EQ(cell(*w, 11, Number), "11");
    EXPECT_EQ(cell(*w, 11, Text), "Recipient's name");
    EXPECT_EQ(cell(*w, 11, X), "0.1");
    EXPECT_EQ(cell(*w, 11, Y), "1.6");
    EXPECT_EQ(w->findChild<QLineEdit *>("spacing")->text(), "3.66");
    EXPECT_EQ(w->windowTitle(), "1099nec.lof - Adjust 1099 forms printing");
    EXPECT_EQ(dialogs.count(), 0);
}

TEST_F(AdjusterWindowTest, SaveWithNothingChangedKeepsEveryShippedLayoutByteForByte)
{
    for (const char *name : layoutFiles) {
        write(name, shipped(name));
        auto w = open(name);
        click(*w, "save");
        EXPECT_EQ(bytesOf(name), shipped(name)) << name;
    }
    EXPECT_EQ(dialogs.count(), 0);
}

TEST_F(AdjusterWindowTest, ATypedPositionMovesTheElementOnThePageAndSaveWritesIt)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    const double scale = w->page()->pixelsPerInch();
    const QPoint was = w->page()->markAt(11);
    type(*w, 11, X, "1.25");
    EXPECT_EQ(dialogs.count(), 0) << dialogs.texts().join('\n').toStdString();
    EXPECT_EQ(cell(*w, 11, X), "1.25");
    EXPECT_EQ(w->page()->markAt(11).x() - was.x(), qRound(1.15 * scale));
    EXPECT_EQ(w->windowTitle(), "1099nec.lof * - Adjust 1099 forms printing");
    EXPECT_EQ(bytesOf("1099nec.lof"), shipped("1099nec.lof")); // nothing before Save
    click(*w, "save");
    QByteArray expected = shipped("1099nec.lof");
    expected.replace("\"Recipient's name\",0.1,1.6\n", "\"Recipient's name\",1.25,1.6\n");
    EXPECT_EQ(bytesOf("1099nec.lof"), expected);
    EXPECT_EQ(w->windowTitle(), "1099nec.lof - Adjust 1099 forms printing");
}

TEST_F(AdjusterWindowTest, ATypedPositionThatIsNoNumberIsRefusedAndTheValueKept)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    for (const char *typed : {"abc", "1,5", ""}) {
        dialogs.shown.clear();
        type(*w, 11, Y, typed);
        ASSERT_EQ(dialogs.count(), 1) << typed;
        EXPECT_EQ(dialogs.last()->text,
                  QStringLiteral("\"%1\" is not a number of inches. Type the position as a "
                                 "decimal number with a point, like 1.25.\nElement 11 keeps Y 1.6.")
                      .arg(typed));
        EXPECT_EQ(cell(*w, 11, Y), "1.6");
        EXPECT_FALSE(w->unsaved());
    }
    click(*w, "save");
    EXPECT_EQ(bytesOf("1099nec.lof"), shipped("1099nec.lof"));
}

TEST_F(AdjusterWindowTest, ATypedPositionOffThePaperIsRefusedAndTheValueKept)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    type(*w, 11, X, "8.25");
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text,
              "Element 11 (Recipient's name) prints 8.50 inches across on the first form, beyond "
              "the 8.5-inch width of the paper.\nElement 11 keeps X 0.1.");
    EXPECT_EQ(cell(*w, 11, X), "0.1");
    // A hundredth of an inch less lands on the paper.
    type(*w, 11, X, "8.24");
    EXPECT_EQ(dialogs.count(), 1);
    EXPECT_EQ(cell(*w, 11, X), "8.24");
}

TEST_F(AdjusterWindowTest, AQuoteInATextIsRefusedAndOtherTextIsKept)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    type(*w, 2, Text, "THE \"BEST\" CO");
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_TRUE(dialogs.last()->text.startsWith("The text of element 2 was not changed"));
    EXPECT_EQ(cell(*w, 2, Text), "PAYER'S NAME");
    type(*w, 2, Text, "O'NEIL & SONS, INC.");
    EXPECT_EQ(w->document().element(2).text, "O'NEIL & SONS, INC.");
    click(*w, "save");
    EXPECT_TRUE(bytesOf("1099nec.lof").contains("\n\"O'NEIL & SONS, INC.\",0.1,0.3\n"));
}

TEST_F(AdjusterWindowTest, DraggingAnElementsMarkMovesItByHundredthsOfAnInch)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    LayoutPageView *page = w->page();
    const double scale = page->pixelsPerInch();
    const QPoint from = page->markAt(11);
    const QPoint to = from + QPoint(qRound(0.5 * scale), qRound(0.25 * scale));
    QTest::mousePress(page, Qt::LeftButton, {}, from);
    QTest::mouseMove(page, to);
    QTest::mouseRelease(page, Qt::LeftButton, {}, to);
    EXPECT_EQ(cell(*w, 11, X), "0.6");
    EXPECT_EQ(cell(*w, 11, Y), "1.85");
    EXPECT_EQ(page->markAt(11), to);
    EXPECT_EQ(table(*w)->currentRow(), 11);
}

TEST_F(AdjusterWindowTest, TheNecPayersLinesChosenTogetherAreDraggedAQuarterInchAsOneBlock)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    QTableWidget *t = table(*w);
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {},
                      t->visualItemRect(t->item(2, Number)).center());
    QTest::mouseClick(t->viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      t->visualItemRect(t->item(6, Number)).center());
    EXPECT_EQ(w->page()->chosen(), (QList<int>{2, 3, 4, 5, 6}));
    LayoutPageView *page = w->page();
    const QPoint from = page->markAt(4);
    const QPoint to = from + QPoint(0, qRound(0.25 * page->pixelsPerInch()));
    QTest::mousePress(page, Qt::LeftButton, {}, from);
    QTest::mouseMove(page, to);
    QTest::mouseRelease(page, Qt::LeftButton, {}, to);
    EXPECT_EQ(dialogs.count(), 0);
    const char *const moved[] = {"0.55", "0.69", "0.83", "0.97", "1.11"};
    for (int element = 2; element <= 6; ++element) {
        EXPECT_EQ(cell(*w, element, Y), moved[element - 2]) << element;
        EXPECT_EQ(cell(*w, element, X), "0.1") << element;
    }
    EXPECT_EQ(cell(*w, 9, Y), "1.2"); // the payer's TIN was not chosen
    click(*w, "save");
    QByteArray expected = shipped("1099nec.lof");
    expected.replace("\"PAYER'S NAME\",0.1,0.3\n", "\"PAYER'S NAME\",0.1,0.55\n")
        .replace("\"PAYER'S STREET ADDRESS\",0.1,0.44\n", "\"PAYER'S STREET ADDRESS\",0.1,0.69\n")
        .replace("\"\",0.1,0.58\n", "\"\",0.1,0.83\n")
        .replace("\"CITY   STATE   ZIP\",0.1,0.72\n", "\"CITY   STATE   ZIP\",0.1,0.97\n")
        .replace("\"TELEPHONE\",0.1,0.86\n", "\"TELEPHONE\",0.1,1.11\n");
    EXPECT_EQ(bytesOf("1099nec.lof"), expected);
}

TEST_F(AdjusterWindowTest, DraggingOffThePaperIsRefusedAndTheElementStays)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    LayoutPageView *page = w->page();
    const QPoint from = page->markAt(1); // box 1 at 3.95 inches across
    const QPoint to = from + QPoint(qRound(4.6 * page->pixelsPerInch()), 0);
    QTest::mousePress(page, Qt::LeftButton, {}, from);
    QTest::mouseMove(page, to);
    QTest::mouseRelease(page, Qt::LeftButton, {}, to);
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_TRUE(dialogs.last()->text.endsWith("Element 1 stays where it was."));
    EXPECT_EQ(cell(*w, 1, X), "3.7");
    EXPECT_EQ(page->markAt(1), from);
}

TEST_F(AdjusterWindowTest, TheFormSpacingIsTypedOrDraggedAndRefusedWhenNoNumber)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    auto *spacing = w->findChild<QLineEdit *>("spacing");
    spacing->setFocus();
    spacing->selectAll();
    QTest::keyClicks(spacing, "wide");
    QTest::keyClick(spacing, Qt::Key_Return);
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text,
              "\"wide\" is not a number of inches. Type the form spacing as a decimal number with "
              "a point, like 3.66.\nThe form spacing stays 3.66.");
    EXPECT_EQ(spacing->text(), "3.66");
    spacing->selectAll();
    QTest::keyClicks(spacing, "3.5");
    QTest::keyClick(spacing, Qt::Key_Return);
    EXPECT_EQ(dialogs.count(), 1);
    EXPECT_EQ(w->document().spacing().written, "3.5");

    LayoutPageView *page = w->page();
    const QPoint border(100, page->spacingLineY());
    const QPoint lower = border + QPoint(0, qRound(0.1 * page->pixelsPerInch()));
    QTest::mousePress(page, Qt::LeftButton, {}, border);
    QTest::mouseMove(page, lower);
    QTest::mouseRelease(page, Qt::LeftButton, {}, lower);
    EXPECT_EQ(spacing->text(), "3.6");
    click(*w, "save");
    EXPECT_TRUE(bytesOf("1099nec.lof").startsWith("\"SYSTEM NEC\",0.25,0.25,3.6,0\n"));
}

TEST_F(AdjusterWindowTest, AMalformedFileIsNamedLeftAsItIsAndTheSystemCopyOffered)
{
    const QByteArray malformed = "\"SYSTEM NEC\",0.25,0.25,3.66,0\n\"Box 1\",3.85\n";
    write("1099nec.lof", malformed);
    auto w = open("1099nec.lof");
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text,
              path("1099nec.lof") +
                  " cannot be used: it ends in the middle of element 1.\nThe file was left as it "
                  "is. \"New layout from the system copy\" puts the system's layout in its place.");
    EXPECT_EQ(table(*w)->rowCount(), 0);
    EXPECT_FALSE(w->findChild<QPushButton *>("save")->isEnabled());
    click(*w, "fromSystem");
    EXPECT_EQ(table(*w)->rowCount(), 15);
    EXPECT_EQ(bytesOf("1099nec.lof"), malformed); // nothing before Save
    click(*w, "save");
    EXPECT_EQ(bytesOf("1099nec.lof"), shipped("1099nec.lof"));
}

TEST_F(AdjusterWindowTest, TheSystemCopyReplacesAChangedLayoutOnlyOnYes)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    type(*w, 11, X, "1");
    click(*w, "fromSystem");
    ASSERT_EQ(dialogs.count("yesno"), 1);
    EXPECT_EQ(dialogs.last()->defaultAnswer, Dialogs::No);
    EXPECT_EQ(cell(*w, 11, X), "1"); // the empty queue answers No
    dialogs.yesNoAnswers = {Dialogs::Yes};
    click(*w, "fromSystem");
    EXPECT_EQ(cell(*w, 11, X), "0.1");
    EXPECT_TRUE(w->unsaved());
}

TEST_F(AdjusterWindowTest, AMissingLayoutIsMadeFromTheSystemCopyWhenItsFormIsOpened)
{
    auto w = open("1099div.lof");
    EXPECT_EQ(bytesOf("1099div.lof"), shipped("1099div.lof"));
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_TRUE(dialogs.last()->text.startsWith(
        "1099div.lof was not in the data folder; it was made from the system copy"));
    EXPECT_EQ(table(*w)->rowCount(), 26);
}

TEST_F(AdjusterWindowTest, ALayoutOffThePaperIsNamedOnOpeningAndNotSaved)
{
    QByteArray off = shipped("1099misc.lof");
    off.replace("\"Account number\",0.1,2.95\n", "\"Account number\",0.1,5.3\n");
    write("1099misc.lof", off);
    auto w = open("1099misc.lof");
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text,
              "1099misc.lof prints off the paper:\nElement 25 (Account number) prints 11.10 "
              "inches down on the second form, below the 11-inch length of the paper.\nMove "
              "these elements onto the paper before saving.");
    click(*w, "save");
    ASSERT_EQ(dialogs.count(), 2);
    EXPECT_TRUE(dialogs.last()->text.startsWith("1099misc.lof was not saved:\nElement 25"));
    EXPECT_EQ(bytesOf("1099misc.lof"), off);
    type(*w, 25, Y, "2.95");
    click(*w, "save");
    EXPECT_EQ(bytesOf("1099misc.lof"), shipped("1099misc.lof"));
}

TEST_F(AdjusterWindowTest, ClosingWithUnsavedChangesAsksAndCancelKeepsTheWindow)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    type(*w, 11, X, "1");
    dialogs.yesNoAnswers = {Dialogs::Cancel};
    EXPECT_FALSE(w->close());
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(dialogs.last()->text, "Save the changes to 1099nec.lof?");
    dialogs.yesNoAnswers = {Dialogs::No};
    EXPECT_TRUE(w->close());
    EXPECT_EQ(bytesOf("1099nec.lof"), shipped("1099nec.lof"));
}

TEST_F(AdjusterWindowTest, AnotherFormIsOpenedAfterTheChangesAreSaved)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    auto w = open("1099nec.lof");
    type(*w, 11, X, "1");
    dialogs.yesNoAnswers = {Dialogs::Yes};
    EXPECT_TRUE(w->open("1099int.lof"));
    EXPECT_TRUE(bytesOf("1099nec.lof").contains("\n\"Recipient's name\",1,1.6\n"));
    EXPECT_EQ(w->fileName(), "1099int.lof");
    EXPECT_EQ(table(*w)->rowCount(), 15);
    EXPECT_EQ(cell(*w, 8, Text), "Payer's name and address");
}

TEST_F(AdjusterWindowTest, AScannedFormIsShownUnderThePageAndAnythingElseRefused)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    QImage scan(85, 110, QImage::Format_RGB32);
    scan.fill(Qt::red);
    ASSERT_TRUE(scan.save(path("scan.png")));
    write("notes.txt", "not a picture");
    auto w = open("1099nec.lof");
    QString chosen = path("notes.txt");
    w->setImageChooser([&chosen] { return chosen; });
    click(*w, "scan");
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text,
              path("notes.txt") + " is not a picture this program can read (PNG, JPEG or BMP).");
    EXPECT_FALSE(w->findChild<QCheckBox *>("showScan")->isChecked());
    chosen = path("scan.png");
    click(*w, "scan");
    EXPECT_TRUE(w->findChild<QCheckBox *>("showScan")->isChecked());
    const QImage drawn = w->page()->grab().toImage();
    // The paper's middle, where nothing is printed, shows the scan.
    EXPECT_EQ(drawn.pixelColor(drawn.width() / 2, drawn.height() / 2 + 3), QColor(Qt::red));
}

TEST_F(AdjusterWindowTest, TheTestPagePrintsTheUnsavedPositions)
{
    write("1099nec.lof", shipped("1099nec.lof"));
    qputenv("APMASTER_PRINT_PDF", path("test.pdf").toLocal8Bit());
    auto w = open("1099nec.lof");
    type(*w, 11, Y, "1.85");
    click(*w, "testPage");
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text, "The test page was written to " + path("test.pdf") + ".");
    const PdfWords words(path("test.pdf"));
    ASSERT_TRUE(words.ok()) << words.error().toStdString();
    // (0.25 + 0.1, 0.25 + 1.85) inches: 25.2 and 151.2 points.
    EXPECT_NE(words.at(0, "SAMPLE", 25.2, 151.2), nullptr) << words.pageText(0).toStdString();
    EXPECT_EQ(bytesOf("1099nec.lof"), shipped("1099nec.lof"));
}
