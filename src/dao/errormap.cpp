#include "dao/errormap.h"

#include "dao/jeterror.h"

#include <sqlite3.h>

namespace dao {

namespace {

// The number for each activity: open, read, write (Update), Execute.
struct CodeRow
{
    int code; // an extended code, or a primary one (matched on rc & 0xFF)
    int open, read, write, execute;
};

// Extended codes come first so that they win over their primary code.
constexpr CodeRow kByCode[] = {
    {SQLITE_IOERR_SHORT_READ, errCorrupt, errCorrupt, errCorrupt, errCorrupt},
    {SQLITE_CONSTRAINT_UNIQUE, errDuplicateKey, errDuplicateKey, errDuplicateKey, errDuplicateKey},
    {SQLITE_CONSTRAINT_PRIMARYKEY, errDuplicateKey, errDuplicateKey, errDuplicateKey, errDuplicateKey},
    {SQLITE_CONSTRAINT_NOTNULL, errFieldRequired, errFieldRequired, errFieldRequired, errFieldRequired},
    {SQLITE_BUSY, errCouldNotLockFile, errCouldNotLockFile, errRecordLocked, errLockedByUser},
    {SQLITE_LOCKED, errCouldNotLockFile, errCouldNotLockFile, errRecordLocked, errLockedByUser},
    {SQLITE_READONLY, errCannotUpdate, errCannotUpdate, errCannotUpdate, errCannotUpdate},
    {SQLITE_IOERR, errDiskOrNetwork, errDiskOrNetwork, errDiskOrNetwork, errDiskOrNetwork},
    {SQLITE_FULL, errDiskOrNetwork, errDiskOrNetwork, errDiskOrNetwork, errDiskOrNetwork},
    {SQLITE_CORRUPT, errCorrupt, errCorrupt, errCorrupt, errCorrupt},
    {SQLITE_NOTADB, errUnrecognizedFormat, errUnrecognizedFormat, errUnrecognizedFormat, errUnrecognizedFormat},
    // The path was checked before the open, so a failing open means the file went;
    // later, a journal that cannot be created means the folder went or is closed to us.
    {SQLITE_CANTOPEN, errFileNotFound, errDiskOrNetwork, errDiskOrNetwork, errDiskOrNetwork},
    {SQLITE_PERM, errNoPermission, errNoPermission, errNoPermission, errNoPermission},
    {SQLITE_AUTH, errNoPermission, errNoPermission, errNoPermission, errNoPermission},
    {SQLITE_MISMATCH, errTypeMismatch, errTypeMismatch, errTypeMismatch, errTypeMismatch},
};

// SQLITE_ERROR carries its meaning in the message only.
struct MessageRow
{
    const char* fragment;
    int number;
};

constexpr MessageRow kByMessage[] = {
    {"no such table", errTableNotFound},
    {"no such column", errTooFewParameters},
    {"has no column named", errTooFewParameters},
    {"duplicate column name", errFieldExists},
    {"already exists", errTableExists},
    {"no such function", errUndefinedFunction},
    {"no such index", errNotAnIndex},
};

int pick(const CodeRow& row, Activity activity)
{
    switch (activity) {
    case Activity::Open:
        return row.open;
    case Activity::Read:
        return row.read;
    case Activity::Write:
        return row.write;
    case Activity::Execute:
        return row.execute;
    }
    return errReserved;
}

} // namespace

int jetNumberFor(int resultCode, const QString& message, Activity activity, StatementKind kind)
{
    for (const CodeRow& row : kByCode) {
        const bool extended = row.code > 0xFF;
        if ((extended && resultCode == row.code) || (!extended && (resultCode & 0xFF) == row.code))
            return pick(row, activity);
    }
    if ((resultCode & 0xFF) != SQLITE_ERROR)
        return errReserved;
    for (const MessageRow& row : kByMessage) {
        if (message.contains(QLatin1String(row.fragment), Qt::CaseInsensitive))
            return row.number;
    }
    // Any other SQLITE_ERROR is a statement that cannot be run as written.
    return syntaxErrorFor(kind);
}

void raiseSqliteError(sqlite3* db, int resultCode, Activity activity, StatementKind kind)
{
    const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(resultCode));
    raiseJetError(jetNumberFor(resultCode, message, activity, kind), message);
}

} // namespace dao
