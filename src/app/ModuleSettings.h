#pragma once

#include <QString>

class Databases;
class Dialogs;
struct Session;

// The launcher's argument and this module's row of settings in config.mdb.
namespace ModuleSettings {

enum class Outcome { Run, NotFromLauncher, AccessDenied, SettingsUnreadable };

// Reads the argument and the settings into the session; shows the refusal messages. Settings
// that cannot be read throw DbError (the caller reports it and ends the program).
Outcome read(const QString &argument, Databases &dbs, Dialogs &dialogs, Session &session,
             bool &canadian);

} // namespace ModuleSettings
