#pragma once

#include "PickerIndex.h"
#include "PickerWindow.h"

#include <QList>
#include <QString>

#include <functional>

// What makes a picker program: its name, its list and where the list comes from.
struct PickerProgram {
    const char *name; // "venlookp": the name the answer is marked with, and the usage's
    const char *usage;
    PickerWindow::Texts texts;
    QList<PickerColumn> columns;
    // Fills the index from the company's data folder; throws DbError.
    std::function<void(PickerIndex &, const QString &folder)> load;
    QString cannotRead; // the message when the database cannot be read ("%1": the engine's reason)
    // Whether the number is still in the company's data folder, asked when a row is picked;
    // throws DbError. The note when it is not ("%1": the number).
    std::function<bool(const QString &folder, const QString &number)> stillThere;
    QString goneNote;
};

// The picker's main: --help and --version; else the window on the current folder's company.
// A pick is left for the module that started the program (PickedAnswer) and the program ends
// with 0; Escape ends it with 0 leaving nothing. A database that cannot be read is reported in
// a message box and ends the program with 2. The setting APMASTER_PICKER_KEYS, when present,
// holds keys in the keystroke sender's notation ("harb{DOWN}{ENTER}") that are typed into the
// window once it shows, as a user would type them; such a run reports a refusal on the error
// output only.
int runPicker(int argc, char *argv[], const PickerProgram &program);
