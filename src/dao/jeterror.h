#pragma once
// The error the data engine raises: a Jet error number, which the logic switches
// on, and a description in our own plain words.

#include "dao/vberror.h"

namespace dao {

// The Jet error numbers the logic relies on.
enum JetErrorNumber : int
{
    errReserved = 3000, // a failure with no closer Jet number
    errInvalidArgument = 3001,
    errTableExists = 3010,
    errNotAnIndex = 3015,
    errNoCurrentIndex = 3019,
    errUpdateWithoutEdit = 3020,
    errNoCurrentRecord = 3021,
    errDuplicateKey = 3022,
    errNoTransaction = 3034, // CommitTrans or Rollback with no BeginTrans
    errFileNotFound = 3024,
    errCannotUpdate = 3027, // read-only database or recordset
    errDiskOrNetwork = 3043,
    errInvalidPath = 3044,
    errExclusivelyLocked = 3045,
    errCorrupt = 3049,
    errCouldNotLockFile = 3050,
    errNoPermission = 3051,
    errInvalidFileName = 3055,
    errTooFewParameters = 3061, // an unknown column in a query
    errCannotExecuteSelect = 3065,
    errSyntaxMissingOperator = 3075,
    errTableNotFound = 3078,
    errUndefinedFunction = 3085,
    errSyntaxInsert = 3134,
    errCharactersAfterEnd = 3142,
    errSyntaxUpdate = 3144,
    errFieldNotUpdatable = 3164,
    errRecordDeleted = 3167,
    errDatabaseExists = 3204,
    errRecordLocked = 3218,
    errInvalidOperation = 3219,
    errNotSupported = 3251, // an operation the kind of recordset does not offer
    errLockedByUser = 3260,
    errItemNotFound = 3265,
    errFieldRequired = 3314, // a Null in a NOT NULL column
    errUnrecognizedFormat = 3343,
    errFieldExists = 3380,
    errObjectInvalid = 3420,
    errConversion = 3421, // a value that the field's type cannot hold
    errTypeMismatch = 3464,
    errExclusiveByAdmin = 3734,
};

class JetError : public VbError
{
public:
    using VbError::VbError;
};

// Our own plain description of a Jet error number ("" for an unknown number).
QString jetErrorText(int number);

// Raises JetError with the number and its plain description, plus detail when given.
[[noreturn]] void raiseJetError(int number, const QString& detail = QString());

} // namespace dao
