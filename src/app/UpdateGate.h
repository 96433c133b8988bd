#pragma once

class Dialogs;
struct Session;

// While the suite's databases wait for an update ("dbupdate.dat" in the data folder) no module
// may work on them: the gate shows why and leaves "UPDREQ" in the session's message text.
namespace UpdateGate {
void check(Dialogs &dialogs, Session &session);
}
