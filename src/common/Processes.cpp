#include "common/Processes.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>

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

// While the module waits for a program it started, its windows take no close request: the
// user's keys and clicks wait in the queue until the program ends, as they would while the
// module is blocked, but the windows still paint and answer the desktop (a window that stops
// answering is offered to be killed as "not responding").
class CloseRefusal : public QObject {
public:
    CloseRefusal() { QCoreApplication::instance()->installEventFilter(this); }
    ~CloseRefusal() override { QCoreApplication::instance()->removeEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::Close)
            return false;
        event->ignore();
        return true;
    }
};

// Runs the event loop without user input until the process ends.
void waitPainting(QProcess &process)
{
    if (!QCoreApplication::instance()) {
        process.waitForFinished(-1);
        return;
    }
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&process, &loop] {
        if (process.state() == QProcess::NotRunning)
            loop.quit();
    });
    if (process.state() == QProcess::NotRunning)
        return;
    const CloseRefusal refusal;
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

// Whether a detached program has ended: gone from the process table, or ended and not yet
// collected by the process that adopted it.
bool ended(qint64 id)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(id));
    if (!stat.open(QIODevice::ReadOnly))
        return true;
    const QByteArray line = stat.readAll();
    const qsizetype name = line.lastIndexOf(')');
    const char state = name >= 0 && name + 2 < line.size() ? line.at(name + 2) : 'X';
    return state == 'Z' || state == 'X';
}
} // namespace

QString SystemProcesses::resolveProgram(const QString &name)
{
    return resolveProgram(
        name, QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString());
}

QString SystemProcesses::resolveProgram(const QString &name, const QString &installedFolder)
{
    if (name.isEmpty())
        return {};
    const QFileInfo local(QDir::current(), name);
    if (local.isFile() && local.isExecutable())
        return local.absoluteFilePath();
    if (name.contains(QLatin1Char('/')))
        return {};
    const QString onPath = QStandardPaths::findExecutable(name);
    if (!onPath.isEmpty() || installedFolder.isEmpty())
        return onPath;
    // The suite's programs are installed beside the module under their own names, without the
    // ".exe" of the names the module starts them by.
    const QString suffix = QStringLiteral(".exe");
    if (!name.endsWith(suffix, Qt::CaseInsensitive) || name.size() == suffix.size())
        return {};
    const QFileInfo installed(QDir(installedFolder), name.chopped(suffix.size()));
    return installed.isFile() && installed.isExecutable() ? installed.absoluteFilePath()
                                                          : QString();
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
    if (!process.waitForStarted(-1))
        return WaitFailed;
    waitPainting(process);
    if (process.state() != QProcess::NotRunning || process.exitStatus() != QProcess::NormalExit)
        return WaitFailed;
    return process.exitCode();
}

qint64 SystemProcesses::start(const QString &commandLine, Show show, int settleMsecs)
{
    Q_UNUSED(show); // window states are the started program's own business on this platform
    const SplitCommand cmd = split(commandLine);
    if (cmd.program.isEmpty())
        return 0;
    // Detached, so that a program still running after the settling time outlives this module
    // instead of being ended with it, and leaves nothing of this module's behind.
    qint64 id = 0;
    if (!QProcess::startDetached(cmd.program, cmd.arguments, QString(), &id))
        return 0;
    const QDeadlineTimer settled(settleMsecs);
    while (settleMsecs > 0 && !ended(id) && !settled.hasExpired())
        QThread::msleep(10);
    return id;
}
