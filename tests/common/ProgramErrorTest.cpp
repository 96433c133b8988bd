#include "common/ProgramError.h"
#include "common/HandlerGuard.h"
#include "data/DbError.h"
#include "support/FakeDialogs.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

TEST(ProgramErrorTest, AProgramThatCouldNotDoItsWorkEndsWithCodeOne)
{
    const ProgramError error(QStringLiteral("There is no folder 'x'."));
    EXPECT_EQ(error.exitCode(), 1);
    EXPECT_EQ(error.text(), "There is no folder 'x'.");
    EXPECT_STREQ(error.what(), "There is no folder 'x'.");
}

TEST(ProgramErrorTest, AProgramMayEndWithACodeOfItsOwn)
{
    const ProgramError error(QStringLiteral("The choice was refused."), 2);
    EXPECT_EQ(error.exitCode(), 2);
    EXPECT_EQ(ProgramError::exitCodeOf(error), 2);
}

TEST(ProgramErrorTest, AnErrorOfTheDataLayerEndsAProgramWithCodeOne)
{
    const DbError error(DbError::FileNotFound, QStringLiteral("ap.mdb is missing."));
    EXPECT_EQ(ProgramError::exitCodeOf(error), 1);
}

TEST(ProgramErrorTest, MainCatchesEveryProgramErrorAsANumberedError)
{
    int code = 0;
    QString text;
    try {
        throw ProgramError(QStringLiteral("Nothing was imported."), 3);
    } catch (const NumberedError &error) {
        code = ProgramError::exitCodeOf(error);
        text = error.text();
    }
    EXPECT_EQ(code, 3);
    EXPECT_EQ(text, "Nothing was imported.");
}

TEST(ProgramErrorTest, AWindowsGuardReportsItWithItsNumber)
{
    FakeDialogs dialogs;
    const HandlerGuard guard(dialogs, [] { return QStringLiteral("ANNE"); });
    guard.run([] { throw ProgramError(QStringLiteral("The copy differs."), 2); });
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_EQ(dialogs.last()->text, "Code 2 near 0Unexpected problem... Call Velmora Data.");
}

} // namespace
