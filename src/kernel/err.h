#pragma once
// VB's Err object and the three error-trap modes the procedures use.
//
//   Jump to the handler:   try { ... } catch (const dao::JetError& e) { Err.Set(e); ...switch on Err.Number... }
//   Ignore and go on:      ResumeNext([&] { statement; });  // Err keeps the failure, the next statement runs
//   None:                  plain code; an error goes up to the caller.
//
// Errors that are not the engine's (a missing file, a bad conversion) are raised
// as dao::JetError too, with VB's run-time numbers (53 file not found, 13 type
// mismatch), so one catch serves every handler.

#include "dao/jeterror.h"

#include <QString>
#include <functional>

struct ErrObject
{
    long long Number = 0;
    QString Description;

    void Clear();
    void Set(const dao::JetError& e);
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
    vbErrTypeMismatch = 13,
    vbErrFileNotFound = 53,
    vbErrPathNotFound = 76,
    vbErrObjectNotSet = 91,
};

// 91, "Object variable or With block variable not set": a database object or
// recordset used before anything set it.
[[noreturn]] void raiseObjectNotSet();
