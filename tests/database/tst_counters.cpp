// The change counters: what a poll reads and acts on, and the raise of Counter.
#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "start/globals.h"
#include "start/mainscreen.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QFile>
#include <QTest>
#include <QTimer>
#include <sqlite3.h>

using namespace platform;

namespace {

class FakeMain : public MainScreen
{
public:
    void clearGroups() override
    {
        ++groupReads;
    }
    void subLoadToolBarButtons() override
    {
        ++toolBarLoads;
    }
    void subSetToolBarRights() override
    {
        ++rightsSet;
    }
    int groupReads = 0;
    int toolBarLoads = 0;
    int rightsSet = 0;
};

long long counterOf(const TempSite& site, const QString& column)
{
    auto rs = site.openDb()->OpenRecordset("SELECT " + column + " FROM StatusCounterTable", dao::dbOpenSnapshot);
    return rs->isEOF() ? -1 : rs->Fields(0).Value().toLongLong();
}

void useSite(const TempSite& site)
{
    gstrCurrentDatabasePath = site.path();
    gblnDatabaseClosed = true;
}

// A short wait for other clients' locks, for connections opened while it lives.
struct ShortBusyWait
{
    ShortBusyWait() : saved(dao::DBEngine::busyTimeoutMs())
    {
        dao::DBEngine::setBusyTimeoutMs(50);
    }
    ~ShortBusyWait()
    {
        dao::DBEngine::setBusyTimeoutMs(saved);
    }
    int saved;
};

// Another client holding the file: "BEGIN IMMEDIATE" lets others read but not
// write; "BEGIN EXCLUSIVE" lets no one in.
class OtherClient
{
public:
    OtherClient(const TempSite& site, const char* begin)
    {
        sqlite3_open_v2(QFile::encodeName(site.dbPath()).constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr);
        m_ok = sqlite3_exec(m_db, begin, nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    ~OtherClient()
    {
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(m_db);
    }
    bool holds() const
    {
        return m_ok;
    }

private:
    sqlite3* m_db = nullptr;
    bool m_ok = false;
};

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
        useSite(site);

        // The new row's Null counter is set to 1, then raised.
        subUpdateStatusCounter();
        QCOMPARE(counterOf(site, "Counter"), 2);
        QCOMPARE(glngStatusCounter, 2);
        subUpdateStatusCounter();
        QCOMPARE(counterOf(site, "Counter"), 3);
        QCOMPARE(glngStatusCounter, 3);
        QCOMPARE(glngLastStatusCounter, 0); // so this client's own next refresh rebuilds
        QCOMPARE(gw.boxes().count(), 0);
    }

    void poll_data()
    {
        // The file's counters, the values last acted on, and what the poll must do.
        QTest::addColumn<QList<long long>>("file");  // Counter, StatusType, Group, Security, ExtraColumns
        QTest::addColumn<QList<long long>>("acted"); // the glngLast... values before the poll
        QTest::addColumn<int>("groupReads");
        QTest::addColumn<int>("toolBarLoads");
        QTest::addColumn<int>("rightsSet");
        QTest::addColumn<QList<long long>>("actedAfter");

        using L = QList<long long>;
        QTest::newRow("first pass acts on everything")
            << L{5, 1, 3, 2, 4} << L{0, 0, 0, 0, 0} << 1 << 1 << 1 << L{0, 1, 3, 2, 0};
        QTest::newRow("nothing moved") << L{5, 1, 3, 2, 4} << L{5, 1, 3, 2, 4} << 0 << 0 << 0 << L{5, 1, 3, 2, 4};
        QTest::newRow("group and security rise")
            << L{5, 1, 9, 3, 4} << L{5, 1, 3, 2, 4} << 1 << 0 << 1 << L{5, 1, 9, 3, 4};
        QTest::newRow("a fall goes unnoticed")
            << L{5, 1, 1, 1, 4} << L{5, 1, 3, 2, 4} << 0 << 0 << 0 << L{5, 1, 3, 2, 4};
        // The administrator's raise of StatusTypeCounter is undone before the read.
        QTest::newRow("status types fall back to 1")
            << L{5, 7, 3, 2, 4} << L{5, 1, 3, 2, 4} << 0 << 0 << 0 << L{5, 1, 3, 2, 4};
    }

