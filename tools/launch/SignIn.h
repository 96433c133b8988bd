#pragma once

#include "StaffList.h"

#include <QString>

#include <vector>

namespace SignIn {

// The file in a data folder that lets whoever starts the launcher choose any name of the staff
// list: for a shared demo company or a machine with one user. Without it the desktop login
// name decides who signs in.
inline constexpr char choiceMarker[] = "stafflist.dat";

// The module's one argument: its code "VDR", the level as two digits and the user name.
QString argument(const StaffMember &member);
// Whether the company lets the user choose a name from its staff list.
bool choosingAllowed(const QString &dataFolder);
// The staff member whose name is the login name, compared as the module compares staff names
// (trimmed, without regard to case); nullptr when there is none.
const StaffMember *forLogin(const std::vector<StaffMember> &staff, const QString &login);
// The name the user logged in to the desktop with.
QString desktopLoginName();

} // namespace SignIn
