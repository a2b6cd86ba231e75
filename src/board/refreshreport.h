#pragma once
// The report block that stands behind subRefreshUserList's normal exit. No error
// trap of the refresh leads to it, so in normal working it never runs; it is kept
// for its texts and is to stay unarmed: nothing calls it.

#include <QString>

class frmMain;

// Answers the error in Err as the block does: the damaged-database box (3167),
// a mail report to the maker and the board unloaded (91), a yield (3050, 3420),
// or the general box. progress is the row loop's last progress text.
void subRefreshUserListReport(frmMain& board, const QString& progress);

// The maker's error-report mailbox, a setting of the build.
QString errorReportMailbox();
