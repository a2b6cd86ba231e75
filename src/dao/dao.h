#pragma once
// The data engine: DAO's object model over an SQLite file.
//
// DBEngine::OpenDatabase -> Database; Database::OpenRecordset -> Recordset;
// Recordset::Fields -> Field. Every failure raises dao::JetError with the Jet
// number the logic switches on. Statements are Jet SQL (see jetsql.h); text
// values enter them only through quote()/quoteLike() (see quote.h).
//
// A recordset reads all its rows when it opens and then holds no lock, so a
// reader never blocks other clients. A set over a join, a snapshot, or a set
// opened with dbReadOnly is read-only (3027 on Edit/AddNew/Delete).
//
// Locking is pessimistic, as Jet's default: Edit takes the file's write lock and
// reads the row again, Update writes it back by its row id and lets go, and
// CancelUpdate, a move, Close or the set's end let go without writing. So a
// read-add-write through Edit/Update is never interleaved with another client's.
// Inside a transaction (Database::BeginTrans) Edit only re-reads and Update only
// writes; the transaction commits everything at once. Any other write (Execute,
// AddNew/Update, Delete) outside a transaction is a transaction of its own.
//
// Another client's write lock is waited out in one place: the engine pauses a
// few ms and lets events other than the user's input run between tries, up to
// DBEngine::busyTimeoutMs(); then it raises the Jet number for the lock (3218 for
// Edit, Update and BeginTrans, 3260 for Execute, 3050 at open and for reads).

#include "dao/jeterror.h"
#include "dao/quote.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <vector>

struct sqlite3;

namespace dao {

enum RecordsetTypeEnum
{
    dbOpenTable = 1,
    dbOpenDynaset = 2,
    dbOpenSnapshot = 4
};
enum RecordsetOptionEnum
{
    dbReadOnly = 4
};
enum EditModeEnum
{
    dbEditNone = 0,
    dbEditInProgress = 1,
    dbEditAdd = 2
};

// The value kinds a field reads as; the column's declared type decides.
enum class FieldType
{
    Text,
    Long,
    Double,
    Boolean,
    Other
};

class Connection;
enum class StatementKind;
class Recordset;

class Field
{
public:
    QString Name() const;
    FieldType Type() const;
    // The value of the current row; a Null is a null QVariant. 3021 with no current record.
    QVariant Value() const;
    bool IsNull() const;
    // VB's Trim(field & ""): the value as trimmed text, a Null as "".
    QString Text() const;
    // Sets the value in the edit buffer; 3020 (no Edit/AddNew) or 3027 (read-only).
    void setValue(const QVariant& value);
    Field& operator=(const QVariant& value)
    {
        setValue(value);
        return *this;
    }

private:
    friend class Recordset;
    Field(Recordset* rs, int index) : m_rs(rs), m_index(index)
    {
    }
    Recordset* m_rs;
    int m_index;
};

class Recordset
{
public:
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // Rows in the set: greater than 0 whenever any row exists.
    long long RecordCount() const;
    bool isBOF() const; // VB's BOF
    bool isEOF() const; // VB's EOF
    void MoveFirst();
    void MoveNext();
    void MovePrevious();
    void MoveLast();

    void AddNew();
    void Edit();
    // Writes the edit buffer: one UPDATE by row id, or one INSERT. 3218 when another
    // client holds the file locked past the busy wait; 3167 when the row is gone.
    void Update();
    void CancelUpdate();
    void Delete();
    int EditMode() const;

    // Fields by name (without regard to case; 3265 when absent) and by position.
    Field Fields(const QString& name);
    Field Fields(int index);
    int FieldCount() const;

    // Table-type recordsets only (3251 otherwise): Index = "PrimaryKey" (or an
    // index's name; 3015 when there is none), then Seek("=", value) positions on
    // the first match, text compared without regard to case, or sets NoMatch and
    // leaves no current record. A key of several fields is a QVariantList.
    // Only "=" is offered (3001 for others).
    void setIndex(const QString& indexName);
    QString Index() const;
    void Seek(const QString& comparison, const QVariant& key);
    bool NoMatch() const;

