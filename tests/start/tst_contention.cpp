// Many real clients on one site at once. Twenty start together, each writing the
// status of its command line: every status lands, no box shows, and every change
// raises the counter once. Clients killed at random moments of their writes
// leave each person's row, tracking mirror and last log row in agreement, and the
// counter's rise equal to the log rows added.
#include "dao/dao.h"
#include "database/site.h"
#include "tempsite.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <memory>
#include <sqlite3.h>
#include <vector>

namespace {

QString uid(int i)
{
    return QStringLiteral("p%1").arg(i, 2, 10, QLatin1Char('0'));
}

QString nameOf(int i)
{
    return QStringLiteral("Person %1").arg(i, 2, 10, QLatin1Char('0'));
}

// A site with people 1..count, each followed by a watcher, and the client beside it.
struct Crowd
{
    TempSite site;
    QString user;
    long long counterBefore = 0;
    std::vector<std::unique_ptr<QProcess>> clients;

    explicit Crowd(int count)
    {
        site.person(QStringLiteral("Watcher"), QStringLiteral("watch"));
        for (int i = 1; i <= count; ++i) {
            site.person(nameOf(i), uid(i))
                .status(nameOf(i), QStringLiteral("Start"))
                .tracking(QStringLiteral("Watcher"), nameOf(i), QStringLiteral("Start"));
        }
        counterBefore = database::readCounter(*site.openDb(), QStringLiteral("Counter"));
        user = QDir(site.path()).filePath(QStringLiteral("user"));
        QFile::copy(QStringLiteral(VESKOR_USER_BINARY), user);
        QFile(site.path() + QStringLiteral("answers.txt")).open(QIODevice::WriteOnly);
    }
    ~Crowd()
    {
        for (auto& client : clients) {
            client->kill();
            client->waitForFinished(5000);
        }
    }
    QString boxLog(int i) const
    {
        return site.path() + QStringLiteral("boxes-%1.log").arg(i);
    }
    // Starts one client per person 1..clients.size() with the word on its command line.
    void start(int count, const QString& word)
    {
        clients.clear();
        for (int i = 1; i <= count; ++i) {
            auto client = std::make_unique<QProcess>();
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
            env.insert(QStringLiteral("VESKOR_MSGBOX_ANSWERS"), site.path() + QStringLiteral("answers.txt"));
            env.insert(QStringLiteral("VESKOR_MSGBOX_LOG"), boxLog(i));
            client->setProcessEnvironment(env);
            client->setWorkingDirectory(site.path());
            client->start(user, {QStringLiteral("-UID:") + uid(i), QStringLiteral("-STS:") + word});
            clients.push_back(std::move(client));
        }
    }
    void signalAll(int signal)
    {
        for (auto& client : clients) {
            ::kill(pid_t(client->processId()), signal);
        }
        for (auto& client : clients) {
            client->waitForFinished(30000);
        }
    }
    int peopleWith(const QString& word) const
    {
        return sqliteText(QStringLiteral("SELECT Count(*) FROM EmployeeTable WHERE Status = '%1'").arg(word)).toInt();
    }
    QString boxesShown(int count) const
    {
        QString shown;
        for (int i = 1; i <= count; ++i) {
            QFile file(boxLog(i));
            if (file.open(QIODevice::ReadOnly)) {
                shown += QString::fromUtf8(file.readAll());
            }
        }
        return shown;
    }
    // The first disagreement between rows, mirrors, log and counter; "" when none.
    QString disagreement(int count) const
    {
        const QString integrity = sqliteText(QStringLiteral("PRAGMA integrity_check"));
        if (integrity != QLatin1String("ok")) {
            return integrity;
        }
        const long long rise = database::readCounter(*site.openDb(), QStringLiteral("Counter")) - counterBefore;
        const long long logged = sqliteText(QStringLiteral("SELECT Count(*) FROM TransactionLogTable")).toLongLong();
        if (rise != logged) {
            return QStringLiteral("counter rose %1 for %2 log rows").arg(rise).arg(logged);
        }
        for (int i = 1; i <= count; ++i) {
            const QString who = QStringLiteral("'%1'").arg(nameOf(i));
            const QString row = sqliteText(QStringLiteral("SELECT Status FROM EmployeeTable WHERE Name = ") + who);
            const QString mirror =
                sqliteText(QStringLiteral("SELECT TrackeeStatus FROM EmployeeStatusTracking WHERE Trackee = ") + who);
            const QString last = sqliteText(QStringLiteral("SELECT coalesce(max(Status), 'Start') FROM "
                                                           "TransactionLogTable WHERE rowid = (SELECT max(rowid) "
                                                           "FROM TransactionLogTable WHERE Name = ") +
                                            who + QStringLiteral(")"));
            if (row != mirror || row != last) {
                return nameOf(i) + QStringLiteral(": row '%1', mirror '%2', log '%3'").arg(row, mirror, last);
            }
        }
        return QString();
    }
    // One value by SQLite itself, not through the engine under test. Read-write,
    // as a client opens it: a change a killed client left half-done in the
    // journal is rolled back on the way.
    QString sqliteText(const QString& sql) const
    {
        sqlite3* db = nullptr;
        sqlite3_open_v2(QFile::encodeName(site.dbPath()).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_busy_timeout(db, 5000);
        sqlite3_stmt* stmt = nullptr;
        QString value = QStringLiteral("<failed>");
        if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &stmt, nullptr) == SQLITE_OK &&
            sqlite3_step(stmt) == SQLITE_ROW) {
            value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)));
        }
        sqlite3_finalize(stmt);
        sqlite3_close(db);
        return value;
    }
};

} // namespace

