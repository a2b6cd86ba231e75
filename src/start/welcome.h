#pragma once
// The splash screen frmWelcome as the start-up logic sees it, and its Activate:
// the way from the program's folder to a known person, before frmMain takes over.
//
// The client's frmWelcome implements WelcomeScreen and registers itself; until
// then welcomeScreen() is a stand-in that remembers what was asked of it.

#include <QString>

class WelcomeScreen
{
public:
    virtual ~WelcomeScreen() = default;

    // Unload frmWelcome. Code after it goes on running, as in VB; TimerWelcome
    // switched on afterwards brings the screen back for its tick.
    virtual void unload();
    virtual bool isUnloaded() const;
    // TimerWelcome: 2000 ms, off until Activate's last step. On = switched off
    // and on again, which restarts its count.
    virtual void setTimerWelcomeEnabled(bool on);
    virtual bool timerWelcomeEnabled() const;
    // The splash's progress line.
    virtual void showProgress(const QString& text);
    virtual QString progress() const;

private:
    bool m_unloaded = false;
    bool m_timer = false;
    QString m_progress;
};

// The splash in use: the registered one, else the stand-in.
WelcomeScreen& welcomeScreen();
void setWelcomeScreen(WelcomeScreen* screen);
// Tests: forget the registered screen and clear the stand-in.
void resetWelcomeScreen();

// frmWelcome Activate: the program's folder, the release values, the database
// (subInitializeLocalDatabase), its structure, the person (subCheckCommandLine),
// then TimerWelcome restarted unless the new person's setup was cancelled. A
// refused database file ends the run after its box.
// programFolder is the folder the program was started from.
void subWelcomeActivate(const QString& programFolder);

// gstrApplicationPath := the folder, in its UNC form when it
// lies on a network mount, with its closing separator.
void subSetApplicationPath(const QString& programFolder);
