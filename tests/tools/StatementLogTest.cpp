#include "StatementLog.h"
#include "BareEngine.h"

#include "data/Databases.h"
#include "support/DataFolder.h"

#include <QSqlQuery>

#include <gtest/gtest.h>

namespace {

// The statements of a step on the data folder's engine, recorded as the benchmark records
// them, and run again bare through the engine's C interface.
class StatementLogTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder.addVendor(1, QStringLiteral("Anne"));
        folder.addVendor(2, QStringLiteral("Bert"));
        folder.addVendor(3, QStringLiteral("Cora"));
        dbs.open(QStringLiteral("ap.mdb"));
    }

    // A read with a bound value, all of its rows read, and a rename with bound values in a
    // write transaction: what a step of the vendor screen does.
    void step(const QString &newName)
    {
        QSqlQuery read(dbs.open(QStringLiteral("ap.mdb")));
        read.setForwardOnly(true);
        read.prepare(QStringLiteral("select vendnumber, vendname from vendors where "
                                    "vendnumber >= ? order by vendnumber"));
        read.addBindValue(2);
        ASSERT_TRUE(read.exec());
        while (read.next())
            readNames << read.value(1).toString();
        read.finish();
        WriteTransaction tx(dbs, QStringLiteral("ap.mdb"));
        QSqlQuery write(dbs.open(QStringLiteral("ap.mdb")));
        write.prepare(QStringLiteral("update vendors set vendname = ? where vendnumber = ?"));
        write.addBindValue(newName);
        write.addBindValue(1);
        ASSERT_TRUE(write.exec());
        tx.commit();
    }

    QString nameOfVendor1()
    {
        return folder
            .scalar(QStringLiteral("ap.mdb"),
                    QStringLiteral("select vendname from vendors where vendnumber = 1"))
            .toString();
    }

    static const RanStatement *find(const std::vector<RanStatement> &ran, const char *text)
    {
        for (const RanStatement &statement : ran)
            if (statement.sql.contains(QLatin1String(text)) &&
                statement.kind != RanStatement::Kind::Prepare)
                return &statement;
        return nullptr;
    }

    DataFolder folder;
    Databases dbs;
    QStringList readNames;
};

TEST_F(StatementLogTest, AStepsStatementsAreRecordedWithTheRowsRead)
{
    StatementLog log;
    log.start();
    step(QStringLiteral("O'Brien; drop table vendors"));
    const std::vector<RanStatement> ran = log.stop();

    EXPECT_EQ(readNames, (QStringList{QStringLiteral("Bert"), QStringLiteral("Cora")}));
    const RanStatement *read = find(ran, "select vendnumber, vendname from vendors");
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->rows, 2);
    const RanStatement *write = find(ran, "update vendors set vendname");
    ASSERT_NE(write, nullptr);
    EXPECT_EQ(write->rows, 0);
    // The bound value is recorded with the statement, quote and all.
    EXPECT_TRUE(write->shown().contains(QStringLiteral("O''Brien; drop table vendors")) ||
                write->values.contains(QStringLiteral("O'Brien; drop table vendors")))
        << write->shown().toStdString();
    EXPECT_EQ(write->onServer, DataFolder::onPostgres());
}

TEST_F(StatementLogTest, NothingIsRecordedOutsideARecording)
{
    StatementLog log;
    log.start();
    EXPECT_TRUE(log.stop().empty());
    step(QStringLiteral("Unheard"));
    log.start();
    EXPECT_TRUE(log.stop().empty());
    EXPECT_EQ(nameOfVendor1(), QStringLiteral("Unheard"));
}

TEST_F(StatementLogTest, TheRecordedStatementsRunAgainBareWithTheirValues)
{
    StatementLog log;
    log.start();
    step(QStringLiteral("O'Brien; drop table vendors"));
    const std::vector<RanStatement> ran = log.stop();
    folder.exec(QStringLiteral("ap.mdb"),
                QStringLiteral("update vendors set vendname = 'Anne' where vendnumber = 1"));
    ASSERT_EQ(nameOfVendor1(), QStringLiteral("Anne"));

    BareEngine bare;
    EXPECT_GT(bare.medianMs(ran, 1), 0.0);
    EXPECT_TRUE(bare.takeFailures().isEmpty());
    // The rename ran again, with its bound value as the module bound it.
    EXPECT_EQ(nameOfVendor1(), QStringLiteral("O'Brien; drop table vendors"));
    EXPECT_EQ(folder
                  .scalar(QStringLiteral("ap.mdb"), QStringLiteral("select count(*) from "
                                                                   "vendors"))
                  .toInt(),
              3);
}

TEST_F(StatementLogTest, AStatementPreparedBeforeTheRecordingIsReplayedToo)
{
    // The driver prepares a statement once and runs it again by name in later steps.
    QSqlQuery write(dbs.open(QStringLiteral("ap.mdb")));
    write.prepare(QStringLiteral("update vendors set vendname = ? where vendnumber = ?"));
    write.addBindValue(QStringLiteral("First"));
    write.addBindValue(2);
    ASSERT_TRUE(write.exec());
    StatementLog log;
    log.start();
    write.bindValue(0, QStringLiteral("Second"));
    write.bindValue(1, 2);
    ASSERT_TRUE(write.exec());
    const std::vector<RanStatement> ran = log.stop();
    folder.exec(QStringLiteral("ap.mdb"),
                QStringLiteral("update vendors set vendname = 'Bert' where vendnumber = 2"));

    const RanStatement *recorded = find(ran, "update vendors set vendname");
    ASSERT_NE(recorded, nullptr);
    BareEngine bare;
    bare.medianMs(ran, 1);
    EXPECT_TRUE(bare.takeFailures().isEmpty());
    EXPECT_EQ(folder
                  .scalar(QStringLiteral("ap.mdb"),
                          QStringLiteral("select vendname from vendors where vendnumber = 2"))
                  .toString(),
              QStringLiteral("Second"));
}

TEST_F(StatementLogTest, AFailingBareStatementIsReported)
{
    if (!DataFolder::onPostgres())
        GTEST_SKIP() << "the bare run on the files reports no failures";
    RanStatement wrong;
    wrong.file = QStringLiteral("ap.mdb");
    wrong.sql = QStringLiteral("select nosuchcolumn from vendors");
    wrong.onServer = true;
    BareEngine bare;
    bare.medianMs({wrong}, 1);
    const QStringList failures = bare.takeFailures();
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures[0].contains(QStringLiteral("nosuchcolumn"))) << failures[0].toStdString();
}

} // namespace
