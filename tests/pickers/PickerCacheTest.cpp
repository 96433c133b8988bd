// The index a picker keeps between runs: brought up to date with only the rows changed, made
// anew when it is cut short, garbage or another company's, and never in the company's folder.
// In-process on small lists, and with the real pickers as child processes on a real company
// changed by another program between their runs.
#include "PickerCache.h"
#include "PickerIndex.h"
#include "VendorRows.h"
#include "common/PickedAnswer.h"
#include "data/DbError.h"
#include "support/DataFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using Rows = QList<QVariantList>;

// What a picker said on its error output, without the notes of Qt's offscreen platform and
// paths (a scripted picker says there what it would show a user in a message box).
QString saidBy(QProcess &picker)
{
    QStringList said;
    for (const QString &line : QString::fromLocal8Bit(picker.readAllStandardError()).split('\n'))
        if (!line.isEmpty() && !line.startsWith("QStandardPaths: ") &&
            !line.startsWith("This plugin does not support"))
            said << line;
    return said.join('\n');
}

QVariantList vendor(int number, const QString &name, const QString &city = QStringLiteral("Erie"),
                    double open = 0.0)
{
    return {number, name, QString(), city, QString(), open};
}

class KeptIndex : public ::testing::Test {
protected:
    QTemporaryDir cache;
    QString file = cache.filePath(QStringLiteral("venlookp-test.db"));
    const QString identity = QStringLiteral("venlookp for /data/one");

    std::unique_ptr<PickerIndex> open(const Rows &rows, const QString &as = {})
    {
        return PickerCache::open(file, VendorRows::columns(), as.isEmpty() ? identity : as,
                                 [&](PickerIndex &index) {
                                     for (const QVariantList &row : rows)
                                         index.add(row);
                                 });
    }
    // "number name" of each row the search finds, in name order.
    static QString found(PickerIndex &index, const QString &text = {})
    {
        index.search(text, 1, false);
        QStringList lines;
        for (const QVariantList &row : index.rows(0, 100))
            lines << row.value(0).toString() + ' ' + row.value(1).toString();
        return lines.join(", ");
    }
    const Rows three{vendor(1, "Acme Supply"), vendor(2, "Brook Farms"), vendor(3, "Cole Paint")};
};

TEST_F(KeptIndex, TheFirstRunMakesTheFileAndTheNextUsesItWithoutWriting)
{
    auto first = open(three);
    EXPECT_FALSE(first->wasKept());
    EXPECT_EQ(first->count(), 3);
    first.reset();
    ASSERT_TRUE(QFileInfo::exists(file));
    auto second = open(three);
    EXPECT_TRUE(second->wasKept());
    EXPECT_EQ(second->added(), 0);
    EXPECT_EQ(second->removed(), 0);
    EXPECT_EQ(found(*second), "1 Acme Supply, 2 Brook Farms, 3 Cole Paint");
}

TEST_F(KeptIndex, OnlyRowsAddedChangedOrDeletedAreWrittenAndTheSearchFollowsThem)
{
    open(three).reset();
    auto next =
        open({vendor(1, "Acme Supply"), vendor(2, "Brookside Farms"), vendor(4, "Dale Inc")});
    EXPECT_TRUE(next->wasKept());
    EXPECT_EQ(next->added(), 2);   // 2 changed, 4 new
    EXPECT_EQ(next->removed(), 2); // 2 as it was, 3 gone
    EXPECT_EQ(next->count(), 3);
    EXPECT_EQ(found(*next), "1 Acme Supply, 2 Brookside Farms, 4 Dale Inc");
    EXPECT_EQ(found(*next, "brook"), "2 Brookside Farms");
    EXPECT_EQ(found(*next, "cole"), "");
    EXPECT_EQ(found(*next, "farms"), "2 Brookside Farms");
    EXPECT_EQ(found(*next, "dale"), "4 Dale Inc");
}

TEST_F(KeptIndex, AChangeInAColumnThatIsNotSearchedIsWrittenToo)
{
    open(three).reset();
    auto next = open({vendor(1, "Acme Supply"), vendor(2, "Brook Farms", "Erie", 12.5),
                      vendor(3, "Cole Paint", "Reno")});
    EXPECT_EQ(next->added(), 2);
    EXPECT_EQ(next->removed(), 2);
    next->search(QStringLiteral("brook"), 1, false);
    EXPECT_EQ(next->rows(0, 10).value(0).value(5).toDouble(), 12.5);
    EXPECT_EQ(found(*next, "reno"), "3 Cole Paint");
    EXPECT_EQ(found(*next, "erie"), "1 Acme Supply, 2 Brook Farms");
}

