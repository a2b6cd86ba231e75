#pragma once
// The run-wide values, named as the system names them, all in one list so that
// resetRunWide() puts every one of them back to its start value (tests call it
// between cases). To add a value, add one line to VESKOR_RUN_WIDE.

#include "dao/dao.h"

#include <QString>
#include <memory>
#include <optional>

// X(type, name, start value)
#define VESKOR_RUN_WIDE(X)                                                                                             \
    /* identity and paths */                                                                                           \
    X(QString, gstrProgramTitle, QStringLiteral(" VESK-OR Pro "))                                                      \
    X(QString, gstrReleaseDate, QString())                                                                             \
    X(QString, gstrBuildName, QString())                                                                               \
    X(QString, gstrApplicationPath, QString())                                                                         \
    X(QString, gstrHelpFile, QString())                                                                                \
    X(QString, gstrComputerName, QString())                                                                            \
    X(QString, gstrDatabasePath, QString())                                                                            \
    X(QString, gstrCurrentDatabasePath, QString())                                                                     \
    X(QString, gstrCommandLine, QString())                                                                             \
    X(QString, gstrGivenCommandLine, QString()) /* VB's Command$: as the program was started */                        \
    X(QString, gstrLoginName, QString())                                                                               \
    X(QString, gstrUserID, QString())                                                                                  \
    X(QString, gstrDefaultUser, QString())                                                                             \
    X(QString, gstrCurrentStatus, QString())                                                                           \
    X(QString, gstrDueBack, QString())                                                                                 \
    X(QString, gstrComment, QString())                                                                                 \
    X(QString, gstrCurrentGroup, QString())                                                                            \
    X(bool, gblnValidUserName, false)                                                                                  \
    X(bool, gblnValidUserID, false)                                                                                    \
    X(bool, gblnNewUserSetupDone, false)                                                                               \
    X(bool, gblnNewUserSetupCancelled, false)                                                                          \
    X(bool, gblnForcedShutDown, false)                                                                                 \
    X(bool, gblnWin2kPlus, false)                                                                                      \
    X(bool, gblnRemoteConnection, false)                                                                               \
    X(int, gintStartupWindowState, 0)                                                                                  \
    /* the shared file and its open-and-close regime */                                                                \
    X(std::shared_ptr<dao::Database>, gdbDatabase, nullptr)                                                            \
    X(bool, gblnDatabaseClosed, false)                                                                                 \
    X(QString, gstrSQL, QString())                                                                                     \
    X(long long, glngDatabaseCloseCount, 0)                                                                            \
    X(bool, gblnDatabaseOpenFailed, false)                                                                             \
    /* change counters: as last read, and as last acted on */                                                          \
    X(long long, glngStatusCounter, 0)                                                                                 \
    X(long long, glngLastStatusCounter, 0)                                                                             \
    X(long long, glngGroupCounter, 0)                                                                                  \
    X(long long, glngLastGroupCounter, 0)                                                                              \
    X(long long, glngStatusTypeCounter, 0)                                                                             \
    X(long long, glngLastStatusTypeCounter, 0)                                                                         \
    X(long long, glngSecurityCounter, 0)                                                                               \
    X(long long, glngLastSecurityCounter, 0)                                                                           \
    X(long long, glngExtraColumnsCounter, 0)                                                                           \
    X(long long, glngLastExtraColumnsCounter, 0)                                                                       \
    /* the status engine */                                                                                            \
    X(long long, gintStatusCode, 0)                                                                                    \
    X(long long, gintOwnStatusCode, 0)                                                                                 \
    X(bool, gblnSuppressNextLog, false)                                                                                \
    X(bool, gblnOutViaStatusScreen, false) /* frmStatus opened by the Out command */                                   \
    X(long long, gintNameColumn, 0)                                                                                    \
    X(bool, gblnTransactionLog, false)                                                                                 \
    X(long long, intLogRetries, 0) /* never reset during a run */                                                      \
    X(QString, gstrIPAddress, QString())                                                                               \
    X(bool, gblnUserOnThisServer, false)                                                                               \
    /* system settings (GlobalSettingsTable) */                                                                        \
    X(long long, gintSystemSecurityLevel, 0)                                                                           \
    X(long long, gintLogoPosition, 0)                                                                                  \
    X(QString, gstrDatabaseReleaseVersion, QString())                                                                  \
    X(bool, gblnAllowMessaging, false)                                                                                 \
    X(bool, gblnAllowStatusAlerts, false)                                                                              \
    X(bool, gblnAllowPresenceSensing, false)                                                                           \
    X(bool, gblnUpdateStatusOnLock, false)                                                                             \
    X(bool, gblnAllowUserToAddVeskOrToStartupFolder, false)                                                            \
    /* the person's settings (EmployeeSettingsTable) */                                                                \
    X(QString, gstrDefaultGroup, QStringLiteral("Everyone"))                                                           \
    X(bool, gblnStatusAlertsOverride, false)                                                                           \
    X(bool, gblnAutoClearComments, false)                                                                              \
    X(bool, gblnAutoLogIn, false)                                                                                      \
    X(bool, gblnAutoLogOut, false)                                                                                     \
    X(bool, gblnAutoMinimize, false)                                                                                   \
    X(bool, gblnMinimizeOnClose, false)                                                                                \
    X(long long, gvarDisplayTreeView, 1)                                                                               \
    X(long long, gintRefreshRate, 5)                                                                                   \
    X(long long, gintSortKey, 0)                                                                                       \
    X(QString, gstrSortColumnName, QString())                                                                          \
    X(long long, gintSortOrder, 0)                                                                                     \
    X(std::optional<long long>, glngScreenTop, std::nullopt)                                                           \
    X(std::optional<long long>, glngScreenLeft, std::nullopt)                                                          \
    X(std::optional<long long>, glngScreenHeight, std::nullopt)                                                        \
    X(std::optional<long long>, glngScreenWidth, std::nullopt)                                                         \
    X(bool, gblnListViewPopUp, false)                                                                                  \
    X(bool, gblnChangeScreenPopUp, false)                                                                              \
    X(long long, gintUserSecurityLevel, 0)                                                                             \
    X(long long, gintMinimizeSetting, 0)                                                                               \
    X(long long, gintIconSize, 0)                                                                                      \
    X(long long, gintToolBarText, 0)                                                                                   \
    X(bool, gblnPhotoSizeToFit, false)                                                                                 \
    X(long long, glngSplitterVertical, 1800)                                                                           \
    X(long long, glngSplitterHorizontal, 1575)                                                                         \
    X(long long, glngSplitterVerticalMin, 0) /* the splitters' limits, set by each layout pass */                      \
    X(long long, glngSplitterVerticalMax, 0)                                                                           \
    X(long long, glngSplitterHorizontalMin, 0)                                                                         \
    X(long long, glngSplitterHorizontalMax, 0)                                                                         \
    X(long long, gintFontBoldDisplay, 0)                                                                               \
    X(long long, gintFontSizeDisplay, 8)                                                                               \
    /* the board */                                                                                                    \
    X(long long, gintTimerMainCountDown, 0)                                                                            \
    X(long long, gintFindColumn, 0)                                                                                    \
    X(QString, gstrSelectedUser, QString())                                                                            \
    X(QString, gstrRefreshedText, QString()) /* the last " Data refreshed at ..." of panel 1 */

#define VESKOR_DECLARE_RUN_WIDE(type, name, start) extern type name;
VESKOR_RUN_WIDE(VESKOR_DECLARE_RUN_WIDE)
#undef VESKOR_DECLARE_RUN_WIDE

// Puts every run-wide value, and Err, back to its start value.
void resetRunWide();
