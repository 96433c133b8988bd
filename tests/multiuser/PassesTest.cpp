// The passes over the vendor file while other users work: real module copies, each a process of
// its own, on one data folder.
#include "support/DataFolder.h"
#include "support/ModuleCopy.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

// A pass writes its vendors in batches of a few milliseconds; every write of a vendor is slowed
// down by a trigger (see slowDownVendorWrites), so that a pass lasts seconds, as on a large
// company, and the saves beside it and the kill come while it runs.
const int vendorCount = DataFolder::onPostgres() ? 5000 : 10000;

// How long a save beside a pass waits for the lock, in microseconds: one batch of the pass holds
// it 8 ms (the time a batch aims at), and a save that finds it held looks again every
// millisecond, so it gets in at the rest after that batch: 8 + 1 ms. On the server a save waits
// only for the rows of the batch being written, which the server hands it at the batch's commit.
const int oneBatchAndItsRetryUsecs = 9000;
// A save's first try at the lock waits 150 ms; a save waiting longer would try again.
const int firstTryUsecs = 150000;

// A statement run as another user's program: the sqlite3 program on the file, or psql on the
// file's schema on the server. Its output.
QString outside(const DataFolder &folder, const QString &statement)
{
    return folder.otherProgramRead(QStringLiteral("ap.mdb"), statement);
}

class Passes : public ::testing::Test {
protected:
    DataFolder folder;
    QTemporaryDir locks;

    void SetUp() override
    {
        // Every vendor with old totals of 7 and 8, and two invoices: one of 2025 paid in 2025,
        // one of 2024 paid in 2025.
        if (!DataFolder::onPostgres())
            outside(folder, "pragma journal_mode=wal");
        outside(folder, QStringLiteral(
                            "with recursive n(x) as (select 1 union all "
                            "select x + 1 from n where x < %1) "
                            "insert into vendors (vendnumber, vendname, vendphone, vendytd, "
                            "vendbalcurrent, vendbal60, vendbal90) select x, 'Vendor ' || x, "
                            "'555-0000', 7, 8, 0, 0 from n; "
                            "with recursive n(x) as (select 1 union all select x + 1 from n where "
                            "x < %1) insert into invoices (vendnumber, invnumber, invdate, "
                            "invamount, invcheckamount, invcheckdate, invstatus) select x, 'A', "
                            "20250300 + x % 28 + 1, x % 97 + 1, x % 97 + 1, 20250700, 4 from n "
                            "union all select x, 'B', 20241231, 1000, 3, 20250101, 4 from n;")
                            .arg(vendorCount));
        folder.exec("user.mdb", "insert into staff (username, location, sysuser, aplevel) values "
                                "('BETTY', 'Main menu', 4, 99)");
        slowDownVendorWrites();
    }
    // Every row a statement writes to the vendors costs a tenth of a millisecond or more.
    void slowDownVendorWrites()
    {
        if (DataFolder::onPostgres())
            outside(folder, "create function slow_write() returns trigger language plpgsql as "
                            "$$ begin perform pg_sleep(0.0003); return new; end $$; "
                            "create trigger slow_write before update on vendors for each row "
                            "execute function slow_write();");
        else
            outside(folder, "create trigger slow_write after update on vendors begin "
                            "select length(hex(randomblob(40000))); end;");
    }
    // Whether the vendors recalculated are those numbered up to the last of them, no gap, and
    // each one's totals are those a set-based statement computes from its invoices.
    void expectRecalculatedUpTo(int last)
    {
        EXPECT_EQ(recalculated(), last);
        const QString upTo = QString::number(last);
        EXPECT_EQ(outside(folder, "select count(*) from vendors where vendnumber <= " + upTo +
                                      " and vendbalcurrent = 0 and vendytd = 0")
                      .toInt(),
                  0);
        EXPECT_EQ(
            outside(folder, "select count(*) from vendors v left join (select vendnumber, "
                            "sum(case when invdate between 20250101 and 20251231 then invamount "
                            "else 0 end) balance, sum(case when invcheckdate between 20250101 and "
                            "20251231 then invcheckamount else 0 end) ytd from invoices group by "
                            "vendnumber) s on s.vendnumber = v.vendnumber where v.vendnumber <= " +
                                upTo +
                                " and (s.vendnumber is null or v.vendbalcurrent <> s.balance or "
                                "v.vendytd <> s.ytd)")
                .toInt(),
            0);
    }
    QString lockFolder(const QString &user) const { return locks.filePath(user); }
    // Vendors whose totals are those of 2025 (balance: the A invoice; YTD: both checks).
    int recalculated()
    {
        return outside(folder, "select count(*) from vendors v where vendbalcurrent = "
                               "(vendnumber % 97 + 1) and vendytd = (vendnumber % 97 + 1) + 3")
            .toInt();
    }
    // The engine's own check of what the pass wrote: the whole file on SQLite; on the server
    // the vendor table's pages and every index of it (each index entry against its row).
    QString integrity()
    {
        if (!DataFolder::onPostgres())
            return outside(folder, "pragma integrity_check");
        // Each index checked returns one row (a damaged one ends the statement with an error).
        return outside(folder,
                       "create extension if not exists amcheck schema public; select case when "
                       "(select count(*) from public.verify_heapam('vendors')) = 0 and (select "
                       "count(*) from (select public.bt_index_check(indexrelid, true) from "
                       "pg_index where indrelid = 'vendors'::regclass) checked) = (select "
                       "count(*) from pg_index where indrelid = 'vendors'::regclass) and (select "
                       "count(*) from pg_index where indrelid = 'vendors'::regclass) > 0 then "
                       "'ok' else 'damaged' end");
    }
};

