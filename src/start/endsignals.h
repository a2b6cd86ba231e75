#pragma once
// The ends of a run that come from outside: SIGTERM and SIGINT (the task manager,
// kill, Ctrl+C), SIGHUP (the terminal or the session going away) and the desktop
// session's own end (the person logs out). Each is turned into one call on the
// event loop, so that the board ends in its ordinary way: the person is marked
// inactive and, with AutoLogOut, set Out.
//
// A signal handler may do next to nothing, so it only writes the signal's number
// into one end of a socket pair; a QSocketNotifier on the other end brings it to
// the event loop.

#include <QObject>

class QGuiApplication;
class QSessionManager;
class QSocketNotifier;

class EndSignals : public QObject
{
    Q_OBJECT

public:
    enum Reason
    {
        Terminated,    // SIGTERM or SIGINT: as the task manager ends a program
        SessionEnding, // SIGHUP, or the desktop session ends: as Windows ends a program at log off
    };
    Q_ENUM(Reason)

    // Installs the handlers for the life of the object; one object at a time.
    explicit EndSignals(QObject* parent = nullptr);
    ~EndSignals() override;

    // Also answers the end of the desktop session.
    void watchSession(QGuiApplication& app);

signals:
    // Raised once per run; a second signal while the run ends ends it at once.
    void endRequested(EndSignals::Reason reason);

private:
    void signalArrived();
    void sessionEnding(QSessionManager& manager);
    void request(Reason reason);

    QSocketNotifier* m_notifier = nullptr;
    bool m_requested = false;
};
