// Who the person is: the login name or the command line, looked up in a real
// site file, and the -STS: token written at once.
#include "kernel/globals.h"
#include "start/commandline.h"
#include "start/welcome.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QTest>

namespace {

// gstrDefaultUser, gstrUserID, the validity flags, whether the run ends and the
// welcome screen unloads afterwards; Ann Lee's status (she starts "Out").
struct Case
{
    QString commandLine, login, person, userID;
    bool validName, validID, ends, unloadsWelcome;
    QString annStatus;
};

} // namespace

Q_DECLARE_METATYPE(Case)

class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        resetWelcomeScreen();
    }

    void identify_data()
    {
        QTest::addColumn<Case>("c");
        // clang-format off
        QTest::newRow("blank: the login name") << Case{"", "alee", "Ann Lee", "alee", true, true, false, false, "Out"};
        QTest::newRow("blank: no login is Unknown") << Case{"", "", "Guest Desk", "Unknown", true, true, false, false, "Out"};
        QTest::newRow("blank: 63-letter login") << Case{"", QString(63, u'j'), "", QString(63, u'j'), false, false, false, true, "Out"};
        QTest::newRow("blank: 64-letter login is Unknown") << Case{"", QString(64, u'j'), "Guest Desk", "Unknown", true, true, false, false, "Out"};
        QTest::newRow("blank: unknown person") << Case{"", "zed", "", "zed", false, false, false, true, "Out"};
        QTest::newRow("blank: wildcard login matches itself only") << Case{"", "a*", "", "a*", false, false, false, true, "Out"};
        QTest::newRow("legacy name, any case") << Case{"ann LEE", "jo", "Ann Lee", "alee", true, true, false, false, "Out"};
        QTest::newRow("legacy name without UID") << Case{"No Uid", "jo", "No Uid", "jo", true, false, true, false, "Out"};
        QTest::newRow("legacy unknown name") << Case{"Nobody Here", "jo", "Nobody Here", "jo", false, false, true, false, "Out"};
        QTest::newRow("-UID:") << Case{"-UID:alee", "jo", "Ann Lee", "alee", true, true, false, false, "Out"};
        QTest::newRow("-UID: empty is the login") << Case{"-UID:", "alee", "Ann Lee", "alee", true, true, false, false, "Out"};
        QTest::newRow("-UID: unknown") << Case{"-UID:zed", "jo", "", "zed", false, false, true, true, "Out"};
        QTest::newRow("-STS: after -UID:") << Case{"-UID:alee -STS:Busy", "jo", "Ann Lee", "alee", true, true, false, false, "Busy"};
        QTest::newRow("-STS: before -UID: finds nobody") << Case{"-STS:Busy -UID:alee", "jo", "Ann Lee", "alee", true, true, false, false, "Out"};
        QTest::newRow("unknown keys ignored, key in any case") << Case{"-uid:alee -FOO:bar -RunTime:1", "jo", "Ann Lee", "alee", true, true, false, false, "Out"};
        QTest::newRow("no known key: nobody") << Case{"x:y", "alee", "", "", false, false, false, false, "Out"};
        QTest::newRow("one empty token stepped over") << Case{"-UID:alee - -STS:Busy", "jo", "Ann Lee", "alee", true, true, false, false, "Busy"};
        // clang-format on
    }
    void identify()
    {
        QFETCH(Case, c);
        TestGateways gw;
        TempSite site;
        site.person(QStringLiteral("Ann Lee"), QStringLiteral("alee"))
            .person(QStringLiteral("Guest Desk"), QStringLiteral("Unknown"))
            .person(QStringLiteral("No Uid"))
            .status(QStringLiteral("Ann Lee"), QStringLiteral("Out"));
        gRun.gdbDatabase = site.openDb(); // as the start-up leaves it: open, gblnDatabaseClosed False
        gw.identity().login = c.login;
        gRun.gstrGivenCommandLine = c.commandLine;
        gRun.gstrCurrentStatus.clear();

        const auto ended = TestGateways::endCodeOf([] { subCheckCommandLine(); });
        QCOMPARE(ended.has_value(), c.ends);
        QCOMPARE(gRun.gstrDefaultUser, c.person);
        QCOMPARE(gRun.gstrUserID, c.userID);
        QCOMPARE(gRun.gblnValidUserName, c.validName);
        QCOMPARE(gRun.gblnValidUserID, c.validID);
        QCOMPARE(welcomeScreen().isUnloaded(), c.unloadsWelcome);
        QCOMPARE(gRun.gstrCommandLine, c.commandLine.trimmed());
        QCOMPARE(gRun.gstrLoginName, c.login.isEmpty() || c.login.size() >= 64 ? QStringLiteral("Unknown") : c.login);
        // -STS: takes its word wherever it stands, even before anyone is known.
        QCOMPARE(gRun.gstrCurrentStatus,
                 c.commandLine.contains(QStringLiteral("-STS:")) ? QStringLiteral("Busy") : QString());
        gRun.gdbDatabase.reset();
        QCOMPARE(site.value("SELECT Status FROM EmployeeTable WHERE Name = 'Ann Lee'"), c.annStatus);
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