TEST_F(Passes, ARecalculationBesideAnotherUsersSavesLosesNothingAndKeepsThemWaitingLittle)
{
    ModuleCopy anne(folder.path(), lockFolder("ANNE"), "VDR99DEMO");
    ModuleCopy betty(folder.path(), lockFolder("BETTY"), "VDR99BETTY");
    ASSERT_TRUE(anne.started());
    ASSERT_TRUE(betty.started());
    anne.send("input 20250101");
    anne.send("input 20251231");
    anne.send("yes");
    anne.post("menu mnurecalc");
    int kept = 0, reported = 0, other = 0;
    QStringList savedPhones;
    // Betty browses and saves while the pass runs: until it has run for a while at least.
    for (int round = 0; round < 40; ++round) {
        const int vendor = 1 + (round * 733) % vendorCount;
        const QString phone = QStringLiteral("555-%1").arg(round, 4, 10, QLatin1Char('0'));
        QStringList lines = betty.send(QStringLiteral("show %1").arg(vendor));
        lines += betty.send("modify");
        lines += betty.send(QStringLiteral("set 7 %1").arg(phone));
        lines += betty.send("save");
        const QStringList shown = ModuleCopy::dialogs(lines);
        if (shown.isEmpty() && lines.contains("mode lookup")) {
            ++kept;
            EXPECT_EQ(outside(folder, QStringLiteral("select vendphone from vendors where "
                                                     "vendnumber = %1")
                                          .arg(vendor)),
                      phone);
        } else if (shown.size() == 1 && shown[0].contains("Another user has modified")) {
            ++reported;
            betty.send("cancel");
        } else {
            ++other;
            ADD_FAILURE() << lines.join(" | ").toStdString();
            betty.send("cancel");
        }
    }
    const QStringList recalc = anne.answer();
    std::printf("40 saves beside the recalculation: %d kept, %d reported as changed by another "
                "user, %d other\n",
                kept, reported, other);
    // The two date prompts and the question, nothing else: no report of a failed write.
    const QStringList shown = ModuleCopy::dialogs(recalc);
    ASSERT_EQ(shown.size(), 3) << recalc.join(" | ").toStdString();
    EXPECT_TRUE(shown[0].startsWith("FROM Date - Invoices|"));
    EXPECT_TRUE(shown[1].startsWith("TO Date - Invoices|"));
    EXPECT_TRUE(shown[2].startsWith("Recalculate Balances|"));
    EXPECT_EQ(other, 0);
    EXPECT_EQ(kept + reported, 40);
    // Every YTD total is the recalculated one (a save of a YTD total recalled before the pass
    // reached the vendor is refused as another user's change). The current balance is also
    // stamped by every display, one display behind, as the screen always has: the vendors Betty
    // showed are left out of that check.
    EXPECT_EQ(outside(folder, "select count(*) from vendors where vendytd = (vendnumber % 97 + 1) "
                              "+ 3")
                  .toInt(),
              vendorCount);
    EXPECT_GE(recalculated(), vendorCount - 80);
    EXPECT_EQ(integrity(), "ok");
    EXPECT_EQ(anne.quit(), 0);
    EXPECT_EQ(betty.quit(), 0);
}

