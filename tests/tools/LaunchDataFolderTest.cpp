#include "LaunchWindow.h"

#include "support/DataFolder.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

// The launcher on a company data folder as the module's tests make it: SQLite files, or on the
// server run a folder whose database.ini names a database of the test server.
class LaunchDataFolderTest : public ::testing::Test {
protected:
    std::unique_ptr<LaunchWindow> launcher(const QString &login, const QString &folder)
    {
        LaunchServices services;
        services.settings = &m_settings;
        services.loginName = login;
        services.modulePath = fakeModule();
        services.chooseFolder = [folder](QWidget *, const QString &) { return folder; };
        auto window = std::make_unique<LaunchWindow>(services);
        window->show();
        QTest::mouseClick(window->findChild<QPushButton *>("browse"), Qt::LeftButton);
        return window;
    }

    // A program in place of the module: it records its argument and its current folder.
    QString fakeModule()
    {
        const QString path = m_dir.filePath(QStringLiteral("module.sh"));
        QFile script(path);
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write(QStringLiteral("#!/bin/sh\n"
                                    "printf '%s\\n%s\\n' \"$1\" \"$(pwd -P)\" > '%1.part'\n"
                                    "mv '%1.part' '%1'\n")
                         .arg(recordPath())
                         .toUtf8());
        script.close();
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
        return path;
    }
    QString recordPath() const { return m_dir.filePath(QStringLiteral("started")); }
    QStringList waitForModule()
    {
        if (!QTest::qWaitFor([&] { return QFile::exists(recordPath()); }, 10000))
            return {};
        QFile record(recordPath());
        if (!record.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(record.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    static QString status(LaunchWindow &w) { return w.findChild<QLabel *>("status")->text(); }
    static QStringList listed(LaunchWindow &w)
    {
        QStringList names;
        const auto *list = w.findChild<QListWidget *>("staff");
        for (int row = 0; row < list->count(); ++row)
            names << list->item(row)->text();
        return names;
    }

    QTemporaryDir m_dir;
    QSettings m_settings{m_dir.filePath(QStringLiteral("launch.ini")), QSettings::IniFormat};
};

TEST_F(LaunchDataFolderTest, TheStaffListOfTheFoldersEngineSignsTheLoginNameIn)
{
    DataFolder company;
    auto window = launcher(QStringLiteral("anne"), company.path());
    EXPECT_EQ(status(*window), QStringLiteral("You sign in as ANNE."));
    EXPECT_EQ(listed(*window), QStringList({"ANNE"}));
    QTest::mouseClick(window->findChild<QPushButton *>("signIn"), Qt::LeftButton);
    EXPECT_EQ(waitForModule(), QStringList({"VDR75ANNE", QDir(company.path()).canonicalPath()}));
}

TEST_F(LaunchDataFolderTest, ACompanyWithoutAStaffListIsNamedOnEitherEngine)
{
    DataFolder company;
    company.removeDatabase(QStringLiteral("user.mdb"));
    auto window = launcher(QStringLiteral("anne"), company.path());
    EXPECT_EQ(status(*window), QStringLiteral("There is no staff list (user.mdb) in %1.")
                                   .arg(QDir(company.path()).absolutePath()));
    EXPECT_FALSE(window->findChild<QPushButton *>("signIn")->isEnabled());
}

TEST_F(LaunchDataFolderTest, AServerThatCannotBeReachedIsNamedNotTakenForAMissingList)
{
    const QString folder = m_dir.filePath(QStringLiteral("company"));
    QDir().mkpath(folder);
    QFile settings(QDir(folder).filePath(QStringLiteral("database.ini")));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write("[postgresql]\nhost=" + m_dir.filePath(QStringLiteral("no-server")).toUtf8() +
                   "\ndatabase=velmora\n");
    settings.close();
    auto window = launcher(QStringLiteral("anne"), folder);
    EXPECT_TRUE(status(*window).startsWith(
        QStringLiteral("The staff list %1/user.mdb cannot be opened: ").arg(folder)))
        << qPrintable(status(*window));
    EXPECT_FALSE(window->findChild<QPushButton *>("signIn")->isEnabled());
}

} // namespace