TEST_F(KeptIndex, TwoLikeRowsAreKeptAsTwo)
{
    open({vendor(7, "Twin"), vendor(7, "Twin")}).reset();
    auto next = open({vendor(7, "Twin")});
    EXPECT_EQ(next->removed(), 1);
    EXPECT_EQ(found(*next), "7 Twin");
    next.reset();
    auto again = open({vendor(7, "Twin"), vendor(7, "Twin")});
    EXPECT_EQ(again->added(), 1);
    EXPECT_EQ(found(*again), "7 Twin, 7 Twin");
}

TEST_F(KeptIndex, AFileCutShortIsMadeAnewWithTheRightRows)
{
    open(three).reset();
    QFile cut(file);
    ASSERT_TRUE(cut.resize(QFileInfo(file).size() - 4096));
    auto next = open({vendor(1, "Acme Supply"), vendor(5, "Eden Tools")});
    EXPECT_FALSE(next->wasKept());
    EXPECT_EQ(found(*next), "1 Acme Supply, 5 Eden Tools");
    next.reset();
    EXPECT_TRUE(open({vendor(1, "Acme Supply"), vendor(5, "Eden Tools")})->wasKept());
}

TEST_F(KeptIndex, GarbageOrAnEmptyFileIsMadeAnewWithTheRightRows)
{
    for (const QByteArray &junk : {QByteArray(5000, 'x'), QByteArray(),
                                   QByteArray("SQLite format 3").append('\0').append(9000, '\1')}) {
        QFile garbage(file);
        ASSERT_TRUE(garbage.open(QIODevice::WriteOnly | QIODevice::Truncate));
        garbage.write(junk);
        garbage.close();
        auto next = open(three);
        EXPECT_FALSE(next->wasKept());
        EXPECT_EQ(found(*next, "paint"), "3 Cole Paint");
    }
}

TEST_F(KeptIndex, AFileOfAnotherCompanyOrOfAnotherDatabaseIsNotUsed)
{
    open(three).reset();
    auto other = open({vendor(9, "Ivy Hall")}, QStringLiteral("venlookp for /data/two"));
    EXPECT_FALSE(other->wasKept());
    EXPECT_EQ(found(*other), "9 Ivy Hall");
    other.reset();
    QFile::remove(file);
    {
        // A database of someone else's under the name.
        Connection foreign = Connection::localFile(file);
        foreign.execute(QStringLiteral("create table rows (id integer primary key, h integer)"));
    }
    auto next = open(three);
    EXPECT_FALSE(next->wasKept());
    EXPECT_EQ(next->count(), 3);
}

TEST_F(KeptIndex, ACompanyThatCannotBeReadLeavesTheKeptFileAsItWas)
{
    open(three).reset();
    EXPECT_THROW(PickerCache::open(file, VendorRows::columns(), identity,
                                   [](PickerIndex &index) {
                                       index.add(vendor(8, "Half Read"));
                                       throw DbError(DbError::Generic, QStringLiteral("gone"));
                                   }),
                 DbError);
    auto next = open(three);
    EXPECT_TRUE(next->wasKept());
    EXPECT_EQ(next->added(), 0);
    EXPECT_EQ(found(*next, "half"), "");
    EXPECT_FALSE(QFileInfo::exists(file + ".lock"));
}

