#include "platform/gui/qtshell.h"

#include <QApplication>
#include <QAudioDevice>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMediaDevices>
#include <QProcess>
#include <QSoundEffect>
#include <QUrl>

namespace platform {

namespace {

// A path opens as a file; anything else (http:, mailto:, file:) as the URL it is.
QUrl urlOf(const QString& text)
{
    if (text.startsWith(QLatin1Char('/'))) {
        return QUrl::fromLocalFile(text);
    }
    return QUrl(text, QUrl::TolerantMode);
}

} // namespace

bool QtShell::openUrl(const QString& url)
{
    return QDesktopServices::openUrl(urlOf(url));
}

bool QtShell::startProgram(const QString& program, const QStringList& arguments)
{
    return QProcess::startDetached(program, arguments);
}

bool QtShell::playSound(const QString& waveFile)
{
    // Without an output device QSoundEffect neither fails nor plays; say so here.
    if (!QFileInfo(waveFile).isFile() || QMediaDevices::audioOutputs().isEmpty()) {
        return false;
    }
    QPointer<QSoundEffect>& effect = m_effects[waveFile];
    if (!effect) {
        effect = new QSoundEffect(QCoreApplication::instance());
        effect->setSource(QUrl::fromLocalFile(QFileInfo(waveFile).absoluteFilePath()));
    }
    effect->play();
    return true;
}

bool QtShell::showHelp(const QString& helpFile, int)
{
    if (!QFileInfo(helpFile).isFile()) {
        return false;
    }
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(helpFile).absoluteFilePath()));
}

void QtShell::beep()
{
    QApplication::beep();
}

} // namespace platform
