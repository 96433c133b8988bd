// A data folder or a database file that this user may not write: the copy says so once at
// start-up, naming the file, and leaves nothing behind.
#include "support/DataFolder.h"
#include "support/ModuleCopy.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

// No permission stops root, so a test run by root runs the copy as the unprivileged "nobody".
QStringList unprivileged()
{
    if (geteuid() != 0)
        return {};
    return {QStringLiteral("setpriv"), QStringLiteral("--reuid=65534"),
            QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups")};
}

class ReadOnlyData : public ::testing::Test {
protected:
    DataFolder folder;
    QTemporaryDir locks;

    void SetUp() override
    {
        folder.addVendor(10, QStringLiteral("Ten Supplies"));
        const auto all = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                         QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        for (const QString &name : QDir(folder.path()).entryList(QDir::Files))
            QFile::setPermissions(folder.file(name), all);
        QFile::setPermissions(locks.path(),
                              all | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther);
    }
    void setFolderWritable(bool writable)
    {
        auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                           QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
        if (writable)
            permissions |= QFile::WriteGroup | QFile::WriteOther;
        QFile::setPermissions(folder.path(), permissions);
    }
    QStringList leftovers() const
    {
        return QDir(folder.path()).entryList({"*-wal", "*-shm", "*-journal"}, QDir::Files);
    }
};

TEST_F(ReadOnlyData, ReadOnlyApFileIsReportedOnceAndNothingIsLeftBehind)
{
    SQLITE_FILES_ONLY(); // file and folder modes
    setFolderWritable(true);
    QFile::setPermissions(folder.file("ap.mdb"),
                          QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    ModuleCopy anne(folder.path(), locks.path(), "VDR99ANNE",
                    QProcessEnvironment::systemEnvironment(), unprivileged());
    EXPECT_FALSE(anne.started());
    EXPECT_EQ(anne.exitCode(), 5);
    EXPECT_EQ(ModuleCopy::dialogs(anne.startLines()),
              QStringList{"Uh-oh...|The file '" + folder.file("ap.mdb") +
                          "' is read-only, so nothing could be saved in it. Ask whoever looks "
                          "after the data folder to make it writable. Nothing was changed."});
    EXPECT_EQ(leftovers(), QStringList{});
    EXPECT_EQ(
        folder.scalar("user.mdb", "select location from staff where username = 'ANNE'").toString(),
        "A/P Master");
    setFolderWritable(true);
}

TEST_F(ReadOnlyData, ReadOnlyFolderIsReportedNamingTheFileThatNeedsIt)
{
    SQLITE_FILES_ONLY(); // file and folder modes
    setFolderWritable(false);
    ModuleCopy anne(folder.path(), locks.path(), "VDR99ANNE",
                    QProcessEnvironment::systemEnvironment(), unprivileged());
    setFolderWritable(true);
    EXPECT_FALSE(anne.started());
    EXPECT_EQ(anne.exitCode(), 5);
    const QStringList shown = ModuleCopy::dialogs(anne.startLines());
    ASSERT_EQ(shown.size(), 1) << shown.join(" / ").toStdString();
    EXPECT_TRUE(shown[0].contains("The data folder '" + folder.path() +
                                  "' is read-only, so the file 'config.mdb' cannot be shared "
                                  "from it"))
        << shown[0].toStdString();
    EXPECT_EQ(leftovers(), QStringList{});
}

} // namespace
