#pragma once
// The run-wide values, named as the system names them, in five owned groups:
// the run itself (who, where, the shared file, the status engine), the site's
// settings (GlobalSettingsTable), the person's settings (EmployeeSettingsTable),
// the change counters, and the board's state. Each group starts from its
// members' initial values and reset() puts the whole group back to them;
// resetRunWide() resets all five and Err (tests call it between cases).

#include "dao/dao.h"

#include <QString>
#include <memory>
#include <optional>

// Who runs the program, from where, on which file, and the status engine's
// state between calls.
struct RunState
{
    // identity and paths
    QString gstrProgramTitle = QStringLiteral(" VESK-OR Pro ");
    QString gstrReleaseDate;
    QString gstrBuildName;
    QString gstrApplicationPath;
    QString gstrHelpFile;
    QString gstrComputerName;
    QString gstrDatabasePath;
    QString gstrCurrentDatabasePath;
    QString gstrCommandLine;
    QString gstrGivenCommandLine; // VB's Command$: as the program was started
    QString gstrLoginName;
    QString gstrUserID;
    QString gstrDefaultUser;
    QString gstrCurrentStatus;
    QString gstrDueBack;
    QString gstrComment;
    QString gstrCurrentGroup;
    bool gblnValidUserName = false;
    bool gblnValidUserID = false;
    bool gblnNewUserSetupDone = false;
    bool gblnNewUserSetupCancelled = false;
    bool gblnForcedShutDown = false;
    bool gblnWin2kPlus = false;
    bool gblnRemoteConnection = false;
    int gintStartupWindowState = 0;
    // the shared file and its open-and-close regime
    std::shared_ptr<dao::Database> gdbDatabase;
    bool gblnDatabaseClosed = false;
    QString gstrSQL;
    long long glngDatabaseCloseCount = 0;
    bool gblnDatabaseOpenFailed = false;
    long long gintDatabaseRetryCount = 0; // the silent tries of fnDatabaseBusyResponse
    // the status engine
    long long gintStatusCode = 0;
    long long gintOwnStatusCode = 0;
    bool gblnSuppressNextLog = false;
    bool gblnLockSetStatusOut = false;   // a lock set the status "Out"; the unlock owes the "In"
    bool gblnOutViaStatusScreen = false; // frmStatus opened by the Out command
    long long intLogRetries = 0;         // never reset during a run
    QString gstrIPAddress;
    bool gblnUserOnThisServer = false;

    void reset()
    {
        *this = RunState{};
    }
};

// The site's settings, as read from GlobalSettingsTable.
struct SiteSettings
{
    long long gintSystemSecurityLevel = 0;
    long long gintLogoPosition = 0;
    QString gstrDatabaseReleaseVersion;
    bool gblnTransactionLog = false;
    bool gblnAllowMessaging = false;
    bool gblnAllowStatusAlerts = false;
    bool gblnAllowPresenceSensing = false;
    bool gblnUpdateStatusOnLock = false;
    bool gblnAllowUserToAddVeskOrToStartupFolder = false;

    void reset()
    {
        *this = SiteSettings{};
    }
};

// The person's settings, as read from EmployeeSettingsTable.
struct PersonSettings
{
    QString gstrDefaultGroup = QStringLiteral("Everyone");
    bool gblnStatusAlertsOverride = false;
    bool gblnAutoClearComments = false;
    bool gblnAutoLogIn = false;
    bool gblnAutoLogOut = false;
    bool gblnAutoMinimize = false;
    bool gblnMinimizeOnClose = false;
    long long gvarDisplayTreeView = 1;
    long long gintRefreshRate = 5;
    long long gintSortKey = 0;
    QString gstrSortColumnName;
    long long gintSortOrder = 0;
    std::optional<long long> glngScreenTop;
    std::optional<long long> glngScreenLeft;
    std::optional<long long> glngScreenHeight;
    std::optional<long long> glngScreenWidth;
    bool gblnListViewPopUp = false;
    bool gblnChangeScreenPopUp = false;
    long long gintUserSecurityLevel = 0;
    long long gintMinimizeSetting = 0;
    long long gintIconSize = 0;
    long long gintToolBarText = 0;
    bool gblnPhotoSizeToFit = false;
    long long glngSplitterVertical = 1800;
    long long glngSplitterHorizontal = 1575;
    long long gintFontBoldDisplay = 0;
    long long gintFontSizeDisplay = 8;

    void reset()
    {
        *this = PersonSettings{};
    }
};

// The change counters: each as last read from the file, and as last acted on.
struct ChangeCounters
{
    long long glngStatusCounter = 0;
    long long glngLastStatusCounter = 0;
    long long glngGroupCounter = 0;
    long long glngLastGroupCounter = 0;
    long long glngStatusTypeCounter = 0;
    long long glngLastStatusTypeCounter = 0;
    long long glngSecurityCounter = 0;
    long long glngLastSecurityCounter = 0;
    long long glngExtraColumnsCounter = 0;
    long long glngLastExtraColumnsCounter = 0;

    void reset()
    {
        *this = ChangeCounters{};
    }
};

// What the board shows and remembers between refreshes.
struct BoardState
{
    long long gintTimerMainCountDown = 0;
    long long gintFindColumn = 0;
    long long gintNameColumn = 0;
    QString gstrSelectedUser;
    QString gstrRefreshedText; // the last " Data refreshed at ..." of panel 1
    // the splitters' limits, set by each layout pass
    long long glngSplitterVerticalMin = 0;
    long long glngSplitterVerticalMax = 0;
    long long glngSplitterHorizontalMin = 0;
    long long glngSplitterHorizontalMax = 0;

    void reset()
    {
        *this = BoardState{};
    }
};

extern RunState gRun;
extern SiteSettings gSite;
extern PersonSettings gPerson;
extern ChangeCounters gCounters;
extern BoardState gBoard;

// Puts every run-wide value, and Err, back to its start value.
void resetRunWide();
