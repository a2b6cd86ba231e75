// The open-and-close regime of the shared file, the answers to a failed open,
// the group look-up and the answer to a failed Update.
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "start/globals.h"
#include "start/mainscreen.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>

using namespace platform;

namespace {

const QString kProcedure = QStringLiteral("modDatabase - subOpenDatabase event");

class FakeMain : public MainScreen
{
public:
    void unload() override
    {
        ++unloads;
    }
    int unloads = 0;
};

enum class Condition
{
    MissingFile,
    MissingFolder,
    GarbageFile,
    FolderAsFile,
};

// Points the run at a site folder made broken in the way asked.
void breakSite(TempSite& site, Condition condition)
{
    switch (condition) {
    case Condition::MissingFile:
        QVERIFY(QFile::remove(site.dbPath()));
        gstrCurrentDatabasePath = site.path();
        break;
    case Condition::MissingFolder:
        gstrCurrentDatabasePath = site.path() + QStringLiteral("gone") + QDir::separator();
        break;
    case Condition::GarbageFile: {
        QFile file(site.dbPath());
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QByteArray(4096, 'x'));
        gstrCurrentDatabasePath = site.path();
        break;
    }
    case Condition::FolderAsFile:
        QVERIFY(QFile::remove(site.dbPath()));
        QVERIFY(QDir().mkdir(site.dbPath()));
        gstrCurrentDatabasePath = site.path();
        break;
    }
}

} // namespace

class TstModDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TimerCloseDatabase().stop();
    }
    void cleanup()
    {
        TimerCloseDatabase().stop();
    }

    void burstSharesOneOpenAndTheTickCloses()
    {
        TestGateways gw;
        TempSite site;
        gstrCurrentDatabasePath = site.path();
        gblnDatabaseClosed = true;

        subOpenDatabase();
        const auto first = gdbDatabase;
        QVERIFY(first && first->isOpen());
        QVERIFY(!gblnDatabaseClosed);
        QVERIFY(TimerCloseDatabase().isActive());
        subCloseDatabase();
        subOpenDatabase();
        QCOMPARE(gdbDatabase, first);
        QVERIFY(first->isOpen());
        QCOMPARE(glngDatabaseCloseCount, 0);

        // The real timer, two seconds after the real open.
        QTRY_COMPARE_WITH_TIMEOUT(glngDatabaseCloseCount, 1, 4000);
        QVERIFY(!first->isOpen());
        QVERIFY(gblnDatabaseClosed);
        QVERIFY(!TimerCloseDatabase().isActive());

        subOpenDatabase();
        QVERIFY(gdbDatabase != first && gdbDatabase->isOpen());
        TimerCloseDatabase_Timer();
        QCOMPARE(glngDatabaseCloseCount, 2);
    }

    void failedOpen_data()
    {
        QTest::addColumn<Condition>("condition");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<QString>("promptStart");
        QTest::addColumn<QString>("promptEnd");
        QTest::addColumn<int>("flags");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("unloads");

        const QString path = QStringLiteral("Database Path Error (3044 ) in ") + kProcedure + "\r\n\r\n";
        const QString pathEnd = QStringLiteral(
            "\r\n\r\nPossible causes: \r\n1) Invalid Database Path in VESKOR.INI. \r\n2) You do not have access "
            "permissions to the database via this path. \r\n3) The Network connection may have been permanently or "
            "temporarily lost.\r\n\r\nSelect Retry to attempt to open the database again.\r\nSelect Cancel to exit.");
        const QString lockEnd = QStringLiteral("\r\rPossible Causes: \r                 1) The server is busy deleting "
                                               "the VESKOR.LDB file.\r                 2) The network cable has been "
                                               "disconnected.");
        // Retry goes round again: three more tries, then the same box.
        QTest::newRow("missing file: Retry, Cancel ends without unloading")
            << Condition::MissingFile << QList<int>{vbRetry, vbCancel}
            << QStringLiteral("Non-fatal Error (3024 ) in ") + kProcedure + "\r" << lockEnd
            << int(vbRetryCancel + vbExclamation) << QStringLiteral(" VESK-OR Pro  - Error in subOpenDatabase") << 0;
        QTest::newRow("missing folder: Cancel unloads and ends")
            << Condition::MissingFolder << QList<int>{vbCancel} << path << pathEnd << int(vbRetryCancel + vbExclamation)
            << QString() << 1;
        QTest::newRow("garbage file: damaged, unloads and ends")
            << Condition::GarbageFile << QList<int>{vbOK} << QString()
            << QStringLiteral("\rPlease inform the Network Supervisor "
                              "that the database is damaged and must "
                              "be repaired.")
            << int(vbOKOnly + vbExclamation) << kProcedure + QStringLiteral(" - Fatal Error in  VESK-OR Pro ") << 1;
        QTest::newRow("a folder by the file's name: any other number")
            << Condition::FolderAsFile << QList<int>{vbOK} << QStringLiteral("Error (3055 - ") << QString()
            << int(vbOKOnly) << QString() << 1;
    }

    void failedOpen()
    {
        QFETCH(Condition, condition);
        QFETCH(QList<int>, answers);
        QFETCH(QString, promptStart);
        QFETCH(QString, promptEnd);
        QFETCH(int, flags);
        QFETCH(QString, title);
        QFETCH(int, unloads);

        TestGateways gw;
        FakeMain screen;
        setMainScreen(&screen);
        TempSite site;
        breakSite(site, condition);
        for (int answer : answers)
            gw.boxes().answer(answer);
        gblnDatabaseClosed = true;

        QCOMPARE(TestGateways::endCodeOf([] { subOpenDatabase(); }), std::optional<int>(0));
        QCOMPARE(gw.boxes().count(), answers.size());
        for (const ShownBox& box : gw.boxes().shown()) {
            QVERIFY2(box.prompt.startsWith(promptStart), qPrintable(box.prompt));
            QVERIFY2(box.prompt.endsWith(promptEnd), qPrintable(box.prompt));
            QCOMPARE(box.flags, flags);
            QCOMPARE(box.title, title);
        }
        QCOMPARE(screen.unloads, unloads);
        // Three tries a round, 500 and 1000 ms apart, and the panel counts them.
        QCOMPARE(gw.clock().sleptMs(), 1500 * answers.size());
        QCOMPARE(screen.panelText(2), QStringLiteral(" Opening database - try #2"));
    }

    void exclusiveOpenWaitsUntilReleased()
    {
        TestGateways gw;
        TempSite site;
        gstrCurrentDatabasePath = site.path();
        auto holder = dao::DBEngine::OpenDatabase(site.dbPath(), true);
        // Released once events run, which is after the box is answered.
        QTimer::singleShot(0, [&] { holder->Close(); });
        gw.boxes().answer(vbOK);
        gblnDatabaseClosed = true;

        subOpenDatabase();
        QCOMPARE(gw.boxes().count(), 1);
        const ShownBox box = gw.boxes().last();
        QVERIFY2(box.prompt.startsWith("Non-fatal Error (3045 ) in " + kProcedure + "\r"), qPrintable(box.prompt));
        QVERIFY(box.prompt.endsWith("\r\rProbably cause: Administrator was repairing the database. Please wait a few "
                                    "seconds, then press OK to continue."));
        QCOMPARE(box.flags, int(vbOKOnly + vbExclamation));
        QVERIFY(gdbDatabase && gdbDatabase->isOpen() && !gblnDatabaseClosed);
    }

    void groupExistsWithoutRegardToCase()
    {
        TestGateways gw;
        TempSite site;
        site.group("Sales").group("Sales*");
        gstrCurrentDatabasePath = site.path();
        gblnDatabaseClosed = true;
        QVERIFY(fnGroupExists("sales"));
        QVERIFY(fnGroupExists("SALES*"));
        QVERIFY(!fnGroupExists("Sale"));
        QVERIFY(!fnGroupExists("S*"));

        // A database object lost while events ran is opened again, without a box.
        gdbDatabase->Close();
        QVERIFY(!gblnDatabaseClosed);
        QVERIFY(fnGroupExists("Sales"));
        QVERIFY(gdbDatabase->isOpen());
        QCOMPARE(gw.boxes().count(), 0);
    }

    void busyResponse()
    {
        TestGateways gw;
        FakeMain screen;
        setMainScreen(&screen);
        // The first lock is retried in silence, the next one asks.
        QCOMPARE(fnDatabaseBusyResponse("locked", 3260, "p"), int(vbRetry));
        QCOMPARE(gw.boxes().count(), 0);
        QCOMPARE(gintDatabaseRetryCount, 1);
        gw.boxes().answer(vbNo);
        QCOMPARE(fnDatabaseBusyResponse("read-only", 3027, "p"), int(vbCancel));
        QCOMPARE(gintDatabaseRetryCount, 0);
        QCOMPARE(gw.boxes().last().prompt,
                 QStringLiteral("The database is currently updating.  Would you like to retry ?"));
        QCOMPARE(gw.boxes().last().flags, int(vbYesNo + vbQuestion));
        QCOMPARE(gw.boxes().last().title, QStringLiteral(" VESK-OR Pro "));
        QCOMPARE(fnDatabaseBusyResponse("locked", 3260, "p"), int(vbRetry)); // silent again
        QCOMPARE(gw.boxes().count(), 1);

        gw.boxes().answer(vbOK);
        QCOMPARE(fnDatabaseBusyResponse("No current record", 3021, "p"), int(vbCancel));
        QCOMPARE(gw.boxes().last().prompt,
                 QStringLiteral("Error=3021\r\n Error message=No current record. Update cancelled."));
        QCOMPARE(gw.boxes().last().flags, int(vbExclamation));
    }
};

QTEST_GUILESS_MAIN(TstModDatabase)
#include "tst_moddatabase.moc"
