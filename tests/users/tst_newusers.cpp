// New people's rows, the New User Setup screen, and the launchers, on real site files.
#include "boardfixture.h"
#include "columns.h"
#include "kernel/mainscreen.h"
#include "platform/launcher.h"
#include "realclient.h"
#include "start/newusersetupseam.h"
#include "start/welcome.h"
#include "users/frmnewusersetup.h"
#include "users/newuser.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

using platform::cShellLinkA;

namespace {

const QString kCount = QStringLiteral("SELECT Count(*) FROM %1 WHERE Name = \"Zed Ray\"");

// Ann Lee (alee) and Bob Ray (no login yet) on a site with an extra column, and a
// home whose user-dirs.dirs names the desktop folder.
struct Setup : BoardFixture
{
    QTemporaryDir home;
    Setup()
    {
        site.column(QStringLiteral("New_Mobile")).person(QStringLiteral("Ann Lee"), QStringLiteral("alee"));
        site.person(QStringLiteral("Bob Ray")).setting(QStringLiteral("NewUserDefaultsTable.New_Mobile"), "0800");
        site.setting(QStringLiteral("NewUserDefaultsTable.RefreshRate"), "7")
            .setting(QStringLiteral("NewUserDefaultsTable.SplitterPositionVertical"), "2222");
        qputenv("HOME", home.path().toUtf8());
        qunsetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CURRENT_DESKTOP", "GNOME");
        QDir(home.path()).mkpath(".config");
        writeFile(home.filePath(".config/user-dirs.dirs"), "XDG_DESKTOP_DIR=\"$HOME/Bureau\"\n");
        gRun.gstrLoginName = QStringLiteral("jo");
    }
    QString link(cShellLinkA::SystemFolder folder) const
    {
        return home.filePath(folder == cShellLinkA::Desktop ? "Bureau/VESK-OR [Zed Ray].desktop"
                                                            : ".config/autostart/VESK-OR [Zed Ray].desktop");
    }
    QStringList titles()
    {
        QStringList result;
        for (const ShownBox& box : gw.boxes().shown())
            result << box.title;
        return result;
    }
};

// Runs act on the setup screen once it stands, modal.
void whenSetupShows(std::function<void(frmNewUserSetup*)> act)
{
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [poll, act] {
        if (auto* screen = qobject_cast<frmNewUserSetup*>(QApplication::activeModalWidget())) {
            poll->deleteLater();
            poll->stop();
            act(screen);
        }
    });
    poll->start(20);
}

} // namespace

class TestNewUsers : public QObject
{
    Q_OBJECT

private slots:
    void rowsFromTheDefaults_data()
    {
        // tables: "" for New User Setup's adding; made: EmployeeTable, EmployeeSettingsTable rows; splitter; UID
        addColumns<QString, QString>("tables", "made");
        const auto row = [](const char* name, const char* tables, const char* made) {
            QTest::newRow(name) << tables << made;
        };
        row("setup", "", "1 1 2222 zray");
        row("both", "BothTables", "1 1 1800 ");
        row("employee only", "EmployeeTableOnly", "1 0 <no row> ");
        row("settings only", "EmployeeSettingsTableOnly", "0 1 1800 <no row>");
        row("other value", "Other", "0 0 <no row> <no row>");
    }
    void rowsFromTheDefaults()
    {
        QFETCH(QString, tables);
        Setup s;
        const QString before = s.site.value("SELECT Counter FROM StatusCounterTable");
        gRun.gstrCommandLine = QStringLiteral(" Zed Ray ");
        if (tables.isEmpty())
            QVERIFY(fnAddNewUserToDatabase("Zed Ray", "zray"));
        else
            subAddNewUser(tables);
        const QString made =
            QStringList{s.site.value(kCount.arg("EmployeeTable")), s.site.value(kCount.arg("EmployeeSettingsTable")),
                        s.site.value("SELECT SplitterPositionVertical FROM EmployeeSettingsTable "
                                     "WHERE Name = \"Zed Ray\""),
                        s.site.value("SELECT UID FROM EmployeeTable WHERE Name = \"Zed Ray\"")}
                .join(' ');
        QTEST(made, "made");
        QCOMPARE(s.site.value("SELECT Counter FROM StatusCounterTable").toInt(), before.toInt() + 1);
        if (s.site.value(kCount.arg("EmployeeTable")) == "1")
            QCOMPARE(s.site.value("SELECT New_Mobile FROM EmployeeTable WHERE Name = \"Zed Ray\""), "0800");
        if (s.site.value(kCount.arg("EmployeeSettingsTable")) == "1")
            QCOMPARE(s.site.value("SELECT RefreshRate & SortColumnName & NameColumnOrder & LastModifiedColumnOrder "
                                  "FROM EmployeeSettingsTable WHERE Name = \"Zed Ray\""),
                     "7Name26");
    }

