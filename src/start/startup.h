#pragma once
// Start-up: where the program and the shared database lie, and the few small
// procedures the first screens share.
//
// Paths keep the closing separator the system's code expects ("ending in a
// backslash"): "\" for a UNC path, "/" for a local one.

#include <QString>

// The path with its network share spelt out: a folder on a cifs or nfs mount
// becomes "\\server\share\...", any other folder stays as it is.
QString fnUNCPathOf(const QString& path);
// The path ending in its separator ("\" for "\\server\...", "/" otherwise).
QString withClosingSeparator(const QString& path);

// gstrComputerName := the machine's name, cut as a 32-character buffer cuts it.
void subGetComputerName();

// Waits until the clock reads two whole seconds past the current second,
// letting events run and pausing a little between looks.
void subWaitTwoSeconds();

// Reads veskor.ini beside the program for the database folder, honours a
// forced shutdown, opens veskor.mdb and tests that it is a database of this
// system. True when the file was accepted. Ends the run, or
// unloads frmMain and returns false, on the failures it reports.
bool subInitializeLocalDatabase();
