#include "DemoRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Demo {

namespace {

// The installed program sits beside the generator; in a build tree it is in tools/<name>.
QString findProgram(const QDir &programs, const QString &name)
{
    for (const QString &candidate :
         {programs.filePath(name), programs.filePath(QStringLiteral("../%1/%1").arg(name))}) {
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
    const QString runner = findProgram(programs, QStringLiteral("cryprint"));
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

QString placeNumberUtility(const QString &folder, const QString &programFolder)
{
    const QString program = findProgram(QDir(programFolder), QStringLiteral("chanum"));
    if (program.isEmpty())
        return QStringLiteral("  numbers      the vendor-number utility chanum was not found\n");
    const QString link = QDir(folder).filePath(QStringLiteral("chanum.exe"));
    QFile::remove(link);
    if (!QFile::link(program, link))
        return QStringLiteral("  numbers      chanum.exe could not be linked\n");
    return QStringLiteral("  numbers      chanum.exe -> %1\n").arg(program);
}

} // namespace Demo
