#include "AccessReader.h"

#include "ImportError.h"
#include "ReaderStream.h"

#include <QDeadlineTimer>
#include <QProcess>

namespace {
// Stops the reader whatever way the read is left (a conversion error thrown by the sink too).
struct ProcessStopper {
    QProcess &process;
    ~ProcessStopper()
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished(5000);
        }
    }
};
} // namespace

void AccessReader::read(const QString &path, SourceSink &sink) const
{
    QProcess process;
    process.setProgram(m_program);
    process.setArguments({path});
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    ProcessStopper stopper{process};
    process.start();
    if (!process.waitForStarted(10000))
        throw ImportError(QStringLiteral("the Access reader '%1' could not be started (%2)")
                              .arg(m_program, process.errorString()));
    ReaderStream stream(sink);
    const QDeadlineTimer deadline(qint64(m_timeLimitSecs) * 1000);
    while (!stream.finished()) {
        // Checked on every turn: a reader caught in a loop may send rows without end.
        if (deadline.hasExpired())
            throw ImportError(QStringLiteral("reading it did not end within %1 seconds, so "
                                             "it was stopped: the file is probably damaged")
                                  .arg(m_timeLimitSecs));
        if (process.bytesAvailable() == 0) {
            if (process.state() == QProcess::NotRunning) {
                // Whatever is left came before the end.
                stream.feed(process.readAllStandardOutput());
                break;
            }
            process.waitForReadyRead(int(qMin<qint64>(deadline.remainingTime(), 1000)));
            continue;
        }
        stream.feed(process.readAllStandardOutput());
    }
    if (!stream.failure().isEmpty())
        throw ImportError(stream.failure());
    if (!stream.finished()) {
        process.waitForFinished(1000);
        const QString detail = QString::fromLocal8Bit(process.readAllStandardError()).trimmed();
        throw ImportError(
            (process.exitStatus() == QProcess::CrashExit
                 ? QStringLiteral("the Access reader broke down on it: the file is damaged")
                 : QStringLiteral("the Access reader stopped before the end of it: the file is "
                                  "damaged")) +
            (detail.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(detail.left(300))));
    }
    if (!process.waitForFinished(int(qMax<qint64>(deadline.remainingTime(), 1000))))
        throw ImportError(QStringLiteral("the Access reader did not end after the last row"));
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw ImportError(QStringLiteral("the Access reader ended with an error after the last "
                                         "row: the file is damaged"));
}
