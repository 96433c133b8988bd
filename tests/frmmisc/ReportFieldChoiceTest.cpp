#include "frmmisc/ReportFieldChoice.h"

#include <gtest/gtest.h>

namespace {

// Thirty sort boxes, blank except those given.
QStringList boxes(std::initializer_list<std::pair<int, const char *>> typed)
{
    QStringList texts;
    for (int i = 0; i < 30; ++i)
        texts << QString();
    for (const auto &[field, text] : typed)
        texts[field] = QString::fromLatin1(text);
    return texts;
}

TEST(ReportFieldChoiceTest, FieldsComeInTheOrderOfTheirPositions)
{
    EXPECT_EQ(ReportFieldChoice::choose(boxes({{4, "1"}, {0, "3"}, {9, "2"}})),
              (std::vector<int>{4, 9, 0}));
}

TEST(ReportFieldChoiceTest, FieldsSharingAPositionComeInFieldOrder)
{
    EXPECT_EQ(ReportFieldChoice::choose(boxes({{7, "2"}, {3, "2"}, {5, "1"}, {1, "2"}})),
              (std::vector<int>{5, 1, 3, 7}));
}

TEST(ReportFieldChoiceTest, PositionTwentyNinePrintsAndThirtyOrMoreNever)
{
    EXPECT_EQ(ReportFieldChoice::choose(boxes({{0, "30"}, {1, "29"}, {2, "31"}, {3, "100"}})),
              (std::vector<int>{1}));
}

TEST(ReportFieldChoiceTest, TextBlanksZeroNegativesAndFractionsAreLeftOut)
{
    EXPECT_EQ(ReportFieldChoice::choose(boxes(
                  {{0, "abc"}, {1, "0"}, {2, "-1"}, {3, "2.5"}, {4, " "}, {5, "3x"}, {6, " 4 "}})),
              (std::vector<int>{6}));
}

TEST(ReportFieldChoiceTest, NothingNumberedChoosesNothing)
{
    EXPECT_TRUE(ReportFieldChoice::choose(boxes({})).empty());
}

TEST(ReportFieldChoiceTest, EveryFieldMayBeChosenWhenTheyShareThePositions)
{
    QStringList all;
    for (int i = 0; i < 30; ++i)
        all << QString::number(i % 29 + 1); // field 29 shares position 1 with field 0
    const std::vector<int> chosen = ReportFieldChoice::choose(all);
    ASSERT_EQ(chosen.size(), 30u);
    EXPECT_EQ(chosen[0], 0);
    EXPECT_EQ(chosen[1], 29);
    EXPECT_EQ(chosen[2], 1);
    EXPECT_EQ(chosen[29], 28);
}

} // namespace
