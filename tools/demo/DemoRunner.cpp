#include "DemoRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Demo {

namespace {

// The installed program sits beside the generator; in a build tree it is in tools/cryprint.
QString findRunner(const QDir &programs)
{
    for (const QString &candidate : {programs.filePath(QStringLiteral("cryprint")),
                                     programs.filePath(QStringLiteral("../cryprint/cryprint"))}) {
        const QFileInfo info(candidate);
        if (info.isFile() && info.isExecutable())
            return info.canonicalFilePath();
    }
    return {};
}

QString findDefinitions(const QDir &programs)
{
    for (const QString &candidate : {programs.filePath(QStringLiteral("../share/apmaster/reports")),
                                     QStringLiteral(CRYPRINT_DEFINITIONS)}) {
        if (QFileInfo(candidate + QStringLiteral("/rap001.rpt")).isFile())
            return QFileInfo(candidate).canonicalFilePath();
    }
    return {};
}

} // namespace

QString placeReportRunner(const QString &folder, const QString &programFolder)
{
    const QDir data(folder);
    const QDir programs(programFolder);
    QString text;
    const QString runner = findRunner(programs);
    const QString link = data.filePath(QStringLiteral("cryprint.exe"));
    if (runner.isEmpty()) {
        text += QStringLiteral("  reports      the report runner cryprint was not found\n");
    } else {
        QFile::remove(link);
        if (QFile::link(runner, link))
            text += QStringLiteral("  reports      cryprint.exe -> %1\n").arg(runner);
        else
            text += QStringLiteral("  reports      cryprint.exe could not be linked\n");
    }
    const QString definitions = findDefinitions(programs);
    if (definitions.isEmpty())
        return text + QStringLiteral("               no report definitions were found\n");
    const QDir from(definitions);
    int copied = 0;
    for (const QString &name : from.entryList({QStringLiteral("*.rpt")}, QDir::Files)) {
        QFile::remove(data.filePath(name));
        copied += QFile::copy(from.filePath(name), data.filePath(name)) ? 1 : 0;
    }
    return text + QStringLiteral("               %1 report definitions from %2\n")
                      .arg(copied)
                      .arg(definitions);
}

} // namespace Demo
