// Times the vendor screen on a data folder (the current folder), on a company of any size:
//   apmaster-bench-vendor DIR [RUNS]
// Start-up to the lookup panel, each lookup method from Go to the first vendor shown, Next and
// Previous near the start, deep into the result and at its end, a walk over the whole vendor
// file and back with the memory it leaves, and Save of an ordinary and of the busiest vendor.
#include "BareDisplay.h"
#include "BenchUsage.h"
#include "PaintCounter.h"
#include "ScriptedDialogs.h"
#include "StepTimer.h"

#include "app/ModuleAssembly.h"
#include "data/Databases.h"
#include "data/DbError.h"
#include "data/RecordSource.h"
#include "vendorscreen/ScreenModes.h"
#include "vendorscreen/VendorDisplay.h"
#include "vendorscreen/VendorSaver.h"
#include "vendorscreen/VendorWindow.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

QString firstValue(Databases &dbs, const QString &sql)
{
    return dbs.scalar(QStringLiteral("ap.mdb"), sql).toString();
}

double msSince(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

// The machine's load average over the last minute, as the kernel counts it.
QString loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("unknown");
    return QString::fromLatin1(file.readAll()).section(QLatin1Char(' '), 0, 2);
}

std::vector<const QWidget *> widgetsOf(const std::array<QLineEdit *, 24> &boxes)
{
    return {boxes.begin(), boxes.end()};
}

} // namespace

