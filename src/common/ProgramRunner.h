#pragma once

#include <QString>

#include <functional>

class Clipboard;
class Clock;
class Dialogs;
class Processes;
struct Session;

// Running the suite's other programs: run-and-wait with its warning and log line, and the help.
class ProgramRunner {
public:
    ProgramRunner(Processes &processes, Dialogs &dialogs, Clock &clock, Clipboard &clipboard,
                  Session &session) :
        m_processes(processes),
        m_dialogs(dialogs), m_clock(clock), m_clipboard(clipboard), m_session(session)
    {
    }

    // Blocks until the program ends. A non-zero exit shows the warning, logs it and gives 0.
    int runAndWait(const QString &commandLine);
    // Appends "date-time-user-location-message" to lastbkup.dat or admlog.ini.
    void writeAdminLog();
    // The main window's help: the manual in the help viewer, or the plain-text help in the editor.
    // notTopmost takes the main window out of the always-on-top state first.
    void help(const std::function<void()> &notTopmost);
    // The version viewer's command line for this program.
    QString versionCommand(const QString &programName) const;
    // How long the help viewer is given to say that it cannot show the manual.
    void setHelpSettleMsecs(int msecs) { m_helpSettleMsecs = msecs; }

private:
    Processes &m_processes;
    Dialogs &m_dialogs;
    Clock &m_clock;
    Clipboard &m_clipboard;
    Session &m_session;
    int m_helpSettleMsecs = 1500;
};
