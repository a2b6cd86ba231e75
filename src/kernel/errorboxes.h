#pragma once
// The standard forms of an error box, in one place. Each text is built from the
// run's Err (number and description) or from a number and a text given, and a
// procedure's name text ("modUser - subReadGroups event"):
//
//   General   "Error (" & number & " ) in " & procedure, CR, description [, CR]
//   Start-up  the General text, CR, "Unable to start VESK-OR at this time. Please try again..."
//   Update    "Error=" & number, CR LF, " Error message=" & description & ". Update cancelled."
//   Retry     "Error: " & number & " - " & description, CR LF, "Would you like to retry ?"
//   Log       "Cannot complete the current operation due to the following error: (" ...
//
// The number stands in the head in one of two ways, and each procedure's text says
// which: joined as it is ("Error (3050 ) in"), or through VB's Str(), which gives a
// positive number a leading blank ("Error ( 3050 ) in").

#include <QString>

namespace errorbox {

enum NumberForm
{
    Joined,  // "Error (" & Err.Number
    StrBlank // "Error (" & Str(Err.Number)
};

// VB's Str() of a whole number: a positive number (and zero) gets a leading blank.
QString vbStr(long long number);
QString numberText(long long number, NumberForm form);

// "Error (" & number & " ) in " & procedure, with Err's number.
QString head(const QString& procedure, NumberForm form);
// The General form: the head, CR, Err's description, and a closing CR when asked.
QString general(const QString& procedure, NumberForm form, bool closingCR = false);
// The Start-up form: head, CR, description, CR, the advice to try again later.
QString startup(const QString& procedure);
// The Update form, of a number and description given (not always Err's).
QString update(long long number, const QString& description);
// The Retry form, of a number and description given.
QString retry(long long number, const QString& description);
// The Log form of the log writer, with Err's number (leading blank) and the procedure.
QString log(const QString& procedure);

// The boxes with their forms' flags. An empty title shows the application's title.
int showGeneral(const QString& procedure, NumberForm form, int flags = 0, const QString& title = QString());
void showUpdate(long long number, const QString& description, const QString& title = QString());
// Yes-No with the question icon; returns the answer (vbYes or vbNo).
int showRetry(long long number, const QString& description, const QString& title = QString());
void showLog(const QString& procedure, const QString& title);

} // namespace errorbox
