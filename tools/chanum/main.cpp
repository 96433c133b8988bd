// chanum: the suite's vendor-number utility. The vendor screen starts it as
// "chanum.exe CVN05JSMITH" (change a vendor number) or "chanum.exe MVN05JSMITH" (merge two
// vendors), in the company's data folder, with the user name on the clipboard.
#include "AnswerDialogs.h"
#include "NumberJob.h"

#include "common/Clipboard.h"
#include "common/Clock.h"
#include "common/Processes.h"
#include "common/ProgramError.h"
#include "common/ProgramRunner.h"
#include "common/Session.h"
#include "data/Databases.h"

#include <QApplication>
#include <QFile>
#include <QGuiApplication>
#include <QThread>

#include <cstdio>

namespace {

const char *usage =
    "Usage: chanum [--answers FILE] [--hold-before-commit] JOB\n"
    "Changes a vendor number (JOB CVN05JSMITH) or merges two vendors (JOB MVN05JSMITH) in the\n"
    "company of the current folder, for the user named in JOB, whose name is on the clipboard.\n"
    "  --answers FILE        answer the dialogs from FILE instead of the screen (see the user\n"
    "                        guide); every dialog is written to standard output\n"
    "  --hold-before-commit  for tests: stop inside the transaction, just before the commit,\n"
    "                        after writing the file chanum.holding\n";

} // namespace

int main(int argc, char *argv[])
{
    QString answersFile;
    bool hold = false;
    QStringList job;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QString::fromLocal8Bit(argv[i]);
        if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            std::fputs(usage, stdout);
            return 0;
        }
        if (arg == QLatin1String("--version")) {
            std::printf("chanum %s\n", APMASTER_VERSION);
            return 0;
        }
        if (arg == QLatin1String("--answers") && i + 1 < argc)
            answersFile = QString::fromLocal8Bit(argv[++i]);
        else if (arg == QLatin1String("--hold-before-commit"))
            hold = true;
        else
            job << arg; // a user name with a blank arrives as two words
    }
    // Answered from a file, the program needs no screen.
    if (!answersFile.isEmpty() && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("chanum"));

    std::optional<AnswerDialogs> answers;
    try {
        if (!answersFile.isEmpty())
            answers = AnswerDialogs::fromFile(answersFile);
    } catch (const ProgramError &error) {
        std::fprintf(stderr, "chanum: %s\n", qPrintable(error.text()));
        return error.exitCode();
    }
    NoByDefaultDialogs screenDialogs;
    Dialogs &dialogs = answers ? static_cast<Dialogs &>(*answers) : screenDialogs;
    SystemClipboard clipboard;
    const QString clipboardText =
        answers && answers->clipboard() ? *answers->clipboard() : clipboard.text();

    SystemClock clock;
    SystemProcesses processes;
    Session session;
    Databases databases;
    ProgramRunner log(processes, dialogs, clock, clipboard, session);
    NumberJob::Services services{databases, dialogs, clock, log, session, {}, {}};
    // While another user holds a vendor the pointer is busy and the tries are told on stderr.
    bool busy = false;
    services.status = [&busy](const QString &text) {
        if (!text.isEmpty())
            std::fprintf(stderr, "chanum: %s\n", qPrintable(text));
        if (text.isEmpty() == busy) {
            busy = !busy;
            if (busy)
                QGuiApplication::setOverrideCursor(Qt::WaitCursor);
            else
                QGuiApplication::restoreOverrideCursor();
        }
    };
    if (hold)
        services.beforeCommit = [] {
            QFile flag(QStringLiteral("chanum.holding"));
            if (flag.open(QIODevice::WriteOnly))
                flag.write("holding\n");
            flag.close();
            for (;;)
                QThread::sleep(1);
        };
    NumberJob numberJob(services);
    return numberJob.run(job.join(QLatin1Char(' ')), clipboardText);
}
