#include "frmmisc/UserFieldsFixture.h"

namespace {

const QString multiUser =
    "Note: Another user has changed this record since you recalled it. \r\nDo you want to "
    "overwrite the changes anyway without reviewing them? \r\n\r\n(Note: Answering NO will "
    "reload this record)";

class UserFieldsSaveTest : public UserFieldsFixture {
protected:
    void SetUp() override
    {
        UserFieldsFixture::SetUp();
        w = openFor("100");
        ASSERT_NE(w, nullptr);
    }
    void rename(int field, const QString &text)
    {
        module.dialogs.inputAnswers = {text};
        QTest::mouseDClick(w->controls().lbldescrip[field], Qt::LeftButton);
    }
    void save()
    {
        w->controls().cmdsave->click();
        QCoreApplication::processEvents();
    }
    QString stored(const char *column, int account = 100)
    {
        return folder
            .scalar("ap.mdb", QStringLiteral("select %1 from miscdata where acctid = %2")
                                  .arg(QString::fromLatin1(column))
                                  .arg(account))
            .toString();
    }
    QString storedDescription(const char *column)
    {
        return folder
            .scalar("ap.mdb", QStringLiteral("select %1 from miscinfo").arg(QLatin1String(column)))
            .toString();
    }

    UserFieldsWindow *w = nullptr;
};

TEST_F(UserFieldsSaveTest, SaveWritesTheDescriptionsAndTheValues)
{
    rename(3, "Delivery days");
    w->controls().txtinfo[3]->setText("Mon/Wed/Fri");
    w->controls().txtinfo[0]->setText("07/31/2027");
    save();
    EXPECT_EQ(storedDescription("miscdesc4"), "Delivery days");
    EXPECT_EQ(storedDescription("miscdesc3"), "  Sales rep  ");
    EXPECT_EQ(stored("miscvalue4"), "Mon/Wed/Fri");
    EXPECT_EQ(stored("miscvalue1"), "07/31/2027");
    EXPECT_EQ(stored("miscvalue30"), "thirty");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from miscinfo").toInt(), 1);
    EXPECT_EQ(module.dialogs.count("yesno"), 0);
    EXPECT_EQ(stored("miscvalue1", 250), "12/31/2026"); // another vendor's row is untouched
}

TEST_F(UserFieldsSaveTest, AnAccountWithoutAValueRowGetsOne)
{
    w->close();
    w = openFor("300");
    ASSERT_NE(w, nullptr);
    w->controls().txtinfo[1]->setText("No");
    save();
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from miscdata where acctid = 300").toInt(),
              1);
    EXPECT_EQ(stored("miscvalue2", 300), "No");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from miscdata").toInt(), 3);
}

TEST_F(UserFieldsSaveTest, ASecondSaveAfterTheFirstFindsNoOtherUser)
{
    rename(0, "Policy ends");
    w->controls().txtinfo[0]->setText("01/01/2028");
    save();
    rename(0, "Policy end date");
    w->controls().txtinfo[0]->setText("02/02/2028");
    save();
    EXPECT_EQ(module.dialogs.count("yesno"), 0);
    EXPECT_EQ(storedDescription("miscdesc1"), "Policy end date");
    EXPECT_EQ(stored("miscvalue1"), "02/02/2028");
}

TEST_F(UserFieldsSaveTest, AnotherUsersDescriptionGivesTheMessageAndNoReloadsIt)
{
    otherProgram("ap.mdb", "update miscinfo set miscdesc1='Policy expiry'");
    rename(1, "W-9 received");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    save();
    ASSERT_EQ(module.dialogs.count("yesno"), 1);
    EXPECT_EQ(module.dialogs.last()->title, "Multi-User concern...");
    EXPECT_EQ(module.dialogs.last()->text, multiUser);
    EXPECT_EQ(module.session.lastYesNo, Dialogs::No);
    // Reloaded: the other user's description, and this user's rename is gone unsaved.
    EXPECT_EQ(w->controls().lbldescrip[0]->text(), "Policy expiry");
    EXPECT_EQ(w->controls().lbldescrip[1]->text(), "W-9 on file");
    EXPECT_EQ(w->descriptionTag(0), "Policy expiry");
    EXPECT_EQ(storedDescription("miscdesc1"), "Policy expiry");
    EXPECT_EQ(storedDescription("miscdesc2"), "W-9 on file");
}

TEST_F(UserFieldsSaveTest, AnotherUsersDescriptionIsOverwrittenAfterYes)
{
    otherProgram("ap.mdb", "update miscinfo set miscdesc1='Policy expiry'");
    rename(1, "W-9 received");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    save();
    EXPECT_EQ(module.dialogs.count("yesno"), 1);
    EXPECT_EQ(storedDescription("miscdesc1"), "Insurance expiry");
    EXPECT_EQ(storedDescription("miscdesc2"), "W-9 received");
}

TEST_F(UserFieldsSaveTest, AnotherUsersValueGivesTheMessageAndNoReloadsIt)
{
    otherProgram("ap.mdb", "update miscdata set miscvalue2='Pending' where acctid = 100");
    w->controls().txtinfo[0]->setText("09/09/2029");
    module.dialogs.yesNoAnswers = {Dialogs::No};
    save();
    ASSERT_EQ(module.dialogs.count("yesno"), 1);
    EXPECT_EQ(module.dialogs.last()->title, "Multi-User concern...");
    EXPECT_EQ(module.dialogs.last()->text, multiUser);
    EXPECT_EQ(w->controls().txtinfo[1]->text(), "Pending");
    EXPECT_EQ(w->controls().txtinfo[0]->text(), "06/30/2027");
    EXPECT_EQ(w->valueTag(1), "Pending");
    EXPECT_EQ(stored("miscvalue1"), "06/30/2027");
    EXPECT_EQ(stored("miscvalue2"), "Pending");
}

