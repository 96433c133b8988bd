#pragma once

#include "CompanyImport.h"
#include "ImportSummary.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

#include <optional>

// A source folder and a data folder (not made yet) in a temporary directory, the import run on
// them with the real reader program, and a look into the files it wrote.
class ImportFixture {
public:
    ImportFixture();
    ~ImportFixture();

    QString source() const { return m_dir.filePath(QStringLiteral("source")); }
    QString data() const { return m_data; }
    // Imports into another data folder (one set to the server engine, say).
    void useDataFolder(const QString &path) { m_data = path; }
    QString sourceFile(const QString &name) const;
    QString dataFile(const QString &name) const;

    void copyIntoSource(const QString &path, const QString &name);
    void writeSource(const QString &name, const QByteArray &bytes);
    // A reader program of the test's own: a shell script (for a reader that hangs or crashes,
    // or one that sends a stream the test wrote).
    void useReaderScript(const QString &script);
    void useStream(const QByteArray &stream);

    // Runs the import; the message of the failure, or empty.
    QString run(int timeLimitSecs = 0);
    const ImportSummary &summary() const { return m_summary; }
    QStringList progress() const { return m_progress; }

    // A statement on a written file, through a connection of the test's own.
    QVariant scalar(const QString &file, const QString &statement);
    QVariantList column(const QString &file, const QString &statement);
    // Files and folders under the data folder, and whether it exists.
    QStringList dataEntries() const;

private:
    QTemporaryDir m_dir;
    QString m_data;
    QString m_reader;
    ImportSummary m_summary;
    QStringList m_progress;
};

// Bytes that begin like a Jet 4 file, so that the import hands them to the reader.
QByteArray jetHeader();
