// Many real clients on one site at once: twenty starting together, and clients killed at random
// moments of their writes, leave every change whole and counted once.
#include "realclient.h"
#include "tempsite.h"

#include <QRandomGenerator>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <memory>
#include <vector>

namespace {

// People whose row, tracking mirror and last log row disagree ("Start" before any).
const QString kDisagreeing = QStringLiteral(
    "SELECT group_concat(e.Name || ': ' || e.Status || '/' || t.TrackeeStatus || '/' || coalesce(l.Status, 'Start')) "
    "FROM EmployeeTable e JOIN EmployeeStatusTracking t ON t.Trackee = e.Name "
    "LEFT JOIN TransactionLogTable l ON l.rowid = (SELECT max(rowid) FROM TransactionLogTable WHERE Name = e.Name) "
    "WHERE e.Status <> t.TrackeeStatus OR e.Status <> coalesce(l.Status, 'Start')");

// A site with people p1..pN, each followed by a watcher, and their clients.
struct Crowd
{
    TempSite site;
    QString counterBefore;
    std::vector<std::unique_ptr<RealClient>> clients;

    explicit Crowd(int count)
    {
        site.person("Watcher");
        for (int i = 1; i <= count; ++i) {
            const QString name = QStringLiteral("Person %1").arg(i);
            site.person(name, QStringLiteral("p%1").arg(i)).status(name, "Start").tracking("Watcher", name, "Start");
        }
        counterBefore = value("SELECT Counter FROM StatusCounterTable");
    }
    // One client for each of people 1..count, with the word on its command line.
    void start(int count, const QString& word)
    {
        clients.clear();
        for (int i = 1; i <= count; ++i) {
            clients.push_back(std::make_unique<RealClient>(
                site.path(), QStringList{QStringLiteral("-UID:p%1").arg(i), "-STS:" + word}));
        }
    }
    void endAll()
    {
        for (auto& client : clients) {
            ::kill(pid_t(client->process.processId()), SIGTERM); // the ordinary end
        }
        for (auto& client : clients) {
            client->process.waitForFinished(30000);
        }
    }
    int peopleWith(const QString& word) const
    {
        return value(QStringLiteral("SELECT Count(*) FROM EmployeeTable WHERE Status = '%1'").arg(word)).toInt();
    }
    // What disagrees: the file's integrity, the counter's rise against the log
    // rows added, and each person's row, mirror and last log row; "" when nothing.
    QString disagreement() const
    {
        const QString integrity = value("PRAGMA integrity_check");
        const QString unlogged = value("SELECT (SELECT Counter FROM StatusCounterTable) - " + counterBefore +
                                       " - (SELECT Count(*) FROM TransactionLogTable)");
        if (integrity != QLatin1String("ok") || unlogged != QLatin1String("0")) {
            return integrity + ", counter rise less log rows added: " + unlogged;
        }
        return value(kDisagreeing);
    }
    // Read by SQLite itself, not through the engine under test; the name indexes
    // are checked with the engine's fold.
    QString value(const QString& sql) const
    {
        return sqliteValue(site.dbPath(), sql);
    }
};

} // namespace

class TestContention : public QObject
{
    Q_OBJECT

private slots:
    // Five rounds of twenty clients starting at once; the words have rows in
    // StatusTypesTable and are not protected, so each ordinary end writes "Out".
    void twentyClientsAtOnce()
    {
        constexpr int kClients = 20;
        Crowd crowd(kClients);
        crowd.site.statusType({"Training", 12}).statusType({"Visiting", 13});
        for (const QString word : {"Busy", "At Lunch", "In Meeting", "Training", "Visiting"}) {
            crowd.start(kClients, word);
            QTRY_COMPARE_WITH_TIMEOUT(crowd.peopleWith(word), kClients, 90000);
            crowd.endAll();
            QCOMPARE(crowd.peopleWith("Out"), kClients);
            QCOMPARE(crowd.value("SELECT Count(*) FROM TransactionLogTable WHERE Status = '" + word + "'"),
                     QString::number(kClients));
        }
        QCOMPARE(readFile(crowd.site.path() + "boxes.log"), QByteArray());
        QCOMPARE(crowd.disagreement(), QString());
    }

    // Fifty clients killed, five at a time, each at its own moment within its
    // first 400 ms, while its first writes (the status at log-in and the one asked
    // for) run.
    void killedClientsLeaveWholeChanges()
    {
        constexpr int kClients = 5;
        Crowd crowd(kClients);
        for (int round = 1; round <= 10; ++round) {
            crowd.start(kClients, QStringLiteral("Word %1").arg(round));
            for (auto& client : crowd.clients) {
                QTimer::singleShot(50 + QRandomGenerator::global()->bounded(350), &client->process,
                                   [&client] { ::kill(pid_t(client->process.processId()), SIGKILL); });
            }
            for (auto& client : crowd.clients) {
                QTRY_VERIFY_WITH_TIMEOUT(client->process.state() == QProcess::NotRunning, 30000);
            }
            QCOMPARE(crowd.disagreement(), QString());
        }
        // The next clients start cleanly on what the killed ones left.
        crowd.start(kClients, "After");
        QTRY_COMPARE_WITH_TIMEOUT(crowd.peopleWith("After"), kClients, 60000);
        crowd.endAll();
        QCOMPARE(readFile(crowd.site.path() + "boxes.log"), QByteArray());
        QCOMPARE(crowd.disagreement(), QString());
    }
};

QTEST_GUILESS_MAIN(TestContention)
#include "tst_contention.moc"
