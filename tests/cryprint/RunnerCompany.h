#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

#include "support/DataFolder.h"

// A generated company (the demo generator with a fixed seed and year) with the shipped report
// definitions, and the real cryprint program run on it. In the tests on PostgreSQL the company
// is generated on the test server, and a twin of it in SQLite files (the same seed gives the
// same rows) is what the sqlite3 program computes the expected values from.
class RunnerCompany : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    struct Run {
        int exitCode = -1;
        QString errors;
    };
    // Writes the request text to a file in the folder and runs cryprint on it there.
    Run runRequest(const QString &text);
    // The module's request with the lines that send it to a file.
    static QString toFile(const QString &moduleText, const QString &outFile,
                          const QString &type = QStringLiteral("PDF"));
    // The rows of a query of the sqlite3 program, columns separated by "|".
    QStringList sqlite(const QString &file, const QString &sql) const;
    QString sqliteValue(const QString &file, const QString &sql) const;
    // The text of a PDF in the folder, laid out as on the page.
    QString pdfText(const QString &file) const;
    // A file of the data folder.
    QString path(const QString &name) const;
    // 1234.5 -> "1,234.50" from the engine's "1234.50".
    static QString withSeparators(const QString &fixed2);
    // Modification time and size of every database file of the folder (the engine may make
    // its -wal and -shm files beside a file read-only; the file itself stays as it was); on
    // the server, a digest of every row of the company's tables.
    QStringList databaseStamps() const;

    QTemporaryDir m_dir; // the data folder, or on the server the files' twin
    std::unique_ptr<DataFolder> m_server;
    QString m_previous;
};
