#include "dao/connection.h"

#include "dao/fileprobe.h"
#include "dao/jeterror.h"
#include "dao/sqlfunctions.h"
#include "dao/values.h"

#include <QFile>
#include <mutex>
#include <sqlite3.h>

namespace dao {

// A statement in the cache, with the translation it was prepared from.
struct CachedStatement
{
    Translation translation;
    sqlite3_stmt* stmt = nullptr;
    std::shared_ptr<const ColumnSet> columns;
    int columnsStamp = -1; // the re-prepare count the columns were read at
    unsigned long long lastUse = 0;
    bool busy = false;

    ~CachedStatement()
    {
        sqlite3_finalize(stmt);
    }
};

namespace {

// Enough for the statements a client repeats on its timers; texts that carry a
// value (a name, a time) come and go, and the least recently used one goes first.
constexpr std::size_t kCacheLimit = 64;

// The application id written into the header of the files we make, which also
// puts a real header on disk at once.
constexpr const char* kWriteHeader = "PRAGMA application_id = 1448297298"; // "VSKR"

// Translations outlive connections: a client opens the file for each burst of
// work and sends the same few Jet texts every time. Refusals are not kept.
Translation translated(const QString& jetSql)
{
    constexpr std::size_t kTranslationLimit = 512;
    static std::mutex mutex;
    static std::unordered_map<QString, Translation> kept;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto found = kept.find(jetSql);
        if (found != kept.end())
            return found->second;
    }
    Translation translation = translateJet(jetSql);
    const std::lock_guard<std::mutex> lock(mutex);
    if (kept.size() >= kTranslationLimit)
        kept.clear(); // texts that carry a value come and go; start afresh
    kept.emplace(jetSql, translation);
    return translation;
}

bool isBlank(const char* text)
{
    for (; text && *text; ++text) {
        if (*text != ' ' && *text != '\t' && *text != '\r' && *text != '\n')
            return false;
    }
    return true;
}

} // namespace

QString quoteIdentifier(const QString& name)
{
    QString inner = name;
    inner.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + inner + QLatin1Char('"');
}

// --- Statement --------------------------------------------------------------

Connection::Statement::Statement(Statement&& other) noexcept : m_entry(other.m_entry), m_owned(other.m_owned)
{
    other.m_entry = nullptr;
}

Connection::Statement::~Statement()
{
    if (!m_entry)
        return;
    sqlite3_reset(m_entry->stmt);
    sqlite3_clear_bindings(m_entry->stmt);
    m_entry->busy = false;
    if (m_owned)
        delete m_entry;
}

sqlite3_stmt* Connection::Statement::get() const
{
    return m_entry->stmt;
}

const Translation& Connection::Statement::translation() const
{
    return m_entry->translation;
}

std::shared_ptr<const ColumnSet> Connection::Statement::columns()
{
    sqlite3_stmt* stmt = m_entry->stmt;
    const int stamp = sqlite3_stmt_status(stmt, SQLITE_STMTSTATUS_REPREPARE, 0);
    if (m_entry->columns && m_entry->columnsStamp == stamp)
        return m_entry->columns;
    auto set = std::make_shared<ColumnSet>();
    const int count = sqlite3_column_count(stmt);
    int first = 0;
    if (count > 0 && qstrcmp(sqlite3_column_name(stmt, 0), "__rowid") == 0) {
        set->hasRowid = true;
        first = 1;
    }
    set->columns.reserve(std::size_t(count - first));
    for (int i = first; i < count; ++i) {
        ColumnInfo column;
        column.name = QString::fromUtf8(sqlite3_column_name(stmt, i));
        column.type = fieldTypeFromDeclared(sqlite3_column_decltype(stmt, i));
        column.originTable = QString::fromUtf8(sqlite3_column_table_name(stmt, i));
        column.originColumn = QString::fromUtf8(sqlite3_column_origin_name(stmt, i));
        set->columns.push_back(std::move(column));
    }
    m_entry->columns = std::move(set);
    m_entry->columnsStamp = stamp;
    return m_entry->columns;
}

// --- opening and closing ----------------------------------------------------

Connection::Connection(const QString& path, bool exclusive, bool readOnly)
    : m_path(path), m_exclusive(exclusive), m_readOnly(readOnly)
{
}

Connection::~Connection()
{
    close();
}

