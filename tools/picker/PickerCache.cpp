#include "PickerCache.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

// How long a run waits for another one bringing the same file up to date.
constexpr int lockWaitMsecs = 30000;

QString canonical(const QString &dataFolder)
{
    const QString path = QFileInfo(dataFolder).canonicalFilePath();
    return path.isEmpty() ? QFileInfo(dataFolder).absoluteFilePath() : path;
}

// The new file's contents on the disk before its name replaces the kept one, so that a crash
// leaves the old file or the whole new one.
void syncToDisk(const QString &path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

// Work files of runs that ended before putting theirs in place (a crash, a kill).
void removeAbandonedWork(const QString &file)
{
    const QFileInfo kept(file);
    const QString prefix = kept.fileName() + QStringLiteral(".work-");
    for (const QFileInfo &work :
         QDir(kept.path()).entryInfoList({prefix + QLatin1Char('*')}, QDir::Files)) {
        bool ok = false;
        const qint64 pid = work.fileName().mid(prefix.size()).toLongLong(&ok);
        if (ok && pid > 0 && ::kill(pid_t(pid), 0) != 0 && errno == ESRCH)
            QFile::remove(work.filePath());
    }
}

} // namespace

namespace PickerCache {

QString folder(const QString &dataFolder)
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (cache.isEmpty())
        return {};
    const QString dir = QDir(cache).filePath(QStringLiteral("apmaster-pickers"));
    if (!QDir().mkpath(dir))
        return {};
    // The rows of a company are the user's to see: the folder is the user's alone.
    QFile::setPermissions(dir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString data = canonical(dataFolder) + QLatin1Char('/');
    if ((QFileInfo(dir).canonicalFilePath() + QLatin1Char('/')).startsWith(data))
        return {};
    return dir;
}

QString fileFor(const QString &cacheFolder, const QString &picker, const QString &dataFolder)
{
    const QByteArray hash =
        QCryptographicHash::hash(canonical(dataFolder).toUtf8(), QCryptographicHash::Sha256)
            .toHex()
            .left(32);
    return QDir(cacheFolder)
        .filePath(QStringLiteral("%1-%2.db").arg(picker, QString::fromLatin1(hash)));
}

QString identity(const QString &picker, const QString &dataFolder)
{
    return QStringLiteral("%1 %2 for %3")
        .arg(picker, QStringLiteral(APMASTER_VERSION), canonical(dataFolder));
}

std::unique_ptr<PickerIndex> open(const QString &file, const QList<PickerColumn> &columns,
                                  const QString &identity,
                                  const std::function<void(PickerIndex &)> &fill)
{
    QLockFile lock(file + QStringLiteral(".lock"));
    // Stale only when its process is gone: a run taking out many rows may hold it a while.
    lock.setStaleLockTime(0);
    const bool locked = lock.tryLock(lockWaitMsecs);
    if (locked) {
        removeAbandonedWork(file);
        if (std::unique_ptr<PickerIndex> kept = PickerIndex::openKept(file, columns, identity)) {
            fill(*kept);
            kept->finish();
            return kept;
        }
        lock.unlock();
    }
    // Made anew in a work file of this run's own, without holding up other runs meanwhile.
    const QString work = file + QStringLiteral(".work-%1").arg(::getpid());
    QFile::remove(work);
    std::unique_ptr<PickerIndex> made;
    try {
        made = std::make_unique<PickerIndex>(work, columns, identity);
        fill(*made);
        made->finish();
    } catch (...) {
        made.reset();
        QFile::remove(work);
        throw;
    }
    syncToDisk(work);
    // Put in place whole. No run is writing the kept file while the lock is held, so a journal
    // beside it is a crashed run's, and must not be played back into the new file.
    if (locked && lock.tryLock(lockWaitMsecs)) {
        QFile::remove(file + QStringLiteral("-journal"));
        if (std::rename(QFile::encodeName(work).constData(), QFile::encodeName(file).constData()) ==
            0)
            return made;
    }
    // Not kept (another run holds the file too long): used for this run only. The index stays
    // readable through the open file once its name is gone.
    QFile::remove(work);
    return made;
}

} // namespace PickerCache
