// subInitializeLocalDatabase: from veskor.ini beside the program to an open,
// valid veskor.mdb, with every failure answered by its own box.
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/upgrade.h"
#include "kernel/constants.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/forcedshutdown.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/mounts.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "platform/profile.h"
#include "start/startup.h"
#include "start/welcome.h"

#include <QFile>

using namespace platform;

namespace {

const QString kProcedure = QStringLiteral("modDatabase - subInitializeLocalDatabase event");

QString boxTitle()
{
    return gRun.gstrProgramTitle + QStringLiteral(" - Error in Initialize Local Database");
}

// veskor.ini is opened and its first line read, only to learn that it is there.
void readFirstLineOfSettingsFile(const QString& fileName)
{
    QFile file(nativePathOf(fileName));
    if (!file.exists()) {
        Err.Raise(vbErrFileNotFound, QStringLiteral("File not found"));
    }
    if (!file.open(QIODevice::ReadOnly)) {
        Err.Raise(vbErrFileAccess, QStringLiteral("Path/File access error"));
    }
    if (file.atEnd()) {
        Err.Raise(vbErrInputPastEnd, QStringLiteral("Input past end of file")); // an empty file has no first line
    }
    file.readLine();
}

// gstrDatabasePath and gstrCurrentDatabasePath from veskor.ini.
void readDataPath()
{
    const QString settingsFile = gRun.gstrApplicationPath + QStringLiteral("veskor.ini");
    try {
        readFirstLineOfSettingsFile(settingsFile);
        QString dataPath = GetPrivateProfileString(QStringLiteral("DataPath"), QStringLiteral("DataPath"), QString(),
                                                   200, settingsFile);
        if (dataPath.size() < 2) {
            dataPath = gRun.gstrApplicationPath;
        }
        gRun.gstrDatabasePath = withClosingSeparator(dataPath);
        gRun.gstrCurrentDatabasePath = gRun.gstrDatabasePath;
    } catch (const VbError& e) {
        Err.Set(e);
        welcomeScreen().setTimerWelcomeEnabled(false);
        if (Err.Number == vbErrFileNotFound) {
            MsgBox(QStringLiteral("The VESKOR.INI file is missing from the Application Path.") + CRLF +
                       QStringLiteral("Please ask your VESK-OR Administrator to correct this problem.") + CRLF +
                       QStringLiteral("Unable to continue. Press OK to exit."),
                   vbCritical, boxTitle());
            End();
        }
        MsgBox(Err.Description);
        End();
    }
}

QString cannotConnectText(const QString& lastLine)
{
    return gRun.gstrCurrentDatabasePath + QStringLiteral("veskor.mdb") + CR +
           QStringLiteral("VESK-OR is unable to connect to a database at this path. ") + CR +
           QStringLiteral("You may have lost your network connection, or you are running the software on") + lastLine;
}

enum class OpenAnswer
{
    TryAgain,
    Leave
};

// The answer to a failed open of the database: try again, leave the procedure, or
// (for the failures that cannot go on) end the run here.
OpenAnswer answerFailedOpen(int& lockFailures)
{
    const QString number = QString::number(Err.Number);
    switch (Err.Number) {
    case dao::errCorrupt:
    case dao::errUnrecognizedFormat:
        MsgBox(Err.Description + CR + QStringLiteral("Please inform the Network Supervisor that the database is") +
                   QStringLiteral(" damaged and must be repaired. Probable cause - someone switched") +
                   QStringLiteral(" off or crashed their PC whilst updating the database on the server."),
               vbExclamation, boxTitle());
        subCloseDatabase();
        mainScreen().unload();
        return OpenAnswer::Leave;
    case dao::errFileNotFound:
    case dao::errDiskOrNetwork:
        if (MsgBox(cannotConnectText(QStringLiteral(" a notebook PC which is not connected to the LAN. Unable to "
                                                    "continue.")),
                   vbRetryCancel + vbCritical, boxTitle()) == vbRetry) {
            return OpenAnswer::TryAgain;
        }
        End();
    case dao::errInvalidPath:
        MsgBox(QStringLiteral("Error: ") + number + QStringLiteral(" - ") + Err.Description + CR + CR +
                   QStringLiteral("Press OK to exit."),
               vbCritical, boxTitle());
        End();
    case dao::errInvalidFileName:
        MsgBox(cannotConnectText(QStringLiteral(" a notebook PC which is not connected to the LAN. Unable to "
                                                "continue. Press OK to exit.")),
               vbOKOnly + vbCritical, boxTitle());
        End();
    case dao::errCouldNotLockFile:
        subWaitTwoSeconds();
        if (++lockFailures <= 2) {
            return OpenAnswer::TryAgain;
        }
        MsgBox(errorbox::startup(kProcedure), vbOKOnly, boxTitle());
        mainScreen().unload();
        return OpenAnswer::Leave;
    default:
        errorbox::showGeneral(kProcedure, errorbox::Joined, vbOKOnly, boxTitle());
        subCloseDatabase();
        mainScreen().unload();
        return OpenAnswer::Leave;
    }
}

} // namespace

bool subInitializeLocalDatabase()
{
    readDataPath();

    // An administrator's repair in progress; inicheck starts this program again afterwards.
    subCheckINIForForcedShutDown();
    if (gRun.gblnForcedShutDown) {
        subStartIniCheck(gRun.gstrApplicationPath + QStringLiteral("inicheck"), gRun.gstrGivenCommandLine.trimmed());
        End();
    }

    // The open is this procedure's own, not subOpenDatabase's: its failures get the boxes above.
    int lockFailures = 0;
    for (;;) {
        try {
            gRun.gdbDatabase = dao::DBEngine::OpenDatabase(gRun.gstrCurrentDatabasePath + QStringLiteral("veskor.mdb"),
                                                           false, false, QString());
            break;
        } catch (const dao::JetError& e) {
            Err.Set(e);
            if (answerFailedOpen(lockFailures) == OpenAnswer::Leave) {
                return false;
            }
        }
    }

    // A file of another kind, or of another release of this system, is refused.
    if (!fnIsValidDatabase(gRun.gstrCurrentDatabasePath)) {
        MsgBox(gRun.gstrCurrentDatabasePath + QStringLiteral("veskor.mdb") + CRLF +
                   QStringLiteral("is not a VESK-OR 2005 database.") + CRLF + CRLF +
                   QStringLiteral("Please ask your VESK-OR Administrator to correct this problem.") + CRLF +
                   QStringLiteral("Unable to continue. Press OK to exit."),
               vbCritical, boxTitle());
        End();
    }

    // While frmWelcome lives this leaves the file open (gblnDatabaseClosed is False).
    subCloseDatabase();
    return true;
}
