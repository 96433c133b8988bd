#include "support/ModuleCopy.h"

#include <gtest/gtest.h>

namespace {
constexpr int answerMsecs = 60000;
}

ModuleCopy::ModuleCopy(const QString &dataFolder, const QString &lockFolder,
                       const QString &argument, const QProcessEnvironment &environment,
                       const QStringList &wrapper)
{
    QProcessEnvironment env = environment;
    // Offscreen unless the caller asks for a real display (a copy under xvfb-run, say).
    if (env.value(QStringLiteral("QT_QPA_PLATFORM")) != QLatin1String("xcb"))
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    m_process.setProcessEnvironment(env);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QStringList arguments = wrapper;
    arguments << QStringLiteral(APMASTER_COPY_PROGRAM) << dataFolder << lockFolder << argument;
    const QString program = arguments.takeFirst();
    m_process.start(program, arguments);
    if (!m_process.waitForStarted(answerMsecs)) {
        ADD_FAILURE() << "apmaster-copy did not start: " << m_process.errorString().toStdString();
        return;
    }
    for (;;) {
        const QString line = readLine();
        if (line.isNull())
            break;
        m_startLines << line;
        if (line == QLatin1String("started") || line.startsWith(QLatin1String("refused")))
            break;
    }
    if (!started())
        m_process.waitForFinished(answerMsecs);
}

ModuleCopy::~ModuleCopy()
{
    if (m_process.state() != QProcess::NotRunning)
        quit();
}

QString ModuleCopy::readLine()
{
    while (!m_process.canReadLine())
        if (!m_process.waitForReadyRead(answerMsecs) && !m_process.canReadLine())
            return {};
    return QString::fromUtf8(m_process.readLine()).chopped(1);
}

QStringList ModuleCopy::send(const QString &command)
{
    post(command);
    return answer();
}

QStringList ModuleCopy::answer()
{
    QStringList lines;
    for (;;) {
        const QString line = readLine();
        if (line.isNull()) {
            ADD_FAILURE() << "apmaster-copy ended before it answered";
            break;
        }
        if (line == QLatin1String("done"))
            break;
        lines << line;
    }
    return lines;
}

bool ModuleCopy::hasAnswer()
{
    m_process.waitForReadyRead(0);
    const QByteArray waiting = m_process.peek(m_process.bytesAvailable());
    return waiting.startsWith("done\n") || waiting.contains("\ndone\n");
}

void ModuleCopy::post(const QString &command)
{
    m_process.write((command + QLatin1Char('\n')).toUtf8());
    m_process.waitForBytesWritten(answerMsecs);
}

void ModuleCopy::kill()
{
    m_process.kill();
    m_process.waitForFinished(answerMsecs);
}

QStringList ModuleCopy::dialogs(const QStringList &lines)
{
    QStringList shown;
    for (const QString &line : lines)
        if (line.startsWith(QLatin1String("dialog|")))
            shown << line.mid(7);
    return shown;
}

int ModuleCopy::quit()
{
    m_process.write("quit\n");
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(answerMsecs)) {
        m_process.kill();
        m_process.waitForFinished();
    }
    return m_process.exitCode();
}
