// The In, Busy and Out commands of the board.

#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "status/statuswrite.h"

using namespace platform;

namespace {

// A status by word, the board redrawn, and the window out of the way when the
// person likes it so.
void setStatusAndRefresh(const QString& status)
{
    subSetStatus(status);
    mainScreen().subRefreshUserList(QString());
    if (gPerson.gblnAutoMinimize) {
        mainScreen().minimize();
        mainScreen().subTaskBarSysTrayActivation();
    }
}

} // namespace

void subCommand_In()
{
    setStatusAndRefresh(QStringLiteral("In"));
}

void subCommand_Busy()
{
    setStatusAndRefresh(QStringLiteral("Busy"));
}

void subCommand_Out()
{
    MainScreen& screen = mainScreen();
    if (gRun.gblnOutViaStatusScreen) {
        // An earlier Out left the flag standing: frmGroup's Load finds the word here.
        screen.setToolbarTag(QStringLiteral("Out"));
    }
    if (!gPerson.gblnChangeScreenPopUp) {
        setStatusAndRefresh(QStringLiteral("Out"));
        return;
    }
    const bool ownRowOrNone =
        !screen.selectedItemIsSelected() || screen.selectedItemText(int(gBoard.gintNameColumn)) == gRun.gstrDefaultUser;
    if (ownRowOrNone) {
        gRun.gblnOutViaStatusScreen = true; // frmStatus's Activate presets "Out" and clears it
        screen.subUnloadSysTrayIcon();
        screen.showStatusScreen();
        screen.subRefreshUserList(QString());
        if (!screen.sysTrayIconExists() && gPerson.gintMinimizeSetting < 1) {
            screen.subCreateSysTrayIcon();
        }
        return;
    }
    if (screen.groupButtonEnabled()) {
        screen.subUnloadSysTrayIcon();
        screen.showGroupScreen();
        screen.subRefreshUserList(QString());
        DoEvents();
    } else {
        MsgBox(QStringLiteral("Sorry, your security level does not allow you to change users in this Group."),
               vbOKOnly);
    }
}
