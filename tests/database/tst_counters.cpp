// The change counters: what a poll reads and acts on, and the raise of Counter.
#include "countingscreen.h"
#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "otherclient.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QTest>
#include <QTimer>
#include <array>

using namespace platform;
using Counters = QList<long long>; // Counter, StatusTypeCounter, GroupCounter, SecurityCounter, ExtraColumnsCounter

namespace {

// The counters this client last acted on, in the order of Counters.
const std::array<long long*, 5> kLastActed{&glngLastStatusCounter, &glngLastStatusTypeCounter, &glngLastGroupCounter,
                                           &glngLastSecurityCounter, &glngLastExtraColumnsCounter};

Counters lastActedOn()
{
    Counters c;
    for (const long long* last : kLastActed)
        c << *last;
    return c;
}

} // namespace

class TstCounters : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        TimerCloseDatabase().stop();
    }

    void raiseOnAnEmptyTable()
    {
        TestGateways gw;
        TempSite site;
        site.execute("DELETE FROM StatusCounterTable");
        site.makeCurrent();
        // The new row's Null counter is set to 1, then raised.
        subUpdateStatusCounter();
        QCOMPARE(site.value("SELECT Counter FROM StatusCounterTable"), QString("2"));
        subUpdateStatusCounter();
        QCOMPARE(site.value("SELECT Counter FROM StatusCounterTable"), QString("3"));
        QCOMPARE(glngStatusCounter, 3);
        QCOMPARE(glngLastStatusCounter, 0); // so this client's own next refresh rebuilds
        QCOMPARE(gw.boxes().count(), 0);
    }

    void poll_data()
    {
        QTest::addColumn<Counters>("file");
        QTest::addColumn<Counters>("acted"); // last acted on, before the poll
        QTest::addColumn<QList<int>>("reactions");
        QTest::addColumn<Counters>("actedAfter");
        QTest::newRow("first pass acts on everything")
            << Counters{5, 1, 3, 2, 4} << Counters{0, 0, 0, 0, 0} << QList<int>{1, 1, 1} << Counters{0, 1, 3, 2, 0};
        QTest::newRow("group and security rise")
            << Counters{5, 1, 9, 3, 4} << Counters{5, 1, 3, 2, 4} << QList<int>{1, 0, 1} << Counters{5, 1, 9, 3, 4};
        QTest::newRow("a fall goes unnoticed")
            << Counters{5, 1, 1, 1, 4} << Counters{5, 1, 3, 2, 4} << QList<int>{0, 0, 0} << Counters{5, 1, 3, 2, 4};
        // The administrator's raise of StatusTypeCounter is undone before the read.
        QTest::newRow("status types fall back to 1")
            << Counters{5, 7, 3, 2, 4} << Counters{5, 1, 3, 2, 4} << QList<int>{0, 0, 0} << Counters{5, 1, 3, 2, 4};
    }

    void poll()
    {
        QFETCH(Counters, file);
        QFETCH(Counters, acted);
        QFETCH(QList<int>, reactions);
        QFETCH(Counters, actedAfter);
        TestGateways gw;
        CountingScreen screen;
        setMainScreen(&screen);
        TempSite site;
        const QStringList names = {"Counter", "StatusTypeCounter", "GroupCounter", "SecurityCounter",
                                   "ExtraColumnsCounter"};
        for (int i = 0; i < 5; ++i)
            site.execute(QStringLiteral("UPDATE StatusCounterTable SET %1 = %2").arg(names[i]).arg(file[i]));
        site.setting("SystemSecurityLevel", "2");
        site.makeCurrent();
        for (int i = 0; i < 5; ++i)
            *kLastActed[i] = acted[i];

        subGetCounterValues();
        const Counters read{glngStatusCounter, glngStatusTypeCounter, glngGroupCounter, glngSecurityCounter,
                            glngExtraColumnsCounter};
        QCOMPARE(read, (Counters{file[0], 1, file[2], file[3], file[4]}));
        QCOMPARE(screen.reactions, reactions);
        QCOMPARE(gintSystemSecurityLevel, reactions[2] ? 2 : 0);
        QCOMPARE(lastActedOn(), actedAfter);

        // Nothing moved since: the next poll acts on nothing and only reads, the
        // check's two reads and its own.
        dao::DBEngine::resetStatementCount();
        subGetCounterValues();
        QCOMPARE(screen.reactions, reactions);
        QCOMPARE(dao::DBEngine::statementCount(), 3);
        QCOMPARE(gw.boxes().count(), 0);
    }

    // A poll at a bad moment reads zeros, which the list refresh takes for a change.
    void failedReadGivesZeros()
    {
        TestGateways gw;
        TempSite site;
        site.makeCurrent();
        glngStatusCounter = glngGroupCounter = glngLastStatusCounter = glngLastGroupCounter = 4;
        {
            OtherClient other(site);
            subOpenDatabase();
            QVERIFY(other.begin("BEGIN EXCLUSIVE; UPDATE StatusCounterTable SET Counter = 9"));
            subGetCounterValues();
        }
        QCOMPARE(glngStatusCounter + glngStatusTypeCounter + glngGroupCounter + glngSecurityCounter +
                     glngExtraColumnsCounter,
                 0);
        QCOMPARE(lastActedOn(), (Counters{4, 0, 4, 0, 0}));
        QCOMPARE(gw.boxes().count(), 0);
    }

    void lockedCounterAsksToRetry()
    {
        TestGateways gw;
        TempSite site;
        site.makeCurrent();
        gw.boxes().answer(vbYes).answer(vbNo);
        {
            OtherClient other(site);
            QVERIFY(other.begin("BEGIN IMMEDIATE"));
            subUpdateStatusCounter();
        }
        // Yes starts again at the open; No leaves with the counter as it was.
        QCOMPARE(gw.boxes().count(), 2);
        QVERIFY2(gw.boxes().last().prompt.startsWith("Error: 3218 - "), qPrintable(gw.boxes().last().prompt));
        QVERIFY(gw.boxes().last().prompt.endsWith("\r\nWould you like to retry ?"));
        QCOMPARE(gw.boxes().last().flags, int(vbYesNo + vbQuestion));
        QCOMPARE(gw.boxes().last().title, QStringLiteral(" VESK-OR Pro "));
        QCOMPARE(site.value("SELECT Counter FROM StatusCounterTable"), QString("1"));

        // Any other error is a warning, and the procedure leaves.
        site.execute("DROP TABLE StatusCounterTable");
        gw.boxes().answer(vbOK);
        subUpdateStatusCounter();
        QVERIFY(gw.boxes().last().prompt.startsWith("Error=3078\r\n Error message="));
        QVERIFY(gw.boxes().last().prompt.endsWith(". Update cancelled."));
        QCOMPARE(gw.boxes().last().flags, int(vbExclamation));
    }
};

QTEST_GUILESS_MAIN(TstCounters)
#include "tst_counters.moc"
