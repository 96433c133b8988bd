#include "FormPage.h"
#include "LayoutDocument.h"

#include <gtest/gtest.h>

namespace {

// A 1099-NEC layout: origin 0.25, 0.25, three forms 3.66 inches apart, element 11 the
// recipient's name, then a MISC layout with its payer block at element 19.
LayoutDocument nec(double x11, double y11, double spacing = 3.66)
{
    QByteArray text = "\"NEC\",0.25,0.25," + QByteArray::number(spacing) + ",0\n";
    for (int element = 1; element <= 14; ++element) {
        const bool name = element == 11;
        text += "\"E" + QByteArray::number(element) + "\"," +
                (name ? QByteArray::number(x11) : QByteArray("0.2")) + "," +
                (name ? QByteArray::number(y11) : QByteArray("1")) + "\n";
    }
    LayoutDocument document;
    QString why;
    EXPECT_TRUE(document.read(text, why)) << why.toStdString();
    return document;
}

const QSizeF letter(8.5, 11);

std::vector<int> outsideElements(const LayoutDocument &document, int kind)
{
    std::vector<int> elements;
    const FormPage page(document, kind, letter);
    for (const FormPage::Outside &o : page.outside())
        elements.push_back(o.element);
    return elements;
}

} // namespace

TEST(FormPage, TheLetterPaperIsEightAndAHalfByElevenInches)
{
    EXPECT_EQ(FormPage::paperInches("Letter"), QSizeF(8.5, 11));
    EXPECT_EQ(FormPage::paperInches("Legal"), QSizeF(8.5, 14));
    EXPECT_NEAR(FormPage::paperInches("A4").width(), 8.27, 0.01);
}

TEST(FormPage, AnElementAtThePapersRightEdgeIsOutsideAndAHundredthLeftOfItInside)
{
    EXPECT_EQ(outsideElements(nec(8.24, 1.6), 5), std::vector<int>{});
    EXPECT_EQ(outsideElements(nec(8.25, 1.6), 5), std::vector<int>{11});
    EXPECT_EQ(outsideElements(nec(-0.25, 1.6), 5), std::vector<int>{});
    EXPECT_EQ(outsideElements(nec(-0.26, 1.6), 5), std::vector<int>{11});
}

TEST(FormPage, TheThirdNecFormDecidesWhetherAnElementIsAboveTheBottom)
{
    // 0.25 + y + 2 * 3.66 must stay below 11 inches, in the twips the run prints at: 3.43 is
    // 15839 twips down, 3.44 is 15853, and the paper ends at 15840.
    EXPECT_EQ(outsideElements(nec(0.2, 3.43), 5), std::vector<int>{});
    EXPECT_EQ(outsideElements(nec(0.2, 3.44), 5), std::vector<int>{11});
    EXPECT_EQ(outsideElements(nec(0.2, -0.25), 5), std::vector<int>{});
    EXPECT_EQ(outsideElements(nec(0.2, -0.26), 5), std::vector<int>{11});
    // A spacing that pushes the third form off the paper sends every element off it.
    EXPECT_EQ(outsideElements(nec(0.2, 1, 5.5), 5).size(), 14u);
}

TEST(FormPage, TheMessageNamesTheElementItsTextAndWhereItWouldPrint)
{
    const LayoutDocument document = nec(0.2, 3.5);
    const std::vector<FormPage::Outside> found = FormPage(document, 5, letter).outside();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(FormPage::describe(document, found.front()),
              "Element 11 (E11) prints 11.07 inches down on the third form, below the 11-inch "
              "length of the paper");
}

TEST(FormPage, OnlyTheElementsAChangeSendsOffThePaperRefuseIt)
{
    const LayoutDocument before = nec(0.2, 3.5); // element 11 off the paper already
    LayoutDocument after = before;
    after.setX(3, 0.5);
    EXPECT_EQ(FormPage::changeProblem(before, after, 5, letter), "");
    after.setX(4, 9);
    EXPECT_EQ(FormPage::changeProblem(before, after, 5, letter),
              "Element 4 (E4) prints 9.25 inches across on the first form, beyond the 8.5-inch "
              "width of the paper");
}

TEST(FormPage, TheSampleFormsStandWhereTheRunPrintsOnEveryFormOfThePage)
{
    const LayoutDocument document = nec(1.0, 1.85);
    const FormPage page(document, 5, letter);
    std::vector<std::pair<int, int>> names;
    for (const FormPlacement::Item &item : page.items())
        if (item.text == "SAMPLE VENDOR INC")
            names.push_back({item.xTwips, item.yTwips});
    // (0.25 + 1.0) * 1440 across; (0.25 + 1.85 + form * 3.66) * 1440 down.
    const std::vector<std::pair<int, int>> expected = {{1800, 3024}, {1800, 8294}, {1800, 13564}};
    EXPECT_EQ(names, expected);
}

TEST(FormPage, TheMiscPageShowsTheAmountInEveryBoxTheRunUses)
{
    QByteArray text = "\"MISC\",0,0,5.5,0\n";
    for (int element = 1; element <= 25; ++element)
        text += "\"E\"," + QByteArray::number(element * 0.1) + ",1\n";
    LayoutDocument document;
    QString why;
    ASSERT_TRUE(document.read(text, why));
    std::vector<int> amounts;
    const FormPage page(document, 1, letter);
    for (const FormPlacement::Item &item : page.items())
        if (item.text == "1234.56")
            amounts.push_back(item.element);
    // Type 1 on the first form at element 3, on the second at element 7; type 4 at element 14.
    EXPECT_EQ(amounts, (std::vector<int>{3, 14, 7, 14}));
}
