// The real client on a site, ended from outside: by a signal or the session's end
// it takes its ordinary end; a second start for the same person raises the first
// and leaves, while a start for another person goes on.
#include "dao/dao.h"
#include "tempsite.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

namespace {

const QString kJo = QStringLiteral("Jo Bloggs");
const QString kAnn = QStringLiteral("Ann Lee");

// The client copied beside the site's veskor.ini, started offscreen with boxes
// answered from an empty file (so any box is logged and never waits).
class Client
{
public:
    // runtime: the account's private folder, where the board's socket and lock file lie.
    Client(const TempSite& site, const QStringList& arguments, const QString& runtime)
        : m_folder(site.path().chopped(1))
    {
        const QString program = QDir(m_folder).filePath(QStringLiteral("user"));
        if (!QFile::exists(program)) {
            QFile::copy(QStringLiteral(VESKOR_USER_BINARY), program);
        }
        QFile answers(QDir(m_folder).filePath(QStringLiteral("answers.txt")));
        answers.open(QIODevice::WriteOnly | QIODevice::Truncate);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("VESKOR_MSGBOX_ANSWERS"), answers.fileName());
        env.insert(QStringLiteral("VESKOR_MSGBOX_LOG"), boxLog());
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime);
        m_process.setProcessEnvironment(env);
        m_process.setWorkingDirectory(m_folder);
        m_process.start(program, arguments);
    }
    ~Client()
    {
        if (m_process.state() != QProcess::NotRunning) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    QProcess& process()
    {
        return m_process;
    }
    QString boxLog() const
    {
        return QDir(m_folder).filePath(QStringLiteral("boxes.log"));
    }

private:
    QString m_folder;
    QProcess m_process;
};

QString fieldOf(const TempSite& site, const QString& name, const QString& column)
{
    auto rs = site.openDb()->OpenRecordset(QStringLiteral("SELECT %1 FROM EmployeeTable WHERE Name = ").arg(column) +
                                           dao::quote(name));
    return rs->RecordCount() > 0 ? rs->Fields(0).Text() : QString();
}

bool isActive(const TempSite& site, const QString& name)
{
    return fieldOf(site, name, QStringLiteral("ActiveFlag")) == QLatin1String("Yes");
}

// What a board leaves in the private folder: its socket and lock file while it runs.
QStringList leftIn(const QTemporaryDir& runtime)
{
    return QDir(runtime.path()).entryList(QDir::Files | QDir::System);
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestEndOfRun : public QObject
{
    Q_OBJECT

private slots:
    void endFromOutside_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<bool>("autoLogOut");
        QTest::addColumn<QString>("status");
        QTest::newRow("SIGTERM, AutoLogOut") << int(SIGTERM) << true << "Out";
        QTest::newRow("SIGINT, no AutoLogOut") << int(SIGINT) << false << "Busy";
        QTest::newRow("SIGHUP (session gone), AutoLogOut") << int(SIGHUP) << true << "Out";
    }

    // A signal ends the run the ordinary way: the person is inactive afterwards and,
    // with AutoLogOut, Out; the process leaves normally and shows no box.
    void endFromOutside()
    {
        QFETCH(int, signal);
        QFETCH(bool, autoLogOut);
        QFETCH(QString, status);
        TempSite site;
        site.person(kJo, QStringLiteral("jo")).status(kJo, QStringLiteral("Busy"));
        site.execute(QStringLiteral("UPDATE EmployeeSettingsTable SET AutoLogIn = False, AutoLogOut = %1")
                         .arg(autoLogOut ? QStringLiteral("True") : QStringLiteral("False")));
        QTemporaryDir runtime;
        Client client(site, {QStringLiteral("-UID:jo")}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kJo), 20000);
        QCOMPARE(leftIn(runtime).size(), 2);

        ::kill(pid_t(client.process().processId()), signal);
        QVERIFY(client.process().waitForFinished(20000));
        QCOMPARE(client.process().exitStatus(), QProcess::NormalExit);
        QCOMPARE(client.process().exitCode(), 0);
        QCOMPARE(leftIn(runtime), QStringList());
        QCOMPARE(fieldOf(site, kJo, QStringLiteral("ActiveFlag")), QStringLiteral("No"));
        QCOMPARE(fieldOf(site, kJo, QStringLiteral("Status")), status);
        QCOMPARE(contents(client.boxLog()), QByteArray());
    }

    void secondStart()
    {
        TempSite site;
        site.person(kJo, QStringLiteral("jo")).person(kAnn, QStringLiteral("alee"));
        QTemporaryDir runtime;
        Client first(site, {QStringLiteral("-UID:jo")}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kJo), 20000);
        const QStringList firstBoards = leftIn(runtime);

        // The same person again: it leaves at once, and leaves the first one's row,
        // socket and lock file alone.
        Client second(site, {QStringLiteral("-UID:jo")}, runtime.path());
        QVERIFY(second.process().waitForFinished(20000));
        QCOMPARE(second.process().exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.process().exitCode(), 0);
        QCOMPARE(first.process().state(), QProcess::Running);
        QVERIFY(isActive(site, kJo));
        QCOMPARE(leftIn(runtime), firstBoards);

        // Another person on the same desktop goes on.
        Client other(site, {QStringLiteral("-UID:alee")}, runtime.path());
        QTRY_VERIFY_WITH_TIMEOUT(isActive(site, kAnn), 20000);
        QTest::qWait(500);
        QCOMPARE(other.process().state(), QProcess::Running);
        QCOMPARE(contents(first.boxLog()), QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestEndOfRun)
#include "tst_endofrun.moc"
