#include "support/DataFolder.h"

#include "data/Databases.h"

#include <QDir>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

namespace {
int s_connection = 0;

template <typename Work> void withConnection(const QString &path, Work work)
{
    const QString name = QStringLiteral("test-folder-%1").arg(++s_connection);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(path);
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
        EXPECT_TRUE(db.open()) << path.toStdString();
        work(db);
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
}
} // namespace

DataFolder::DataFolder() : m_previous(QDir::currentPath())
{
    QDir::setCurrent(m_dir.path());
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

DataFolder::~DataFolder()
{
    QDir::setCurrent(m_previous);
}

QString DataFolder::file(const QString &name) const
{
    return QDir(m_dir.path()).absoluteFilePath(name);
}

void DataFolder::createDatabase(const QString &name)
{
    ASSERT_NO_THROW(Databases::create(name));
}

void DataFolder::exec(const QString &fileName, const QString &statement)
{
    withConnection(file(fileName), [&](QSqlDatabase &db) {
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec(statement))
            << q.lastError().text().toStdString() << " in " << statement.toStdString();
    });
}

QVariant DataFolder::scalar(const QString &fileName, const QString &statement)
{
    QVariant value;
    withConnection(file(fileName), [&](QSqlDatabase &db) {
        QSqlQuery q(db);
        EXPECT_TRUE(q.exec(statement)) << q.lastError().text().toStdString();
        if (q.next())
            value = q.value(0);
    });
    return value;
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
