// Start-up on real site files: veskor.ini, failed opens, forced shutdown, who the person is, and a
// failure that reaches the client's event loop.
#include "columns.h"
#include "countingscreen.h"
#include "dao/dao.h"
#include "dao/jeterror.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "ondisk.h"
#include "otherclient.h"
#include "platform/mounts.h"
#include "platform/msgbox.h"
#include "start/clientapplication.h"
#include "start/commandline.h"
#include "start/startup.h"
#include "start/welcome.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QDir>
#include <QEvent>
#include <QFile>
#include <QTest>
#include <QWidget>
#include <functional>
#include <new>
#include <optional>
#include <stdexcept>

using namespace platform;

namespace {

bool writeIni(const TempSite& site, const QString& dataPath)
{
    return writeFile(site.iniPath(), "[DataPath]\r\nDataPath=" + dataPath.toUtf8() + "\r\n");
}

// The expected text with %1 replaced (QString::arg would warn about texts without it).
QString withFolder(QString text, const QString& folder)
{
    return text.replace("%1", folder);
}

const QString kTitle = " VESK-OR Pro  - Error in Initialize Local Database";

// gstrDefaultUser, gstrUserID, the validity flags, whether the run ends and the
// welcome screen unloads afterwards; Ann Lee's status (she starts "Out").
struct Case
{
    QString commandLine, login, person, userID;
    bool validName, validID, ends, unloadsWelcome;
    QString annStatus;
};

// A control whose event handler fails as it is told.
class FailingControl : public QWidget
{
public:
    explicit FailingControl(QWidget* window) : QWidget(window)
    {
        setObjectName("cmdProbe");
    }
    std::function<void()> failure;

protected:
    bool event(QEvent* e) override
    {
        if (e->type() == QEvent::User) {
            failure();
        }
        return QWidget::event(e);
    }
};

} // namespace

