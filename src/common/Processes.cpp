#include "common/Processes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {
struct SplitCommand {
    QString program;
    QStringList arguments;
};

SplitCommand split(const QString &commandLine)
{
    QStringList words = QProcess::splitCommand(commandLine);
    SplitCommand cmd;
    if (!words.isEmpty()) {
        cmd.program = SystemProcesses::resolveProgram(words.takeFirst());
        cmd.arguments = words;
    }
    return cmd;
}
} // namespace

QString SystemProcesses::resolveProgram(const QString &name)
{
    if (name.isEmpty())
        return {};
    const QFileInfo local(QDir::current(), name);
    if (local.isFile() && local.isExecutable())
        return local.absoluteFilePath();
    if (name.contains(QLatin1Char('/')))
        return {};
    return QStandardPaths::findExecutable(name);
}

int SystemProcesses::runAndWait(const QString &commandLine)
{
    const SplitCommand cmd = split(commandLine);
    if (cmd.program.isEmpty())
        return WaitFailed;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.start(cmd.program, cmd.arguments);
    if (!process.waitForStarted(-1) || !process.waitForFinished(-1))
        return WaitFailed;
    if (process.exitStatus() != QProcess::NormalExit)
        return WaitFailed;
    return process.exitCode();
}

qint64 SystemProcesses::start(const QString &commandLine, Show show, int settleMsecs)
{
    Q_UNUSED(show); // window states are the started program's own business on this platform
    const SplitCommand cmd = split(commandLine);
    if (cmd.program.isEmpty())
        return 0;
    if (settleMsecs <= 0) {
        qint64 id = 0;
        return QProcess::startDetached(cmd.program, cmd.arguments, QString(), &id) ? id : 0;
    }
    // Owned by nobody and deleted when the program ends, so that a program still running after
    // the settling time outlives this module instead of being killed with its QProcess.
    auto *process = new QProcess;
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    process->start(cmd.program, cmd.arguments);
    if (!process->waitForStarted(-1)) {
        process->deleteLater();
        return 0;
    }
    const qint64 id = process->processId();
    process->waitForFinished(settleMsecs);
    return id;
}
