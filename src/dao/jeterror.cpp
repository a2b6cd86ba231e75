#include "dao/jeterror.h"

#include <QHash>

namespace dao {

namespace {

// Our own plain words for every number the engine raises or the logic names.
const QHash<int, QString>& descriptions()
{
    static const QHash<int, QString> texts = {
        {errReserved, QStringLiteral("The database engine reported a failure it could not name.")},
        {errInvalidArgument, QStringLiteral("An argument given to the database engine is not valid.")},
        {errTableExists, QStringLiteral("A table or index of that name is already in the database.")},
        {errNotAnIndex, QStringLiteral("The table has no index of that name.")},
        {errNoCurrentIndex, QStringLiteral("Choose an index before seeking.")},
        {errUpdateWithoutEdit, QStringLiteral("Update or CancelUpdate was called without Edit or AddNew.")},
        {errNoCurrentRecord, QStringLiteral("There is no current record.")},
        {errDuplicateKey,
         QStringLiteral("The change was not made: it would give two records the same value in a unique key.")},
        {errNoTransaction, QStringLiteral("There is no transaction to commit or roll back.")},
        {errFileNotFound, QStringLiteral("The database file could not be found.")},
        {errCannotUpdate, QStringLiteral("The record cannot be changed: the database or the recordset is read-only.")},
        {errDiskOrNetwork, QStringLiteral("A disk or network error stopped the database engine.")},
        {errInvalidPath, QStringLiteral("The folder of the database file does not exist or cannot be reached.")},
        {errExclusivelyLocked,
         QStringLiteral("The database file is in use: someone holds it open for maintenance (see VESKOR.LDB).")},
        {errCorrupt, QStringLiteral("The database file is damaged and must be repaired.")},
        {errCouldNotLockFile, QStringLiteral("The database file is busy: it could not be locked in time.")},
        {errNoPermission, QStringLiteral("You do not have permission to open the database file.")},
        {errInvalidFileName, QStringLiteral("That is not a valid name for a database file.")},
        {errTooFewParameters, QStringLiteral("The statement names a column that the table does not have.")},
        {errCannotExecuteSelect, QStringLiteral("A query that returns rows cannot be run with Execute.")},
        {errSyntaxMissingOperator, QStringLiteral("The statement cannot be understood (syntax error).")},
        {errTableNotFound, QStringLiteral("The statement names a table that the database does not have.")},
        {errUndefinedFunction, QStringLiteral("The statement uses a function the database engine does not know.")},
        {errSyntaxInsert, QStringLiteral("The INSERT INTO statement cannot be understood (syntax error).")},
        {errCharactersAfterEnd, QStringLiteral("There is text after the end of the statement.")},
        {errSyntaxUpdate, QStringLiteral("The UPDATE statement cannot be understood (syntax error).")},
        {errFieldNotUpdatable, QStringLiteral("This field cannot be changed.")},
        {errRecordDeleted, QStringLiteral("The record has been deleted.")},
        {errDatabaseExists, QStringLiteral("A database file of that name already exists.")},
        {errRecordLocked, QStringLiteral("The record could not be saved: another user holds it locked.")},
        {errInvalidOperation, QStringLiteral("That operation is not allowed here.")},
        {errLockedByUser, QStringLiteral("The change could not be made: another user holds the table locked.")},
        {errNotSupported, QStringLiteral("This kind of recordset does not offer that operation.")},
        {errItemNotFound, QStringLiteral("There is no field or item of that name.")},
        {errFieldRequired, QStringLiteral("The field needs a value: it cannot be left empty (Null).")},
        {errUnrecognizedFormat, QStringLiteral("The file is not a database in a format this program can read.")},
        {errFieldExists, QStringLiteral("The table already has a field of that name.")},
        {errObjectInvalid, QStringLiteral("The database or recordset is no longer open.")},
        {errConversion, QStringLiteral("The value does not fit the type of the field.")},
        {errExclusiveByAdmin, QStringLiteral("The administrator has the database open for maintenance.")},
        {errTypeMismatch, QStringLiteral("A value in the statement does not match the type of its column.")},
    };
    return texts;
}

} // namespace

QString jetErrorText(int number)
{
    return descriptions().value(number);
}

void raiseJetError(int number, const QString& detail)
{
    QString text = jetErrorText(number);
    if (!detail.isEmpty())
        text += QStringLiteral(" (") + detail + QLatin1Char(')');
    throw JetError(number, text);
}

} // namespace dao
