// What the board's refresh costs: a rebuild of the whole list (the counters, the
// main query, the settings row, the tracking and messages queries, and the list
// filled, sorted and laid out) for 250 to 2,000 people, and an unchanged poll
// on a board of 1,000. Offscreen, on a file already open as during a burst of
// work. Goals: a rebuild of 1,000 under 100 ms, an unchanged poll under 1 ms,
// and a rebuild's cost growing no faster than the number of rows (the fitted
// complexity is printed as BigO).
#include "board/frmmain.h"
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/site.h"
#include "start/globals.h"
#include "status/settings.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <map>
#include <memory>
#include <sqlite3.h>

namespace {

QTemporaryDir* g_root = nullptr;
std::map<long long, QString> g_sites; // people -> site folder

const char* const kStatuses[] = {"In", "Out", "Busy", "At Lunch", "In Meeting"};

// A site of `people` rows: the viewer "Ann Lee" made the ordinary way, the rest
// written straight into EmployeeTable in one transaction (only the viewer's
// settings row is read by a refresh).
QString siteOf(long long people)
{
    QString& folder = g_sites[people];
    if (!folder.isEmpty()) {
        return folder;
    }
    folder = g_root->filePath(QStringLiteral("site%1").arg(people));
    database::createSite(folder);
    database::addPerson(*database::openSite(folder), {QStringLiteral("Ann Lee"), QStringLiteral("alee")});

    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(QDir(folder).filePath(database::kDatabaseFileName)).constData(), &db);
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
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    return folder;
}

// Ann Lee's board on the site, with her settings read and a first rebuild done.
std::unique_ptr<frmMain> openBoard(long long people)
{
    resetRunWide();
    gstrDatabasePath = gstrCurrentDatabasePath = database::siteFolderText(siteOf(people));
    gblnDatabaseClosed = true;
    gstrDefaultUser = QStringLiteral("Ann Lee");
    auto board = std::make_unique<frmMain>();
    subReadOptions();
    subReadUserSettings(gstrDefaultUser);
    subReadGroups();
    board->subRefreshUserList(QStringLiteral("Everyone"));
    return board;
}

void finish(benchmark::State& state, std::unique_ptr<frmMain> board)
{
    state.counters["rows"] = double(board->listRowCount());
    board.reset();
    TimerCloseDatabase_Timer();
    gdbDatabase.reset();
}

void Rebuild(benchmark::State& state)
{
    auto board = openBoard(state.range(0));
    for (auto _ : state) {
        glngLastStatusCounter = -1; // as if another client had written
        board->subRefreshUserList(QString());
    }
    state.SetComplexityN(state.range(0));
    finish(state, std::move(board));
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

BENCHMARK(Rebuild)->Arg(250)->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(UnchangedPoll)->Arg(1000)->Unit(benchmark::kMicrosecond);

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
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