Q_DECLARE_METATYPE(Case)

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
        // begins: the last box's text; prompt: its end; %1 the database folder
        addColumns<QString, QList<int>, QString, QString, int, bool>("damage", "answers", "begins", "prompt", "flags",
                                                                     "ends");

        const auto row = [](const char* name, const char* damage, QList<int> answers, const QString& begins,
                            const QString& prompt, int flags, bool ends) {
            QTest::newRow(name) << damage << answers << begins << prompt << flags << ends;
        };
        const QString cannotConnect =
            "%1veskor.mdb\rVESK-OR is unable to connect to a database at this path. \rYou may have lost your network "
            "connection, or you are running the software on a notebook PC which is not connected to the LAN. Unable "
            "to continue.";
        const QString askAdmin =
            "Please ask your VESK-OR Administrator to correct this problem.\r\nUnable to continue. Press OK to exit.";
        row("53 no veskor.ini", "no ini", {vbOK}, "",
            "The VESKOR.INI file is missing from the Application Path.\r\n" + askAdmin, vbCritical, true);
        row("3024 Retry, then Cancel", "no database", {vbRetry, vbCancel}, "", cannotConnect,
            vbRetryCancel + vbCritical, true);
        row("3044 no such folder", "no folder", {vbOK}, "Error: 3044 - ", "\r\rPress OK to exit.", vbCritical, true);
        row("3055 a folder named veskor.mdb", "folder", {vbOK}, "",
            QString(cannotConnect).replace("continue.", "continue. Press OK to exit."), vbCritical, true);
        row("3050 three times", "locked", {vbOK}, "Error (3050 ) in modDatabase - subInitializeLocalDatabase event\r",
            "\rUnable to start VESK-OR at this time. Please try again...", vbOKOnly, false);
    }
    void initializeFailures()
    {
        auto [damage, answers, begins, prompt, flags, ends] = fetch<QString, QList<int>, QString, QString, int, bool>(
            "damage", "answers", "begins", "prompt", "flags", "ends");

        TestGateways gw;
        TempSite site;
        CountingScreen board;
        setMainScreen(&board);
        gRun.gstrApplicationPath = site.path();
        std::optional<OtherClient> otherClient;
        if (damage == "no ini")
            QVERIFY(QFile::remove(site.iniPath()));
        if (damage == "no database" || damage == "folder")
            QVERIFY(QFile::remove(site.dbPath()));
        if (damage == "folder")
            QVERIFY(QDir().mkdir(site.dbPath()));
        if (damage == "no folder")
            QVERIFY(writeIni(site, site.path() + "gone/"));
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
        // dataPath: %1 the site folder without its closing separator; expected: gstrDatabasePath; %1 as above
        addColumns<QString, QString>("dataPath", "expected");
        for (const auto& [name, dataPath, expected] : {std::tuple{"empty", "", "%1/"},
                                                       {"one character", "x", "%1/"},
                                                       {"closing separator added", "%1", "%1/"},
                                                       {"UNC", "\\\\srv\\share", "\\\\srv\\share\\"}})
            QTest::newRow(name) << QString(dataPath) << QString(expected);
    }
    void dataPath()
    {
        auto [dataPath, expected] = fetch<QString, QString>("dataPath", "expected");
        TestGateways gw;
        TempSite site;
        const QString folder = site.path().chopped(1);
        setMountTable(MountTable{{"//srv/share", folder, "cifs"}});
        QVERIFY(writeIni(site, withFolder(dataPath, folder)));
        gRun.gstrApplicationPath = site.path();

        subInitializeLocalDatabase();
        QCOMPARE(gRun.gstrDatabasePath, withFolder(expected, folder));
        QCOMPARE(gRun.gstrCurrentDatabasePath, gRun.gstrDatabasePath);
        QVERIFY(gRun.gdbDatabase && gRun.gdbDatabase->isOpen());
    }

    void forcedShutDown_data()
    {
        addColumns<QString, bool>("value", "shutDown");
        QTest::newRow("true in any case") << " tRUe " << true;
        QTest::newRow("FALSE") << "FALSE" << false;
    }
    void forcedShutDown()
    {
        auto [value, shutDown] = fetch<QString, bool>("value", "shutDown");
        TestGateways gw;
        TempSite site;
        gRun.gstrApplicationPath = site.path();
        gRun.gstrGivenCommandLine = "  -UID:jo  -STS:Busy ";
        QVERIFY(value.isNull() || writeFile(site.path() + "forceshutdown.ini",
                                            "[forceshutdown]\nForceShutDown=" + value.toUtf8() + "\n"));

        const auto ended = TestGateways::endCodeOf([] { subInitializeLocalDatabase(); });
        QCOMPARE(gRun.gblnForcedShutDown, shutDown);
        QCOMPARE(ended.has_value(), shutDown);
        const QStringList expected{QStringLiteral("start %1inicheck -UID:jo  -STS:Busy").arg(site.path())};
        QCOMPARE(gw.shell().calls, shutDown ? expected : QStringList());
        QCOMPARE(bool(gRun.gdbDatabase), !shutDown); // a shutdown ends before the open
    }

    void identify_data()
    {
        QTest::addColumn<Case>("c");
        // clang-format off
        QTest::newRow("blank: the login name") << Case{"", "alee", "Ann Lee", "alee", true, true, false, false, "Out"};
        QTest::newRow("blank: no login is Unknown") << Case{"", "", "Guest Desk", "Unknown", true, true, false, false, "Out"};
        QTest::newRow("blank: 63-letter login") << Case{"", QString(63, u'j'), "", QString(63, u'j'), false, false, false, true, "Out"};
        QTest::newRow("blank: 64-letter login is Unknown") << Case{"", QString(64, u'j'), "Guest Desk", "Unknown", true, true, false, false, "Out"};
        QTest::newRow("blank: wildcard login matches itself only") << Case{"", "a*", "", "a*", false, false, false, true, "Out"};
        QTest::newRow("legacy name, any case") << Case{"ann LEE", "jo", "Ann Lee", "alee", true, true, false, false, "Out"};
        QTest::newRow("legacy name without UID") << Case{"No Uid", "jo", "No Uid", "jo", true, false, true, false, "Out"};
        QTest::newRow("legacy unknown name") << Case{"Nobody Here", "jo", "Nobody Here", "jo", false, false, true, false, "Out"};
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
        site.person("Ann Lee", "alee").person("Guest Desk", "Unknown").person("No Uid").status("Ann Lee", "Out");
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
        QCOMPARE(gRun.gstrLoginName, c.login.isEmpty() || c.login.size() >= 64 ? "Unknown" : c.login);
        // -STS: takes its word wherever it stands, even before anyone is known.
        QCOMPARE(gRun.gstrCurrentStatus, c.commandLine.contains("-STS:") ? "Busy" : QString());
        gRun.gdbDatabase.reset();
        QCOMPARE(site.value("SELECT Status FROM EmployeeTable WHERE Name = 'Ann Lee'"), c.annStatus);
    }

    void failureReachingTheEventLoop_data()
    {
        addColumns<int, QString>("kind", "prompt");
        QTest::newRow("engine") << 0 << "Run-time error '3218':\r\rCould not update; currently locked.";
        QTest::newRow("language") << 3 << "Run-time error '91':\r\rObject variable or With block variable not set";
        QTest::newRow("out of memory") << 1 << "Error (7 ) in frmProbe - cmdProbe event\rOut of memory";
        QTest::newRow("standard library") << 2
                                          << "Error (51 ) in frmProbe - cmdProbe event\rInternal error: "
                                             "vector::at";
    }

    // Each kind gets one stop box and ends the run with code 1; none aborts.
    void failureReachingTheEventLoop()
    {
        auto [kind, prompt] = fetch<int, QString>("kind", "prompt");
        TestGateways gw;
        gw.boxes().answer(platform::vbOK);
        QWidget window;
        window.setObjectName("frmProbe");
        FailingControl control(&window);
        control.failure = [kind] {
            switch (kind) {
            case 0:
                throw dao::JetError(3218, "Could not update; currently locked.");
            case 1:
                throw std::bad_alloc();
            case 3:
                raiseObjectNotSet();
            default:
                throw std::out_of_range("vector::at");
            }
        };
        QEvent event(QEvent::User);
        QCOMPARE(TestGateways::endCodeOf([&] { QCoreApplication::sendEvent(&control, &event); }),
                 std::optional<int>(1));
        QCOMPARE(gw.boxes().prompts(), QStringList{prompt});
        QCOMPARE(gw.boxes().last().flags, int(platform::vbCritical));
    }
};

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ClientApplication app(argc, argv); // the application the client runs in
    TestStartup test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_startup.moc"
