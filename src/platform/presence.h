#pragma once
// The one gateway for presence sensing: is a screen saver running, is the
// session locked, and asking the desktop to lock. The board asks every second
// and every three seconds, so an answer must cost nothing.

#include <memory>

namespace platform {

class Presence
{
public:
    virtual ~Presence() = default;
    virtual bool screenSaverRunning() = 0;
    virtual bool sessionLocked() = 0;
    // Asks the desktop to lock the session; false when there is nobody to ask.
    virtual bool requestLock() = 0;
};

// nullptr restores the default: no desktop, so never running, never locked,
// and a lock request answered false.
void setPresence(std::unique_ptr<Presence> impl);
Presence& presence();

// Answers what the test set and counts the lock requests; for tests.
class ScriptedPresence : public Presence
{
public:
    bool screenSaverRunning() override;
    bool sessionLocked() override;
    bool requestLock() override;

    bool running = false;
    bool locked = false;
    bool lockResult = true; // what requestLock answers
    int lockRequests = 0;
};

} // namespace platform
