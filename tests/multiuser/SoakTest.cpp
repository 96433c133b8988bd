// Eight users' copies of the module, each a process of its own, browsing, changing and saving
// the same fifty vendors for a minute. Each save adds one to a vendor's counter (kept in the
// telephone field) from the value the copy showed, so a save that wrote over another user's
// change would leave a counter below the number of saves that copy was told were kept.
#include "support/DataFolder.h"
#include "support/ModuleCopy.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <memory>
#include <vector>

namespace {

const QString changeReport = QStringLiteral(
    "Velmora Office|Another user has modified this record while you were editing it.\\n"
    "Please reload this vendor and redo your changes.");

int soakSeconds()
{
    const int asked = qEnvironmentVariableIntValue("APMASTER_SOAK_SECONDS");
    return asked > 0 ? asked : 60;
}

struct Counts {
    int saved = 0;        // saves the copy was told were kept
    int conflicts = 0;    // saves refused with the report that another user changed the vendor
    int writeReports = 0; // saves refused with the report that the record could not be written
    int browses = 0;
    int other = 0; // anything else a copy showed: never expected
};

class Soak : public ::testing::Test {
protected:
    DataFolder folder;
    QTemporaryDir locks;
    static constexpr int vendors = 50;
    static constexpr int copies = 8;

    void SetUp() override
    {
        QStringList rows;
        for (int v = 1; v <= vendors; ++v)
            rows << QStringLiteral("(%1, 'Vendor %1', '0', 5000, 0, 0, 0, 0, 0)").arg(v);
        folder.exec("ap.mdb", "insert into vendors (vendnumber, vendname, vendphone, vendglacct, "
                              "vend1099type, vendytd, vendbalcurrent, vendbal60, vendbal90) "
                              "values " +
                                  rows.join(", "));
        QStringList staff;
        for (int c = 0; c < copies; ++c)
            staff << QStringLiteral("('USER%1', 'Main menu', %2, 99)").arg(c).arg(c + 10);
        folder.exec("user.mdb", "insert into staff (username, location, sysuser, aplevel) values " +
                                    staff.join(", "));
    }

    std::unique_ptr<ModuleCopy> startCopy(int c)
    {
        auto copy = std::make_unique<ModuleCopy>(folder.path(),
                                                 locks.filePath(QStringLiteral("user%1").arg(c)),
                                                 QStringLiteral("VDR99USER%1").arg(c));
        EXPECT_TRUE(copy->started()) << copy->startLines().join(" | ").toStdString();
        return copy;
    }
};

TEST_F(Soak, EightCopiesSavingFiftyVendorsForAMinuteLoseNoSaveAndReportEveryConflict)
{
    std::vector<std::unique_ptr<ModuleCopy>> running;
    for (int c = 0; c < copies; ++c)
        running.push_back(startCopy(c));
    for (const auto &copy : running)
        ASSERT_TRUE(copy->started());
    std::map<int, int> savedOf; // vendor -> saves told kept
    Counts counts;
    QRandomGenerator random(20261124);
    QElapsedTimer clock;
    clock.start();
    std::vector<int> vendorOf(copies);
    while (clock.elapsed() < soakSeconds() * 1000) {
        // Every copy recalls a vendor at once; every other round one copy only browses.
        for (int c = 0; c < copies; ++c) {
            vendorOf[c] = 1 + static_cast<int>(random.bounded(vendors));
            running[c]->post(QStringLiteral("show %1").arg(vendorOf[c]));
        }
        for (auto &copy : running)
            copy->answer();
        std::vector<int> shown(copies, -1);
        for (int c = 0; c < copies; ++c) {
            const QStringList got = running[c]->send(QStringLiteral("get 7"));
            shown[c] = got.value(0).section(QLatin1Char(' '), 1).toInt();
        }
        for (int c = 0; c < copies; ++c) {
            if (random.bounded(4) == 0) {
                ++counts.browses;
                running[c]->post(QStringLiteral("unpaid"));
                continue;
            }
            running[c]->send(QStringLiteral("modify"));
            running[c]->send(QStringLiteral("set 7 %1").arg(shown[c] + 1));
            running[c]->post(QStringLiteral("save"));
            shown[c] = -2; // a save was posted
        }
        for (int c = 0; c < copies; ++c) {
            const QStringList lines = running[c]->answer();
            if (shown[c] != -2)
                continue;
            const QStringList dialogs = ModuleCopy::dialogs(lines);
            if (dialogs.isEmpty() && lines.contains(QStringLiteral("mode lookup"))) {
                ++counts.saved;
                ++savedOf[vendorOf[c]];
            } else if (dialogs == QStringList{changeReport}) {
                ++counts.conflicts;
            } else if (dialogs.size() == 1 &&
                       dialogs.first().contains(QLatin1String("Having trouble writing"))) {
                // The save's retries are spent for this window: the user starts the copy again.
                ++counts.writeReports;
                running[c]->send(QStringLiteral("cancel"));
                EXPECT_EQ(running[c]->quit(), 0);
                running[c] = startCopy(c);
            } else {
                ++counts.other;
                ADD_FAILURE() << "copy " << c << ": " << lines.join(" / ").toStdString();
                running[c]->send(QStringLiteral("cancel"));
            }
        }
    }
    for (auto &copy : running)
        EXPECT_EQ(copy->quit(), 0);
    int lost = 0;
    int found = 0;
    for (int v = 1; v <= vendors; ++v) {
        const int counter =
            folder
                .scalar("ap.mdb", QStringLiteral("select vendphone from vendors where "
                                                 "vendnumber = %1")
                                      .arg(v))
                .toString()
                .toInt();
        found += counter;
        lost += savedOf[v] - counter;
        EXPECT_EQ(counter, savedOf[v]) << "vendor " << v;
    }
    std::printf("soak on %s, %d s, %d copies, %d vendors: %d saves told kept, %d found in the "
                "database, %d lost; %d conflicts reported, %d write reports, %d browses, %d "
                "other reports\n",
                DataFolder::onPostgres() ? "PostgreSQL" : "SQLite", soakSeconds(), copies, vendors,
                counts.saved, found, lost, counts.conflicts, counts.writeReports, counts.browses,
                counts.other);
    EXPECT_GT(counts.saved, 0);
    EXPECT_EQ(counts.other, 0);
}

} // namespace
