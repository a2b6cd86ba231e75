// The end of a run: frmMain's QueryUnload, for the close box, the Exit command,
// the desktop session's end and a signal alike, and the unloading of the other
// screens.
#include "alerts/modalerts.h"
#include "board/frmmain.h"
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/constants.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "servers/serverconnection.h"
#include "status/settings.h"
#include "status/statuscommon.h"
#include "status/statuswrite.h"

#include <QApplication>
#include <QCloseEvent>
#include <QTabBar>
#include <memory>

using namespace platform;

namespace {

const QString kProcedure = QStringLiteral("frmMain - QueryUnload event");
const QString kRemoved = QStringLiteral("Removed");

// The program's other windows, newest last: every top-level screen but the board.
QList<QWidget*> otherScreens(const QWidget* board)
{
    QList<QWidget*> screens;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        const Qt::WindowType type = widget->windowType();
        if (widget != board && (type == Qt::Window || type == Qt::Dialog)) {
            screens << widget;
        }
    }
    return screens;
}

// AutoLogOut: "Out" at the end, unless the person's status is a protected one (or
// no status type at all). A person no longer in the table is told so.
void logOutUnlessProtected(MainScreen& board)
{
    subOpenDatabase();
    std::unique_ptr<dao::Recordset> own =
        fnOpenSQL(QStringLiteral("SELECT Status FROM EmployeeTable WHERE Name = ") + dao::quote(gRun.gstrDefaultUser));
    if (own->isEOF()) {
        MsgBox(QStringLiteral("The current user: ") + gRun.gstrDefaultUser +
                   QStringLiteral(" has been removed from the VESK-OR database. ") + CRLF + CRLF +
                   QStringLiteral("Please advise your VESK-OR Administrator to re-initialize this users account.") +
                   CRLF + CRLF + QStringLiteral("Select OK to exit VESK-OR."),
               vbCritical, gRun.gstrProgramTitle);
        gRun.gstrDefaultUser = kRemoved;
        return;
    }
    const QString status = own->Fields(QStringLiteral("Status")).Text();
    own->Close();
    std::unique_ptr<dao::Recordset> type =
        fnOpenSQL(QStringLiteral("SELECT * FROM StatusTypesTable WHERE Status = ") + dao::quote(status));
    if (!type->isEOF() && !status::boolFromText(type->Fields(QStringLiteral("ProtectedStatus")).Text())) {
        board.clearList(); // the write below is the person's own, whatever was selected
        subSetStatus(QStringLiteral("Out"));
    }
    type->Close();
}

} // namespace

// The ordinary end. cancel is set only when the close box merely minimizes.
void frmMain::Form_QueryUnload(bool& cancel, int unloadMode)
{
    if (gRun.gstrDefaultUser == kRemoved) {
        return; // all of it was done when the person was found removed
    }
    if (unloadMode == vbFormControlMenu && !isMinimized() && gPerson.gblnMinimizeOnClose) {
        minimize();
        cancel = true;
        return;
    }
    if (gRun.gstrDefaultUser.isEmpty()) {
        // No person was ever known: nothing to write.
        subCloseDatabase();
        subUnloadAllForms();
        ResumeNext([] { fnDatabase().Close(); });
        End();
    }
    TimerMain.stop(); // no refresh may start during the unload
    // The person's row and settings are written at home, not at the other site.
    if (gRun.gblnRemoteConnection) {
        servers::subConnectHome();
    }
    if (TabStripMain->currentIndex() >= 0) {
        gPerson.gstrDefaultGroup = TabStripMain->tabText(TabStripMain->currentIndex());
    }

    // Each step that fails is reported, and the end goes on.
    status::Trap trap([](const VbError&) {
        errorbox::showGeneral(kProcedure, errorbox::Joined, vbOKOnly, gRun.gstrProgramTitle);
        return status::Resume::Next;
    });
    if (!gRun.gblnForcedShutDown && gPerson.gblnAutoLogOut) {
        trap([this] { logOutUnlessProtected(*this); });
    }
    // A removed person has no row left to mark or to keep settings in.
    if (gRun.gstrDefaultUser != kRemoved) {
        trap([] { subSetActiveFlag(QStringLiteral("No")); });
        trap([] { subSaveUserSettings(gRun.gstrDefaultUser); });
    }

    ResumeNext([] { fnDatabase().Close(); });
    setBusyPointer(false);
    ResumeNext([] { subCloseDatabase(); });
    subUnloadAllForms();
    subUnloadSysTrayIcon();
    End();
}

// The close box: QueryUnload may keep the run going (minimized); else the run ends in it.
void frmMain::closeEvent(QCloseEvent* event)
{
    if (m_unloading) {
        event->accept(); // the unload asked for by code, already through QueryUnload
        return;
    }
    bool cancel = false;
    Form_QueryUnload(cancel, vbFormControlMenu);
    if (cancel) {
        event->ignore();
        return;
    }
    setMainScreen(nullptr);
    event->accept();
}

// Unload for any reason but the close box: QueryUnload ends the run, except for a
// person found removed, whose caller ends it.
void frmMain::requestUnload(int unloadMode)
{
    if (m_unloading) {
        return; // one end at a time: a signal during the end's own boxes adds nothing
    }
    m_unloading = true;
    bool cancel = false;
    Form_QueryUnload(cancel, unloadMode);
    if (cancel) {
        m_unloading = false;
        return;
    }
    setMainScreen(nullptr);
    close();
}

void frmMain::unload()
{
    requestUnload(vbFormCode);
}

// From the newest to the oldest; the board stays.
void frmMain::subUnloadAllForms()
{
    const QList<QWidget*> screens = otherScreens(this);
    for (auto it = screens.rbegin(); it != screens.rend(); ++it) {
        (*it)->close();
    }
}

// Every pop-up alert of both kinds, destroyed without their own unload work.
void frmMain::subCloseAllAlerts()
{
    alerts::subCloseAllAlerts();
}
