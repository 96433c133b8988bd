#include "common/Prompts.h"
#include "common/Session.h"
#include "data/ChartOfAccounts.h"
#include "data/Databases.h"
#include "support/DataFolder.h"
#include "support/FakeDialogs.h"
#include "support/FixedClock.h"

#include <gtest/gtest.h>

namespace {

class DateRangeTest : public ::testing::Test {
protected:
    FakeDialogs dialogs;
    FixedClock clock{QDateTime(QDate(2026, 6, 15), QTime(8, 0))};
    Session session;

    QString ask(std::deque<QString> answers, const QString &context = "Invoices")
    {
        dialogs.inputAnswers = std::move(answers);
        session.messageText = context;
        Prompts::askDateRange(dialogs, clock, session);
        return session.messageText;
    }
};

TEST_F(DateRangeTest, FourCharactersAreCompletedWithTheCurrentYear)
{
    EXPECT_EQ(ask({"0131", "20261231"}), "2026013120261231");
}

TEST_F(DateRangeTest, ALaterFromDateIsSwapped)
{
    EXPECT_EQ(ask({"20261231", "20260101"}), "2026010120261231");
}

TEST_F(DateRangeTest, SixCharactersAreAskedAgain)
{
    EXPECT_EQ(ask({"202601", "20260105", "20260110"}), "2026010520260110");
    EXPECT_EQ(dialogs.count("input"), 3);
    EXPECT_EQ(dialogs.shown[0].title, dialogs.shown[1].title);
}

TEST_F(DateRangeTest, EmptyAnswerCancels)
{
    EXPECT_EQ(ask({""}), "CANCEL");
    EXPECT_EQ(ask({"20260101", "   "}), "CANCEL");
}

TEST_F(DateRangeTest, PromptsAndTitlesCarryTheContextWord)
{
    ask({"20260101", "20260102"}, "Checks Issued");
    ASSERT_EQ(dialogs.shown.size(), 2u);
    EXPECT_EQ(dialogs.shown[0].title, "FROM Date - Checks Issued");
    EXPECT_EQ(dialogs.shown[0].text,
              "Type the FROM date in YYYYMMDD format.\nWhen done, press ENTER or click OK.\n\n"
              "Click CANCEL to exit this feature.");
    EXPECT_EQ(dialogs.shown[1].title, "TO Date - Checks Issued");
    EXPECT_EQ(dialogs.shown[1].text,
              "Type the TO date in YYYYMMDD format.\nWhen done, press ENTER or click OK.\n\n"
              "Click CANCEL to exit this feature.");
}

TEST_F(DateRangeTest, AnswersAreTrimmed)
{
    EXPECT_EQ(ask({"  0301 ", " 0302"}), "2026030120260302");
}

TEST_F(DateRangeTest, MonthDayYearWithSlashesIsReadAsThatDay)
{
    EXPECT_EQ(ask({"01/31/2026", "1/5/2027"}), "2026013120270105");
    EXPECT_EQ(ask({"12/1/2025", "2/29/2028"}), "2025120120280229");
    EXPECT_EQ(dialogs.count("input"), 4);
}

const QString fromPrompt =
    QStringLiteral("Type the FROM date in YYYYMMDD format.\nWhen done, press "
                   "ENTER or click OK.\n\nClick CANCEL to exit this "
                   "feature.");

TEST_F(DateRangeTest, ANonExistentDayWithSlashesIsAskedAgainWithTheReason)
{
    EXPECT_EQ(ask({"13/45/2026", "2/29/2026", "0131", "20261231"}), "2026013120261231");
    ASSERT_EQ(dialogs.count("input"), 4);
    EXPECT_EQ(dialogs.shown[0].text, fromPrompt);
    EXPECT_EQ(dialogs.shown[1].text,
              "13/45/2026 is not a day of the calendar. Type the date as YYYYMMDD, for example "
              "20260131\n" +
                  fromPrompt);
    EXPECT_EQ(dialogs.shown[2].text,
              "2/29/2026 is not a day of the calendar. Type the date as YYYYMMDD, for example "
              "20260131\n" +
                  fromPrompt);
    EXPECT_EQ(dialogs.shown[1].title, "FROM Date - Invoices");
}

TEST_F(DateRangeTest, AnAnswerOfAnotherLengthIsAskedAgainWithTheReason)
{
    EXPECT_EQ(ask({"20260101", "2026-01-31", "202601", "20260131"}), "2026010120260131");
    ASSERT_EQ(dialogs.count("input"), 4);
    EXPECT_EQ(dialogs.shown[1].title, "TO Date - Invoices");
    EXPECT_EQ(dialogs.shown[2].text,
              "2026-01-31 is not a date this prompt reads. Type the date as YYYYMMDD, for "
              "example 20260131\nType the TO date in YYYYMMDD format.\nWhen done, press ENTER "
              "or click OK.\n\nClick CANCEL to exit this feature.");
    EXPECT_TRUE(dialogs.shown[3].text.startsWith("202601 is not a date this prompt reads. "));
}

TEST_F(DateRangeTest, EightCharactersAreStillTakenAsTheyAre)
{
    EXPECT_EQ(ask({"20261399", "1/1/2026"}), "2026010120261399");
    EXPECT_EQ(dialogs.count("input"), 2);
}

class GlCheckTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    FakeDialogs dialogs;
    Session session;

    void check(const QString &account)
    {
        session.messageText = account;
        ChartOfAccounts chart{dbs};
        Prompts::checkGlAccount(chart, dialogs, session);
    }
};

TEST_F(GlCheckTest, MissingAccountSaysItDoesNotExistAndLeavesRedo)
{
    check("9999");
    EXPECT_EQ(session.messageText, "REDO");
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text, "# 9999 does not exist");
    EXPECT_EQ(dialogs.last()->title, "Invalid G/L Account");
    EXPECT_EQ(dialogs.last()->icon, Dialogs::Icon::Critical);
}

TEST_F(GlCheckTest, BlankStatementDescriptionKeepsTheAccountName)
{
    check("1000");
    EXPECT_EQ(session.messageText, "1000");
    EXPECT_EQ(session.accountName, "Cash");
    EXPECT_EQ(session.accountType, 1);
    EXPECT_EQ(dialogs.count(), 0);
}

TEST_F(GlCheckTest, NullStatementDescriptionKeepsTheAccountName)
{
    check(" 5100 ");
    EXPECT_EQ(session.accountName, "Hall rental");
}

TEST_F(GlCheckTest, StatementDescriptionReplacesTheName)
{
    check("5000");
    EXPECT_EQ(session.accountName, "Office supplies and postage");
    EXPECT_EQ(session.accountType, 5);
}

TEST_F(GlCheckTest, TextIsReadAsItsLeadingNumber)
{
    check("5000abc");
    EXPECT_EQ(session.accountName, "Office supplies and postage");
    check("' or 1=1 --");
    EXPECT_EQ(session.messageText, "REDO");
    EXPECT_EQ(dialogs.last()->text, "# 0 does not exist");
}

} // namespace
