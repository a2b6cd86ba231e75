#include "dao/fileprobe.h"

#include "dao/jeterror.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dao {

namespace {

constexpr int kHeaderSize = 100;
constexpr char kSqliteMagic[] = "SQLite format 3"; // followed by a NUL

// The name and folder parts of the check, shared by open and create.
QString checkName(const QString& path)
{
    if (path.trimmed().isEmpty() || path.endsWith(QLatin1Char('/')))
        raiseJetError(errInvalidFileName, path);
    const QFileInfo info(path);
    if (info.isDir())
        raiseJetError(errInvalidFileName, path);
    if (!QFileInfo(info.absolutePath()).isDir())
        raiseJetError(errInvalidPath, path);
    return info.absoluteFilePath();
}

[[noreturn]] void raiseForErrno(int err, const QString& path)
{
    if (err == EACCES || err == EPERM || err == EROFS)
        raiseJetError(errNoPermission, path);
    if (err == ENOENT)
        raiseJetError(errFileNotFound, path);
    raiseJetError(errDiskOrNetwork, path + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(err)));
}

quint32 bigEndian(const unsigned char* p, int bytes)
{
    quint32 v = 0;
    for (int i = 0; i < bytes; ++i)
        v = (v << 8) | p[i];
    return v;
}

bool isLegacyJet(const unsigned char* header, qint64 length)
{
    if (length < 19)
        return false;
    const char* text = reinterpret_cast<const char*>(header) + 4;
    return std::memcmp(text, "Standard Jet DB", 15) == 0 || std::memcmp(text, "Standard ACE DB", 15) == 0;
}

// The header names the page size and, when its "valid for" stamp matches the
// change counter, the page count: a file shorter than both was cut short.
void checkHeader(const unsigned char* header, qint64 length, qint64 fileSize, const QString& path)
{
    if (isLegacyJet(header, length))
        raiseJetError(errUnrecognizedFormat,
                      path +
                          QStringLiteral(": a legacy Microsoft Access (Jet) database, which this program cannot read"));
    if (length < kHeaderSize || std::memcmp(header, kSqliteMagic, sizeof kSqliteMagic) != 0)
        raiseJetError(errUnrecognizedFormat, path);
    quint32 pageSize = bigEndian(header + 16, 2);
    if (pageSize == 1)
        pageSize = 65536;
    if (pageSize < 512 || pageSize > 65536 || (pageSize & (pageSize - 1)) != 0)
        raiseJetError(errCorrupt, path);
    const quint32 pageCount = bigEndian(header + 28, 4);
    const bool countValid = bigEndian(header + 92, 4) == bigEndian(header + 24, 4);
    if (countValid && pageCount > 0 && fileSize < qint64(pageCount) * pageSize)
        raiseJetError(errCorrupt, path + QStringLiteral(": the file is shorter than its header says"));
}

} // namespace

QString checkExistingDatabase(const QString& path, bool readOnly)
{
    const QString absolute = checkName(path);
    const QByteArray native = QFile::encodeName(absolute);
    const int fd = ::open(native.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        raiseForErrno(errno, path);
    unsigned char header[kHeaderSize] = {};
    struct stat st = {};
    const ssize_t length = ::pread(fd, header, sizeof header, 0);
    int err = length < 0 ? errno : 0;
    if (err == 0 && ::fstat(fd, &st) != 0)
        err = errno;
    ::close(fd);
    if (err != 0)
        raiseForErrno(err, path);
    if (!readOnly && ::access(native.constData(), W_OK) != 0)
        raiseForErrno(errno, path);
    checkHeader(header, length, st.st_size, path);
    return absolute;
}

QString checkNewDatabase(const QString& path)
{
    const QString absolute = checkName(path);
    if (QFileInfo::exists(absolute))
        raiseJetError(errDatabaseExists, path);
    return absolute;
}

} // namespace dao
