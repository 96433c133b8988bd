#include "JobArgument.h"

#include <gtest/gtest.h>

namespace {

struct ArgumentCase {
    const char *name; // the case's name in the test list
    const char *argument;
    bool accepted;
    const char *userName;
    int level;
    const char *reasonPart; // a part of the refusal's text
};

class JobArguments : public testing::TestWithParam<ArgumentCase> {};

TEST_P(JobArguments, AreAcceptedOrRefusedWithTheReason)
{
    const ArgumentCase &c = GetParam();
    QString error;
    const auto job = JobArgument::parse(QString::fromUtf8(c.argument), error);
    ASSERT_EQ(job.has_value(), c.accepted) << c.argument << ": " << error.toStdString();
    if (c.accepted) {
        EXPECT_EQ(job->userName, QString::fromUtf8(c.userName));
        EXPECT_EQ(job->level, c.level);
        EXPECT_TRUE(error.isEmpty());
    } else {
        EXPECT_TRUE(error.contains(QString::fromUtf8(c.reasonPart))) << error.toStdString();
    }
}

const QByteArray longest = "CVN05" + QByteArray(30, 'A');
const QByteArray tooLong = "CVN05" + QByteArray(31, 'A');
const QByteArray thousand = "MVN05" + QByteArray(995, 'B');

INSTANTIATE_TEST_SUITE_P(
    Table, JobArguments,
    testing::Values(
        ArgumentCase{"ChangeWithLevel05", "CVN05JSMITH", true, "JSMITH", 5, ""},
        ArgumentCase{"MergeWithLevel99", "MVN99ANNE", true, "ANNE", 99, ""},
        ArgumentCase{"LevelZeroOneLetterUser", "CVN00A", true, "A", 0, ""},
        ArgumentCase{"UserNameWithBlankTrimmed", "CVN05JOHN SMITH ", true, "JOHN SMITH", 5, ""},
        ArgumentCase{"LongestUserName", longest.constData(), true, "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAA",
                     5, ""},
        ArgumentCase{"OneCharacterTooLong", tooLong.constData(), false, "", 0, "at most 35"},
        ArgumentCase{"ThousandCharacters", thousand.constData(), false, "", 0,
                     "1000 characters long"},
        ArgumentCase{"CodeAlone", "CVN", false, "", 0, "no two-digit user level"},
        ArgumentCase{"LevelNotDigits", "CVNxxBOB", false, "", 0, "no two-digit user level"},
        ArgumentCase{"OneDigitLevel", "CVN5BOB", false, "", 0, "no two-digit user level"},
        ArgumentCase{"NoUserName", "CVN05", false, "", 0, "names no user"},
        ArgumentCase{"BlankUserName", "CVN05   ", false, "", 0, "names no user"},
        ArgumentCase{"LowerCaseCode", "cvn05BOB", false, "", 0, "does not start with CVN or MVN"},
        ArgumentCase{"AnotherModulesCode", "VDR05BOB", false, "", 0,
                     "does not start with CVN or MVN"},
        ArgumentCase{"Empty", "", false, "", 0, "does not start with CVN or MVN"},
        ArgumentCase{"ApostropheInName", "CVN05O'BRIEN", false, "", 0, "holds a quote"},
        ArgumentCase{"QuoteInName", "MVN05BOB\"", false, "", 0, "holds a quote"},
        ArgumentCase{"TabInName", "MVN05BOB\tX", false, "", 0, "cannot be printed"}),
    [](const testing::TestParamInfo<ArgumentCase> &info) { return std::string(info.param.name); });

TEST(JobArgumentUser, TheClipboardNamesTheSameUserUntrimmedAndInAnyCase)
{
    QString error;
    const auto job = JobArgument::parse(QStringLiteral("MVN05JSMITH"), error);
    ASSERT_TRUE(job);
    EXPECT_TRUE(job->sameUser(QStringLiteral("JSMITH  ")));
    EXPECT_TRUE(job->sameUser(QStringLiteral("jsmith")));
    EXPECT_FALSE(job->sameUser(QStringLiteral("JSMITHS")));
    EXPECT_FALSE(job->sameUser(QString()));
}

} // namespace
