#include "CompanyImport.h"

#include "AccessReader.h"
#include "FileImport.h"
#include "ImportError.h"
#include "JetHeader.h"
#include "PostgresDestination.h"
#include "SqliteDestination.h"

#include "common/OutputFile.h"
#include "data/EngineSettings.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {
// What the first bytes of a file say it is.
QString kindOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("unreadable");
    const QByteArray head = file.read(32);
    if (head.isEmpty())
        return QStringLiteral("empty");
    const QByteArray kind = head.mid(4, 15);
    if (kind == "Standard Jet DB")
        return QStringLiteral("jet");
    if (kind == "Standard ACE DB")
        return QStringLiteral("ace");
    if (head.startsWith("SQLite format 3"))
        return QStringLiteral("sqlite");
    return QStringLiteral("other");
}

void checkSource(const QString &path)
{
    const QString kind = kindOf(path);
    if (kind == QLatin1String("jet"))
        return;
    if (kind == QLatin1String("unreadable"))
        throw ImportError(
            QStringLiteral("The file '%1' cannot be read (no permission?).").arg(path));
    if (kind == QLatin1String("empty"))
        throw ImportError(
            QStringLiteral("The file '%1' is empty: it holds no Access database.").arg(path));
    if (kind == QLatin1String("ace"))
        throw ImportError(QStringLiteral("The file '%1' is an Access 2007 or later database; "
                                         "the import reads Access 97 to 2003 files (Jet 3 and "
                                         "Jet 4). Save it in the Access 2002-2003 format first.")
                              .arg(path));
    if (kind == QLatin1String("sqlite"))
        throw ImportError(QStringLiteral("The file '%1' is already an SQLite database of the "
                                         "module, not an Access file; copy it as it is.")
                              .arg(path));
    throw ImportError(
        QStringLiteral("The file '%1' is not an Access database (its first bytes say otherwise).")
            .arg(path));
}

// What the file's protection in Access means for the imported data.
QStringList protectionWarnings(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto protection = JetHeader::protectionOf(file.read(JetHeader::headerSize));
    QStringList warnings;
    if (protection && protection->password)
        warnings << QStringLiteral("the file has a database password in Access; the import "
                                   "reads it without one, and the imported data is not "
                                   "protected by it");
    if (protection && protection->encoded)
        warnings << QStringLiteral("the file is encoded (Encode Database in Access); it was "
                                   "decoded for the import");
    return warnings;
}
// The log's earlier runs and this one, written as a new file that replaces the old log only
// when complete, and only when the old one is a text file. Returns why it was not written.
QString appendToLog(const QString &path, const QByteArray &entry)
{
    OutputFile log(path, OutputFile::Kind::Text);
    QString error;
    if (!log.open(error))
        return error;
    QFile earlier(log.finalPath());
    if (earlier.exists()) {
        if (!earlier.open(QIODevice::ReadOnly))
            return QStringLiteral("The log %1 cannot be read: %2").arg(path, earlier.errorString());
        log.device().write(earlier.readAll());
    }
    log.device().write(entry);
    return log.commit(error) ? QString() : error;
}
} // namespace

QStringList CompanyImport::accessFiles(const QString &sourceFolder) const
{
    const QFileInfo info(sourceFolder);
    if (!info.isDir())
        throw ImportError(QStringLiteral("The folder '%1' does not exist.").arg(sourceFolder));
    QStringList files;
    const QStringList entries =
        QDir(sourceFolder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString &name : entries)
        if (name.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive))
            files << name;
    if (files.isEmpty())
        throw ImportError(QStringLiteral("The folder '%1' holds no Access database files "
                                         "(*.mdb); nothing was imported.")
                              .arg(sourceFolder));
    return files;
}

void CompanyImport::checkDataFolder(const QString &dataFolder) const
{
    const QFileInfo info(dataFolder);
    if (info.exists() && !info.isDir())
        throw ImportError(QStringLiteral("'%1' is a file, not a folder.").arg(dataFolder));
    if (!info.exists())
        return;
    QStringList company;
    for (const QString &name : QDir(dataFolder).entryList(QDir::Files | QDir::Hidden))
        if (name.endsWith(QLatin1String(".mdb"), Qt::CaseInsensitive))
            company << name;
    if (!company.isEmpty())
        throw ImportError(QStringLiteral("The folder '%1' already holds a company (%2). The "
                                         "import writes only into a new or empty data folder; "
                                         "nothing was changed.")
                              .arg(dataFolder, company.join(QStringLiteral(", "))));
}

