#pragma once
// Where the New User Setup screen (frmNewUserSetup) is shown for a person the
// database does not know yet.
//
// The screen sets gblnNewUserSetupDone when it ends by OK or by adding a person,
// gblnNewUserSetupCancelled when it ends by Cancel. The client installs how the
// screen is shown; without one (the start-up run without widgets), nothing is
// shown and the setup counts as not done, so an unknown person meets the end the
// start-up gives a setup that was not done.

#include <functional>

// modal: wait until the screen closes (the blank command line); otherwise show
// it and return at once (the other two cases).
void showNewUserSetup(bool modal);
// The client installs the screen; an empty function removes it.
void setNewUserSetupScreen(std::function<void(bool modal)> show);
