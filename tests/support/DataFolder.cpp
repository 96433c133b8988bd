#include "support/DataFolder.h"

#include "data/Databases.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

#include <gtest/gtest.h>

namespace {
int s_connection = 0;

// The throwaway PostgreSQL server of a test run, when the tests run on that engine.
QString serverHost()
{
    return qEnvironmentVariable("APMASTER_TEST_POSTGRES_HOST");
}

bool onPostgres()
{
    return qEnvironmentVariable("APMASTER_TEST_ENGINE") == QLatin1String("postgres");
}

void openOnServer(QSqlDatabase &db, const QString &database)
{
    db.setHostName(serverHost());
    db.setPort(qEnvironmentVariableIntValue("APMASTER_TEST_POSTGRES_PORT") > 0
                   ? qEnvironmentVariableIntValue("APMASTER_TEST_POSTGRES_PORT")
                   : 5432);
    db.setUserName(QStringLiteral("postgres"));
    db.setDatabaseName(database);
    EXPECT_TRUE(db.open()) << db.lastError().text().toStdString();
    QSqlQuery(db).exec(QStringLiteral("set client_min_messages = warning"));
}

// A connection of the test's own to the database of a file name (an SQLite file, or its schema
// on the server), closed when the work is done.
template <typename Work>
void withConnection(const QString &database, const QString &path, Work work)
{
    const QString name = QStringLiteral("test-folder-%1").arg(++s_connection);
    {
        if (database.isEmpty()) {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            db.setDatabaseName(path);
            db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
            EXPECT_TRUE(db.open()) << path.toStdString();
            work(db);
            db.close();
        } else {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
            openOnServer(db, database);
            QString schema = QFileInfo(path).fileName().toLower();
            schema.replace(QLatin1Char('.'), QLatin1Char('_'));
            if (!schema.isEmpty())
                QSqlQuery(db).exec(QStringLiteral("set search_path to %1, public").arg(schema));
            work(db);
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(name);
}

// Runs one statement on the server's maintenance database.
void onServer(const QString &statement)
{
    withConnection(QStringLiteral("postgres"), QString(), [&](QSqlDatabase &db) {
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec(statement)) << q.lastError().text().toStdString();
    });
}
} // namespace

DataFolder::DataFolder(Start start) : m_previous(QDir::currentPath())
{
    QDir::setCurrent(m_dir.path());
    if (onPostgres()) {
        if (serverHost().isEmpty())
            ADD_FAILURE() << "These tests run on PostgreSQL, but APMASTER_TEST_POSTGRES_HOST "
                             "names no server: run them through scripts/test.sh.";
        static int databases = 0;
        m_database = QStringLiteral("apmaster_test_%1_%2")
                         .arg(QCoreApplication::applicationPid())
                         .arg(++databases);
        onServer(QStringLiteral("drop database if exists %1").arg(m_database));
        onServer(QStringLiteral("create database %1").arg(m_database));
        writeFile(QStringLiteral("database.ini"),
                  QStringLiteral("[postgresql]\nhost=%1\nport=%2\ndatabase=%3\nuser=postgres\n")
                      .arg(serverHost())
                      .arg(qEnvironmentVariableIntValue("APMASTER_TEST_POSTGRES_PORT") > 0
                               ? qEnvironmentVariableIntValue("APMASTER_TEST_POSTGRES_PORT")
                               : 5432)
                      .arg(m_database)
                      .toUtf8());
    }
    if (start == Start::Empty)
        return;
    for (const char *name : {"ap.mdb", "gl.mdb", "config.mdb", "user.mdb"})
        createDatabase(QString::fromLatin1(name));
    exec(QStringLiteral("config.mdb"),
         QStringLiteral("insert into ap (apaccess0, apaccess1, apaccess2, apaccess3, pnetyesno, "
                        "f1key, f6key) values (0, 0, 0, 0, 'N', 'Springfield', '555-')"));
    exec(
        QStringLiteral("user.mdb"),
        QStringLiteral("insert into staff (username, location, work, sysuser, localdrive, aplevel) "
                       "values ('ANNE', 'Main menu', 'x', 3, '', 75), "
                       "('DEMO', 'Main menu', 'x', 1, '', 99)"));
    exec(QStringLiteral("gl.mdb"),
         QStringLiteral(
             "insert into gl0 (glacctnum, glacctname, glstatementdesc, glaccttype, gllevel) "
             "values (1000, 'Cash', '', 1, 0), (5000, 'Office supplies', "
             "'Office supplies and postage', 5, 0), (5100, 'Hall rental', null, 5, 0)"));
}

bool DataFolder::onPostgres()
{
    return ::onPostgres();
}

DataFolder::~DataFolder()
{
    QDir::setCurrent(m_previous);
    if (!m_database.isEmpty())
        onServer(QStringLiteral("drop database if exists %1 with (force)").arg(m_database));
}

QString DataFolder::file(const QString &name) const
{
    return QDir(m_dir.path()).absoluteFilePath(name);
}

void DataFolder::createDatabase(const QString &name)
{
    ASSERT_NO_THROW(Databases::create(name));
}

void DataFolder::removeDatabase(const QString &name)
{
    if (m_database.isEmpty()) {
        QFile::remove(file(name));
        return;
    }
    QString schema = name.toLower();
    schema.replace(QLatin1Char('.'), QLatin1Char('_'));
    withConnection(m_database, QString(), [&](QSqlDatabase &db) {
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec(QStringLiteral("drop schema %1 cascade").arg(schema)))
            << q.lastError().text().toStdString();
    });
}

