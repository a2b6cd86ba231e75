// One status change written end to end (subUpdateDefaultUsersRecord with the
// file already open, as within a burst: the person's row, the status code
// look-up, the tracking mirror, the change counter and the log row) against raw
// SQLite doing the same seven statements on the same file. At the end the ratio
// engine/raw is printed; the goal is 1.5 or less.
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/site.h"
#include "ratioreporter.h"
#include "start/globals.h"
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
constexpr int kPeople = 200;
const QString kPerson = QStringLiteral("Person 100");

QString personName(int i)
{
    return QStringLiteral("Person %1").arg(i, 3, 10, QLatin1Char('0'));
}

// A site of 200 people; five of them follow the person whose status changes.
void makeSite(const QString& dir)
{
    database::createSite(dir);
    auto db = database::openSite(dir);
    for (int i = 0; i < kPeople; ++i) {
        database::addPerson(*db, {personName(i)});
    }
    for (int i = 0; i < 5; ++i) {
        database::addTracking(*db, {personName(i), kPerson, QStringLiteral("In"), 0});
    }
    database::setSetting(*db, QStringLiteral("TransactionLogFlag"), QStringLiteral("True"));
    db->Close();
}

void EngineStatusChange(benchmark::State& state)
{
    gstrDefaultUser = kPerson;
    gblnTransactionLog = true;
    gblnDatabaseClosed = true;
    subOpenDatabase(); // the burst's one real open
    bool busy = false;
    for (auto _ : state) {
        subUpdateDefaultUsersRecord((busy = !busy) ? QStringLiteral("Busy") : QStringLiteral("Out"));
    }
    TimerCloseDatabase_Timer();
}

// Prepares, binds texts and numbers in order, steps through every row reading
// every column, and finalizes: what a hand-written client does per statement.
class Statement
{
public:
    Statement(sqlite3* db, const char* sql)
    {
        sqlite3_prepare_v2(db, sql, -1, &m_stmt, nullptr);
    }
    ~Statement()
    {
        sqlite3_finalize(m_stmt);
    }
    Statement& bind(const QByteArray& text)
    {
        m_texts.push_back(text);
        sqlite3_bind_text(m_stmt, ++m_at, m_texts.back().constData(), int(text.size()), SQLITE_STATIC);
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
        return first;
    }

private:
    sqlite3_stmt* m_stmt = nullptr;
    std::vector<QByteArray> m_texts;
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
    sqlite3_exec(db, "PRAGMA journal_mode=DELETE; PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(db, 2000);
    const QByteArray person = kPerson.toUtf8();
    bool busy = false;
    for (auto _ : state) {
        const QByteArray status = (busy = !busy) ? "Busy" : "Out";
        const QDateTime now = QDateTime::currentDateTime();
        const QByteArray stamp = now.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toUtf8() + " by " + person;
        const sqlite3_int64 row =
            Statement(db, "SELECT rowid, * FROM EmployeeTable WHERE Name LIKE ?").bind(person).run();
        const sqlite3_int64 code =
            Statement(db, "SELECT StatusCode, * FROM StatusTypesTable WHERE Status = ?").bind(status).run();
        Statement(db, "UPDATE EmployeeTable SET StatusCode = ?, Status = ?, LastModified = ? WHERE rowid = ?")
            .bind(code)
            .bind(status)
            .bind(stamp)
            .bind(row)
            .run();
        Statement(db, "UPDATE EmployeeStatusTracking SET TrackeeStatus = ?, TrackeeLastUpdated = ? WHERE Trackee = ?")
            .bind(status)
            .bind(dateNumber(now))
            .bind(person)
            .run();
        const sqlite3_int64 counter = Statement(db, "SELECT Counter, rowid FROM StatusCounterTable").run();
        Statement(db, "UPDATE StatusCounterTable SET Counter = ? WHERE rowid = 1").bind(counter + 1).run();
        Statement(db, "INSERT INTO TransactionLogTable (Name, Status, DueBack, Comments, LastModified, NetworkLogonID,"
                      " LogDateTime, ComputerName, IPAddress) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)")
            .bind(person)
            .bind(status)
            .bind(QByteArray())
            .bind(QByteArray())
            .bind(stamp)
            .bind(QByteArray("jo"))
            .bind(QByteArray::number(dateNumber(now), 'g', 15))
            .bind(QByteArray("DESK-07"))
            .bind(QByteArray("10.0.0.5"))
            .run();
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
    gstrCurrentDatabasePath = database::siteFolderText(dir.path());
    gstrLoginName = QStringLiteral("jo");
    gstrComputerName = QStringLiteral("DESK-07");
    gstrIPAddress = QStringLiteral("10.0.0.5");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    RatioReporter reporter({{"StatusChange engine/raw", "EngineStatusChange", "RawStatusChange"}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
