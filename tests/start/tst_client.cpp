// The real programs, run offscreen on a site: the client `user` writing a status
// from its command line, the client without veskor.ini, and inicheck waiting out
// a forced shutdown before it starts the client again.
#include "dao/dao.h"
#include "database/site.h"
#include "tempsite.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <sqlite3.h>

namespace {

// The program copied into folder, as a site installs it beside veskor.ini.
QString installed(const QString& binary, const QString& folder)
{
    const QString target = QDir(folder).filePath(QFileInfo(binary).fileName());
    QFile::remove(target);
    if (!QFile::copy(binary, target)) {
        return QString();
    }
    return target;
}

void writeFile(const QString& path, const QByteArray& text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Offscreen, with boxes answered from a file and written to a log, so no box waits for a person.
void prepareClient(QProcess& process, const QString& folder, const QByteArray& answers)
{
    writeFile(folder + QStringLiteral("/answers.txt"), answers);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("VESKOR_MSGBOX_ANSWERS"), folder + QStringLiteral("/answers.txt"));
    env.insert(QStringLiteral("VESKOR_MSGBOX_LOG"), folder + QStringLiteral("/boxes.log"));
    process.setProcessEnvironment(env);
    process.setWorkingDirectory(folder);
}

// The boxes a run showed, one "title<TAB>flags<TAB>text" line each.
QStringList boxesShown(const QString& folder)
{
    QStringList boxes;
    for (const QString& line : QString::fromUtf8(readFile(folder + QStringLiteral("/boxes.log"))).split(u'\n')) {
        if (line.count(u'\t') == 2) {
            boxes << line;
        }
    }
    return boxes;
}

enum class Refusal
{
    Foreign,
    WrongVersion,
    Busy,
    HeldByAdministrator,
    Damaged
};

QString text(dao::Database& db, const QString& sql)
{
    auto rs = db.OpenRecordset(sql);
    return rs->RecordCount() > 0 ? rs->Fields(0).Text() : QString();
}

} // namespace

class TestClient : public QObject
{
    Q_OBJECT

private slots:
    void statusFromTheCommandLine()
    {
        TempSite site;
        site.person(QStringLiteral("Jo Bloggs"), QStringLiteral("jo"))
            .person(QStringLiteral("Ann Lee"), QStringLiteral("alee"))
            .status(QStringLiteral("Jo Bloggs"), QStringLiteral("Out"))
            .tracking(QStringLiteral("Ann Lee"), QStringLiteral("Jo Bloggs"), QStringLiteral("Out"));
        const long long counterBefore = database::readCounter(*site.openDb(), QStringLiteral("Counter"));
        const QString folder = site.path().chopped(1);
        const QString user = installed(QStringLiteral(VESKOR_USER_BINARY), folder);
        QVERIFY(!user.isEmpty());

        QProcess client;
        prepareClient(client, folder, QByteArray());
        client.start(user, {QStringLiteral("-UID:jo"), QStringLiteral("-STS:Busy")});
        QVERIFY(client.waitForStarted());

        // The write lands within a few seconds; the client then runs on until stopped.
        const auto written = [&] {
            auto db = site.openDb();
            return text(*db, "SELECT Status FROM EmployeeTable WHERE Name = \"Jo Bloggs\"") == "Busy" &&
                   text(*db, "SELECT TrackeeStatus FROM EmployeeStatusTracking WHERE Trackee = \"Jo Bloggs\"") ==
                       "Busy" &&
                   text(*db, "SELECT Count(*) FROM TransactionLogTable WHERE Status = \"Busy\"") == "1" &&
                   database::readCounter(*db, QStringLiteral("Counter")) > counterBefore;
        };
        QTRY_VERIFY_WITH_TIMEOUT(written(), 20000);
        // The board's Load (AutoLogIn's "In") ran before the given status, not after it.
        QTest::qWait(3000);
        QVERIFY(written());
        QCOMPARE(client.state(), QProcess::Running);
        client.kill();
        client.waitForFinished();

        auto db = site.openDb();
        QCOMPARE(text(*db, "SELECT ActiveFlag FROM EmployeeTable WHERE Name = \"Jo Bloggs\""), QStringLiteral("Yes"));
        // The log row names who and where: login, machine and address are all known at start.
        for (const char* column : {"NetworkLogonID", "ComputerName", "IPAddress"}) {
            const QString sql = QStringLiteral("SELECT %1 FROM TransactionLogTable WHERE Status = \"Busy\"");
            QVERIFY2(!text(*db, sql.arg(QLatin1String(column))).isEmpty(), column);
        }
        QCOMPARE(readFile(folder + QStringLiteral("/boxes.log")), QByteArray()); // no box on the way
    }

    void refusedFile_data()
    {
        QTest::addColumn<Refusal>("refusal");
        QTest::addColumn<QString>("box");  // the start of the one box: title, flags, text
        QTest::addColumn<QString>("part"); // and a part of its text further on
        const QString title = QStringLiteral(" VESK-OR Pro  - Error in Initialize Local Database\t");
        const QString damaged = QStringLiteral("\\rPlease inform the Network Supervisor that the database is damaged");
        QTest::newRow("not a database") << Refusal::Foreign << title + "48\t" << damaged;
        QTest::newRow("another DatabaseVersion") << Refusal::WrongVersion << title + "16\t%1veskor.mdb"
                                                 << "\\r\\nis not a VESK-OR 2005 database.";
        QTest::newRow("busy past three tries")
            << Refusal::Busy << title + "0\tError (3050 ) in modDatabase - subInitializeLocalDatabase event"
            << "\\rUnable to start VESK-OR at this time. Please try again...";
        QTest::newRow("held by the administrator")
            << Refusal::HeldByAdministrator << title + "0\tError (3045 ) in modDatabase"
            << "";
        QTest::newRow("damaged") << Refusal::Damaged << title + "48\t" << damaged;
    }

