// The stress test's burst: 1,000 rounds of "In" then "Busy" for one selected
// person (2,000 status writes, each the row, the status code look-up, the
// tracking mirror, the change counter and the log row in one unit), in an office
// of 10,000 people, with events let through between rounds as the screen does.
// Its raw twin does the same seven statements a write on the same file, each
// write in one BEGIN IMMEDIATE transaction, with its statements prepared once and
// kept. At the end the ratio engine/raw is printed; the goal is 1.5 or less.
#include "dao/sqlfunctions.h"
#include "database/moddatabase.h"
#include "database/site.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "ratioreporter.h"
#include "side/frmtestharness.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace {

constexpr long long kRounds = 1000;
const QString kPerson = QStringLiteral("Person 05000");
QString g_dbPath;

QString personName(int i)
{
    return QStringLiteral("Person %1").arg(i, 5, 10, QLatin1Char('0'));
}

// Runs a statement prepared once and kept: binds in order, steps every row reading
// every column, resets; answers the first column of the first row.
class Statement
{
public:
    Statement(sqlite3* db, const char* sql)
    {
        sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &m_stmt, nullptr);
    }
    ~Statement()
    {
        sqlite3_finalize(m_stmt);
    }
    Statement& bind(const QByteArray& text)
    {
        sqlite3_bind_text(m_stmt, ++m_at, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        return *this;
    }
    Statement& bind(sqlite3_int64 value)
    {
        sqlite3_bind_int64(m_stmt, ++m_at, value);
        return *this;
    }
    Statement& bind(double value)
    {
        sqlite3_bind_double(m_stmt, ++m_at, value);
        return *this;
    }
    sqlite3_int64 run()
    {
        sqlite3_int64 first = 0;
        for (bool firstRow = true; sqlite3_step(m_stmt) == SQLITE_ROW; firstRow = false) {
            for (int i = 0; i < sqlite3_column_count(m_stmt); ++i) {
                benchmark::DoNotOptimize(sqlite3_column_text(m_stmt, i));
            }
            if (firstRow) {
                first = sqlite3_column_int64(m_stmt, 0);
            }
        }
        sqlite3_reset(m_stmt);
        m_at = 0;
        return first;
    }

private:
    sqlite3_stmt* m_stmt = nullptr;
    int m_at = 0;
};

// 10,000 people, five of them following the one the burst changes, the log on.
void makeSite(const QString& dir)
{
    database::createSite(dir);
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(QDir(dir).filePath(database::kDatabaseFileName)).constData(), &db,
                    SQLITE_OPEN_READWRITE, nullptr);
    dao::registerSqlFunctions(db);
    sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    {
        Statement person(db,
                         "INSERT INTO EmployeeTable (Name, Status, StatusCode, ActiveFlag) VALUES (?, 'In', 1, 'No')");
        Statement settings(db, "INSERT INTO EmployeeSettingsTable (Name) VALUES (?)");
        for (int i = 0; i < 10000; ++i) {
            person.bind(personName(i).toUtf8()).run();
            settings.bind(personName(i).toUtf8()).run();
        }
    }
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    auto site = database::openSite(dir);
    for (int i = 0; i < 5; ++i) {
        database::addTracking(*site, {personName(i), kPerson, QStringLiteral("In"), 0});
    }
    database::setSetting(*site, QStringLiteral("TransactionLogFlag"), QStringLiteral("True"));
    site->Close();
}

// The board with the one person selected.
struct OneSelected : MainScreen
{
    QStringList selectedRowTexts(int) const override
    {
        return {kPerson};
    }
};

void EngineBurst(benchmark::State& state)
{
    OneSelected board;
    setMainScreen(&board);
    gSite.gblnTransactionLog = true;
    gRun.gblnDatabaseClosed = true;
    frmTestHarness harness(nullptr, kRounds);
    for (auto _ : state) {
        harness.Command1_Click();
    }
    TimerCloseDatabase_Timer();
    setMainScreen(nullptr);
}

double dateNumber(const QDateTime& when)
{
    return double(QDate(1899, 12, 30).daysTo(when.date())) + when.time().msecsSinceStartOfDay() / 86400000.0;
}

void RawBurst(benchmark::State& state)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(g_dbPath).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    dao::registerSqlFunctions(db);
    sqlite3_exec(db, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(db, 2000);
    {
        Statement person(db, "SELECT rowid, * FROM EmployeeTable WHERE jetfold(Name) = ?");
        Statement code(db, "SELECT StatusCode, * FROM StatusTypesTable WHERE Status = ?");
        Statement row(db, "UPDATE EmployeeTable SET StatusCode = ?, Status = ?, LastModified = ? WHERE rowid = ?");
        Statement mirror(
            db, "UPDATE EmployeeStatusTracking SET TrackeeStatus = ?, TrackeeLastUpdated = ? WHERE Trackee = ?");
        Statement counter(db, "SELECT Counter, rowid FROM StatusCounterTable");
        Statement raise(db, "UPDATE StatusCounterTable SET Counter = ? WHERE rowid = 1");
        Statement log(db, "INSERT INTO TransactionLogTable (Name, Status, DueBack, Comments, LastModified, "
                          "NetworkLogonID, LogDateTime, ComputerName, IPAddress) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
        const QByteArray name = kPerson.toUtf8();
        const QByteArray folded = kPerson.toLower().toUtf8();
        const auto write = [&](const QByteArray& status) {
            const QDateTime now = QDateTime::currentDateTime();
            const QByteArray stamp = now.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toUtf8() + " by " + name;
            sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
            const sqlite3_int64 rowid = person.bind(folded).run();
            row.bind(code.bind(status).run()).bind(status).bind(stamp).bind(rowid).run();
            mirror.bind(status).bind(dateNumber(now)).bind(name).run();
            log.bind(name)
                .bind(status)
                .bind(QByteArray())
                .bind(QByteArray())
                .bind(stamp)
                .bind(QByteArray("jo"))
                .bind(QByteArray::number(dateNumber(now), 'g', 15))
                .bind(QByteArray("DESK-07"))
                .bind(QByteArray("10.0.0.5"))
                .run();
            raise.bind(counter.run() + 1).run();
            sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
        };
        for (auto _ : state) {
            for (long long round = 0; round < kRounds; ++round) {
                write("In");
                write("Busy");
                QCoreApplication::processEvents();
            }
        }
    }
    sqlite3_close(db);
}

BENCHMARK(EngineBurst)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(RawBurst)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv); // the stress screen is a window, and its events run between rounds
    QTemporaryDir dir;
    makeSite(dir.path());
    g_dbPath = QDir(dir.path()).filePath(database::kDatabaseFileName);
    gRun.gstrCurrentDatabasePath = database::siteFolderText(dir.path());
    gRun.gstrDefaultUser = QStringLiteral("Person 00001");
    gRun.gstrLoginName = QStringLiteral("jo");
    gRun.gstrComputerName = QStringLiteral("DESK-07");
    gRun.gstrIPAddress = QStringLiteral("10.0.0.5");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    RatioReporter reporter({{"StressBurst engine/raw", "EngineBurst/iterations:1", "RawBurst/iterations:1"}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
