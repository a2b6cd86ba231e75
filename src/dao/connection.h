#pragma once
// One open database file: the SQLite handle, the maintenance lock and the cache
// of prepared statements. A Database and every Recordset it opened share one
// Connection; after close() every use that needs the file raises 3420.

#include "dao/dao.h"
#include "dao/errormap.h"
#include "dao/jetsql.h"
#include "dao/lockfile.h"

#include <QString>
#include <memory>
#include <unordered_map>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace dao {

// One column of a result as a field shows it.
struct ColumnInfo
{
    QString name;
    FieldType type = FieldType::Other;
    QString originTable; // the table and column it reads; empty for an expression
    QString originColumn;
};

// The fields of a statement's result. A first column named "__rowid" carries the
// row id of a set that can be written back, and is not a field.
struct ColumnSet
{
    std::vector<ColumnInfo> columns;
    bool hasRowid = false;
};

struct CachedStatement;

class Connection
{
public:
    // Opens an existing file (see DBEngine::OpenDatabase for the errors).
    static std::shared_ptr<Connection> open(const QString& path, bool exclusive, bool readOnly);
    // Makes a new file; 3204 when it exists.
    static std::shared_ptr<Connection> create(const QString& path);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    const QString& path() const
    {
        return m_path;
    }
    bool isReadOnly() const
    {
        return m_readOnly;
    }
    bool isExclusive() const
    {
        return m_exclusive;
    }
    bool isOpen() const
    {
        return m_db != nullptr;
    }
    // 3420 when the file has been closed.
    void requireOpen() const;
    void close();
    sqlite3* handle() const
    {
        return m_db;
    }

    // A prepared statement lent out for one run. Giving it back resets it and
    // clears its parameters, so the cache can lend it again.
    class Statement
    {
    public:
        Statement(Statement&& other) noexcept;
        Statement& operator=(Statement&&) = delete;
        ~Statement();
        sqlite3_stmt* get() const;
        const Translation& translation() const;
        // The result's columns, worked out once per preparation of the statement.
        // Valid after the first step (a changed schema re-prepares at the step).
        std::shared_ptr<const ColumnSet> columns();

    private:
        friend class Connection;
        Statement(CachedStatement* entry, bool owned) : m_entry(entry), m_owned(owned)
        {
        }
        CachedStatement* m_entry;
        bool m_owned;
    };

    // A Jet statement, translated and prepared, cached by its Jet text.
    Statement prepareJet(const QString& jetSql, Activity activity);
    // One of the engine's own statements (already SQLite's dialect), cached by its text.
    Statement prepareNative(const QString& sql, StatementKind kind, Activity activity);

    // Steps a statement once, counting a first step as one statement run.
    int step(Statement& statement);
    // Raises the Jet error for a failed step.
    [[noreturn]] void fail(int resultCode, Activity activity, StatementKind kind) const;

    // Rows touched by the last Execute.
    long long recordsAffected = 0;

    // Write transactions (transaction.cpp). The first level is SQLite's BEGIN
    // IMMEDIATE, taken after waiting out other clients' write locks; inner levels
    // are savepoints. level(): 0 when none is open.
    void beginTransaction(Activity activity);
    void commitTransaction(Activity activity);
    void rollbackTransaction();
    int level() const
    {
        return m_level;
    }
    bool isWaiting() const
    {
        return m_waiting > 0;
    }
    // Runs body as a transaction of its own, unless one is open already.
    template <class Body> void writeUnit(Activity activity, Body&& body)
    {
        if (m_level > 0) {
            body();
            return;
        }
        beginTransaction(activity);
        try {
            body();
        } catch (...) {
            rollbackTransaction();
            throw;
        }
        commitTransaction(activity);
    }

private:
    using Cache = std::unordered_map<QString, std::unique_ptr<CachedStatement>>;

    Connection(const QString& path, bool exclusive, bool readOnly);
    void openHandle(int flags);
    void configure();
    // The waits (wait.cpp): SQLite's busy handler for short waits inside a
    // statement, and the engine's own wait for the write lock, with events running.
    void installBusyHandler();
    static int onBusy(void* connection, int count);
    void acquireWriteLock(Activity activity);
    void exec(const char* sql);
    Statement lend(Cache& cache, const QString& key, Translation translation, Activity activity);
    sqlite3_stmt* compile(const Translation& translation, Activity activity);
    void evictOldest(Cache& cache);

    QString m_path;
    bool m_exclusive;
    bool m_readOnly;
    sqlite3* m_db = nullptr;
    LockFile m_lock;
    Cache m_jetCache;
    Cache m_nativeCache;
    unsigned long long m_clock = 0;
    int m_level = 0;
    int m_waiting = 0;
    bool m_acquiring = false; // BEGIN IMMEDIATE under way: SQLite must not wait in it
    qint64 m_busySince = 0;   // when SQLite's current short wait began (ms)
};

// Counts one statement run, for DBEngine::statementCount().
void countStatement();

// An identifier for the engine's own SQL: "name", any " in it doubled.
QString quoteIdentifier(const QString& name);

} // namespace dao
