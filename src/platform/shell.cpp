#include "platform/shell.h"

#include "platform/installed.h"

#include <QProcess>
#include <cstdio>

namespace platform {

namespace {

// Without a screen library: the desktop's handler through xdg-open, no sound.
class DesktopShell : public Shell
{
public:
    bool openUrl(const QString& url) override
    {
        return QProcess::startDetached(QStringLiteral("xdg-open"), {url});
    }
    bool startProgram(const QString& program, const QStringList& arguments) override
    {
        return QProcess::startDetached(program, arguments);
    }
    bool playSound(const QString&) override
    {
        return false;
    }
    // The help file opens at its start: a desktop viewer has no context numbers.
    bool showHelp(const QString& helpFile, int) override
    {
        return QProcess::startDetached(QStringLiteral("xdg-open"), {helpFile});
    }
    // The terminal's bell, on standard error.
    void beep() override
    {
        std::fputc('\a', stderr);
        std::fflush(stderr);
    }
};

} // namespace

void setShell(std::unique_ptr<Shell> impl)
{
    install(std::move(impl));
}

Shell& shell()
{
    return installedOr<Shell>([] { return std::make_unique<DesktopShell>(); });
}

bool RecordingShell::openUrl(const QString& url)
{
    calls.append(QStringLiteral("url ") + url);
    return result;
}

bool RecordingShell::startProgram(const QString& program, const QStringList& arguments)
{
    calls.append((QStringList{QStringLiteral("start"), program} + arguments).join(QLatin1Char(' ')));
    return result;
}

bool RecordingShell::playSound(const QString& waveFile)
{
    calls.append(QStringLiteral("sound ") + waveFile);
    return result;
}

bool RecordingShell::showHelp(const QString& helpFile, int context)
{
    calls.append(QStringLiteral("help %1 %2").arg(helpFile).arg(context));
    return result;
}

void RecordingShell::beep()
{
    calls.append(QStringLiteral("beep"));
}

} // namespace platform
