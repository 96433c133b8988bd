#include "common/ProgramError.h"
#include "data/CompanyCopy.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("apmaster-pgcopy"));
    QCoreApplication::setApplicationVersion(QStringLiteral(APMASTER_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Copies a company from the SQLite files of SOURCE_FOLDER into the PostgreSQL database "
        "named by TARGET_FOLDER/database.ini, then compares the rows and money totals of both "
        "sides. The source files are only read."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("SOURCE_FOLDER"),
                                 QStringLiteral("The data folder with the SQLite files."));
    parser.addPositionalArgument(QStringLiteral("TARGET_FOLDER"),
                                 QStringLiteral("The data folder whose database.ini names the "
                                                "PostgreSQL database."));
    parser.process(app);
    if (parser.positionalArguments().size() != 2) {
        std::fprintf(stderr, "%s", qPrintable(parser.helpText()));
        return 2;
    }
    try {
        const auto results = CompanyCopy::copy(
            parser.positionalArguments().at(0), parser.positionalArguments().at(1),
            [](const QString &line) { std::printf("%s\n", qPrintable(line)); });
        bool allMatch = true;
        std::printf("\n%-12s %-10s %12s %12s  money totals\n", "file", "table", "rows read",
                    "rows written");
        for (const auto &r : results) {
            QString money;
            for (const auto &m : r.money)
                money += QStringLiteral("%1 %2/%3 ")
                             .arg(m.column)
                             .arg(m.source, 0, 'f', 4)
                             .arg(m.target, 0, 'f', 4);
            std::printf("%-12s %-10s %12lld %12lld  %s%s\n", qPrintable(r.file),
                        qPrintable(r.table), r.sourceRows, r.targetRows, qPrintable(money),
                        r.matches() ? "" : " DIFFERS");
            allMatch = allMatch && r.matches();
        }
        if (!allMatch) {
            std::fprintf(stderr, "The copy differs from the source in the tables marked "
                                 "DIFFERS.\n");
            return 1;
        }
        std::printf("Every table's rows and money totals match.\n");
        return 0;
    } catch (const NumberedError &error) {
        // The copy's own reasons, and a failure of the data layer.
        std::fprintf(stderr, "%s\n", qPrintable(error.text()));
        return ProgramError::exitCodeOf(error);
    }
}
