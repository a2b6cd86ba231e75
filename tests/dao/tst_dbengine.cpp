// DBEngine: opening and creating files, each open failure as the Jet number the
// logic switches on, produced by the real condition; the maintenance lock; a
// file busy in another process; a closed or read-only database.
#include "daotest.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <unistd.h>

using namespace dao;
using daotest::jetNumber;

namespace {

QByteArray legacyHeader(const char* kind)
{
    QByteArray bytes(2048, '\0');
    bytes[1] = 1;
    bytes.replace(4, 15, kind);
    return bytes;
}

} // namespace

class TestDBEngine : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        file = path("veskor.mdb");
        DBEngine::setBusyTimeoutMs(2000);
        daotest::makePeople(file);
    }

    void openFailures_data()
    {
        QTest::addColumn<QString>("setup");
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("number");
        const auto row = [](const char* name, const char* setup, const char* file, int number) {
            QTest::newRow(name) << setup << file << number;
        };
        row("empty name", "", "", errInvalidFileName);
        row("folder is a file", "plain", "plain.txt/veskor.mdb", errInvalidPath);
        row("empty file", "empty", "veskor.mdb", errUnrecognizedFormat);
        row("legacy Jet file", "jet", "veskor.mdb", errUnrecognizedFormat);
        row("legacy ACE file", "ace", "veskor.mdb", errUnrecognizedFormat);
        row("truncated file", "truncated", "veskor.mdb", errCorrupt);
        row("good header, damaged pages", "damaged", "veskor.mdb", errCorrupt);
    }

    void openFailures()
    {
        QFETCH(QString, setup);
        QFETCH(QString, file);
        QFETCH(int, number);
        const QString target = file.isEmpty() ? QString() : path(file);
        if (setup == "plain") {
            QVERIFY(writeFile(path("plain.txt"), "text"));
        } else if (setup == "empty") {
            QVERIFY(writeFile(target, QByteArray()));
        } else if (setup == "jet" || setup == "ace") {
            QVERIFY(writeFile(target, legacyHeader(setup == "jet" ? "Standard Jet DB" : "Standard ACE DB")));
        } else if (setup == "truncated" || setup == "damaged") {
            QVERIFY(sqliteExec(target, "CREATE TABLE Filler (x); INSERT INTO Filler VALUES (randomblob(20000));"));
            QFile f(target);
            if (setup == "truncated") {
                QVERIFY(f.resize(f.size() / 2));
            } else {
                QVERIFY(f.open(QIODevice::ReadWrite) && f.seek(100));
                f.write(QByteArray(3000, '\xA5'));
            }
        }
        QString description;
        try {
            DBEngine::OpenDatabase(target);
        } catch (const JetError& e) {
            QCOMPARE(e.number(), number);
            description = e.description();
        }
        QVERIFY2(!description.isEmpty(), "the open did not fail");
        if (setup == "jet" || setup == "ace")
            QVERIFY(description.contains("Access"));
    }

    void noPermission()
    {
        if (::geteuid() == 0)
            QSKIP("root reads every file");
        QFile::setPermissions(file, QFileDevice::ReadOwner);
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file); }), int(errNoPermission));
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file, false, true); }), 0);
        QFile::setPermissions(file, QFileDevice::WriteOwner);
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file, false, true); }), int(errNoPermission));
    }

    // A new file has a real header at once, and a rollback journal, which works on
    // a network share.
    void createDatabase()
    {
        const QString created = path("new.mdb");
        DBEngine::CreateDatabase(created)->Close();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(created)->Execute("CREATE TABLE T (A LONG)"); }), 0);
        QCOMPARE(DBEngine::OpenDatabase(created)->TableNames(), QStringList{"T"});
        QCOMPARE(jetNumber([&] { DBEngine::CreateDatabase(created); }), int(errDatabaseExists));
        QCOMPARE(jetNumber([&] { DBEngine::CreateDatabase(path("no/new.mdb")); }), int(errInvalidPath));

        QCOMPARE(sqliteValue(created, "PRAGMA journal_mode"), QString("delete"));
    }

    // The maintenance open shuts out every other open with 3045, at once (without
    // the busy wait), in this process and in another; a holder that dies lets go.
    void exclusiveOpen()
    {
        DBEngine::OpenDatabase(file)->Close();
        QVERIFY(!QFile::exists(path("veskor.ldb"))); // a shared open makes no lock file

        auto shared = DBEngine::OpenDatabase(file);
        auto admin = DBEngine::OpenDatabase(file, true);
        QVERIFY(admin->isExclusive() && QFile::exists(path("veskor.ldb")));
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file); }), int(errExclusivelyLocked));
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file, true); }), int(errExclusivelyLocked));
        admin->Execute("UPDATE People SET Num = 99 WHERE ID = 1");
        admin->Close();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file)->Close(); }), 0);

        daotest::Helper helper;
        QCOMPARE(helper.start({"exclusive", file}), QString("locked"));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file); }), int(errExclusivelyLocked));
        QVERIFY2(timer.elapsed() < 1000, "3045 comes at once, without the busy wait");
        helper.process.kill();
        helper.process.waitForFinished(5000);
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file)->Close(); }), 0);
    }

    void busyFileAtOpen()
    {
        daotest::Helper helper;
        QCOMPARE(helper.start({"hold", file}), QString("locked"));
        DBEngine::setBusyTimeoutMs(300);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file); }), int(errCouldNotLockFile));
        QVERIFY2(timer.elapsed() >= 250, "the open waits for the lock before it fails");
        helper.finish();
        QCOMPARE(jetNumber([&] { DBEngine::OpenDatabase(file)->Close(); }), 0);
    }

    void closedDatabaseIsInvalid()
    {
        auto db = DBEngine::OpenDatabase(file);
        auto rs = db->OpenRecordset("People");
        db->Close();
        QVERIFY(!db->isOpen() && !rs->isOpen());
        QCOMPARE(jetNumber([&] { db->OpenRecordset("People"); }), int(errObjectInvalid));
        QCOMPARE(jetNumber([&] { db->Execute("DELETE FROM People"); }), int(errObjectInvalid));
        QCOMPARE(jetNumber([&] { rs->Fields("Name").Value(); }), int(errObjectInvalid));
        QCOMPARE(jetNumber([&] { rs->Edit(); }), int(errObjectInvalid));
        QCOMPARE(jetNumber([&] { db->Close(); }), 0); // closing twice is harmless
    }

    void readOnlyOpen()
    {
        auto db = DBEngine::OpenDatabase(file, false, true);
        auto rs = db->OpenRecordset("People");
        QCOMPARE(jetNumber([&] { rs->Edit(); }), int(errCannotUpdate));
        QCOMPARE(jetNumber([&] { db->Execute("DELETE FROM People"); }), int(errCannotUpdate));
    }

private:
    QString path(const QString& name) const
    {
        return m_dir->filePath(name);
    }
    std::unique_ptr<QTemporaryDir> m_dir;
    QString file; // the small table of people, made afresh for each test
};

QTEST_GUILESS_MAIN(TestDBEngine)
#include "tst_dbengine.moc"
