#pragma once
// The inside of a Recordset: the rows read at open, the position, the edit
// buffer and the index chosen for Seek.

#include "dao/connection.h"
#include "dao/dao.h"

#include <QVariant>
#include <memory>
#include <vector>

namespace dao {

struct Recordset::Impl
{
    std::shared_ptr<Connection> conn;
    std::shared_ptr<const ColumnSet> columns;
    int type = dbOpenDynaset;
    bool open = true;
    // The table rows are written back to; empty when the set is read-only.
    QString table;
    // The table a table-type set reads, for its indexes.
    QString sourceTable;

    // The rows, row-major, one cell per field; the row ids; rows deleted here.
    std::vector<QVariant> cells;
    std::vector<qint64> rowids;
    std::vector<unsigned char> deleted;
    long long live = 0; // rows not deleted

    // The current row; bof/eof as DAO has them (both on an empty set).
    long long pos = -1;
    bool bof = true;
    bool eof = true;

    int editMode = dbEditNone;
    // True while an Edit of this set holds the file's write lock (no transaction
    // was open at the Edit); Update commits it, anything else rolls it back.
    bool holdsLock = false;
    std::vector<QVariant> buffer;
    std::vector<unsigned char> changed;

    QString indexName;
    std::vector<int> indexFields;
    bool noMatch = false;

    ~Impl();

    static std::unique_ptr<Recordset> create(const std::shared_ptr<Connection>& conn, const QString& source, int type,
                                             int options);

    int width() const
    {
        return int(columns->columns.size());
    }
    long long rowCount() const
    {
        return (long long)rowids.size();
    }
    const QVariant& cell(long long row, int field) const
    {
        return cells[std::size_t(row * width() + field)];
    }
    bool isUpdatable() const
    {
        return !table.isEmpty();
    }
    bool isWritable(int field) const;

    void requireUsable() const;                // 3420 after Close or the database's close
    void requireCurrent() const;               // 3021, or 3167 on a row deleted here
    void requireUpdatable() const;             // 3027
    void requireTableType() const;             // 3251
    int fieldIndex(const QString& name) const; // 3265
    QVariant value(int field) const;
    void setValue(int field, const QVariant& value);

    void readRows(Connection::Statement& statement);
    void appendRow(sqlite3_stmt* stmt, int firstColumn, qint64 rowid);
    void positionOnFirst();
    // Ends an edit or an added row without writing, letting go of an Edit's lock.
    void cancelEdit();

    // Writing back (recordset_edit.cpp).
    QString rowByIdSql() const;
    void rereadCurrent();
    void update();
    void write();
    void insertBuffer();
    void updateRow();
    void deleteCurrent();
    // Seek (recordset_seek.cpp).
    void chooseIndex(const QString& name);
    void seek(const QString& comparison, const QVariant& key);
};

} // namespace dao
