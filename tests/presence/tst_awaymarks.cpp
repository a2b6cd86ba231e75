// The screen saver's and the lock's marks on the person's own row, their end,
// UpdateStatusOnLock, and the presence test screen.
#include "presence/gui/frmdetectlockedworkstation.h"
#include "presence/modscreensaver.h"
#include "statusfixture.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace presence;

class TestAwayMarks : public QObject
{
    Q_OBJECT

private slots:
    void marks_data()
    {
        QTest::addColumn<bool>("updateOnLock");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QStringList>("events");
        QTest::addColumn<QString>("codes"); // StatusCode after each event
        QTest::addColumn<QString>("finalStatus");
        QTest::addColumn<long long>("logRows");
        QTest::addColumn<int>("refreshes");
        const auto row = [](const char* name, bool updateOnLock, const QString& status, const QStringList& events,
                            const QString& codes, const QString& finalStatus, long long logRows, int refreshes) {
            QTest::newRow(name) << updateOnLock << status << events << codes << finalStatus << logRows << refreshes;
        };
        const QStringList saverThenLock{"saver", "lock", "nosaver", "unlock"};
        row("saver and back", false, "Busy", {"saver", "nosaver"}, "10 2", "Busy", 0, 1);
        row("typed status back as 4", false, "At the dentist", {"saver", "nosaver"}, "10 4", "At the dentist", 0, 1);
        row("the lock wins over the saver", false, "Busy", saverThenLock, "10 11 11 2", "Busy", 0, 1);
        row("a saver behind a lock changes nothing", false, "In", {"lock", "lock", "saver", "nosaver", "unlock"},
            "11 11 11 11 3", "In", 0, 1);
        row("lock sets Out, unlock In", true, "Busy", {"lock", "unlock"}, "1 3", "In", 2, 0);
        row("Out after the saver is not logged", true, "Busy", saverThenLock, "10 1 1 3", "In", 1, 0);
    }

    // Each event sets what the desktop answers and runs the tick that asks it.
    // Once the events are over, ticks that find nothing changed neither open the
    // database nor rebuild the board.
    void marks()
    {
        QFETCH(bool, updateOnLock);
        QFETCH(QString, status);
        QFETCH(QStringList, events);
        QFETCH(int, refreshes);
        StatusFixture f;
        f.site.status("Ann Lee", status);
        gSite.gblnUpdateStatusOnLock = updateOnLock;
        gRun.gstrCurrentStatus = status;
        gRun.gintOwnStatusCode =
            f.site.value("SELECT StatusCode FROM EmployeeTable WHERE Name = 'Ann Lee'").toLongLong();
        platform::ScriptedPresence& desk = f.gw.presence();
        QStringList codes;
        QString code = QString::number(gRun.gintOwnStatusCode);
        long long counter = f.counter();
        for (const QString& event : events) {
            desk.running = event == "saver" ? true : event == "nosaver" ? false : desk.running;
            desk.locked = event == "lock" ? true : event == "unlock" ? false : desk.locked;
            event.endsWith("saver") ? tmrScreenSaver_Timer() : tmrDetectLockedWorkStation_Timer();
            const QString before = std::exchange(code, f.site.value("SELECT StatusCode FROM EmployeeTable"
                                                                    " WHERE Name = 'Ann Lee'"));
            QCOMPARE(gRun.gintOwnStatusCode, code.toLongLong());
            // Every change of the row tells the other clients; no change tells nothing.
            QCOMPARE(std::exchange(counter, f.counter()) < counter, code != before);
            codes << code;
        }
        QTEST(codes.join(' '), "codes");
        QTEST(f.statusOf("Ann Lee"), "finalStatus");
        QTEST(f.logRows(), "logRows");
        QCOMPARE(f.board.refreshes, refreshes);

        TimerCloseDatabase().stop();
        gRun.gdbDatabase.reset();
        gRun.gblnDatabaseClosed = true;
        tmrScreenSaver_Timer();
        tmrDetectLockedWorkStation_Timer();
        QVERIFY(!gRun.gdbDatabase);
        QCOMPARE(f.board.refreshes, refreshes);
    }

    // The screen watches and, asked to, has the desktop lock; it writes nothing.
    void testScreen()
    {
        TestGateways gw;
        frmDetectLockedWorkstation form;
        form.cmdLockWorkstation->click();
        QVERIFY(form.Timer1.isActive());
        QCOMPARE(gw.presence().lockRequests, 1);
        gw.presence().locked = true;
        form.Timer1_Timer();
        QCOMPARE(form.lblState->text(), "Workstation locked");
        form.cmdStopMonitoring->click();
        form.cmdJustMonitor->click();
        QVERIFY(form.Timer1.isActive());
        QCOMPARE(gw.presence().lockRequests, 1);
    }
};

QTEST_MAIN(TestAwayMarks)
#include "tst_awaymarks.moc"