    void noDefaultsRow()
    {
        Setup s;
        s.site.execute("DELETE FROM NewUserDefaultsTable");
        s.gw.boxes().answer(platform::vbOK);
        QVERIFY(!fnAddNewUserToDatabase("Zed Ray", "zray"));
        QCOMPARE(s.gw.boxes().last().prompt, "No User Record in New User Defaults Table.");
        QCOMPARE(s.site.value(kCount.arg("EmployeeTable")), "0");
    }

    void okDecides_data()
    {
        // answer: to the question, when one comes; boxes: their titles; uid: the name's UID afterwards
        addColumns<QString, QString, int, QStringList, QString>("name", "id", "answer", "boxes", "uid");
        const auto row = [](const char* tag, const char* name, const char* id, int answer, const QStringList& boxes,
                            const char* uid) {
            QTest::newRow(tag) << name << id << answer << boxes << uid;
        };
        const int yes = platform::vbYes, no = platform::vbNo;
        const QString add = "Add New User?", sure = "Confirmation required.";
        row("new person", "Zed Ray", "zray", yes, {add}, "zray");
        row("new person declined", "Zed Ray", "zray", no, {add}, "<no row>");
        row("login of another", "Zed Ray", "alee", yes, {add, "Login ID already exists."}, "<no row>");
        row("associate", "Bob Ray", "bray", yes, {sure}, "bray");
        row("associate declined", "Bob Ray", "bray", no, {sure}, "");
        row("ID of another", "Bob Ray", "alee", 0, {"UserID already exists."}, "");
        row("already together", "Ann Lee", "ALEE", 0, {}, "alee");
        row("no name", "", "x", 0, {"UserName is Required"}, "<no row>");
        row("illegal", "Zed/Ray\"", "z", 0, {"Illegal Character."}, "<no row>");
        row("no ID", "Zed Ray", "", 0, {"UserID is Required"}, "<no row>");
    }
    void okDecides()
    {
        auto [name, answer, boxes] = fetch<QString, int, QStringList>("name", "answer", "boxes");
        Setup s;
        s.gw.boxes().answer(answer ? answer : platform::vbOK).answer(platform::vbOK);
        frmNewUserSetup screen;
        screen.Form_Load();
        QCOMPARE(screen.ComboNewUserSetup->count(), 2);
        screen.ComboNewUserSetup->setEditText(name);
        QFETCH(QString, id);
        screen.txtNewLoginID->setText(id);
        screen.cmdNewUserSetupOK->click();
        QCOMPARE(s.titles(), boxes);
        QTEST(s.site.value("SELECT UID FROM EmployeeTable WHERE Name = " + dao::quote(name)), "uid");
        QCOMPARE(gRun.gblnNewUserSetupDone, gRun.gstrDefaultUser == name && !name.isEmpty());
        if (QTest::currentDataTag() == QByteArray("illegal"))
            QCOMPARE(screen.ComboNewUserSetup->currentText(), "ZedRay");
    }

    // The start-up launcher only where the site allows it; a forced shutdown ends the run from this screen too.
    void loadAndForcedShutDown()
    {
        Setup s;
        s.site.setting("AllowUserToAddVeskOrToStartupFolder", "False");
        database::setForcedShutDown(s.site.path(), true);
        frmNewUserSetup screen;
        screen.Form_Load();
        QVERIFY(!screen.chkAddStartUpIcon->isEnabled() && screen.chkAddDesktopIcon->isEnabled());
        QCOMPARE(screen.tmrCheckForForcedShutDownFromNewUserSetup.interval(), 5000);
        QCOMPARE(TestGateways::endCodeOf([&] { screen.tmrCheckForForcedShutDownFromNewUserSetup_Timer(); }), 0);
        QCOMPARE(s.gw.shell().calls, QStringList{"start /opt/veskor/inicheck -UID:  -STS:ForcedShutDown"});
    }

