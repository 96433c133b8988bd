#include "frmmisc/UserFieldsCall.h"

#include <gtest/gtest.h>

namespace {

struct CallCase {
    const char *code;
    int kind;
    long long account;
    const char *database;
    const char *layout;
};

void PrintTo(const CallCase &c, std::ostream *os)
{
    *os << c.code;
}

class CallingCodes : public ::testing::TestWithParam<CallCase> {};

TEST_P(CallingCodes, TheLettersChooseTheKindItsDatabaseAndLayoutAndTheRestIsTheAccount)
{
    const UserFieldsCall call = UserFieldsCall::parse(QString::fromLatin1(GetParam().code));
    EXPECT_EQ(call.kindNumber(), GetParam().kind);
    EXPECT_EQ(call.account, GetParam().account);
    EXPECT_EQ(call.databaseFile(), QString::fromLatin1(GetParam().database));
    EXPECT_EQ(call.reportLayout(), QString::fromLatin1(GetParam().layout));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, CallingCodes,
    ::testing::Values(CallCase{"VEN1042", 3, 1042, "ap.mdb", "miscinfo1v.rpt"},
                      CallCase{"DOR1042", 3, 1042, "ap.mdb", "miscinfo1v.rpt"},
                      CallCase{"ABC2207", 2, 2207, "master.mdb", "miscinfo1m.rpt"},
                      CallCase{"DEF2207", 2, 2207, "master.mdb", "miscinfo1m.rpt"},
                      CallCase{"EDT~15", 1, 15, "emp.mdb", "miscinfo1e.rpt"},
                      CallCase{"EDT15", 1, 15, "emp.mdb", "miscinfo1e.rpt"},
                      CallCase{"XYZ7", 0, 7, "", ""}, CallCase{"", 0, 0, "", ""}));

TEST(UserFieldsCallTest, TheAccountIsWrittenAsANumberNeverAsTheTextThatCameIn)
{
    EXPECT_EQ(UserFieldsCall::parse("VEN12 or 1=1").accountText(), "12");
    EXPECT_EQ(UserFieldsCall::parse("VEN'; drop table miscdata").accountText(), "0");
}

TEST(UserFieldsCallTest, TheLettersAreKeptAsGiven)
{
    EXPECT_EQ(UserFieldsCall::parse("DOR5").code, "DOR");
    EXPECT_EQ(UserFieldsCall::parse("VEN5").code, "VEN");
}

} // namespace
