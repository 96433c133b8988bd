#include "data/Databases.h"
#include "data/DbError.h"
#include "data/Schema.h"
#include "support/DataFolder.h"
#include "support/SharedTestData.h"

#include <QDir>
#include <QFile>
#include <QSqlQuery>
#include <QSqlRecord>

#include <gtest/gtest.h>

namespace {

int errorCodeOpening(Databases &dbs, const QString &file, QString *text = nullptr)
{
    try {
        dbs.open(file);
    } catch (const DbError &e) {
        if (text)
            *text = e.text();
        return e.code();
    }
    return 0;
}

TEST(Databases, OpeningAMissingFileFailsAndCreatesNothing)
{
    DataFolder folder;
    Databases dbs;
    QString text;
    EXPECT_EQ(errorCodeOpening(dbs, "ar.mdb", &text), DbError::FileNotFound);
    EXPECT_TRUE(text.contains("ar.mdb"));
    EXPECT_FALSE(QFile::exists(folder.file("ar.mdb")));
    EXPECT_FALSE(dbs.isOpen("ar.mdb"));
}

TEST(Databases, AnAccessFileIsNamedInTheMessageAndLeftUntouched)
{
    SQLITE_FILES_ONLY();
    for (const char *sample : {"nwind.mdb", "DateTestDatabase.mdb"}) {
        const QString relative = QStringLiteral("access/") + QLatin1String(sample);
        const QString path = SharedTestData::find(relative);
        SKIP_WITHOUT_SHARED_FILE(path, relative);
        DataFolder folder;
        folder.removeDatabase("ap.mdb");
        ASSERT_TRUE(QFile::copy(path, folder.file("ap.mdb")));
        QFile::setPermissions(folder.file("ap.mdb"), QFile::ReadOwner | QFile::WriteOwner);
        const QByteArray before = folder.readFile("ap.mdb").toLatin1();
        Databases dbs;
        QString text;
        EXPECT_EQ(errorCodeOpening(dbs, "ap.mdb", &text), DbError::NotADatabase);
        EXPECT_TRUE(text.contains(folder.file("ap.mdb"))) << text.toStdString();
        EXPECT_TRUE(text.contains("Microsoft Access"));
        EXPECT_TRUE(text.contains("run: apmaster-import SOURCE_FOLDER DATA_FOLDER"))
            << text.toStdString();
        EXPECT_EQ(folder.readFile("ap.mdb").toLatin1(), before);
    }
}

TEST(Databases, AFileThatIsNoDatabaseIsRefusedByName)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    folder.writeFile("gl.mdb", "just some text, certainly not a database file of any kind");
    Databases dbs;
    QString text;
    EXPECT_EQ(errorCodeOpening(dbs, "gl.mdb", &text), DbError::NotADatabase);
    EXPECT_TRUE(text.contains("gl.mdb"));
    EXPECT_EQ(folder.readFile("gl.mdb"),
              "just some text, certainly not a database file of any kind");
}

TEST(Databases, DataFolderWithUriCharactersInItsPathOpens)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    const QString odd = folder.file("books #1 ? 100% done");
    ASSERT_TRUE(QDir().mkpath(odd));
    ASSERT_TRUE(QFile::copy(folder.file("gl.mdb"), odd + "/gl.mdb"));
    QDir::setCurrent(odd);
    Databases dbs;
    EXPECT_EQ(dbs.scalar("gl.mdb", "select count(*) from gl0").toInt(), 3);
    EXPECT_FALSE(QFile::exists(odd + "/ap.mdb"));
    QDir::setCurrent(folder.path());
}

TEST(Databases, FileNamesMatchWithoutRegardToCase)
{
    DataFolder folder;
    QFile::rename(folder.file("gl.mdb"), folder.file("GL.MDB"));
    Databases dbs;
    EXPECT_NO_THROW(dbs.open("gl.mdb"));
}

TEST(Databases, EveryTableAndColumnOfEachFileIsCreatedWhenMissing)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    for (const char *name :
         {"ap.mdb", "gl.mdb", "config.mdb", "user.mdb", "ar.mdb", "emp.mdb", "master.mdb"}) {
        const QString file = QString::fromLatin1(name);
        if (!QFile::exists(folder.file(file)))
            folder.createDatabase(file);
        Databases dbs;
        QSqlDatabase db = dbs.open(file);
        ASSERT_FALSE(Schema::tablesOf(file).empty()) << name;
        for (const Schema::Table &table : Schema::tablesOf(file)) {
            const QSqlRecord record = db.record(table.name);
            for (const Schema::Column &column : table.columns)
                EXPECT_TRUE(record.contains(column.name))
                    << name << " " << table.name.toStdString() << "." << column.name.toStdString();
        }
    }
}

TEST(Databases, MissingColumnsAreAddedToAnOlderFile)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    folder.removeDatabase("ar.mdb");
    folder.writeFile("ar.mdb", "");
    folder.exec("ar.mdb", "create table ar0 (aracctnum DOUBLE)");
    folder.exec("ar.mdb", "insert into ar0 values (4000)");
    Databases dbs;
    QSqlDatabase db = dbs.open("ar.mdb");
    EXPECT_TRUE(db.record("ar0").contains("aracctname"));
    EXPECT_TRUE(db.record("ar0").contains("arlevel"));
    EXPECT_EQ(dbs.scalar("ar.mdb", "select aracctnum from ar0").toInt(), 4000);
}

