#include "yearend/YearEndSettings.h"

#include <gtest/gtest.h>

namespace {

TEST(YearEndSettings, WithoutTheFileTheRunsKeepTheStatedQuestion)
{
    const YearEndSettings settings = YearEndSettings::parse(QString());
    EXPECT_FALSE(settings.legalThreshold);
    EXPECT_EQ(settings.runYear(2027), 2026);
    EXPECT_TRUE(settings.error.isEmpty());
}

TEST(YearEndSettings, ReadsTheLegalThresholdTheTaxYearAndIndexedAmounts)
{
    const YearEndSettings settings = YearEndSettings::parse(
        "; the office's 1099 settings\n[runs]\nlegalthreshold = yes\ntaxyear=2026\n\n"
        "[indexed]\n2027=2100\n2028 = 2200\n");
    ASSERT_TRUE(settings.error.isEmpty()) << settings.error.toStdString();
    EXPECT_TRUE(settings.legalThreshold);
    EXPECT_EQ(settings.runYear(2030), 2026);
    EXPECT_EQ(settings.indexed.value(2027), 2100);
    EXPECT_EQ(settings.indexed.value(2028), 2200);
}

struct Bad {
    const char *text;
    const char *error;
};

class BadSettings : public testing::TestWithParam<Bad> {};

TEST_P(BadSettings, AWrongLineIsNamedWithItsReason)
{
    const YearEndSettings settings = YearEndSettings::parse(QString::fromUtf8(GetParam().text));
    EXPECT_EQ(settings.error, QString::fromUtf8(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    EachRule, BadSettings,
    testing::Values(
        Bad{"[runs]\nlegalthreshold=maybe",
            "apmaster-1099.ini, line 2 (\"legalthreshold=maybe\"): legalthreshold is yes or no"},
        Bad{"[runs]\ntaxyear=26",
            "apmaster-1099.ini, line 2 (\"taxyear=26\"): taxyear is a year such as 2026"},
        Bad{"[indexed]\n2026=2000",
            "apmaster-1099.ini, line 2 (\"2026=2000\"): [indexed] takes tax years from 2027 on"},
        Bad{"[indexed]\n2027=2150", "apmaster-1099.ini, line 2 (\"2027=2150\"): an indexed "
                                    "threshold is whole dollars, a multiple of 100"},
        Bad{"legalthreshold=yes", "apmaster-1099.ini, line 1 (\"legalthreshold=yes\"): expected "
                                  "name=value under [runs] or [indexed]"},
        Bad{"[other]", "apmaster-1099.ini, line 1 (\"[other]\"): the sections are [runs] and "
                       "[indexed]"}));

TEST(YearEndSettings, TheBoundaryYearsOfTheSettingsAreAccepted)
{
    EXPECT_TRUE(YearEndSettings::parse("[indexed]\n2027=2100").error.isEmpty());
    EXPECT_TRUE(YearEndSettings::parse("[indexed]\n2027=100").error.isEmpty());
    EXPECT_FALSE(YearEndSettings::parse("[indexed]\n2027=0").error.isEmpty());
}

} // namespace
