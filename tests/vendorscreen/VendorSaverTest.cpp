#include "vendorscreen/VendorSaver.h"
#include "common/Session.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "support/VendorScreen.h"

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>
#include <QTimer>

#include <chrono>

namespace {

class VendorSaverTest : public VendorScreen {
protected:
    void addNew(const QString &number, const QString &name)
    {
        c().cmdadd->click();
        c().Text1[0]->setText(number);
        c().Text1[1]->setText(name);
        c().Text1[12]->setText("5000");
    }
};

TEST_F(VendorSaverTest, EmptyNameIsRequiredAndTheModeStays)
{
    addNew("900", "");
    c().cmdsave->click();
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text, "Vendor number and name are required.");
    EXPECT_EQ(module.dialogs.last()->icon, Dialogs::Icon::Information);
    EXPECT_EQ(module.window->state().addFlag, 1);
    EXPECT_TRUE(c().cmdsave->isEnabled());
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 900").toInt(), 0);
}

TEST_F(VendorSaverTest, EmptyNumberIsRequiredToo)
{
    addNew("", "Somebody");
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.last()->text, "Vendor number and name are required.");
}

TEST_F(VendorSaverTest, NewVendorWithEmptyTermsStoresTermsOne)
{
    addNew("900", "New Vendor Inc");
    c().Text1[17]->setText("   ");
    c().cmdsave->click();
    EXPECT_EQ(vendorColumn(900, "vendterms").toString(), "1");
    EXPECT_EQ(vendorColumn(900, "vendname").toString(), "New Vendor Inc");
    EXPECT_TRUE(c().fralookup->isVisible());
    EXPECT_EQ(module.window->state().addFlag, 0);
}

TEST_F(VendorSaverTest, EveryFieldReachesItsColumn)
{
    addNew("901", "Full Vendor");
    const char *values[24] = {"901",    "Full Vendor", "a1",    "a2",      "city",       "ST",
                              "Z1P",    "555-1",       "555-2", "contact", "12-3456789", "5",
                              "5000",   "600",         "12.5",  "7.25",    "1234.5",     "Net 30",
                              "ACCT-9", "e1@x.org",    "cell1", "second",  "e2@x.org",   "555-3"};
    for (int i = 0; i < 24; ++i)
        c().Text1[i]->setText(QString::fromLatin1(values[i]));
    c().cmdsave->click();
    const char *columns[24] = {"vendnumber", "vendname",      "vendaddr1",      "vendaddr2",
                               "vendcity",   "vendstate",     "vendzip",        "vendphone",
                               "vendfax",    "vendcontact",   "vendtaxid",      "vend1099type",
                               "vendglacct", "vendytd",       "vendbalcurrent", "vendbal60",
                               "vendbal90",  "vendterms",     "vendacct",       "email",
                               "cell_other", "vcontact2name", "vcontact2email", "vcontact2phone"};
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(vendorColumn(901, columns[i]).toString(), QString::fromLatin1(values[i]))
            << columns[i];
    EXPECT_EQ(vendorColumn(901, "pnet").toString(), "");
}

TEST_F(VendorSaverTest, ModifiedPhoneIsSavedOverTheSameVendor)
{
    lookup(1, "Acme");
    c().cmdmodify->click();
    c().Text1[7]->setText("217-555-9999");
    c().cmdsave->click();
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-9999");
    EXPECT_EQ(vendorColumn(100, "vendname").toString(), "Acme Office Supply");
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendors").toInt(), 4);
    lookup(1, "Acme");
    EXPECT_EQ(field(7), "217-555-9999");
}

TEST_F(VendorSaverTest, NotesOfANewVendorAreWritten)
{
    addNew("902", "Noted Vendor");
    c().cmdnotes->click();
    QTest::keyClicks(c().notes, "Prefers checks");
    c().cmdsave->click();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select notes from vendnotes where vendnumber = 902").toString(),
        "Prefers checks");
}

TEST_F(VendorSaverTest, ChangedNotesOverwriteTheStoredRow)
{
    folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values (250, 'old')");
    lookup(0, "250");
    c().cmdmodify->click();
    c().cmdnotes->click();
    c().notes->setFocus();
    QTest::keyClick(c().notes, Qt::Key_End);
    QTest::keyClicks(c().notes, " and new");
    c().cmdsave->click();
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select notes from vendnotes where vendnumber = 250").toString(),
        "old and new");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendnotes where vendnumber = 250").toInt(),
        1);
}

