#include "start/newusersetupseam.h"

// SEAM: the New User Setup screen replaces this body. Until then nothing is shown
// and gblnNewUserSetupDone / gblnNewUserSetupCancelled keep their values.
void showNewUserSetup(bool /*modal*/)
{
}
