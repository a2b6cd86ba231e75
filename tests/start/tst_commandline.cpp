// Who the person is: the login name or the command line, looked up in a real
// site file, and the -STS: token written at once.
#include "database/site.h"
#include "kernel/globals.h"
#include "start/commandline.h"
#include "start/welcome.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QTest>

namespace {

QString statusOf(const TempSite& site, const QString& name)
{
    const database::Board board = database::readBoard(*site.openDb());
    for (const QStringList& row : board.rows) {
        if (row.value(0) == name) {
            return row.value(1);
        }
    }
    return QStringLiteral("(no row)");
}

} // namespace

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
        QTest::addColumn<QString>("commandLine");
        QTest::addColumn<QString>("login");
        QTest::addColumn<QString>("person"); // gstrDefaultUser afterwards
        QTest::addColumn<QString>("userID"); // gstrUserID afterwards
        QTest::addColumn<bool>("validName");
        QTest::addColumn<bool>("validID");
        QTest::addColumn<bool>("ends");
        QTest::addColumn<bool>("unloadsWelcome");
        QTest::addColumn<QString>("annStatus"); // Ann Lee's status afterwards (she starts "Out")

        // clang-format off
        QTest::newRow("blank: the login name") << "" << "alee" << "Ann Lee" << "alee" << true << true << false << false << "Out";
        QTest::newRow("blank: no login is Unknown") << "" << "" << "Guest Desk" << "Unknown" << true << true << false << false << "Out";
        QTest::newRow("blank: 63-letter login") << "" << QString(63, u'j') << "" << QString(63, u'j') << false << false << false << true << "Out";
        QTest::newRow("blank: 64-letter login is Unknown") << "" << QString(64, u'j') << "Guest Desk" << "Unknown" << true << true << false << false << "Out";
        QTest::newRow("blank: unknown person") << "" << "zed" << "" << "zed" << false << false << false << true << "Out";
        QTest::newRow("blank: wildcard login matches itself only") << "" << "a*" << "" << "a*" << false << false << false << true << "Out";
        QTest::newRow("legacy name, any case") << "ann LEE" << "jo" << "Ann Lee" << "alee" << true << true << false << false << "Out";
        QTest::newRow("legacy name without UID") << "No Uid" << "jo" << "No Uid" << "jo" << true << false << true << false << "Out";
        QTest::newRow("legacy unknown name") << "Nobody Here" << "jo" << "Nobody Here" << "jo" << false << false << true << false << "Out";
        QTest::newRow("-UID:") << "-UID:alee" << "jo" << "Ann Lee" << "alee" << true << true << false << false << "Out";
        QTest::newRow("-UID: empty is the login") << "-UID:" << "alee" << "Ann Lee" << "alee" << true << true << false << false << "Out";
        QTest::newRow("-UID: unknown") << "-UID:zed" << "jo" << "" << "zed" << false << false << true << true << "Out";
        QTest::newRow("-STS: after -UID:") << "-UID:alee -STS:Busy" << "jo" << "Ann Lee" << "alee" << true << true << false << false << "Busy";
        QTest::newRow("-STS: before -UID: finds nobody") << "-STS:Busy -UID:alee" << "jo" << "Ann Lee" << "alee" << true << true << false << false << "Out";
        QTest::newRow("unknown keys ignored, key in any case") << "-uid:alee -FOO:bar -RunTime:1" << "jo" << "Ann Lee" << "alee" << true << true << false << false << "Out";
        QTest::newRow("no known key: nobody") << "x:y" << "alee" << "" << "" << false << false << false << false << "Out";
        QTest::newRow("one empty token stepped over") << "-UID:alee - -STS:Busy" << "jo" << "Ann Lee" << "alee" << true << true << false << false << "Busy";
        // clang-format on
    }
    void identify()
    {
        QFETCH(QString, commandLine);
        QFETCH(QString, login);
        QFETCH(QString, person);
        QFETCH(QString, userID);
        QFETCH(bool, validName);
        QFETCH(bool, validID);
        QFETCH(bool, ends);
        QFETCH(bool, unloadsWelcome);
        QFETCH(QString, annStatus);

        TestGateways gw;
        TempSite site;
        site.person(QStringLiteral("Ann Lee"), QStringLiteral("alee"))
            .person(QStringLiteral("Guest Desk"), QStringLiteral("Unknown"))
            .person(QStringLiteral("No Uid"))
            .status(QStringLiteral("Ann Lee"), QStringLiteral("Out"));
        gRun.gdbDatabase = site.openDb(); // as the start-up leaves it: open, gblnDatabaseClosed False
        gw.identity().login = login;
        gRun.gstrGivenCommandLine = commandLine;
        gRun.gstrCurrentStatus.clear();

        const auto ended = TestGateways::endCodeOf([] { subCheckCommandLine(); });
        QCOMPARE(ended.has_value(), ends);
        QCOMPARE(gRun.gstrDefaultUser, person);
        QCOMPARE(gRun.gstrUserID, userID);
        QCOMPARE(gRun.gblnValidUserName, validName);
        QCOMPARE(gRun.gblnValidUserID, validID);
        QCOMPARE(welcomeScreen().isUnloaded(), unloadsWelcome);
        QCOMPARE(gRun.gstrCommandLine, commandLine.trimmed());
        QCOMPARE(gRun.gstrLoginName, login.isEmpty() || login.size() >= 64 ? QStringLiteral("Unknown") : login);
        // -STS: takes its word wherever it stands, even before anyone is known.
        QCOMPARE(gRun.gstrCurrentStatus,
                 commandLine.contains(QStringLiteral("-STS:")) ? QStringLiteral("Busy") : QString());
        gRun.gdbDatabase.reset();
        QCOMPARE(statusOf(site, QStringLiteral("Ann Lee")), annStatus);
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
