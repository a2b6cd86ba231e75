// Start-up on real site files: finding the database through veskor.ini, each
// failure's box and what follows it, the forced-shutdown file.
#include "countingscreen.h"
#include "dao/dao.h"
#include "kernel/globals.h"
#include "ondisk.h"
#include "otherclient.h"
#include "platform/mounts.h"
#include "start/startup.h"
#include "start/welcome.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <optional>

using namespace platform;

namespace {

bool writeIni(const TempSite& site, const QString& dataPath)
{
    return writeFile(site.iniPath(), "[DataPath]\r\nDataPath=" + dataPath.toUtf8() + "\r\n");
}

// The expected text with %1 replaced (QString::arg would warn about texts without it).
QString withFolder(QString text, const QString& folder)
{
    return text.replace(QStringLiteral("%1"), folder);
}

const QString kTitle = QStringLiteral(" VESK-OR Pro  - Error in Initialize Local Database");

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        resetWelcomeScreen();
        setMountTable(std::nullopt);
        dao::DBEngine::setBusyTimeoutMs(2000);
    }

    void initializeFailures_data()
    {
        QTest::addColumn<QString>("damage");
        QTest::addColumn<QList<int>>("answers");
        QTest::addColumn<QString>("begins"); // the last box's text
        QTest::addColumn<QString>("prompt"); // its end; %1 the database folder
        QTest::addColumn<int>("flags");
        QTest::addColumn<bool>("ends");

        const QString cannotConnect = QStringLiteral(
            "%1veskor.mdb\rVESK-OR is unable to connect to a database at this path. \rYou may have lost your network "
            "connection, or you are running the software on a notebook PC which is not connected to the LAN. Unable "
            "to continue.");
        QTest::newRow("53 no veskor.ini")
            << "no ini" << QList<int>{vbOK} << QStringLiteral("")
            << QStringLiteral("The VESKOR.INI file is missing from the Application Path.\r\nPlease ask your VESK-OR "
                              "Administrator to correct this problem.\r\nUnable to continue. Press OK to exit.")
            << int(vbCritical) << true;
        QTest::newRow("3343 garbage file")
            << "garbage" << QList<int>{vbOK} << QStringLiteral("")
            << QStringLiteral("\rPlease inform the Network Supervisor that the database is damaged and must be "
                              "repaired. Probable cause - someone switched off or crashed their PC whilst updating "
                              "the database on the server.")
            << int(vbExclamation) << false;
        QTest::newRow("3024 Retry, then Cancel") << "no database" << QList<int>{vbRetry, vbCancel} << QString()
                                                 << cannotConnect << int(vbRetryCancel + vbCritical) << true;
        QTest::newRow("3044 no such folder") << "no folder" << QList<int>{vbOK} << QStringLiteral("Error: 3044 - ")
                                             << QStringLiteral("\r\rPress OK to exit.") << int(vbCritical) << true;
        QTest::newRow("3055 a folder named veskor.mdb")
            << "folder" << QList<int>{vbOK} << QString()
            << QString(cannotConnect).replace("continue.", "continue. Press OK to exit.") << int(vbCritical) << true;
        QTest::newRow("not a 2005 database")
            << "version" << QList<int>{vbOK} << QStringLiteral("")
            << QStringLiteral("%1veskor.mdb\r\nis not a VESK-OR 2005 database.\r\n\r\nPlease ask your VESK-OR "
                              "Administrator to correct this problem.\r\nUnable to continue. Press OK to exit.")
            << int(vbCritical) << true;
        QTest::newRow("3050 three times")
            << "locked" << QList<int>{vbOK}
            << QStringLiteral("Error (3050 ) in modDatabase - subInitializeLocalDatabase event\r")
            << QStringLiteral("\rUnable to start VESK-OR at this time. Please try again...") << int(vbOKOnly) << false;
    }
    void initializeFailures()
    {
        QFETCH(QString, damage);
        QFETCH(QList<int>, answers);
        QFETCH(QString, begins);
        QFETCH(QString, prompt);
        QFETCH(int, flags);
        QFETCH(bool, ends);

        TestGateways gw;
        TempSite site;
        CountingScreen board;
        setMainScreen(&board);
        gRun.gstrApplicationPath = site.path();
        std::optional<OtherClient> otherClient;
        if (damage == "no ini")
            QVERIFY(QFile::remove(site.iniPath()));
        if (damage == "garbage")
            QVERIFY(writeFile(site.dbPath(), QByteArray(4096, 'x')));
        if (damage == "no database" || damage == "folder")
            QVERIFY(QFile::remove(site.dbPath()));
        if (damage == "folder")
            QVERIFY(QDir().mkdir(site.dbPath()));
        if (damage == "no folder")
            QVERIFY(writeIni(site, site.path() + QStringLiteral("gone/")));
        if (damage == "version")
            site.setting(QStringLiteral("DatabaseVersion"), QStringLiteral("2004"));
        if (damage == "locked")
            QVERIFY(otherClient.emplace(site).begin("BEGIN EXCLUSIVE"));
        for (int a : answers) {
            gw.boxes().answer(a);
        }

        bool accepted = true;
        const auto ended = TestGateways::endCodeOf([&] { accepted = subInitializeLocalDatabase(); });
        otherClient.reset();

        QCOMPARE(gw.boxes().count(), answers.size());
        const ShownBox box = gw.boxes().last();
        const QString expected = withFolder(prompt, gRun.gstrCurrentDatabasePath);
        QVERIFY2(box.prompt.startsWith(begins) && box.prompt.endsWith(expected), qPrintable(box.prompt));
        QCOMPARE(box.flags, flags);
        QCOMPARE(box.title, kTitle);
        QCOMPARE(ended.has_value(), ends);
        // A failure that does not end the run leaves without a database, and frmMain goes.
        QCOMPARE(board.unloads > 0, !ends);
        if (!ends) {
            QVERIFY(!gRun.gdbDatabase);
            QVERIFY(!accepted);
        }
        QVERIFY(!welcomeScreen().timerWelcomeEnabled());
        if (damage == "locked") {
            QCOMPARE(gw.clock().sleptMs(), 3 * 2000); // the box after the third two-second wait
        }
    }

    // The folder veskor.ini names, the program's own folder when the value is
    // shorter than two characters, and a UNC folder found at its mount.
    void dataPath_data()
    {
        QTest::addColumn<QString>("dataPath"); // %1 the site folder without its closing separator
        QTest::addColumn<QString>("expected"); // gstrDatabasePath; %1 as above
        for (const auto& [name, dataPath, expected] : {std::tuple{"empty", "", "%1/"},
                                                       {"one character", "x", "%1/"},
                                                       {"closing separator added", "%1", "%1/"},
                                                       {"UNC", "\\\\srv\\share", "\\\\srv\\share\\"}})
            QTest::newRow(name) << QString(dataPath) << QString(expected);
    }
    void dataPath()
    {
        QFETCH(QString, dataPath);
        QFETCH(QString, expected);
        TestGateways gw;
        TempSite site;
        const QString folder = site.path().chopped(1);
        setMountTable(MountTable{{QStringLiteral("//srv/share"), folder, QStringLiteral("cifs")}});
        QVERIFY(writeIni(site, withFolder(dataPath, folder)));
        gRun.gstrApplicationPath = site.path();

        subInitializeLocalDatabase();
        QCOMPARE(gRun.gstrDatabasePath, withFolder(expected, folder));
        QCOMPARE(gRun.gstrCurrentDatabasePath, gRun.gstrDatabasePath);
        QVERIFY(gRun.gdbDatabase && gRun.gdbDatabase->isOpen());
        QCOMPARE(gw.boxes().count(), 0);
    }

    void forcedShutDown_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("shutDown");
        QTest::newRow("true in any case") << " tRUe " << true;
        QTest::newRow("FALSE") << "FALSE" << false;
        QTest::newRow("no file") << QString() << false;
    }
    void forcedShutDown()
    {
        QFETCH(QString, value);
        QFETCH(bool, shutDown);
        TestGateways gw;
        TempSite site;
        gRun.gstrApplicationPath = site.path();
        gRun.gstrGivenCommandLine = QStringLiteral("  -UID:jo  -STS:Busy ");
        QVERIFY(value.isNull() || writeFile(site.path() + "forceshutdown.ini",
                                            "[forceshutdown]\nForceShutDown=" + value.toUtf8() + "\n"));

        const auto ended = TestGateways::endCodeOf([] { subInitializeLocalDatabase(); });
        QCOMPARE(gRun.gblnForcedShutDown, shutDown);
        QCOMPARE(ended.has_value(), shutDown);
        const QStringList expected{QStringLiteral("start %1inicheck -UID:jo  -STS:Busy").arg(site.path())};
        QCOMPARE(gw.shell().calls, shutDown ? expected : QStringList());
        QCOMPARE(bool(gRun.gdbDatabase), !shutDown); // a shutdown ends before the open
    }
};

QTEST_GUILESS_MAIN(TestStartup)
#include "tst_startup.moc"
