// Times a 1099-NEC run to a PDF file on a company's data folder: forms per second, and resident
// memory as the run goes, which must not grow with the number of forms.
//
//   apmaster-bench-forms DATA_FOLDER [--make-nec N]
//
// --make-nec N first makes the N lowest-numbered vendors 1099-NEC vendors with $1,000.00 of
// purchases and every other NEC vendor one without a 1099, so that exactly N forms print (it
// changes the company: use it on a generated one).
#include "BenchUsage.h"

#include "app/ModuleAssembly.h"
#include "common/Dialogs.h"
#include "common/StatusLine.h"
#include "data/Databases.h"
#include "vendorscreen/VendorWindow.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <deque>

namespace {

// Answers the run's questions: all vendors of $600 or more, no restart, not a single vendor,
// print. Every message is printed.
class RunDialogs : public Dialogs {
public:
    std::deque<int> answers{Yes, No, No, Yes};

protected:
    void showMessage(const QString &text, Icon, const QString &) override
    {
        std::printf("message: %s\n", qPrintable(oneLine(text)));
    }
    int askYesNo(const QString &, const QString &, int) override
    {
        const int answer = answers.empty() ? No : answers.front();
        if (!answers.empty())
            answers.pop_front();
        return answer;
    }
    int askYesNoCancel(const QString &, const QString &, int) override { return No; }
    QString askInput(const QString &, const QString &, const QString &) override { return {}; }
};

long residentKb(const char *field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith(field))
            return line.mid(static_cast<int>(qstrlen(field))).trimmed().split(' ').first().toLong();
    return -1;
}

} // namespace

int main(int argc, char *argv[])
{
    if (answeredHelpOrVersion(argc, argv, "apmaster-bench-forms", "DATA_FOLDER [--make-nec N]",
                              "Times a 1099-NEC run to PDF on a company's data folder; "
                              "--make-nec N first sets it up so that exactly N forms print "
                              "(it changes the company)."))
        return 0;
    setvbuf(stdout, nullptr, _IOLBF, 0);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 2 || !QDir::setCurrent(args[1])) {
        std::fprintf(stderr, "usage: apmaster-bench-forms DATA_FOLDER [--make-nec N]\n");
        return 2;
    }
    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("nec.pdf"));
    qputenv("APMASTER_PRINT_PDF", pdf.toLocal8Bit());

    RunDialogs dialogs;
    ModuleAssembly module({.dialogs = &dialogs, .lockFolder = out.path()});
    if (module.start(QStringLiteral("VDR99DEMO"))) {
        std::fprintf(stderr, "start-up refused\n");
        return 1;
    }
    Databases &dbs = module.databases();
    const qsizetype make = args.indexOf(QStringLiteral("--make-nec"));
    if (make > 0 && make + 1 < args.size()) {
        dbs.execute(QStringLiteral("ap.mdb"),
                    QStringLiteral("update vendors set vend1099type = 0 where vend1099type = 5"));
        dbs.execute(QStringLiteral("ap.mdb"),
                    QStringLiteral("update vendors set vend1099type = 5, vendytd = 1000 where "
                                   "vendnumber in (select vendnumber from vendors order by "
                                   "vendnumber limit %1)")
                        .arg(args[make + 1].toInt()));
    }
    const int forms =
        dbs.scalar(QStringLiteral("ap.mdb"), QStringLiteral("select count(*) from vendors where "
                                                            "vend1099type = 5 and vendytd >= 600"))
            .toInt();
    std::printf("vendors qualifying for 1099-NEC: %d\n", forms);
    std::printf("resident before the run: %ld KB\n", residentKb("VmRSS:"));

    // Resident memory every half second while the run goes.
    QTimer sampler;
    long peakDuring = 0;
    QObject::connect(&sampler, &QTimer::timeout, [&] {
        const long rss = residentKb("VmRSS:");
        peakDuring = std::max(peakDuring, rss);
        std::printf("  during the run: %ld KB resident, status \"%s\"\n", rss,
                    qPrintable(module.window().status()));
    });
    sampler.start(500);
    QElapsedTimer timer;
    timer.start();
    module.window().action(QStringLiteral("rpt1099nec"))->trigger();
    const double seconds = timer.nsecsElapsed() / 1e9;
    sampler.stop();
    std::printf("1099-NEC run: %d forms in %.2f s, %.0f forms a second\n", forms, seconds,
                forms / seconds);
    std::printf("resident after the run: %ld KB, highest during it %ld KB, peak of the process "
                "%ld KB\n",
                residentKb("VmRSS:"), peakDuring, residentKb("VmHWM:"));
    std::printf("PDF: %lld bytes\n", static_cast<long long>(QFileInfo(pdf).size()));
    module.window().close();
    return 0;
}
