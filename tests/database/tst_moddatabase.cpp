// The shared file's open-and-close regime, the answers to a failed open, and the change counters.
#include "columns.h"
#include "countingscreen.h"
#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "ondisk.h"
#include "otherclient.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>
#include <array>
#include <optional>

using namespace platform;

namespace {

const QString kProcedure = "modDatabase - subOpenDatabase event";

using Counters = QList<long long>; // Counter, StatusTypeCounter, GroupCounter, SecurityCounter, ExtraColumnsCounter

// The counters this client last acted on, in the order of Counters.
const std::array<long long*, 5> kLastActed{&gCounters.glngLastStatusCounter, &gCounters.glngLastStatusTypeCounter,
                                           &gCounters.glngLastGroupCounter, &gCounters.glngLastSecurityCounter,
                                           &gCounters.glngLastExtraColumnsCounter};

Counters lastActedOn()
{
    Counters c;
    for (const long long* last : kLastActed)
        c << *last;
    return c;
}

} // namespace

class TstModDatabase : public QObject
{
    Q_OBJECT

    // Each test's gateways, its site (the one the database procedures open) and
    // the main screen that counts the unloads and reactions.
    std::optional<TestGateways> gw;
    std::optional<TempSite> site;
    std::optional<CountingScreen> screen;

private slots:
    void init()
    {
        gw.emplace();
        site.emplace();
        site->makeCurrent();
        setMainScreen(&screen.emplace());
    }
    void cleanup()
    {
        TimerCloseDatabase().stop();
        gRun.gdbDatabase.reset();
        site.reset();
        gw.reset();
    }

    void burstSharesOneOpenAndTheTickCloses()
    {
        subOpenDatabase();
        const auto first = gRun.gdbDatabase;
        QVERIFY(first->isOpen() && !gRun.gblnDatabaseClosed && TimerCloseDatabase().isActive());
        subCloseDatabase();
        subOpenDatabase();
        QCOMPARE(gRun.gdbDatabase, first);
        QVERIFY(first->isOpen());

        // The real timer closes two seconds after the real open.
        QTRY_COMPARE_WITH_TIMEOUT(gRun.glngDatabaseCloseCount, 1, 4000);
        QVERIFY(!first->isOpen() && gRun.gblnDatabaseClosed && !TimerCloseDatabase().isActive());
        subOpenDatabase();
        QVERIFY(gRun.gdbDatabase != first && gRun.gdbDatabase->isOpen());
    }

    void failedOpen_data()
    {
        addColumns<QString, QList<int>, QString, QString, int, QString, int>("broken", "answers", "start", "end",
                                                                             "flags", "title", "unloads");
        const auto row = [](const char* name, const char* broken, QList<int> answers, const QString& start,
                            const QString& end, int flags, const QString& title, int unloads) {
            QTest::newRow(name) << broken << answers << start << end << flags << title << unloads;
        };
        const int retryCancel = vbRetryCancel + vbExclamation;
        // Retry goes round again: three more tries, then the same box.
        row("missing file: Retry, then Cancel ends without unloading", "file", {vbRetry, vbCancel},
            "Non-fatal Error (3024 ) in " + kProcedure + "\r",
            "\r\rPossible Causes: \r                 1) The server is busy deleting the VESKOR.LDB file.\r          "
            "       2) The network cable has been disconnected.",
            retryCancel, " VESK-OR Pro  - Error in subOpenDatabase", 0);
        row("missing folder: Cancel unloads and ends", "folder", {vbCancel},
            "Database Path Error (3044 ) in " + kProcedure + "\r\n\r\n",
            "\r\n\r\nPossible causes: \r\n1) Invalid Database Path in VESKOR.INI. \r\n2) You do not have access "
            "permissions to the database via this path. \r\n3) The Network connection may have been permanently or "
            "temporarily lost.\r\n\r\nSelect Retry to attempt to open the database again.\r\nSelect Cancel to exit.",
            retryCancel, "", 1);
        row("not a database: damaged", "garbage", {vbOK}, "",
            "\rPlease inform the Network Supervisor that the database is damaged and must be repaired.", vbExclamation,
            kProcedure + " - Fatal Error in  VESK-OR Pro ", 1);
        row("a folder by the file's name: any other number", "folder as file", {vbOK}, "Error (3055 - ", "", 0, "", 1);
    }