TEST_F(UserFieldsSaveTest, AnotherUsersValueIsOverwrittenAfterYes)
{
    otherProgram("ap.mdb", "update miscdata set miscvalue2='Pending' where acctid = 100");
    w->controls().txtinfo[0]->setText("09/09/2029");
    module.dialogs.yesNoAnswers = {Dialogs::Yes};
    save();
    EXPECT_EQ(module.dialogs.count("yesno"), 1);
    EXPECT_EQ(stored("miscvalue1"), "09/09/2029");
    EXPECT_EQ(stored("miscvalue2"), "Yes");
}

TEST_F(UserFieldsSaveTest, AnotherUsersChangeToAnotherAccountIsNoConcern)
{
    otherProgram("ap.mdb", "update miscdata set miscvalue2='Pending' where acctid = 250");
    w->controls().txtinfo[0]->setText("09/09/2029");
    save();
    EXPECT_EQ(module.dialogs.count("yesno"), 0);
    EXPECT_EQ(stored("miscvalue1"), "09/09/2029");
}

TEST_F(UserFieldsSaveTest, QuotesTildesAndLineFeedsAreSavedAndReadBackExactly)
{
    const QString quoted = "O'Brien \"the elder\"";
    const QString tilde = "a~b~";
    const QString lines = "first\nsecond\r\nthird";
    w->controls().txtinfo[4]->setText(quoted);
    w->controls().txtinfo[5]->setText(tilde);
    w->controls().txtinfo[6]->setText(lines);
    module.dialogs.inputAnswers = {"Rep's \"name\" ~x"};
    QTest::mouseDClick(w->controls().lbldescrip[7], Qt::LeftButton);
    save();
    EXPECT_EQ(stored("miscvalue5"), quoted);
    EXPECT_EQ(stored("miscvalue6"), tilde);
    EXPECT_EQ(stored("miscvalue7"), lines);
    EXPECT_EQ(storedDescription("miscdesc8"), "Rep's \"name\" ~x");
    w->close();
    UserFieldsWindow *again = openFor("100");
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->controls().txtinfo[4]->text(), quoted);
    EXPECT_EQ(again->controls().txtinfo[5]->text(), tilde);
    EXPECT_EQ(again->controls().txtinfo[6]->text(), lines);
    EXPECT_EQ(again->controls().lbldescrip[7]->text(), "Rep's \"name\" ~x");
    // Saved again unchanged, nothing looks changed by another user.
    again->controls().cmdsave->click();
    EXPECT_EQ(module.dialogs.count("yesno"), 0);
}

TEST_F(UserFieldsSaveTest, WithoutADescriptionRowTheSaveStops)
{
    otherProgram("ap.mdb", "delete from miscinfo");
    w->controls().txtinfo[0]->setText("changed");
    save();
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from miscinfo").toInt(), 0);
    EXPECT_EQ(stored("miscvalue1"), "06/30/2027");
    EXPECT_EQ(module.dialogs.count(), 0);
}

TEST_F(UserFieldsSaveTest, ATableGoneSinceOpeningSaysSoAndClosesTheWindow)
{
    otherProgram("ap.mdb", "drop table miscdata");
    w->controls().txtinfo[0]->setText("changed");
    save();
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->title, "Cannot Continue");
    EXPECT_EQ(module.window->userFields(), nullptr);
    EXPECT_TRUE(c().cmdudf->isEnabled());
}

TEST_F(UserFieldsSaveTest, AMemberSaveWritesToTheMemberFile)
{
    w->close();
    UserFieldsWindow *member = openWith("ABC1001");
    ASSERT_NE(member, nullptr);
    member->controls().txtinfo[1]->setText("South lot");
    member->controls().cmdsave->click();
    EXPECT_EQ(folder.scalar("master.mdb", "select miscvalue2 from miscdata where acctid = 1001")
                  .toString(),
              "South lot");
    EXPECT_FALSE(module.databases.isOpen("master.mdb")); // kept open only for the operation
}

// A company whose files were just made: no description and no value yet.
class UserFieldsNewCompanyTest : public VendorScreen {};

TEST_F(UserFieldsNewCompanyTest, TheFirstDescriptionsAndValuesOfANewCompanyAreSaved)
{
    c().Text1[0]->setText("100");
    c().cmdudf->click();
    QCoreApplication::processEvents();
    UserFieldsWindow *w = module.window->userFields();
    ASSERT_NE(w, nullptr);
    module.dialogs.inputAnswers = {"Insurance expiry"};
    QTest::mouseDClick(w->controls().lbldescrip[0], Qt::LeftButton);
    w->controls().txtinfo[0]->setText("06/30/2027");
    w->controls().cmdsave->click();
    QCoreApplication::processEvents();
    EXPECT_EQ(folder.scalar("ap.mdb", "select miscdesc1 from miscinfo").toString(),
              "Insurance expiry");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select miscvalue1 from miscdata where acctid = 100").toString(),
        "06/30/2027");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from miscinfo").toInt(), 1);
    EXPECT_EQ(module.dialogs.count("input"), 1); // the rename
    EXPECT_EQ(module.dialogs.count("yesno"), 0); // no other user to report
}

} // namespace
