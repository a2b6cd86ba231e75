// The engine's cost over raw SQLite on the same file of 10,000 people: (1) a
// dynaset of one row found by name, every field read; (2) the same found by
// LIKE, as the program finds a person, through the index on the folded name;
// (3) an Edit/Update of one field of one row. Each engine benchmark has a raw
// twin doing the same work with SQLite's C calls on statements it prepared once
// and keeps, as the engine keeps its own (bind, step, read every column, reset).
// At the end the ratios engine/raw are printed; the goal is 1.5 or less.
#include "dao/dao.h"
#include "dao/sqlfunctions.h"
#include "ratioreporter.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <sqlite3.h>
#include <string>

namespace {

QString g_path;
constexpr int kPeople = 10000;
const QString kName = QStringLiteral("Person 5000");
const QString kOpenOneRow = QStringLiteral("SELECT * FROM EmployeeTable WHERE Name = ") + dao::quote(kName);
const QString kFindByLike = QStringLiteral("SELECT * FROM EmployeeTable WHERE Name LIKE ") + dao::quoteLike(kName);

sqlite3* openRaw(int flags = SQLITE_OPEN_READWRITE)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(QFile::encodeName(g_path).constData(), &db, flags, nullptr);
    dao::registerSqlFunctions(db);
    sqlite3_exec(db, "PRAGMA journal_mode=DELETE; PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(db, 2000);
    return db;
}

// An EmployeeTable of 10,000 people keyed on Name, with the index on the folded
// name that a site has.
void makeDatabase()
{
    sqlite3* db = openRaw(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    sqlite3_exec(db,
                 "CREATE TABLE EmployeeTable (Name TEXT(50) COLLATE NOCASE PRIMARY KEY, UID TEXT(50) COLLATE NOCASE,"
                 " Status TEXT(50) COLLATE NOCASE, StatusCode LONG, Phone TEXT(50) COLLATE NOCASE,"
                 " DueBack TEXT(50) COLLATE NOCASE, Comments TEXT(255) COLLATE NOCASE,"
                 " LastModified TEXT(50) COLLATE NOCASE, ActiveFlag TEXT(3) COLLATE NOCASE, Away BIT,"
                 " Rate DOUBLE, New_Mobile TEXT(30) COLLATE NOCASE);"
                 "CREATE INDEX EmployeeTable_FoldedName ON EmployeeTable (jetfold(Name));"
                 "BEGIN",
                 nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db,
                       "INSERT INTO EmployeeTable VALUES (printf('Person %04d', ?1), printf('user%d', ?1), 'In', 1,"
                       " printf('555-%04d', ?1), '', 'Back after lunch', 'Mar 01, 2005 09:00:00 by admin', 'Yes',"
                       " 0, ?1 * 1.25, NULL)",
                       -1, &insert, nullptr);
    for (int i = 0; i < kPeople; ++i) {
        sqlite3_bind_int(insert, 1, i);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

void readEveryColumn(sqlite3_stmt* stmt)
{
    const int n = sqlite3_column_count(stmt);
    for (int i = 0; i < n; ++i) {
        switch (sqlite3_column_type(stmt, i)) {
        case SQLITE_INTEGER:
            benchmark::DoNotOptimize(sqlite3_column_int64(stmt, i));
            break;
        case SQLITE_FLOAT:
            benchmark::DoNotOptimize(sqlite3_column_double(stmt, i));
            break;
        case SQLITE_TEXT:
            benchmark::DoNotOptimize(sqlite3_column_text(stmt, i));
            break;
        default:
            break;
        }
    }
}

void EngineOpenOneRow(benchmark::State& state)
{
    auto db = dao::DBEngine::OpenDatabase(g_path);
    for (auto _ : state) {
        auto rs = db->OpenRecordset(kOpenOneRow);
        for (int i = 0; i < rs->FieldCount(); ++i)
            benchmark::DoNotOptimize(rs->Fields(i).Value());
        rs->Close();
    }
}

// Raw SQLite finds the row by its NOCASE key, the index a hand-written client uses.
void RawOpenOneRow(benchmark::State& state)
{
    sqlite3* db = openRaw();
    const QByteArray name = kName.toUtf8();
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v3(db, "SELECT * FROM EmployeeTable WHERE Name = ?", -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr);
    for (auto _ : state) {
        sqlite3_bind_text(stmt, 1, name.constData(), int(name.size()), SQLITE_STATIC);
        while (sqlite3_step(stmt) == SQLITE_ROW)
            readEveryColumn(stmt);
        sqlite3_reset(stmt);
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
}

void EngineFindByLike(benchmark::State& state)
{
    auto db = dao::DBEngine::OpenDatabase(g_path);
    for (auto _ : state) {
        auto rs = db->OpenRecordset(kFindByLike);
        for (int i = 0; i < rs->FieldCount(); ++i)
            benchmark::DoNotOptimize(rs->Fields(i).Value());
        rs->Close();
    }
}

void EngineEditUpdate(benchmark::State& state)
{
    auto db = dao::DBEngine::OpenDatabase(g_path);
    auto rs = db->OpenRecordset(kOpenOneRow);
    long long n = 0;
    for (auto _ : state) {
        rs->Edit();
        rs->Fields("Comments") = QString::number(++n);
        rs->Update();
    }
}

void RawEditUpdate(benchmark::State& state)
{
    sqlite3* db = openRaw();
    sqlite3_stmt* find = nullptr;
    sqlite3_prepare_v2(db, "SELECT rowid FROM EmployeeTable WHERE Name = 'Person 5000'", -1, &find, nullptr);
    sqlite3_step(find);
    const sqlite3_int64 rowid = sqlite3_column_int64(find, 0);
    sqlite3_finalize(find);
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v3(db, "UPDATE EmployeeTable SET Comments = ? WHERE rowid = ?", -1, SQLITE_PREPARE_PERSISTENT,
                       &stmt, nullptr);
    long long n = 0;
    for (auto _ : state) {
        const std::string text = std::to_string(++n);
        sqlite3_bind_text(stmt, 1, text.data(), int(text.size()), SQLITE_STATIC);
        sqlite3_bind_int64(stmt, 2, rowid);
        sqlite3_step(stmt);
        sqlite3_reset(stmt);
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
}

BENCHMARK(EngineOpenOneRow);
BENCHMARK(RawOpenOneRow);
BENCHMARK(EngineFindByLike);
BENCHMARK(EngineEditUpdate);
BENCHMARK(RawEditUpdate);

} // namespace

int main(int argc, char** argv)
{
    QTemporaryDir dir;
    g_path = dir.filePath(QStringLiteral("veskor.mdb"));
    makeDatabase();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter({{"OpenOneRow engine/raw", "EngineOpenOneRow", "RawOpenOneRow"},
                            {"FindByLike engine/raw", "EngineFindByLike", "RawOpenOneRow"},
                            {"EditUpdate engine/raw", "EngineEditUpdate", "RawEditUpdate"}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
