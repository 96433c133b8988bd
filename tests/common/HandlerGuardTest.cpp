#include "common/HandlerGuard.h"
#include "common/NumberedError.h"
#include "support/FakeDialogs.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

class HandlerGuardTest : public ::testing::Test {
protected:
    FakeDialogs dialogs;
    QString user = QStringLiteral("ANNE");
    HandlerGuard guard{dialogs, [this] { return user; }};
};

TEST_F(HandlerGuardTest, AHandlerThatSucceedsShowsNothing)
{
    bool ran = false;
    guard.run([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_EQ(dialogs.count(), 0);
}

TEST_F(HandlerGuardTest, ANumberedErrorGetsTheUnexpectedReportWithItsNumber)
{
    guard.run([] { throw NumberedError(3021, QStringLiteral("No current record.")); });
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_EQ(dialogs.last()->text, "Code 3021 near 0Unexpected problem... Call Velmora Data.");
    EXPECT_EQ(dialogs.last()->title, "ANNE @ Apmaster");
    EXPECT_EQ(dialogs.last()->icon, Dialogs::Icon::Information);
}

TEST_F(HandlerGuardTest, AnyOtherExceptionGetsTheUnexpectedReportWithNumberZero)
{
    guard.run([] { throw std::runtime_error("out of range"); });
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_EQ(dialogs.last()->text, "Code 0 near 0Unexpected problem... Call Velmora Data.");
}

TEST_F(HandlerGuardTest, TheTitleNamesTheUserAtTheTimeOfTheReport)
{
    user = QStringLiteral("MANAGER");
    guard.run([] { throw std::runtime_error("x"); });
    ASSERT_NE(dialogs.last(), nullptr);
    EXPECT_EQ(dialogs.last()->title, "MANAGER @ Apmaster");
}

} // namespace
