#include "common/Numbers.h"

#include <gtest/gtest.h>

struct LeadingCase {
    const char *text;
    double value;
};

void PrintTo(const LeadingCase &c, std::ostream *os)
{
    *os << '"' << c.text << "\" -> " << c.value;
}

class LeadingNumberTest : public ::testing::TestWithParam<LeadingCase> {};

TEST_P(LeadingNumberTest, ReadsTheLeadingNumberOnly)
{
    EXPECT_DOUBLE_EQ(Numbers::leading(QString::fromLatin1(GetParam().text)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Texts, LeadingNumberTest,
                         ::testing::Values(LeadingCase{"123", 123}, LeadingCase{"00123", 123},
                                           LeadingCase{"12abc", 12}, LeadingCase{"abc", 0},
                                           LeadingCase{"", 0}, LeadingCase{"  42", 42},
                                           LeadingCase{"-5.5x", -5.5}, LeadingCase{".5", 0.5},
                                           LeadingCase{"1.2.3", 1.2}, LeadingCase{"' or 1=1 --", 0},
                                           LeadingCase{"xx", 0}, LeadingCase{"+7", 7}));

TEST(Numbers, WholeValueIsClampedToThirtyTwoBits)
{
    EXPECT_EQ(Numbers::leadingWhole("99999999999999"), 2147483647);
    EXPECT_EQ(Numbers::leadingWhole("2.5"), 3);
    EXPECT_EQ(Numbers::leadingWhole("-2.5"), -3);
}

TEST(Numbers, PlainFormHasNoGroupingOrTrailingZeros)
{
    EXPECT_EQ(Numbers::plain(600), "600");
    EXPECT_EQ(Numbers::plain(0.01), "0.01");
    EXPECT_EQ(Numbers::plain(5100.5), "5100.5");
    EXPECT_EQ(Numbers::plain(1234567), "1234567");
}