TEST_F(Passes, ARecalculationKilledPartWayLeavesWholeBatchesWithSetBasedSumsAndTheRestAtZero)
{
    ModuleCopy anne(folder.path(), lockFolder("ANNE"), "VDR99DEMO");
    ASSERT_TRUE(anne.started());
    anne.send("input 20250101");
    anne.send("input 20251231");
    anne.send("yes");
    anne.post("menu mnurecalc");
    // Killed in the second pass, once some vendors are done and most are not.
    ASSERT_TRUE(QTest::qWaitFor([&] { return recalculated() > 500; }, 60000));
    anne.kill();
    const int done = recalculated();
    const int zero =
        outside(folder, "select count(*) from vendors where vendbalcurrent = 0 and vendytd = 0")
            .toInt();
    std::printf("killed part-way: %d vendors recalculated, %d at zero\n", done, zero);
    EXPECT_LT(done, vendorCount);
    EXPECT_EQ(done + zero, vendorCount);
    // Whole batches in order: the vendors up to the last one done, each with the sums of a
    // set-based computation, and none after it.
    const int last = outside(folder, "select max(vendnumber) from vendors where vendbalcurrent "
                                     "<> 0 or vendytd <> 0")
                         .toInt();
    expectRecalculatedUpTo(last);
    EXPECT_EQ(outside(folder, "select count(*) from vendors where vendnumber > " +
                                  QString::number(last) +
                                  " and (vendbalcurrent <> 0 or vendytd "
                                  "<> 0)")
                  .toInt(),
              0);
    EXPECT_EQ(integrity(), "ok");
}

TEST_F(Passes, AYearEndZeroKilledPartWayLeavesWholeBatchesZeroedAndTheRestAsTheyWere)
{
    ModuleCopy anne(folder.path(), lockFolder("ANNE"), "VDR99DEMO");
    ASSERT_TRUE(anne.started());
    anne.send("yes");
    anne.post("menu eoyzero");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return outside(folder, "select count(*) from vendors where vendytd = 0").toInt() > 500;
        },
        60000));
    anne.kill();
    const int zeroed = outside(folder, "select count(*) from vendors where vendytd = 0").toInt();
    const int untouched = outside(folder, "select count(*) from vendors where vendytd = 7").toInt();
    std::printf("killed part-way: %d vendors zeroed, %d as they were\n", zeroed, untouched);
    EXPECT_LT(zeroed, vendorCount);
    EXPECT_EQ(zeroed + untouched, vendorCount);
    // Whole batches in order: every vendor up to the last one zeroed is zeroed.
    EXPECT_EQ(outside(folder, "select max(vendnumber) from vendors where vendytd = 0").toInt(),
              zeroed);
    EXPECT_EQ(outside(folder, "select count(*) from vendors where vendbalcurrent <> 8").toInt(), 0);
    EXPECT_EQ(integrity(), "ok");
}

