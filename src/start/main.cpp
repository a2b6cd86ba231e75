// user: the client. The splash finds the database and the person, then hands
// over to the board.
//
// The command line is the arguments joined with blanks, as Windows hands a
// program its command line: user -UID:alee -STS:Busy
#include "board/frmmain.h"
#include "dao/jeterror.h"
#include "platform/gui/guigateways.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "start/endsignals.h"
#include "start/err.h"
#include "start/frmwelcome.h"
#include "start/globals.h"
#include "start/mainscreen.h"

#include <QApplication>

namespace {

// A failure no procedure handles ends the run the way VB's run time does: one
// stop box with the number and the text, then the end. Nothing is repaired.
[[noreturn]] void endOnRunTimeError(const dao::JetError& e)
{
    static bool ending = false;
    if (!ending) {
        ending = true;
        platform::MsgBox(QStringLiteral("Run-time error '") + QString::number(e.number()) + QStringLiteral("':") +
                             QStringLiteral("\r\r") + e.description(),
                         platform::vbCritical, gstrProgramTitle);
    }
    platform::End(1);
}

class ClientApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        try {
            return QApplication::notify(receiver, event);
        } catch (const dao::JetError& e) {
            endOnRunTimeError(e);
        }
    }
};

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
    ClientApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("user"));
    platform::installGuiGateways();
    platform::atEnd([] {
        if (gdbDatabase) {
            ResumeNext([] { gdbDatabase->Close(); });
        }
    });

    gstrGivenCommandLine = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
    setMainScreenFactory(&frmMain::load);

    EndSignals ends;
    ends.watchSession(app);
    QObject::connect(&ends, &EndSignals::endRequested, &app, &endFromOutside);
    // The session manager may also just quit the program: that too is an end from outside.
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &app, [] {
        if (mainScreenLoaded()) {
            endFromOutside(EndSignals::SessionEnding);
        }
    });

    auto* welcome = new frmWelcome;
    welcome->show();
    platform::End(app.exec());
}
