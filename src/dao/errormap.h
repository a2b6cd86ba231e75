#pragma once
// The one map from SQLite's result codes to the Jet numbers the logic switches on.
// What a code means depends on what the engine was doing: a busy file at open is
// "could not lock file" (3050), during a recordset's Update "record locked" (3218).

#include "dao/jetsql.h"

#include <QString>

struct sqlite3;

namespace dao {

enum class Activity
{
    Open,    // opening the file, up to its first read
    Read,    // reading rows for a recordset, or the table list
    Write,   // Recordset Update/AddNew/Delete
    Execute, // Database::Execute
};

// The Jet number for an SQLite result code (extended codes welcome) and the
// engine's message, while doing activity on a statement of the given kind.
int jetNumberFor(int resultCode, const QString& message, Activity activity, StatementKind kind);

// Raises the mapped JetError, with SQLite's own message as detail.
[[noreturn]] void raiseSqliteError(sqlite3* db, int resultCode, Activity activity,
                                   StatementKind kind = StatementKind::Other);

} // namespace dao
