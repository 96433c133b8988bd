#include "data/RecordHelpers.h"
#include "common/Prompts.h"
#include "common/Session.h"
#include "data/Databases.h"
#include "support/DataFolder.h"
#include "support/FakeDialogs.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

class RecordHelpersTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    FakeDialogs dialogs;
    Session session;
};

TEST(MdbExtension, NameWithoutExtensionGetsMdbAppended)
{
    EXPECT_EQ(RecordHelpers::withMdbExtension("ap"), "ap.MDB");
    EXPECT_EQ(RecordHelpers::withMdbExtension("ap.mdb"), "ap.mdb");
    EXPECT_EQ(RecordHelpers::withMdbExtension("AP.Mdb"), "AP.Mdb");
    EXPECT_EQ(RecordHelpers::withMdbExtension("ap.mdbx"), "ap.mdbx.MDB");
}

TEST_F(RecordHelpersTest, NameWithoutExtensionOpensTheMdbFile)
{
    folder.exec("ap.mdb", "update miscinfo set miscdesc1 = 'Insurance'");
    ASSERT_TRUE(RecordHelpers::loadRecord(dbs, session, "ap", "select * from miscinfo"));
    ASSERT_EQ(session.record.count(), 31);
    EXPECT_EQ(session.record.fields[1].name, "miscdesc1");
    EXPECT_EQ(session.record.fields[1].value.toString(), "Insurance");
    EXPECT_EQ(session.record.fields[0].typeCode, 3);
    EXPECT_EQ(session.record.fields[1].typeCode, 202);
    EXPECT_EQ(dialogs.count(), 0);
    EXPECT_FALSE(dbs.isOpen("ap.MDB"));
}

TEST_F(RecordHelpersTest, QueryWithoutRowsGivesNamesAndTypesAndQuit)
{
    ASSERT_TRUE(RecordHelpers::loadRecord(dbs, session, "ap.mdb",
                                          "select * from miscdata where acctid = 5"));
    EXPECT_EQ(session.messageText, "QUIT");
    ASSERT_EQ(session.record.count(), 31);
    EXPECT_EQ(session.record.fields[0].name, "acctid");
    EXPECT_TRUE(session.record.fields[0].value.isNull());
}

TEST_F(RecordHelpersTest, MissingDatabaseSaysSoAndKeepsThePreviousArrays)
{
    session.record.fields.push_back({"kept", 202, "value"});
    EXPECT_FALSE(RecordHelpers::loadRecord(dbs, session, "emp", "select * from miscinfo"));
    EXPECT_EQ(dialogs.count(), 0); // the data layer shows nothing; the caller does
    Prompts::showDatabaseMissing(dialogs, RecordHelpers::withMdbExtension("emp"));
    ASSERT_EQ(dialogs.count(), 1);
    EXPECT_EQ(dialogs.last()->text, "The emp.MDB database is missing.\r\n"
                                    "Contact Velmora Data technical support for assistance.");
    EXPECT_EQ(dialogs.last()->title, "Uh-oh...");
    EXPECT_EQ(dialogs.last()->icon, Dialogs::Icon::Information);
    ASSERT_EQ(session.record.count(), 1);
    EXPECT_EQ(session.record.fields[0].name, "kept");
    EXPECT_FALSE(QFile::exists(folder.file("emp.MDB")));
}

TEST_F(RecordHelpersTest, SaveWritesTheArraysIntoTheRowOrANewOne)
{
    folder.exec("ap.mdb",
                "insert into miscdata (acctid, miscvalue1) values (5, 'old'), (6, 'other')");
    ASSERT_TRUE(RecordHelpers::loadRecord(dbs, session, "ap.mdb",
                                          "select * from miscdata where acctid = 5"));
    session.record.fields[1].value = "new";
    ASSERT_TRUE(RecordHelpers::saveRecord(dbs, session, "ap.mdb",
                                          "select * from miscdata where acctid = 5", false));
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select miscvalue1 from miscdata where acctid = 5").toString(),
        "new");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select miscvalue1 from miscdata where acctid = 6").toString(),
        "other");

    session.record.fields[0].value = 9;
    ASSERT_TRUE(RecordHelpers::saveRecord(dbs, session, "ap.mdb",
                                          "select * from miscdata where acctid = 9", true));
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select miscvalue1 from miscdata where acctid = 9").toString(),
        "new");
}

TEST_F(RecordHelpersTest, SaveToAMissingDatabaseSaysSoAndCreatesNothing)
{
    EXPECT_FALSE(
        RecordHelpers::saveRecord(dbs, session, "master", "select * from miscinfo", false));
    EXPECT_FALSE(QFile::exists(folder.file("master.MDB")));
    EXPECT_FALSE(QFile::exists(folder.file("master.mdb")));
}

} // namespace
