// The message queries as the table ages, each through the engine as the program
// runs it, with the file already open as in a burst of work:
// (1) the watcher's look (NewMessageWatcher, its first look of a run: every copy
//     still "New" of the person) and (2) the board pane's list of "New" copies,
//     on a table of 1,000 and of 100,000 copies spread over 200 people and every
//     category, five "New" for the person looked at (goal: the 100,000-row time
//     within 2x of the 1,000-row time);
// (3) the Preview Messages list of a person holding 10,000 copies (the statement
//     for all categories, every field the list shows read and formatted; goal:
//     well under 200 ms).
// Each has a raw twin: SQLite's C calls on a statement prepared once and kept,
// the same rows read; the ratios engine/raw and 100,000/1,000 are printed last.
#include "dao/dao.h"
#include "dao/sqlfunctions.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/site.h"
#include "kernel/globals.h"
#include "messaging/messagesql.h"
#include "messaging/newmessagewatcher.h"
#include "messaging/storedmessage.h"
#include "platform/clock.h"
#include "ratioreporter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <map>
#include <sqlite3.h>

namespace {

constexpr int kPeople = 200;
constexpr int kNewForMe = 5;
constexpr int kHeavyCopies = 10000;
const QString kMe = QStringLiteral("Person 007");
const QString kHeavy = QStringLiteral("Person 200"); // one beyond the 200 people the rest go round
const char* const kCategories[] = {"Read", "Sent", "Deleted", "Draft", "Forward", "New"};

std::map<long long, QString> g_sites; // rows in MessagesTable -> site folder

QString personName(int i)
{
    return QStringLiteral("Person %1").arg(i, 3, 10, QLatin1Char('0'));
}

QByteArray databaseFile(const QString& folder)
{
    return QFile::encodeName(QDir(folder).filePath(database::kDatabaseFileName));
}

sqlite3* openRaw(const QString& folder)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(databaseFile(folder).constData(), &db, SQLITE_OPEN_READWRITE, nullptr);
    dao::registerSqlFunctions(db);
    sqlite3_exec(db, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
    return db;
}

// A site whose MessagesTable holds `rows` copies, the oldest first: kMe has five
// "New" among the last; on the large site kHeavy holds 10,000 copies of every
// category; the rest go round the 200 people and the categories other than "New"
// for kMe.
void makeSite(const QString& folder, int rows)
{
    database::createSite(folder);
    sqlite3* db = openRaw(folder);
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(db,
                       "INSERT INTO MessagesTable (Category, SentFromRemoteUNC, SentFromName, SentToName,"
                       " MessageOwner, MessageFrom, MessageSubject, MessageBody, SentDateTimeNum,"
                       " LastUsedDateTimeNum) VALUES (?1, '', ?2, ?3, ?3, ?4, ?5, ?6, ?7, ?7)",
                       -1, &insert, nullptr);
    const QByteArray body = QByteArrayLiteral("Your visitor from the bank is in reception.\r\nShe says she can wait "
                                              "until three, after that please call her back on her mobile.")
                                .repeated(2);
    const int heavy = rows >= 100000 ? kHeavyCopies : 0;
    const double firstDay = platform::DateTimeNum(platform::Now()) - 3650;
    for (int i = 0; i < rows; ++i) {
        QByteArray owner = personName(i % kPeople).toUtf8();
        QByteArray category = kCategories[(i / kPeople) % 6];
        if (i < heavy) {
            owner = kHeavy.toUtf8();
            category = kCategories[i % 6];
        } else if (owner == kMe.toUtf8()) {
            category = i >= rows - kPeople * kNewForMe ? "New" : kCategories[(i / kPeople) % 5];
        }
        const QByteArray from = personName((i * 7) % kPeople).toUtf8();
        const QByteArray subject = "Call from the bank, " + QByteArray::number(i);
        sqlite3_bind_text(insert, 1, category.constData(), int(category.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 2, from.constData(), int(from.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 3, owner.constData(), int(owner.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 4, from.constData(), int(from.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 5, subject.constData(), int(subject.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(insert, 6, body.constData(), int(body.size()), SQLITE_STATIC);
        sqlite3_bind_double(insert, 7, firstDay + 3650.0 * i / rows);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(db);
}

// The program's database procedures work on the site of this many rows, the file
// opened by the first of them and kept open, as in a burst of work.
void useSite(long long rows)
{
    TimerCloseDatabase_Timer();
    resetRunWide();
    gRun.gstrCurrentDatabasePath = database::siteFolderText(g_sites.at(rows));
    gRun.gblnDatabaseClosed = true;
}

// One line of the Preview Messages list, as the screen fills it: the category,
// the From line (the sender when it reads empty), subject, the body's first 30
// characters on one line, the sent date in the short form, sender, To, id.
QStringList listLine(const QString& category, const QString& from, const QString& sentFromName, const QString& subject,
                     const QString& body, double sent, const QString& sentTo, long long id)
{
    return {category,
            from.isEmpty() ? sentFromName : from,
            subject,
            body.left(30).replace(QStringLiteral("\r\n"), QStringLiteral(" ")).trimmed(),
            platform::Format(platform::dateFromDateTimeNum(sent), QStringLiteral("Short Date")),
            sentFromName,
            sentTo,
            QString::number(id)};
}

QString columnText(sqlite3_stmt* stmt, int column)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, column)),
                             sqlite3_column_bytes(stmt, column))
        .trimmed();
}

// Runs a kept statement to its end, each row read by `read`; the rows read.
template <typename Read> int stepAll(sqlite3_stmt* stmt, Read read)
{
    int n = 0;
    for (; sqlite3_step(stmt) == SQLITE_ROW; ++n)
        read(stmt);
    sqlite3_reset(stmt);
    return n;
}

void EngineWatcher(benchmark::State& state)
{
    useSite(state.range(0));
    long long popped = 0;
    for (auto _ : state) {
        messaging::NewMessageWatcher watcher; // the first look of a run: no lower limit
        popped = watcher.fnCheckForNewMessages(kMe).size();
    }
    state.counters["rows"] = double(popped);
}

void RawWatcher(benchmark::State& state)
{
    sqlite3* db = openRaw(g_sites.at(state.range(0)));
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v3(db,
                       "SELECT rowid, MessageSubject, SentFromName, SentToName, Category, MessageID, SentDateTimeNum,"
                       " MessageBody FROM MessagesTable WHERE SentToName = ? AND Category = 'New'"
                       " AND SentDateTimeNum > ?",
                       -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr);
    const QByteArray me = kMe.toUtf8();
    int rows = 0;
    for (auto _ : state) {
        sqlite3_bind_text(stmt, 1, me.constData(), int(me.size()), SQLITE_STATIC);
        sqlite3_bind_double(stmt, 2, 0);
        QList<messaging::NewMessageAlert> alerts;
        rows = stepAll(stmt, [&](sqlite3_stmt* s) {
            alerts << messaging::NewMessageAlert{columnText(s, 1), sqlite3_column_double(s, 6),
                                                 sqlite3_column_int64(s, 5), columnText(s, 7)};
        });
        benchmark::DoNotOptimize(alerts);
    }
    state.counters["rows"] = rows;
    sqlite3_finalize(stmt);
    sqlite3_close(db);
}

void EnginePane(benchmark::State& state)
{
    useSite(state.range(0));
    long long rows = 0;
    for (auto _ : state)
        rows = messaging::fnReadPaneMessages(kMe).size();
    state.counters["rows"] = double(rows);
}

// Every column of a "SELECT *" row into the fields of a stored copy.
messaging::StoredMessage storedMessage(sqlite3_stmt* s)
{
    return {sqlite3_column_int64(s, 1),
            columnText(s, 2),
            columnText(s, 4),
            columnText(s, 5),
            columnText(s, 6),
            columnText(s, 7),
            columnText(s, 8),
            columnText(s, 9),
            sqlite3_column_double(s, 10),
            sqlite3_column_double(s, 11)};
}

void RawPane(benchmark::State& state)
{
    sqlite3* db = openRaw(g_sites.at(state.range(0)));
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v3(db, "SELECT rowid, * FROM MessagesTable WHERE SentToName = ? AND Category = 'New'", -1,
                       SQLITE_PREPARE_PERSISTENT, &stmt, nullptr);
    const QByteArray me = kMe.toUtf8();
    int rows = 0;
    for (auto _ : state) {
        sqlite3_bind_text(stmt, 1, me.constData(), int(me.size()), SQLITE_STATIC);
        QList<messaging::StoredMessage> pane;
        rows = stepAll(stmt, [&](sqlite3_stmt* s) { pane << storedMessage(s); });
        benchmark::DoNotOptimize(pane);
    }
    state.counters["rows"] = rows;
    sqlite3_finalize(stmt);
    sqlite3_close(db);
}

void EngineOwnerList(benchmark::State& state)
{
    useSite(100000);
    const QString sql = messaging::fnOwnerMessagesSql(kHeavy);
    int rows = 0;
    for (auto _ : state) {
        subOpenDatabase();
        auto rs = fnOpenSQL(sql);
        QList<QStringList> list;
        for (; !rs->isEOF(); rs->MoveNext()) {
            const auto text = [&rs](const char* field) {
                return rs->Fields(QLatin1String(field)).Text();
            };
            list << listLine(text("Category"), text("MessageFrom"), text("SentFromName"), text("MessageSubject"),
                             text("MessageBody"), rs->Fields(QStringLiteral("SentDateTimeNum")).Value().toDouble(),
                             text("SentToName"), rs->Fields(QStringLiteral("MessageID")).Value().toLongLong());
        }
        rs->Close();
        subCloseDatabase();
        rows = int(list.size());
        benchmark::DoNotOptimize(list);
    }
    state.counters["rows"] = rows;
}

void RawOwnerList(benchmark::State& state)
{
    sqlite3* db = openRaw(g_sites.at(100000));
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v3(db, "SELECT rowid, * FROM MessagesTable WHERE MessageOwner = ?", -1, SQLITE_PREPARE_PERSISTENT,
                       &stmt, nullptr);
    const QByteArray owner = kHeavy.toUtf8();
    int rows = 0;
    for (auto _ : state) {
        sqlite3_bind_text(stmt, 1, owner.constData(), int(owner.size()), SQLITE_STATIC);
        QList<QStringList> list;
        rows = stepAll(stmt, [&](sqlite3_stmt* s) {
            const messaging::StoredMessage m = storedMessage(s);
            list << listLine(m.category, m.from, m.sentFromName, m.subject, m.body, m.sent, m.sentToName, m.id);
        });
        benchmark::DoNotOptimize(list);
    }
    state.counters["rows"] = rows;
    sqlite3_finalize(stmt);
    sqlite3_close(db);
}

BENCHMARK(EngineWatcher)->Arg(1000)->Arg(100000);
BENCHMARK(RawWatcher)->Arg(1000)->Arg(100000);
BENCHMARK(EnginePane)->Arg(1000)->Arg(100000);
BENCHMARK(RawPane)->Arg(1000)->Arg(100000);
BENCHMARK(EngineOwnerList)->Unit(benchmark::kMillisecond);
BENCHMARK(RawOwnerList)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    for (const int rows : {1000, 100000}) {
        g_sites[rows] = dir.filePath(QStringLiteral("site%1").arg(rows));
        makeSite(g_sites[rows], rows);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter({
        {"watcher at 1,000 rows engine/raw", "EngineWatcher/1000", "RawWatcher/1000"},
        {"watcher at 100,000 rows engine/raw", "EngineWatcher/100000", "RawWatcher/100000"},
        {"watcher engine 100,000/1,000 rows", "EngineWatcher/100000", "EngineWatcher/1000"},
        {"pane at 1,000 rows engine/raw", "EnginePane/1000", "RawPane/1000"},
        {"pane at 100,000 rows engine/raw", "EnginePane/100000", "RawPane/100000"},
        {"pane engine 100,000/1,000 rows", "EnginePane/100000", "EnginePane/1000"},
        {"Preview list of 10,000 copies engine/raw", "EngineOwnerList", "RawOwnerList"},
    });
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    TimerCloseDatabase_Timer();
    return 0;
}
