// frmMain's Load and Activate, and its timers.
#include "board/frmmain.h"
#include "board/refreshplan.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "platform/identity.h"
#include "platform/mounts.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "status/settings.h"
#include "status/statuscommon.h"
#include "status/statuswrite.h"

#include <QFile>
#include <QPixmap>
#include <QToolBar>
#include <QTreeWidget>
#include <algorithm>

void frmMain::Form_Load()
{
    gRun.gblnWin2kPlus = platform::identity().osMajorVersion() >= 5;
    // The start-up's open stays no longer: from here the next subOpenDatabase really opens.
    gRun.gblnDatabaseClosed = true;
    blnFirstActivate = true;
    mblnLoading = true;
    setBusyPointer(true);

    subReadOptions();
    if (gPerson.gstrDefaultGroup != QLatin1String("Everyone") && !fnGroupExists(gPerson.gstrDefaultGroup)) {
        gPerson.gstrDefaultGroup = QStringLiteral("Everyone");
    }
    subGetCounterValues();
    subLoadToolBarButtons();
    if (fnRaiseOtherCopy()) {
        return; // another copy runs for this person: it was raised, this one leaves
    }

    subReadUserSettings(gRun.gstrDefaultUser);
    // The list sorts, and the find box searches, by the saved sort column until a header is clicked.
    m_listSortKey = int(gPerson.gintSortKey);
    gBoard.gintFindColumn = gPerson.gintSortKey;
    subReadGroups();
    setCaption(fnOwnStatusCaption());
    setBusyPointer(false);
    showLogoBehindList();

    // The Load's own handler: a write that fails here (another client's lock on the
    // row) gets the general box, and the Load goes on, so the board comes up.
    status::Trap trap([](const VbError&) {
        errorbox::showGeneral(QStringLiteral("frmMain - Load event"), errorbox::Joined, platform::vbOKOnly,
                              gRun.gstrProgramTitle);
        return status::Resume::Next;
    });
    trap([] { subSetActiveFlag(QStringLiteral("Yes")); });
    if (gPerson.gblnAutoLogIn && !gRun.gstrCurrentStatus.contains(QLatin1String("ForcedShutDown"))) {
        trap([] { subSetStatus(QStringLiteral("In")); });
    }

    const Qt::WindowState states[] = {Qt::WindowNoState, Qt::WindowMinimized, Qt::WindowMaximized};
    setWindowState(gRun.gintStartupWindowState >= 0 && gRun.gintStartupWindowState <= 2
                       ? states[gRun.gintStartupWindowState]
                       : Qt::WindowNoState);
    show();
    activateWindow();
    if (gPerson.gblnAutoMinimize) {
        showMinimized();
    }
}

// "LOGO.GIF" beside the program, when there is one, stands behind the list; any
// failure to show it is passed over.
void frmMain::showLogoBehindList()
{
    const QString file = platform::nativePathOf(gRun.gstrApplicationPath + QStringLiteral("LOGO.GIF"));
    const QPixmap logo = QFile::exists(file) ? QPixmap(file) : QPixmap();
    if (logo.isNull()) {
        return;
    }
    QPalette palette = ListViewMain->viewport()->palette();
    palette.setBrush(QPalette::Base, QBrush(logo));
    ListViewMain->viewport()->setPalette(palette);
}

void frmMain::Form_Activate()
{
    // Letting events run below can bring another activation; it waits for this one.
    if (m_inActivate) {
        return;
    }
    m_inActivate = true;
    if (blnFirstActivate) {
        selectGroup(gPerson.gstrDefaultGroup);
        blnFirstActivate = false;
        mblnLoading = false;
    }
    startTimersOnActivate();
    applyDisplayFont();

    setPanelText(2, gRun.gstrCurrentDatabasePath);
    if (gPerson.gintRefreshRate == 0) {
        setPanelText(3, QStringLiteral(" Refresh OFF "));
    }
    subRefreshUserList(gRun.gstrCurrentGroup);
    subPopulateTreeView();
    // The toolbar by the person's rights here and the panes just filled: the Group
    // button and multiple selection, Preview by the new messages.
    subSetToolBarRights();
    ToolbarMain->update();
    platform::DoEvents();
    subResizeControls();
    if (gPerson.gintMinimizeSetting >= 1 && !sysTrayIconExists()) {
        subCreateSysTrayIcon();
        setTrayTip(fnOwnStatusTrayTip());
    }
    if (!isMinimized()) {
        ListViewMain->setFocus();
    }
    m_inActivate = false;
}

// Every return to the board starts the count-down from the top. A watcher that
// runs is left alone, so that it does not lose its place.
void frmMain::startTimersOnActivate()
{
    TimerMain.start();
    gBoard.gintTimerMainCountDown = refresh::fullCountDown(gPerson.gintRefreshRate);
    const auto runIf = [](QTimer& timer, bool on) {
        if (!on) {
            timer.stop();
        } else if (!timer.isActive()) {
            timer.start();
        }
    };
    runIf(tmrCheckForNewMessages, gSite.gblnAllowMessaging);
    runIf(tmrCheckForStatusAlerts, gSite.gblnAllowStatusAlerts);
    runIf(tmrScreenSaver, gSite.gblnAllowPresenceSensing);
    runIf(tmrDetectLockedWorkStation, gSite.gblnAllowPresenceSensing);
}

// The person's FontBoldDisplay, and FontSizeDisplay kept between 8 and 15.
void frmMain::applyDisplayFont()
{
    gPerson.gintFontSizeDisplay = std::clamp(gPerson.gintFontSizeDisplay, 8LL, 15LL);
    QFont font = ListViewMain->font();
    font.setBold(gPerson.gintFontBoldDisplay != 0);
    font.setPointSize(int(gPerson.gintFontSizeDisplay));
    ListViewMain->setFont(font);
}
