// The platform's parts without a screen: profile files, mounts and network paths, dates.
#include "columns.h"
#include "ondisk.h"
#include "platform/clock.h"
#include "platform/mounts.h"
#include "platform/profile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace platform;

namespace {

// '|' ends each line of the file, written with CR LF.
const QByteArray sample =
    QByteArray(
        "; site settings|[DataPath]|DataPath=\\\\fileserver\\veskor\\||[ Spaced Section ]|"
        "  Key With Blanks  =   value with blanks   |Quoted=\"  kept blanks  \"|Single='single'|Mismatched=\"half'|"
        "OnlyOpen=\"|Empty=|NoEquals|;Commented=yes|Unicode=Zoë Ünal ☕|Long=0123456789|[ForceShutDown]|"
        "ForceShutDown=TRUE|[spaced section]|Second=from the repeated section|Quoted=not this one|")
        .replace("|", "\r\n");

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

class TestPlatform : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void init()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }
    void cleanup()
    {
        setMountTable(std::nullopt);
    }

    void get_data()
    {
        addColumns<QString, QString, QString, int, QString>("section", "key", "defaultValue", "bufferSize", "expected");
        const auto row = [](const char* name, const char* section, const char* key, const char* defaultValue,
                            int bufferSize, const char* expected) {
            QTest::newRow(name) << section << key << defaultValue << bufferSize << QString::fromUtf8(expected);
        };
        row("the data path", "DataPath", "DataPath", "", 200, "\\\\fileserver\\veskor\\");
        row("blanks around names and value", "Spaced Section", "key with blanks", "", 200, "value with blanks");
        row("blanks around the asked names", " spaced section ", " Key With Blanks ", "", 200, "value with blanks");
        row("double quotes go", "spaced section", "Quoted", "", 200, "  kept blanks  ");
        row("single quotes go", "spaced section", "Single", "", 200, "single");
        row("mismatched quotes stay", "spaced section", "Mismatched", "", 200, "\"half'");
        row("a lone quote stays", "spaced section", "OnlyOpen", "", 200, "\"");
        row("empty value, not the default", "spaced section", "Empty", "dflt", 200, "");
        row("key without = gives the default", "spaced section", "NoEquals", "dflt", 200, "dflt");
        row("comment is no key", "spaced section", ";Commented", "dflt", 200, "dflt");
        row("unicode", "spaced section", "Unicode", "", 200, "Zoë Ünal ☕");
        row("repeated section is read too", "Spaced Section", "Second", "", 200, "from the repeated section");
        row("key of another section", "DataPath", "ForceShutDown", "FALSE", 200, "FALSE");
        row("missing section", "Nowhere", "DataPath", "dflt", 200, "dflt");
        row("missing key", "ForceShutDown", "Other", "", 200, "");
        row("empty key name", "ForceShutDown", "", "dflt", 200, "dflt");
        row("value cut to buffer - 1", "spaced section", "Long", "", 5, "0123");
        row("value exactly fits", "spaced section", "Long", "", 11, "0123456789");
        row("quotes go before the cut", "spaced section", "Quoted", "", 4, "  k");
        row("buffer of one", "spaced section", "Long", "", 1, "");
        row("default cut too", "Nowhere", "x", "abcdef", 3, "ab");
        row("default loses trailing blanks", "Nowhere", "x", " ab  ", 200, " ab");
    }

    void get()
    {
        auto [section, key, defaultValue, bufferSize] =
            fetch<QString, QString, QString, int>("section", "key", "defaultValue", "bufferSize");
        const QString path = m_dir.filePath("sample.ini");
        QVERIFY(writeFile(path, sample));
        QTEST(GetPrivateProfileString(section, key, defaultValue, bufferSize, path), "expected");
    }

    void write_data()
    {
        addColumns<QByteArray, QString, QString, QString, QByteArray>("before", "section", "key", "value", "after");
        const auto row = [](const char* name, const char* before, const char* section, const QString& key,
                            const QString& value, const char* after) {
            QTest::newRow(name) << QByteArray(before) << section << key << value << QByteArray(after);
        };
        row("new file", "", "ForceShutDown", "ForceShutDown", "TRUE", "[ForceShutDown]\nForceShutDown=TRUE\n");
        row("replace keeps the rest and the key's spelling", "; note\n[A]\n  KEY = old \nOther=1\n\n[B]\nKey=b\n", "a",
            "key", "new", "; note\n[A]\nKEY=new\nOther=1\n\n[B]\nKey=b\n");
        row("new key goes after the section's last line", "[A]\nOne=1\n\n[B]\nTwo=2\n", "A", "Three", "3",
            "[A]\nOne=1\nThree=3\n\n[B]\nTwo=2\n");
        row("new section at the end", "[A]\nOne=1\n", "B", "Two", "2", "[A]\nOne=1\n\n[B]\nTwo=2\n");
        row("CR LF kept", "[A]\r\nOne=1\r\n", "A", "One", "2", "[A]\r\nOne=2\r\n");
        row("null value removes the key", "[A]\nOne=1\nTwo=2\n", "A", "One", QString(), "[A]\nTwo=2\n");
        row("null key removes the section", "[A]\nOne=1\n[B]\nTwo=2\n", "a", QString(), "x", "[B]\nTwo=2\n");
    }

    void write()
    {
        auto [before, section, key, value] =
            fetch<QByteArray, QString, QString, QString>("before", "section", "key", "value");
        const QString path = m_dir.filePath(QStringLiteral("w-%1.ini").arg(QTest::currentDataTag()));
        QVERIFY(before.isEmpty() || writeFile(path, before));
        QVERIFY(WritePrivateProfileString(section, key, value, path));
        QTEST(readFile(path), "after");
    }

    void missingFileGivesTheDefaultAndAMissingFolderFails()
    {
        QCOMPARE(GetPrivateProfileString("DataPath", "DataPath", "d", 200, m_dir.filePath("absent.ini")), "d");
        QVERIFY(!WritePrivateProfileString("A", "B", "C", m_dir.filePath("no/such/folder/x.ini")));
    }

    // A local path's spelling on the network, and back.
    void paths_data()
    {
        addColumns<QString, QString, bool>("path", "other", "toUnc");
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
        auto [path, other, toUnc] = fetch<QString, QString, bool>("path", "other", "toUnc");
        setMountTable(parseMountInfo(QString::fromLatin1(kMountInfo)));
        QCOMPARE(toUnc ? platform::uncPathOf(path) : platform::nativePathOf(path), other);
    }

    // The INI reader and writer find a file named by its UNC path.
    void profileFilesByUncPath()
    {
        QTemporaryDir dir;
        setMountTable(MountTable{{"//srv/share", dir.path(), "cifs"}});
        const QString unc = "\\\\SRV\\Share\\veskor.ini";
        QVERIFY(WritePrivateProfileString("DataPath", "DataPath", "x", unc));
        QVERIFY(QFile::exists(dir.filePath("veskor.ini")));
        QCOMPARE(GetPrivateProfileString("datapath", "DATAPATH", QString(), 200, unc), "x");
    }

    // both: the date gives the number too; else the number rounds to the date.
    void dateTimeNum_data()
    {
        addColumns<QDateTime, double, bool>("when", "number", "both");
        const auto row = [](const char* name, QDate day, QTime time, double number, bool both = true) {
            QTest::newRow(name) << QDateTime(day, time) << number << both;
        };
        row("day zero noon", QDate(1899, 12, 30), QTime(12, 0), 0.5);
        row("release day noon", QDate(2006, 7, 22), QTime(12, 0), 38920.5);
        row("quarter past six", QDate(2026, 11, 22), QTime(6, 0), 46348.25);
        row("last second of a day", QDate(2026, 11, 22), QTime(23, 59, 59), 46348.0 + 86399.0 / 86400.0);
        // Before day zero the whole part counts back, the fraction still forward.
        row("day before zero", QDate(1899, 12, 29), QTime(0, 0), -1.0);
        row("day before zero, 06:00", QDate(1899, 12, 29), QTime(6, 0), -1.25);
        row("1800", QDate(1800, 1, 1), QTime(18, 0), -36522.75);
        row("a hair under a second", QDate(1899, 12, 31), QTime(0, 0, 1), 1.0 + 0.9999 / 86400.0, false);
        row("a hair under midnight", QDate(1900, 1, 1), QTime(0, 0), 2.0 - 1e-9, false);
        row("negative, a hair under midnight", QDate(1899, 12, 30), QTime(0, 0), -2.0 + 1e-9, false);
    }
    void dateTimeNum()
    {
        auto [when, number, both] = fetch<QDateTime, double, bool>("when", "number", "both");
        if (both)
            QCOMPARE(DateTimeNum(when), number);
        QCOMPARE(dateFromDateTimeNum(number), when);
    }

    void format_data()
    {
        addColumns<QString, QDateTime, QString, QString>("locale", "when", "form", "expected");
        const QDateTime pm(QDate(2026, 11, 22), QTime(14, 5, 9));
        const QDateTime am(QDate(2026, 3, 4), QTime(7, 8, 9));
        const auto row = [](const char* name, const char* locale, const QDateTime& when, const char* form,
                            const char* expected) {
            QTest::newRow(name) << locale << when << form << QString::fromUtf8(expected);
        };
        row("stamp, de", "de_DE", pm, "yyyy-mm-dd hh:mm:ss", "2026-11-22 14:05:09");
        row("long date", "en_US", pm, "Long Date", "Sunday, November 22, 2026");
        row("long date, de", "de_DE", pm, "Long Date", "Sonntag, 22. November 2026");
        row("long time", "en_US", pm, "Long Time", "2:05:09 PM");
        row("long time, de", "de_DE", pm, "Long Time", "14:05:09");
        row("short time, morning", "en_US", am, "Short Time", "07:08");
        row("general, de", "de_DE", pm, "General Date", "22.11.2026 14:05:09");
        row("general, midnight", "en_US", QDateTime(QDate(2026, 11, 22), QTime(0, 0)), "General Date", "11/22/2026");
        row("general, day zero", "en_US", QDateTime(QDate(1899, 12, 30), QTime(14, 5, 9)), "General Date",
            "2:05:09 PM");
        row("general, day zero midnight", "en_US", QDateTime(QDate(1899, 12, 30), QTime(0, 0)), "General Date",
            "12:00:00 AM");
        row("form names ignore case", "en_US", pm, "long time", "2:05:09 PM");
        row("minutes before seconds", "en_US", pm, "mm:ss", "05:09");
        row("12-hour pattern", "en_US", pm, "h:nn AM/PM", "2:05 PM");
        row("literals", "en_US", pm, "\"on\" d\\m mmmm", "on 22m November");
    }
    void format()
    {
        auto [locale, when, form, expected] =
            fetch<QString, QDateTime, QString, QString>("locale", "when", "form", "expected");
        QLocale::setDefault(QLocale(locale));
        QCOMPARE(Format(when, form), expected);
    }
};

QTEST_GUILESS_MAIN(TestPlatform)
#include "tst_platform.moc"
