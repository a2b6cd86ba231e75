#pragma once
// The link to QUIL, the sibling telephone-message program that runs beside the
// board. QUIL offers a small interface on the session bus (docs/sibling-dbus.md):
// the board finds it by its bus name, raises its window, and starts a message
// to the person selected, from the person at this desk.
//
// Nothing here waits on QUIL itself: the one question, whether its name is on the
// bus, goes to the bus daemon with a short limit; every call to QUIL is sent
// without waiting, in order, and a failure comes back later as a box.

#include <QDBusConnection>
#include <QString>
#include <functional>

class QObject;

namespace reports {

inline const QString kQuilService = QStringLiteral("org.veskor.Quil");
inline const QString kQuilPath = QStringLiteral("/org/veskor/Quil");
inline const QString kQuilInterface = QStringLiteral("org.veskor.Quil.Conversation");

class QuilLink
{
public:
    explicit QuilLink(QDBusConnection bus);

    // True when QUIL's name has an owner on the bus; false with no bus or no answer within half a second.
    bool isRunning() const;
    // QUIL's window restored if minimised and brought to the front.
    void raise();
    // A new message in QUIL: Create and Clear (their failures ignored), the To and
    // Operator items set, and QUIL's message screen opened. The first failure of
    // the last three is shown in the general error box.
    void startMessage(const QString& to, const QString& operatorName);
    // Calls showCommand(running) once QUIL's presence is known, and again whenever
    // it comes or goes, for as long as context lives.
    void watch(QObject* context, const std::function<void(bool running)>& showCommand);

private:
    QDBusConnection m_bus;
};

// The link on the session bus, made at the first use.
QuilLink& quilLink();

// The board's "QUIL" command: with QUIL running, hands it the last selected
// person (with a warning when more than one is selected); otherwise the warning
// that it is not running. showCommand(running) shows or hides the command.
void subSendQUILMessage(QuilLink& link, const std::function<void(bool running)>& showCommand);

} // namespace reports
