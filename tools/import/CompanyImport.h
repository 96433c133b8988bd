#pragma once

#include "ImportSummary.h"

#include <QString>
#include <QStringList>

#include <functional>

// Converts every Access file (*.mdb) of a source folder into the module's database file of the
// same name in a data folder: all of it into a work folder inside the data folder first, moved
// into place only when every file is done, so that a failure leaves the data folder as it was.
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
    QStringList accessFiles(const QString &sourceFolder) const;
    void checkDataFolder(const QString &dataFolder) const;
    int timeLimitFor(const QString &path) const;

    Options m_options;
};
