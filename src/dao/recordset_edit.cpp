// Recordset: Edit, AddNew, Update, CancelUpdate and Delete. Every write is one
// statement with bound parameters, addressed by the row id the set read at open.
// Edit locks pessimistically: it takes the write lock (unless a transaction is
// open already) and reads the row again, so the edit starts from what is there
// now and nobody else can change it before Update.
#include "dao/recordset_p.h"
#include "dao/values.h"

#include <sqlite3.h>

namespace dao {

void Recordset::Edit()
{
    d->requireUsable();
    d->requireUpdatable();
    d->requireCurrent();
    d->cancelEdit();
    const std::shared_ptr<Connection> conn = d->conn; // alive across the wait's events
    if (conn->level() == 0) {
        conn->beginTransaction(Activity::Write);
        d->holdsLock = true;
    }
    try {
        d->requireUsable();
        d->rereadCurrent();
    } catch (...) {
        d->cancelEdit();
        throw;
    }
    const auto first = d->cells.begin() + std::ptrdiff_t(d->pos * d->width());
    d->buffer.assign(first, first + d->width());
    d->changed.assign(std::size_t(d->width()), 0);
    d->editMode = dbEditInProgress;
}

void Recordset::AddNew()
{
    d->requireUsable();
    d->requireUpdatable();
    d->buffer.assign(std::size_t(d->width()), QVariant());
    d->changed.assign(std::size_t(d->width()), 0);
    d->editMode = dbEditAdd;
}

void Recordset::Update()
{
    d->requireUsable();
    if (d->editMode == dbEditNone)
        raiseJetError(errUpdateWithoutEdit);
    d->update();
}

void Recordset::CancelUpdate()
{
    d->requireUsable();
    if (d->editMode == dbEditNone)
        raiseJetError(errUpdateWithoutEdit);
    d->cancelEdit();
}

void Recordset::Delete()
{
    d->requireUsable();
    d->requireUpdatable();
    d->requireCurrent();
    d->cancelEdit();
    const std::shared_ptr<Connection> conn = d->conn; // alive across the wait's events
    conn->writeUnit(Activity::Write, [this] { d->deleteCurrent(); });
}

// The row with a given row id: its row id first, then the set's fields, a field
// that is not a column of the table (an expression) read as Null.
QString Recordset::Impl::rowByIdSql() const
{
    QString select = QStringLiteral("SELECT rowid AS __rowid");
    for (int i = 0; i < width(); ++i) {
        select += QStringLiteral(", ");
        select +=
            isWritable(i) ? quoteIdentifier(columns->columns[std::size_t(i)].originColumn) : QStringLiteral("NULL");
    }
    return select + QStringLiteral(" FROM ") + quoteIdentifier(table) + QStringLiteral(" WHERE rowid = ?");
}

// The current row as the file holds it now; 3167 when another client deleted it.
void Recordset::Impl::rereadCurrent()
{
    auto statement = conn->prepareNative(rowByIdSql(), StatementKind::Select, Activity::Write);
    sqlite3_bind_int64(statement.get(), 1, rowids[std::size_t(pos)]);
    const int rc = conn->step(statement);
    if (rc == SQLITE_DONE)
        raiseJetError(errRecordDeleted, QStringLiteral("the row was deleted by another user"));
    if (rc != SQLITE_ROW)
        conn->fail(rc, Activity::Write, StatementKind::Select);
    for (int i = 0; i < width(); ++i) {
        if (isWritable(i)) {
            cells[std::size_t(pos * width() + i)] =
                readColumn(statement.get(), i + 1, columns->columns[std::size_t(i)].type);
        }
    }
}

// With an Edit's lock the write is committed at once; inside a transaction it
// waits for the transaction's commit; otherwise it is a transaction of its own.
// A failed write lets go of the lock but leaves the edit buffer as it was, so
// the caller can try the same Update again, as Jet allows.
void Recordset::Impl::update()
{
    const std::shared_ptr<Connection> keep = conn; // alive across the wait's events
    if (holdsLock) {
        try {
            write();
            holdsLock = false;
            conn->commitTransaction(Activity::Write);
        } catch (...) {
            if (holdsLock) {
                holdsLock = false;
                conn->rollbackTransaction();
            }
            throw;
        }
    } else {
        conn->writeUnit(Activity::Write, [this] { write(); });
    }
    cancelEdit();
}

void Recordset::Impl::write()
{
    if (editMode == dbEditAdd)
        insertBuffer();
    else
        updateRow();
}

void Recordset::Impl::updateRow()
{
    QString sql = QStringLiteral("UPDATE ") + quoteIdentifier(table) + QStringLiteral(" SET ");
    std::vector<int> fields;
    for (int i = 0; i < width(); ++i) {
        if (!changed[std::size_t(i)])
            continue;
        if (!fields.empty())
            sql += QStringLiteral(", ");
        sql += quoteIdentifier(columns->columns[std::size_t(i)].originColumn) + QStringLiteral(" = ?");
        fields.push_back(i);
    }
    if (fields.empty())
        return; // nothing changed: nothing to write
    sql += QStringLiteral(" WHERE rowid = ?");

    auto statement = conn->prepareNative(sql, StatementKind::Update, Activity::Write);
    int parameter = 1;
    for (int field : fields)
        bindValue(statement.get(), parameter++, buffer[std::size_t(field)]);
    sqlite3_bind_int64(statement.get(), parameter, rowids[std::size_t(pos)]);
    const int rc = conn->step(statement);
    if (rc != SQLITE_DONE)
        conn->fail(rc, Activity::Write, StatementKind::Update);
    if (sqlite3_changes(conn->handle()) == 0)
        raiseJetError(errRecordDeleted, QStringLiteral("the row was deleted by another user"));
    for (int field : fields)
        cells[std::size_t(pos * width() + field)] = buffer[std::size_t(field)];
}

void Recordset::Impl::insertBuffer()
{
    QString names;
    QString marks;
    std::vector<int> fields;
    for (int i = 0; i < width(); ++i) {
        if (!changed[std::size_t(i)])
            continue;
        if (!fields.empty()) {
            names += QStringLiteral(", ");
            marks += QStringLiteral(", ");
        }
        names += quoteIdentifier(columns->columns[std::size_t(i)].originColumn);
        marks += QLatin1Char('?');
        fields.push_back(i);
    }
    const QString sql =
        QStringLiteral("INSERT INTO ") + quoteIdentifier(table) +
        (fields.empty() ? QStringLiteral(" DEFAULT VALUES")
                        : QStringLiteral(" (") + names + QStringLiteral(") VALUES (") + marks + QLatin1Char(')'));
    qint64 rowid = 0;
    {
        auto statement = conn->prepareNative(sql, StatementKind::Insert, Activity::Write);
        int parameter = 1;
        for (int field : fields)
            bindValue(statement.get(), parameter++, buffer[std::size_t(field)]);
        const int rc = conn->step(statement);
        if (rc != SQLITE_DONE)
            conn->fail(rc, Activity::Write, StatementKind::Insert);
        rowid = sqlite3_last_insert_rowid(conn->handle());
    }

    // Read the new row back, so that defaults and the counter column show.
    auto statement = conn->prepareNative(rowByIdSql(), StatementKind::Select, Activity::Write);
    sqlite3_bind_int64(statement.get(), 1, rowid);
    const int rc = conn->step(statement);
    if (rc == SQLITE_ROW) {
        appendRow(statement.get(), 1, rowid);
    } else if (rc == SQLITE_DONE) {
        // Gone already (deleted by someone else at once): keep what was written.
        cells.insert(cells.end(), buffer.begin(), buffer.end());
        rowids.push_back(rowid);
        deleted.push_back(0);
        ++live;
    } else {
        conn->fail(rc, Activity::Write, StatementKind::Select);
    }
    // The current record stays where it was; past the end stays past the end.
    if (eof)
        pos = rowCount();
}

void Recordset::Impl::deleteCurrent()
{
    auto statement = conn->prepareNative(QStringLiteral("DELETE FROM ") + quoteIdentifier(table) +
                                             QStringLiteral(" WHERE rowid = ?"),
                                         StatementKind::Delete, Activity::Write);
    sqlite3_bind_int64(statement.get(), 1, rowids[std::size_t(pos)]);
    const int rc = conn->step(statement);
    if (rc != SQLITE_DONE)
        conn->fail(rc, Activity::Write, StatementKind::Delete);
    if (sqlite3_changes(conn->handle()) == 0)
        raiseJetError(errRecordDeleted, QStringLiteral("the row was deleted by another user"));
    deleted[std::size_t(pos)] = 1;
    --live;
}

} // namespace dao
