#pragma once
// The status engine: one status change written end to end (the person's row, the
// tracking mirror, the change counter, the log row).

#include <QString>

// Chooses whose row to write: the person's own, or the selected rows with the right.
void subSetStatus(const QString& status);
// Finds the code of a status word (4 for a word typed by hand).
void subSetStatusCode(const QString& status);
void subUpdateDefaultUsersRecord(const QString& status);
void subUpdateSelectedUsersRecords(const QString& status);
// "Yes" or "No": the person's client is running.
void subSetActiveFlag(const QString& flag);

void subCommand_In();
void subCommand_Busy();
void subCommand_Out();