// Saves one vendor beside Anne's pass; how long the save waited for the lock, in microseconds.
// On the files Betty's module copy saves vendor after vendor behind the pass and tells how long
// its statement taking the file's write lock took. On the server psql saves the first vendor the
// pass has not written, a row of the batch being written, and the server's clock times the wait
// for that row and its write.
qlonglong saveBesidePass(const DataFolder &folder, ModuleCopy &betty, int save)
{
    const QString phone = QStringLiteral("555-%1").arg(save, 4, 10, QLatin1Char('0'));
    if (DataFolder::onPostgres()) {
        // One transaction: the vendor and the clock noted, the row locked, the wait noted,
        // the row written; psql prints each result, the vendor and the wait last.
        const QString lines = outside(
            folder,
            "select set_config('pass.vendor', (select coalesce(max(vendnumber), 0) + 1 from "
            "vendors where vendytd = 0)::text, false), set_config('pass.since', "
            "clock_timestamp()::text, false); select 1 from vendors where vendnumber = "
            "current_setting('pass.vendor')::bigint for update; select set_config('pass.waited', "
            "round(extract(epoch from clock_timestamp() - "
            "current_setting('pass.since')::timestamptz) * 1000000)::text, false); update vendors "
            "set vendphone = '" +
                phone +
                "' where vendnumber = current_setting('pass.vendor')::bigint; select "
                "current_setting('pass.vendor') || ' ' || current_setting('pass.waited')");
        const QString waited = lines.section('\n', -1);
        const int vendor = waited.section(' ', 0, 0).toInt();
        EXPECT_EQ(outside(folder, QStringLiteral("select vendphone from vendors where "
                                                 "vendnumber = %1")
                                      .arg(vendor)),
                  phone);
        return waited.section(' ', 1).toLongLong();
    }
    const int vendor = 1 + save; // behind the pass: nothing it writes is recalled here
    betty.send(QStringLiteral("show %1").arg(vendor));
    betty.send("modify");
    betty.send(QStringLiteral("set 7 %1").arg(phone));
    const QStringList saved = betty.send("timed-save");
    EXPECT_EQ(saved.size(), 3) << saved.join(" | ").toStdString();
    EXPECT_EQ(saved.value(2), "mode lookup") << saved.join(" | ").toStdString();
    EXPECT_EQ(
        outside(folder,
                QStringLiteral("select vendphone from vendors where vendnumber = %1").arg(vendor)),
        phone);
    return saved.value(1).startsWith("waited ") ? saved[1].section(' ', 1).toLongLong() : -1;
}

// Saves beside Anne's year-end zero: each save gets the lock at the pass's next rest (on the
// server: at the commit of the batch holding its row), never needing a second try. A machine
// busy with other work can stretch a batch or keep a save from its look at the lock now and
// then, and a save that follows the one before at once meets the next batch near its start, so
// half the saves are held to one batch and its retry, and every one to its first try.
TEST_F(Passes, ASaveBesideABatchedPassWaitsLessThanOneBatchAndItsRetry)
{
    ModuleCopy anne(folder.path(), lockFolder("ANNE"), "VDR99DEMO");
    ModuleCopy betty(folder.path(), lockFolder("BETTY"), "VDR99BETTY");
    ASSERT_TRUE(anne.started());
    ASSERT_TRUE(betty.started());
    anne.send("yes");
    anne.post("menu eoyzero");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return outside(folder, "select count(*) from vendors where vendytd = 0").toInt() > 100;
        },
        60000));
    std::vector<qlonglong> waits;
    while (!anne.hasAnswer() && waits.size() < 30)
        waits.push_back(saveBesidePass(folder, betty, int(waits.size())));
    const QStringList zero = anne.answer();
    ASSERT_GE(waits.size(), 8u) << "the pass ended before the saves beside it";
    std::sort(waits.begin(), waits.end());
    // The wait half the saves stay within.
    const qlonglong median = waits[(waits.size() + 1) / 2 - 1];
    std::printf("%zu saves beside the year-end zero waited for the lock: half up to %lld us, "
                "the longest %lld us\n",
                waits.size(), median, waits.back());
    EXPECT_GE(waits.front(), 0);
    EXPECT_LT(median, oneBatchAndItsRetryUsecs);
    EXPECT_LT(waits.back(), firstTryUsecs);
    // The question, nothing else: no report of a failed write.
    const QStringList shown = ModuleCopy::dialogs(zero);
    ASSERT_EQ(shown.size(), 1) << zero.join(" | ").toStdString();
    EXPECT_TRUE(shown[0].startsWith("EOY Zero|"));
    EXPECT_EQ(outside(folder, "select count(*) from vendors where vendytd <> 0").toInt(), 0);
    EXPECT_EQ(integrity(), "ok");
    EXPECT_EQ(anne.quit(), 0);
    EXPECT_EQ(betty.quit(), 0);
}

} // namespace
