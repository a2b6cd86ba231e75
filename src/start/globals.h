#pragma once
// The run-wide values, named as the system names them, all in one list so that
// resetRunWide() puts every one of them back to its start value (tests call it
// between cases). To add a value, add one line to VESKOR_RUN_WIDE.

#include "dao/dao.h"

#include <QString>
#include <memory>

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
    X(long long, gintDatabaseRetryCount, 0)                                                                            \
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
    X(long long, glngLastExtraColumnsCounter, 0)

#define VESKOR_DECLARE_RUN_WIDE(type, name, start) extern type name;
VESKOR_RUN_WIDE(VESKOR_DECLARE_RUN_WIDE)
#undef VESKOR_DECLARE_RUN_WIDE

// Puts every run-wide value, and Err, back to its start value.
void resetRunWide();
