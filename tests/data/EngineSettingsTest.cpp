#include "data/DbError.h"
#include "data/EngineSettings.h"
#include "data/PostgresDialect.h"
#include "data/SqliteDialect.h"
#include "support/DataFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(EngineSettings, AllFourSettingsAreRead)
{
    const EngineSettings s = EngineSettings::parse(
        "; the office server\n[postgresql]\nhost = db.office.lan\nport=5433\n"
        "database=velmora\nuser=anne\n");
    EXPECT_EQ(s.error, QString());
    EXPECT_EQ(s.host, "db.office.lan");
    EXPECT_EQ(s.port, 5433);
    EXPECT_EQ(s.database, "velmora");
    EXPECT_EQ(s.user, "anne");
}

TEST(EngineSettings, PortAndUserMayBeLeftOut)
{
    const EngineSettings s =
        EngineSettings::parse("# comment\n[PostgreSQL]\nhost=/run/postgresql\ndatabase=velmora\n");
    EXPECT_EQ(s.error, QString());
    EXPECT_EQ(s.port, 5432);
    EXPECT_EQ(s.user, QString());
}

TEST(EngineSettings, APasswordIsRefusedAndNamedByItsLine)
{
    const EngineSettings s = EngineSettings::parse(
        "[postgresql]\nhost=h\ndatabase=d\npassword=secret\n");
    EXPECT_EQ(s.error, "database.ini, line 4: a password is never kept in the data folder; keep "
                       "it in ~/.pgpass or the PGPASSWORD environment variable.");
}

TEST(EngineSettings, AnUnknownSettingIsNamed)
{
    EXPECT_EQ(EngineSettings::parse("[postgresql]\nhots=h\n").error,
              "database.ini, line 2: unknown setting 'hots'.");
}

TEST(EngineSettings, PortsOneAndSixtyFiveThousandFiveHundredThirtyFiveAreTheBounds)
{
    const auto port = [](const char *value) {
        return EngineSettings::parse(QStringLiteral("[postgresql]\nhost=h\ndatabase=d\nport=") +
                                     QLatin1String(value));
    };
    EXPECT_EQ(port("1").error, QString());
    EXPECT_EQ(port("1").port, 1);
    EXPECT_EQ(port("65535").error, QString());
    EXPECT_EQ(port("0").error, "database.ini, line 4: the port is a number from 1 to 65535.");
    EXPECT_EQ(port("65536").error, "database.ini, line 4: the port is a number from 1 to 65535.");
    EXPECT_EQ(port("54x").error, "database.ini, line 4: the port is a number from 1 to 65535.");
}

TEST(EngineSettings, ALineWithoutEqualsSignIsRefused)
{
    EXPECT_EQ(EngineSettings::parse("[postgresql]\nhost h\n").error,
              "database.ini, line 2: a setting is written as name=value.");
}

TEST(EngineSettings, SettingsOutsideTheSectionAreRefused)
{
    EXPECT_EQ(EngineSettings::parse("host=h\n").error,
              "database.ini, line 1: settings go under the line [postgresql].");
    EXPECT_EQ(EngineSettings::parse("[mysql]\nhost=h\n").error,
              "database.ini, line 1: the only section is [postgresql].");
}

TEST(EngineSettings, HostAndDatabaseAreBothNeeded)
{
    EXPECT_EQ(EngineSettings::parse("[postgresql]\nhost=h\n").error,
              "database.ini names no host or no database.");
    EXPECT_EQ(EngineSettings::parse("[postgresql]\ndatabase=d\n").error,
              "database.ini names no host or no database.");
    EXPECT_EQ(EngineSettings::parse("").error, "database.ini has no section [postgresql].");
}

