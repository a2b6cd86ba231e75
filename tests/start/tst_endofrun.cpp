// The real client on a site, ended from outside: by a signal or the session's end
// it takes its ordinary end; a second start for the same person raises the first
// and leaves, while a start for another person goes on.
#include "realclient.h"
#include "tempsite.h"

#include <QTemporaryDir>
#include <QTest>
#include <csignal>

namespace {

const QString kJo = QStringLiteral("Jo Bloggs");
const QString kAnn = QStringLiteral("Ann Lee");

QString fieldOf(const TempSite& site, const QString& name, const QString& column)
{
    return site.value(QStringLiteral("SELECT %1 FROM EmployeeTable WHERE Name = \"%2\"").arg(column, name));
}

bool isActive(const TempSite& site, const QString& name)
{
    return fieldOf(site, name, QStringLiteral("ActiveFlag")) == QLatin1String("Yes");
}

// What a board leaves in the private folder: its socket and lock file while it runs.
QStringList leftIn(const QTemporaryDir& runtime)
{
    return QDir(runtime.path()).entryList(QDir::Files | QDir::System);
}

} // namespace

class TestEndOfRun : public QObject
{
    Q_OBJECT

private slots:
    void endFromOutside_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("autoLogOut");
        QTest::addColumn<QString>("status");
        QTest::newRow("SIGTERM, AutoLogOut") << int(SIGTERM) << true << "Out";
        QTest::newRow("SIGINT, no AutoLogOut") << int(SIGINT) << false << "Busy";
        QTest::newRow("SIGHUP (session gone), AutoLogOut") << int(SIGHUP) << true << "Out";
    }

    // A signal ends the run the ordinary way: the person is inactive afterwards and,
    // with AutoLogOut, Out; the process leaves normally and shows no box.
    void endFromOutside()
    {
        QFETCH(int, signal);
        QFETCH(bool, autoLogOut);
        QFETCH(QString, status);
        TempSite site;
        site.person(kJo, QStringLiteral("jo")).status(kJo, QStringLiteral("Busy"));
        site.execute(QStringLiteral("UPDATE EmployeeSettingsTable SET AutoLogIn = False, AutoLogOut = %1")
                         .arg(autoLogOut ? QStringLiteral("True") : QStringLiteral("False")));
        QTemporaryDir runtime;
        RealClient client(site.path(), {QStringLiteral("-UID:jo")}, {}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kJo), 20000);
        QCOMPARE(leftIn(runtime).size(), 2);

        ::kill(pid_t(client.process.processId()), signal);
        QVERIFY(client.finishedCleanly());
        QCOMPARE(leftIn(runtime), QStringList());
        QCOMPARE(fieldOf(site, kJo, QStringLiteral("ActiveFlag")), QStringLiteral("No"));
        QCOMPARE(fieldOf(site, kJo, QStringLiteral("Status")), status);
        QCOMPARE(client.boxesShown(), QByteArray());
    }

    void secondStart()
    {
        TempSite site;
        site.person(kJo, QStringLiteral("jo")).person(kAnn, QStringLiteral("alee"));
        QTemporaryDir runtime;
        RealClient first(site.path(), {QStringLiteral("-UID:jo")}, {}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kJo), 20000);
        const QStringList firstBoards = leftIn(runtime);

        // The same person again: it leaves at once, and leaves the first one's row,
        // socket and lock file alone.
        RealClient second(site.path(), {QStringLiteral("-UID:jo")}, {}, runtime.path());
        QVERIFY(second.finishedCleanly());
        QCOMPARE(first.process.state(), QProcess::Running);
        QVERIFY(isActive(site, kJo));
        QCOMPARE(leftIn(runtime), firstBoards);

        // Another person on the same desktop goes on.
        RealClient other(site.path(), {QStringLiteral("-UID:alee")}, {}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kAnn), 20000);
        QTest::qWait(500);
        QCOMPARE(other.process.state(), QProcess::Running);
        QCOMPARE(first.boxesShown(), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestEndOfRun)
#include "tst_endofrun.moc"
