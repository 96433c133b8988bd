// Times the vendor screen on a data folder (the current folder): start-up to the lookup panel,
// each lookup method from Go to the first vendor shown, Next and Previous near the start and
// deep into a long result, and Save.
#include "BenchSupport.h"
#include "ScriptedDialogs.h"

#include "app/ModuleAssembly.h"
#include "data/Databases.h"
#include "data/RecordSource.h"
#include "vendorscreen/ScreenModes.h"
#include "vendorscreen/VendorSaver.h"
#include "vendorscreen/VendorWindow.h"

#include <QApplication>
#include <QDir>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>

namespace {

void report(const char *what, double ms, const char *target)
{
    std::printf("%-44s %9.2f ms   (target %s)\n", what, ms, target);
}

QString firstValue(Databases &dbs, const QString &sql)
{
    return dbs.scalar(QStringLiteral("ap.mdb"), sql).toString();
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc > 1)
        QDir::setCurrent(QString::fromLocal8Bit(argv[1]));
    QTemporaryDir locks;

    ScriptedDialogs dialogs;
    QElapsedTimer timer;
    timer.start();
    ModuleAssembly copy({.dialogs = &dialogs, .lockFolder = locks.path()});
    if (copy.start(QStringLiteral("VDR99DEMO"))) {
        std::fprintf(stderr, "start-up refused: %s\n", qPrintable(dialogs.messages.join(" | ")));
        return 1;
    }
    const double startupMs = timer.nsecsElapsed() / 1e6;
    VendorWindow &w = copy.window();
    const auto &c = w.controls();
    Databases &dbs = copy.databases();

    std::printf("vendors: %s, invoices: %s\n",
                qPrintable(firstValue(dbs, QStringLiteral("select count(*) from vendors"))),
                qPrintable(firstValue(dbs, QStringLiteral("select count(*) from invoices"))));
    report("start-up to the lookup panel", startupMs, "-");

    const QString midNumber = firstValue(
        dbs, QStringLiteral("select vendnumber from vendors order by vendnumber limit 1 offset "
                            "(select count(*) / 2 from vendors)"));
    const QString entries[7] = {
        midNumber,
        QStringLiteral("M"),
        QStringLiteral("M"),
        firstValue(dbs, QStringLiteral("select invnumber from invoices where rowid = (select "
                                       "max(rowid) / 2 from invoices)")),
        firstValue(dbs,
                   QStringLiteral("select invchecknumber from invoices where invchecknumber > 0 "
                                  "and rowid > (select max(rowid) / 2 from invoices) limit 1")),
        QStringLiteral("P"),
        firstValue(dbs, QStringLiteral("select vendglacct from vendors where rowid = (select "
                                       "max(rowid) / 2 from vendors)")),
    };
    const char *names[7] = {"vendor #", "vendor name", "contact",   "invoice #",
                            "check #",  "product",     "G/L number"};
    for (int method = 0; method < 7; ++method) {
        const double ms = medianMs(7, [&] {
            c.cmdcancel->click();
            c.Option1[method]->setChecked(true);
            c.lookupinput->setText(entries[method]);
            c.cmdgo->click();
        });
        const QString label =
            QStringLiteral("Go to first vendor shown: %1").arg(QLatin1String(names[method]));
        report(qPrintable(label), ms, "< 50 ms");
        if (c.Text1[0]->text().isEmpty())
            std::printf("   (no vendor shown for entry '%s': %s)\n", qPrintable(entries[method]),
                        qPrintable(dialogs.messages.join(" | ")));
    }

    // Next and Previous at the start of a long result and after walking deep into it.
    c.cmdcancel->click();
    c.Option1[0]->setChecked(true);
    c.lookupinput->setText(QStringLiteral("0"));
    c.cmdgo->click();
    report("Next near the start", medianMs(51, [&] { w.modes().next(); }), "< 10 ms");
    report("Previous near the start", medianMs(51, [&] { w.modes().previous(); }), "< 10 ms");
    for (int i = 0; i < 5000 && !c.fralookup->isVisible(); ++i)
        w.datavendor().moveNext();
    w.modes().next();
    report("Next after 5,000 vendors", medianMs(51, [&] { w.modes().next(); }), "< 10 ms");
    report("Previous after 5,000 vendors", medianMs(51, [&] { w.modes().previous(); }), "< 10 ms");

    std::vector<double> saves;
    for (int i = 0; i < 7; ++i) {
        c.cmdcancel->click();
        c.Option1[0]->setChecked(true);
        c.lookupinput->setText(midNumber);
        c.cmdgo->click();
        c.cmdmodify->click();
        c.Text1[7]->setText(QStringLiteral("555-01%1").arg(i, 2, 10, QLatin1Char('0')));
        saves.push_back(medianMs(1, [&] { w.saver().save(); }));
    }
    std::sort(saves.begin(), saves.end());
    report("Save (modify mode)", saves[saves.size() / 2], "< 20 ms");
    std::printf("messages shown: %lld\n", static_cast<long long>(dialogs.messages.size()));
    w.close();
    return 0;
}