TEST_F(KeptIndex, AWorkFileOfARunThatDiedIsRemovedAndOneOfALiveRunIsLeft)
{
    open(three).reset();
    QProcess gone;
    gone.start(QStringLiteral("sleep"), {"0.1"});
    ASSERT_TRUE(gone.waitForStarted());
    const qint64 pid = gone.processId();
    ASSERT_TRUE(gone.waitForFinished());
    const QString dead = file + ".work-" + QString::number(pid);
    const QString live = file + ".work-" + QString::number(QCoreApplication::applicationPid());
    for (const QString &work : {dead, live}) {
        QFile f(work);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    open(three).reset();
    EXPECT_FALSE(QFileInfo::exists(dead));
    EXPECT_TRUE(QFileInfo::exists(live));
}

TEST(PickerCacheFolder, IsTheUsersCacheFolderAndOneFilePerCompanyAndPicker)
{
    QTemporaryDir home, data, otherData;
    qputenv("XDG_CACHE_HOME", QFile::encodeName(home.path()));
    const QString folder = PickerCache::folder(data.path());
    EXPECT_EQ(folder, QDir(home.path()).filePath("apmaster-pickers"));
    EXPECT_EQ(QFileInfo(folder).permissions() & (QFile::ReadOther | QFile::ReadGroup), 0);
    const QString vendors = PickerCache::fileFor(folder, "venlookp", data.path());
    EXPECT_TRUE(vendors.startsWith(folder + "/venlookp-")) << vendors.toStdString();
    EXPECT_NE(vendors, PickerCache::fileFor(folder, "gllookup", data.path()));
    EXPECT_NE(vendors, PickerCache::fileFor(folder, "venlookp", otherData.path()));
    EXPECT_EQ(vendors, PickerCache::fileFor(folder, "venlookp", data.path() + "/."));
    qunsetenv("XDG_CACHE_HOME");
}

TEST(PickerCacheFolder, IsNoneWhenTheUsersCacheFolderLiesInTheDataFolder)
{
    QTemporaryDir data;
    qputenv("XDG_CACHE_HOME", QFile::encodeName(data.filePath("cache")));
    EXPECT_EQ(PickerCache::folder(data.path()), "");
    qputenv("XDG_CACHE_HOME", QFile::encodeName(data.path()));
    EXPECT_EQ(PickerCache::folder(data.path()), "");
    qunsetenv("XDG_CACHE_HOME");
}

// The vendor picker run in the company's folder as the module runs it, with its keys typed and
// its cache in a folder of the test's own.
class KeptIndexOfThePicker : public ::testing::Test {
protected:
    DataFolder folder;
    QTemporaryDir cacheHome;

    void SetUp() override
    {
        folder.addVendor(100, "Acme Office Supply");
        folder.addVendor(250, "O'Brien Catering");
        folder.addVendor(251, "Northern Lights Printing");
    }
    QProcessEnvironment environment(const QString &keys) const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("XDG_CACHE_HOME", cacheHome.path());
        env.insert("APMASTER_PICKER_KEYS", keys);
        return env;
    }
    // What the picker picked after the keys ("" for none); its error output must stay empty.
    QString pick(const QString &keys)
    {
        PickedAnswer::clear();
        QProcess picker;
        picker.setProcessEnvironment(environment(keys));
        picker.setWorkingDirectory(folder.path());
        picker.start(QStringLiteral(VENLOOKP_PROGRAM), {});
        EXPECT_TRUE(picker.waitForFinished(60000));
        EXPECT_EQ(picker.exitCode(), 0);
        EXPECT_EQ(saidBy(picker), "");
        return PickedAnswer::take("venlookp");
    }
    QStringList keptFiles() const
    {
        return QDir(cacheHome.filePath("apmaster-pickers")).entryList({"venlookp-*.db"});
    }
};

TEST_F(KeptIndexOfThePicker, AVendorAddedRenamedAndDeletedByAnotherProgramShowsInTheNextRun)
{
    EXPECT_EQ(pick("northern{ENTER}"), "251");
    ASSERT_EQ(keptFiles().size(), 1);
    EXPECT_EQ(folder.otherProgram("ap.mdb", "insert into vendors (vendnumber, vendname, vendcity) "
                                            "values (300, 'Harbor Freight', 'Duluth')"),
              "");
    EXPECT_EQ(folder.otherProgram("ap.mdb", "update vendors set vendname = 'Brienz Catering' "
                                            "where vendnumber = 250"),
              "");
    EXPECT_EQ(folder.otherProgram("ap.mdb", "delete from vendors where vendnumber = 100"), "");
    EXPECT_EQ(pick("harbor{ENTER}"), "300");
    EXPECT_EQ(pick("duluth{ENTER}"), "300");
    EXPECT_EQ(pick("brienz{ENTER}"), "250");
    EXPECT_EQ(pick("o'brien{ENTER}{ESC}"), "");
    EXPECT_EQ(pick("acme{ENTER}{ESC}"), "");
    EXPECT_EQ(pick("northern{ENTER}"), "251");
    EXPECT_EQ(keptFiles().size(), 1);
}

