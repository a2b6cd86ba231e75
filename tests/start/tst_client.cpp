// The real programs, run offscreen on a site: the client `user` and inicheck.
#include "columns.h"
#include "dao/dao.h"
#include "database/site.h"
#include "otherclient.h"
#include "realclient.h"
#include "tempsite.h"

#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <optional>

namespace {

const QString kJo = "Jo Bloggs";
const QString kAnn = "Ann Lee";

QString fieldOf(const TempSite& site, const QString& name, const QString& column)
{
    return site.value(QStringLiteral("SELECT %1 FROM EmployeeTable WHERE Name = \"%2\"").arg(column, name));
}

bool isActive(const TempSite& site, const QString& name)
{
    return fieldOf(site, name, "ActiveFlag") == QLatin1String("Yes");
}

// What a board leaves in the private folder: its socket and lock file while it runs.
QStringList leftIn(const QTemporaryDir& runtime)
{
    return QDir(runtime.path()).entryList(QDir::Files | QDir::System);
}

} // namespace

class TestClient : public QObject
{
    Q_OBJECT

private slots:
    void statusFromTheCommandLine()
    {
        TempSite site;
        site.person("Jo Bloggs", "jo").person("Ann Lee", "alee").status("Jo Bloggs", "Out");
        RealClient client(site.path(), {"-UID:jo", "-STS:Busy"});

        // The write lands within a few seconds; the client then runs on until stopped.
        const auto written = [&] {
            return site.value("SELECT Status & '|' & ActiveFlag FROM EmployeeTable WHERE Name = \"Jo Bloggs\"") ==
                       "Busy|Yes" &&
                   site.value("SELECT Count(*) FROM TransactionLogTable WHERE Status = \"Busy\"") == "1";
        };
        QTRY_VERIFY_WITH_TIMEOUT(written(), 20000);
        // The board's Load (AutoLogIn's "In") ran before the given status, not after it.
        QTest::qWait(3000);
        QVERIFY(written());
        QCOMPARE(client.process.state(), QProcess::Running);
        // The log row names who and where: login, machine and address are all known at start.
        for (const char* column : {"NetworkLogonID", "ComputerName", "IPAddress"}) {
            const QString sql = "SELECT %1 FROM TransactionLogTable WHERE Status = \"Busy\"";
            QVERIFY2(!site.value(sql.arg(QLatin1String(column))).isEmpty(), column);
        }
        QCOMPARE(client.boxesShown(), QByteArray()); // no box on the way
    }

    void refusedFile_data()
    {
        // box: the start of the one box: title, flags, text
        addColumns<QString, QString>("refusal", "box");
        const QString title = " VESK-OR Pro  - Error in Initialize Local Database\t";
        QTest::newRow("not a database") << "foreign" << title + "48\t";
        QTest::newRow("another DatabaseVersion") << "version" << title + "16\t%1veskor.mdb";
        QTest::newRow("busy past three tries")
            << "busy" << title + "0\tError (3050 ) in modDatabase - subInitializeLocalDatabase event";
        QTest::newRow("held by the administrator") << "administrator" << title + "0\tError (3045 ) in modDatabase";
        QTest::newRow("damaged") << "damaged" << title + "48\t";
    }

    // A file the start refuses gets its box and nothing else: no board comes up,
    // no byte of the file changes, no socket is left, and the run ends normally.
    void refusedFile()
    {
        auto [refusal, box] = fetch<QString, QString>("refusal", "box");
        TempSite site;
        site.person("Jo Bloggs", "jo");
        if (refusal == "foreign")
            QVERIFY(writeFile(site.dbPath(), QByteArray(8192, 'x')));
        if (refusal == "version")
            site.setting("DatabaseVersion", "2004");
        if (refusal == "damaged") { // the schema's page overwritten past the file header
            QFile file(site.dbPath());
            QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(100) && file.write(QByteArray(400, '\xff')) == 400);
        }
        // Read before any lock is taken: closing a file of this process would drop the locks on it.
        const QByteArray before = readFile(site.dbPath());
        std::shared_ptr<dao::Database> administrator;
        std::optional<OtherClient> otherClient;
        if (refusal == "busy")
            QVERIFY(otherClient.emplace(site).begin("BEGIN EXCLUSIVE"));
        if (refusal == "administrator")
            administrator = dao::DBEngine::OpenDatabase(site.dbPath(), true);
        QTemporaryDir runtime;

