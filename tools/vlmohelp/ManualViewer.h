#pragma once

#include <QString>
#include <QStringList>

// Finding the manual and handing it to the desktop's PDF viewer.
namespace ManualViewer {

// Where the manual is: the data folder's own file first, else the installed copy in
// share/apmaster beside the program's bin folder. "" when neither exists.
QString find(const QString &name, const QString &dataFolder, const QString &programFolder);

// The viewer's command: the setting APMASTER_PDF_VIEWER (a program and its first words) when
// set, else the desktop's opener, xdg-open.
QStringList viewerCommand();

struct Outcome {
    bool opened = false;
    QString problem; // why not, for the message on standard error
};

// Starts the viewer on the file and gives it checkMsecs to refuse it: a viewer that cannot be
// started, or that ends with a non-zero exit code within that time, has not opened it. A viewer
// still running then, or ended with 0, has; the call then returns when the viewer has ended, so
// that the viewer keeps its parent.
Outcome open(const QString &file, const QStringList &viewer, int checkMsecs);

} // namespace ManualViewer
