#include "data/RecordEdit.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "support/DataFolder.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

class RecordEditTest : public ::testing::Test {
protected:
    DataFolder folder;
    Databases dbs;
    RecordSource source{dbs, "datavendor"};

    void SetUp() override
    {
        folder.addVendor(100, QStringLiteral("Acme"));
        source.setUpdateTable("vendors", "vendnumber");
        source.setDatabaseName("ap.mdb");
        source.setRecordSource("select * from vendors where vendnumber = 100");
        source.refresh();
    }
    // Another program writes to the file at once, without waiting for a lock: true when it could.
    bool anotherProgramCanWrite()
    {
        QProcess other;
        if (DataFolder::onPostgres())
            other.start("psql", {"-h", qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST"), "-U",
                                 "postgres", "-d", folder.serverDatabase(), "-v",
                                 "ON_ERROR_STOP=1", "-c",
                                 "set lock_timeout = 100; update ap_mdb.vendors set vendfax = "
                                 "'outside' where vendnumber = 100"});
        else
            other.start("sqlite3",
                        {folder.file("ap.mdb"),
                         "update vendors set vendfax = 'outside' where vendnumber = 100"});
        if (!other.waitForFinished(10000))
            return false;
        return other.exitStatus() == QProcess::NormalExit && other.exitCode() == 0;
    }
    QString stored(const char *column)
    {
        return folder
            .scalar("ap.mdb", QStringLiteral("select %1 from vendors where vendnumber = 100")
                                  .arg(QLatin1String(column)))
            .toString();
    }
};

TEST_F(RecordEditTest, AnEditInProgressHoldsTheWriteLock)
{
    RecordEdit edit(source);
    EXPECT_FALSE(anotherProgramCanWrite());
}

TEST_F(RecordEditTest, ReachingUpdateWritesTheRecordAndLetsGoOfTheLock)
{
    {
        RecordEdit edit(source);
        edit.setValue("vendphone", "555-0100");
        edit.update();
    }
    EXPECT_EQ(stored("vendphone"), "555-0100");
    EXPECT_TRUE(anotherProgramCanWrite());
}

TEST_F(RecordEditTest, AnErrorBeforeUpdateRollsBackAndLetsGoOfTheLock)
{
    try {
        RecordEdit edit(source);
        edit.setValue("vendphone", "555-0199");
        throw std::runtime_error("the work between edit and update failed");
    } catch (const std::runtime_error &) {
    }
    EXPECT_FALSE(source.isEditing());
    EXPECT_EQ(stored("vendphone"), "");
    EXPECT_TRUE(anotherProgramCanWrite());
}

TEST_F(RecordEditTest, AFailingUpdateRollsBackAndLetsGoOfTheLock)
{
    int code = 0;
    try {
        RecordEdit edit(source);
        edit.setValue("vendphone", "555-0142");
        edit.setValue("nosuchcolumn", "x"); // the engine refuses the whole statement
        edit.update();
    } catch (const DbError &error) {
        code = error.code();
    }
    EXPECT_NE(code, 0);
    EXPECT_FALSE(source.isEditing());
    EXPECT_EQ(stored("vendphone"), "");
    EXPECT_TRUE(anotherProgramCanWrite());
}

TEST_F(RecordEditTest, ANewRecordLeftWithoutUpdateIsNotWritten)
{
    {
        RecordEdit added(source, RecordEdit::Start::AddNew);
        added.setValue("vendnumber", 901);
        added.setValue("vendname", "Never Written Ltd");
    }
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 901").toInt(), 0);
    EXPECT_TRUE(anotherProgramCanWrite());
}

} // namespace
