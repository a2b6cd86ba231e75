// One status change written end to end (subUpdateDefaultUsersRecord with the
// file already open, as within a burst: the person's row, the status code
// look-up, the tracking mirror, the change counter and the log row) in an
// office of 10,000 people, against raw SQLite doing the same seven statements on
// the same file in one BEGIN IMMEDIATE transaction, with its statements prepared
// once and kept, as the engine keeps its own. At the end the ratio engine/raw
// is printed; the goal is 1.5 or less.
#include "dao/dao.h"
#include "dao/sqlfunctions.h"
#include "database/moddatabase.h"
#include "database/site.h"
#include "kernel/globals.h"
#include "ratioreporter.h"
#include "status/statuswrite.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <sqlite3.h>

namespace {

QString g_dbPath;
constexpr int kPeople = 10000;
const QString kPerson = QStringLiteral("Person 05000");

QString personName(int i)
{
    return QStringLiteral("Person %1").arg(i, 5, 10, QLatin1Char('0'));
}

// 10,000 rows of EmployeeTable and EmployeeSettingsTable in one transaction,
// with the engine's SQL functions, which the tables' indexes need.
void addPeople(const QString& dbPath)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(dbPath).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    dao::registerSqlFunctions(db);
    sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    for (const char* sql :
         {"INSERT INTO EmployeeTable (Name, Status, StatusCode, ActiveFlag) VALUES (?, 'In', 1, 'No')",
          "INSERT INTO EmployeeSettingsTable (Name) VALUES (?)"}) {
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr);
        for (int i = 0; i < kPeople; ++i) {
            const QByteArray name = personName(i).toUtf8();
            sqlite3_bind_text(stmt, 1, name.constData(), int(name.size()), SQLITE_TRANSIENT);
            if (sqlite3_step(stmt) != SQLITE_DONE)
                std::fprintf(stderr, "insert failed: %s\n", sqlite3_errmsg(db));
            sqlite3_reset(stmt);
        }
        sqlite3_finalize(stmt);
    }
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

// A site of 10,000 people; five of them follow the person whose status changes.
void makeSite(const QString& dir)
{
    database::createSite(dir);
    addPeople(QDir(dir).filePath(database::kDatabaseFileName));
    auto db = database::openSite(dir);
    for (int i = 0; i < 5; ++i) {
        database::addTracking(*db, {personName(i), kPerson, QStringLiteral("In"), 0});
    }
    database::setSetting(*db, QStringLiteral("TransactionLogFlag"), QStringLiteral("True"));
    db->Close();
}

void EngineStatusChange(benchmark::State& state)
{
    gRun.gstrDefaultUser = kPerson;
    gSite.gblnTransactionLog = true;
    gRun.gblnDatabaseClosed = true;
    subOpenDatabase(); // the burst's one real open
    bool busy = false;
    for (auto _ : state) {
        subUpdateDefaultUsersRecord((busy = !busy) ? QStringLiteral("Busy") : QStringLiteral("Out"));
    }
    TimerCloseDatabase_Timer();
}

// A statement prepared once and kept; each run binds texts and numbers in order,
// steps through every row reading every column, and resets.
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
    Statement& bind(double value)
    {
        sqlite3_bind_double(m_stmt, ++m_at, value);
        return *this;
    }
    Statement& bind(sqlite3_int64 value)
    {
        sqlite3_bind_int64(m_stmt, ++m_at, value);
        return *this;
    }
    // The first column of the first row (a rowid or a counter).
    sqlite3_int64 run()
    {
        sqlite3_int64 first = 0;
        bool firstRow = true;
        while (sqlite3_step(m_stmt) == SQLITE_ROW) {
            for (int i = 0; i < sqlite3_column_count(m_stmt); ++i) {
                benchmark::DoNotOptimize(sqlite3_column_text(m_stmt, i));
            }
            if (firstRow) {
                first = sqlite3_column_int64(m_stmt, 0);
                firstRow = false;
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

double dateNumber(const QDateTime& when)
{
    return double(QDate(1899, 12, 30).daysTo(when.date())) + when.time().msecsSinceStartOfDay() / 86400000.0;
}

void RawStatusChange(benchmark::State& state)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(g_dbPath).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    dao::registerSqlFunctions(db);
    sqlite3_exec(db, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(db, 2000);
    // The person's row by its index on the fold of the name, as the engine finds it.
    Statement person(db, "SELECT rowid, * FROM EmployeeTable WHERE jetfold(Name) = ?");
    Statement code(db, "SELECT StatusCode, * FROM StatusTypesTable WHERE Status = ?");
    Statement row(db, "UPDATE EmployeeTable SET StatusCode = ?, Status = ?, LastModified = ? WHERE rowid = ?");
    Statement mirror(db,
                     "UPDATE EmployeeStatusTracking SET TrackeeStatus = ?, TrackeeLastUpdated = ? WHERE Trackee = ?");
    Statement counter(db, "SELECT Counter, rowid FROM StatusCounterTable");
    Statement raise(db, "UPDATE StatusCounterTable SET Counter = ? WHERE rowid = 1");
    Statement log(db, "INSERT INTO TransactionLogTable (Name, Status, DueBack, Comments, LastModified, NetworkLogonID,"
                      " LogDateTime, ComputerName, IPAddress) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)");
    const QByteArray name = kPerson.toUtf8();
    const QByteArray folded = kPerson.toLower().toUtf8();
    bool busy = false;
    for (auto _ : state) {
        const QByteArray status = (busy = !busy) ? "Busy" : "Out";
        const QDateTime now = QDateTime::currentDateTime();
        const QByteArray stamp = now.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toUtf8() + " by " + name;
        sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        const sqlite3_int64 rowid = person.bind(folded).run();
        row.bind(code.bind(status).run()).bind(status).bind(stamp).bind(rowid).run();
        mirror.bind(status).bind(dateNumber(now)).bind(name).run();
        raise.bind(counter.run() + 1).run();
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
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    }
    sqlite3_close(db);
}

BENCHMARK(EngineStatusChange)->Unit(benchmark::kMicrosecond);
BENCHMARK(RawStatusChange)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv); // the close timer needs one
    QTemporaryDir dir;
    makeSite(dir.path());
    g_dbPath = QDir(dir.path()).filePath(database::kDatabaseFileName);
    gRun.gstrCurrentDatabasePath = database::siteFolderText(dir.path());
    gRun.gstrLoginName = QStringLiteral("jo");
    gRun.gstrComputerName = QStringLiteral("DESK-07");
    gRun.gstrIPAddress = QStringLiteral("10.0.0.5");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    RatioReporter reporter({{"StatusChange engine/raw", "EngineStatusChange", "RawStatusChange"}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
