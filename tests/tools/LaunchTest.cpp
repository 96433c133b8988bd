#include "DemoCompany.h"
#include "LaunchWindow.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

// A small demo company, made once for all the tests; each test that changes it gets a copy.
class LaunchTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_company = std::make_unique<QTemporaryDir>();
        Demo::Options options;
        options.folder = s_company->filePath(QStringLiteral("demo"));
        options.vendors = 3;
        options.invoices = 6;
        options.year = 2026;
        Demo::generate(options);
    }
    static void TearDownTestSuite() { s_company.reset(); }

    static QString demoFolder() { return s_company->filePath(QStringLiteral("demo")); }

    // A copy of the demo company without the site setting that offers the staff list.
    QString companyWithoutChoice()
    {
        const QString folder = m_dir.filePath(QStringLiteral("company"));
        QDir().mkpath(folder);
        // The database files without the engine's log and index that earlier reads left.
        for (const QString &name : QDir(demoFolder()).entryList(QDir::Files)) {
            if (!name.endsWith(QLatin1String("-shm")) && !name.endsWith(QLatin1String("-wal")))
                QFile::copy(QDir(demoFolder()).filePath(name), QDir(folder).filePath(name));
        }
        QFile::remove(QDir(folder).filePath(QStringLiteral("stafflist.dat")));
        return folder;
    }

    // A program in place of the module: it records its argument and its current folder and
    // ends with the given exit code.
    QString fakeModule(int exitCode = 0)
    {
        const QString path = m_dir.filePath(QStringLiteral("module.sh"));
        QFile script(path);
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write(QStringLiteral("#!/bin/sh\n"
                                    "printf '%s\\n%s\\n' \"$1\" \"$(pwd -P)\" > '%1.part'\n"
                                    "mv '%1.part' '%1'\n"
                                    "exit %2\n")
                         .arg(recordPath())
                         .arg(exitCode)
                         .toUtf8());
        script.close();
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
        return path;
    }

    QString recordPath() const { return m_dir.filePath(QStringLiteral("started")); }

    // The argument and the folder the module was started with; empty when it never started.
    QStringList waitForModule()
    {
        if (!QTest::qWaitFor([&] { return QFile::exists(recordPath()); }, 10000))
            return {};
        QFile record(recordPath());
        if (!record.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(record.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    std::unique_ptr<LaunchWindow> launcher(const QString &login, const QString &module,
                                           const QString &chosenFolder = {})
    {
        LaunchServices services;
        services.settings = &m_settings;
        services.loginName = login;
        services.modulePath = module;
        services.chooseFolder = [this, chosenFolder](QWidget *, const QString &start) {
            m_chooserStart = start;
            return chosenFolder;
        };
        auto window = std::make_unique<LaunchWindow>(services);
        window->show();
        return window;
    }

    static QString status(LaunchWindow &w) { return w.findChild<QLabel *>("status")->text(); }
    static QListWidget *staffList(LaunchWindow &w) { return w.findChild<QListWidget *>("staff"); }
    static QPushButton *signInButton(LaunchWindow &w)
    {
        return w.findChild<QPushButton *>("signIn");
    }
    static void browse(LaunchWindow &w)
    {
        QTest::mouseClick(w.findChild<QPushButton *>("browse"), Qt::LeftButton);
    }
    static QStringList listed(LaunchWindow &w)
    {
        QStringList names;
        for (int row = 0; row < staffList(w)->count(); ++row)
            names << staffList(w)->item(row)->text();
        return names;
    }
    static void choose(LaunchWindow &w, const QString &name)
    {
        const QList<QListWidgetItem *> items = staffList(w)->findItems(name, Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1) << qPrintable(name);
        const QRect place = staffList(w)->visualItemRect(items.first());
        QTest::mouseClick(staffList(w)->viewport(), Qt::LeftButton, {}, place.center());
    }
    static QString canonical(const QString &folder) { return QDir(folder).canonicalPath(); }

    static std::unique_ptr<QTemporaryDir> s_company;
    QTemporaryDir m_dir;
    QSettings m_settings{m_dir.filePath(QStringLiteral("launch.ini")), QSettings::IniFormat};
    QString m_chooserStart;
};

std::unique_ptr<QTemporaryDir> LaunchTest::s_company;

TEST_F(LaunchTest, ChoosingTheDemoFolderAndDemoStartsTheModuleThereWithVDR99DEMO)
{
    auto window = launcher(QStringLiteral("somebody"), fakeModule(), demoFolder());
    QSignalSpy finished(window.get(), &LaunchWindow::finished);
    browse(*window);
    choose(*window, QStringLiteral("DEMO"));
    QTest::mouseClick(signInButton(*window), Qt::LeftButton);

    EXPECT_EQ(waitForModule(), QStringList({"VDR99DEMO", canonical(demoFolder())}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return finished.count() == 1; }, 10000));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(LaunchTest, TheDemoCompanyOffersEveryNameOfItsStaffList)
{
    auto window = launcher(QStringLiteral("somebody"), fakeModule(), demoFolder());
    browse(*window);
    EXPECT_EQ(listed(*window), QStringList({"CLERK", "DEMO", "MANAGER"}));
    EXPECT_TRUE(staffList(*window)->isEnabled());
    EXPECT_EQ(status(*window), QStringLiteral("Choose your name and sign in."));
    choose(*window, QStringLiteral("CLERK"));
    QTest::mouseClick(signInButton(*window), Qt::LeftButton);
    EXPECT_EQ(waitForModule().value(0), QStringLiteral("VDR20CLERK"));
}

TEST_F(LaunchTest, OnTheDemoCompanyTheLoginNamesRowIsChosenFirst)
{
    auto window = launcher(QStringLiteral("manager"), fakeModule(), demoFolder());
    browse(*window);
    ASSERT_NE(staffList(*window)->currentItem(), nullptr);
    EXPECT_EQ(staffList(*window)->currentItem()->text(), QStringLiteral("MANAGER"));
}

TEST_F(LaunchTest, WithoutTheSiteSettingTheLoginNameSignsIn)
{
    auto window = launcher(QStringLiteral("Manager"), fakeModule(), companyWithoutChoice());
    browse(*window);
    EXPECT_EQ(listed(*window), QStringList({"MANAGER"}));
    EXPECT_FALSE(staffList(*window)->isEnabled());
    EXPECT_EQ(status(*window), QStringLiteral("You sign in as MANAGER."));
    QTest::mouseClick(signInButton(*window), Qt::LeftButton);
    EXPECT_EQ(waitForModule().value(0), QStringLiteral("VDR80MANAGER"));
}

TEST_F(LaunchTest, ALoginNameWithNoStaffRowIsToldSoAndCannotSignIn)
{
    auto window = launcher(QStringLiteral("jsmith"), fakeModule(), companyWithoutChoice());
    browse(*window);
    EXPECT_EQ(status(*window),
              QStringLiteral("There is no staff user JSMITH in this company, so you cannot sign "
                             "in here. See system administrator."));
    EXPECT_TRUE(listed(*window).isEmpty());
    EXPECT_FALSE(signInButton(*window)->isEnabled());
    QTest::mouseClick(signInButton(*window), Qt::LeftButton);
    QTest::keyClick(staffList(*window), Qt::Key_Return);
    QTest::qWait(200);
    EXPECT_FALSE(QFile::exists(recordPath()));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(LaunchTest, TheChosenFolderIsRememberedForTheNextStart)
{
    {
        auto first = launcher(QStringLiteral("somebody"), fakeModule(), demoFolder());
        browse(*first);
    }
    EXPECT_EQ(m_settings.value(LaunchWindow::folderKey()).toString(), demoFolder());
    auto second = launcher(QStringLiteral("somebody"), fakeModule());
    EXPECT_EQ(second->findChild<QLineEdit *>("folder")->text(), demoFolder());
    EXPECT_EQ(listed(*second), QStringList({"CLERK", "DEMO", "MANAGER"}));
    browse(*second);
    EXPECT_EQ(m_chooserStart, demoFolder()) << "the folder dialog opens at the remembered folder";
}

TEST_F(LaunchTest, AFolderWithoutAStaffListIsNamedAndNotRemembered)
{
    m_settings.setValue(LaunchWindow::folderKey(), demoFolder());
    const QString empty = m_dir.filePath(QStringLiteral("empty"));
    QDir().mkpath(empty);
    auto window = launcher(QStringLiteral("somebody"), fakeModule(), empty);
    browse(*window);
    EXPECT_EQ(status(*window),
              QStringLiteral("There is no staff list (user.mdb) in %1.").arg(empty));
    EXPECT_FALSE(signInButton(*window)->isEnabled());
    EXPECT_TRUE(listed(*window).isEmpty());
    EXPECT_EQ(m_settings.value(LaunchWindow::folderKey()).toString(), demoFolder());
}

TEST_F(LaunchTest, AStaffListThatIsNoDatabaseIsNamed)
{
    const QString folder = m_dir.filePath(QStringLiteral("broken"));
    QDir().mkpath(folder);
    QFile file(QDir(folder).filePath(QStringLiteral("user.mdb")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    auto window = launcher(QStringLiteral("somebody"), fakeModule(), folder);
    browse(*window);
    EXPECT_TRUE(status(*window).startsWith(
        QStringLiteral("The staff list %1/user.mdb cannot be").arg(folder)))
        << qPrintable(status(*window));
    EXPECT_FALSE(signInButton(*window)->isEnabled());
    EXPECT_EQ(file.size(), 4096) << "the file stays as it was";
}

// Every file of the folder with a digest of its bytes, one "name digest" text each.
std::vector<std::string> folderContents(const QString &folder)
{
    std::vector<std::string> contents;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        const QByteArray digest =
            file.open(QIODevice::ReadOnly)
                ? QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256).toHex()
                : QByteArray("unreadable");
        contents.push_back(
            (QDir(folder).relativeFilePath(it.filePath()) + " " + digest).toStdString());
    }
    std::sort(contents.begin(), contents.end());
    return contents;
}

// The engine's reader may add the shared-memory index of user.mdb's write-ahead log (and an
// empty log) beside it; every file that was there keeps its bytes.
TEST_F(LaunchTest, SigningInLeavesEveryFileOfTheCompanyAsItWas)
{
    const QString folder = companyWithoutChoice();
    const auto before = folderContents(folder);
    ASSERT_TRUE(std::any_of(before.begin(), before.end(), [](const std::string &entry) {
        return entry.rfind("user.mdb ", 0) == 0;
    }));
    auto window = launcher(QStringLiteral("demo"), fakeModule(), folder);
    QSignalSpy finished(window.get(), &LaunchWindow::finished);
    browse(*window);
    QTest::mouseClick(signInButton(*window), Qt::LeftButton);
    ASSERT_EQ(waitForModule().value(0), QStringLiteral("VDR99DEMO"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return finished.count() == 1; }, 10000));
    window.reset();

    std::vector<std::string> after = folderContents(folder);
    const std::string emptyLog =
        "user.mdb-wal " +
        QCryptographicHash::hash({}, QCryptographicHash::Sha256).toHex().toStdString();
    std::erase_if(after, [&](const std::string &entry) {
        return entry == emptyLog || entry.rfind("user.mdb-shm ", 0) == 0;
    });
    EXPECT_EQ(after, before);
}

TEST_F(LaunchTest, AModuleThatEndsWithoutStartingBringsTheLauncherBack)
{
    auto window = launcher(QStringLiteral("somebody"), fakeModule(3), demoFolder());
    QSignalSpy finished(window.get(), &LaunchWindow::finished);
    browse(*window);
    QTest::mouseClick(signInButton(*window), Qt::LeftButton);
    EXPECT_EQ(waitForModule().value(0), QStringLiteral("VDR20CLERK"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->isVisible(); }, 10000));
    EXPECT_EQ(status(*window), QStringLiteral("A/P Master ended without starting (exit code 3)."));
    EXPECT_EQ(finished.count(), 0);
}

TEST_F(LaunchTest, AModuleProgramThatCannotStartIsNamed)
{
    const QString missing = m_dir.filePath(QStringLiteral("no-such-module"));
    auto window = launcher(QStringLiteral("demo"), missing, demoFolder());
    browse(*window);
    QTest::mouseClick(signInButton(*window), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->isVisible(); }, 10000));
    EXPECT_TRUE(status(*window).startsWith(
        QStringLiteral("A/P Master could not be started (%1): ").arg(missing)))
        << qPrintable(status(*window));
}

} // namespace
