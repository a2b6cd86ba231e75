// Database and DBEngine: opening files, running action statements, and what the
// engine tells about a file's tables.
#include "dao/connection.h"
#include "dao/recordset_p.h"
#include "dao/sqlfunctions.h"
#include "platform/mounts.h"

#include <sqlite3.h>

namespace dao {

namespace {

// Long enough for twenty clients writing at once to take their turns.
int g_busyTimeoutMs = 30000;
long long g_statementCount = 0;

} // namespace

void countStatement()
{
    ++g_statementCount;
}

// --- DBEngine -------------------------------------------------------------------

std::shared_ptr<Database> DBEngine::OpenDatabase(const QString& path, bool exclusive, bool readOnly,
                                                 const QString& /*connect*/)
{
    return std::shared_ptr<Database>(new Database(Connection::open(platform::nativePathOf(path), exclusive, readOnly)));
}

std::shared_ptr<Database> DBEngine::CreateDatabase(const QString& path)
{
    return std::shared_ptr<Database>(new Database(Connection::create(platform::nativePathOf(path))));
}

int DBEngine::busyTimeoutMs()
{
    return g_busyTimeoutMs;
}

void DBEngine::setBusyTimeoutMs(int ms)
{
    g_busyTimeoutMs = ms < 0 ? 0 : ms;
}

long long DBEngine::statementCount()
{
    return g_statementCount;
}

void DBEngine::resetStatementCount()
{
    g_statementCount = 0;
}

// --- Database -------------------------------------------------------------------

Database::Database(std::shared_ptr<Connection> connection) : m_connection(std::move(connection))
{
}

// The connection closes when its last user, this or a recordset, goes.
Database::~Database() = default;

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& source, int type, int options)
{
    return Recordset::Impl::create(m_connection, source, type, options);
}

// A transaction of its own unless one is open. The connection is held here, as
// the wait for the write lock lets events run that may drop this Database.
void Database::Execute(const QString& sql, int /*options: failures are always raised*/)
{
    const std::shared_ptr<Connection> connection = m_connection;
    auto statement = connection->prepareJet(sql, Activity::Execute);
    sqlite3_stmt* stmt = statement.get();
    if (sqlite3_column_count(stmt) > 0 && sqlite3_stmt_readonly(stmt))
        raiseJetError(errCannotExecuteSelect, sql);
    connection->writeUnit(Activity::Execute, [&] {
        int rc = connection->step(statement);
        while (rc == SQLITE_ROW)
            rc = sqlite3_step(stmt);
        if (rc != SQLITE_DONE)
            connection->fail(rc, Activity::Execute, statement.translation().kind);
        connection->recordsAffected = sqlite3_changes64(connection->handle());
        sqlite3_reset(stmt);
    });
}

long long Database::RecordsAffected() const
{
    return m_connection->recordsAffected;
}

void Database::Close()
{
    m_connection->close();
}

bool Database::isOpen() const
{
    return m_connection->isOpen();
}

QString Database::Name() const
{
    return m_connection->path();
}

bool Database::isReadOnly() const
{
    return m_connection->isReadOnly();
}

bool Database::isExclusive() const
{
    return m_connection->isExclusive();
}

// One column of every row of a statement of SQLite's own, as texts.
QStringList Database::textColumn(const QString& sql, int column, StatementKind kind)
{
    auto statement = m_connection->prepareNative(sql, kind, Activity::Read);
    QStringList texts;
    int rc = m_connection->step(statement);
    for (; rc == SQLITE_ROW; rc = sqlite3_step(statement.get()))
        texts << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), column)));
    if (rc != SQLITE_DONE)
        m_connection->fail(rc, Activity::Read, kind);
    return texts;
}

QStringList Database::TableNames()
{
    // Not LIKE: that is Jet's here, and SQLite's own tables are to be left out exactly.
    return textColumn(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND "
                                     "substr(name, 1, 7) <> 'sqlite_' ORDER BY name COLLATE NOCASE"),
                      0, StatementKind::Select);
}

QStringList Database::FieldNames(const QString& table)
{
    const QStringList names = textColumn(
        QStringLiteral("PRAGMA table_info(") + quoteIdentifier(table) + QLatin1Char(')'), 1, StatementKind::Other);
    if (names.isEmpty())
        raiseJetError(errTableNotFound, table);
    return names;
}

QStringList Database::IndexNames(const QString& table)
{
    FieldNames(table); // 3078 when there is no such table
    return textColumn(QStringLiteral("PRAGMA index_list(") + quoteIdentifier(table) + QLatin1Char(')'), 1,
                      StatementKind::Other);
}

void Database::CreateCaseBlindIndex(const QString& name, const QString& table, const QString& column)
{
    // SQLite reads a "name" that is no column as a text, which would make an
    // index on a constant: the column must be there.
    if (!FieldNames(table).contains(column, Qt::CaseInsensitive))
        raiseJetError(errTooFewParameters, table + QLatin1Char('.') + column);
    const QString sql =
        QStringLiteral("CREATE INDEX IF NOT EXISTS %1 ON %2 (%3(%4))")
            .arg(quoteIdentifier(name), quoteIdentifier(table), QLatin1String(kFoldFunction), quoteIdentifier(column));
    auto statement = m_connection->prepareNative(sql, StatementKind::CreateIndex, Activity::Execute);
    const int rc = m_connection->step(statement);
    if (rc != SQLITE_DONE)
        m_connection->fail(rc, Activity::Execute, StatementKind::CreateIndex);
}

} // namespace dao
