#pragma once
// VB's Err object and the three error-trap modes the procedures use.
//
//   Jump to the handler:   try { ... } catch (const VbError& e) { Err.Set(e); ...switch on Err.Number... }
//   Ignore and go on:      ResumeNext([&] { statement; });  // Err keeps the failure, the next statement runs
//   None:                  plain code; an error goes up to the caller.
//
// Errors of the language itself (a missing file, a bad conversion, an object not
// set) are RunTimeError, with VB's run-time numbers (53 file not found, 13 type
// mismatch). They are no errors of the engine: code that answers only the engine
// catches dao::JetError, and a handler that takes any error, as VB's one Err
// object does, catches VbError, which both are.

#include "dao/jeterror.h"

#include <QString>
#include <functional>

class RunTimeError : public VbError
{
public:
    using VbError::VbError;
};

struct ErrObject
{
    long long Number = 0;
    QString Description;

    void Clear();
    void Set(const VbError& e);
    // Raises RunTimeError.
    [[noreturn]] void Raise(long long number, const QString& description = QString());
};

// The run's one Err object.
extern ErrObject Err;

// VB's "On Error Resume Next" for one statement: runs fn; an error is kept in Err
// and swallowed. Returns true when fn raised nothing. Err is not cleared first,
// as in VB: a statement that succeeds leaves an earlier number standing.
bool ResumeNext(const std::function<void()>& fn);

// VB's If while errors are ignored: runs the test under ResumeNext; a test that
// fails (raises) counts as true, so its branch is entered.
bool testOrFail(const std::function<bool()>& test);

// VB's run-time error numbers used outside the engine.
enum VbErrorNumber : int
{
    vbErrOutOfMemory = 7,
    vbErrSubscript = 9,
    vbErrTypeMismatch = 13,
    vbErrInternal = 51,
    vbErrFileNotFound = 53,
    vbErrInputPastEnd = 62,
    vbErrFileAccess = 75,
    vbErrPathNotFound = 76,
    vbErrObjectNotSet = 91,
    vbErrInvalidPropertyValue = 380,
    vbErrIndexOutOfBounds = 35600, // an item of a common control that is not there
};

// 91, "Object variable or With block variable not set": a database object or
// recordset used before anything set it.
[[noreturn]] void raiseObjectNotSet();