int main(int argc, char *argv[])
{
    if (answeredHelpOrVersion(argc, argv, "apmaster-bench-vendor", "[DATA_FOLDER [RUNS]]",
                              "Times the vendor screen's steps on a company's data folder (the "
                              "current folder without one), RUNS times each (7)."))
        return 0;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc > 1 && !QDir::setCurrent(QString::fromLocal8Bit(argv[1]))) {
        std::fprintf(stderr, "No data folder %s.\n", argv[1]);
        return 2;
    }
    const int runs = argc > 2 ? std::max(1, QByteArray(argv[2]).toInt()) : 7;
    QTemporaryDir locks;
    StepTimer::note(QStringLiteral("load average at the start: %1").arg(loadAverage()));
    StepTimer timer(runs);

    ScriptedDialogs dialogs;
    QElapsedTimer started;
    started.start();
    ModuleAssembly copy({.dialogs = &dialogs, .lockFolder = locks.path()});
    if (copy.start(QStringLiteral("VDR99DEMO"))) {
        std::fprintf(stderr, "start-up refused: %s\n", qPrintable(dialogs.messages.join(" | ")));
        return 1;
    }
    StepTimer::single("start-up to the lookup panel", msSince(started));
    StepTimer::memory("after start-up");
    VendorWindow &w = copy.window();
    const auto &c = w.controls();
    Databases &dbs = copy.databases();

    try {
        const long long vendors =
            firstValue(dbs, QStringLiteral("select count(*) from vendors")).toLongLong();
        StepTimer::note(QStringLiteral("engine: %1, vendors: %2, invoices: %3")
                            .arg(dbs.dialect().name())
                            .arg(vendors)
                            .arg(firstValue(dbs, QStringLiteral("select count(*) from invoices"))));
        if (vendors == 0) {
            std::fprintf(stderr, "The folder has no vendors.\n");
            return 1;
        }

        const QString midNumber = firstValue(
            dbs, QStringLiteral("select vendnumber from vendors order by vendnumber limit 1 "
                                "offset (select count(*) / 2 from vendors)"));
        // Entries from the middle of the file, found the same way on either engine.
        const QString entries[7] = {
            midNumber,
            QStringLiteral("M"),
            QStringLiteral("M"),
            firstValue(dbs, QStringLiteral("select invnumber from invoices where vendnumber >= ") +
                                midNumber + QStringLiteral(" order by vendnumber limit 1")),
            firstValue(dbs, QStringLiteral("select invchecknumber from invoices where "
                                           "invchecknumber > 0 and vendnumber >= ") +
                                midNumber + QStringLiteral(" order by vendnumber limit 1")),
            QStringLiteral("P"),
            firstValue(dbs, QStringLiteral("select vendglacct from vendors where vendnumber >= ") +
                                midNumber + QStringLiteral(" order by vendnumber limit 1")),
        };
        const char *names[7] = {"vendor #", "vendor name", "contact",   "invoice #",
                                "check #",  "product",     "G/L number"};
        for (int method = 0; method < 7; ++method) {
            const QString label = QStringLiteral("Go, %1 lookup").arg(QLatin1String(names[method]));
            timer.step(
                qPrintable(label),
                [&] {
                    c.cmdcancel->click();
                    c.Option1[method]->setChecked(true);
                    c.lookupinput->setText(entries[method]);
                },
                [&] { c.cmdgo->click(); }, c.fravendor);
            if (c.Text1[0]->text().isEmpty())
                StepTimer::note(QStringLiteral("(no vendor shown for entry '%1': %2)")
                                    .arg(entries[method], dialogs.messages.join(" | ")));
        }

        // The steps against a bare display of the same vendors on the same company.
        {
            std::array<QString, 24> captions;
            for (size_t i = 0; i < captions.size(); ++i)
                captions[i] = c.label1[i]->text();
            BareDisplay bare(*c.fravendor, captions);
            PaintCounter paints;
            const auto moduleSide = [&](std::function<void()> prepare, std::function<void()> work) {
                return StepTimer::Side{std::move(prepare), std::move(work), &w, widgetsOf(c.Text1)};
            };
            const auto bareSide = [&](std::function<void()> prepare, std::function<void()> work) {
                return StepTimer::Side{std::move(prepare), std::move(work), bare.window(),
                                       bare.fields()};
            };
            QString shown; // the vendor the module's step reached, read by key on the bare side
            const auto noPreparation = [] {};
            const auto lookupMiddle = [&] {
                c.cmdcancel->click();
                c.Option1[0]->setChecked(true);
                c.lookupinput->setText(midNumber);
            };
            StepTimer::versusHeading();
            timer.versus("Go, vendor # lookup", moduleSide(lookupMiddle, [&] { c.cmdgo->click(); }),
                         bareSide([&] { bare.clear(); }, [&] { bare.show(midNumber); }), paints);
            const auto shownByModule = [&] { shown = c.Text1[0]->text(); };
            timer.versus("Next", moduleSide(noPreparation, [&] { w.modes().next(); }),
                         bareSide(shownByModule, [&] { bare.show(shown); }), paints);
            timer.versus("Previous", moduleSide(noPreparation, [&] { w.modes().previous(); }),
                         bareSide(shownByModule, [&] { bare.show(shown); }), paints);
            int typed = 0;
            const auto phone = [&typed] {
                return QStringLiteral("555-02%1").arg(++typed % 100, 2, 10, QLatin1Char('0'));
            };
            timer.versus("Save (modify mode)",
                         moduleSide(
                             [&] {
                                 lookupMiddle();
                                 c.cmdgo->click();
                                 c.cmdmodify->click();
                                 c.Text1[7]->setText(phone());
                             },
                             [&] { w.saver().save(); }),
                         bareSide(
                             [&] {
                                 bare.show(midNumber);
                                 bare.setText(7, phone());
                             },
                             [&] { bare.save(midNumber); }),
                         paints);
            std::printf("\n");
        }

        const auto goByNumber = [&](const QString &number) {
            c.cmdcancel->click();
            c.Option1[0]->setChecked(true);
            c.lookupinput->setText(number);
            c.cmdgo->click();
        };
        const auto nothing = [] {};
        const auto next = [&] { w.modes().next(); };
        const auto previous = [&] { w.modes().previous(); };

        // Next and Previous at the start of a long result and deep into it.
        goByNumber(QStringLiteral("0"));
        timer.step("Next near the start", nothing, next, c.fravendor);
        timer.step("Previous near the start", nothing, previous, c.fravendor);
        const long long depth = std::min(5000LL, vendors / 2);
        RecordSource &source = w.datavendor();
        for (long long i = 0; i < depth && !source.eof(); ++i)
            source.moveNext();
        w.modes().next();
        const QByteArray deep = QStringLiteral("%1 vendors in").arg(depth).toUtf8();
        timer.step(("Next " + deep).constData(), nothing, next, c.fravendor);
        timer.step(("Previous " + deep).constData(), nothing, previous, c.fravendor);

        // The whole vendor file, to its end and back, through the vendor screen's record source.
        goByNumber(QStringLiteral("0"));
        StepTimer::memory("before walking the vendor file");
        QElapsedTimer walk;
        walk.start();
        long long walked = 0;
        double slowest = 0;
        while (!source.eof()) {
            QElapsedTimer one;
            one.start();
            source.moveNext();
            slowest = std::max(slowest, msSince(one));
            ++walked;
        }
        StepTimer::single("walk the whole vendor file with Next", msSince(walk),
                          QStringLiteral("(%1 vendors)").arg(walked));
        StepTimer::single("  its slowest Next (the record source alone)", slowest);
        StepTimer::memory("after walking the vendor file with Next");
        source.movePrevious();
        w.display().showCurrent();
        timer.step("Previous at the end of the file", nothing, previous, c.fravendor);
        timer.step("Next at the end of the file", nothing, next, c.fravendor);
        walk.restart();
        walked = 0;
        slowest = 0;
        while (!source.bof()) {
            QElapsedTimer one;
            one.start();
            source.movePrevious();
            slowest = std::max(slowest, msSince(one));
            ++walked;
        }
        StepTimer::single("walk back to the start with Previous", msSince(walk),
                          QStringLiteral("(%1 vendors)").arg(walked));
        StepTimer::single("  its slowest Previous (the record source alone)", slowest);
        StepTimer::memory("after walking back");

        int edits = 0;
        const auto openForSave = [&](const QString &number) {
            goByNumber(number);
            c.cmdmodify->click();
            c.Text1[7]->setText(
                QStringLiteral("555-01%1").arg(++edits % 100, 2, 10, QLatin1Char('0')));
        };
        const auto save = [&] { w.saver().save(); };
        timer.step(
            "Save (modify mode)", [&] { openForSave(midNumber); }, save, c.fravendor);
        const QString busiest =
            firstValue(dbs, QStringLiteral("select vendnumber from invoices group by vendnumber "
                                           "order by count(*) desc limit 1"));
        if (!busiest.isEmpty()) {
            const QString count = firstValue(
                dbs, QStringLiteral("select count(*) from invoices where vendnumber = ") + busiest);
            timer.step(
                qPrintable(QStringLiteral("Save of vendor %1 (%2 invoices)").arg(busiest, count)),
                [&] { openForSave(busiest); }, save, c.fravendor);
        }
        StepTimer::memory("at the end");
    } catch (const DbError &error) {
        std::fprintf(stderr, "Database error %d: %s\n", error.code(), qPrintable(error.text()));
        return 1;
    }
    StepTimer::note(QStringLiteral("messages shown: %1").arg(dialogs.messages.size()));
    StepTimer::note(QStringLiteral("load average at the end: %1").arg(loadAverage()));
    w.close();
    return 0;
}
