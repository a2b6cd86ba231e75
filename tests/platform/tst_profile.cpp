// Settings files read and written as Windows' profile functions do.

#include "ondisk.h"
#include "platform/profile.h"

#include <QTemporaryDir>
#include <QTest>

using namespace platform;

namespace {

const char* const sample = "; site settings\r\n"
                           "[DataPath]\r\n"
                           "DataPath=\\\\fileserver\\veskor\\\r\n"
                           "\r\n"
                           "[ Spaced Section ]\r\n"
                           "  Key With Blanks  =   value with blanks   \r\n"
                           "Quoted=\"  kept blanks  \"\r\n"
                           "Single='single'\r\n"
                           "Mismatched=\"half'\r\n"
                           "OnlyOpen=\"\r\n"
                           "Empty=\r\n"
                           "NoEquals\r\n"
                           ";Commented=yes\r\n"
                           "Unicode=Zoë Ünal ☕\r\n"
                           "Long=0123456789\r\n"
                           "[ForceShutDown]\r\n"
                           "ForceShutDown=TRUE\r\n"
                           "[spaced section]\r\n"
                           "Second=from the repeated section\r\n"
                           "Quoted=not this one\r\n";

} // namespace

class TestProfile : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void get_data()
    {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("defaultValue");
        QTest::addColumn<int>("bufferSize");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* section, const char* key, const char* defaultValue,
                            int bufferSize, const char* expected) {
            QTest::newRow(name) << section << key << defaultValue << bufferSize << QString::fromUtf8(expected);
        };
        row("the data path", "DataPath", "DataPath", "", 200, "\\\\fileserver\\veskor\\");
        row("names ignore case", "DATAPATH", "datapath", "", 200, "\\\\fileserver\\veskor\\");
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
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, defaultValue);
        QFETCH(int, bufferSize);
        QFETCH(QString, expected);
        const QString path = m_dir.filePath(QStringLiteral("sample.ini"));
        QVERIFY(writeFile(path, sample));
        QCOMPARE(GetPrivateProfileString(section, key, defaultValue, bufferSize, path), expected);
    }

    void write_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QByteArray>("after");
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
        QFETCH(QByteArray, before);
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QFETCH(QByteArray, after);
        const QString path = m_dir.filePath(QStringLiteral("w-%1.ini").arg(QTest::currentDataTag()));
        QVERIFY(before.isEmpty() || writeFile(path, before));
        QVERIFY(WritePrivateProfileString(section, key, value, path));
        QCOMPARE(readFile(path), after);
    }

    void missingFileGivesTheDefaultAndAMissingFolderFails()
    {
        QCOMPARE(GetPrivateProfileString(QStringLiteral("DataPath"), QStringLiteral("DataPath"), QStringLiteral("d"),
                                         200, m_dir.filePath(QStringLiteral("absent.ini"))),
                 QStringLiteral("d"));
        QVERIFY(!WritePrivateProfileString(QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"),
                                           m_dir.filePath(QStringLiteral("no/such/folder/x.ini"))));
    }
};

QTEST_GUILESS_MAIN(TestProfile)
#include "tst_profile.moc"
