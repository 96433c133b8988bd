#include "app/SingleInstance.h"

#include <QDir>

SingleInstance::SingleInstance(const QString &folder, const QString &moduleCode) :
    m_path(QDir(folder).absoluteFilePath(QStringLiteral("velmora-%1.lock").arg(moduleCode)))
{
}

bool SingleInstance::acquire()
{
    m_lock = std::make_unique<QLockFile>(m_path);
    m_lock->setStaleLockTime(0); // a lock is stale only when its process is gone
    if (m_lock->tryLock(0))
        return true;
    m_lock.reset();
    return false;
}
