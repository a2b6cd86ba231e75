// Recordset: opening, reading, moving and the fields. Writing back is in
// recordset_edit.cpp, Index and Seek in recordset_seek.cpp.
#include "dao/recordset_p.h"
#include "dao/values.h"

#include <sqlite3.h>

namespace dao {

namespace {

// A bare table name, with or without brackets: "EmployeeTable", "[Group Table]".
bool isBareTableName(const QString& source, QString* name)
{
    const QString s = source.trimmed();
    if (s.size() >= 2 && s.startsWith(QLatin1Char('[')) && s.indexOf(QLatin1Char(']')) == s.size() - 1) {
        *name = s.mid(1, s.size() - 2);
        return true;
    }
    if (s.isEmpty())
        return false;
    for (const QChar c : s) {
        if (!c.isLetterOrNumber() && c != QLatin1Char('_'))
            return false;
    }
    *name = s;
    return true;
}

} // namespace

// --- opening ----------------------------------------------------------------

std::unique_ptr<Recordset> Recordset::Impl::create(const std::shared_ptr<Connection>& conn, const QString& source,
                                                   int type, int options)
{
    conn->requireOpen();
    if (type != dbOpenTable && type != dbOpenDynaset && type != dbOpenSnapshot)
        raiseJetError(errInvalidArgument, QStringLiteral("recordset type %1").arg(type));
    auto d = std::make_unique<Impl>();
    d->conn = conn;
    d->type = type;
    QString table;
    if (isBareTableName(source, &table)) {
        // The whole table with its row ids, so that any kind but a snapshot can write back.
        auto statement =
            conn->prepareNative(QStringLiteral("SELECT rowid AS __rowid, * FROM ") + quoteIdentifier(table),
                                StatementKind::Select, Activity::Read);
        d->readRows(statement);
        d->sourceTable = table;
    } else {
        if (type == dbOpenTable)
            raiseJetError(errTableNotFound, source);
        auto statement = conn->prepareJet(source, Activity::Read);
        if (sqlite3_column_count(statement.get()) == 0 || !sqlite3_stmt_readonly(statement.get()))
            raiseJetError(errInvalidOperation, QStringLiteral("OpenRecordset needs a query that returns rows"));
        table = statement.translation().singleTable;
        d->readRows(statement);
    }
    const bool writable = type != dbOpenSnapshot && (options & dbReadOnly) == 0 && !conn->isReadOnly();
    if (writable && d->columns->hasRowid)
        d->table = table;
    d->positionOnFirst();
    return std::unique_ptr<Recordset>(new Recordset(std::move(d)));
}

// Reads every row now, so the set holds no lock once it is open.
void Recordset::Impl::readRows(Connection::Statement& statement)
{
    sqlite3_stmt* stmt = statement.get();
    int rc = conn->step(statement);
    if (rc != SQLITE_ROW && rc != SQLITE_DONE)
        conn->fail(rc, Activity::Read, statement.translation().kind);
    columns = statement.columns();
    const int first = columns->hasRowid ? 1 : 0;
    while (rc == SQLITE_ROW) {
        appendRow(stmt, first, first ? sqlite3_column_int64(stmt, 0) : 0);
        rc = sqlite3_step(stmt);
    }
    if (rc != SQLITE_DONE)
        conn->fail(rc, Activity::Read, statement.translation().kind);
}

void Recordset::Impl::appendRow(sqlite3_stmt* stmt, int firstColumn, qint64 rowid)
{
    const int n = width();
    for (int i = 0; i < n; ++i)
        cells.push_back(readColumn(stmt, firstColumn + i, columns->columns[std::size_t(i)].type));
    rowids.push_back(rowid);
    deleted.push_back(0);
    ++live;
}

void Recordset::Impl::positionOnFirst()
{
    pos = -1;
    for (long long i = 0; i < rowCount() && pos < 0; ++i) {
        if (!deleted[std::size_t(i)])
            pos = i;
    }
    bof = eof = pos < 0;
}

// --- checks -----------------------------------------------------------------

void Recordset::Impl::requireUsable() const
{
    if (!open || !conn || !conn->isOpen())
        raiseJetError(errObjectInvalid);
}

void Recordset::Impl::requireCurrent() const
{
    if (bof || eof || pos < 0 || pos >= rowCount())
        raiseJetError(errNoCurrentRecord);
    if (deleted[std::size_t(pos)])
        raiseJetError(errRecordDeleted);
}

void Recordset::Impl::requireUpdatable() const
{
    if (!isUpdatable())
        raiseJetError(errCannotUpdate);
}

void Recordset::Impl::requireTableType() const
{
    if (type != dbOpenTable)
        raiseJetError(errNotSupported);
}

bool Recordset::Impl::isWritable(int field) const
{
    const ColumnInfo& column = columns->columns[std::size_t(field)];
    return !column.originColumn.isEmpty() && column.originTable.compare(table, Qt::CaseInsensitive) == 0;
}

int Recordset::Impl::fieldIndex(const QString& name) const
{
    const auto& list = columns->columns;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    raiseJetError(errItemNotFound, name);
}

Recordset::Impl::~Impl()
{
    cancelEdit();
}

void Recordset::Impl::cancelEdit()
{
    if (holdsLock) {
        holdsLock = false;
        if (conn && conn->isOpen() && conn->level() == 1) {
            conn->rollbackTransaction();
        }
    }
    editMode = dbEditNone;
    buffer.clear();
    changed.clear();
}

// --- values -----------------------------------------------------------------

QVariant Recordset::Impl::value(int field) const
{
    requireUsable();
    if (editMode != dbEditNone)
        return buffer[std::size_t(field)];
    requireCurrent();
    return cell(pos, field);
}

void Recordset::Impl::setValue(int field, const QVariant& value)
{
    requireUsable();
    requireUpdatable();
    if (editMode == dbEditNone)
        raiseJetError(errUpdateWithoutEdit);
    if (!isWritable(field))
        raiseJetError(errFieldNotUpdatable, columns->columns[std::size_t(field)].name);
    buffer[std::size_t(field)] = convertForField(value, columns->columns[std::size_t(field)].type);
    changed[std::size_t(field)] = 1;
}

QString Field::Name() const
{
    m_rs->d->requireUsable();
    return m_rs->d->columns->columns[std::size_t(m_index)].name;
}

FieldType Field::Type() const
{
    m_rs->d->requireUsable();
    return m_rs->d->columns->columns[std::size_t(m_index)].type;
}

QVariant Field::Value() const
{
    return m_rs->d->value(m_index);
}

bool Field::IsNull() const
{
    return Value().isNull();
}

QString Field::Text() const
{
    return vbText(Value());
}

void Field::setValue(const QVariant& value)
{
    m_rs->d->setValue(m_index, value);
}

// --- Recordset ----------------------------------------------------------------

Recordset::Recordset(std::unique_ptr<Impl> impl) : d(std::move(impl))
{
}

Recordset::~Recordset() = default;

long long Recordset::RecordCount() const
{
    d->requireUsable();
    return d->live;
}

bool Recordset::isBOF() const
{
    d->requireUsable();
    return d->bof;
}

bool Recordset::isEOF() const
{
    d->requireUsable();
    return d->eof;
}

void Recordset::MoveFirst()
{
    d->requireUsable();
    d->cancelEdit();
    for (long long i = 0; i < d->rowCount(); ++i) {
        if (!d->deleted[std::size_t(i)]) {
            d->pos = i;
            d->bof = d->eof = false;
            return;
        }
    }
    raiseJetError(errNoCurrentRecord);
}

void Recordset::MoveLast()
{
    d->requireUsable();
    d->cancelEdit();
    for (long long i = d->rowCount() - 1; i >= 0; --i) {
        if (!d->deleted[std::size_t(i)]) {
            d->pos = i;
            d->bof = d->eof = false;
            return;
        }
    }
    raiseJetError(errNoCurrentRecord);
}

void Recordset::MoveNext()
{
    d->requireUsable();
    d->cancelEdit();
    if (d->eof)
        raiseJetError(errNoCurrentRecord);
    long long i = d->pos + 1;
    while (i < d->rowCount() && d->deleted[std::size_t(i)])
        ++i;
    d->pos = i;
    d->bof = false;
    d->eof = i >= d->rowCount();
}

void Recordset::MovePrevious()
{
    d->requireUsable();
    d->cancelEdit();
    if (d->bof)
        raiseJetError(errNoCurrentRecord);
    long long i = d->pos - 1;
    while (i >= 0 && d->deleted[std::size_t(i)])
        --i;
    d->pos = i;
    d->eof = false;
    d->bof = i < 0;
}

int Recordset::EditMode() const
{
    return d->editMode;
}

Field Recordset::Fields(const QString& name)
{
    d->requireUsable();
    return Field(this, d->fieldIndex(name));
}

Field Recordset::Fields(int index)
{
    d->requireUsable();
    if (index < 0 || index >= d->width())
        raiseJetError(errItemNotFound, QString::number(index));
    return Field(this, index);
}

int Recordset::FieldCount() const
{
    d->requireUsable();
    return d->width();
}

void Recordset::Close()
{
    d->open = false;
    d->cancelEdit();
    d->cells = {};
    d->rowids = {};
    d->deleted = {};
    d->conn.reset();
}

bool Recordset::isOpen() const
{
    return d->open && d->conn && d->conn->isOpen();
}

} // namespace dao
