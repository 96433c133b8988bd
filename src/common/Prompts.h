#pragma once

#include <QString>

class AccountLookup;
class Clock;
class Dialogs;
struct Session;

// The suite's shared prompts: they take their input from the session's message text and leave
// their answer there.
namespace Prompts {

// Asks for a FROM and a TO date (YYYYMMDD; four characters are completed with this year;
// MM/DD/YYYY and M/D/YYYY are read as that day). An answer asked for again says why.
// The context word in session.messageText becomes part of the titles. Leaves the sixteen
// characters of the earlier and the later date, or "CANCEL".
void askDateRange(Dialogs &dialogs, const Clock &clock, Session &session);

// Checks the account number in session.messageText against the chart of accounts. Keeps the
// account's name, type and level in the session, or shows that it does not exist and leaves
// "REDO".
void checkGlAccount(AccountLookup &accounts, Dialogs &dialogs, Session &session);

// "Access denied.", for a user whose level is too low for a step.
void showAccessDenied(Dialogs &dialogs);

// The message of a database file the record helpers did not find.
void showDatabaseMissing(Dialogs &dialogs, const QString &fileName);

} // namespace Prompts
