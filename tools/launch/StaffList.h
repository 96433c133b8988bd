#pragma once

#include <QString>

#include <vector>

// One row of a company's staff list: the name a user signs in with and the A/P level.
struct StaffMember {
    QString name;
    int level = 0;
};

// The staff list of a company, or why it could not be read.
struct StaffListing {
    std::vector<StaffMember> members; // by name
    QString error;                    // empty when the list was read
};

namespace StaffList {
// Reads the staff table of user.mdb in the data folder. The file is opened read-only, so the
// launcher never changes a company's databases, whoever runs it.
StaffListing read(const QString &dataFolder);
} // namespace StaffList
