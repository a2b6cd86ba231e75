// frmMain's Load and Activate, and its timers.
#include "board/frmmain.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "platform/identity.h"
#include "platform/mounts.h"
#include "platform/process.h"
#include "start/err.h"
#include "start/globals.h"
#include "status/settings.h"
#include "status/statuswrite.h"

#include <QFile>
#include <QPixmap>
#include <QToolBar>
#include <QTreeWidget>
#include <algorithm>

void frmMain::Form_Load()
{
    gblnWin2kPlus = platform::identity().osMajorVersion() >= 5;
    // The start-up's open stays no longer: from here the next subOpenDatabase really opens.
    gblnDatabaseClosed = true;
    blnFirstActivate = true;
    setBusyPointer(true);

    subReadOptions();
    if (gstrDefaultGroup != QLatin1String("Everyone") && !fnGroupExists(gstrDefaultGroup)) {
        gstrDefaultGroup = QStringLiteral("Everyone");
    }
    subGetCounterValues();
    subLoadToolBarButtons();
    if (fnRaiseOtherCopy()) {
        return; // another copy runs for this person: it was raised, this one leaves
    }

    subReadUserSettings(gstrDefaultUser);
    subReadGroups();
    setCaption(gstrProgramTitle + QStringLiteral(" - [") + gstrDefaultUser + QStringLiteral("]") +
               QStringLiteral(" '") + gstrCurrentStatus + QStringLiteral("'"));
    setBusyPointer(false);
    showLogoBehindList();

    subSetActiveFlag(QStringLiteral("Yes"));
    if (gblnAutoLogIn && !gstrCurrentStatus.contains(QLatin1String("ForcedShutDown"))) {
        subSetStatus(QStringLiteral("In"));
    }

    const Qt::WindowState states[] = {Qt::WindowNoState, Qt::WindowMinimized, Qt::WindowMaximized};
    setWindowState(gintStartupWindowState >= 0 && gintStartupWindowState <= 2 ? states[gintStartupWindowState]
                                                                              : Qt::WindowNoState);
    show();
    activateWindow();
    if (gblnAutoMinimize) {
        showMinimized();
    }
}

// "LOGO.GIF" beside the program, when there is one, stands behind the list; any
// failure to show it is passed over.
void frmMain::showLogoBehindList()
{
    const QString file = platform::nativePathOf(gstrApplicationPath + QStringLiteral("LOGO.GIF"));
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
        selectGroup(gstrDefaultGroup);
        blnFirstActivate = false;
    }
    TimerMain.start();
    gintTimerMainCountDown = gintRefreshRate * 60;
    // The message and status-alert watchers, and presence sensing, start their
    // timers here once they exist.
    applyDisplayFont();

    setPanelText(2, gstrCurrentDatabasePath);
    if (gintRefreshRate == 0) {
        setPanelText(3, QStringLiteral(" Refresh OFF "));
    }
    subRefreshUserList(gstrDefaultGroup);
    ToolbarMain->update();
    platform::DoEvents();
    if (gintMinimizeSetting >= 1 && !sysTrayIconExists()) {
        subCreateSysTrayIcon();
        setTrayTip(gstrProgramTitle + QStringLiteral(" [") + gstrDefaultUser + QStringLiteral("] '") +
                   gstrCurrentStatus + QStringLiteral("'"));
    }
    if (!isMinimized()) {
        ListViewMain->setFocus();
    }
    m_inActivate = false;
}

// The person's FontBoldDisplay, and FontSizeDisplay kept between 8 and 15.
void frmMain::applyDisplayFont()
{
    gintFontSizeDisplay = std::clamp(gintFontSizeDisplay, 8LL, 15LL);
    QFont font = ListViewMain->font();
    font.setBold(gintFontBoldDisplay != 0);
    font.setPointSize(int(gintFontSizeDisplay));
    ListViewMain->setFont(font);
}

// The refresh count-down and the forced-shutdown look are the full board's.
void frmMain::TimerMain_Timer()
{
}

void frmMain::tmrCheckForForcedShutDown_Timer()
{
}
