#pragma once
// A new person's rows: the EmployeeTable row and the EmployeeSettingsTable row,
// made from the one row of NewUserDefaultsTable, and the raised Counter that
// brings the person onto everyone's board, all in one unit of change: a failure
// anywhere leaves no row and no raise.

#include <QString>

// The older form, kept for the board and the splash: Tables is "BothTables",
// "EmployeeTableOnly" or "EmployeeSettingsTableOnly" (any other value makes no
// row, and only the counter moves); the name is gstrCommandLine's. A failure
// gets the general box and nothing is made.
void subAddNewUser(const QString& Tables);

// The form New User Setup uses: both rows, with the ID as UID, the layout values
// (splitters, display font) copied too. Refuses with "No User Record in New User
// Defaults Table." when the defaults have no row. Sets gblnNewUserSetupDone and
// returns true once the rows are in.
bool fnAddNewUserToDatabase(const QString& name, const QString& uid);
