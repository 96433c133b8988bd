#include "DemoCompany.h"
#include "DemoError.h"

#include "RunnerPlacement.h"
#include "common/ProgramError.h"
#include "data/CompanyCopy.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

namespace {

bool readNumber(const QCommandLineParser &parser, const QString &name, long long low,
                long long high, long long &value)
{
    if (!parser.isSet(name))
        return true;
    bool ok = false;
    value = parser.value(name).toLongLong(&ok);
    if (ok && value >= low && value <= high)
        return true;
    std::fprintf(stderr, "--%s must be a whole number from %lld to %lld.\n", qPrintable(name), low,
                 high);
    return false;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("apmaster-demo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(APMASTER_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Writes a demo company's data folder for A/P Master: the database files, the 1099 "
        "layouts and the vendor help text. The same arguments give the same data."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("DIR"),
                                 QStringLiteral("The data folder; created when missing."));
    parser.addOption({QStringLiteral("vendors"), QStringLiteral("Number of vendors (300)."),
                      QStringLiteral("N")});
    parser.addOption({QStringLiteral("invoices"),
                      QStringLiteral("Number of invoices in all (12 for each vendor)."),
                      QStringLiteral("M")});
    parser.addOption({QStringLiteral("big-vendor"),
                      QStringLiteral("The first vendor gets this many invoices (20000 in a "
                                     "company of 1000000 invoices or more)."),
                      QStringLiteral("K")});
    parser.addOption({QStringLiteral("seed"), QStringLiteral("Seed of the made-up data (1)."),
                      QStringLiteral("S")});
    parser.addOption({QStringLiteral("year"),
                      QStringLiteral("The books hold last year and this year (the current year)."),
                      QStringLiteral("Y")});
    parser.addOption({QStringLiteral("postgres"),
                      QStringLiteral("Put the databases into the PostgreSQL database that "
                                     "DIR/database.ini names (it must not hold them yet); the "
                                     "other files go into DIR.")});
    parser.process(app);
    if (parser.positionalArguments().size() != 1) {
        std::fprintf(stderr, "%s", qPrintable(parser.helpText()));
        return 2;
    }

    Demo::Options options;
    options.folder = parser.positionalArguments().constFirst();
    long long vendors = Demo::defaultVendors;
    long long invoices = -1;
    long long bigVendor = -1;
    long long seed = 1;
    long long year = QDate::currentDate().year();
    if (!readNumber(parser, QStringLiteral("vendors"), 0, 1000000, vendors) ||
        !readNumber(parser, QStringLiteral("invoices"), 0, 50000000, invoices) ||
        !readNumber(parser, QStringLiteral("big-vendor"), 0, 50000000, bigVendor) ||
        !readNumber(parser, QStringLiteral("seed"), 0, 0x7fffffffffffffffLL, seed) ||
        !readNumber(parser, QStringLiteral("year"), 2000, 9998, year))
        return 2;
    options.vendors = int(vendors);
    options.invoices = int(invoices);
    options.bigVendor = int(bigVendor);
    options.seed = std::uint64_t(seed);
    options.year = int(year);

    try {
        // The company's reports work at once: the runner and the definitions are put beside
        // the data.
        const QString programs = QCoreApplication::applicationDirPath();
        if (!parser.isSet(QStringLiteral("postgres"))) {
            const Demo::Summary summary = Demo::generate(options);
            std::fputs(qPrintable(Demo::describe(summary)), stdout);
            std::fputs(qPrintable(placeSuite(summary.folder, programs)), stdout);
            return 0;
        }
        // The files are made as always in a folder of their own, then copied to the server.
        QTemporaryDir staging;
        const QString target = options.folder;
        options.folder = staging.path();
        const Demo::Summary summary = Demo::generate(options);
        QDir().mkpath(target);
        for (const QFileInfo &file : QDir(staging.path()).entryInfoList(QDir::Files)) {
            if (file.suffix().compare(QLatin1String("mdb"), Qt::CaseInsensitive) == 0)
                continue;
            const QString copy = QDir(target).filePath(file.fileName());
            QFile::remove(copy);
            QFile::copy(file.filePath(), copy);
        }
        for (const auto &table : CompanyCopy::copy(staging.path(), target))
            if (!table.matches())
                throw Demo::Error(QStringLiteral("The copy of %1 differs.").arg(table.table));
        std::fputs(qPrintable(Demo::describe(summary)), stdout);
        std::fputs(qPrintable(placeSuite(target, programs)), stdout);
    } catch (const NumberedError &error) {
        // The demo's and the copy's own reasons, and a failure of the data layer.
        std::fprintf(stderr, "apmaster-demo: %s\n", qPrintable(error.text()));
        return ProgramError::exitCodeOf(error);
    }
    return 0;
}
