// The client moved to other sites and back: real site folders behind a mount table of the test's own.
#include "boardfixture.h"
#include "columns.h"
#include "platform/mounts.h"
#include "servers/frmservers.h"
#include "status/statuswrite.h"

#include <QFile>
#include <QTest>

namespace {

const QStringList kHome = {"Ann Lee", "Bob Ray"}, kOther = {"Ann Lee", "Carl Moss"};
const QString kOtherUnc = QStringLiteral("\\\\fs\\other\\");

struct Sites : BoardFixture
{
    TempSite other, guest, empty, old;
    QTemporaryDir gvfs;
    platform::MountTable mounts;

    Sites()
    {
        site.person("Ann Lee").person("Bob Ray").group("Sales");
        site.execute(R"(INSERT INTO ServersTable (UNCPath, Description) VALUES ("\\fs\other\", "Other"))");
        other.person("Ann Lee").person("Carl Moss");
        guest.person("Carl Moss");
        old.person("Ann Lee").setting("DatabaseVersion", "2003");
        QFile::link(guest.path(), gvfs.filePath("smb-share:server=nas,share=other%20site,user=jo"));
        for (auto [share, folder] : {std::pair{"other", &other}, {"empty", &empty}, {"old", &old}})
            mounts.append({QStringLiteral("//fs/") + share, folder->path().chopped(1), "cifs"});
        mounts.append({"gvfsd-fuse", gvfs.path(), "fuse.gvfsd-fuse"});
        platform::setMountTable(mounts);
        open().subRefreshUserList("Sales");
    }
    // OK on a row with that folder, selected as a screen reader does, the current
    // row left on another; the words left in the status bar.
    QString connect(const QString& folder)
    {
        frmServers screen(form);
        screen.Form_Load();
        screen.ListViewServers->setCurrentItem(new QTreeWidgetItem(screen.ListViewServers, {"\\\\elsewhere\\x\\"}));
        auto* row = new QTreeWidgetItem(screen.ListViewServers, {folder});
        screen.ListViewServers->clearSelection();
        row->setSelected(true);
        screen.cmdOKServers_Click();
        return screen.statusText();
    }
    QStringList shown()
    {
        form->subRefreshUserList(QString());
        return texts("Name");
    }
};

} // namespace

class TestServers : public QObject
{
    Q_OBJECT

private slots:
    // The board, the rights and a status change act on the other site; Home comes
    // back, also once the share has gone away.
    void switchAndHome_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("cifs") << kOtherUnc << kOther;
        QTest::newRow("gvfs, a guest") << QStringLiteral("\\\\NAS\\Other Site\\") << QStringList{"Carl Moss"};
    }
    void switchAndHome()
    {
        auto [folder, names] = fetch<QString, QStringList>("folder", "names");
        Sites s;
        const bool guest = !names.contains("Ann Lee");
        s.connect(folder);
        QVERIFY(gRun.gblnRemoteConnection);
        QCOMPARE(gRun.gblnUserOnThisServer, !guest);
        QCOMPARE(s.shown(), names);
        s.form->subSetToolBarRights();
        QVERIFY(s.action("Home")->isVisible() && !s.action("Servers")->isVisible());
        QCOMPARE(s.action("Change")->isEnabled(), !guest);
        s.form->clearList();
        subSetStatus("Busy");
        QCOMPARE(s.other.value("SELECT Status FROM EmployeeTable WHERE Name = 'Ann Lee'"), guest ? "" : "Busy");
        QVERIFY(s.site.value("SELECT Status FROM EmployeeTable WHERE Name = 'Ann Lee'") != "Busy");
        // The share goes away: the open's own box, and Home still works.
        platform::setMountTable(platform::MountTable());
        gRun.gblnDatabaseClosed = true;
        s.gw.boxes().answer(platform::vbCancel);
        QVERIFY(TestGateways::endCodeOf([&] { s.shown(); }));
        QVERIFY(s.gw.boxes().last().prompt.startsWith("Non-fatal Error (3024 )"));
        s.form->subCommand_Home();
        QVERIFY(!gRun.gblnRemoteConnection && s.action("Servers")->isVisible() && !s.action("Home")->isVisible());
        QCOMPARE(s.shown(), kHome);
    }

    // Each refusal, made while another site is in use, leaves that site in use;
    // a site without users and the home folder itself return home.
    void refusals_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("box");
        QTest::addColumn<bool>("stays");
        const auto row = [](const char* name, const QString& folder, const char* box, bool stays) {
            QTest::newRow(name) << folder << QString(box) << stays;
        };
        row("drive letter", "G:\\other\\", "UNC path you selected is invalid", true);
        row("not mounted", "\\\\fs\\gone\\", "database does not exist at the UNC path", true);
        row("old release", "\\\\fs\\old\\", "\\\\fs\\old\\veskor.mdb\r\nis not a VESK-OR", true);
        row("no users", "\\\\fs\\empty\\", "no users in the database yet.", false);
        row("home folder", QString(), "", false);
    }
    void refusals()
    {
        auto [folder, box, stays] = fetch<QString, QString, bool>("folder", "box", "stays");
        Sites s;
        s.connect(kOtherUnc);
        s.gw.boxes().answer(platform::vbOK);
        const QString words = s.connect(folder.isEmpty() ? s.site.path().toUpper() : folder);
        QVERIFY(s.gw.boxes().count() == (box.isEmpty() ? 0 : 1) && s.gw.boxes().last().prompt.contains(box));
        QCOMPARE(gRun.gblnRemoteConnection, stays);
        QCOMPARE(gRun.gstrCurrentDatabasePath, stays ? kOtherUnc : s.site.path());
        QCOMPARE(s.shown(), stays ? kOther : kHome);
        QCOMPARE(words == " Remote server has no users.", folder.endsWith("empty\\"));
    }
};

QTEST_MAIN(TestServers)
#include "tst_servers.moc"
