#include "platform/shell.h"

#include "platform/installed.h"

#include <QFile>
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
    return record(QStringLiteral("url ") + url);
}

bool RecordingShell::startProgram(const QString& program, const QStringList& arguments)
{
    return record((QStringList{QStringLiteral("start"), program} + arguments).join(QLatin1Char(' ')));
}

bool RecordingShell::playSound(const QString& waveFile)
{
    return record(QStringLiteral("sound ") + waveFile);
}

bool RecordingShell::showHelp(const QString& helpFile, int context)
{
    return record(QStringLiteral("help %1 %2").arg(helpFile).arg(context));
}

bool RecordingShell::record(const QString& call)
{
    calls.append(call);
    if (!m_logFile.isEmpty()) {
        QFile log(m_logFile);
        if (log.open(QIODevice::Append | QIODevice::Text)) {
            log.write(call.toUtf8() + '\n');
        }
    }
    return result;
}

void RecordingShell::beep()
{
    record(QStringLiteral("beep"));
}

} // namespace platform