TEST_F(VendorSaverTest, UnchangedNotesAreNotWrittenInModifyMode)
{
    lookup(0, "250");
    c().cmdmodify->click();
    c().cmdsave->click();
    EXPECT_EQ(folder.scalar("ap.mdb", "select count(*) from vendnotes").toInt(), 0);
}

TEST_F(VendorSaverTest, TextInANumberFieldIsRefusedWithAClearMessage)
{
    addNew("903", "Typo Vendor");
    c().Text1[13]->setText("12O.50");
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.last()->text,
              "YTD Purchases must be a number; \"12O.50\" is not one. Nothing was saved.");
    EXPECT_EQ(module.window->state().addFlag, 1);
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 903").toInt(), 0);
    EXPECT_EQ(field(13), "12O.50");
}

TEST_F(VendorSaverTest, FailingNotesWriteGivesTheUnexpectedReportAndSavesNothing)
{
    addNew("904", "Notes Trouble Ltd");
    folder.exec("ap.mdb", "drop table vendnotes");
    c().cmdsave->click();
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "Code 3078 near 870Unexpected problem... Call Velmora Data.");
    EXPECT_EQ(module.dialogs.last()->title, "DEMO @ Apmaster");
    // The vendor row and its notes land together or not at all.
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select count(*) from vendors where vendnumber = 904").toInt(), 0);
    EXPECT_EQ(module.window->state().addFlag, 1);
    EXPECT_TRUE(c().cmdsave->isEnabled());
    EXPECT_EQ(field(1), "Notes Trouble Ltd");
}

TEST_F(VendorSaverTest, ModifiedVendorIsNotWrittenWhenItsNotesFail)
{
    lookup(0, "250");
    c().cmdmodify->click();
    c().Text1[7]->setText("555-7777");
    c().cmdnotes->click();
    QTest::keyClicks(c().notes, "Call first");
    folder.exec("ap.mdb", "drop table vendnotes");
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(vendorColumn(250, "vendphone").toString(), "");
    EXPECT_EQ(module.window->state().modifyFlag, 1);
}

TEST_F(VendorSaverTest, SaveWithoutAModeDoesNothing)
{
    lookup(0, "100");
    module.window->saver().save();
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_FALSE(c().fralookup->isVisible());
}

TEST(Pnet, EmptyWhenTheSettingIsNo)
{
    EXPECT_EQ(VendorSaver::pnetFrom("(217) 555-0100", "N"), "");
    EXPECT_EQ(VendorSaver::pnetFrom("(217) 555-0100", "Y"), "S217555-0100S");
}

// Another workstation's copy of the module on the same data folder.
class TwoUsers : public VendorScreen {
protected:
    QTemporaryDir otherLocks;
    Module other{otherLocks.path()};

    void SetUp() override
    {
        VendorScreen::SetUp();
        ASSERT_EQ(other.start("VDR99ANNE"), std::nullopt);
    }
    const VendorWindow::Controls &o() const { return other.window->controls(); }
    void otherLookup(int method, const QString &entry)
    {
        o().Option1[method]->setChecked(true);
        o().lookupinput->setText(entry);
        o().cmdgo->click();
    }
};

TEST_F(TwoUsers, SecondSaveOfTheSameVendorIsReportedAndLosesNothing)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("111-111-1111");

    otherLookup(0, "100");
    o().cmdmodify->click();
    o().Text1[1]->setText("Acme Office Supply & Sons");
    o().cmdsave->click();
    EXPECT_EQ(other.dialogs.count(), 0);

    c().cmdsave->click();
    ASSERT_NE(module.dialogs.last(), nullptr);
    EXPECT_EQ(module.dialogs.last()->text,
              "Another user has modified this record while you were editing it.\n"
              "Please reload this vendor and redo your changes.");
    EXPECT_EQ(module.dialogs.last()->title, "Velmora Office");
    EXPECT_EQ(vendorColumn(100, "vendname").toString(), "Acme Office Supply & Sons");
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0100");
    EXPECT_TRUE(c().fralookup->isVisible());
}

TEST_F(TwoUsers, BrowsingByAnotherUserIsNotAnEdit)
{
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("111-111-1111");
    otherLookup(0, "100");
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "111-111-1111");
}

