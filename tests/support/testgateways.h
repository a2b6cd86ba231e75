#pragma once
// Every platform gateway replaced by a fake for the life of one object, and the
// run-wide values back at their start values:
//
//   TestGateways gw;                       // boxes, clock, identity, shell, presence, End
//   gw.boxes().answer(platform::vbYes);
//   gw.clock().advance(60 * 1000);
//   QCOMPARE(TestGateways::endCodeOf([] { subSomethingThatEnds(); }), std::optional<int>(0));
//
// The fakes: scripted message boxes, a clock standing at 2026-11-22 09:30:00 local
// time until moved or slept on, the identity "jo" on "DESK-07" at 10.0.0.5, a shell
// that records, a desk with no screen saver and no lock until told, and an End
// that throws platform::EndOfRun instead of exiting. The default locale is en_US
// while the object lives, so formatted dates do not depend on the machine. The
// destructor puts the real gateways, the locale and the start values back. One
// at a time: do not nest them, and do not install other gateways over these
// while the object lives.

#include "platform/clock.h"
#include "platform/identity.h"
#include "platform/presence.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "scriptedmsgbox.h"

#include <QDateTime>
#include <QLocale>
#include <functional>
#include <optional>

// End for tests: records the call and throws platform::EndOfRun(exitCode). The
// atEnd work does not run; a test that wants it calls platform::runAtEnd().
class ThrowingProcessControl : public platform::ProcessControl
{
public:
    [[noreturn]] void end(int exitCode) override;
};

class TestGateways
{
public:
    static QDateTime defaultStart();

    explicit TestGateways(const QDateTime& start = defaultStart());
    ~TestGateways();
    TestGateways(const TestGateways&) = delete;
    TestGateways& operator=(const TestGateways&) = delete;

    ScriptedMessageBoxes& boxes();
    platform::FakeClock& clock();
    platform::FixedIdentity& identity();
    platform::RecordingShell& shell();
    platform::ScriptedPresence& presence();

    // Runs fn: the exit code when it ended the run, nothing when it returned.
    static std::optional<int> endCodeOf(const std::function<void()>& fn);

private:
    ScriptedMessageBoxes* m_boxes;
    platform::FakeClock* m_clock;
    platform::FixedIdentity* m_identity;
    platform::RecordingShell* m_shell;
    platform::ScriptedPresence* m_presence;
    QLocale m_savedLocale;
};
