#pragma once
// What the status writers share: the error trap that resumes like VB's handlers,
// the head of their error boxes, and the pieces of SQL every writer builds the
// same way.

#include "dao/dao.h"
#include "kernel/errorboxes.h"

#include <QString>
#include <functional>
#include <optional>

namespace status {

// What a handler tells the trapped statement: run it again (VB's Resume), go on
// at the next statement (Resume Next), or leave the procedure (Exit Sub).
enum class Resume
{
    Again,
    Next,
    Exit
};

// A procedure's error trap. Each statement runs through it; any error (VbError) is
// put in Err and handed to the handler, whose answer decides what runs next.
// Once a handler has answered Exit, every later statement is passed over.
class Trap
{
public:
    using Handler = std::function<Resume(const VbError&)>;
    explicit Trap(Handler handler);

    // False when the procedure is to end (now or earlier).
    bool operator()(const std::function<void()>& statement);

private:
    Handler m_handler;
    bool m_exited = false;
};

// VB's Str() of a whole number: a positive number gets a leading blank.
using errorbox::vbStr;
// "Error (" & Str(Err.Number) & " ) in " & procedure & CR & Err.Description: the
// general error box's text as the status writers word it.
QString errorHead(const QString& procedure);

// "SELECT * FROM EmployeeTable WHERE Name LIKE " and the name.
QString employeeRowSql(const QString& name);
// "yyyy-mm-dd hh:mm:ss by name", the present time.
QString stampedBy(const QString& name);
// The tracking mirror: everyone who follows trackee sees the new status.
QString trackingMirrorSql(const QString& status, const QString& trackee);
// Sets StatusCode (from gintStatusCode), Status and LastModified of the set's row,
// which is in Edit; for "In" exactly, with AutoClearComments, also clears DueBack
// and Comments and their globals ("in" keeps them).
void writeStatusFields(dao::Recordset& rs, const QString& status, const QString& changer);
// The code of a status word typed by hand, with no row in StatusTypesTable.
constexpr long long kCodeTypedByHand = 4;
// The StatusCode of the word's row in StatusTypesTable, compared upper-cased
// (the last match wins); none when the word has no row.
std::optional<long long> statusTypeCode(const QString& status);
// The tray tip: gstrProgramTitle [gstrDefaultUser] 'gstrCurrentStatus', failures ignored.
void showStatusInTrayTip();

// VB's CBool of a trimmed field text, with "" (a Null) read as False; 13 when not a truth value.
bool boolFromText(const QString& text);
// VB's CInt of a trimmed field text (rounded to even), wide; 13 when not a number, "" included.
long long wholeFromText(const QString& text);

} // namespace status
