// What the board's refresh costs, offscreen, with the window shown and the file
// already open as during a burst of work:
// - a rebuild of the whole list (the counters, the main query, the settings row,
//   the tracking and messages queries, the list filled, sorted and laid out) for
//   100 to 10,000 people, against its raw twin: one prepared SQLite statement
//   reading every column of the main query's rows. Goal: within 10x at 10,000.
// - the group read (tabs and tree rebuilt, laid out and drawn) for 250 to 4,000
//   groups, read again and read first. Goal: 1,000 under 50 ms, growing no
//   faster than the groups.
// - an unchanged poll at 100 and at 10,000 people. Goal: the same cost at both.
#include "board/frmmain.h"
#include "dao/dao.h"
#include "dao/sqlfunctions.h"
#include "database/moddatabase.h"
#include "database/site.h"
#include "kernel/globals.h"
#include "ratioreporter.h"
#include "status/settings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTabBar>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <map>
#include <memory>
#include <sqlite3.h>

namespace {

QTemporaryDir* g_root = nullptr;
std::map<std::pair<long long, long long>, QString> g_sites; // (people, groups) -> site folder

const char* const kStatuses[] = {"In", "Out", "Busy", "At Lunch", "In Meeting"};

// A site of `people` rows: the viewer "Ann Lee" made the ordinary way, the rest
// written straight into EmployeeTable in one transaction (only the viewer's
// settings row is read by a refresh).
QString siteOf(long long people, long long groups = 0)
{
    QString& folder = g_sites[{people, groups}];
    if (!folder.isEmpty()) {
        return folder;
    }
    folder = g_root->filePath(QStringLiteral("site%1-%2").arg(people).arg(groups));
    database::createSite(folder);
    database::addPerson(*database::openSite(folder), {QStringLiteral("Ann Lee"), QStringLiteral("alee")});

    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(QDir(folder).filePath(database::kDatabaseFileName)).constData(), &db);
    dao::registerSqlFunctions(db); // the name index needs the engine's fold to take new rows
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db,
                       "INSERT INTO EmployeeTable (Name, UID, Status, StatusCode, Phone, DueBack, Comments, "
                       "LastModified, ActiveFlag) VALUES (?, ?, ?, ?, ?, 'Tomorrow', 'Visiting a customer', "
                       "'2026-11-22 09:00:00 by Ann Lee', 'Yes')",
                       -1, &insert, nullptr);
    for (long long i = 1; i < people; ++i) {
        const QByteArray name = QStringLiteral("Person %1").arg(i, 5, 10, QLatin1Char('0')).toUtf8();
        const QByteArray uid = QByteArray("p") + QByteArray::number(i);
        const QByteArray phone = QByteArray::number(1000 + (i * 37) % 9000);
        sqlite3_bind_text(insert, 1, name.constData(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 2, uid.constData(), -1, SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 3, kStatuses[i % 5], -1, SQLITE_STATIC);
        sqlite3_bind_int64(insert, 4, 1 + i % 3);
        sqlite3_bind_text(insert, 5, phone.constData(), -1, SQLITE_TRANSIENT);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_prepare_v2(db, "INSERT INTO GroupTable (GroupName) VALUES (?)", -1, &insert, nullptr);
    for (long long i = 1; i <= groups; ++i) {
        const QByteArray name = QStringLiteral("Team %1").arg(i, 5, 10, QLatin1Char('0')).toUtf8();
        sqlite3_bind_text(insert, 1, name.constData(), -1, SQLITE_TRANSIENT);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    return folder;
}

// Ann Lee's board on the site, with her settings read and a first rebuild done.
std::unique_ptr<frmMain> openBoard(long long people, long long groups = 0)
{
    resetRunWide();
    gRun.gstrDatabasePath = gRun.gstrCurrentDatabasePath = database::siteFolderText(siteOf(people, groups));
    gRun.gblnDatabaseClosed = true;
    gRun.gstrDefaultUser = QStringLiteral("Ann Lee");
    auto board = std::make_unique<frmMain>();
    subReadOptions();
    subReadUserSettings(gRun.gstrDefaultUser);
    subReadGroups();
    board->setAttribute(Qt::WA_ShowWithoutActivating);
    board->resize(1280, 800);
    board->show();
    QCoreApplication::processEvents();
    board->subRefreshUserList(QStringLiteral("Everyone"));
    return board;
}

void finish(benchmark::State& state, std::unique_ptr<frmMain> board)
{
    state.counters["rows"] = double(board->listRowCount());
    board.reset();
    TimerCloseDatabase_Timer();
    gRun.gdbDatabase.reset();
}

void Rebuild(benchmark::State& state)
{
    auto board = openBoard(state.range(0));
    for (auto _ : state) {
        gCounters.glngLastStatusCounter = -1; // as if another client had written
        board->subRefreshUserList(QString());
        QCoreApplication::processEvents(); // the list's layout and paint
    }
    state.SetComplexityN(state.range(0));
    finish(state, std::move(board));
}

// The raw twin of a rebuild's main read: every column of every row of the
// Everyone query, by one statement prepared once.
void RawRead(benchmark::State& state)
{
    const QString folder = siteOf(state.range(0));
    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(QDir(folder).filePath(database::kDatabaseFileName)).constData(), &db);
    sqlite3_stmt* select = nullptr;
    sqlite3_prepare_v2(db, "SELECT * FROM EmployeeTable WHERE Name NOT LIKE '~%' ORDER BY Name", -1, &select, nullptr);
    long long rows = 0;
    for (auto _ : state) {
        rows = 0;
        while (sqlite3_step(select) == SQLITE_ROW) {
            for (int column = 0; column < sqlite3_column_count(select); ++column) {
                benchmark::DoNotOptimize(sqlite3_column_text(select, column));
            }
            ++rows;
        }
        sqlite3_reset(select);
    }
    state.counters["rows"] = double(rows);
    sqlite3_finalize(select);
    sqlite3_close(db);
}

void UnchangedPoll(benchmark::State& state)
{
    auto board = openBoard(state.range(0));
    dao::DBEngine::resetStatementCount();
    for (auto _ : state) {
        board->subRefreshUserList(QString());
    }
    state.counters["statements"] = double(dao::DBEngine::statementCount()) / double(state.iterations());
    finish(state, std::move(board));
}

// The groups read again, as at a raised GroupCounter: the query, the tabs and the tree.
void ReadGroups(benchmark::State& state)
{
    auto board = openBoard(10, state.range(0));
    for (auto _ : state) {
        subReadGroups();
        QCoreApplication::processEvents(); // the strip's layout and paint
    }
    state.counters["tabs"] = double(board->findChild<GroupTabBar*>(QStringLiteral("TabStripMain"))->count());
    state.SetComplexityN(state.range(0));
    finish(state, std::move(board));
}

// The first read of the groups, into empty tabs and tree, as at Load.
void FirstReadGroups(benchmark::State& state)
{
    auto board = openBoard(10, state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        board->findChild<GroupTabBar*>(QStringLiteral("TabStripMain"))->setCaptions({});
        state.ResumeTiming();
        subReadGroups();
        QCoreApplication::processEvents();
    }
    state.SetComplexityN(state.range(0));
    finish(state, std::move(board));
}

BENCHMARK(Rebuild)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(RawRead)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadGroups)->Arg(250)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(FirstReadGroups)->Arg(250)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(UnchangedPoll)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir root;
    g_root = &root;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    RatioReporter reporter({{"rebuild/raw read at 10,000", "Rebuild/10000", "RawRead/10000"},
                            {"unchanged poll 10,000/100", "UnchangedPoll/10000", "UnchangedPoll/100"}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
