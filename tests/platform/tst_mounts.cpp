// The mount table and the two spellings of a network path.
#include "platform/mounts.h"
#include "platform/profile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace platform;

namespace {

// A mountinfo text as the kernel writes it: a share with a blank in its name, an
// nfs export, a share mounted inside another, a local disk mounted inside a
// share, a bind mount of a share's sub-folder, an older kernel's trailing "/".
const char* kMountInfo =
    "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
    "40 22 0:50 / /mnt/staff rw,relatime shared:20 - cifs //fileserver/Staff\\040Share "
    "rw,vers=3.1.1,addr=192.168.10.5\n"
    "41 22 0:51 / /mnt/nfs-staff rw,relatime - nfs4 nas01:/export/staff rw,vers=4.2,addr=192.168.10.6\n"
    "42 40 0:52 / /mnt/staff/deep rw - smb3 //FileServer/Deep\\134Share/sub rw\n"
    "43 40 8:2 / /mnt/staff/local rw - ext4 /dev/sdb1 rw\n"
    "44 22 0:50 /veskor /srv/bound rw - cifs //fileserver/Staff\\040Share rw\n"
    "45 22 0:53 / /mnt/old\\040box rw - cifs //oldbox/data/ rw\n"
    "this line does not parse\n";

} // namespace

class TestMounts : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        setMountTable(parseMountInfo(QString::fromLatin1(kMountInfo)));
    }
    void cleanup()
    {
        setMountTable(std::nullopt);
    }

    // A local path's spelling on the network, and back.
    void paths_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("other");
        QTest::addColumn<bool>("toUnc");
        const auto unc = [](const char* name, const char* path, const char* unc) {
            QTest::newRow(name) << path << unc << true;
        };
        const auto native = [](const char* name, const char* unc, const char* path) {
            QTest::newRow(name) << unc << path << false;
        };
        unc("cifs, blank in share", "/mnt/staff/veskor/user", "\\\\fileserver\\Staff Share\\veskor\\user");
        unc("closing separator kept", "/mnt/staff/veskor/", "\\\\fileserver\\Staff Share\\veskor\\");
        unc("nfs", "/mnt/nfs-staff/a", "\\\\nas01\\export\\staff\\a");
        unc("smb3 inside cifs: longest wins", "/mnt/staff/deep/x", "\\\\FileServer\\Deep\\Share\\sub\\x");
        unc("local disk inside a share", "/mnt/staff/local/x", "/mnt/staff/local/x");
        unc("bind mount of a sub-folder", "/srv/bound/db", "\\\\fileserver\\Staff Share\\veskor\\db");
        unc("trailing / in source", "/mnt/old box/f", "\\\\oldbox\\data\\f");
        unc("name only shares a prefix", "/mnt/staffing/x", "/mnt/staffing/x");
        unc("already UNC", "\\\\srv\\share", "\\\\srv\\share");
        native("cifs, any case", "\\\\FILESERVER\\staff share\\docs\\veskor.mdb", "/mnt/staff/docs/veskor.mdb");
        native("closing separator", "\\\\fileserver\\Staff Share\\", "/mnt/staff/");
        native("mixed separators", "\\\\fileserver\\Staff Share/docs\\x", "/mnt/staff/docs/x");
        native("nfs back", "\\\\nas01\\export\\staff\\a", "/mnt/nfs-staff/a");
        native("longest source wins", "\\\\fileserver\\Staff Share\\veskor\\db", "/srv/bound/db");
        native("source with sub-folder", "\\\\fileserver\\deep\\share\\SUB\\x", "/mnt/staff/deep/x");
        native("share only a prefix", "\\\\fileserver\\Staff Shares\\x", "\\\\fileserver\\Staff Shares\\x");
        native("local, backslash kept", "/home/jo/a\\b", "/home/jo/a\\b");
    }
    void paths()
    {
        QFETCH(QString, path);
        QFETCH(QString, other);
        QFETCH(bool, toUnc);
        QCOMPARE(toUnc ? platform::uncPathOf(path) : platform::nativePathOf(path), other);
    }

    // The INI reader and writer find a file named by its UNC path.
    void profileFilesByUncPath()
    {
        QTemporaryDir dir;
        setMountTable(MountTable{{QStringLiteral("//srv/share"), dir.path(), QStringLiteral("cifs")}});
        const QString unc = QStringLiteral("\\\\SRV\\Share\\veskor.ini");
        QVERIFY(WritePrivateProfileString(QStringLiteral("DataPath"), QStringLiteral("DataPath"), QStringLiteral("x"),
                                          unc));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("veskor.ini"))));
        QCOMPARE(GetPrivateProfileString(QStringLiteral("datapath"), QStringLiteral("DATAPATH"), QString(), 200, unc),
                 QStringLiteral("x"));
    }
};

QTEST_GUILESS_MAIN(TestMounts)
#include "tst_mounts.moc"
