#include "ManualViewer.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

QString ManualViewer::find(const QString &name, const QString &dataFolder,
                           const QString &programFolder)
{
    for (const QString &candidate :
         {QDir(dataFolder).filePath(name),
          QDir(programFolder).filePath(QStringLiteral("../share/apmaster/") + name)}) {
        const QFileInfo info(candidate);
        if (info.isFile() && info.isReadable())
            return info.absoluteFilePath();
    }
    return {};
}

QStringList ManualViewer::viewerCommand()
{
    const QString setting = qEnvironmentVariable("APMASTER_PDF_VIEWER").trimmed();
    if (!setting.isEmpty())
        return QProcess::splitCommand(setting);
    return {QStringLiteral("xdg-open")};
}

ManualViewer::Outcome ManualViewer::open(const QString &file, const QStringList &viewer,
                                         int checkMsecs)
{
    if (viewer.isEmpty())
        return {false, QStringLiteral("no PDF viewer is named")};
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(viewer.first(), viewer.mid(1) << file);
    if (!process.waitForStarted(-1))
        return {false, QStringLiteral("the PDF viewer %1 could not be started: %2")
                           .arg(viewer.first(), process.errorString())};
    if (process.waitForFinished(checkMsecs)) {
        if (process.exitStatus() != QProcess::NormalExit)
            return {false, QStringLiteral("the PDF viewer %1 crashed").arg(viewer.first())};
        if (process.exitCode() != 0)
            return {false,
                    QStringLiteral("the PDF viewer %1 could not open the manual (exit code %2)")
                        .arg(viewer.first())
                        .arg(process.exitCode())};
        return {true, {}};
    }
    process.waitForFinished(-1);
    return {true, {}};
}
