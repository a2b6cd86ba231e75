#include "start/welcome.h"

#include "database/upgrade.h"
#include "kernel/globals.h"
#include "platform/identity.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "start/commandline.h"
#include "start/startup.h"

#include <memory>

// --- the stand-in ---------------------------------------------------------------

void WelcomeScreen::unload()
{
    m_unloaded = true;
}

bool WelcomeScreen::isUnloaded() const
{
    return m_unloaded;
}

void WelcomeScreen::setTimerWelcomeEnabled(bool on)
{
    m_timer = on;
}

bool WelcomeScreen::timerWelcomeEnabled() const
{
    return m_timer;
}

void WelcomeScreen::showProgress(const QString& text)
{
    m_progress = text;
}

QString WelcomeScreen::progress() const
{
    return m_progress;
}

namespace {

WelcomeScreen* g_screen = nullptr;
std::unique_ptr<WelcomeScreen> g_standIn;

} // namespace

WelcomeScreen& welcomeScreen()
{
    if (g_screen) {
        return *g_screen;
    }
    if (!g_standIn) {
        g_standIn = std::make_unique<WelcomeScreen>();
    }
    return *g_standIn;
}

void setWelcomeScreen(WelcomeScreen* screen)
{
    g_screen = screen;
}

void resetWelcomeScreen()
{
    g_screen = nullptr;
    g_standIn.reset();
}

// --- Activate ---------------------------------------------------------------------

void subSetApplicationPath(const QString& programFolder)
{
    QString path = programFolder;
    if (!path.startsWith(QLatin1String("\\\\"))) {
        path = fnUNCPathOf(path);
    }
    gRun.gstrApplicationPath = withClosingSeparator(path);
}

void subWelcomeActivate(const QString& programFolder)
{
    platform::DoEvents();
    subGetComputerName();
    // The address the log rows carry, found once with the machine's name.
    gRun.gstrIPAddress = platform::identity().ipAddress();
    subSetApplicationPath(programFolder);
    gRun.gstrHelpFile = gRun.gstrApplicationPath + QStringLiteral("user.chm");
    gRun.gstrReleaseDate = QStringLiteral("2006-07-22");
    gRun.gstrBuildName = QStringLiteral("2006-07D");
    gRun.gstrProgramTitle = QStringLiteral(" VESK-OR Pro ");
    platform::setAppTitle(gRun.gstrProgramTitle);

    welcomeScreen().showProgress(QStringLiteral("Opening the database..."));
    if (!subInitializeLocalDatabase()) {
        // The file was refused and the box said so: nothing more of the start may
        // touch it, and no board comes up for it.
        welcomeScreen().unload();
        platform::End();
    }
    welcomeScreen().showProgress(QStringLiteral("Checking the database structure..."));
    subUpdateDatabaseStructure();
    welcomeScreen().showProgress(QStringLiteral("Identifying the user..."));
    subCheckCommandLine();

    if (!gRun.gblnNewUserSetupCancelled) {
        welcomeScreen().setTimerWelcomeEnabled(false);
        welcomeScreen().setTimerWelcomeEnabled(true);
    }
}
