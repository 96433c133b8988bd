#pragma once

#include "ImportSummary.h"

#include <QString>
#include <QStringList>

#include <functional>

class ImportDestination;

// Converts every Access file (*.mdb) of a source folder into the module's database file of the
// same name in a data folder: all of it into a work folder inside the data folder first, moved
// into place only when every file is done, so that a failure leaves the data folder as it was.
// A data folder set to PostgreSQL (database.ini) gets a schema per file instead, all of them
// written in one transaction.
// The source files are only read. Failures are thrown as ImportError.
class CompanyImport {
public:
    struct Options {
        QString readerProgram; // the Access reader (apmaster-mdb-reader)
        int timeLimitSecs = 0; // per file; 0: worked out from the file's size
        std::function<void(const QString &line)> progress; // one line per step
    };
    explicit CompanyImport(Options options) : m_options(std::move(options)) {}

    ImportSummary run(const QString &sourceFolder, const QString &dataFolder);

    // The name of the import log written into the data folder.
    static QString logName() { return QStringLiteral("import.log"); }

private:
    void importFiles(const QString &source, const QStringList &files,
                     ImportDestination &destination, ImportSummary &summary) const;
    // Into the SQLite files of a data folder, moved into place when all are done.
    void intoFiles(const QString &source, const QStringList &files, const QString &data,
                   ImportSummary &summary) const;
    // Into the PostgreSQL database the data folder's engine settings name, in one transaction.
    void intoServer(const QString &source, const QStringList &files, const QString &settingsFile,
                    ImportSummary &summary) const;
    QStringList accessFiles(const QString &sourceFolder) const;
    void checkDataFolder(const QString &dataFolder) const;
    int timeLimitFor(const QString &path) const;

    Options m_options;
};
