#pragma once
// The client program run for real: copied beside a folder's veskor.ini (as a site
// installs it), started offscreen with its boxes answered from answers.txt and each
// one logged to boxes.log as "title<TAB>flags<TAB>text", so no box waits for a
// person, and its requests to the desktop logged to shell.log. Killed, if still running, when the object goes. Header
// only: the test names the program it built in VESKOR_USER_BINARY.

#include "ondisk.h"

#include <QDir>
#include <QFile>
#include <QProcess>

class RealClient
{
public:
    // runtime: the account's private folder, where the board's socket and lock file lie.
    RealClient(const QString& folder, const QStringList& arguments, const QByteArray& answers = {},
               const QString& runtime = {})
        : m_folder(folder)
    {
        const QString program = QDir(folder).filePath("user");
        if (!QFile::exists(program))
            QFile::copy(QStringLiteral(VESKOR_USER_BINARY), program);
        writeFile(QDir(folder).filePath("answers.txt"), answers);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("VESKOR_MSGBOX_ANSWERS", QDir(folder).filePath("answers.txt"));
        env.insert("VESKOR_MSGBOX_LOG", QDir(folder).filePath("boxes.log"));
        env.insert("VESKOR_SHELL_LOG", QDir(folder).filePath("shell.log"));
        if (!runtime.isEmpty())
            env.insert("XDG_RUNTIME_DIR", runtime);
        process.setProcessEnvironment(env);
        process.setWorkingDirectory(folder);
        process.start(program, arguments);
    }
    RealClient(const RealClient&) = delete;
    RealClient& operator=(const RealClient&) = delete;
    ~RealClient()
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished(5000);
        }
    }
    // The boxes the client showed, as logged.
    QByteArray boxesShown() const
    {
        return readFile(QDir(m_folder).filePath("boxes.log"));
    }
    // The URLs, programs, sounds and help the client asked the desktop for, as logged.
    QByteArray shellRequests() const
    {
        return readFile(QDir(m_folder).filePath("shell.log"));
    }
    // Waits for the run's end: true when it ended normally, with code 0.
    bool finishedCleanly(int ms = 20000)
    {
        return process.waitForFinished(ms) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    QProcess process;

private:
    QString m_folder;
};
