#include "platform/gui/dbuspresence.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <functional>
#include <optional>
#include <vector>

namespace platform {

namespace {

// How long one call may go unanswered before it counts as no answer.
constexpr int kCallTimeoutMs = 2000;

const QString kLogin1 = QStringLiteral("org.freedesktop.login1");
const QString kLogin1Path = QStringLiteral("/org/freedesktop/login1");
const QString kSessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kLockedHint = QStringLiteral("LockedHint");

// What a screen saver's "active" means, desktop by desktop (Debian 12), and
// how it answers the two questions:
//
// | Service, in probe order     | Desktop             | "active" means        | running | locked     |
// |-----------------------------|---------------------|-----------------------|---------|------------|
// | org.gnome.ScreenSaver       | GNOME 43            | lock shield showing   | yes     | LockedHint |
// |                             | Xfce + light-locker | screen blanked        | yes     | no         |
// | org.freedesktop.ScreenSaver | KDE Plasma 5.27     | session locked        | yes     | yes        |
// |                             | GNOME's proxy       | NotSupported: unknown | -       | -          |
// | org.mate.ScreenSaver        | MATE 1.26           | saver, its locker, up | yes     | yes        |
// | org.cinnamon.ScreenSaver    | Cinnamon 5.6        | saver, its locker, up | yes     | yes        |
// | org.xfce.ScreenSaver        | xfce4-screensaver   | saver, its locker, up | yes     | yes        |
//
// The first service in that order with an answer speaks for the desktop:
// light-locker also owns org.freedesktop.ScreenSaver, but answers first under
// GNOME's name, where "active" is only a blank screen. logind's LockedHint
// counts as locked on any desktop; GNOME and KDE set it, the others do not, so
// there their own saver answers for the lock.
struct ScreenSaver
{
    QString service; // also the interface, and the object path with '/' for '.'
    bool activeMeansLocked;
    bool lockTakesMessage;                     // Cinnamon's Lock(s message)
    std::optional<bool> active = std::nullopt; // unknown: not there, NotSupported, no answer yet
    bool asking = false;

    QString path() const
    {
        return QLatin1Char('/') + QString(service).replace(QLatin1Char('.'), QLatin1Char('/'));
    }
};

std::vector<ScreenSaver> knownScreenSavers()
{
    const auto saver = [](const char* service, bool activeMeansLocked, bool lockTakesMessage = false) {
        return ScreenSaver{QString::fromLatin1(service), activeMeansLocked, lockTakesMessage};
    };
    return {saver("org.gnome.ScreenSaver", false), saver("org.freedesktop.ScreenSaver", true),
            saver("org.mate.ScreenSaver", true), saver("org.cinnamon.ScreenSaver", true, true),
            saver("org.xfce.ScreenSaver", true)};
}

QDBusMessage methodCall(const QString& service, const QString& path, const QString& interface, const char* method,
                        const QVariantList& arguments = {})
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, QString::fromLatin1(method));
    call.setArguments(arguments);
    // Asking must not start a desktop service that is not running.
    call.setAutoStartService(false);
    return call;
}

// The session path in an answer of Manager.GetSession (o) or of the user's
// Display property (v holding (so)); empty when there is none.
QString sessionPathIn(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        return {};
    }
    QVariant value = reply.arguments().constFirst();
    if (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = qvariant_cast<QDBusVariant>(value).variant();
    }
    QDBusObjectPath path;
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
        path = qvariant_cast<QDBusObjectPath>(value);
    } else if (value.metaType() == QMetaType::fromType<QDBusArgument>()) {
        const auto display = qvariant_cast<QDBusArgument>(value);
        QString id;
        display.beginStructure();
        display >> id >> path;
        display.endStructure();
    }
    return path.path() == QLatin1String("/") ? QString() : path.path();
}

} // namespace

// The cache behind DBusPresence. Every call is asynchronous; the answers and the
// services' signals update the cache, and the questions only read it.
class DesktopWatch : public QObject
{
    Q_OBJECT

public:
    DesktopWatch(const QDBusConnection& session, const QDBusConnection& system, int reaskMs);
    bool screenSaverRunning();
    bool sessionLocked();
    bool requestLock();

private slots:
    // Connected by signature: QDBusConnection::connect takes no member pointers.
    void onActiveChanged(bool active, const QDBusMessage& message);
    void onPropertiesChanged(const QString& interface, const QVariantMap& changed, const QStringList& invalidated);

private:
    void reaskIfDue();
    void ask(ScreenSaver& saver);
    const ScreenSaver* speaker() const;
    void findSession(int way);
    void useSession(const QString& path);
    void forgetSession();
    void askLockedHint();
    bool lockThroughScreenSaver();
    void callThen(QDBusConnection& bus, const QDBusMessage& call, std::function<void(const QDBusMessage&)> done);

