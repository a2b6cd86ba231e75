#pragma once
// The one gateway for shell actions (open a URL or mailto:, start a program),
// sounds and help. Tests install a recorder and read what was asked.

#include <QString>
#include <QStringList>
#include <memory>

namespace platform {

class Shell
{
public:
    virtual ~Shell() = default;
    // Opens a URL (http:, file:, mailto:) with the desktop's handler.
    virtual bool openUrl(const QString& url) = 0;
    // Starts a program detached, in a normal window; false when it cannot start.
    virtual bool startProgram(const QString& program, const QStringList& arguments) = 0;
    // Plays a wave file without waiting; false when it cannot be played.
    virtual bool playSound(const QString& waveFile) = 0;
    // Shows the help file at a context number (0: its contents); VB's "{F1}".
    virtual bool showHelp(const QString& helpFile, int context) = 0;
    // VB's Beep: the desktop's short warning sound.
    virtual void beep() = 0;
};

void setShell(std::unique_ptr<Shell> impl); // nullptr: the real one
Shell& shell();

// Records every request and answers `result`; for tests. Given a log file, each
// request is also appended to it as a line, so a test can read what a client
// program it started asked for (the program records instead of acting when
// VESKOR_SHELL_LOG names such a file).
class RecordingShell : public Shell
{
public:
    explicit RecordingShell(QString logFile = {}) : m_logFile(std::move(logFile))
    {
    }
    bool openUrl(const QString& url) override;
    bool startProgram(const QString& program, const QStringList& arguments) override;
    bool playSound(const QString& waveFile) override;
    bool showHelp(const QString& helpFile, int context) override;
    void beep() override;

    QStringList calls;  // "url <u>", "start <program> <args...>", "sound <f>", "help <f> <n>", "beep"
    bool result = true; // what every request answers; false to play a failing desktop

private:
    bool record(const QString& call);
    QString m_logFile;
};

} // namespace platform
