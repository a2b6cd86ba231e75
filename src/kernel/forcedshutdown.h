#pragma once
// The forced-shutdown file: an administrator who must repair the database writes
// "forceshutdown.ini" beside it, and every client hands over to inicheck and ends.

#include <QString>

// gblnForcedShutDown := the file in gstrDatabasePath (the home folder, also while
// a remote database is in use) says TRUE, in any case, under section and key
// "ForceShutDown".
void subCheckINIForForcedShutDown();

// Starts the waiting helper: program (a path, UNC or local) with the command
// line the client is to be started with again once the file says TRUE no more.
void subStartIniCheck(const QString& program, const QString& commandLine);
