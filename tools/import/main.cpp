// apmaster-import SOURCE_FOLDER DATA_FOLDER [--time-limit SECONDS]
// Converts every Access database file of SOURCE_FOLDER into the module's database file of the
// same name in DATA_FOLDER (a new or empty folder; or the schema of that name in the PostgreSQL
// database DATA_FOLDER's database.ini names), prints a summary and writes it to
// DATA_FOLDER/import.log.
#include "CompanyImport.h"
#include "ImportError.h"
#include "RunnerPlacement.h"
#include "common/ProgramError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <cstdio>
#include <unistd.h>

namespace {
QString readerProgram()
{
    const QString fromEnvironment = qEnvironmentVariable("APMASTER_MDB_READER");
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    return QDir(QCoreApplication::applicationDirPath())
        .filePath(QStringLiteral("apmaster-mdb-reader"));
}

int usage()
{
    std::fputs("usage: apmaster-import SOURCE_FOLDER DATA_FOLDER [--time-limit SECONDS]\n"
               "Converts the Access files (*.mdb) of SOURCE_FOLDER into the module's files of\n"
               "the same names in DATA_FOLDER, a new or empty folder (or into the schemas of\n"
               "the same names when DATA_FOLDER's database.ini names a PostgreSQL database).\n",
               stderr);
    return 2;
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QStringList args = app.arguments().mid(1);
    if (args.contains(QStringLiteral("--help")) || args.contains(QStringLiteral("-h"))) {
        std::fputs("Usage: apmaster-import SOURCE_FOLDER DATA_FOLDER [--time-limit SECONDS]\n"
                   "Converts the Access files (*.mdb) of SOURCE_FOLDER into the module's files "
                   "of\nthe same names in DATA_FOLDER, a new or empty folder (or into the "
                   "schemas of\nthe same names when DATA_FOLDER's database.ini names a "
                   "PostgreSQL database),\nand prints a summary.\n",
                   stdout);
        return 0;
    }
    if (args.contains(QStringLiteral("--version"))) {
        std::printf("apmaster-import %s\n", APMASTER_VERSION);
        return 0;
    }
    CompanyImport::Options options;
    options.readerProgram = readerProgram();
    const qsizetype limit = args.indexOf(QStringLiteral("--time-limit"));
    if (limit >= 0) {
        bool ok = false;
        options.timeLimitSecs = args.value(limit + 1).toInt(&ok);
        if (!ok || options.timeLimitSecs <= 0)
            return usage();
        args.remove(limit, 2);
    }
    if (args.size() != 2)
        return usage();
    const bool terminal = isatty(STDERR_FILENO);
    options.progress = [terminal](const QString &line) {
        // On a terminal the line is rewritten in place; in a log each step is a line.
        const QByteArray text = line.toLocal8Bit();
        std::fprintf(stderr, terminal ? "\r%-78s" : "%s\n", text.constData());
        std::fflush(stderr);
    };
    try {
        const ImportSummary summary = CompanyImport(options).run(args[0], args[1]);
        if (terminal)
            std::fputs("\n", stderr);
        std::fputs(summary.text().toLocal8Bit().constData(), stdout);
        // The company's reports work at once; what the folder already has of its own is kept.
        std::fputs(placeSuite(QFileInfo(args[1]).absoluteFilePath(),
                              QCoreApplication::applicationDirPath(), Existing::Keep)
                       .toLocal8Bit()
                       .constData(),
                   stdout);
        if (summary.logProblem.isEmpty())
            std::printf("The summary is also in %s.\n", QDir(QFileInfo(args[1]).absoluteFilePath())
                                                            .filePath(CompanyImport::logName())
                                                            .toLocal8Bit()
                                                            .constData());
        else
            std::fprintf(stderr, "The summary was not added to the import log: %s\n",
                         summary.logProblem.toLocal8Bit().constData());
        return 0;
    } catch (const NumberedError &e) {
        // The import's own reasons, and a failure of the data layer: one line, then the code.
        if (terminal)
            std::fputs("\n", stderr);
        std::fprintf(stderr, "%s\n", e.text().toLocal8Bit().constData());
        return ProgramError::exitCodeOf(e);
    }
}
