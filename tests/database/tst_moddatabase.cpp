// The open-and-close regime of the shared file, the answers to a failed open,
// the group look-up and the answer to a failed Update.
#include "countingscreen.h"
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>

using namespace platform;

namespace {

const QString kProcedure = QStringLiteral("modDatabase - subOpenDatabase event");

enum class Broken
{
    MissingFile,
    MissingFolder,
    Garbage,
    FolderAsFile
};

void useSite(const QString& folder)
{
    gstrCurrentDatabasePath = folder;
    gblnDatabaseClosed = true;
}

} // namespace

class TstModDatabase : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        TimerCloseDatabase().stop();
    }

    void burstSharesOneOpenAndTheTickCloses()
    {
        TestGateways gw;
        TempSite site;
        useSite(site.path());
        subOpenDatabase();
        const auto first = gdbDatabase;
        QVERIFY(first->isOpen() && !gblnDatabaseClosed && TimerCloseDatabase().isActive());
        subCloseDatabase();
        subOpenDatabase();
        QCOMPARE(gdbDatabase, first);
        QVERIFY(first->isOpen());

        // The real timer closes two seconds after the real open.
        QTRY_COMPARE_WITH_TIMEOUT(glngDatabaseCloseCount, 1, 4000);
        QVERIFY(!first->isOpen() && gblnDatabaseClosed && !TimerCloseDatabase().isActive());
        subOpenDatabase();
        QVERIFY(gdbDatabase != first && gdbDatabase->isOpen());
    }

    void failedOpen_data()
    {
        QTest::addColumn<Broken>("broken");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("end");
        QTest::addColumn<int>("flags");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("unloads");
        const int retryCancel = vbRetryCancel + vbExclamation;
        // Retry goes round again: three more tries, then the same box.
        QTest::newRow("missing file: Retry, then Cancel ends without unloading")
            << Broken::MissingFile << QList<int>{vbRetry, vbCancel} << "Non-fatal Error (3024 ) in " + kProcedure + "\r"
            << "\r\rPossible Causes: \r                 1) The server is busy deleting the VESKOR.LDB file.\r       "
               "          2) The network cable has been disconnected."
            << retryCancel << " VESK-OR Pro  - Error in subOpenDatabase" << 0;
        QTest::newRow("missing folder: Cancel unloads and ends")
            << Broken::MissingFolder << QList<int>{vbCancel}
            << "Database Path Error (3044 ) in " + kProcedure + "\r\n\r\n"
            << "\r\n\r\nPossible causes: \r\n1) Invalid Database Path in VESKOR.INI. \r\n2) You do not have access "
               "permissions to the database via this path. \r\n3) The Network connection may have been permanently or "
               "temporarily lost.\r\n\r\nSelect Retry to attempt to open the database again.\r\nSelect Cancel to exit."
            << retryCancel << QString() << 1;
        QTest::newRow("not a database: damaged")
            << Broken::Garbage << QList<int>{vbOK} << QString()
            << "\rPlease inform the Network Supervisor that the database is damaged and must be repaired."
            << int(vbExclamation) << kProcedure + " - Fatal Error in  VESK-OR Pro " << 1;
        QTest::newRow("a folder by the file's name: any other number")
            << Broken::FolderAsFile << QList<int>{vbOK} << "Error (3055 - " << QString() << 0 << QString() << 1;
    }

    void failedOpen()
    {
        QFETCH(Broken, broken);
        QFETCH(QList<int>, answers);
        QFETCH(QString, start);
        QFETCH(QString, end);
        QFETCH(int, flags);
        QFETCH(QString, title);
        QFETCH(int, unloads);
        TestGateways gw;
        CountingScreen screen;
        setMainScreen(&screen);
        TempSite site;
        useSite(broken == Broken::MissingFolder ? site.path() + "gone" + QDir::separator() : site.path());
        if (broken != Broken::MissingFolder)
            QVERIFY(QFile::remove(site.dbPath()));
        if (broken == Broken::FolderAsFile)
            QVERIFY(QDir().mkdir(site.dbPath()));
        if (broken == Broken::Garbage) {
            QFile file(site.dbPath());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(4096, 'x')) == 4096);
        }
        for (int answer : answers)
            gw.boxes().answer(answer);

        QCOMPARE(TestGateways::endCodeOf([] { subOpenDatabase(); }), std::optional<int>(0));
        QCOMPARE(gw.boxes().count(), answers.size());
        for (const ShownBox& box : gw.boxes().shown()) {
            QVERIFY2(box.prompt.startsWith(start) && box.prompt.endsWith(end), qPrintable(box.prompt));
            QCOMPARE(box.flags, flags);
            QCOMPARE(box.title, title);
        }
        QCOMPARE(screen.unloads, unloads);
        // Three tries a round, 500 and 1000 ms apart, counted on the status bar.
        QCOMPARE(gw.clock().sleptMs(), 1500 * answers.size());
        QCOMPARE(screen.panelText(2), QStringLiteral(" Opening database - try #2"));
    }

    void exclusiveOpenIsWaitedOut()
    {
        TestGateways gw;
        TempSite site;
        useSite(site.path());
        auto holder = dao::DBEngine::OpenDatabase(site.dbPath(), true);
        QTimer::singleShot(0, [&] { holder->Close(); }); // once events run, after the box
        gw.boxes().answer(vbOK);

        subOpenDatabase();
        QCOMPARE(gw.boxes().last().prompt.left(27), QStringLiteral("Non-fatal Error (3045 ) in "));
        QVERIFY(gw.boxes().last().prompt.endsWith("\r\rProbably cause: Administrator was repairing the database. "
                                                  "Please wait a few seconds, then press OK to continue."));
        QCOMPARE(gw.boxes().last().flags, int(vbExclamation));
        QVERIFY(gdbDatabase && gdbDatabase->isOpen() && !gblnDatabaseClosed);
    }

    void groupExists()
    {
        TestGateways gw;
        TempSite site;
        site.group("Sales").group("Sales*");
        useSite(site.path());
        QVERIFY(fnGroupExists("sales") && fnGroupExists("SALES*"));
        QVERIFY(!fnGroupExists("Sale") && !fnGroupExists("S*"));

        // A database object lost while events ran is opened again, without a box.
        gdbDatabase->Close();
        QVERIFY(fnGroupExists("Sales") && gdbDatabase->isOpen());
        QCOMPARE(gw.boxes().count(), 0);
    }
};

QTEST_GUILESS_MAIN(TstModDatabase)
#include "tst_moddatabase.moc"
