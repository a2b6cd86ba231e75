// Write transactions: Database::BeginTrans/CommitTrans/Rollback and the
// Transaction guard. The outer level holds the file's write lock from its start
// (SQLite's BEGIN IMMEDIATE), so a read-then-write inside it can never meet
// another client's write half-way; inner levels are savepoints.
#include "dao/connection.h"
#include "dao/dao.h"

#include <sqlite3.h>

namespace dao {

namespace {

QByteArray savepointName(int level)
{
    return QByteArrayLiteral("level") + QByteArray::number(level);
}

} // namespace

void Connection::beginTransaction(Activity activity)
{
    requireOpen();
    if (m_readOnly) {
        raiseJetError(errCannotUpdate, m_path);
    }
    if (m_level == 0) {
        acquireWriteLock(activity);
    } else {
        const QByteArray sql = "SAVEPOINT " + savepointName(m_level + 1);
        const int rc = sqlite3_exec(m_db, sql.constData(), nullptr, nullptr, nullptr);
        if (rc != SQLITE_OK) {
            raiseSqliteError(m_db, rc, activity);
        }
    }
    ++m_level;
}

// The outer level's COMMIT may wait a moment for other clients' reads to finish
// (SQLite's short wait); if they do not, the whole transaction is rolled back
// and the lock error raised, so that nothing of it is half there.
void Connection::commitTransaction(Activity activity)
{
    requireOpen();
    if (m_level == 0) {
        raiseJetError(errNoTransaction);
    }
    if (m_level > 1) {
        const QByteArray sql = "RELEASE " + savepointName(m_level);
        const int rc = sqlite3_exec(m_db, sql.constData(), nullptr, nullptr, nullptr);
        if (rc != SQLITE_OK) {
            raiseSqliteError(m_db, rc, activity);
        }
        --m_level;
        return;
    }
    const int rc = sqlite3_exec(m_db, "COMMIT", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(m_db));
        rollbackTransaction();
        raiseJetError(jetNumberFor(rc, message, activity, StatementKind::Update), message);
    }
    m_level = 0;
}

// Never raises: it runs on the way out of failures and from destructors. A
// statement that failed badly may have ended SQLite's transaction already.
void Connection::rollbackTransaction()
{
    if (m_level == 0) {
        return;
    }
    if (m_db && m_level > 1) {
        const QByteArray name = savepointName(m_level);
        const QByteArray sql = "ROLLBACK TO " + name + "; RELEASE " + name;
        sqlite3_exec(m_db, sql.constData(), nullptr, nullptr, nullptr);
        --m_level;
        return;
    }
    if (m_db && !sqlite3_get_autocommit(m_db)) {
        sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    m_level = 0;
}

// --- Database -------------------------------------------------------------------

void Database::BeginTrans()
{
    const std::shared_ptr<Connection> connection = m_connection; // alive across the wait's events
    connection->beginTransaction(Activity::Write);
}

void Database::CommitTrans()
{
    m_connection->commitTransaction(Activity::Write);
}

void Database::Rollback()
{
    m_connection->requireOpen();
    if (m_connection->level() == 0) {
        raiseJetError(errNoTransaction);
    }
    m_connection->rollbackTransaction();
}

bool Database::isBusy() const
{
    return m_connection->level() > 0 || m_connection->isWaiting();
}

// --- Transaction ------------------------------------------------------------------

Transaction::Transaction(Database& db) : m_connection(db.m_connection)
{
    m_connection->beginTransaction(Activity::Write);
    m_level = m_connection->level();
}

Transaction::~Transaction()
{
    // Only the level this guard opened, and only while it is still the innermost.
    if (m_level != 0 && m_connection->level() == m_level) {
        m_connection->rollbackTransaction();
    }
}

void Transaction::Commit()
{
    if (m_level == 0 || m_connection->level() != m_level) {
        raiseJetError(errNoTransaction);
    }
    m_level = 0;
    m_connection->commitTransaction(Activity::Write);
}

} // namespace dao
