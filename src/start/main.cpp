// user: the client. The splash finds the database and the person, then hands
// over to the board.
//
// The command line is the arguments joined with blanks, as Windows hands a
// program its command line: user -UID:alee -STS:Busy
#include "board/frmmain.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/gui/guigateways.h"
#include "platform/process.h"
#include "start/clientapplication.h"
#include "start/endsignals.h"
#include "start/frmwelcome.h"
#include "start/newusersetupseam.h"
#include "users/frmnewusersetup.h"

#include <QApplication>

namespace {

// An end from outside (a signal, the desktop session) takes the board's ordinary
// end, so the person is logged out of the board; before the board is up there is
// nobody to log out.
void endFromOutside(EndSignals::Reason reason)
{
    auto* board = mainScreenLoaded() ? dynamic_cast<frmMain*>(&mainScreen()) : nullptr;
    if (!board) {
        platform::End(0);
    }
    board->requestUnload(reason == EndSignals::Terminated ? vbAppTaskManager : vbAppWindows);
}

} // namespace

int main(int argc, char* argv[])
{
    // On the heap: every end, the last one included, goes through End, which
    // takes the application down before the static objects go.
    auto* app = new ClientApplication(argc, argv);
    platform::atEnd([app] { takeDownApplication(app); });
    QCoreApplication::setApplicationName(QStringLiteral("user"));
    platform::installGuiGateways();
    platform::atEnd([] {
        if (gRun.gdbDatabase) {
            ResumeNext([] { gRun.gdbDatabase->Close(); });
        }
    });

    gRun.gstrGivenCommandLine = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
    setMainScreenFactory(&frmMain::load);
    setNewUserSetupScreen(&frmNewUserSetup::showScreen);

    auto* ends = new EndSignals(app);
    ends->watchSession(*app);
    QObject::connect(ends, &EndSignals::endRequested, app, &endFromOutside);
    // The session manager may also just quit the program: that too is an end from outside.
    QObject::connect(app, &QCoreApplication::aboutToQuit, app, [] {
        if (mainScreenLoaded()) {
            endFromOutside(EndSignals::SessionEnding);
        }
    });

    auto* welcome = new frmWelcome;
    welcome->show();
    platform::End(QApplication::exec());
}
