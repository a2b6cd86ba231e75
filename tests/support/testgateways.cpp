#include "testgateways.h"

#include "kernel/globals.h"
#include "kernel/mainscreen.h"

namespace {

// Hands the gateway its fake and keeps a pointer for the test's accessors.
template <class T, class Setter> T* install(std::unique_ptr<T> fake, Setter set)
{
    T* raw = fake.get();
    set(std::move(fake));
    return raw;
}

} // namespace

void ThrowingProcessControl::end(int exitCode)
{
    throw platform::EndOfRun(exitCode);
}

QDateTime TestGateways::defaultStart()
{
    return QDateTime(QDate(2026, 11, 22), QTime(9, 30, 0));
}

TestGateways::TestGateways(const QDateTime& start) : m_savedLocale(QLocale())
{
    resetRunWide();
    resetMainScreen();
    platform::clearAtEnd();
    platform::setAppTitle(QString());
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    m_boxes =
        install(std::make_unique<ScriptedMessageBoxes>(), [](auto p) { platform::setMessageBoxes(std::move(p)); });
    m_clock = install(std::make_unique<platform::FakeClock>(start), [](auto p) { platform::setClock(std::move(p)); });
    m_identity = install(std::make_unique<platform::FixedIdentity>("jo", "DESK-07", "10.0.0.5"),
                         [](auto p) { platform::setIdentity(std::move(p)); });
    m_shell = install(std::make_unique<platform::RecordingShell>(), [](auto p) { platform::setShell(std::move(p)); });
    m_presence =
        install(std::make_unique<platform::ScriptedPresence>(), [](auto p) { platform::setPresence(std::move(p)); });
    platform::setProcessControl(std::make_unique<ThrowingProcessControl>());
}

TestGateways::~TestGateways()
{
    platform::setMessageBoxes(nullptr);
    platform::setClock(nullptr);
    platform::setIdentity(nullptr);
    platform::setShell(nullptr);
    platform::setPresence(nullptr);
    platform::setProcessControl(nullptr);
    platform::clearAtEnd();
    platform::setAppTitle(QString());
    resetRunWide();
    resetMainScreen();
    QLocale::setDefault(m_savedLocale);
}

ScriptedMessageBoxes& TestGateways::boxes()
{
    return *m_boxes;
}

platform::FakeClock& TestGateways::clock()
{
    return *m_clock;
}

platform::FixedIdentity& TestGateways::identity()
{
    return *m_identity;
}

platform::RecordingShell& TestGateways::shell()
{
    return *m_shell;
}

platform::ScriptedPresence& TestGateways::presence()
{
    return *m_presence;
}

std::optional<int> TestGateways::endCodeOf(const std::function<void()>& fn)
{
    try {
        fn();
    } catch (const platform::EndOfRun& end) {
        return end.exitCode;
    }
    return std::nullopt;
}
