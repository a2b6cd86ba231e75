#pragma once
// cShellLinkA on this desktop: a launcher file (freedesktop.org Desktop Entry,
// ".desktop") that starts a program with its arguments in a working folder, with
// a description and an icon. CreateLink writes one, GetLinkInfo reads one back.
//
// A launcher is written so that desktop-file-validate accepts it, executable by
// its owner and readable by all but writable by the owner alone, and marked
// trusted on GNOME ("gio set FILE metadata::trusted true" through the shell
// gateway): GNOME's desktop icons launch only a valid, executable, trusted file,
// and KDE only an executable one. The Exec line quotes each argument that holds
// a reserved character and doubles "%", so every argument arrives as given.

#include <QString>
#include <QStringList>

namespace platform {

class cShellLinkA
{
public:
    QString ExeName;     // the program's path
    QStringList ExeArgs; // its arguments, each passed as one
    QString WorkingDir;
    QString Description; // the launcher's comment
    QString IconFile;    // an absolute path or a theme icon's name

    enum SystemFolder
    {
        Desktop, // the user's desktop folder (XDG_DESKTOP_DIR of user-dirs.dirs, else ~/Desktop)
        StartUp  // the user's autostart folder (~/.config/autostart)
    };
    // The folder's path, made when it is missing; "" when it cannot be made.
    static QString GetSystemFolderPath(SystemFolder folder);

    // Writes the launcher at path, replacing an old one; its name is the file's
    // base name. Nothing is written, and false comes back, with an empty path or
    // ExeName, or when the file cannot be written.
    bool CreateLink(const QString& path) const;
    // Reads a launcher back into the values above; false (values untouched) when
    // the file cannot be read or has no [Desktop Entry] with an Exec line.
    bool GetLinkInfo(const QString& path);
};

} // namespace platform