    QDBusConnection m_session;
    QDBusConnection m_system;
    int m_reaskMs;
    QElapsedTimer m_sinceAsked;
    std::vector<ScreenSaver> m_savers = knownScreenSavers();
    QString m_sessionPath;
    bool m_findingSession = false;
    bool m_askingLocked = false;
    bool m_lockedHint = false;
};

DesktopWatch::DesktopWatch(const QDBusConnection& session, const QDBusConnection& system, int reaskMs)
    : QObject(QCoreApplication::instance()), m_session(session), m_system(system), m_reaskMs(reaskMs)
{
    if (m_session.isConnected()) {
        QStringList services;
        for (const ScreenSaver& saver : m_savers) {
            // From any sender: the interface tells the savers apart, and no
            // owner has to be looked up with a blocking call.
            m_session.connect(QString(), saver.path(), saver.service, QStringLiteral("ActiveChanged"), this,
                              SLOT(onActiveChanged(bool, QDBusMessage)));
            services << saver.service;
        }
        // A desktop started after the client, or restarted, is asked at once.
        auto* watcher = new QDBusServiceWatcher(this);
        watcher->setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
        watcher->setConnection(m_session);
        watcher->setWatchedServices(services);
        connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                [this](const QString& service, const QString&, const QString& newOwner) {
                    for (ScreenSaver& saver : m_savers) {
                        if (saver.service == service) {
                            saver.active.reset();
                            if (!newOwner.isEmpty()) {
                                ask(saver);
                            }
                        }
                    }
                });
    }
    if (m_system.isConnected()) {
        auto* watcher = new QDBusServiceWatcher(kLogin1, m_system, QDBusServiceWatcher::WatchForOwnerChange, this);
        connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
                [this](const QString&, const QString&, const QString& newOwner) {
                    forgetSession();
                    if (!newOwner.isEmpty()) {
                        findSession(0);
                    }
                });
    }
    reaskIfDue();
}

bool DesktopWatch::screenSaverRunning()
{
    reaskIfDue();
    const ScreenSaver* saver = speaker();
    return saver && *saver->active;
}

bool DesktopWatch::sessionLocked()
{
    reaskIfDue();
    const ScreenSaver* saver = speaker();
    return m_lockedHint || (saver && saver->activeMeansLocked && *saver->active);
}

bool DesktopWatch::requestLock()
{
    if (m_sessionPath.isEmpty()) {
        return lockThroughScreenSaver();
    }
    callThen(m_system, methodCall(kLogin1, m_sessionPath, kSessionInterface, "Lock"),
             [this](const QDBusMessage& reply) {
                 if (reply.type() == QDBusMessage::ErrorMessage) {
                     lockThroughScreenSaver();
                 }
             });
    return true;
}

void DesktopWatch::onActiveChanged(bool active, const QDBusMessage& message)
{
    for (ScreenSaver& saver : m_savers) {
        if (saver.service == message.interface()) {
            saver.active = active;
        }
    }
}

void DesktopWatch::onPropertiesChanged(const QString& interface, const QVariantMap& changed,
                                       const QStringList& invalidated)
{
    if (interface != kSessionInterface) {
        return;
    }
    if (changed.contains(kLockedHint)) {
        m_lockedHint = changed.value(kLockedHint).toBool();
    } else if (invalidated.contains(kLockedHint)) {
        askLockedHint();
    }
}

// The signals keep the cache current; asking again now and then covers a
// signal missed, without a call for every question.
void DesktopWatch::reaskIfDue()
{
    if (m_sinceAsked.isValid() && m_sinceAsked.elapsed() < m_reaskMs) {
        return;
    }
    m_sinceAsked.start();
    for (ScreenSaver& saver : m_savers) {
        ask(saver);
    }
    if (m_sessionPath.isEmpty()) {
        findSession(0);
    } else {
        askLockedHint();
    }
}