TEST(Databases, UserDefinedTablesHoldThirtyDescriptionsAndThirtyValues)
{
    DataFolder folder;
    Databases dbs;
    QSqlDatabase db = dbs.open("ap.mdb");
    EXPECT_EQ(db.record("miscinfo").count(), 31);
    EXPECT_EQ(db.record("miscdata").count(), 31);
    EXPECT_TRUE(db.record("miscdata").contains("acctid"));
}

TEST(Databases, NewUserDefinedTablesStartWithOneEmptyRowOfDescriptions)
{
    DataFolder folder;
    for (const char *file : {"ap.mdb", "emp.mdb", "master.mdb"}) {
        if (QString::fromLatin1(file) != QLatin1String("ap.mdb"))
            folder.createDatabase(QString::fromLatin1(file));
        EXPECT_EQ(folder.scalar(file, "select count(*) from miscinfo").toInt(), 1) << file;
        EXPECT_EQ(folder.scalar(file, "select miscid from miscinfo").toInt(), 1) << file;
        EXPECT_TRUE(folder.scalar(file, "select miscdesc1 from miscinfo").isNull()) << file;
        EXPECT_EQ(folder.scalar(file, "select count(*) from miscdata").toInt(), 0) << file;
    }
}

TEST(Databases, AUserDefinedTableAddedToAnOlderFileGetsItsRowAndKeepsAnExistingOne)
{
    DataFolder folder;
    folder.exec("ap.mdb", "update miscinfo set miscdesc1 = 'Insurance'");
    folder.exec("ap.mdb", "drop table miscinfo");
    folder.exec("ap.mdb", "delete from schema_version");
    {
        Databases dbs;
        dbs.open("ap.mdb");
        EXPECT_EQ(dbs.scalar("ap.mdb", "select count(*) from miscinfo").toInt(), 1);
    }
    folder.exec("ap.mdb", "update miscinfo set miscdesc1 = 'Insurance'");
    folder.exec("ap.mdb", "delete from schema_version");
    Databases dbs;
    dbs.open("ap.mdb");
    EXPECT_EQ(dbs.scalar("ap.mdb", "select count(*) from miscinfo").toInt(), 1);
    EXPECT_EQ(dbs.scalar("ap.mdb", "select miscdesc1 from miscinfo").toString(), "Insurance");
}

TEST(Databases, LookupAndListQueriesUseAnIndex)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    Databases dbs;
    const char *queries[] = {
        "select * from vendors where vendname >= 'M' order by vendname",
        "select * from vendors where vendcontact >= 'M' order by vendcontact",
        "select * from vendors where vendglacct = 5000 order by vendname",
        "select * from vendors where vendnumber >=250 order by vendnumber",
        "select * from invoices where vendnumber = 1 and invstatus > 0 and invstatus <= 3 order by "
        "invdate",
        "select * from invoices where vendnumber = 1 and invchecknumber > 0 order by invdate desc",
        "select * from invoices where invnumber = 'X'",
        "select * from invoices where invchecknumber = 1001",
        "select * from invoices where invproduct >= 'P' order by invproduct",
        "select * from checks where chkpayeenum = 1 order by chkdate desc",
    };
    for (const char *sql : queries) {
        QSqlQuery q = dbs.select("ap.mdb", QStringLiteral("explain query plan ") + sql);
        QString plan;
        while (q.next())
            plan += q.value(3).toString() + ";";
        EXPECT_TRUE(plan.contains("USING INDEX") || plan.contains("USING COVERING INDEX"))
            << sql << " -> " << plan.toStdString();
        EXPECT_FALSE(plan.contains("USE TEMP B-TREE")) << sql << " -> " << plan.toStdString();
    }
}

TEST(Databases, AFileOfTheFirstLayoutLosesTheIndexesThatMadeListsSort)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    folder.exec(
        "ap.mdb",
        "create index ix_invoices_vendor_status on invoices (vendnumber, invstatus, invdate)");
    folder.exec("ap.mdb", "update schema_version set version = 1");
    Databases dbs;
    EXPECT_EQ(
        dbs.scalar("ap.mdb",
                   "select count(*) from sqlite_master where name = 'ix_invoices_vendor_status'")
            .toInt(),
        0);
    EXPECT_EQ(dbs.scalar("ap.mdb", "select version from schema_version").toInt(),
              Schema::currentVersion);
    EXPECT_EQ(
        dbs.scalar(
               "ap.mdb",
               "select count(*) from sqlite_master where name = 'ix_invoices_vendor_date_amount'")
            .toInt(),
        1);
}

TEST(Databases, FilesRunInWriteAheadLogMode)
{
    SQLITE_FILES_ONLY();
    DataFolder folder;
    Databases dbs;
    EXPECT_EQ(dbs.scalar("ap.mdb", "pragma journal_mode").toString(), "wal");
}

TEST(Databases, ExecuteRefusesABadStatementWithAnEngineError)
{
    DataFolder folder;
    Databases dbs;
    try {
        dbs.execute("ap.mdb", "update nosuchtable set a = 1");
        FAIL() << "no error";
    } catch (const DbError &e) {
        EXPECT_EQ(e.code(), DbError::NoSuchTable);
    }
}

TEST(Databases, ClosingLetsGoOfTheFile)
{
    DataFolder folder;
    Databases dbs;
    dbs.open("ap.mdb");
    dbs.openReader("ap.mdb", "reader");
    EXPECT_TRUE(dbs.isOpen("ap.mdb"));
    dbs.closeAll();
    EXPECT_FALSE(dbs.isOpen("ap.mdb"));
    EXPECT_EQ(dbs.openCount(), 2);
}

} // namespace