TEST_F(KeptIndexOfThePicker, AnUnpaidInvoiceEnteredElsewhereChangesTheOpenBalanceShown)
{
    EXPECT_EQ(pick("acme{ENTER}"), "100");
    EXPECT_EQ(folder.otherProgram("ap.mdb", "insert into invoices (vendnumber, invnumber, "
                                            "invamount, invstatus) values (251, 'A1', 40, 1)"),
              "");
    // The open balance is no search word, so the new one is checked by sorting on it.
    EXPECT_EQ(pick("{DOWN}{ENTER}"), "251"); // name order: Acme, Northern, O'Brien
    const QString file = cacheHome.filePath("apmaster-pickers/" + keptFiles().value(0));
    Connection kept = Connection::readOnlyFile(file);
    QSqlQuery balance(kept.db());
    ASSERT_TRUE(balance.exec("select v5 from rows where v0 = 251"));
    ASSERT_TRUE(balance.next());
    EXPECT_EQ(balance.value(0).toDouble(), 40.0);
    EXPECT_FALSE(balance.next());
}

TEST_F(KeptIndexOfThePicker, ACacheFileOfGarbageOrCutShortIsMadeAgainWithoutAWord)
{
    EXPECT_EQ(pick("acme{ENTER}"), "100");
    const QString file = cacheHome.filePath("apmaster-pickers/" + keptFiles().value(0));
    QFile kept(file);
    ASSERT_TRUE(kept.resize(kept.size() / 2));
    folder.addVendor(400, "Quarry Stone");
    EXPECT_EQ(pick("quarry{ENTER}"), "400");
    ASSERT_TRUE(kept.open(QIODevice::WriteOnly | QIODevice::Truncate));
    kept.write(QByteArray(70000, '\x5a'));
    kept.close();
    EXPECT_EQ(pick("o'bri{ENTER}"), "250");
    EXPECT_EQ(pick("quarry{ENTER}"), "400");
}

TEST_F(KeptIndexOfThePicker, TheKeptFileNeverLandsInTheCompanyFolder)
{
    const QStringList before = QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden);
    EXPECT_EQ(pick("acme{ENTER}"), "100");
    // Only the engine's own companions of a database file opened for reading may appear.
    for (const QString &name : QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden))
        EXPECT_TRUE(before.contains(name) || name.endsWith(".mdb-wal") || name.endsWith(".mdb-shm"))
            << name.toStdString();
    EXPECT_EQ(keptFiles().size(), 1);
}

TEST_F(KeptIndexOfThePicker, TwoPickersStartedAtOnceOnAnEmptyCacheBothListEveryVendor)
{
    // Enough vendors that making the index takes a while, so that the two runs overlap.
    QStringList values;
    for (int i = 1000; i < 4000; ++i)
        values << QStringLiteral("(%1, 'Filler %1 Traders', 0, 5000, 0, 0, 0, 0)").arg(i);
    folder.exec("ap.mdb", "insert into vendors (vendnumber, vendname, vend1099type, vendglacct, "
                          "vendytd, vendbalcurrent, vendbal60, vendbal90) values " +
                              values.join(','));
    QTemporaryDir runtime;
    // Each picker under a shell of its own, which prints the answer the picker left it.
    const QString script = QStringLiteral("\"$0\"; cat \"$XDG_RUNTIME_DIR/apmaster-picked-$$\"");
    QProcess first, second;
    const std::pair<QProcess *, const char *> runs[] = {{&first, "acme{ENTER}"},
                                                        {&second, "3999{ENTER}"}};
    for (const auto &[process, keys] : runs) {
        QProcessEnvironment env = environment(QString::fromLatin1(keys));
        env.insert("XDG_RUNTIME_DIR", runtime.path());
        process->setProcessEnvironment(env);
        process->setWorkingDirectory(folder.path());
    }
    first.start("sh", {"-c", script, VENLOOKP_PROGRAM});
    second.start("sh", {"-c", script, VENLOOKP_PROGRAM});
    ASSERT_TRUE(first.waitForFinished(60000));
    ASSERT_TRUE(second.waitForFinished(60000));
    EXPECT_EQ(first.readAllStandardOutput(), "venlookp\n100\n");
    EXPECT_EQ(second.readAllStandardOutput(), "venlookp\n3999\n");
    EXPECT_EQ(saidBy(first), "");
    EXPECT_EQ(saidBy(second), "");
    // One whole file is kept, holding every vendor, and no work file is left.
    const QStringList all = QDir(cacheHome.filePath("apmaster-pickers")).entryList(QDir::Files);
    ASSERT_EQ(all, QStringList{keptFiles().value(0)});
    const QString file = cacheHome.filePath("apmaster-pickers/" + all.value(0));
    auto kept = PickerIndex::openKept(file, VendorRows::columns(),
                                      PickerCache::identity("venlookp", folder.path()));
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(kept->count(), 3003);
}

} // namespace
