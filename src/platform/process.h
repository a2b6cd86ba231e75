#pragma once
// The one gateway for the end of the process (VB's End). The real one runs the
// work registered with atEnd and exits through exit(); the test one throws EndOfRun so a test can see that
// the run would have ended, and what follows End never runs.

#include <functional>
#include <memory>
#include <stdexcept>

namespace platform {

struct EndOfRun : std::runtime_error
{
    explicit EndOfRun(int code) : std::runtime_error("End of run"), exitCode(code)
    {
    }
    int exitCode;
};

class ProcessControl
{
public:
    virtual ~ProcessControl() = default;
    [[noreturn]] virtual void end(int exitCode) = 0;
};

void setProcessControl(std::unique_ptr<ProcessControl> impl); // nullptr: the real one
ProcessControl& processControl();

// Work to do before the process ends (close the database, remove the tray icon).
// Runs once, in reverse order of registration, from the real End.
void atEnd(std::function<void()> fn);
void clearAtEnd();
// Runs the registered work, newest first, and forgets it, so each piece runs at
// most once even when one of them calls End again. The real End calls it; a test
// may call it to see what an End would have closed.
void runAtEnd();

// VB's End.
[[noreturn]] void End(int exitCode = 0);

// VB's DoEvents: lets pending events and timers run.
void DoEvents();
// DoEvents without the user's input: timers and repaints run, but a second click
// or key press waits until the work under way is done.
void DoEventsExceptInput();

} // namespace platform