    void failedOpen()
    {
        auto [broken, answers, start, end, flags, title, unloads] =
            fetch<QString, QList<int>, QString, QString, int, QString, int>("broken", "answers", "start", "end",
                                                                            "flags", "title", "unloads");
        if (broken == "folder")
            gRun.gstrCurrentDatabasePath = site->path() + "gone" + QDir::separator();
        if (broken != "folder")
            QVERIFY(QFile::remove(site->dbPath()));
        if (broken == "folder as file")
            QVERIFY(QDir().mkdir(site->dbPath()));
        if (broken == "garbage")
            QVERIFY(writeFile(site->dbPath(), QByteArray(4096, 'x')));
        for (int answer : answers)
            gw->boxes().answer(answer);

        QCOMPARE(TestGateways::endCodeOf([] { subOpenDatabase(); }), std::optional<int>(0));
        QCOMPARE(gw->boxes().count(), answers.size());
        for (const ShownBox& box : gw->boxes().shown()) {
            QVERIFY2(box.prompt.startsWith(start) && box.prompt.endsWith(end), qPrintable(box.prompt));
            QCOMPARE(box.flags, flags);
            QCOMPARE(box.title, title);
        }
        QCOMPARE(screen->unloads, unloads);
        // Three tries a round, 500 and 1000 ms apart, counted on the status bar.
        QCOMPARE(gw->clock().sleptMs(), 1500 * answers.size());
        QCOMPARE(screen->panelText(2), " Opening database - try #2");
    }

    void exclusiveOpenIsWaitedOut()
    {
        auto holder = dao::DBEngine::OpenDatabase(site->dbPath(), true);
        QTimer::singleShot(0, [&] { holder->Close(); }); // once events run, after the box
        gw->boxes().answer(vbOK);

        subOpenDatabase();
        QCOMPARE(gw->boxes().last().prompt.left(27), "Non-fatal Error (3045 ) in ");
        QVERIFY(gw->boxes().last().prompt.endsWith("\r\rProbably cause: Administrator was repairing the database. "
                                                   "Please wait a few seconds, then press OK to continue."));
        QCOMPARE(gw->boxes().last().flags, int(vbExclamation));
        QVERIFY(gRun.gdbDatabase && gRun.gdbDatabase->isOpen() && !gRun.gblnDatabaseClosed);
    }

    void groupExists()
    {
        site->group("Sales").group("Sales*");
        QVERIFY(fnGroupExists("sales") && fnGroupExists("SALES*"));
        QVERIFY(!fnGroupExists("Sale") && !fnGroupExists("S*"));

        // A database object lost while events ran is opened again, without a box.
        gRun.gdbDatabase->Close();
        QVERIFY(fnGroupExists("Sales") && gRun.gdbDatabase->isOpen());
    }

    void raiseOnAnEmptyTable()
    {
        site->execute("DELETE FROM StatusCounterTable");
        // The new row's Null counter is set to 1, then raised.
        subUpdateStatusCounter();
        QCOMPARE(site->value("SELECT Counter FROM StatusCounterTable"), QString("2"));
        subUpdateStatusCounter();
        QCOMPARE(site->value("SELECT Counter FROM StatusCounterTable"), QString("3"));
        QCOMPARE(gCounters.glngStatusCounter, 3);
        QCOMPARE(gCounters.glngLastStatusCounter, 0); // so this client's own next refresh rebuilds
    }

