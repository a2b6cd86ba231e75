#pragma once
// Who the person is: the login name, or what the command line says.
//
//   (blank)                 the login name is looked up as a UID
//   Ann Lee                 an old-style shortcut: the whole line is a Name
//   -UID:alee -STS:Busy     tokens, acted on at once from left to right
//
// A person not found goes to the New User Setup screen (newusersetupseam.h).

// gstrLoginName, gstrCommandLine (the trimmed gstrGivenCommandLine), then one of the three cases.
void subCheckCommandLine();
void subCommandLineIsBlank();
void subCommandLineIsProbablyLegacy();
void subCommandLineHasParameters();