    // A file the start refuses gets its box and nothing else: no board comes up,
    // no byte of the file changes, no socket is left, and the run ends normally.
    void refusedFile()
    {
        QFETCH(Refusal, refusal);
        QFETCH(QString, box);
        QFETCH(QString, part);
        TempSite site;
        site.person(QStringLiteral("Jo Bloggs"), QStringLiteral("jo"));
        switch (refusal) {
        case Refusal::Foreign:
            writeFile(site.dbPath(), QByteArray(8192, 'x'));
            break;
        case Refusal::WrongVersion:
            site.setting(QStringLiteral("DatabaseVersion"), QStringLiteral("2004"));
            break;
        case Refusal::Damaged: {
            // The schema's page overwritten past the file header.
            QFile file(site.dbPath());
            QVERIFY(file.open(QIODevice::ReadWrite));
            file.seek(100);
            file.write(QByteArray(400, '\xff'));
            break;
        }
        default:
            break;
        }
        // Read before any lock is taken: closing a file of this process would drop the locks on it.
        const QByteArray before = readFile(site.dbPath());
        std::shared_ptr<dao::Database> administrator;
        sqlite3* otherClient = nullptr;
        if (refusal == Refusal::Busy) {
            sqlite3_open(QFile::encodeName(site.dbPath()).constData(), &otherClient);
            sqlite3_exec(otherClient, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
        } else if (refusal == Refusal::HeldByAdministrator) {
            administrator = dao::DBEngine::OpenDatabase(site.dbPath(), true);
        }
        const QString folder = site.path().chopped(1);
        const QString user = installed(QStringLiteral(VESKOR_USER_BINARY), folder);
        QTemporaryDir runtime;

        QProcess client;
        prepareClient(client, folder, "OK\n");
        QProcessEnvironment env = client.processEnvironment();
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
        client.setProcessEnvironment(env);
        client.start(user, {QStringLiteral("-UID:jo")});
        const bool finished = client.waitForFinished(60000);
        sqlite3_close(otherClient);
        QVERIFY(finished);
        QCOMPARE(client.exitStatus(), QProcess::NormalExit);
        QCOMPARE(client.exitCode(), 0);
        const QStringList boxes = boxesShown(folder);
        QCOMPARE(boxes.size(), 1);
        QVERIFY2(boxes.front().startsWith(QString(box).replace(QStringLiteral("%1"), site.path())) &&
                     boxes.front().contains(part),
                 qPrintable(boxes.front()));
        administrator.reset();
        QVERIFY(readFile(site.dbPath()) == before);
        QCOMPARE(QDir(runtime.path()).entryList(QDir::Files | QDir::System), QStringList());
    }

    void noSettingsFile()
    {
        QTemporaryDir folder;
        const QString user = installed(QStringLiteral(VESKOR_USER_BINARY), folder.path());
        QProcess client;
        prepareClient(client, folder.path(), "OK\n");
        client.start(user, {});
        QVERIFY(client.waitForFinished(20000));
        QCOMPARE(client.exitStatus(), QProcess::NormalExit);
        QCOMPARE(client.exitCode(), 0);
        QCOMPARE(readFile(folder.filePath(QStringLiteral("boxes.log"))),
                 QByteArray(" VESK-OR Pro  - Error in Initialize Local Database\t16\tThe VESKOR.INI file is missing "
                            "from the Application Path.\\r\\nPlease ask your VESK-OR Administrator to correct this "
                            "problem.\\r\\nUnable to continue. Press OK to exit.\n"));
    }

    void inicheckWaitsThenStartsTheClient()
    {
        QTemporaryDir folder;
        const QString inicheck = installed(QStringLiteral(VESKOR_INICHECK_BINARY), folder.path());
        QVERIFY(!inicheck.isEmpty());
        // A stand-in client that writes down the arguments it was started with.
        const QString started = folder.filePath(QStringLiteral("started"));
        writeFile(folder.filePath(QStringLiteral("user")),
                  "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$(dirname \"$0\")/started\"\n");
        QFile(folder.filePath(QStringLiteral("user")))
            .setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        database::writeSettingsFile(folder.path());
        database::setForcedShutDown(folder.path(), true);

        QProcess process;
        process.start(inicheck, {QStringLiteral("-UID:  -STS:ForcedShutDown")});
        QVERIFY(process.waitForStarted());
        QTest::qWait(1500);
        QCOMPARE(process.state(), QProcess::Running);
        QVERIFY(!QFile::exists(started));

        database::setForcedShutDown(folder.path(), false);
        QVERIFY(process.waitForFinished(15000));
        QCOMPARE(process.exitCode(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(readFile(started), QByteArray("-UID:  -STS:ForcedShutDown\n"), 5000);
    }
};

QTEST_GUILESS_MAIN(TestClient)
#include "tst_client.moc"
