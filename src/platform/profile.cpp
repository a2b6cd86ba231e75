#include "platform/profile.h"

#include "platform/mounts.h"

#include <QFile>
#include <QSaveFile>
#include <QStringList>
#include <optional>

namespace platform {

namespace {

constexpr QChar byteOrderMark(0xFEFF);

struct IniText
{
    QStringList lines;
    bool crlf = false;
    bool bom = false;
};

std::optional<IniText> readIni(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QString text = QString::fromUtf8(file.readAll());
    IniText ini;
    ini.bom = text.startsWith(byteOrderMark);
    if (ini.bom) {
        text.remove(0, 1);
    }
    ini.crlf = text.contains(QLatin1String("\r\n"));
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    ini.lines = text.split(QLatin1Char('\n'));
    if (!ini.lines.isEmpty() && ini.lines.constLast().isEmpty()) {
        ini.lines.removeLast(); // the end of the last line, not an empty line
    }
    return ini;
}

// The name of a "[name]" line, or nothing for any other line.
std::optional<QString> sectionOf(const QString& line)
{
    const QString t = line.trimmed();
    if (!t.startsWith(QLatin1Char('['))) {
        return std::nullopt;
    }
    const qsizetype close = t.indexOf(QLatin1Char(']'));
    return t.mid(1, close < 0 ? -1 : close - 1).trimmed();
}

// A "key = value" line split; a line without "=" is a key without a value (null).
// Blank lines and comments give no key.
std::optional<std::pair<QString, QString>> entryOf(const QString& line)
{
    const QString t = line.trimmed();
    if (t.isEmpty() || t.startsWith(QLatin1Char(';')) || t.startsWith(QLatin1Char('['))) {
        return std::nullopt;
    }
    const qsizetype eq = t.indexOf(QLatin1Char('='));
    if (eq < 0) {
        return std::make_pair(t, QString());
    }
    const QString value = t.mid(eq + 1).trimmed();
    return std::make_pair(t.left(eq).trimmed(), value.isNull() ? QString(QLatin1String("")) : value);
}

bool sameName(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString withoutQuotes(const QString& value)
{
    if (value.size() >= 2 && (value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\'')) &&
        value.back() == value.front()) {
        return value.mid(1, value.size() - 2);
    }
    return value;
}

QString cut(const QString& value, int bufferSize)
{
    if (bufferSize <= 1) {
        return QString();
    }
    QString out = value.left(bufferSize - 1);
    if (!out.isEmpty() && out.back().isHighSurrogate()) {
        out.chop(1); // never half a character
    }
    return out;
}

QString trimmedEnd(QString value)
{
    while (!value.isEmpty() && value.back().isSpace()) {
        value.chop(1);
    }
    return value;
}

// The line indexes of the section: its header first, then its lines up to the
// next header. Empty when there is no such section.
QList<qsizetype> sectionLines(const QStringList& lines, const QString& section, qsizetype from = 0)
{
    QList<qsizetype> found;
    for (qsizetype i = from; i < lines.size(); ++i) {
        const auto name = sectionOf(lines[i]);
        if (name && !found.isEmpty()) {
            break;
        }
        if (name && sameName(*name, section)) {
            found.append(i);
        } else if (!found.isEmpty()) {
            found.append(i);
        }
    }
    return found;
}

bool writeIni(const IniText& ini, const QString& fileName)
{
    QString text = ini.bom ? QString(byteOrderMark) : QString();
    const QLatin1String eol(ini.crlf ? "\r\n" : "\n");
    for (const QString& line : ini.lines) {
        text += line + eol;
    }
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    file.write(text.toUtf8());
    return file.commit();
}

} // namespace

QString GetPrivateProfileString(const QString& section, const QString& key, const QString& defaultValue, int bufferSize,
                                const QString& givenName)
{
    const QString fileName = nativePathOf(givenName); // a "\\server\share\..." name is read at its mount
    const QString fallback = cut(trimmedEnd(defaultValue), bufferSize);
    const auto ini = readIni(fileName);
    if (!ini || key.trimmed().isEmpty()) {
        return fallback;
    }
    // A section written twice is read as one, the first occurrence of a key winning.
    bool inSection = false;
    for (const QString& line : ini->lines) {
        if (const auto name = sectionOf(line)) {
            inSection = sameName(*name, section.trimmed());
            continue;
        }
        const auto entry = inSection ? entryOf(line) : std::nullopt;
        if (entry && sameName(entry->first, key.trimmed())) {
            return entry->second.isNull() ? fallback : cut(withoutQuotes(entry->second), bufferSize);
        }
    }
    return fallback;
}

bool WritePrivateProfileString(const QString& section, const QString& key, const QString& value,
                               const QString& givenName)
{
    const QString fileName = nativePathOf(givenName);
    IniText ini = readIni(fileName).value_or(IniText{});
    const QString name = section.trimmed();
    QList<qsizetype> where = sectionLines(ini.lines, name);

    if (key.isNull()) {
        while (!where.isEmpty()) {
            ini.lines.remove(where.front(), where.size());
            where = sectionLines(ini.lines, name);
        }
        return writeIni(ini, fileName);
    }
    const QString keyName = key.trimmed();
    if (where.isEmpty()) {
        if (value.isNull()) {
            return true;
        }
        if (!ini.lines.isEmpty() && !ini.lines.constLast().trimmed().isEmpty()) {
            ini.lines.append(QString());
        }
        ini.lines.append(QLatin1Char('[') + name + QLatin1Char(']'));
        ini.lines.append(keyName + QLatin1Char('=') + value);
        return writeIni(ini, fileName);
    }
    qsizetype insertAt = where.front() + 1;
    for (const qsizetype i : where.mid(1)) {
        const auto entry = entryOf(ini.lines[i]);
        if (entry && sameName(entry->first, keyName)) {
            if (value.isNull()) {
                ini.lines.removeAt(i);
            } else {
                ini.lines[i] = entry->first + QLatin1Char('=') + value; // the file's spelling of the key
            }
            return writeIni(ini, fileName);
        }
        if (!ini.lines[i].trimmed().isEmpty()) {
            insertAt = i + 1; // after the section's last line, before the blanks that part it from the next
        }
    }
    if (value.isNull()) {
        return true;
    }
    ini.lines.insert(insertAt, keyName + QLatin1Char('=') + value);
    return writeIni(ini, fileName);
}

} // namespace platform
