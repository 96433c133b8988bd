#pragma once

#include <QString>
#include <QtGlobal>

// How a picker of the suite (venlookp, gllookup) hands the number the user picked back to the
// module that started it. The picker writes a small file in the user's runtime folder, named
// after the process id of the module (the picker's parent), holding the picker's name on the
// first line and the number on the second. The module clears the file before it runs the picker
// and takes it after the run-and-wait; no file, or a file of another picker, means nothing was
// picked. The clipboard is not used: on X11 its text goes with the program that set it, and the
// user's own clipboard is left alone.
namespace PickedAnswer {

// The answer file for a module of that process id.
QString pathFor(qint64 modulePid);
// Picker side: leaves the answer for the module; false when the file could not be written.
bool leave(qint64 modulePid, const QString &picker, const QString &number);
// Module side, for this process: removes an answer left from before.
void clear();
// Module side: the number the named picker left for this process ("" when none), removed.
QString take(const QString &picker);

} // namespace PickedAnswer
