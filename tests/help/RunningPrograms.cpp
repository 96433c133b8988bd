#include "RunningPrograms.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <csignal>

namespace {

QByteArrayList nulSeparated(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArrayList words = file.readAll().split('\0');
    if (!words.isEmpty() && words.last().isEmpty())
        words.removeLast();
    return words;
}

} // namespace

QList<RunningProgram> runningPrograms(const QString &name, const QString &folder)
{
    QList<RunningProgram> found;
    const QString wanted = QDir(folder).canonicalPath();
    const QDir proc(QStringLiteral("/proc"));
    for (const QString &entry : proc.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool number = false;
        const qint64 pid = entry.toLongLong(&number);
        if (!number)
            continue;
        const QByteArrayList words =
            nulSeparated(proc.filePath(entry + QStringLiteral("/cmdline")));
        if (words.isEmpty() ||
            !QString::fromLocal8Bit(words.first()).endsWith(QLatin1Char('/') + name))
            continue;
        const QString cwd =
            QFileInfo(proc.filePath(entry + QStringLiteral("/cwd"))).canonicalFilePath();
        if (cwd != wanted)
            continue;
        RunningProgram program;
        program.pid = pid;
        program.program = QString::fromLocal8Bit(words.first());
        for (qsizetype i = 1; i < words.size(); ++i)
            program.arguments << QString::fromLocal8Bit(words[i]);
        program.folder = cwd;
        for (const QByteArray &variable :
             nulSeparated(proc.filePath(entry + QStringLiteral("/environ")))) {
            if (variable.startsWith("DISPLAY="))
                program.display = QString::fromLocal8Bit(variable.mid(8));
            else if (variable.startsWith("XAUTHORITY="))
                program.authority = QString::fromLocal8Bit(variable.mid(11));
        }
        found << program;
    }
    return found;
}

RunningProgram waitForProgram(const QString &name, const QString &folder, int msecs)
{
    QList<RunningProgram> found;
    (void)QTest::qWaitFor(
        [&] {
            found = runningPrograms(name, folder);
            return found.size() == 1;
        },
        msecs);
    return found.size() == 1 ? found.first() : RunningProgram{};
}

void endProgram(qint64 pid)
{
    if (pid <= 0)
        return;
    ::kill(static_cast<pid_t>(pid), SIGTERM);
    // Gone, or ended and waiting for whoever adopted it to collect it.
    (void)QTest::qWaitFor(
        [pid] {
            QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
            if (!stat.open(QIODevice::ReadOnly))
                return true;
            const QByteArray line = stat.readAll();
            return line.mid(line.lastIndexOf(')') + 2, 1) == "Z";
        },
        10000);
}
