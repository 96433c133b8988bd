#include "JetValues.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {
struct DateCase {
    double stored;
    const char *expected; // "" when out of range
};

// Named by the stored value, so that the test names stay the same from run to run.
void PrintTo(const DateCase &c, std::ostream *os)
{
    *os << c.stored;
}

class StoredDates : public ::testing::TestWithParam<DateCase> {};
} // namespace

TEST_P(StoredDates, BecomeTheirDayAndTime)
{
    const auto dt = JetValues::dateTime(GetParam().stored);
    const QString shown = dt ? JetValues::isoText(*dt) : QString();
    EXPECT_EQ(shown, QString::fromLatin1(GetParam().expected)) << GetParam().stored;
}

INSTANTIATE_TEST_SUITE_P(
    JetValues, StoredDates,
    ::testing::Values(DateCase{0.0, "1899-12-30 00:00:00"}, DateCase{1.5, "1899-12-31 12:00:00"},
                      // Before the epoch the day counts back and the time stays forward.
                      DateCase{-1.25, "1899-12-29 06:00:00"}, DateCase{-0.5, "1899-12-30 12:00:00"},
                      DateCase{2.0, "1900-01-01 00:00:00"},
                      DateCase{45292.75, "2024-01-01 18:00:00"},
                      DateCase{2958465.999988426, "9999-12-31 23:59:59"},
                      DateCase{2958465.0, "9999-12-31 00:00:00"}, DateCase{2958466.0, ""},
                      DateCase{-657434.0, "0100-01-01 00:00:00"}, DateCase{-657435.0, ""},
                      // A time that rounds to midnight is the next day's start.
                      DateCase{1.9999999999, "1900-01-01 00:00:00"}));

TEST(JetValues, YyyymmddIsYearMonthDay)
{
    EXPECT_EQ(JetValues::yyyymmdd(QDate(2024, 2, 29)), 20240229);
    EXPECT_EQ(JetValues::yyyymmdd(QDate(632, 1, 1)), 6320101);
}

TEST(JetValues, OnlyCalendarDatesAreYyyymmdd)
{
    EXPECT_TRUE(JetValues::isYyyymmdd(20240229));
    EXPECT_FALSE(JetValues::isYyyymmdd(20230229));
    EXPECT_TRUE(JetValues::isYyyymmdd(20241231));
    EXPECT_FALSE(JetValues::isYyyymmdd(20241232));
    EXPECT_FALSE(JetValues::isYyyymmdd(20241301));
    EXPECT_FALSE(JetValues::isYyyymmdd(20240001));
    EXPECT_TRUE(JetValues::isYyyymmdd(99991231));
    EXPECT_FALSE(JetValues::isYyyymmdd(100000101));
    EXPECT_FALSE(JetValues::isYyyymmdd(0));
}

TEST(JetValues, MoneyTextHasFourExactDecimals)
{
    EXPECT_EQ(JetValues::moneyText(12345678), "1234.5678");
    EXPECT_EQ(JetValues::moneyText(-5000), "-0.5000");
    EXPECT_EQ(JetValues::moneyText(0), "0.0000");
    EXPECT_EQ(JetValues::moneyText(9223372036854775807LL), "922337203685477.5807");
}