void DesktopWatch::ask(ScreenSaver& saver)
{
    if (saver.asking || !m_session.isConnected()) {
        return;
    }
    saver.asking = true;
    const std::size_t index = &saver - m_savers.data();
    callThen(m_session, methodCall(saver.service, saver.path(), saver.service, "GetActive"),
             [this, index](const QDBusMessage& reply) {
                 ScreenSaver& answered = m_savers[index];
                 answered.asking = false;
                 if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
                     answered.active = reply.arguments().constFirst().toBool();
                 } else {
                     answered.active.reset();
                 }
             });
}

const ScreenSaver* DesktopWatch::speaker() const
{
    for (const ScreenSaver& saver : m_savers) {
        if (saver.active) {
            return &saver;
        }
    }
    return nullptr;
}

// Finds this login's logind session, each way tried when the one before fails:
// 0 GetSession("auto") (the caller's session, else the user's display session),
// 1 GetSession of XDG_SESSION_ID, 2 the user's Display property. The real path
// is taken from the answer: signals come only on it, not on /session/auto.
void DesktopWatch::findSession(int way)
{
    if (!m_system.isConnected() || (way == 0 && m_findingSession)) {
        return;
    }
    const QString sessionId = qEnvironmentVariable("XDG_SESSION_ID");
    if (way == 1 && sessionId.isEmpty()) {
        way = 2;
    }
    if (way > 2) {
        m_findingSession = false;
        return;
    }
    const QString manager = QStringLiteral("org.freedesktop.login1.Manager");
    const QDBusMessage call =
        way == 0   ? methodCall(kLogin1, kLogin1Path, manager, "GetSession", {QStringLiteral("auto")})
        : way == 1 ? methodCall(kLogin1, kLogin1Path, manager, "GetSession", {sessionId})
                   : methodCall(kLogin1, kLogin1Path + QStringLiteral("/user/self"), kProperties, "Get",
                                {QStringLiteral("org.freedesktop.login1.User"), QStringLiteral("Display")});
    m_findingSession = true;
    callThen(m_system, call, [this, way](const QDBusMessage& reply) {
        const QString path = sessionPathIn(reply);
        if (path.isEmpty()) {
            findSession(way + 1);
            return;
        }
        m_findingSession = false;
        useSession(path);
    });
}

void DesktopWatch::useSession(const QString& path)
{
    forgetSession();
    m_sessionPath = path;
    m_system.connect(QString(), path, kProperties, QStringLiteral("PropertiesChanged"), this,
                     SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    askLockedHint();
}

void DesktopWatch::forgetSession()
{
    if (!m_sessionPath.isEmpty()) {
        m_system.disconnect(QString(), m_sessionPath, kProperties, QStringLiteral("PropertiesChanged"), this,
                            SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    }
    m_sessionPath.clear();
    m_lockedHint = false;
}

void DesktopWatch::askLockedHint()
{
    if (m_askingLocked) {
        return;
    }
    m_askingLocked = true;
    callThen(m_system, methodCall(kLogin1, m_sessionPath, kProperties, "Get", {kSessionInterface, kLockedHint}),
             [this, asked = m_sessionPath](const QDBusMessage& reply) {
                 m_askingLocked = false;
                 if (asked == m_sessionPath) {
                     m_lockedHint = reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty() &&
                                    qvariant_cast<QDBusVariant>(reply.arguments().constFirst()).variant().toBool();
                 }
             });
}

bool DesktopWatch::lockThroughScreenSaver()
{
    const ScreenSaver* saver = speaker();
    if (!saver) {
        return false;
    }
    const QVariantList message = saver->lockTakesMessage ? QVariantList{QString()} : QVariantList{};
    return m_session.send(methodCall(saver->service, saver->path(), saver->service, "Lock", message));
}

// Sends call and hands its answer, or its error (NoReply after the timeout), to done.
void DesktopWatch::callThen(QDBusConnection& bus, const QDBusMessage& call,
                            std::function<void(const QDBusMessage&)> done)
{
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, kCallTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        done(watcher->reply());
    });
}

DBusPresence::DBusPresence(const QDBusConnection& sessionBus, const QDBusConnection& systemBus, int reaskMs)
    : m_watch(new DesktopWatch(sessionBus, systemBus, reaskMs))
{
}

DBusPresence::~DBusPresence()
{
    delete m_watch.data();
}

bool DBusPresence::screenSaverRunning()
{
    return m_watch && m_watch->screenSaverRunning();
}

bool DBusPresence::sessionLocked()
{
    return m_watch && m_watch->sessionLocked();
}

bool DBusPresence::requestLock()
{
    return m_watch && m_watch->requestLock();
}

} // namespace platform

#include "dbuspresence.moc"
