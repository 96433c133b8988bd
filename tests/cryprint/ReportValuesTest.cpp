#include "ReportValues.h"

#include <gtest/gtest.h>

namespace {

using F = ReportDefinition::Format;

TEST(ReportValuesTest, MoneyHasThousandsSeparatorsAndTwoDecimals)
{
    EXPECT_EQ(ReportValues::shown(1234567.5, F::Money), "1,234,567.50");
    EXPECT_EQ(ReportValues::shown(999.999, F::Money), "1,000.00");
    EXPECT_EQ(ReportValues::shown(-1234.5, F::Money), "-1,234.50");
    EXPECT_EQ(ReportValues::shown(0.004, F::Money), "0.00");
    EXPECT_EQ(ReportValues::shown(QVariant(), F::Money), "0.00");
    EXPECT_EQ(ReportValues::forCsv(1234567.5, F::Money), "1234567.50");
}

TEST(ReportValuesTest, SumsOfCentsAddUpExactly)
{
    long long sum = 0;
    for (int i = 0; i < 10; ++i)
        sum += ReportValues::money(0.1);
    EXPECT_EQ(ReportValues::moneyText(sum), "1.00");
    EXPECT_EQ(sum, 10000);
}

TEST(ReportValuesTest, DatesShowAsMonthDayYearAndZeroAsNothing)
{
    EXPECT_EQ(ReportValues::shown(20240105, F::Date), "01/05/2024");
    EXPECT_EQ(ReportValues::shown(0, F::Date), "");
    EXPECT_EQ(ReportValues::shown(123, F::Date), "123");
}

TEST(ReportValuesTest, FormTypesByName)
{
    EXPECT_EQ(ReportValues::shown(0, F::Type1099), "None");
    EXPECT_EQ(ReportValues::shown(1, F::Type1099), "1099-MISC");
    EXPECT_EQ(ReportValues::shown(2, F::Type1099), "1099-INT");
    EXPECT_EQ(ReportValues::shown(3, F::Type1099), "1099-DIV");
    EXPECT_EQ(ReportValues::shown(4, F::Type1099), "1099-MISC");
    EXPECT_EQ(ReportValues::shown(5, F::Type1099), "1099-NEC");
    EXPECT_EQ(ReportValues::shown(6, F::Type1099), "None");
}

// Every form at 600.00 or more, as the 1099 run's "$600 or more" prints them; both sides of
// 600.00.
TEST(ReportValuesTest, ThresholdOfEachFormOnBothSides)
{
    const long long below = 5999900, at = 6000000, above = 6000100;
    for (int type : {1, 2, 3, 4, 5}) {
        EXPECT_FALSE(ReportValues::reportable(type, below)) << type;
        EXPECT_TRUE(ReportValues::reportable(type, at)) << type;
        EXPECT_TRUE(ReportValues::reportable(type, above)) << type;
    }
    EXPECT_FALSE(ReportValues::reportable(0, 100000000));
}

} // namespace
