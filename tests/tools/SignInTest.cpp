#include "SignIn.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct ArgumentCase {
    const char *label;
    const char *name;
    int level;
    const char *argument;
};

class SignInArgument : public ::testing::TestWithParam<ArgumentCase> {};

TEST_P(SignInArgument, IsTheModuleCodeTheTwoDigitLevelAndTheName)
{
    const ArgumentCase &c = GetParam();
    EXPECT_EQ(SignIn::argument({QString::fromLatin1(c.name), c.level}),
              QString::fromLatin1(c.argument));
}

INSTANTIATE_TEST_SUITE_P(
    Levels, SignInArgument,
    ::testing::Values(ArgumentCase{"Demo", "DEMO", 99, "VDR99DEMO"},
                      ArgumentCase{"Clerk", "CLERK", 20, "VDR20CLERK"},
                      ArgumentCase{"Nine", "ANNE", 9, "VDR09ANNE"},
                      ArgumentCase{"Ten", "ANNE", 10, "VDR10ANNE"},
                      ArgumentCase{"Zero", "ANNE", 0, "VDR00ANNE"},
                      ArgumentCase{"BelowZero", "ANNE", -1, "VDR00ANNE"},
                      ArgumentCase{"AboveNinetyNine", "ANNE", 100, "VDR99ANNE"},
                      ArgumentCase{"NameWithABlank", "J SMITH", 75, "VDR75J SMITH"}),
    [](const ::testing::TestParamInfo<ArgumentCase> &info) { return info.param.label; });

const std::vector<StaffMember> staff = {{"CLERK", 20}, {"DEMO", 99}, {" jsmith ", 75}};

TEST(SignInLogin, TheLoginNameFindsItsRowWithoutRegardToCaseOrBlanks)
{
    const StaffMember *found = SignIn::forLogin(staff, QStringLiteral("JSmith"));
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->level, 75);
    ASSERT_NE(SignIn::forLogin(staff, QStringLiteral("demo")), nullptr);
    EXPECT_EQ(SignIn::forLogin(staff, QStringLiteral("demo"))->name, QStringLiteral("DEMO"));
}

TEST(SignInLogin, ALoginNameWithoutARowFindsNobody)
{
    EXPECT_EQ(SignIn::forLogin(staff, QStringLiteral("JSMITHE")), nullptr);
    EXPECT_EQ(SignIn::forLogin(staff, QStringLiteral("SMITH")), nullptr);
    EXPECT_EQ(SignIn::forLogin(staff, QString()), nullptr);
}

TEST(SignInChoice, OnlyTheMarkerFileLetsTheUserChooseFromTheStaffList)
{
    QTemporaryDir dir;
    EXPECT_FALSE(SignIn::choosingAllowed(dir.path()));
    QFile marker(dir.filePath(QStringLiteral("stafflist.dat")));
    ASSERT_TRUE(marker.open(QIODevice::WriteOnly));
    marker.close();
    EXPECT_TRUE(SignIn::choosingAllowed(dir.path()));
}

} // namespace
