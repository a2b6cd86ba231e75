#include "platform/mounts.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QUrl>

namespace platform {

namespace {

const QString kBackslash = QStringLiteral("\\");
const QString kUncStart = QStringLiteral("\\\\");

std::optional<MountTable>& handedIn()
{
    static std::optional<MountTable> table;
    return table;
}

// The kernel writes a blank, tab, newline and backslash in a name as \ooo.
QString decodeOctal(const QString& field)
{
    QString out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        const QString digits = field.mid(i + 1, 3);
        bool ok = false;
        const int code = digits.size() == 3 ? digits.toInt(&ok, 8) : 0;
        if (field[i] == QLatin1Char('\\') && ok && digits[0].isDigit()) {
            out += QChar(code);
            i += 3;
        } else {
            out += field[i];
        }
    }
    return out;
}

bool isNetworkType(const QString& fsType)
{
    static const QStringList types = {QStringLiteral("cifs"), QStringLiteral("smb3"), QStringLiteral("smbfs"),
                                      QStringLiteral("nfs"), QStringLiteral("nfs4")};
    return types.contains(fsType);
}

QString withoutTrailingBackslashes(QString path)
{
    while (path.size() > 2 && path.endsWith(kBackslash)) {
        path.chop(1);
    }
    return path;
}

// The "\\server\share\sub" a network mount stands for; "" for any other mount.
QString uncOfMount(const MountEntry& m)
{
    if (!isNetworkType(m.fsType)) {
        return QString();
    }
    QString unc;
    if (m.fsType.startsWith(QLatin1String("nfs"))) {
        const qsizetype colon = m.source.indexOf(QLatin1String(":/"));
        if (colon <= 0) {
            return QString();
        }
        unc = kUncStart + m.source.left(colon) + m.source.mid(colon + 1);
    } else {
        if (!m.source.startsWith(QLatin1String("//")) && !m.source.startsWith(kUncStart)) {
            return QString();
        }
        unc = m.source;
    }
    unc.replace(QLatin1Char('/'), QLatin1Char('\\'));
    unc = withoutTrailingBackslashes(unc);
    // A bind mount of a share's sub-folder shows the share as source and the folder
    // as root; some kernels show a cifs prefix path in both, so it is added once.
    QString sub = m.root;
    sub.replace(QLatin1Char('/'), QLatin1Char('\\'));
    sub = withoutTrailingBackslashes(sub);
    if (sub != kBackslash && !unc.endsWith(sub, Qt::CaseInsensitive)) {
        unc += sub;
    }
    return unc;
}

// A GVfs share is a folder under the desktop's one FUSE mount, named for the
// share: "smb-share:server=fileserver,share=staff%20share" (keys in any order,
// maybe with domain= and user=, values %-escaped). Each becomes an entry of its
// own, as if the share were mounted at that folder.
QString gvfsField(const QStringList& fields, const QString& key)
{
    for (const QString& field : fields) {
        if (field.startsWith(key + QLatin1Char('='))) {
            return QUrl::fromPercentEncoding(field.mid(key.size() + 1).toUtf8());
        }
    }
    return QString();
}

MountTable withGvfsShares(const MountTable& table)
{
    MountTable out;
    for (const MountEntry& m : table) {
        out.append(m);
        if (m.fsType != QLatin1String("fuse.gvfsd-fuse")) {
            continue;
        }
        const QString prefix = QStringLiteral("smb-share:");
        for (const QString& folder : QDir(m.mountPoint).entryList({prefix + QLatin1Char('*')}, QDir::Dirs)) {
            const QStringList fields = folder.mid(prefix.size()).split(QLatin1Char(','));
            const QString server = gvfsField(fields, QStringLiteral("server"));
            const QString share = gvfsField(fields, QStringLiteral("share"));
            if (!server.isEmpty() && !share.isEmpty()) {
                out.append({QStringLiteral("//") + server + QLatin1Char('/') + share,
                            QDir(m.mountPoint).filePath(folder), QStringLiteral("cifs")});
            }
        }
    }
    return out;
}

// path is prefix itself or lies beneath it; sep is the separator that follows.
bool isUnder(const QString& path, const QString& prefix, QChar sep, Qt::CaseSensitivity cs)
{
    if (!path.startsWith(prefix, cs)) {
        return false;
    }
    return path.size() == prefix.size() || prefix.endsWith(sep) || path[prefix.size()] == sep;
}

} // namespace

MountTable parseMountInfo(const QString& text)
{
    MountTable table;
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        // ID parentID major:minor root mountpoint options [optional...] - fstype source superoptions
        const QStringList f = line.split(QLatin1Char(' '));
        const qsizetype dash = f.indexOf(QStringLiteral("-"), 6);
        if (f.size() < 6 || dash < 0 || dash + 2 >= f.size()) {
            continue;
        }
        table.append({decodeOctal(f[dash + 2]), decodeOctal(f[4]), decodeOctal(f[dash + 1]), decodeOctal(f[3])});
    }
    return table;
}

MountTable mountTable()
{
    if (handedIn()) {
        return *handedIn();
    }
    QFile file(QStringLiteral("/proc/self/mountinfo"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return parseMountInfo(QString::fromUtf8(file.readAll()));
}

void setMountTable(std::optional<MountTable> table)
{
    handedIn() = std::move(table);
}

QString uncPathOf(const QString& path)
{
    if (!path.startsWith(QLatin1Char('/'))) {
        return path;
    }
    const QString clean = QDir::cleanPath(path);
    // Every mount takes part: a local file system mounted inside a share hides the share there.
    // Kept for the whole look-up: best points into it.
    const QList<MountEntry> table = withGvfsShares(mountTable());
    const MountEntry* best = nullptr;
    for (const MountEntry& m : table) {
        if (isUnder(clean, m.mountPoint, QLatin1Char('/'), Qt::CaseSensitive) &&
            (!best || m.mountPoint.size() >= best->mountPoint.size())) {
            best = &m;
        }
    }
    const QString unc = best ? uncOfMount(*best) : QString();
    if (unc.isEmpty()) {
        return path;
    }
    QString rest = best->mountPoint == QLatin1String("/") ? clean : clean.mid(best->mountPoint.size());
    if (path.endsWith(QLatin1Char('/')) && !rest.endsWith(QLatin1Char('/'))) {
        rest += QLatin1Char('/');
    }
    return unc + rest.replace(QLatin1Char('/'), QLatin1Char('\\'));
}

QString nativePathOf(const QString& path)
{
    if (!path.startsWith(kUncStart)) {
        return path;
    }
    QString uncForm = path;
    uncForm.replace(QLatin1Char('/'), QLatin1Char('\\'));
    const QList<MountEntry> table = withGvfsShares(mountTable()); // best points into it
    const MountEntry* best = nullptr;
    qsizetype bestLength = 0;
    for (const MountEntry& m : table) {
        const QString unc = uncOfMount(m);
        if (!unc.isEmpty() && unc.size() >= bestLength &&
            isUnder(uncForm, unc, QLatin1Char('\\'), Qt::CaseInsensitive)) {
            best = &m;
            bestLength = unc.size();
        }
    }
    if (!best) {
        return path;
    }
    const QString rest = uncForm.mid(bestLength).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (rest.isEmpty() || best->mountPoint.endsWith(QLatin1Char('/'))) {
        return best->mountPoint + (rest.startsWith(QLatin1Char('/')) ? rest.mid(1) : rest);
    }
    return best->mountPoint + rest;
}

} // namespace platform