TEST_F(TwoUsers, RecordHeldByAnotherWriterIsRetriedThenReported)
{
    SQLITE_FILES_ONLY();
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("222-222-2222");
    // Another workstation holds the file's write lock for the whole save.
    QSqlDatabase holder = QSqlDatabase::addDatabase("QSQLITE", "holder");
    holder.setDatabaseName(folder.file("ap.mdb"));
    ASSERT_TRUE(holder.open());
    QSqlQuery lock(holder);
    ASSERT_TRUE(lock.exec("begin immediate"));
    ASSERT_TRUE(lock.exec("update vendors set vendfax = 'held' where vendnumber = 300"));
    module.window->state().saveRetryCount = 0;
    c().cmdsave->click();
    EXPECT_EQ(module.window->state().saveRetryCount, 21);
    ASSERT_NE(module.dialogs.last(), nullptr);
    // The stated text, word for word: a line feed after the step number and nowhere else.
    EXPECT_EQ(module.dialogs.last()->text,
              "Having trouble writing the record...Code 3260@860\nIf you continue getting this "
              "message, call Velmora Data.Otherwise, try to save it again.");
    EXPECT_EQ(module.dialogs.last()->title, "DEMO @ Armaster");
    EXPECT_EQ(module.window->state().modifyFlag, 1);
    EXPECT_TRUE(c().cmdsave->isEnabled());
    lock.exec("rollback");
    lock.finish();
    holder.close();
    holder = QSqlDatabase();
    QSqlDatabase::removeDatabase("holder");
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "217-555-0100");
    EXPECT_EQ(vendorColumn(300, "vendfax").toString(), "");
}

TEST_F(TwoUsers, RetryBudgetIsSharedByEverySaveWhileTheWindowIsOpen)
{
    SQLITE_FILES_ONLY();
    module.window->state().saveRetryCount = 20;
    lookup(0, "100");
    c().cmdmodify->click();
    QSqlDatabase holder = QSqlDatabase::addDatabase("QSQLITE", "holder2");
    holder.setDatabaseName(folder.file("ap.mdb"));
    ASSERT_TRUE(holder.open());
    {
        QSqlQuery lock(holder);
        ASSERT_TRUE(lock.exec("begin immediate"));
        c().cmdsave->click();
        lock.exec("rollback");
    }
    holder.close();
    holder = QSqlDatabase();
    QSqlDatabase::removeDatabase("holder2");
    EXPECT_EQ(module.window->state().saveRetryCount, 21);
    EXPECT_TRUE(module.dialogs.last()->text.startsWith("Having trouble writing the record..."));
}

TEST_F(TwoUsers, LockReleasedDuringTheRetriesLetsTheSaveThrough)
{
    SQLITE_FILES_ONLY();
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("333-333-3333");
    // Another workstation holds the write lock until the save has met it twice, then lets go;
    // the save waits with the event loop running, so the release happens meanwhile.
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "holder3");
        db.setDatabaseName(folder.file("ap.mdb"));
        ASSERT_TRUE(db.open());
        QSqlQuery lock(db);
        ASSERT_TRUE(lock.exec("begin immediate"));
        QTimer release;
        QObject::connect(&release, &QTimer::timeout, [&] {
            if (module.window->state().saveRetryCount >= 2) {
                lock.exec("rollback");
                release.stop();
            }
        });
        release.start(5);
        c().cmdsave->click();
        EXPECT_FALSE(release.isActive());
        lock.finish();
        db.close();
    }
    QSqlDatabase::removeDatabase("holder3");
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "333-333-3333");
    EXPECT_GT(module.window->state().saveRetryCount, 0);
    EXPECT_LT(module.window->state().saveRetryCount, 21);
    EXPECT_TRUE(c().fralookup->isVisible());
}

} // namespace

namespace {

const QString notesReport = QStringLiteral(
    "Another user has changed this vendor's notes since you opened them, so your notes were not "
    "saved.\nPlease reload this vendor and redo your notes.");

class TwoUsersNotes : public TwoUsers {
protected:
    void SetUp() override
    {
        TwoUsers::SetUp();
        folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values (251, 'old')");
    }
    // Opens the vendor's notes in modify mode and types over them.
    void editNotes(const VendorWindow::Controls &controls, const QString &text)
    {
        controls.cmdmodify->click();
        controls.cmdnotes->click();
        controls.notes->setFocus();
        controls.notes->selectAll();
        QTest::keyClicks(controls.notes, text);
    }
    QString storedNotes()
    {
        return folder.scalar("ap.mdb", "select notes from vendnotes where vendnumber = 251")
            .toString();
    }
};

TEST_F(TwoUsersNotes, NotesChangedByAnotherUserAreKeptAndTheReportSaysSo)
{
    lookup(0, "251");
    editNotes(c(), "mine");
    otherLookup(0, "251");
    editNotes(o(), "theirs");
    o().cmdsave->click();
    ASSERT_EQ(storedNotes(), "theirs");

    c().cmdsave->click();
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text, notesReport);
    EXPECT_EQ(module.dialogs.last()->title, "Velmora Office");
    EXPECT_EQ(storedNotes(), "theirs");
    EXPECT_TRUE(c().fralookup->isVisible());
}

