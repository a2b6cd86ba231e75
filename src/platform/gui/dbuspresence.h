#pragma once
// Presence read from the desktop over D-Bus: the screen savers of the session
// bus and logind's LockedHint on the system bus. Answers come from a cache that
// the services' signals keep current and that is asked again, without waiting,
// at most every reaskMs; so a question never waits on the desktop, and a desktop
// that does not answer, or is not there, reads as "not running, not locked".

#include "platform/presence.h"

#include <QDBusConnection>
#include <QPointer>

namespace platform {

class DesktopWatch;

class DBusPresence : public Presence
{
public:
    explicit DBusPresence(const QDBusConnection& sessionBus = QDBusConnection::sessionBus(),
                          const QDBusConnection& systemBus = QDBusConnection::systemBus(), int reaskMs = 5000);
    ~DBusPresence() override;
    DBusPresence(const DBusPresence&) = delete;
    DBusPresence& operator=(const DBusPresence&) = delete;

    bool screenSaverRunning() override;
    bool sessionLocked() override;
    // logind's Session.Lock, else the screen saver's Lock when logind refuses or
    // is not there; true when a request went out.
    bool requestLock() override;

private:
    // Owned by the application, so it goes while the buses are still there.
    QPointer<DesktopWatch> m_watch;
};

} // namespace platform
