// The tray icon and its menu, and one board per person (the local socket's two ends).
#include "board/frmsystray.h"
#include "board/singleinstance.h"
#include "board/statusicons.h"
#include "boardfixture.h"
#include "columns.h"

#include <QApplication>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString kJo = "Jo Bloggs";

// Jo's board on a site, loaded and activated as the client does it.
struct TrayBoard : BoardFixture
{
    explicit TrayBoard(int minimizeSetting)
    {
        site.person(kJo, "jo").person("Ann Lee").status(kJo, "In");
        site.execute(QStringLiteral("UPDATE EmployeeSettingsTable SET MinimizeSetting = %1").arg(minimizeSetting));
        gRun.gstrDefaultUser = kJo;
        gRun.gstrUserID = "jo";
        form = static_cast<frmMain*>(frmMain::load());
        QApplication::setActiveWindow(form); // its Activate
        QCoreApplication::processEvents();
    }
    QString field(const QString& column) const
    {
        return site.value(QStringLiteral("SELECT %1 FROM EmployeeTable WHERE Name = ").arg(column) + dao::quote(kJo));
    }
};

QImage imageOf(const QIcon& icon, int size)
{
    return icon.pixmap(size, size).toImage();
}

} // namespace

class TestTray : public QObject
{
    Q_OBJECT

private slots:
    // The socket tests point these at folders of their own; the boards after them use the defaults.
    void cleanup()
    {
        qunsetenv("TMPDIR");
        qunsetenv("XDG_RUNTIME_DIR");
    }

    void trayObject_data()
    {
        addColumns<int, bool>("minimizeSetting", "tray");
        QTest::newRow("task bar only") << 0 << false;
        QTest::newRow("tray only") << 1 << true;
        QTest::newRow("both") << 2 << true;
    }

    // Activate makes the tray object only when MinimizeSetting asks for one, with
    // the eight entries and their keys.
    void trayObject()
    {
        auto [minimizeSetting, tray] = fetch<int, bool>("minimizeSetting", "tray");
        TrayBoard board(minimizeSetting);
        QCOMPARE(board.form->sysTrayIconExists(), tray);
        if (!tray) {
            QCOMPARE(board.form->trayTip(), QString());
            return;
        }
        frmSysTray* sysTray = board.form->m_frmSysTray;
        QStringList entries;
        for (int i = 0; i < sysTray->mnuSysTray().size(); ++i) {
            QAction* entry = sysTray->mnuSysTray()[i];
            entries << (entry->isSeparator() ? "-" : entry->text()) + "|" + sysTray->menuKey(i);
        }
        QCOMPARE(entries, QStringList({"&Restore VESK-OR|Restore", "Mi&nimize|Minimize", "Ma&ximize|Maximize",
                                       "&Close|Close", "-|", "Set YOUR Status to IN|In", "Set YOUR Status to OUT|Out",
                                       "Set YOUR Status to BUSY|Busy"}));
        QCOMPARE(sysTray->DefaultMenuIndex(), 3); // the last entry flagged default
    }

    void menuClick_data()
    {
        // status: the row's name is the entry's key
        addColumns<QString, long long, Qt::WindowStates>("status", "code", "state");
        QTest::newRow("Out") << "Out" << 1LL << Qt::WindowStates();
        QTest::newRow("Busy") << "Busy" << 2LL << Qt::WindowStates();
        QTest::newRow("Minimize") << "In" << 3LL << Qt::WindowStates(Qt::WindowMinimized);
        QTest::newRow("Maximize") << "In" << 3LL << Qt::WindowStates(Qt::WindowMaximized);
    }

    // The status entries write without asking for rights (the Group button is off);
    // the tray's tip and picture follow. Minimised where no tray is available, the
    // board stays on the task bar, even when it is to live in the tray only.
    void menuClick()
    {
        const QString key = QTest::currentDataTag();
        auto [status, code] = fetch<QString, long long>("status", "code");
        TrayBoard board(1);
        QVERIFY(!QSystemTrayIcon::isSystemTrayAvailable());
        QVERIFY(!board.form->groupButtonEnabled());
        frmSysTray* sysTray = board.form->m_frmSysTray;
        const int index =
            int(QStringList({"Restore", "Minimize", "Maximize", "Close", "", "In", "Out", "Busy"}).indexOf(key));
        emit sysTray->MenuClick(index, key);
        QCoreApplication::processEvents();

        QCOMPARE(board.field("Status"), status);
        QCOMPARE(sysTray->ToolTip(), QStringLiteral(" VESK-OR Pro  [Jo Bloggs] '%1'").arg(status));
        QCOMPARE(imageOf(sysTray->IconHandle(), 16), imageOf(statusIcon(code), 16));
        QTEST(board.form->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), "state");
        QVERIFY(board.form->isVisible());

