#pragma once
// Checks made before SQLite sees a file. SQLite reports a missing folder, a
// missing file and a directory all as one CANTOPEN, and opens anything without
// complaint until the first read; the logic needs a Jet number for each case.

#include <QString>

namespace dao {

// For an open: raises 3055 (no name, or a directory), 3044 (no such folder),
// 3024 (no such file), 3051 (no permission), 3343 (not an SQLite database; a
// legacy Access file is named as such) or 3049 (shorter than its header says).
// Returns the absolute path.
QString checkExistingDatabase(const QString& path, bool readOnly);

// For a new file: raises 3055, 3044, or 3204 when the file is already there.
// Returns the absolute path.
QString checkNewDatabase(const QString& path);

} // namespace dao