TEST_F(TwoUsersNotes, NotesUnchangedByOthersAreWrittenWithTheVendor)
{
    lookup(0, "251");
    editNotes(c(), "mine");
    c().Text1[7]->setText("555-4444");
    otherLookup(0, "251");
    o().cmdmodify->click();
    o().cmdsave->click();
    c().cmdsave->click();
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(storedNotes(), "mine");
    EXPECT_EQ(vendorColumn(251, "vendphone").toString(), "555-4444");
}

TEST_F(TwoUsersNotes, RefusedVendorSaveStillWritesNotesNobodyElseChanged)
{
    lookup(0, "251");
    editNotes(c(), "mine");
    otherLookup(0, "251");
    o().cmdmodify->click();
    o().Text1[8]->setText("555-0000");
    o().cmdsave->click();

    c().cmdsave->click();
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_TRUE(module.dialogs.last()->text.startsWith("Another user has modified this record"));
    EXPECT_EQ(storedNotes(), "mine");
    EXPECT_EQ(vendorColumn(251, "vendfax").toString(), "555-0000");
}

TEST_F(TwoUsersNotes, RefusedVendorSaveLeavesNotesAnotherUserChanged)
{
    lookup(0, "251");
    editNotes(c(), "mine");
    otherLookup(0, "251");
    editNotes(o(), "theirs");
    o().Text1[8]->setText("555-0000");
    o().cmdsave->click();

    c().cmdsave->click();
    ASSERT_EQ(module.dialogs.count(), 2);
    EXPECT_TRUE(module.dialogs.shown[0].text.startsWith("Another user has modified this record"));
    EXPECT_EQ(module.dialogs.shown[1].text, notesReport);
    EXPECT_EQ(storedNotes(), "theirs");
}

TEST_F(TwoUsersNotes, NewVendorDoesNotTakeOverNotesLeftUnderItsNumber)
{
    folder.exec("ap.mdb", "insert into vendnotes (vendnumber, notes) values (905, 'kept')");
    c().cmdadd->click();
    c().Text1[0]->setText("905");
    c().Text1[1]->setText("Newcomer");
    c().cmdsave->click();
    EXPECT_EQ(vendorColumn(905, "vendname").toString(), "Newcomer");
    EXPECT_EQ(
        folder.scalar("ap.mdb", "select notes from vendnotes where vendnumber = 905").toString(),
        "kept");
    ASSERT_EQ(module.dialogs.count(), 1);
    EXPECT_EQ(module.dialogs.last()->text, notesReport);
}

TEST_F(TwoUsers, SaveWaitingForAnotherUserShowsItsTriesAndKeepsTheWindowPainted)
{
    SQLITE_FILES_ONLY();
    lookup(0, "100");
    c().cmdmodify->click();
    c().Text1[7]->setText("444-444-4444");
    QSqlDatabase holder = QSqlDatabase::addDatabase("QSQLITE", "holder4");
    holder.setDatabaseName(folder.file("ap.mdb"));
    ASSERT_TRUE(holder.open());
    QStringList seen;
    int ticks = 0;
    {
        QSqlQuery lock(holder);
        ASSERT_TRUE(lock.exec("begin immediate"));
        // A timer of the window's own thread: it only fires if the save lets events through.
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, [&] {
            ++ticks;
            if (!seen.contains(module.window->status()))
                seen << module.window->status();
            if (ticks == 5)
                lock.exec("rollback");
        });
        watch.start(40);
        module.window->state().saveRetryCount = 0;
        c().cmdsave->click();
        watch.stop();
    }
    holder.close();
    holder = QSqlDatabase();
    QSqlDatabase::removeDatabase("holder4");
    EXPECT_GE(ticks, 5);
    EXPECT_TRUE(
        seen.contains("Another user is writing to the vendor file; the save waits (try 1 of 20)."))
        << seen.join(" / ").toStdString();
    EXPECT_EQ(module.dialogs.count(), 0);
    EXPECT_EQ(vendorColumn(100, "vendphone").toString(), "444-444-4444");
}

TEST_F(TwoUsers, WindowIsNotClosedWhileASaveWaits)
{
    lookup(0, "100");
    c().cmdmodify->click();
    module.window->state().saving = true;
    EXPECT_FALSE(module.window->close());
    module.window->state().saving = false;
    EXPECT_TRUE(module.window->started());
}

} // namespace
