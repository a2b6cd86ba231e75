// What one refresh costs when nothing changed: subGetCounterValues, with the
// check of the counters' table before it, (1) on a file already open, as during
// a burst of work, against one kept prepared select of StatusCounterTable on an
// open connection, every column read (goal: 3 or less); (2) with a real open and
// the close timer's close, against raw SQLite opening the file, preparing and
// stepping that select, finalizing and closing (goal: 2 or less).
#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/site.h"
#include "kernel/globals.h"
#include "ratioreporter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <sqlite3.h>
#include <string>

namespace {

QString g_dir;

// A first poll acts on every counter; after it, a poll with nothing moved acts on none.
void startRun()
{
    resetRunWide();
    gRun.gstrCurrentDatabasePath = database::siteFolderText(g_dir);
    gRun.gblnDatabaseClosed = true;
    subGetCounterValues();
}

// Statements sent to SQLite per poll, shown beside the times.
void reportStatements(benchmark::State& state)
{
    state.counters["statements"] = double(dao::DBEngine::statementCount()) / double(state.iterations());
}

void PollAlreadyOpen(benchmark::State& state)
{
    startRun();
    dao::DBEngine::resetStatementCount();
    for (auto _ : state) {
        subGetCounterValues();
    }
    reportStatements(state);
    TimerCloseDatabase_Timer();
}

void PollWithRealOpen(benchmark::State& state)
{
    startRun();
    dao::DBEngine::resetStatementCount();
    for (auto _ : state) {
        TimerCloseDatabase_Timer(); // the tick that ends the last burst
        subGetCounterValues();
    }
    reportStatements(state);
    TimerCloseDatabase_Timer();
}

void RawSelect(benchmark::State& state)
{
    sqlite3* db = nullptr;
    const QByteArray path = QFile::encodeName(QDir(g_dir).filePath(database::kDatabaseFileName));
    sqlite3_open_v2(path.constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_exec(db, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v3(db, "SELECT * FROM StatusCounterTable", -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr);
    for (auto _ : state) {
        // The poll reads the counters' row three times: twice while it checks the
        // table's fields and values, once for the values it acts on.
        for (int read = 0; read < 3; ++read) {
            while (sqlite3_step(stmt) == SQLITE_ROW) {
                for (int i = 0; i < sqlite3_column_count(stmt); ++i)
                    benchmark::DoNotOptimize(sqlite3_column_int64(stmt, i));
            }
            sqlite3_reset(stmt);
        }
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
}

// The raw twin of a poll with its real open: open the file, one select of the
// counters' row, every column read, and close.
void RawOpenSelectClose(benchmark::State& state)
{
    const QByteArray path = QFile::encodeName(QDir(g_dir).filePath(database::kDatabaseFileName));
    for (auto _ : state) {
        sqlite3* db = nullptr;
        sqlite3_open_v2(path.constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(db, "SELECT * FROM StatusCounterTable", -1, &stmt, nullptr);
        while (sqlite3_step(stmt) == SQLITE_ROW) {
            for (int i = 0; i < sqlite3_column_count(stmt); ++i)
                benchmark::DoNotOptimize(sqlite3_column_int64(stmt, i));
        }
        sqlite3_finalize(stmt);
        sqlite3_close(db);
    }
}

BENCHMARK(PollAlreadyOpen);
BENCHMARK(PollWithRealOpen);
BENCHMARK(RawSelect);
BENCHMARK(RawOpenSelectClose);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    g_dir = dir.filePath(QStringLiteral("site"));
    database::createSite(g_dir);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter({{"PollAlreadyOpen/raw", "PollAlreadyOpen", "RawSelect"},
                            {"PollWithRealOpen/raw", "PollWithRealOpen", "RawOpenSelectClose"}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