class TestContention : public QObject
{
    Q_OBJECT

private slots:
    void twentyClientsAtOnce()
    {
        constexpr int kClients = 20;
        Crowd crowd(kClients);
        const QStringList words = {QStringLiteral("Busy"), QStringLiteral("At Lunch"), QStringLiteral("In Meeting")};
        for (const QString& word : words) {
            crowd.start(kClients, word);
            QTRY_COMPARE_WITH_TIMEOUT(crowd.peopleWith(word), kClients, 90000);
            crowd.signalAll(SIGTERM); // the ordinary end: inactive, and Out with AutoLogOut
            QCOMPARE(crowd.peopleWith(QStringLiteral("Out")), kClients);
        }
        QCOMPARE(crowd.boxesShown(kClients), QString());
        QCOMPARE(crowd.disagreement(kClients), QString());
        for (const QString& word : words) {
            QCOMPARE(crowd.sqliteText("SELECT Count(*) FROM TransactionLogTable WHERE Status = '" + word + "'"),
                     QString::number(kClients));
        }
    }

    void killedClientsLeaveWholeChanges()
    {
        constexpr int kClients = 5;
        constexpr int kRounds = 10;
        Crowd crowd(kClients);
        for (int round = 1; round <= kRounds; ++round) {
            crowd.start(kClients, QStringLiteral("Word %1").arg(round));
            // Each client dies at its own moment within its first 400 ms, while its
            // first writes (the status at log-in and the one asked for) run.
            for (auto& client : crowd.clients) {
                QTimer::singleShot(50 + QRandomGenerator::global()->bounded(350), client.get(),
                                   [&client] { ::kill(pid_t(client->processId()), SIGKILL); });
            }
            for (auto& client : crowd.clients) {
                QTRY_VERIFY_WITH_TIMEOUT(client->state() == QProcess::NotRunning, 30000);
            }
            QCOMPARE(crowd.disagreement(kClients), QString());
        }
        // The next clients start cleanly on what the killed ones left.
        crowd.start(kClients, QStringLiteral("After"));
        QTRY_COMPARE_WITH_TIMEOUT(crowd.peopleWith(QStringLiteral("After")), kClients, 60000);
        crowd.signalAll(SIGTERM);
        QCOMPARE(crowd.boxesShown(kClients), QString());
        QCOMPARE(crowd.disagreement(kClients), QString());
    }
};

QTEST_GUILESS_MAIN(TestContention)
#include "tst_contention.moc"