    void Close();
    bool isOpen() const;

private:
    friend class Database;
    friend class Field;
    struct Impl;
    explicit Recordset(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> d;
};

class Database
{
public:
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // source: a table name (any type) or a Jet SELECT (dynaset or snapshot).
    std::unique_ptr<Recordset> OpenRecordset(const QString& source, int type = dbOpenDynaset, int options = 0);
    // Runs one action statement (INSERT, UPDATE, DELETE, CREATE, ALTER, DROP).
    void Execute(const QString& sql, int options = 0);
    // Rows touched by the last Execute.
    long long RecordsAffected() const;
    // Closes the file and drops its locks, rolling back a transaction left open;
    // any later use of it, or of a recordset opened on it, raises 3420 (Close
    // stays harmless).
    void Close();

    // A write transaction: BeginTrans takes the file's write lock (waiting for
    // another client's, see above) and later statements run inside it until
    // CommitTrans makes them visible to all at once, or Rollback drops them.
    // Transactions nest: an inner CommitTrans or Rollback ends the inner level only.
    // 3034 for CommitTrans or Rollback with none open.
    void BeginTrans();
    void CommitTrans();
    void Rollback();
    // True while a transaction or an Edit's lock is open, or a wait for another
    // client's lock is under way: closing the file now would lose that work.
    bool isBusy() const;
    bool isOpen() const;
    QString Name() const; // the file's path
    bool isReadOnly() const;
    bool isExclusive() const;

    // What DAO's TableDefs collection tells: the tables, and one table's fields in order.
    QStringList TableNames();
    QStringList FieldNames(const QString& table); // 3078 when there is no such table
    // The names of a table's indexes, SQLite's own for its keys among them; 3078
    // when there is no such table.
    QStringList IndexNames(const QString& table);
    // Makes, unless it is there, the index `name` on the case fold of a text column,
    // which answers "column LIKE <a text with no wildcard>" without reading the
    // whole table. 3078 when there is no such table, 3061 without the column.
    void CreateCaseBlindIndex(const QString& name, const QString& table, const QString& column);

private:
    friend class DBEngine;
    friend class Transaction;
    explicit Database(std::shared_ptr<Connection> connection);
    QStringList textColumn(const QString& sql, int column, StatementKind kind);
    std::shared_ptr<Connection> m_connection;
};

// One unit of change: begins a transaction on the database, and rolls it back at
// the end of the scope unless Commit was called.
class Transaction
{
public:
    explicit Transaction(Database& db);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

private:
    std::shared_ptr<Connection> m_connection;
    int m_level = 0; // the level this one opened; 0 once it has ended
};

class DBEngine
{
public:
    // Opens an existing file; a missing file is never created (3024). exclusive:
    // other clients' opens fail with 3045 until this one closes (a lock on
    // "veskor.ldb" beside "veskor.mdb"). Other failures: 3055 no file name or a
    // directory, 3044 no such folder, 3051 no permission, 3343 not a database,
    // 3049 damaged or cut short, 3050 busy past the busy wait.
    // A "\\server\share\..." path is opened where that share is mounted (platform/mounts.h).
    static std::shared_ptr<Database> OpenDatabase(const QString& path, bool exclusive = false, bool readOnly = false,
                                                  const QString& connect = QString());
    // Makes a new, empty file; 3204 when the file is already there.
    static std::shared_ptr<Database> CreateDatabase(const QString& path);

    // How long a write waits for another client's lock before failing (ms);
    // SQLite's own short waits inside a statement (a read meeting a commit in
    // progress, a commit waiting for readers) are bounded by the same figure, and
    // by 5 s at most, as only a stuck client holds those locks longer.
    static int busyTimeoutMs();
    static void setBusyTimeoutMs(int ms);

    // Count of statements sent to SQLite since the last reset, for tests that
    // prove how much work a path does: one per recordset opened, Execute, Edit
    // (the row read again), written Update and Delete, two per AddNew/Update (the
    // insert and the read-back of the new row). Opening a file, and beginning or
    // ending a transaction, count nothing.
    static long long statementCount();
    static void resetStatementCount();
};

} // namespace dao
