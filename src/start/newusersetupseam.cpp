#include "start/newusersetupseam.h"

#include "kernel/globals.h"
#include "start/welcome.h"

#include <cstdio>

namespace {

std::function<void(bool)>& installedScreen()
{
    static std::function<void(bool)> show;
    return show;
}

} // namespace

void setNewUserSetupScreen(std::function<void(bool modal)> show)
{
    installedScreen() = std::move(show);
}

void showNewUserSetup(bool modal)
{
    // The splash's hand-over waits while the screen stands.
    welcomeScreen().setTimerWelcomeEnabled(false);
    if (installedScreen()) {
        installedScreen()(modal);
        return;
    }
    // No screen to ask on: as if the person cancelled it. Waited for, that ends
    // the run with no screen left; not waited for, gblnNewUserSetupDone stays
    // False and the caller ends the run. A line on standard error says why.
    std::fprintf(stderr, "VESK-OR: no person with the UID \"%s\" on this board; ask the administrator to add you.\n",
                 qUtf8Printable(gRun.gstrUserID));
    if (modal) {
        gRun.gblnNewUserSetupCancelled = true;
    }
}
