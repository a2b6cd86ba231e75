#pragma once
// A dbus-daemon of the test's own while the object lives: only the fakes a test
// puts up answer there. Header only: the support library does not link Qt D-Bus.

#include <QDBusConnection>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

// A new connection to the bus at address, under a name of its own.
inline QDBusConnection privateConnection(const QString& address)
{
    static int count = 0;
    return QDBusConnection::connectToBus(address, QStringLiteral("tst-%1").arg(++count));
}

class PrivateBus
{
public:
    PrivateBus()
    {
        QFile config(m_dir.filePath(QStringLiteral("bus.conf")));
        if (!config.open(QIODevice::WriteOnly)) {
            return;
        }
        config.write("<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth>"
                     "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                     "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>");
        config.close();
        m_daemon.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=") + config.fileName(),
                                                       QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        if (m_daemon.waitForReadyRead(5000)) {
            m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        }
    }
    ~PrivateBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    QString address() const // empty when the daemon did not start
    {
        return m_address;
    }

private:
    QTemporaryDir m_dir;
    QProcess m_daemon;
    QString m_address;
};
