#include "support/VendorScreen.h"

#include <QFileInfo>
#include <QGroupBox>
#include <QTest>

// Cancel lets go of the lookup's reader: nobody outside can tell it apart from a closed one, and
// the next Go reads on it again instead of opening the file once more.
namespace {

class LookupReaderTest : public VendorScreen {
protected:
    void go(const QString &number)
    {
        c().Option1[0]->setChecked(true);
        c().lookupinput->setText(number);
        QTest::mouseClick(c().cmdgo, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    void cancel()
    {
        QTest::mouseClick(c().cmdcancel, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
};

TEST_F(LookupReaderTest, GoAfterCancelOpensNoNewConnection)
{
    go("250");
    ASSERT_EQ(field(0), "250");
    cancel();
    ASSERT_TRUE(c().fralookup->isVisible());
    const int made = module.databases.openCount();
    go("300");
    EXPECT_EQ(field(0), "300");
    EXPECT_EQ(field(1), "Zenith Hall Rentals");
    EXPECT_EQ(module.databases.openCount(), made);
    cancel();
    go("100");
    EXPECT_EQ(field(0), "100");
    EXPECT_EQ(module.databases.openCount(), made);
}

TEST_F(LookupReaderTest, RightAfterCancelAnotherProgramWritesAndEmptiesTheLogAndGoSeesTheWrite)
{
    SQLITE_FILES_ONLY();
    go("250");
    ASSERT_EQ(field(0), "250");
    cancel();
    QString output;
    EXPECT_EQ(folder.otherProgram("ap.mdb",
                                  "update vendors set vendname = 'Renamed Outside' where "
                                  "vendnumber = 300; pragma wal_checkpoint(truncate);",
                                  &output),
              "");
    EXPECT_EQ(output.trimmed(), "0|0|0");
    EXPECT_EQ(QFileInfo(folder.file("ap.mdb-wal")).size(), 0);
    go("300");
    EXPECT_EQ(field(1), "Renamed Outside");
}

TEST_F(LookupReaderTest, RightAfterCancelAnotherProgramTakesTheWriteLockAtOnce)
{
    SQLITE_FILES_ONLY();
    go("251");
    ASSERT_EQ(field(0), "251");
    cancel();
    // The sqlite3 program waits for no lock: a lock held here would fail it at once.
    EXPECT_EQ(folder.otherProgram("ap.mdb", "begin exclusive; delete from vendors where "
                                            "vendnumber = 100; commit;"),
              "");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors").toInt(), 3);
}

} // namespace
