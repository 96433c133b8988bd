// Times the passes over the vendor file on a company's data folder, beside the same work done as
// one set-based UPDATE on the same file: the recalculation of balances over a year and the
// year-end zero of the YTD totals. It changes the company: use it on a generated one.
//
//   apmaster-bench-passes DATA_FOLDER [YEAR]
#include "BenchUsage.h"
#include "app/ModuleAssembly.h"
#include "common/Dialogs.h"
#include "common/PassProgress.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "data/Dialect.h"
#include "utilities/BalanceRecalculation.h"
#include "utilities/YearEndZero.h"
#include "vendorscreen/VendorWindow.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

class YesDialogs : public Dialogs {
protected:
    void showMessage(const QString &text, Icon, const QString &) override
    {
        std::printf("message: %s\n", qPrintable(oneLine(text)));
    }
    int askYesNo(const QString &, const QString &, int) override { return Yes; }
    int askYesNoCancel(const QString &, const QString &, int) override { return No; }
    QString askInput(const QString &, const QString &, const QString &) override { return {}; }
};

class NoProgress : public PassProgress {
public:
    void begin(int) override {}
    void advance(int) override {}
    void end() override {}
};

double seconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return timer.nsecsElapsed() / 1e9;
}

// Runs work on a connection of its own to the data folder's ap.mdb, outside the module, on the
// folder's engine.
void onOwnConnection(const QString &name, const std::function<void(QSqlDatabase &)> &work)
{
    {
        const std::unique_ptr<Dialect> dialect = Dialect::forDataFolder();
        QSqlDatabase db = dialect->connect(QStringLiteral("ap.mdb"), name, 3000, false);
        work(db);
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
}

void runAll(QSqlDatabase &db, const QStringList &statements)
{
    QSqlQuery q(db);
    for (const QString &statement : statements)
        if (!q.exec(statement))
            std::printf("%s failed: %s\n", qPrintable(statement), qPrintable(q.lastError().text()));
}

// Puts other totals in place, untimed, before each way of doing a pass is timed. The SQLite
// engine leaves a row's page alone when an update writes the bytes it already holds, so a pass
// run after another one that left the same totals would be timed writing nothing.
void scrambleTotals()
{
    onOwnConnection(QStringLiteral("scramble"), [](QSqlDatabase &db) {
        QSqlQuery q(db);
        if (!q.exec(QStringLiteral("update vendors set vendbalcurrent = -1 - vendnumber, "
                                   "vendytd = -1 - vendnumber")))
            std::printf("scrambling the totals failed: %s\n", qPrintable(q.lastError().text()));
        // Everything written reaches the database itself before the next timing.
        runAll(db, Dialect::forDataFolder()->passEnd());
    });
}

// The same work as one statement in one transaction.
double setBased(const QString &statement)
{
    scrambleTotals();
    double taken = 0;
    onOwnConnection(QStringLiteral("set"), [&](QSqlDatabase &db) {
        QSqlQuery q(db);
        taken = seconds([&] {
            if (!q.exec(statement))
                std::printf("set-based statement failed: %s\n", qPrintable(q.lastError().text()));
        });
    });
    return taken;
}

// The same per-record shape on a bare connection: each vendor's statement in its own
// transaction, commits not waiting for the disk. What the engine itself needs for the rule.
double bareRecords(const QString &statement, int binds, bool scramble = true)
{
    if (scramble)
        scrambleTotals();
    double taken = 0;
    const std::unique_ptr<Dialect> dialect = Dialect::forDataFolder();
    onOwnConnection(QStringLiteral("bare"), [&](QSqlDatabase &db) {
        QSqlQuery q(db);
        runAll(db, dialect->passStart());
        std::vector<qlonglong> keys;
        q.exec(QStringLiteral("select vendnumber from vendors order by vendnumber"));
        while (q.next())
            keys.push_back(q.value(0).toLongLong());
        q.finish();
        // A light commit's transaction, without the settings the pass made for its length. The
        // transaction statements are run as text: the server's driver would turn a prepared
        // one into a server-side PREPARE, which refuses them.
        QStringList begin;
        for (const QString &sql : dialect->beginWrite(true, -1, 3000))
            if (!dialect->passStart().contains(sql))
                begin << sql;
        QSqlQuery write(db), control(db);
        write.prepare(statement);
        int failed = 0;
        QString firstFailure;
        const auto check = [&](bool ok, const QSqlQuery &q) {
            if (!ok && failed++ == 0)
                firstFailure = q.lastError().text();
        };
        taken = seconds([&] {
            for (const qlonglong key : keys) {
                for (const QString &sql : begin)
                    check(control.exec(sql), control);
                for (int i = 0; i < binds; ++i)
                    write.bindValue(i, key);
                check(write.exec(), write);
                check(control.exec(QStringLiteral("commit")), control);
            }
        });
        if (failed > 0)
            std::printf("bare per-record loop: %d statements failed, the first: %s\n", failed,
                        qPrintable(firstFailure));
        runAll(db, dialect->afterWrite(true, -1, 3000) + dialect->passEnd());
    });
    return taken;
}

// The machine's load average over the last minute, as the kernel counts it.
QString loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("unknown");
    return QString::fromLatin1(file.readAll()).section(QLatin1Char(' '), 0, 0);
}