std::shared_ptr<Connection> Connection::open(const QString& path, bool exclusive, bool readOnly)
{
    const QString absolute = checkExistingDatabase(path, readOnly);
    std::shared_ptr<Connection> connection(new Connection(absolute, exclusive, readOnly));
    const QString lockPath = LockFile::pathFor(absolute);
    if (exclusive)
        connection->m_lock.acquire(lockPath);
    else if (LockFile::isHeld(lockPath))
        raiseJetError(errExclusivelyLocked, lockPath);
    connection->openHandle(readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
    connection->configure();
    return connection;
}

std::shared_ptr<Connection> Connection::create(const QString& path)
{
    const QString absolute = checkNewDatabase(path);
    std::shared_ptr<Connection> connection(new Connection(absolute, false, false));
    connection->openHandle(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    connection->configure();
    // A rollback journal works on a network share, where WAL does not. Only a
    // file we make gets it: an open never changes what it finds.
    connection->exec("PRAGMA journal_mode=DELETE");
    connection->exec(kWriteHeader);
    return connection;
}

void Connection::openHandle(int flags)
{
    // Never SQLITE_OPEN_CREATE for an existing file: a missing file is an error.
    // One thread uses a connection, so SQLite's own mutex is not needed.
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(QFile::encodeName(m_path).constData(), &db,
                                   flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    if (rc != SQLITE_OK) {
        const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString();
        sqlite3_close_v2(db);
        raiseJetError(jetNumberFor(rc, message, Activity::Open, StatementKind::Other), m_path);
    }
    m_db = db;
}

// Settings of this connection only (nothing written to the file), Jet's LIKE
// and the case fold, and one cheap read so that a file that is not a database,
// is damaged or is locked fails here.
void Connection::configure()
{
    sqlite3_extended_result_codes(m_db, 1);
    installBusyHandler();
    registerSqlFunctions(m_db);
    exec("PRAGMA synchronous=FULL");
    if (m_exclusive) {
        // Keep SQLite's own lock on the file until close, as well as ours.
        exec("PRAGMA locking_mode=EXCLUSIVE");
        if (!m_readOnly) {
            exec("BEGIN EXCLUSIVE");
            exec("COMMIT");
        }
    }
    exec("SELECT count(*) FROM sqlite_master");
}

void Connection::exec(const char* sql)
{
    const int rc = sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK)
        raiseSqliteError(m_db, rc, Activity::Open);
}

void Connection::requireOpen() const
{
    if (!m_db)
        raiseJetError(errObjectInvalid, m_path);
}

void Connection::close()
{
    if (!m_db)
        return;
    m_jetCache.clear();
    m_nativeCache.clear();
    // SQLite rolls back a transaction still open.
    sqlite3_close_v2(m_db);
    m_db = nullptr;
    m_level = 0;
    m_lock.release();
}

// --- statements -------------------------------------------------------------

Connection::Statement Connection::prepareJet(const QString& jetSql, Activity activity)
{
    requireOpen();
    const auto found = m_jetCache.find(jetSql);
    if (found != m_jetCache.end() && !found->second->busy) {
        found->second->busy = true;
        found->second->lastUse = ++m_clock;
        return Statement(found->second.get(), false);
    }
    return lend(m_jetCache, jetSql, translated(jetSql), activity);
}

Connection::Statement Connection::prepareNative(const QString& sql, StatementKind kind, Activity activity)
{
    requireOpen();
    const auto found = m_nativeCache.find(sql);
    if (found != m_nativeCache.end() && !found->second->busy) {
        found->second->busy = true;
        found->second->lastUse = ++m_clock;
        return Statement(found->second.get(), false);
    }
    Translation translation;
    translation.sql = sql;
    translation.kind = kind;
    return lend(m_nativeCache, sql, std::move(translation), activity);
}

// Prepares a statement the cache does not hold ready, and keeps it there unless
// the cache's copy is in use already (a statement run inside another's run).
Connection::Statement Connection::lend(Cache& cache, const QString& key, Translation translation, Activity activity)
{
    auto entry = std::make_unique<CachedStatement>();
    entry->stmt = compile(translation, activity);
    entry->translation = std::move(translation);
    entry->busy = true;
    entry->lastUse = ++m_clock;
    if (cache.count(key) != 0)
        return Statement(entry.release(), true);
    if (cache.size() >= kCacheLimit)
        evictOldest(cache);
    CachedStatement* lent = entry.get();
    cache.emplace(key, std::move(entry));
    return Statement(lent, false);
}

sqlite3_stmt* Connection::compile(const Translation& translation, Activity activity)
{
    const QByteArray sql = translation.sql.toUtf8();
    sqlite3_stmt* stmt = nullptr;
    const char* tail = nullptr;
    const int rc = sqlite3_prepare_v3(m_db, sql.constData(), int(sql.size()), SQLITE_PREPARE_PERSISTENT, &stmt, &tail);
    if (rc != SQLITE_OK)
        raiseSqliteError(m_db, rc, activity, translation.kind);
    // One statement only: whatever follows it must be blank.
    if (!isBlank(tail)) {
        sqlite3_finalize(stmt);
        raiseJetError(errCharactersAfterEnd, QString::fromUtf8(tail));
    }
    if (!stmt) {
        raiseJetError(jetNumberFor(SQLITE_ERROR, QString(), activity, translation.kind),
                      QStringLiteral("an empty statement"));
    }
    return stmt;
}

void Connection::evictOldest(Cache& cache)
{
    auto oldest = cache.end();
    for (auto it = cache.begin(); it != cache.end(); ++it) {
        if (!it->second->busy && (oldest == cache.end() || it->second->lastUse < oldest->second->lastUse))
            oldest = it;
    }
    if (oldest != cache.end())
        cache.erase(oldest);
}

int Connection::step(Statement& statement)
{
    sqlite3_stmt* stmt = statement.get();
    if (!sqlite3_stmt_busy(stmt))
        countStatement();
    return sqlite3_step(stmt);
}

void Connection::fail(int resultCode, Activity activity, StatementKind kind) const
{
    raiseSqliteError(m_db, resultCode, activity, kind);
}

} // namespace dao
