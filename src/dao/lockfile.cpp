#include "dao/lockfile.h"

#include "dao/jeterror.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace dao {

namespace {

// Open-file-description locks conflict between two opens in one process as well
// as between processes; plain POSIX locks are the fallback where they are missing.
#ifdef F_OFD_SETLK
constexpr int kSetLock = F_OFD_SETLK;
constexpr int kGetLock = F_OFD_GETLK;
#else
constexpr int kSetLock = F_SETLK;
constexpr int kGetLock = F_GETLK;
#endif

struct flock wholeFileWriteLock()
{
    struct flock lock;
    std::memset(&lock, 0, sizeof lock);
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0;
    lock.l_len = 0; // to the end, however long
    return lock;
}

} // namespace

LockFile::~LockFile()
{
    release();
}

QString LockFile::pathFor(const QString& databasePath)
{
    const QFileInfo info(databasePath);
    return info.absolutePath() + QLatin1Char('/') + info.completeBaseName() + QStringLiteral(".ldb");
}

bool LockFile::isHeld(const QString& lockPath)
{
    const int fd = ::open(QFile::encodeName(lockPath).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    struct flock probe = wholeFileWriteLock();
    const bool held = ::fcntl(fd, kGetLock, &probe) == 0 && probe.l_type == F_WRLCK;
    ::close(fd);
    return held;
}

void LockFile::acquire(const QString& lockPath)
{
    release();
    const int fd = ::open(QFile::encodeName(lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0) {
        const int err = errno;
        if (err == EACCES || err == EPERM || err == EROFS)
            raiseJetError(errNoPermission, lockPath);
        raiseJetError(errDiskOrNetwork, lockPath + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(err)));
    }
    struct flock lock = wholeFileWriteLock();
    if (::fcntl(fd, kSetLock, &lock) != 0) {
        ::close(fd);
        raiseJetError(errExclusivelyLocked, lockPath);
    }
    m_fd = fd;
}

void LockFile::release()
{
    if (m_fd < 0)
        return;
    // Closing the last descriptor of this open file drops its lock.
    ::close(m_fd);
    m_fd = -1;
}

} // namespace dao
