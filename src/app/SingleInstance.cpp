#include "app/SingleInstance.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

SingleInstance::SingleInstance(const QString &folder, const QString &moduleCode) :
    m_path(QDir(folder).absoluteFilePath(QStringLiteral("velmora-%1.lock").arg(moduleCode)))
{
}

bool SingleInstance::acquire()
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    m_lock = std::make_unique<QLockFile>(m_path);
    m_lock->setStaleLockTime(0); // a lock is stale only when its process is gone
    if (m_lock->tryLock(0))
        return true;
    m_lock.reset();
    return false;
}

QString SingleInstance::defaultFolder()
{
#ifdef Q_OS_UNIX
    // Without XDG_RUNTIME_DIR, Qt's runtime location falls back to a folder under TMPDIR, which
    // differs from shell to shell; the user's own folder under /run/user, or else a folder named
    // after the user id in /tmp, is the same for all of them.
    const QString xdg = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!xdg.isEmpty() && QFileInfo(xdg).isDir())
        return xdg;
    const QString run = QStringLiteral("/run/user/%1").arg(getuid());
    if (QFileInfo(run).isDir() && QFileInfo(run).isWritable())
        return run;
    const QString own = QStringLiteral("/tmp/velmora-runtime-%1").arg(getuid());
    if (QDir().mkpath(own))
        chmod(QFile::encodeName(own).constData(), 0700);
    return own;
#else
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
#endif
}
