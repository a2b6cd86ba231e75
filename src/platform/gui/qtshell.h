#pragma once
// The shell of the client: the desktop's handlers through QDesktopServices,
// programs started detached, and wave files played through QSoundEffect.

#include "platform/shell.h"

#include <QHash>
#include <QPointer>

class QSoundEffect;

namespace platform {

class QtShell : public Shell
{
public:
    bool openUrl(const QString& url) override;
    bool startProgram(const QString& program, const QStringList& arguments) override;
    // False when the file is missing or the machine has no audio output.
    bool playSound(const QString& waveFile) override;
    // Opens the help file with the desktop's viewer, at its start: a viewer on
    // this desktop has no context numbers.
    bool showHelp(const QString& helpFile, int context) override;
    void beep() override;

private:
    // One player a file, owned by the application so it goes before the audio
    // system does.
    QHash<QString, QPointer<QSoundEffect>> m_effects;
};

} // namespace platform