    void poll()
    {
        QFETCH(QList<long long>, file);
        QFETCH(QList<long long>, acted);
        QFETCH(int, groupReads);
        QFETCH(int, toolBarLoads);
        QFETCH(int, rightsSet);
        QFETCH(QList<long long>, actedAfter);

        TestGateways gw;
        FakeMain screen;
        setMainScreen(&screen);
        TempSite site;
        site.execute(QStringLiteral("UPDATE StatusCounterTable SET Counter = %1, StatusTypeCounter = %2, GroupCounter "
                                    "= %3, SecurityCounter = %4, ExtraColumnsCounter = %5")
                         .arg(file[0])
                         .arg(file[1])
                         .arg(file[2])
                         .arg(file[3])
                         .arg(file[4]));
        site.execute("UPDATE GlobalSettingsTable SET SystemSecurityLevel = 2");
        useSite(site);
        glngLastStatusCounter = acted[0];
        glngLastStatusTypeCounter = acted[1];
        glngLastGroupCounter = acted[2];
        glngLastSecurityCounter = acted[3];
        glngLastExtraColumnsCounter = acted[4];

        subGetCounterValues();
        QCOMPARE(glngStatusCounter, file[0]);
        QCOMPARE(glngStatusTypeCounter, 1);
        QCOMPARE(glngGroupCounter, file[2]);
        QCOMPARE(glngSecurityCounter, file[3]);
        QCOMPARE(glngExtraColumnsCounter, file[4]);
        QCOMPARE(screen.groupReads, groupReads);
        QCOMPARE(screen.toolBarLoads, toolBarLoads);
        QCOMPARE(screen.rightsSet, rightsSet);
        QCOMPARE(gintSystemSecurityLevel, rightsSet ? 2 : 0);
        const QList<long long> after{glngLastStatusCounter, glngLastStatusTypeCounter, glngLastGroupCounter,
                                     glngLastSecurityCounter, glngLastExtraColumnsCounter};
        QCOMPARE(after, actedAfter);
        QCOMPARE(gw.boxes().count(), 0);
    }

    // A poll at a bad moment reads zeros, which the list refresh takes for a change.
    void failedReadGivesZeros()
    {
        TestGateways gw;
        ShortBusyWait wait;
        TempSite site;
        useSite(site);
        subOpenDatabase();
        glngStatusCounter = glngGroupCounter = glngLastStatusCounter = glngLastGroupCounter = 4;
        {
            OtherClient other(site, "BEGIN EXCLUSIVE; UPDATE StatusCounterTable SET Counter = 9");
            QVERIFY(other.holds());
            subGetCounterValues();
        }
        QCOMPARE(glngStatusCounter, 0);
        QCOMPARE(glngGroupCounter, 0);
        QCOMPARE(glngStatusTypeCounter + glngSecurityCounter + glngExtraColumnsCounter, 0);
        QVERIFY(glngStatusCounter != glngLastStatusCounter);
        QCOMPARE(gw.boxes().count(), 0);
    }

    void lockedCounterAsksToRetry()
    {
        TestGateways gw;
        ShortBusyWait wait;
        TempSite site;
        useSite(site);
        const long long before = counterOf(site, "Counter");
        gw.boxes().answer(vbYes).answer(vbNo);
        {
            OtherClient other(site, "BEGIN IMMEDIATE");
            QVERIFY(other.holds());
            subUpdateStatusCounter();
        }
        // Yes starts again at the open; No leaves with the counter as it was.
        QCOMPARE(gw.boxes().count(), 2);
        const ShownBox box = gw.boxes().last();
        QVERIFY2(box.prompt.startsWith("Error: 3218 - "), qPrintable(box.prompt));
        QVERIFY(box.prompt.endsWith("\r\nWould you like to retry ?"));
        QCOMPARE(box.flags, int(vbYesNo + vbQuestion));
        QCOMPARE(box.title, QStringLiteral(" VESK-OR Pro "));
        QCOMPARE(counterOf(site, "Counter"), before);
        QCOMPARE(glngStatusCounter, 0);

        // Any other error is a warning, and the procedure leaves.
        site.execute("DROP TABLE StatusCounterTable");
        gw.boxes().answer(vbOK);
        subUpdateStatusCounter();
        QVERIFY2(gw.boxes().last().prompt.startsWith("Error=3078\r\n Error message="),
                 qPrintable(gw.boxes().last().prompt));
        QVERIFY(gw.boxes().last().prompt.endsWith(". Update cancelled."));
        QCOMPARE(gw.boxes().last().flags, int(vbExclamation));
    }
};

QTEST_GUILESS_MAIN(TstCounters)
#include "tst_counters.moc"
