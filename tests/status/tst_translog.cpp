// The log row: its nine columns, the flag that gates it, and the one message at
// the run's third failed insert.
#include "status/translog.h"
#include "statusfixture.h"

#include <QTest>
#include <sqlite3.h>

using namespace platform;

namespace {

// Renames a table behind the engine's back, through a connection of SQLite's own.
void renameTable(const QString& dbPath, const char* from, const char* to)
{
    sqlite3* db = nullptr;
    QCOMPARE(sqlite3_open_v2(QFile::encodeName(dbPath).constData(), &db, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
    const QByteArray sql = QByteArray("ALTER TABLE ") + from + " RENAME TO " + to;
    const int rc = sqlite3_exec(db, sql.constData(), nullptr, nullptr, nullptr);
    sqlite3_close(db);
    QCOMPARE(rc, SQLITE_OK);
}

} // namespace

class TstTransLog : public QObject
{
    Q_OBJECT

private slots:
    void nineColumns_data();
    void nineColumns();
    void flagOffOpensNothing();
    void thirdFailureOfTheRunIsReported();
};

void TstTransLog::nineColumns_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("loggedName");
    QTest::addColumn<QString>("logDateTime");

    const QLocale us(QLocale::English, QLocale::UnitedStates);
    const QLocale de(QLocale::German, QLocale::Germany);
    QTest::newRow("empty name") << "" << us << "Ann Lee"
                                << "46348.3958333333";
    QTest::newRow("given name") << "Bob Ray" << us << "Bob Ray"
                                << "46348.3958333333";
    QTest::newRow("decimal comma kept") << "" << de << "Ann Lee"
                                        << "46348,3958333333";
}

void TstTransLog::nineColumns()
{
    QFETCH(QString, name);
    QFETCH(QLocale, locale);
    QFETCH(QString, loggedName);
    QFETCH(QString, logDateTime);

    StatusFixture f;
    QLocale::setDefault(locale);
    subUpdateTransactionLog(QStringLiteral("Busy"), QStringLiteral("3pm"), QStringLiteral("Say \"hi\""), name);

    QCOMPARE(f.row("SELECT Name, Status, DueBack, Comments, LastModified, NetworkLogonID, LogDateTime, ComputerName,"
                   " IPAddress FROM TransactionLogTable"),
             (QStringList{loggedName, "Busy", "3pm", "Say \"hi\"", "2026-11-22 09:30:00 by Ann Lee", "alee",
                          logDateTime, "DESK-07", "10.0.0.5"}));
}

void TstTransLog::flagOffOpensNothing()
{
    StatusFixture f;
    gblnTransactionLog = false;
    subUpdateTransactionLog(QStringLiteral("Busy"), QString(), QString(), QString());
    QCOMPARE(f.count("TransactionLogTable"), 0);
    QVERIFY(!gdbDatabase);
}

// Each of three changes fails once and then succeeds on its retry, except the
// third failure of the run, which is reported and loses its row. A lasting
// failure after that gives up after a bounded number of tries, with no message.
void TstTransLog::thirdFailureOfTheRunIsReported()
{
    StatusFixture f;
    f.gw.boxes().answer(vbOK);
    for (int change = 1; change <= 3; ++change) {
        renameTable(f.site.dbPath(), "TransactionLogTable", "LogAway");
        // Runs in the pause between tries.
        QTimer::singleShot(0, [&] { renameTable(f.site.dbPath(), "LogAway", "TransactionLogTable"); });
        subUpdateTransactionLog(QStringLiteral("Busy"), QString(), QString(), QString::number(change));
        QCOMPARE(f.gw.boxes().count(), change == 3 ? 1 : 0);
        QCoreApplication::processEvents();
    }
    QCOMPARE(f.value("SELECT COUNT(*) FROM TransactionLogTable"), QStringLiteral("2"));
    const ShownBox box = f.gw.boxes().last();
    QCOMPARE(box.title, QStringLiteral("VESK-OR - Repair/Compacting Error"));
    QCOMPARE(box.flags, vbOKOnly + vbExclamation);
    QVERIFY2(box.prompt.startsWith("Cannot complete the current operation due to the following error: ( "),
             qPrintable(box.prompt));
    QVERIFY(box.prompt.endsWith("\r\rPossible causes:\rSomeone was updating their status at the exact moment you "
                                "selected OK.\rSomeone has the database open using MS Access.\r\r ) in modUser - "
                                "subUpdateTransactionLog event"));

    renameTable(f.site.dbPath(), "TransactionLogTable", "LogAway");
    subUpdateTransactionLog(QStringLiteral("Busy"), QString(), QString(), QString());
    QCOMPARE(f.gw.boxes().count(), 1);
    QVERIFY(f.gw.clock().sleptMs() > 0);
}

QTEST_GUILESS_MAIN(TstTransLog)
#include "tst_translog.moc"
