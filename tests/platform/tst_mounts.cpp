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

    void uncPathOf_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("unc");
        QTest::newRow("cifs, blank in share") << "/mnt/staff/veskor/user"
                                              << "\\\\fileserver\\Staff Share\\veskor\\user";
        QTest::newRow("closing separator kept") << "/mnt/staff/veskor/"
                                                << "\\\\fileserver\\Staff Share\\veskor\\";
        QTest::newRow("nfs") << "/mnt/nfs-staff/a"
                             << "\\\\nas01\\export\\staff\\a";
        QTest::newRow("smb3 inside cifs: longest wins") << "/mnt/staff/deep/x"
                                                        << "\\\\FileServer\\Deep\\Share\\sub\\x";
        QTest::newRow("local disk inside a share") << "/mnt/staff/local/x"
                                                   << "/mnt/staff/local/x";
        QTest::newRow("bind mount of a sub-folder") << "/srv/bound/db"
                                                    << "\\\\fileserver\\Staff Share\\veskor\\db";
        QTest::newRow("trailing / in source") << "/mnt/old box/f"
                                              << "\\\\oldbox\\data\\f";
        QTest::newRow("name only shares a prefix") << "/mnt/staffing/x"
                                                   << "/mnt/staffing/x";
        QTest::newRow("local") << "/home/jo/veskor"
                               << "/home/jo/veskor";
        QTest::newRow("already UNC") << "\\\\srv\\share"
                                     << "\\\\srv\\share";
    }
    void uncPathOf()
    {
        QFETCH(QString, path);
        QFETCH(QString, unc);
        QCOMPARE(platform::uncPathOf(path), unc);
    }

    void nativePathOf_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("native");
        QTest::newRow("cifs, any case") << "\\\\FILESERVER\\staff share\\docs\\veskor.mdb"
                                        << "/mnt/staff/docs/veskor.mdb";
        QTest::newRow("closing separator") << "\\\\fileserver\\Staff Share\\"
                                           << "/mnt/staff/";
        QTest::newRow("mixed separators") << "\\\\fileserver\\Staff Share/docs\\x"
                                          << "/mnt/staff/docs/x";
        QTest::newRow("nfs") << "\\\\nas01\\export\\staff\\a"
                             << "/mnt/nfs-staff/a";
        QTest::newRow("longest source wins") << "\\\\fileserver\\Staff Share\\veskor\\db"
                                             << "/srv/bound/db";
        QTest::newRow("source with sub-folder") << "\\\\fileserver\\deep\\share\\SUB\\x"
                                                << "/mnt/staff/deep/x";
        QTest::newRow("share only a prefix") << "\\\\fileserver\\Staff Shares\\x"
                                             << "\\\\fileserver\\Staff Shares\\x";
        QTest::newRow("local, backslash kept") << "/home/jo/a\\b"
                                               << "/home/jo/a\\b";
    }
    void nativePathOf()
    {
        QFETCH(QString, path);
        QFETCH(QString, native);
        QCOMPARE(platform::nativePathOf(path), native);
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
