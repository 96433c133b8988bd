#pragma once

#include <QString>

#include <vector>

// One row of a company's staff list: the name a user signs in with and the A/P level.
struct StaffMember {
    QString name;
    int level = 0;
};

namespace StaffList {
// Reads the staff table of user.mdb in the data folder, by name. The file is opened read-only,
// so the launcher never changes a company's databases, whoever runs it. Throws ProgramError,
// worded for the user, when the list cannot be read.
std::vector<StaffMember> read(const QString &dataFolder);
} // namespace StaffList