void row(const char *what, double pass, double bare, double set)
{
    std::printf("%-34s pass %6.2f s | bare per-record %6.2f s | set-based UPDATE %6.2f s | "
                "pass/bare %.2f, pass/set %.2f\n",
                what, pass, bare, set, pass / bare, pass / set);
}

} // namespace

int main(int argc, char *argv[])
{
    if (answeredHelpOrVersion(argc, argv, "apmaster-bench-passes", "DATA_FOLDER [YEAR]",
                              "Times the year-end zero and the recalculation of YEAR (2025) on "
                              "a company's data folder, beside the same work run bare."))
        return 0;
    setvbuf(stdout, nullptr, _IOLBF, 0);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 2 || !QDir::setCurrent(args[1])) {
        std::fprintf(stderr, "usage: apmaster-bench-passes DATA_FOLDER [YEAR]\n");
        return 2;
    }
    const int year = args.size() > 2 ? args[2].toInt() : 2025;
    const long from = year * 10000L + 101;
    const long to = year * 10000L + 1231;
    QTemporaryDir locks;
    YesDialogs dialogs;
    ModuleAssembly module({.dialogs = &dialogs, .lockFolder = locks.path()});
    if (module.start(QStringLiteral("VDR99DEMO"))) {
        std::fprintf(stderr, "start-up refused\n");
        return 1;
    }
    Databases &dbs = module.databases();
    std::printf(
        "engine: %s, load average %s, vendors: %d, invoices: %d\n",
        qPrintable(dbs.dialect().name()), qPrintable(loadAverage()),
        dbs.scalar(QStringLiteral("ap.mdb"), QStringLiteral("select count(*) from vendors"))
            .toInt(),
        dbs.scalar(QStringLiteral("ap.mdb"), QStringLiteral("select count(*) from invoices"))
            .toInt());
    QLineEdit line;
    StatusLine status(&line);
    NoProgress progress;

    const QString range = QStringLiteral(" between %1 and %2").arg(from).arg(to);
    scrambleTotals();
    const double recalc = seconds([&] {
        BalanceRecalculation(
            {dialogs, module.services().clock, dbs, module.session(), status, progress})
            .recalculate(from, to);
    });
    const double recalcSet = setBased(
        QStringLiteral("update vendors set vendbalcurrent = round(coalesce((select sum(invamount) "
                       "from invoices i where i.vendnumber = vendors.vendnumber and i.invdate") +
        range +
        QStringLiteral("), 0), 4), vendytd = round(coalesce((select sum(invcheckamount) from "
                       "invoices i where i.vendnumber = vendors.vendnumber and i.invcheckdate") +
        range + QStringLiteral("), 0), 4)"));
    const QString perVendor =
        QStringLiteral("update vendors set vendbalcurrent = round(coalesce((select sum(invamount) "
                       "from invoices where vendnumber = ? and invdate") +
        range +
        QStringLiteral("), 0), 4), vendytd = round(coalesce((select sum(invcheckamount) from "
                       "invoices where vendnumber = ? and invcheckdate") +
        range + QStringLiteral("), 0), 4) where vendnumber = ?");
    // The bare loop does the recalculation's second pass and the zeroing of its first.
    const double recalcBare =
        bareRecords(QStringLiteral("update vendors set vendbalcurrent = 0, vendytd = 0 where "
                                   "vendnumber = ?"),
                    1) +
        bareRecords(perVendor, 3, false);
    row(qPrintable(QStringLiteral("recalculation of %1").arg(year)), recalc, recalcBare, recalcSet);

    scrambleTotals();
    const double zero = seconds([&] {
        YearEndZero({dialogs, dbs, module.session(), status, progress}).run();
    });
    const double zeroBare =
        bareRecords(QStringLiteral("update vendors set vendytd = 0 where vendnumber = ?"), 1);
    const double zeroSet = setBased(QStringLiteral("update vendors set vendytd = 0"));
    row("year-end zero of the YTD totals", zero, zeroBare, zeroSet);
    std::printf("load average at the end %s\n", qPrintable(loadAverage()));
    module.window().close();
    return 0;
}