    void poll_data()
    {
        // acted: last acted on, before the poll
        addColumns<Counters, Counters, QList<int>, Counters>("file", "acted", "reactions", "actedAfter");
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
        auto [file, acted, reactions] = fetch<Counters, Counters, QList<int>>("file", "acted", "reactions");
        const QStringList names = {"Counter", "StatusTypeCounter", "GroupCounter", "SecurityCounter",
                                   "ExtraColumnsCounter"};
        for (int i = 0; i < 5; ++i)
            site->execute(QStringLiteral("UPDATE StatusCounterTable SET %1 = %2").arg(names[i]).arg(file[i]));
        site->setting("SystemSecurityLevel", "2");
        for (int i = 0; i < 5; ++i)
            *kLastActed[i] = acted[i];

        subGetCounterValues();
        const Counters read{gCounters.glngStatusCounter, gCounters.glngStatusTypeCounter, gCounters.glngGroupCounter,
                            gCounters.glngSecurityCounter, gCounters.glngExtraColumnsCounter};
        QCOMPARE(read, (Counters{file[0], 1, file[2], file[3], file[4]}));
        QCOMPARE(screen->reactions, reactions);
        QCOMPARE(gSite.gintSystemSecurityLevel, reactions[2] ? 2 : 0);
        QTEST(lastActedOn(), "actedAfter");

        // Nothing moved since: the next poll acts on nothing and only reads, the
        // check's two reads and its own.
        dao::DBEngine::resetStatementCount();
        subGetCounterValues();
        QCOMPARE(screen->reactions, reactions);
        QCOMPARE(dao::DBEngine::statementCount(), 3);
    }

    // A poll at a bad moment reads zeros, which the list refresh takes for a change.
    void failedReadGivesZeros()
    {
        gCounters.glngStatusCounter = gCounters.glngGroupCounter = gCounters.glngLastStatusCounter =
            gCounters.glngLastGroupCounter = 4;
        {
            OtherClient other(*site);
            subOpenDatabase();
            QVERIFY(other.begin("BEGIN EXCLUSIVE; UPDATE StatusCounterTable SET Counter = 9"));
            subGetCounterValues();
        }
        QCOMPARE(gCounters.glngStatusCounter + gCounters.glngStatusTypeCounter + gCounters.glngGroupCounter +
                     gCounters.glngSecurityCounter + gCounters.glngExtraColumnsCounter,
                 0);
        QCOMPARE(lastActedOn(), (Counters{4, 0, 4, 0, 0}));
    }

    void lockedCounterAsksToRetry()
    {
        gw->boxes().answer(vbYes).answer(vbNo);
        {
            OtherClient other(*site);
            QVERIFY(other.begin("BEGIN IMMEDIATE"));
            subUpdateStatusCounter();
        }
        // Yes starts again at the open; No leaves with the counter as it was.
        QCOMPARE(gw->boxes().count(), 2);
        QVERIFY2(gw->boxes().last().prompt.startsWith("Error: 3218 - "), qPrintable(gw->boxes().last().prompt));
        QVERIFY(gw->boxes().last().prompt.endsWith("\r\nWould you like to retry ?"));
        QCOMPARE(gw->boxes().last().flags, int(vbYesNo + vbQuestion));
        QCOMPARE(gw->boxes().last().title, " VESK-OR Pro ");
        QCOMPARE(site->value("SELECT Counter FROM StatusCounterTable"), QString("1"));

        // Any other error is a warning, and the procedure leaves.
        site->execute("DROP TABLE StatusCounterTable");
        gw->boxes().answer(vbOK);
        subUpdateStatusCounter();
        QVERIFY(gw->boxes().last().prompt.startsWith("Error=3078\r\n Error message="));
        QVERIFY(gw->boxes().last().prompt.endsWith(". Update cancelled."));
        QCOMPARE(gw->boxes().last().flags, int(vbExclamation));
    }
};

QTEST_GUILESS_MAIN(TstModDatabase)
#include "tst_moddatabase.moc"