        RealClient client(site.path(), {"-UID:jo"}, "OK\n", runtime.path());
        const bool clean = client.finishedCleanly(60000);
        otherClient.reset();
        QVERIFY(clean);
        const QStringList boxes = QString::fromUtf8(client.boxesShown()).split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes.front().startsWith(QString(box).replace("%1", site.path())), qPrintable(boxes.front()));
        administrator.reset();
        QVERIFY(readFile(site.dbPath()) == before);
        QCOMPARE(QDir(runtime.path()).entryList(QDir::Files | QDir::System), QStringList());
    }

    void inicheckWaitsThenStartsTheClient()
    {
        QTemporaryDir folder;
        const QString inicheck = folder.filePath("inicheck");
        QVERIFY(QFile::copy(QStringLiteral(VESKOR_INICHECK_BINARY), inicheck));
        // A stand-in client that writes down the arguments it was started with.
        const QString started = folder.filePath("started");
        QVERIFY(
            writeFile(folder.filePath("user"), "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$(dirname \"$0\")/started\"\n"));
        QFile(folder.filePath("user"))
            .setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        database::writeSettingsFile(folder.path());
        database::setForcedShutDown(folder.path(), true);

        QProcess process;
        process.start(inicheck, {"-UID:  -STS:ForcedShutDown"});
        QVERIFY(process.waitForStarted());
        QTest::qWait(1500);
        QCOMPARE(process.state(), QProcess::Running);
        QVERIFY(!QFile::exists(started));

        database::setForcedShutDown(folder.path(), false);
        QVERIFY(process.waitForFinished(15000));
        QCOMPARE(process.exitCode(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(readFile(started), QByteArray("-UID:  -STS:ForcedShutDown\n"), 5000);
    }

    void endFromOutside_data()
    {
        addColumns<int, bool, QString>("signal", "autoLogOut", "status");
        QTest::newRow("SIGTERM, AutoLogOut") << int(SIGTERM) << true << "Out";
        QTest::newRow("SIGINT, no AutoLogOut") << int(SIGINT) << false << "Busy";
        QTest::newRow("SIGHUP (session gone), AutoLogOut") << int(SIGHUP) << true << "Out";
    }

    // A signal ends the run the ordinary way: the person is inactive afterwards and,
    // with AutoLogOut, Out; the process leaves normally and shows no box.
    void endFromOutside()
    {
        auto [signal, autoLogOut, status] = fetch<int, bool, QString>("signal", "autoLogOut", "status");
        TempSite site;
        site.person(kJo, "jo").status(kJo, "Busy");
        site.execute(QStringLiteral("UPDATE EmployeeSettingsTable SET AutoLogIn = False, AutoLogOut = %1")
                         .arg(autoLogOut ? "True" : "False"));
        QTemporaryDir runtime;
        RealClient client(site.path(), {"-UID:jo"}, {}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kJo), 20000);
        QCOMPARE(leftIn(runtime).size(), 2);

        ::kill(pid_t(client.process.processId()), signal);
        QVERIFY(client.finishedCleanly());
        QCOMPARE(leftIn(runtime), QStringList());
        QCOMPARE(fieldOf(site, kJo, "ActiveFlag & '/' & Status"), "No/" + status);
        QCOMPARE(client.boxesShown(), QByteArray());
    }

    void secondStart()
    {
        TempSite site;
        site.person(kJo, "jo").person(kAnn, "alee");
        QTemporaryDir runtime;
        RealClient first(site.path(), {"-UID:jo"}, {}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kJo), 20000);
        const QStringList firstBoards = leftIn(runtime);

        // The same person again: it leaves at once, and leaves the first one's row,
        // socket and lock file alone.
        RealClient second(site.path(), {"-UID:jo"}, {}, runtime.path());
        QVERIFY(second.finishedCleanly());
        QCOMPARE(first.process.state(), QProcess::Running);
        QVERIFY(isActive(site, kJo));
        QCOMPARE(leftIn(runtime), firstBoards);

        // Another person on the same desktop goes on.
        RealClient other(site.path(), {"-UID:alee"}, {}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kAnn), 20000);
        QTest::qWait(500);
        QCOMPARE(other.process.state(), QProcess::Running);
        QCOMPARE(first.boxesShown(), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestClient)
#include "tst_client.moc"
