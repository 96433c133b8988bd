#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The programs running on this machine as the process table shows them: for finding a program
// that another program started and left running (the module's Help starts without waiting).
struct RunningProgram {
    qint64 pid = 0;
    QString program;       // the first word of the command line
    QStringList arguments; // the words after it
    QString folder;        // the current folder, canonical
    QString display;       // DISPLAY of its environment
    QString authority;     // XAUTHORITY of its environment
};

// The programs whose first word ends in "/" + name and whose current folder is folder.
QList<RunningProgram> runningPrograms(const QString &name, const QString &folder);
// Waits up to msecs for exactly one such program and returns it (pid 0 when none came).
RunningProgram waitForProgram(const QString &name, const QString &folder, int msecs = 10000);
// Ends a program that a test caused to be started (by its id) and waits until it is gone.
void endProgram(qint64 pid);
