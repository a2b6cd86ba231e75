#include "platform/launcher.h"

#include "platform/shell.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>

namespace platform {

namespace {

// The characters that make an Exec argument need quotes, and those that need a
// backslash inside them.
const QString kReserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
const QString kEscapedInQuotes = QStringLiteral("\"`$\\");

// A value of type string or localestring as the file holds it.
QString escapeValue(const QString& value)
{
    QString out;
    for (const QChar c : value) {
        if (c == u'\\') {
            out += QStringLiteral("\\\\");
        } else if (c == u'\n') {
            out += QStringLiteral("\\n");
        } else if (c == u'\t') {
            out += QStringLiteral("\\t");
        } else if (c == u'\r') {
            out += QStringLiteral("\\r");
        } else {
            out += c;
        }
    }
    return out;
}

QString unescapeValue(const QString& value)
{
    static const QHash<QChar, QChar> escapes = {
        {u's', u' '}, {u'n', u'\n'}, {u't', u'\t'}, {u'r', u'\r'}, {u'\\', u'\\'}};
    QString out;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] == u'\\' && i + 1 < value.size() && escapes.contains(value[i + 1])) {
            out += escapes.value(value[++i]);
        } else {
            out += value[i];
        }
    }
    return out;
}

// The keys of the [Desktop Entry] group with their values as the file holds
// them; localized keys left out.
QHash<QString, QString> desktopEntry(const QString& path)
{
    QHash<QString, QString> keys;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return keys;
    }
    bool inEntry = false;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.startsWith(u'[')) {
            inEntry = line == QLatin1String("[Desktop Entry]");
            continue;
        }
        const qsizetype equals = line.indexOf(u'=');
        if (!inEntry || line.startsWith(u'#') || equals < 1) {
            continue;
        }
        const QString key = line.left(equals).trimmed();
        if (!key.contains(u'[')) {
            keys.insert(key, line.mid(equals + 1).trimmed());
        }
    }
    return keys;
}

// One argument of an Exec line: quoted when it holds a reserved character, "%" doubled.
QString execArgument(const QString& argument)
{
    QString quoted = argument;
    quoted.replace(QStringLiteral("%"), QStringLiteral("%%"));
    const bool plain = !argument.isEmpty() &&
                       std::none_of(argument.begin(), argument.end(), [](QChar c) { return kReserved.contains(c); });
    if (plain) {
        return quoted;
    }
    QString inQuotes;
    for (const QChar c : quoted) {
        if (kEscapedInQuotes.contains(c)) {
            inQuotes += u'\\';
        }
        inQuotes += c;
    }
    return u'"' + inQuotes + u'"';
}

// The Exec line as the file holds it, and read back into program and arguments.
QString execValue(const QString& program, const QStringList& arguments)
{
    QStringList parts{execArgument(program)};
    for (const QString& argument : arguments) {
        parts << execArgument(argument);
    }
    return escapeValue(parts.join(u' '));
}

QStringList splitExecValue(const QString& value)
{
    const QString line = unescapeValue(value);
    QStringList parts;
    QString current;
    bool inWord = false;
    bool inQuotes = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (inQuotes && c == u'\\' && i + 1 < line.size()) {
            current += line[++i];
        } else if (c == u'"') {
            inQuotes = !inQuotes;
            inWord = true;
        } else if (!inQuotes && (c == u' ' || c == u'\t')) {
            if (inWord) {
                parts << current;
            }
            current.clear();
            inWord = false;
        } else if (c == u'%' && i + 1 < line.size()) {
            // "%%" is a percent sign; the field codes (%f, %u...) stand for nothing here.
            if (line[++i] == u'%') {
                current += u'%';
            }
            inWord = true;
        } else {
            current += c;
            inWord = true;
        }
    }
    if (inWord) {
        parts << current;
    }
    return parts;
}

} // namespace

QString cShellLinkA::GetSystemFolderPath(SystemFolder folder)
{
    const QString path = folder == Desktop ? QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)
                                           : QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                                                 QStringLiteral("/autostart");
    if (path.isEmpty() || !QDir().mkpath(path)) {
        return QString();
    }
    return path;
}

bool cShellLinkA::CreateLink(const QString& path) const
{
    if (path.isEmpty() || ExeName.isEmpty()) {
        return false;
    }
    QStringList lines{QStringLiteral("[Desktop Entry]"), QStringLiteral("Version=1.4"),
                      QStringLiteral("Type=Application"),
                      QStringLiteral("Name=") + escapeValue(QFileInfo(path).completeBaseName())};
    if (!Description.isEmpty()) {
        lines << QStringLiteral("Comment=") + escapeValue(Description);
    }
    lines << QStringLiteral("Exec=") + execValue(ExeName, ExeArgs);
    if (!WorkingDir.isEmpty()) {
        lines << QStringLiteral("Path=") + escapeValue(WorkingDir);
    }
    if (!IconFile.isEmpty()) {
        lines << QStringLiteral("Icon=") + escapeValue(IconFile);
    }
    lines << QStringLiteral("Terminal=false");

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return false;
    }
    file.write((lines.join(u'\n') + u'\n').toUtf8());
    if (!file.commit()) {
        return false;
    }
    // Executable, and writable by the owner alone: desktops refuse a world-writable launcher.
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                                    QFileDevice::ReadGroup | QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                    QFileDevice::ExeOther);
    // GNOME's desktop icons ask for the mark; gio sets it through GVfs.
    if (qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QLatin1String("GNOME"), Qt::CaseInsensitive)) {
        shell().startProgram(QStringLiteral("gio"), {QStringLiteral("set"), path, QStringLiteral("metadata::trusted"),
                                                     QStringLiteral("true")});
    }
    return true;
}

bool cShellLinkA::GetLinkInfo(const QString& path)
{
    const QHash<QString, QString> keys = desktopEntry(path);
    const QStringList command = splitExecValue(keys.value(QStringLiteral("Exec")));
    if (command.isEmpty()) {
        return false;
    }
    ExeName = command.front();
    ExeArgs = command.mid(1);
    WorkingDir = unescapeValue(keys.value(QStringLiteral("Path")));
    Description = unescapeValue(keys.value(QStringLiteral("Comment")));
    IconFile = unescapeValue(keys.value(QStringLiteral("Icon")));
    return true;
}

} // namespace platform
