#include "PickerIndex.h"
#include "PickerModel.h"
#include "PickerText.h"
#include "PickerWindow.h"
#include "VendorRows.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

struct FoldCase {
    const char *text;
    const char *words; // the words joined by "|"
};

void PrintTo(const FoldCase &c, std::ostream *os)
{
    *os << c.text;
}

class PickerWords : public ::testing::TestWithParam<FoldCase> {};

TEST_P(PickerWords, TextSplitsIntoFoldedWordsOfLettersAndDigits)
{
    EXPECT_EQ(PickerText::words(QString::fromUtf8(GetParam().text)).join('|'),
              QString::fromUtf8(GetParam().words));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, PickerWords,
    ::testing::Values(FoldCase{"Zoë Ünal", "zoe|unal"}, FoldCase{"ÉCOLE Crème", "ecole|creme"},
                      FoldCase{"O'Brien & Sons", "o|brien|sons"},
                      FoldCase{"100% _x_ a_b", "100|x|a|b"},
                      FoldCase{"'; drop table vendors; --", "drop|table|vendors"},
                      FoldCase{"217-555-0100", "217|555|0100"}, FoldCase{"acme ACME", "acme"},
                      FoldCase{"", ""}, FoldCase{"%_'\"", ""}));

// A picker index of the vendor picker's columns, filled with the given rows.
class PickerSearch : public ::testing::Test {
protected:
    QTemporaryDir scratch;
    std::unique_ptr<PickerIndex> index;
    int m_files = 0;

    void fill(const QList<QVariantList> &rows)
    {
        index.reset();
        index = std::make_unique<PickerIndex>(
            scratch.filePath(QStringLiteral("list%1.db").arg(++m_files)), VendorRows::columns());
        for (const QVariantList &row : rows)
            index->add(row);
        index->finish();
    }
    void SetUp() override
    {
        fill({{100, "Acme Office Supply", "Bill Ng", "Springfield", "217-555-0100", 12.5},
              {250, "O'Brien Catering", "Mary", "Québec", "418-555-0125", 0.0},
              {251, "Northern Lights Printing", "Zoë Ünal", "Toronto", "416-555-0199", 600.0},
              {1250, "Zenith Hall Rentals", "Anna", "Springfield", null(), 0.0},
              {300, "Acme Tools", null(), "Toronto", "", 3.0}});
    }
    static QVariant null() { return QVariant(QMetaType::fromType<QString>()); }
    // The numbers found, in the list's order.
    QString found(const QString &text, int column = 1, bool descending = false)
    {
        index->search(text, column, descending);
        QStringList numbers;
        for (const QVariantList &row : index->rows(0, 100))
            numbers << QString::number(row.value(0).toLongLong());
        return numbers.join(' ');
    }
};

TEST_F(PickerSearch, TheNumberMatchesFromItsStartOnly)
{
    EXPECT_EQ(found("25"), "251 250"); // in name order: Northern, O'Brien
    EXPECT_EQ(found("125"), "1250");
    EXPECT_EQ(found("50"), "");
}

TEST_F(PickerSearch, AnyWordOfNameContactCityOrTelephoneMatchesFromItsStart)
{
    EXPECT_EQ(found("bri"), "250");      // the name's second word
    EXPECT_EQ(found("rien"), "");        // inside a word: no
    EXPECT_EQ(found("ng"), "100");       // the contact's second word
    EXPECT_EQ(found("toro"), "300 251"); // the city; by name, Acme first
    EXPECT_EQ(found("0199"), "251");     // a word of the telephone
    EXPECT_EQ(found("4165550"), "251");  // the telephone's digits
    EXPECT_EQ(found("office"), "100");
}

TEST_F(PickerSearch, CaseAndAccentsAreIgnoredBothWays)
{
    EXPECT_EQ(found("ZOE"), "251");
    EXPECT_EQ(found("unal"), "251");
    EXPECT_EQ(found("quebec"), "250");
    EXPECT_EQ(found("QUÉ"), "250");
    EXPECT_EQ(found("Zoë"), "251");
}

TEST_F(PickerSearch, EveryTypedWordMustMatch)
{
    EXPECT_EQ(found("acme"), "100 300");
    EXPECT_EQ(found("acme toro"), "300");
    EXPECT_EQ(found("spring zen"), "1250");
    EXPECT_EQ(found("acme zen"), "");
}

TEST_F(PickerSearch, QuotesPercentUnderscoreAndSqlAreOnlySeparators)
{
    EXPECT_EQ(found("o'bri"), "250");
    EXPECT_EQ(found("%"), "100 300 251 250 1250"); // nothing to match: the whole list
    EXPECT_EQ(found("_"), "100 300 251 250 1250");
    EXPECT_EQ(found("a%"), "100 300 1250"); // "a" starts Acme, Acme and Anna
    EXPECT_EQ(found("'; drop table rows; --"), "");
    EXPECT_EQ(found("\" or 1=1 --"), "");
    EXPECT_EQ(found(""), "100 300 251 250 1250"); // the index is still whole
}

TEST_F(PickerSearch, EachColumnSortsBothWays)
{
    EXPECT_EQ(found("", 0), "100 250 251 300 1250");
    EXPECT_EQ(found("", 0, true), "1250 300 251 250 100");
    EXPECT_EQ(found("", 3), "250 100 1250 251 300");       // city: Québec as Quebec
    EXPECT_EQ(found("", 5, true), "251 100 300 1250 250"); // open balance, ties turned too
    EXPECT_EQ(found("acme", 1, true), "300 100");
}

