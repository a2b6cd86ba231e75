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

// True when GroupTable has that name (a Seek on its "PrimaryKey").
bool fnGroupExists(const QString& groupName);