TEST(EngineSettings, AFolderWithoutTheFileUsesTheSqliteFiles)
{
    QTemporaryDir dir;
    const QString before = QDir::currentPath();
    QDir::setCurrent(dir.path());
    EXPECT_FALSE(EngineSettings::ofDataFolder().has_value());
    EXPECT_EQ(Dialect::forDataFolder()->name(), "SQLite");
    QFile file(dir.filePath("database.ini"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[postgresql]\nhost=h\ndatabase=d\n");
    file.close();
    EXPECT_EQ(Dialect::forDataFolder()->name(), "PostgreSQL");
    QDir::setCurrent(before);
}

TEST(PostgresDialect, EachFileIsASchemaNamedAfterIt)
{
    EXPECT_EQ(PostgresDialect::schemaOf("ap.mdb"), "ap_mdb");
    EXPECT_EQ(PostgresDialect::schemaOf("USER.MDB"), "user_mdb");
    EXPECT_EQ(PostgresDialect::schemaOf("canada.mdb"), "canada_mdb");
}

TEST(PostgresDialect, AMalformedSettingsFileIsReportedWhenADatabaseIsOpened)
{
    PostgresDialect dialect(EngineSettings::parse("[postgresql]\nhost=h\ndatabase=d\nport=x\n"));
    try {
        dialect.connect("ap.mdb", "malformed-settings", 100, true);
        FAIL() << "no error";
    } catch (const DbError &error) {
        EXPECT_EQ(error.code(), DbError::FileNotFound);
        EXPECT_EQ(error.text(), "database.ini, line 4: the port is a number from 1 to 65535.");
    }
    EXPECT_FALSE(dialect.exists("ap.mdb"));
}

TEST(PostgresDialect, MoneyIsExactToFourDecimalsAndTextIsCaseBlind)
{
    PostgresDialect dialect(EngineSettings{});
    EXPECT_EQ(dialect.columnType(Schema::Kind::Currency), "numeric(19,4)");
    EXPECT_EQ(dialect.columnType(Schema::Kind::Text), "citext");
    EXPECT_EQ(dialect.columnType(Schema::Kind::Memo), "text");
    EXPECT_EQ(dialect.columnType(Schema::Kind::Long), "bigint");
    EXPECT_EQ(dialect.columnType(Schema::Kind::Date), "bigint");
    EXPECT_EQ(dialect.columnType(Schema::Kind::Number), "double precision");
}

TEST(PostgresDialect, AnEditLocksItsRowAndSqliteLocksTheFileInstead)
{
    EXPECT_EQ(PostgresDialect(EngineSettings{}).lockRow("vendors", "vendnumber"),
              "select vendnumber from vendors where vendnumber = ? for update");
    EXPECT_EQ(SqliteDialect().lockRow("vendors", "vendnumber"), QString());
    EXPECT_EQ(SqliteDialect().beginWrite(false, -1, 3000), QStringList{"begin immediate"});
    EXPECT_EQ(PostgresDialect(EngineSettings{}).beginWrite(false, 250, 3000),
              (QStringList{"begin; set local lock_timeout = 250"}));
}

} // namespace

namespace {

QString fixedTies(const QString &statement)
{
    return PostgresDialect(EngineSettings{}).withFixedTies(statement);
}

TEST(PostgresDialect, TiesOfOneTablesOrderAreSettledByTheRowId)
{
    EXPECT_EQ(fixedTies("select * from vendors where vendname >= 'a' order by vendname"),
              "select * from vendors where vendname >= 'a' order by vendname, vendors.ctid");
    EXPECT_EQ(fixedTies("select * from vendors order by vendname desc;"),
              "select * from vendors order by vendname desc, vendors.ctid");
}

TEST(PostgresDialect, TiesUnderATableAliasUseTheAlias)
{
    EXPECT_EQ(fixedTies("select v.* from vendors v order by v.vendname"),
              "select v.* from vendors v order by v.vendname, v.ctid");
    EXPECT_EQ(fixedTies("select i.* from invoices as i where i.invvendor = 3 order by invdate"),
              "select i.* from invoices as i where i.invvendor = 3 order by invdate, i.ctid");
}

TEST(PostgresDialect, StatementsWithoutOrderOrOfSeveralTablesAreLeftAsTheyAre)
{
    for (const char *sql :
         {"select * from vendors", "select * from vendors where vendname = 'a'",
          "select * from vendors v join invoices i on i.invvendor = v.vendnumber order by 1",
          "select * from vendors, invoices order by vendname",
          "select * from vendors natural join invoices order by vendname",
          "select * from vendors order by vendname limit 5",
          "select vendstate, count(*) from vendors group by vendstate order by vendstate",
          "select * from (select * from vendors) as v order by vendname"})
        EXPECT_EQ(fixedTies(sql), sql) << sql;
}

} // namespace

namespace {

QString mapped(const QString &statement)
{
    return PostgresDialect(EngineSettings{}).map(statement);
}

TEST(PostgresDialect, NullsComeFirstAscendingAndLastDescendingAsOnTheFiles)
{
    EXPECT_EQ(mapped("select * from invoices order by invdate"),
              "select * from invoices order by invdate nulls first");
    EXPECT_EQ(mapped("select * from invoices order by invdate asc, invnumber DESC"),
              "select * from invoices order by invdate asc nulls first, invnumber DESC nulls last");
    EXPECT_EQ(mapped("select * from invoices order by vendnumber, coalesce(invdate, 0) limit 5"),
              "select * from invoices order by vendnumber nulls first, coalesce(invdate, 0) "
              "nulls first limit 5");
}

TEST(PostgresDialect, AnOrderThatPlacesItsNullsOrNoOrderIsLeftAlone)
{
    EXPECT_EQ(mapped("select * from invoices order by invdate nulls last"),
              "select * from invoices order by invdate nulls last");
    EXPECT_EQ(mapped("select * from invoices where invnumber = 'a, b order by x'"),
              "select * from invoices where invnumber = 'a, b order by x'");
}

TEST(PostgresDialect, IndexColumnsPutNullsFirst)
{
    EXPECT_EQ(PostgresDialect(EngineSettings{}).indexColumns("vendnumber, invdate"),
              "vendnumber nulls first, invdate nulls first");
    EXPECT_EQ(SqliteDialect().indexColumns("vendnumber, invdate"), "vendnumber, invdate");
}

} // namespace
