#pragma once
// Settings files ("veskor.ini", "forceshutdown.ini") read and written the way
// Windows' GetPrivateProfileStringA and WritePrivateProfileStringA do:
//
//   [Section]          section and key names match without regard to case;
//   Key = "value"      blanks around names and values do not count, and a value
//   ; a comment        in matching quotes ("..." or '...') loses them.
//
// Plain text in UTF-8; CR LF and LF line ends both read.
// A file named "\\server\share\..." is the one where that share is mounted.

#include <QString>

namespace platform {

// The value of key in section, or defaultValue (without its trailing blanks) when
// the file, the section or the key is missing or the key has no "=". Either is
// cut to bufferSize - 1 characters, as the caller's buffer would cut it.
QString GetPrivateProfileString(const QString& section, const QString& key, const QString& defaultValue, int bufferSize,
                                const QString& fileName);

// Sets key=value in section, adding the section or the key where missing and
// keeping every other line of the file as it was; creates the file when needed.
// A null value removes the key; a null key removes the whole section.
// False when the file cannot be written.
bool WritePrivateProfileString(const QString& section, const QString& key, const QString& value,
                               const QString& fileName);

} // namespace platform
