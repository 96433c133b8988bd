#pragma once

#include <QString>
#include <QtGlobal>

// Starting the other programs of the suite. A command line names the program first; the
// program is looked up in the current folder first, then on the search path.
class Processes {
public:
    enum class Show { Normal, Maximised };
    // The value that stands for the exit code when a program could not be started or waited on.
    static constexpr int WaitFailed = -1;

    virtual ~Processes() = default;
    // Waits until the program ends and returns its exit code, or WaitFailed. The module takes
    // no keys, clicks or close requests meanwhile, but its windows go on painting.
    virtual int runAndWait(const QString &commandLine) = 0;
    // Starts the program and returns at once with its process id (0 when it could not be
    // started); when settleMsecs > 0 it first gives the program that long to end by itself (a
    // viewer that cannot open its file quits at once).
    virtual qint64 start(const QString &commandLine, Show show = Show::Normal,
                         int settleMsecs = 0) = 0;
};

class SystemProcesses : public Processes {
public:
    int runAndWait(const QString &commandLine) override;
    qint64 start(const QString &commandLine, Show show, int settleMsecs) override;

    // The program path a command line's first word resolves to ("" when none is found): a
    // program of the current (data) folder, then one on the search path, then for a suite name
    // "NAME.exe" the installed NAME beside this program (installedFolder).
    static QString resolveProgram(const QString &name);
    static QString resolveProgram(const QString &name, const QString &installedFolder);
};
