// frmMain's timers: the one-second count-down that drives the auto-refresh and
// shows in panel 3, the two watchers that fire early once and then every minute,
// the look for a forced shutdown, and the two presence ticks (screen saver and
// lock). Every tick runs to its end on the one interface thread.
#include "board/frmmain.h"
#include "board/refreshplan.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/forcedshutdown.h"
#include "kernel/globals.h"
#include "messaging/gui/messagescreens.h"
#include "platform/msgbox.h"
#include "platform/presence.h"
#include "platform/process.h"
#include "presence/modscreensaver.h"
#include "status/statuswrite.h"

namespace {

constexpr int kOneMinuteMs = 60000;

// A watcher that fired for the first time settles at one minute for the rest of the run.
void settleAtOneMinute(QTimer& timer)
{
    if (timer.interval() != kOneMinuteMs) {
        timer.setInterval(kOneMinuteMs);
    }
}

} // namespace

void frmMain::initTimers()
{
    setPanelToolTip(2, QStringLiteral("Current database path"));
    setPanelToolTip(3, QStringLiteral("Countdown to next Auto-Refresh"));
    TimerMain.setInterval(1000);
    connect(&TimerMain, &QTimer::timeout, this, &frmMain::TimerMain_Timer);
    tmrCheckForForcedShutDown.setInterval(kOneMinuteMs);
    connect(&tmrCheckForForcedShutDown, &QTimer::timeout, this, &frmMain::tmrCheckForForcedShutDown_Timer);
    tmrCheckForForcedShutDown.start(); // the only timer on from the start
    connect(&tmrCheckForNewMessages, &QTimer::timeout, this, &frmMain::tmrCheckForNewMessages_Timer);
    connect(&tmrCheckForStatusAlerts, &QTimer::timeout, this, &frmMain::tmrCheckForStatusAlerts_Timer);
    connect(&tmrScreenSaver, &QTimer::timeout, this, &frmMain::tmrScreenSaver_Timer);
    connect(&tmrDetectLockedWorkStation, &QTimer::timeout, this, &frmMain::tmrDetectLockedWorkStation_Timer);
}

// Counts down from RefreshRate minutes and refreshes at 0. A minimized board
// does not refresh, but its count-down goes on and starts again.
void frmMain::TimerMain_Timer()
{
    const refresh::Tick tick = refresh::tick(gPerson.gintRefreshRate, gBoard.gintTimerMainCountDown, isMinimized());
    if (tick.stopTimer) {
        TimerMain.stop();
        return;
    }
    gBoard.gintTimerMainCountDown = tick.countDown;
    if (tick.refresh) {
        subRefreshUserList(QString());
    }
    setPanelText(3, tick.panelText);
}

// While another of the program's own windows has the focus the count-down stands
// still, so no rebuild runs underneath it. Every other timer goes on.
void frmMain::Form_Deactivate()
{
    TimerMain.stop();
}

void frmMain::lookOrTell(const QString& procedure, const std::function<void()>& look)
{
    static bool telling = false;
    try {
        look();
    } catch (const VbError& e) {
        if (!telling) {
            telling = true;
            Err.Set(e);
            errorbox::showGeneral(procedure, errorbox::Joined, platform::vbCritical);
            telling = false;
        }
    }
}

void frmMain::tmrCheckForNewMessages_Timer()
{
    subCheckForNewMessages();
    settleAtOneMinute(tmrCheckForNewMessages);
}

void frmMain::tmrCheckForStatusAlerts_Timer()
{
    subCheckForStatusAlerts();
    settleAtOneMinute(tmrCheckForStatusAlerts);
}

void frmMain::tmrScreenSaver_Timer()
{
    lookOrTell(QStringLiteral("frmMain - tmrScreenSaver_Timer"), presence::tmrScreenSaver_Timer);
}

void frmMain::tmrDetectLockedWorkStation_Timer()
{
    lookOrTell(QStringLiteral("frmMain - tmrDetectLockedWorkStation_Timer"),
               presence::tmrDetectLockedWorkStation_Timer);
}

void frmMain::subLockWorkStation()
{
    subMonitorWorkStation();
    platform::presence().requestLock();
}

void frmMain::subMonitorWorkStation()
{
    tmrDetectLockedWorkStation.stop();
    tmrDetectLockedWorkStation.setInterval(3000);
    if (gSite.gblnAllowPresenceSensing) {
        tmrDetectLockedWorkStation.start();
    }
}

void frmMain::subStopMonitoringWorkStation()
{
    tmrDetectLockedWorkStation.stop();
}

// An administrator who must repair the database asks every client to leave: this
// one hands over to inicheck, which starts it again once the file allows, and ends.
void frmMain::tmrCheckForForcedShutDown_Timer()
{
    // The ID the run started under is not kept, so "-UID:" stands empty and the
    // client started again finds its person from the login name.
    const QString strSavedUserID;
    const QString strArguments = QStringLiteral("-UID:") + strSavedUserID + QStringLiteral("  -STS:ForcedShutDown");
    subCheckINIForForcedShutDown();
    if (gRun.gblnForcedShutDown) {
        // A bare program name is found in the program's own folder first.
        subStartIniCheck(gRun.gstrApplicationPath + QStringLiteral("inicheck"), strArguments);
        if (!gRun.gstrDefaultUser.isEmpty()) {
            subSetActiveFlag(QStringLiteral("No"));
        }
        subSaveOpenMessages();
        unload();
        platform::End();
    }
    settleAtOneMinute(tmrCheckForForcedShutDown);
}
