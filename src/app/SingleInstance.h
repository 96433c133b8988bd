#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

// One running copy of a module per machine: a lock file per module code in a folder shared by
// every user of the machine (the system's temporary folder). A crashed copy's lock is stale and
// is taken over.
class SingleInstance {
public:
    SingleInstance(const QString &folder, const QString &moduleCode);
    // False when another live copy holds the lock.
    bool acquire();
    QString lockPath() const { return m_path; }

private:
    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
};
