#include "start/newusersetupseam.h"

#include "kernel/globals.h"

#include <cstdio>

// SEAM: the New User Setup screen replaces this body. Until it exists, the screen
// acts as if the person cancelled it: shown and waited for (modal), that ends the
// run with no screen left; shown without waiting, gblnNewUserSetupDone stays False
// and the caller ends the run. A line on standard error says why.
void showNewUserSetup(bool modal)
{
    std::fprintf(stderr, "VESK-OR: no person with the UID \"%s\" on this board; ask the administrator to add you.\n",
                 qUtf8Printable(gRun.gstrUserID));
    if (modal) {
        gRun.gblnNewUserSetupCancelled = true;
    }
}
