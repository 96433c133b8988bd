#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

// One running copy of a module per user and machine: a lock file per module code in the user's
// runtime folder. A crashed copy's lock is stale and is taken over.
class SingleInstance {
public:
    SingleInstance(const QString &folder, const QString &moduleCode);
    // False when another live copy holds the lock.
    bool acquire();
    QString lockPath() const { return m_path; }

    // The user's runtime folder: the same for every shell of the user, whatever its TMPDIR.
    static QString defaultFolder();

private:
    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
};