void DataFolder::exec(const QString &fileName, const QString &statement)
{
    withConnection(m_database, file(fileName), [&](QSqlDatabase &db) {
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec(statement))
            << q.lastError().text().toStdString() << " in " << statement.toStdString();
    });
}

QVariant DataFolder::scalar(const QString &fileName, const QString &statement)
{
    QVariant value;
    withConnection(m_database, file(fileName), [&](QSqlDatabase &db) {
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec(statement)) << q.lastError().text().toStdString();
        if (q.next())
            value = q.value(0);
    });
    return value;
}

QString DataFolder::otherProgram(const QString &fileName, const QString &statement,
                                 QString *output) const
{
    QProcess program;
    if (m_database.isEmpty()) {
        program.start(QStringLiteral("sqlite3"), {file(fileName), statement});
    } else {
        QString schema = fileName.toLower();
        schema.replace(QLatin1Char('.'), QLatin1Char('_'));
        program.start(QStringLiteral("psql"),
                      {"-X", "-q", "-t", "-A", "-v", "ON_ERROR_STOP=1", "-h", serverHost(), "-U",
                       "postgres", "-d", m_database, "-c",
                       QStringLiteral("set search_path to %1, public").arg(schema), "-c",
                       statement});
    }
    if (!program.waitForFinished(60000))
        return QStringLiteral("the program did not end: ") + program.errorString();
    if (output)
        *output = QString::fromUtf8(program.readAllStandardOutput()).trimmed();
    const QString errors = QString::fromUtf8(program.readAllStandardError());
    if (program.exitStatus() != QProcess::NormalExit || program.exitCode() != 0)
        return errors.isEmpty() ? QStringLiteral("exit code %1").arg(program.exitCode()) : errors;
    return {};
}

QString DataFolder::otherProgramRead(const QString &fileName, const QString &statement) const
{
    QString output;
    const QString errors = otherProgram(fileName, statement, &output);
    EXPECT_EQ(errors, QString()) << statement.toStdString();
    return output;
}

bool DataFolder::hasColumn(const QString &fileName, const QString &table, const QString &column)
{
    const QString statement =
        m_database.isEmpty()
            ? QStringLiteral("select count(*) from pragma_table_info('%1') where name = '%2'")
            : QStringLiteral("select count(*) from information_schema.columns where "
                             "table_schema = current_schema() and table_name = '%1' and "
                             "column_name = '%2'");
    return scalar(fileName, statement.arg(table, column)).toInt() == 1;
}

void DataFolder::writeFile(const QString &name, const QByteArray &contents)
{
    QFile f(file(name));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(contents);
}

void DataFolder::writeProgram(const QString &name, const QString &script)
{
    writeFile(name, ("#!/bin/sh\n" + script + "\n").toUtf8());
    QFile::setPermissions(file(name), QFile::permissions(file(name)) | QFileDevice::ExeOwner |
                                          QFileDevice::ExeUser);
}

QString DataFolder::readFile(const QString &name) const
{
    QFile f(file(name));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll());
}

bool DataFolder::waitForLine(const QString &name, int msecs) const
{
    return QTest::qWaitFor([&] { return readFile(name).endsWith('\n'); }, msecs);
}

void DataFolder::addVendor(int number, const QString &name)
{
    QString quoted = name;
    quoted.replace(QLatin1Char('\''), QStringLiteral("''"));
    exec(QStringLiteral("ap.mdb"),
         QStringLiteral(
             "insert into vendors (vendnumber, vendname, vend1099type, vendglacct, vendytd, "
             "vendbalcurrent, vendbal60, vendbal90) values (%1, '%2', 0, 5000, 0, 0, 0, 0)")
             .arg(number)
             .arg(quoted));
}
