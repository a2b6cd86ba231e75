#include "start/clientapplication.h"

#include "dao/jeterror.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "start/welcome.h"

#include <QPointer>
#include <QWidget>
#include <exception>
#include <new>

namespace {

// A failure no procedure handles ends the run the way VB's run time does: one
// stop box with the number and the text, then the end. Nothing is repaired.
[[noreturn]] void endOnRunTimeError(const VbError& e)
{
    // One box at a time: a failure in an event run while the box waits ends the run at once.
    static bool showing = false;
    if (!showing) {
        showing = true;
        platform::MsgBox(QStringLiteral("Run-time error '") + QString::number(e.number()) + QStringLiteral("':") +
                             QStringLiteral("\r\r") + e.description(),
                         platform::vbCritical, gRun.gstrProgramTitle);
        showing = false;
    }
    platform::End(1);
}

// Any other failure that reaches the event loop: the general error box, naming
// the window and the object the event was for, then the end.
[[noreturn]] void endOnOtherError(QObject* receiver, int number, const QString& description)
{
    static bool showing = false;
    if (!showing) {
        showing = true;
        Err.Number = number;
        Err.Description = description;
        const QWidget* widget = qobject_cast<QWidget*>(receiver);
        const QString window = widget ? widget->window()->objectName() : QString();
        const QString object = receiver ? receiver->objectName() : QString();
        errorbox::showGeneral((window.isEmpty() ? QStringLiteral("user") : window) + QStringLiteral(" - ") +
                                  (object.isEmpty() ? QStringLiteral("Run") : object) + QStringLiteral(" event"),
                              errorbox::Joined, platform::vbCritical, gRun.gstrProgramTitle);
        showing = false;
    }
    platform::End(1);
}

} // namespace

bool ClientApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const VbError& e) {
        endOnRunTimeError(e);
    } catch (const std::bad_alloc&) {
        endOnOtherError(receiver, vbErrOutOfMemory, QStringLiteral("Out of memory"));
    } catch (const std::exception& e) {
        endOnOtherError(receiver, vbErrInternal, QStringLiteral("Internal error: ") + QString::fromLocal8Bit(e.what()));
    }
}

void takeDownApplication(QApplication* app)
{
    // The splash, when the run ends before its hand-over.
    QList<QPointer<QWidget>> screens{dynamic_cast<QWidget*>(&welcomeScreen())};
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
