// Presence read over D-Bus, against fake desktops on two private buses started
// here (one plays the session bus, the other the system bus with logind). The
// fakes answer in this thread: the client never waits on a reply, so they can.

#include "platform/gui/dbuspresence.h"
#include "privatebus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QTest>
#include <memory>
#include <optional>

using platform::DBusPresence;

namespace {

const QString kGnome = QStringLiteral("org.gnome.ScreenSaver");
const QString kFreedesktop = QStringLiteral("org.freedesktop.ScreenSaver");
const QString kLogin1 = QStringLiteral("org.freedesktop.login1");
const QString kSession = QStringLiteral("org.freedesktop.login1.Session");
const QString kSessionPath = QStringLiteral("/org/freedesktop/login1/session/_32");
constexpr int kNever = 600000; // no re-ask while a test runs: only signals and watchers count

// Desktop services on a connection of their own, every path answered by this one
// object. Screen savers answer GetActive with `active`; logind hands out
// kSessionPath and reads `active` as LockedHint. Every call is recorded.
class FakeDesktop : public QDBusVirtualObject
{
public:
    FakeDesktop(const QString& address, const QStringList& services)
        : m_bus(privateConnection(address)), m_services(services)
    {
        m_bus.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
        for (const QString& service : services) {
            m_bus.registerService(service);
        }
    }
    ~FakeDesktop() override
    {
        QDBusConnection::disconnectFromBus(m_bus.name());
    }
    QString introspect(const QString&) const override
    {
        return {};
    }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override
    {
        const QStringList arguments = QVariant(call.arguments()).toStringList();
        const QString quoted = arguments.isEmpty() ? QString() : '"' + arguments.join("\",\"") + '"';
        calls << call.interface() + QLatin1Char('.') + call.member() + '(' + quoted + ')';
        const QString member = call.member();
        if (silent) {
            return true; // never answers: the caller's call times out
        }
        if (call.interface() == notSupported || (member == QLatin1String("Lock") && refuseLock) ||
            (member == QLatin1String("GetSession") && call.arguments().value(0) != sessionId)) {
            bus.send(call.createErrorReply(QDBusError::NotSupported, QStringLiteral("not here")));
        } else if (member == QLatin1String("GetSession")) {
            bus.send(call.createReply(QVariant::fromValue(QDBusObjectPath(kSessionPath))));
        } else if (member == QLatin1String("Get")) {
            bus.send(call.createReply(QVariant::fromValue(QDBusVariant(active))));
        } else {
            bus.send(call.createReply(member == QLatin1String("GetActive") ? QVariantList{active} : QVariantList{}));
        }
        return true;
    }
    // The change signal, leaving the answer to questions as it was.
    void signalActive(bool value)
    {
        for (const QString& service : m_services) {
            const bool login = service == kLogin1;
            QDBusMessage change =
                login ? QDBusMessage::createSignal(kSessionPath, "org.freedesktop.DBus.Properties", "PropertiesChanged")
                      : QDBusMessage::createSignal('/' + QString(service).replace('.', '/'), service, "ActiveChanged");
            change.setArguments(login ? QVariantList{kSession, QVariantMap{{"LockedHint", value}}, QStringList()}
                                      : QVariantList{value});
            m_bus.send(change);
        }
    }
    QStringList callsOf(const QString& member) const
    {
        return calls.filter(QLatin1Char('.') + member + QLatin1Char('('));
    }

    bool active = true;
    bool silent = false;
    bool refuseLock = false;
    QString notSupported;                       // the interface that answers NotSupported (GNOME's proxy)
    QString sessionId = QStringLiteral("auto"); // the only GetSession argument logind knows
    QStringList calls;                          // "interface.Member("arg",...)"

private:
    QDBusConnection m_bus;
    QStringList m_services;
};

} // namespace

class TestPresence : public QObject
{
    Q_OBJECT

    PrivateBus m_sessionBus, m_systemBus;
    const QString m_session = m_sessionBus.address(), m_system = m_systemBus.address();

    std::unique_ptr<DBusPresence> presenceOn(int reaskMs = kNever)
    {
        return std::make_unique<DBusPresence>(privateConnection(m_session), privateConnection(m_system), reaskMs);
    }

private slots:
    void initTestCase()
    {
        if (m_session.isEmpty() || m_system.isEmpty()) {
            QSKIP("dbus-daemon cannot start here");
        }
    }

    void desktops_data()
    {
        QTest::addColumn<QStringList>("services"); // on the session bus
        QTest::addColumn<QString>("notSupported");
        QTest::addColumn<QString>("sessionId"); // the one GetSession argument logind answers; none: no logind
        QTest::addColumn<bool>("refuseLock");   // by logind
        QTest::addColumn<int>("state");         // while active: 1 the saver running, 2 the session locked
        QTest::addColumn<QStringList>("lockCalls");
        const QString mate = QStringLiteral("org.mate.ScreenSaver");
        const QString cinnamon = QStringLiteral("org.cinnamon.ScreenSaver");
        const QString xfce = QStringLiteral("org.xfce.ScreenSaver");
        const auto row = [](const char* name, const QStringList& services, const QString& notSupported,
                            const QString& sessionId, bool refuseLock, int state, const QStringList& lockCalls) {
            QTest::newRow(name) << services << notSupported << sessionId << refuseLock << state << lockCalls;
        };
        const QString logindLock = kSession + ".Lock()";
        row("GNOME, its proxy not supporting", {kGnome, kFreedesktop}, kFreedesktop, {}, false, 1,
            {kGnome + ".Lock()"});
        row("Xfce light-locker: blanked", {kGnome, kFreedesktop}, {}, {}, false, 1, {kGnome + ".Lock()"});
        row("KDE: locked", {kFreedesktop}, {}, {}, false, 3, {kFreedesktop + ".Lock()"});
        row("MATE", {mate}, {}, {}, false, 3, {mate + ".Lock()"});
        row("Cinnamon: Lock takes a message", {cinnamon}, {}, {}, false, 3, {cinnamon + ".Lock(\"\")"});
        row("xfce4-screensaver", {xfce}, {}, {}, false, 3, {xfce + ".Lock()"});
        row("logind, auto: it locks", {}, {}, "auto", false, 2, {logindLock});
        row("logind, XDG_SESSION_ID: it refuses, the saver locks", {}, {}, "c7", true, 2,
            {logindLock, kGnome + ".Lock()"});
    }