    void execQuoting_data()
    {
        addColumns<QString, QString>("argument", "inFile");
        const auto row = [](const char* name, const char* argument, const char* inFile) {
            QTest::newRow(name) << argument << inFile;
        };
        row("plain", "-UID:jo", "-UID:jo");
        row("blank", "-UID:jo b", "\"-UID:jo b\"");
        row("backslash", "a\\b", "\"a\\\\\\\\b\"");
        row("quote", "a\"b", "\"a\\\\\"b\"");
        row("dollar", "$x", "\"\\\\$x\"");
        row("percent", "50%", "50%%");
        row("empty", "", "\"\"");
    }
    void execQuoting()
    {
        QFETCH(QString, argument);
        TestGateways gw;
        QTemporaryDir dir;
        cShellLinkA link;
        link.ExeName = "/opt/v/user";
        link.ExeArgs = {argument};
        const QString path = dir.filePath("VESK-OR [Zed Ray].desktop");
        QVERIFY(link.CreateLink(path));
        const QString exec = QString::fromUtf8(readFile(path)).section("\nExec=", 1).section('\n', 0, 0);
        QTEST(exec.mid(12), "inFile");
        link.ExeArgs.clear();
        QVERIFY(link.GetLinkInfo(path));
        QCOMPARE(link.ExeArgs, QStringList{argument});
        validate(path);
    }

    // An unknown login's first start: the setup screen, both launchers, the board
    // on the new person; the desktop launcher then starts the real client for them.
    void firstStartThenTheLauncher()
    {
        Setup s;
        s.gw.boxes().answer(platform::vbYes);
        setNewUserSetupScreen(&frmNewUserSetup::showScreen);
        setMainScreenFactory(&frmMain::load);
        whenSetupShows([](frmNewUserSetup* screen) {
            QVERIFY(screen->ComboNewUserSetup->currentText().isEmpty());
            screen->ComboNewUserSetup->setEditText("Zed Ray");
            screen->chkAddDesktopIcon->setChecked(true);
            screen->chkAddStartUpIcon->setChecked(true);
            screen->cmdNewUserSetupOK->click();
        });
        subWelcomeActivate(s.site.path());
        QVERIFY(welcomeScreen().timerWelcomeEnabled());
        QCOMPARE(s.site.value("SELECT UID FROM EmployeeTable WHERE Name = \"Zed Ray\""), "jo");
        s.form = dynamic_cast<frmMain*>(&loadMainScreen()); // the splash's hand-over
        QVERIFY(s.form && s.form->caption().contains("[Zed Ray]"));
        setNewUserSetupScreen({});

        cShellLinkA link;
        QVERIFY(link.GetLinkInfo(s.link(cShellLinkA::StartUp)));
        QVERIFY(link.GetLinkInfo(s.link(cShellLinkA::Desktop)));
        QCOMPARE(link.ExeName, s.site.path() + "user");
        QCOMPARE(link.ExeArgs, QStringList{"-UID:jo"});
        QVERIFY(QFileInfo(s.link(cShellLinkA::Desktop)).isExecutable());
        QVERIFY(
            s.gw.shell().calls.contains("start gio set " + s.link(cShellLinkA::Desktop) + " metadata::trusted true"));
        validate(s.link(cShellLinkA::Desktop));

        s.site.execute("UPDATE EmployeeTable SET ActiveFlag = \"No\"");
        RealClient client(s.site.path(), link.ExeArgs);
        QTRY_COMPARE_WITH_TIMEOUT(s.site.value("SELECT ActiveFlag FROM EmployeeTable WHERE Name = \"Zed Ray\""), "Yes",
                                  20000);
        QCOMPARE(client.boxesShown(), QByteArray());

        s.gw.boxes().answer(platform::vbYes);
        s.action("mnuFile_Uninstall")->trigger();
        QVERIFY(!QFile::exists(s.link(cShellLinkA::Desktop)) && !QFile::exists(s.link(cShellLinkA::StartUp)));
    }

    void cancelEndsTheRun()
    {
        Setup s;
        setNewUserSetupScreen(&frmNewUserSetup::showScreen);
        whenSetupShows([](frmNewUserSetup* screen) { screen->close(); });
        subWelcomeActivate(s.site.path());
        setNewUserSetupScreen({});
        QVERIFY(gRun.gblnNewUserSetupCancelled && !welcomeScreen().timerWelcomeEnabled());
        QCOMPARE(s.site.value(kCount.arg("EmployeeTable")), "0");
    }

private:
    // desktop-file-validate accepts the launcher, when it is installed.
    static void validate(const QString& path)
    {
        const QString validator = QStandardPaths::findExecutable("desktop-file-validate");
        if (validator.isEmpty())
            return;
        QProcess check;
        check.start(validator, {path});
        QVERIFY(check.waitForFinished());
        QVERIFY2(check.exitCode() == 0, check.readAll().constData());
    }
};

QTEST_MAIN(TestNewUsers)
#include "tst_newusers.moc"
