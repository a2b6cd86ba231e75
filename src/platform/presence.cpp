#include "platform/presence.h"

#include "platform/installed.h"

namespace platform {

namespace {

// Without a desktop to ask: nobody is ever away.
class NoDesktopPresence : public Presence
{
public:
    bool screenSaverRunning() override
    {
        return false;
    }
    bool sessionLocked() override
    {
        return false;
    }
    bool requestLock() override
    {
        return false;
    }
};

} // namespace

void setPresence(std::unique_ptr<Presence> impl)
{
    install(std::move(impl));
}

Presence& presence()
{
    return installedOr<Presence>([] { return std::make_unique<NoDesktopPresence>(); });
}

bool ScriptedPresence::screenSaverRunning()
{
    return running;
}

bool ScriptedPresence::sessionLocked()
{
    return locked;
}

bool ScriptedPresence::requestLock()
{
    ++lockRequests;
    return lockResult;
}

} // namespace platform