TEST_F(PickerSearch, ManyMatchesWalkTheListInOrderAndPageOnDemand)
{
    QList<QVariantList> rows;
    for (int i = 1; i <= PickerIndex::fewMatches + 10; ++i)
        rows << QVariantList{
            i, QStringLiteral("Common %1").arg(i, 5, 10, QLatin1Char('0')), "", "", "", 0.0};
    rows << QVariantList{99999, "Rare Find", "", "", "", 0.0};
    fill(rows);
    index->search("comm", 1, true);
    EXPECT_TRUE(index->walking());
    const QList<QVariantList> first = index->rows(0, 3);
    ASSERT_EQ(first.size(), 3);
    EXPECT_EQ(first.at(0).value(0).toInt(), PickerIndex::fewMatches + 10);
    EXPECT_EQ(first.at(2).value(0).toInt(), PickerIndex::fewMatches + 8);
    EXPECT_EQ(index->rows(PickerIndex::fewMatches + 9, 5).size(), 1);
    index->search("rare", 1, false);
    EXPECT_FALSE(index->walking());
    EXPECT_EQ(index->rows(0, 5).size(), 1);
}

TEST_F(PickerSearch, FewerMatchesThanTheLimitAreSortedNotWalked)
{
    QList<QVariantList> rows;
    for (int i = 1; i <= PickerIndex::fewMatches; ++i)
        rows << QVariantList{
            i, QStringLiteral("Common %1").arg(i, 5, 10, QLatin1Char('0')), "", "", "", 0.0};
    fill(rows);
    index->search("common", 1, true);
    EXPECT_FALSE(index->walking());
    EXPECT_EQ(index->rows(0, 1).constFirst().value(0).toInt(), PickerIndex::fewMatches);
}

class PickerWindowTest : public PickerSearch {
protected:
    std::unique_ptr<PickerModel> model;
    std::unique_ptr<PickerWindow> window;
    QLineEdit *search = nullptr;
    QTableView *list = nullptr;

    void open()
    {
        model = std::make_unique<PickerModel>(*index);
        window = std::make_unique<PickerWindow>(
            *model, PickerWindow::Texts{"Find a vendor", "Type", "vendors", "No vendors yet."});
        window->show();
        search = window->findChild<QLineEdit *>("search");
        list = window->findChild<QTableView *>("list");
        ASSERT_TRUE(search && list);
    }
    QString note() const { return window->findChild<QLabel *>("note")->text(); }
    QString firstNumber() const { return model->numberAt(0); }
};

TEST_F(PickerWindowTest, TypingNarrowsTheListAndEnterPicksTheHighlightedLine)
{
    open();
    EXPECT_EQ(model->rowCount(), 5);
    QTest::keyClicks(search, "spr");
    EXPECT_EQ(model->rowCount(), 2);
    QTest::keyClick(search, Qt::Key_Down);
    EXPECT_EQ(list->currentIndex().row(), 1);
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(window->result(), QDialog::Accepted);
    EXPECT_EQ(window->picked(), "1250");
}

TEST_F(PickerWindowTest, EscapeClosesWithoutAPick)
{
    open();
    QTest::keyClicks(search, "acme");
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_EQ(window->result(), QDialog::Rejected);
    EXPECT_EQ(window->picked(), "");
}

TEST_F(PickerWindowTest, ClickingAHeadingSortsByItAndAgainTheOtherWay)
{
    open();
    QHeaderView *header = list->horizontalHeader();
    const QPoint number(header->sectionViewportPosition(0) + 5, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, number);
    const QString firstClick = firstNumber();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, number);
    const QString secondClick = firstNumber();
    // One click gives one order and the next the other, whichever Qt starts with.
    EXPECT_EQ(QStringList({firstClick, secondClick}).join(' ') == "100 1250" ||
                  QStringList({firstClick, secondClick}).join(' ') == "1250 100",
              true)
        << firstClick.toStdString() << " " << secondClick.toStdString();
    EXPECT_EQ(model->sortColumn(), 0);
}

TEST_F(PickerWindowTest, NoMatchSaysSoAndEnterPicksNothing)
{
    open();
    QTest::keyClicks(search, "zzz");
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(note(), "No vendors match \"zzz\".");
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->picked(), "");
}

TEST_F(PickerWindowTest, AnEmptyListSaysThereIsNothingToPick)
{
    fill({});
    open();
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(note(), "No vendors yet.");
}

TEST_F(PickerWindowTest, TheListReadsFurtherPagesOnlyAsItScrolls)
{
    QList<QVariantList> rows;
    for (int i = 1; i <= 3 * PickerModel::pageRows; ++i)
        rows << QVariantList{
            i, QStringLiteral("Vendor %1").arg(i, 4, 10, QLatin1Char('0')), "", "", "", 0.0};
    fill(rows);
    open();
    EXPECT_EQ(model->rowCount(), PickerModel::pageRows);
    QTest::keyClick(search, Qt::Key_End, Qt::ControlModifier); // the box's own end
    list->setFocus();
    QTest::keyClick(list, Qt::Key_End, Qt::ControlModifier);
    EXPECT_GT(model->rowCount(), PickerModel::pageRows);
}

} // namespace