        // Back from the tray: Restore and the double click both give the normal window.
        emit sysTray->MenuClick(0, "Restore");
        QCOMPARE(board.form->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), Qt::WindowStates());
        board.form->showMinimized();
        emit sysTray->SysTrayDoubleClick(Qt::LeftButton);
        QVERIFY(!board.form->isMinimized());
    }

    // The right button pops the menu up; unloading takes the icon down, after
    // which the tip goes nowhere; "Close" ends the run in the ordinary way.
    void rightButtonUnloadAndClose()
    {
        TrayBoard board(2);
        QPointer<frmSysTray> sysTray = board.form->m_frmSysTray;
        emit sysTray->SysTrayMouseDown(Qt::LeftButton);
        QVERIFY(!sysTray->mnuPopup()->isVisible());
        emit sysTray->SysTrayMouseDown(Qt::RightButton);
        QVERIFY(sysTray->mnuPopup()->isVisible());
        sysTray->mnuPopup()->hide();

        board.form->subUnloadSysTrayIcon();
        QVERIFY(sysTray.isNull());
        QVERIFY(!board.form->sysTrayIconExists());
        board.form->setTrayTip("x");
        QCOMPARE(board.form->trayTip(), QString());

        board.form->subCreateSysTrayIcon();
        QVERIFY(board.form->sysTrayIconExists());
        const auto end = TestGateways::endCodeOf([&] { emit board.form->m_frmSysTray->MenuClick(3, "Close"); });
        QVERIFY(end.has_value());
        QCOMPARE(board.field("ActiveFlag"), "No");
    }

    // The first copy for a person listens and comes to the front when asked; a
    // later copy for the same person asks and leaves.
    void oneBoardPerPerson()
    {
        QTemporaryDir runtime;
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
        const QString site = "/srv/veskor/";
        SingleInstance first("jo", site, kJo);
        QVERIFY(first.claim());
        QVERIFY(first.isListening());
        QSignalSpy raised(&first, &SingleInstance::raiseRequested);
        QLocalSocket later;
        later.connectToServer(SingleInstance::socketPath("jo", site, kJo));
        QVERIFY(later.waitForConnected(1000));
        later.write("raise\n");
        QTRY_COMPARE(raised.size(), 1);

        // A first copy in another process, as the later copy sees it.
        QLocalServer other;
        QVERIFY(other.listen(SingleInstance::socketPath("jo", site, "Ann Lee")));
        SingleInstance second("jo", site, "Ann Lee");
        QVERIFY(!second.claim());
        QVERIFY(other.waitForNewConnection(1000));
        QLocalSocket* asked = other.nextPendingConnection();
        QVERIFY(asked->bytesAvailable() > 0 || asked->waitForReadyRead(1000));
        QCOMPARE(asked->readAll(), QByteArray("raise\n"));
    }

    void socketFolder_data()
    {
        QTest::addColumn<int>("runtimeMode"); // -1: XDG_RUNTIME_DIR unset; used only when 0700
        QTest::newRow("the runtime directory") << 0700;
        QTest::newRow("a runtime directory others may enter") << 0755;
        QTest::newRow("no runtime directory") << -1;
    }

    // The socket and its lock lie in a folder only this account can enter: the
    // runtime directory when it is private, else one made for the account in the
    // temporary folder; nothing of a board lies in the shared temporary folder itself.
    void socketFolder()
    {
        QFETCH(int, runtimeMode);
        const bool runtimeUsed = runtimeMode == 0700;
        QTemporaryDir runtime;
        QTemporaryDir temp;
        qputenv("TMPDIR", QFile::encodeName(temp.path()));
        ::chmod(QFile::encodeName(runtime.path()).constData(), mode_t(runtimeMode));
        if (runtimeMode < 0) {
            qunsetenv("XDG_RUNTIME_DIR");
        } else {
            qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
        }

        const QString expected = runtimeUsed ? runtime.path() : temp.filePath("veskor-" + QString::number(geteuid()));
        QCOMPARE(SingleInstance::privateFolder(), expected);
        {
            SingleInstance first("jo", "/srv/veskor/", kJo);
            QVERIFY(first.claim());
            QVERIFY(first.isListening());
            QCOMPARE(QDir(expected).entryList(QDir::System | QDir::Files).size(), 2); // socket and lock
            struct stat folder = {};
            QCOMPARE(::lstat(QFile::encodeName(expected).constData(), &folder), 0);
            QCOMPARE(folder.st_mode & 0777, mode_t(0700));
            QCOMPARE(folder.st_uid, geteuid());
            QCOMPARE(QDir(temp.path()).entryList(QDir::System | QDir::Files), QStringList());
        }
        QCOMPARE(QDir(expected).entryList(QDir::System | QDir::Files), QStringList()); // both go with the board
    }

    // A listener of another account on the person's socket does not make the board
    // leave: it is not asked, and the board takes the place for itself.
    void anotherAccountCannotStopTheBoard()
    {
        if (geteuid() != 0) {
            QSKIP("needs root to listen under another account");
        }
        QTemporaryDir runtime;
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
        const QString path = SingleInstance::socketPath("jo", "/srv/veskor/", kJo);
        const QByteArray native = QFile::encodeName(path);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, native.constData(), sizeof(address.sun_path));

        // The socket is made here and listens after the child became "nobody": the
        // peer's account is the one that listened.
        const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            if (::setresgid(65534, 65534, 65534) == 0 && ::setresuid(65534, 65534, 65534) == 0) {
                ::listen(listener, 4);
                ::pause();
            }
            ::_exit(1);
        }
        ::close(listener);
        QTest::qWait(200);

        SingleInstance board("jo", "/srv/veskor/", kJo);
        const bool first = board.claim();
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        QVERIFY(first);
        QVERIFY(board.isListening());
    }
};

QTEST_MAIN(TestTray)
#include "tst_tray.moc"
