#pragma once
// The database in use, at home or at another site. Every procedure opens the
// database by gstrCurrentDatabasePath, so setting it moves the whole client: the
// board, the groups, messages and status changes all act on that site from the
// next open on. The home folder (gstrDatabasePath) itself never changes.

#include <QString>

namespace servers {

// The folder picked on the remote server list.
extern QString gstrRemoteDataPath;

// True when the file can be found; a "\\server\share\..." path is looked for at
// its mount, and one on no mount is not there. False on any failure.
bool FileExists(const QString& path);

// Back to the home database: its groups with "Everyone" shown, the handle to the
// other site dropped, the board's caption, database panel and toolbar as at home.
void subConnectHome();

// The handle in use closed and dropped, so that the next subOpenDatabase really
// opens, at whatever gstrCurrentDatabasePath then names.
void dropDatabaseHandle();

} // namespace servers
