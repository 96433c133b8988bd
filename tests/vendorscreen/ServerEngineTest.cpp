// What only the server engine can do to the module: another session holding a vendor's row,
// the server ending the module's sessions or taking none, a wrong password, a schema that lost
// a table.
#include "support/VendorScreen.h"

#include "data/DbError.h"

#include <QFile>
#include <QProcess>
#include <QTest>
#include <QTimer>

namespace {

class ServerEngine : public VendorScreen {
protected:
    void SetUp() override
    {
        if (!DataFolder::onPostgres())
            GTEST_SKIP() << "runs in the tests on the PostgreSQL engine";
        VendorScreen::SetUp();
    }
    QString database() const
    {
        return folder.readFile("database.ini").section("database=", 1).section('\n', 0, 0);
    }
    // Another office's psql session takes vendor 100's row and keeps it until told "commit".
    bool holdVendorRow(QProcess &psql)
    {
        psql.start("psql", {"-h", qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST"), "-U",
                            "postgres", "-d", database(), "-v", "ON_ERROR_STOP=1"});
        if (!psql.waitForStarted())
            return false;
        psql.write("begin;\nselect vendnumber from ap_mdb.vendors where vendnumber = 100 for "
                   "update;\nselect 'held';\n");
        return QTest::qWaitFor([&] { return psql.readAllStandardOutput().contains("held"); },
                               10000);
    }
    // Ends every session of the test's database but the one asking, as a restarted server or
    // an administrator would.
    void endOtherSessions()
    {
        asServerOwner(QStringLiteral("select count(pg_terminate_backend(pid)) from "
                                     "pg_stat_activity where datname = '%1'")
                          .arg(database()));
    }
    // A statement run by psql in the server's maintenance database; its error output.
    QString asServerOwner(const QString &statement)
    {
        QProcess psql;
        psql.start("psql",
                   {"-h", qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST"), "-U", "postgres",
                    "-d", "postgres", "-v", "ON_ERROR_STOP=1", "-qc", statement});
        psql.waitForFinished(30000);
        return QString::fromLocal8Bit(psql.readAllStandardError());
    }
};

TEST_F(ServerEngine, AVendorRowHeldByAnotherSessionIsSavedOnceItLetsGo)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("217-555-7777");
    QProcess psql;
    ASSERT_TRUE(holdVendorRow(psql));
    // The other session lets go after about a second: the save waits, retries and lands.
    QTimer::singleShot(1000, &psql, [&] { psql.write("commit;\n\\q\n"); });
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-7777");
    EXPECT_GE(module.window->state().saveRetryCount, 1);
    psql.waitForFinished(10000);
}

TEST_F(ServerEngine, ARowHeldLongerThanTheRetriesGivesTheWriteReportAndWritesNothing)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("217-555-8888");
    QProcess psql;
    ASSERT_TRUE(holdVendorRow(psql));
    c().cmdsave->click();
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_TRUE(
        module.dialogs.last()->text.startsWith("Having trouble writing the record...Code 3260@"))
        << module.dialogs.last()->text.toStdString();
    EXPECT_EQ(module.window->state().saveRetryCount, 21);
    psql.write("commit;\n\\q\n");
    psql.waitForFinished(10000);
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0100");
}

TEST_F(ServerEngine, TheServerEndingTheSessionsIsMetByNewOnesAndTheSaveLandsWhole)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[1]->setText("Acme Renamed");
    c().Text1[7]->setText("217-555-9999");
    endOtherSessions();
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(vendorColumn(100, "vendname").toString(), "Acme Renamed");
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-9999");
    EXPECT_EQ(module.window->state().modifyFlag, 0);
}

TEST_F(ServerEngine, AServerTakingNoSessionsGivesAReportNoCrashAndNoHalfWrittenVendor)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[1]->setText("Acme Renamed");
    c().Text1[7]->setText("217-555-9999");
    ASSERT_EQ(
        asServerOwner(QStringLiteral("alter database %1 allow_connections false").arg(database())),
        "");
    endOtherSessions();
    c().cmdsave->click();
    ASSERT_GE(module.dialogs.count(), 1);
    EXPECT_TRUE(module.dialogs.last()->text.startsWith("Having trouble writing the record"))
        << module.dialogs.last()->text.toStdString();
    ASSERT_EQ(
        asServerOwner(QStringLiteral("alter database %1 allow_connections true").arg(database())),
        "");
    EXPECT_EQ(vendorColumn(100, "vendname").toString(), "Acme Office Supply");
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0100");
    // The window still answers, and once the server takes sessions again the module works on.
    c().cmdcancel->click();
    EXPECT_EQ(module.window->state().modifyFlag, 0);
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("217-555-4444");
    const qsizetype reports = module.dialogs.count();
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.count(), reports);
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-4444");
}

TEST_F(ServerEngine, ATableMissingFromASchemaIsMadeAgainAsOnTheFiles)
{
    DataFolder other;
    other.exec("ap.mdb", "drop table vendnotes");
    Module second(other.path());
    ASSERT_EQ(second.start("VDR99DEMO"), std::nullopt);
    EXPECT_EQ(other.scalar("ap.mdb", "select count(*) from vendnotes").toInt(), 0);
}

TEST_F(ServerEngine, AWrongPasswordIsNamedInTheMessageAndNothingStarts)
{
    DataFolder other;
    // Roles belong to the whole server: the name is this test process's own.
    const QString role = QStringLiteral("bookkeeper_%1").arg(QCoreApplication::applicationPid());
    other.exec("ap.mdb", QStringLiteral("create role %1 login password 'right'").arg(role));
    QString ini = other.readFile("database.ini");
    ini.replace("user=postgres", "user=" + role);
    other.writeFile("database.ini", ini.toUtf8());
    qputenv("PGPASSWORD", "wrong");
    Module second(other.path());
    const std::optional<int> refused = second.start("VDR99DEMO");
    qunsetenv("PGPASSWORD");
    other.exec("ap.mdb", QStringLiteral("drop role %1").arg(role));
    EXPECT_NE(refused, std::nullopt);
    ASSERT_GE(second.dialogs.count(), 1);
    EXPECT_TRUE(second.dialogs.last()->text.contains("password authentication failed"))
        << second.dialogs.last()->text.toStdString();
}

} // namespace
