#pragma once
// The one gateway for who and where this client is: the login name, the computer
// name and the IP address.

#include <QString>
#include <memory>

namespace platform {

class Identity
{
public:
    virtual ~Identity() = default;
    virtual QString loginName() = 0;    // "" when unknown
    virtual QString computerName() = 0; // the host name
    virtual QString ipAddress() = 0;    // first non-loopback IPv4, else "127.0.0.1"
    virtual int osMajorVersion() = 0;   // what GetVersionEx's dwMajorVersion stood for
};

void setIdentity(std::unique_ptr<Identity> impl); // nullptr: the real one
Identity& identity();

// A fixed identity for tests.
class FixedIdentity : public Identity
{
public:
    FixedIdentity(QString login, QString computer, QString ip = QStringLiteral("10.0.0.5"));
    QString loginName() override;
    QString computerName() override;
    QString ipAddress() override;
    int osMajorVersion() override;

    QString login;
    QString computer;
    QString ip;
    int osMajor = 10;
};

} // namespace platform
