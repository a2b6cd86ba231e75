#pragma once
// SEAM: where the New User Setup screen (frmNewUserSetup) is shown for a person
// the database does not know yet.
//
// The screen sets gblnNewUserSetupDone when it ends by OK or by adding a person,
// gblnNewUserSetupCancelled when it ends by Cancel. Until that screen is built,
// this shows nothing and leaves both flags as they are, so that an unknown person
// meets the end the start-up code gives a setup that was not done.

// modal: wait until the screen closes (the blank command line); otherwise show
// it and return at once (the other two cases).
void showNewUserSetup(bool modal);
