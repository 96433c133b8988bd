#include "support/VendorScreen.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGroupBox>
#include <QProcess>
#include <QTest>

namespace {

class SaveBesideALock : public VendorScreen {
protected:
    QProcess holder;

    // Another program (the engine's own shell) takes the file's write lock and lets go of it
    // after the given time; returns once the lock is held.
    bool holdTheWriteLock(const char *seconds)
    {
        holder.setWorkingDirectory(folder.path());
        holder.start("sqlite3", {"ap.mdb"});
        if (!holder.waitForStarted())
            return false;
        holder.write(QByteArray("begin immediate;\nupdate vendors set vendfax = 'held' where "
                                "vendnumber = 300;\n.shell touch locked.flag\n.shell sleep ") +
                     seconds + "\ncommit;\n.quit\n");
        return QTest::qWaitFor([&] { return QFile::exists(folder.file("locked.flag")); }, 5000);
    }
    void TearDown() override
    {
        if (holder.state() != QProcess::NotRunning)
            holder.waitForFinished(10000);
    }
};

// The lock is met when the save begins its write; the save waits, tries again and goes through
// once the other program lets go.
TEST_F(SaveBesideALock, ASaveThatMeetsAWriteLockAtItsStartWaitsAndIsWritten)
{
    SQLITE_FILES_ONLY();
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("444-444-4444");
    module.window->state().saveRetryCount = 0;
    ASSERT_TRUE(holdTheWriteLock("1"));
    QElapsedTimer waited;
    waited.start();
    c().cmdsave->click();
    EXPECT_GE(waited.elapsed(), 500);
    EXPECT_EQ(module.dialogs.count(), 0) << module.dialogs.last()->text.toStdString();
    EXPECT_GT(module.window->state().saveRetryCount, 0);
    EXPECT_LT(module.window->state().saveRetryCount, 21);
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "444-444-4444");
    EXPECT_TRUE(c().fralookup->isVisible());
    ASSERT_TRUE(holder.state() == QProcess::NotRunning || holder.waitForFinished(5000));
    EXPECT_EQ(vendorColumn(300, "vendfax").toString(), "held");
}

// A new vendor meets the lock the same way.
TEST_F(SaveBesideALock, ANewVendorThatMeetsAWriteLockAtItsStartWaitsAndIsWritten)
{
    SQLITE_FILES_ONLY();
    c().cmdadd->click();
    c().Text1[0]->setText("900");
    c().Text1[1]->setText("Waiting Supplies");
    c().Text1[12]->setText("5000");
    c().Text1[1]->setFocus(); // as a user would have left the number field before saving
    module.window->state().saveRetryCount = 0;
    ASSERT_TRUE(holdTheWriteLock("1"));
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.count(), 0) << module.dialogs.last()->text.toStdString();
    EXPECT_GT(module.window->state().saveRetryCount, 0);
    EXPECT_EQ(vendorColumn(900, "vendname").toString(), "Waiting Supplies");
}

} // namespace
