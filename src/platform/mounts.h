#pragma once
// Network paths in both spellings. Settings files and the database name a shared
// folder the Windows way, "\\server\share\folder"; on Linux that share is a cifs
// (or nfs) mount somewhere in the file tree. The mount table turns one into the
// other:
//
//   uncPathOf("/mnt/staff/veskor")              -> "\\fileserver\Staff Share\veskor"
//   nativePathOf("\\FILESERVER\staff share\x")  -> "/mnt/staff/x"
//
// An nfs export "host:/export" is named "\\host\export"; a share the desktop
// opened through GVfs ("smb-share:server=host,share=x" under its FUSE mount) is
// "\\host\x". Paths on no network mount stay as they are.

#include <QList>
#include <QString>
#include <optional>

namespace platform {

struct MountEntry
{
    QString source;                     // "//server/share", "host:/export", "/dev/sda1"
    QString mountPoint;                 // "/mnt/staff"
    QString fsType;                     // "cifs", "smb3", "nfs", "nfs4", "ext4"...
    QString root = QStringLiteral("/"); // the source's folder shown there (a bind mount of a sub-folder)
};
using MountTable = QList<MountEntry>;

// The entries of /proc/self/mountinfo text, in its order, octal escapes
// (\040 for a blank...) decoded. Lines that do not parse are passed over.
MountTable parseMountInfo(const QString& text);

// The table in use: the one handed in, else /proc/self/mountinfo read afresh.
MountTable mountTable();
// Tests hand in a table; std::nullopt goes back to the system's.
void setMountTable(std::optional<MountTable> table);

// The UNC form of an absolute path under a network mount (the longest mount
// point holding the path decides); any other path comes back unchanged.
QString uncPathOf(const QString& path);
// The local form of a "\\server\share\..." path: the mount whose source is the
// longest prefix of it (server and share without regard to case), then the rest
// with "/" separators. Any other path, or a share not mounted, comes back
// unchanged, backslashes and all.
QString nativePathOf(const QString& path);

} // namespace platform