int CompanyImport::timeLimitFor(const QString &path) const
{
    if (m_options.timeLimitSecs > 0)
        return m_options.timeLimitSecs;
    // A minute, and ten seconds more for each MB: far above what a sound file takes.
    return 60 + int(QFileInfo(path).size() / (1024 * 1024)) * 10;
}

void CompanyImport::importFiles(const QString &source, const QStringList &files,
                                ImportDestination &destination, ImportSummary &summary) const
{
    for (const QString &name : files) {
        const QString path = QDir(source).filePath(name);
        summary.files.push_back(FileSummary{name, {}, protectionWarnings(path)});
        FileImport fileImport(
            name, destination, summary.files.back(),
            [this, name](const QString &table, qint64 rows, qint64 of) {
                if (m_options.progress)
                    m_options.progress(
                        QStringLiteral("%1: %2, %3 of %4 rows").arg(name, table).arg(rows).arg(of));
            });
        destination.beginFile(name);
        try {
            AccessReader(m_options.readerProgram, timeLimitFor(path)).read(path, fileImport);
        } catch (const ImportError &e) {
            throw ImportError(
                QStringLiteral("The import stopped at '%1': %2.").arg(path, e.message()));
        }
        destination.endFile();
    }
}

void CompanyImport::intoFiles(const QString &source, const QStringList &files, const QString &data,
                              ImportSummary &summary) const
{
    checkDataFolder(data);
    const bool madeFolder = !QFileInfo::exists(data);
    if (madeFolder && !QDir().mkpath(data))
        throw ImportError(QStringLiteral("The folder '%1' could not be made.").arg(data));
    try {
        QTemporaryDir work(QDir(data).filePath(QStringLiteral(".apmaster-import-XXXXXX")));
        if (!work.isValid())
            throw ImportError(QStringLiteral("No work folder could be made in '%1': %2")
                                  .arg(data, work.errorString()));
        {
            SqliteDestination destination(work.path());
            importFiles(source, files, destination, summary);
        }
        for (const QString &name : files) {
            if (!QFile::rename(QDir(work.path()).filePath(name), QDir(data).filePath(name)))
                throw ImportError(
                    QStringLiteral("The finished file '%1' could not be moved into '%2'.")
                        .arg(name, data));
        }
    } catch (const ImportError &e) {
        // Files already moved are taken out again: the folder is left as it was.
        for (const QString &name : files)
            if (QFileInfo::exists(QDir(data).filePath(name)))
                QFile::remove(QDir(data).filePath(name));
        if (madeFolder)
            QDir().rmdir(data);
        throw ImportError(e.message() + QStringLiteral(" Nothing was written to '%1'.").arg(data));
    }
}

void CompanyImport::intoServer(const QString &source, const QStringList &files,
                               const QString &settingsFile, ImportSummary &summary) const
{
    QFile file(settingsFile);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw ImportError(QStringLiteral("The engine settings file '%1' could not be read: %2")
                              .arg(settingsFile, file.errorString()));
    const EngineSettings settings = EngineSettings::parse(QString::fromUtf8(file.readAll()));
    if (!settings.error.isEmpty())
        throw ImportError(QStringLiteral("The engine settings file '%1' is not right: %2")
                              .arg(settingsFile, settings.error));
    PostgresDestination destination(settings);
    destination.start(files);
    try {
        importFiles(source, files, destination, summary);
        destination.commit();
    } catch (const ImportError &e) {
        // Leaving the destination rolls everything back.
        throw ImportError(e.message() +
                          QStringLiteral(" Nothing was written to %1.").arg(destination.place()));
    }
}

ImportSummary CompanyImport::run(const QString &sourceFolder, const QString &dataFolder)
{
    const QString source = QFileInfo(sourceFolder).absoluteFilePath();
    const QString data = QFileInfo(dataFolder).absoluteFilePath();
    const QStringList files = accessFiles(source);
    for (const QString &name : files) {
        try {
            checkSource(QDir(source).filePath(name));
        } catch (const ImportError &e) {
            throw ImportError(e.message() + QStringLiteral(" Nothing was imported."));
        }
    }
    ImportSummary summary;
    summary.source = source;
    summary.destination = data;
    // A data folder set to the server engine names its database in the engine settings file.
    const QString settingsFile = QDir(data).filePath(QLatin1String(EngineSettings::fileName));
    if (QFileInfo(settingsFile).isFile())
        intoServer(source, files, settingsFile, summary);
    else
        intoFiles(source, files, data, summary);
    summary.logProblem = appendToLog(
        QDir(data).filePath(logName()),
        (QDateTime::currentDateTime().toString(Qt::ISODate) + QLatin1Char(' ') + summary.text())
            .toUtf8());
    return summary;
}
