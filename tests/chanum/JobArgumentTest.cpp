#include "JobArgument.h"

#include <gtest/gtest.h>

namespace {

struct ArgumentCase {
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
        ArgumentCase{"CVN05JSMITH", true, "JSMITH", 5, ""},
        ArgumentCase{"MVN99ANNE", true, "ANNE", 99, ""},
        ArgumentCase{"CVN00A", true, "A", 0, ""},
        ArgumentCase{"CVN05JOHN SMITH ", true, "JOHN SMITH", 5, ""},
        ArgumentCase{longest.constData(), true, "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAA", 5, ""},
        ArgumentCase{tooLong.constData(), false, "", 0, "at most 35"},
        ArgumentCase{thousand.constData(), false, "", 0, "1000 characters long"},
        ArgumentCase{"CVN", false, "", 0, "no two-digit user level"},
        ArgumentCase{"CVNxxBOB", false, "", 0, "no two-digit user level"},
        ArgumentCase{"CVN5BOB", false, "", 0, "no two-digit user level"},
        ArgumentCase{"CVN05", false, "", 0, "names no user"},
        ArgumentCase{"CVN05   ", false, "", 0, "names no user"},
        ArgumentCase{"cvn05BOB", false, "", 0, "does not start with CVN or MVN"},
        ArgumentCase{"VDR05BOB", false, "", 0, "does not start with CVN or MVN"},
        ArgumentCase{"", false, "", 0, "does not start with CVN or MVN"},
        ArgumentCase{"CVN05O'BRIEN", false, "", 0, "holds a quote"},
        ArgumentCase{"MVN05BOB\"", false, "", 0, "holds a quote"},
        ArgumentCase{"MVN05BOB\tX", false, "", 0, "cannot be printed"}));

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
