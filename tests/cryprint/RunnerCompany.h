#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// A generated company (the demo generator with a fixed seed and year) with the shipped report
// definitions, and the real cryprint program run on it.
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
    QString path(const QString &name) const { return m_dir.filePath(name); }
    // 1234.5 -> "1,234.50" from the engine's "1234.50".
    static QString withSeparators(const QString &fixed2);
    // Modification time and size of every database file of the folder (the engine may make
    // its -wal and -shm files beside a file read-only; the file itself stays as it was).
    QStringList databaseStamps() const;

    QTemporaryDir m_dir;
    QString m_previous;
};
