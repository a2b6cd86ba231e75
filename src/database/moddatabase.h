#pragma once
// The shared file's open-and-close regime. Every piece of work brackets itself
// with subOpenDatabase and subCloseDatabase, but the real close happens only when
// TimerCloseDatabase fires, two seconds after the real open: a burst of work
// shares one open and the file is free again soon after.

#include <QString>

class QTimer;

// Makes gdbDatabase usable, or ends the process. Opens for real only while
// gblnDatabaseClosed is True.
void subOpenDatabase();
// Closes for real only while gblnDatabaseClosed is True.
void subCloseDatabase();
// frmMain's close timer: 2000 ms, off until a real open switches it on.
QTimer& TimerCloseDatabase();
void TimerCloseDatabase_Timer();

// After Jet's 3420 (the database object went away while events ran): marks the
// file closed so that the next subOpenDatabase really opens, pauses a moment, and
// tells whether the read may be tried again (a handful of tries, counted from 1).
bool fnRetryAfterObjectGone(int tryNumber);

// The answer to a failed write of the status and group screens: 4 (try again)
// or 2 (give up). A lock of another client that did not pass is tried once more
// in silence, then put to the person as a Yes/No question; any other failure is
// shown and gives up.
int fnDatabaseBusyResponse(const QString& description, long long errNumber, const QString& procedureName);

// True when GroupTable has that name (a Seek on its "PrimaryKey").
bool fnGroupExists(const QString& groupName);
