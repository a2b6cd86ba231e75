#include "platform/identity.h"

#include "platform/installed.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QSysInfo>
#include <pwd.h>
#include <unistd.h>

namespace platform {

namespace {

// The computer name fills a 32-character buffer, so at most 31 characters survive.
constexpr qsizetype computerNameLength = 31;

class SystemIdentity : public Identity
{
public:
    QString loginName() override
    {
        // The account the process runs as; $USER only when the account has no entry.
        if (const passwd* account = getpwuid(geteuid()); account && account->pw_name) {
            return QString::fromLocal8Bit(account->pw_name);
        }
        return qEnvironmentVariable("USER");
    }

    QString computerName() override
    {
        return QSysInfo::machineHostName().left(computerNameLength);
    }

    QString ipAddress() override
    {
        const auto interfaces = QNetworkInterface::allInterfaces();
        for (const QNetworkInterface& nic : interfaces) {
            const auto flags = nic.flags();
            if (!flags.testFlag(QNetworkInterface::IsUp) || flags.testFlag(QNetworkInterface::IsLoopBack)) {
                continue;
            }
            for (const QNetworkAddressEntry& entry : nic.addressEntries()) {
                const QHostAddress address = entry.ip();
                if (address.protocol() == QAbstractSocket::IPv4Protocol && !address.isLoopback()) {
                    return address.toString();
                }
            }
        }
        return QStringLiteral("127.0.0.1");
    }

    // Newer than any system the program knows by number.
    int osMajorVersion() override
    {
        return 10;
    }
};

} // namespace

void setIdentity(std::unique_ptr<Identity> impl)
{
    install(std::move(impl));
}

Identity& identity()
{
    return installedOr<Identity>([] { return std::make_unique<SystemIdentity>(); });
}

FixedIdentity::FixedIdentity(QString login, QString computer, QString ip)
    : login(std::move(login)), computer(std::move(computer)), ip(std::move(ip))
{
}

QString FixedIdentity::loginName()
{
    return login;
}

QString FixedIdentity::computerName()
{
    return computer;
}

QString FixedIdentity::ipAddress()
{
    return ip;
}

int FixedIdentity::osMajorVersion()
{
    return osMajor;
}

} // namespace platform