    // The first answer, then the cache following ActiveChanged or PropertiesChanged
    // alone, then a lock request going to logind first, else to the saver. Beside
    // logind stands an idle GNOME saver.
    void desktops()
    {
        QFETCH(QStringList, services);
        QFETCH(QString, notSupported);
        QFETCH(QString, sessionId);
        QFETCH(bool, refuseLock);
        QFETCH(int, state);
        QFETCH(QStringList, lockCalls);
        qputenv("XDG_SESSION_ID", "c7");
        FakeDesktop saver(m_session, sessionId.isEmpty() ? services : QStringList{kGnome});
        saver.notSupported = notSupported;
        saver.active = sessionId.isEmpty();
        std::optional<FakeDesktop> login1;
        if (!sessionId.isEmpty()) {
            login1.emplace(m_system, QStringList{kLogin1});
            login1->sessionId = sessionId;
            login1->refuseLock = refuseLock;
        }
        FakeDesktop& signaller = login1 ? *login1 : saver;
        auto presence = presenceOn();
        const auto now = [&] {
            return int(presence->screenSaverRunning()) + 2 * int(presence->sessionLocked());
        };
        QTRY_COMPARE(now(), state);
        signaller.signalActive(false);
        QTRY_COMPARE(now(), 0);
        signaller.signalActive(true);
        QTRY_COMPARE(now(), state);
        QVERIFY(presence->requestLock());
        QTRY_COMPARE((login1 ? login1->callsOf("Lock") : QStringList()) + saver.callsOf("Lock"), lockCalls);
        qunsetenv("XDG_SESSION_ID");
    }

    void answersAtOnceWithoutADesktop_data()
    {
        QTest::addColumn<bool>("buses");
        QTest::addColumn<bool>("silentDesktop"); // services there that never answer
        QTest::newRow("no bus") << false << false;
        QTest::newRow("empty buses") << true << false;
        QTest::newRow("services that never answer") << true << true;
    }

    // Asked as often as the board asks, with the desktop asked on every question:
    // the answers cost nothing, read "not running, not locked", and no lock request
    // goes out with nobody to take it.
    void answersAtOnceWithoutADesktop()
    {
        QFETCH(bool, buses);
        QFETCH(bool, silentDesktop);
        std::unique_ptr<FakeDesktop> saver, login1;
        if (silentDesktop) {
            saver = std::make_unique<FakeDesktop>(m_session, QStringList{kGnome, kFreedesktop});
            login1 = std::make_unique<FakeDesktop>(m_system, QStringList{kLogin1});
            saver->silent = login1->silent = true;
        }
        QElapsedTimer took;
        took.start();
        DBusPresence presence(buses ? privateConnection(m_session) : QDBusConnection(QStringLiteral("none")),
                              buses ? privateConnection(m_system) : QDBusConnection(QStringLiteral("none")), 0);
        for (int i = 0; i < 1000; ++i) {
            QVERIFY(!presence.screenSaverRunning());
            QVERIFY(!presence.sessionLocked());
        }
        QVERIFY2(took.elapsed() < 500, qPrintable(QString::number(took.elapsed())));
        QTest::qWait(300);
        QVERIFY(!presence.screenSaverRunning());
        QVERIFY(!presence.sessionLocked());
        QVERIFY(!presence.requestLock());
        if (saver) { // one question at a time, however often the board asks
            QCOMPARE(saver->callsOf("GetActive").size(), 2);
            QCOMPARE(login1->callsOf("GetSession").size(), 1);
        }
    }

    // A desktop that starts after the client is taken up, and one that leaves
    // is forgotten, with no re-asking to find them.
    void desktopStartingLater()
    {
        auto presence = presenceOn();
        QTest::qWait(100);
        auto saver = std::make_unique<FakeDesktop>(m_session, QStringList{kFreedesktop});
        QTRY_VERIFY(presence->screenSaverRunning());
        saver.reset();
        QTRY_VERIFY(!presence->screenSaverRunning());
        QVERIFY(!presence->sessionLocked());
        FakeDesktop login1(m_system, {kLogin1});
        QTRY_VERIFY(presence->sessionLocked());
    }

    // A changed answer with no signal is found by asking again after the
    // interval, and not before.
    void asksAgainAfterTheInterval()
    {
        FakeDesktop saver(m_session, {kGnome});
        saver.active = false;
        auto presence = presenceOn(400);
        QTRY_COMPARE(saver.callsOf("GetActive").size(), 1);
        saver.active = true;
        QElapsedTimer since;
        since.start();
        while (since.elapsed() < 200) {
            QVERIFY(!presence->screenSaverRunning());
            QTest::qWait(10);
        }
        QCOMPARE(saver.callsOf("GetActive").size(), 1);
        QTRY_VERIFY(presence->screenSaverRunning());
        QCOMPARE(saver.callsOf("GetActive").size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestPresence)
#include "tst_presence.moc"
