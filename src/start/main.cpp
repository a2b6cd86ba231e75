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
#include "start/errorboxes.h"
#include "start/frmwelcome.h"
#include "start/globals.h"
#include "start/mainscreen.h"

#include <QApplication>
#include <QPointer>
#include <exception>
#include <new>

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

// VB's numbers for a failure that is not the engine's.
constexpr int kErrOutOfMemory = 7;
constexpr int kErrInternal = 51;

// Any other failure that reaches the event loop: the general error box, naming
// the window and the object the event was for, then the end.
[[noreturn]] void endOnOtherError(QObject* receiver, int number, const QString& description)
{
    static bool ending = false;
    if (!ending) {
        ending = true;
        Err.Number = number;
        Err.Description = description;
        const QWidget* widget = qobject_cast<QWidget*>(receiver);
        const QString window = widget ? widget->window()->objectName() : QString();
        const QString object = receiver ? receiver->objectName() : QString();
        errorbox::showGeneral((window.isEmpty() ? QStringLiteral("user") : window) + QStringLiteral(" - ") +
                                  (object.isEmpty() ? QStringLiteral("Run") : object) + QStringLiteral(" event"),
                              errorbox::Joined, platform::vbCritical, gstrProgramTitle);
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
        } catch (const std::bad_alloc&) {
            endOnOtherError(receiver, kErrOutOfMemory, QStringLiteral("Out of memory"));
        } catch (const std::exception& e) {
            endOnOtherError(receiver, kErrInternal,
                            QStringLiteral("Internal error: ") + QString::fromLocal8Bit(e.what()));
        }
    }
};

// The last work of every end: the program's screens go (frmMain with its
// single-instance socket and lock file), then the application, so that nothing
// of Qt is left for the static objects' destruction that follows.
void takeDownApplication(QApplication* app)
{
    QList<QPointer<QWidget>> screens;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        // A screen owns itself once shown; other windows belong to an object that deletes them.
        if (!window->parentWidget() && window->testAttribute(Qt::WA_DeleteOnClose)) {
            screens << window;
        }
    }
    for (const QPointer<QWidget>& screen : screens) {
        delete screen.data();
    }
    delete app;
}

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
        if (gdbDatabase) {
            ResumeNext([] { gdbDatabase->Close(); });
        }
    });

    gstrGivenCommandLine = QCoreApplication::arguments().mid(1).join(QLatin1Char(' '));
    setMainScreenFactory(&frmMain::load);

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
