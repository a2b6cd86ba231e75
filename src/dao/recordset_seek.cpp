// Recordset: Index, Seek and NoMatch, on a table-type set only. The set holds the
// whole table in memory, so Seek looks through those rows; the index chosen
// decides which fields are compared.
#include "dao/recordset_p.h"

#include <QStringList>
#include <algorithm>
#include <sqlite3.h>

namespace dao {

namespace {

// Runs a PRAGMA that lists rows, handing each to the reader.
template <typename Reader> void readPragma(Connection& conn, const QString& sql, Reader reader)
{
    auto statement = conn.prepareNative(sql, StatementKind::Other, Activity::Read);
    int rc = conn.step(statement);
    while (rc == SQLITE_ROW) {
        reader(statement.get());
        rc = sqlite3_step(statement.get());
    }
    if (rc != SQLITE_DONE)
        conn.fail(rc, Activity::Read, StatementKind::Other);
}

QString textColumn(sqlite3_stmt* stmt, int column)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, column)));
}

// The table's primary key columns in key order.
QStringList primaryKeyColumns(Connection& conn, const QString& table)
{
    std::vector<std::pair<int, QString>> keyed;
    readPragma(conn, QStringLiteral("PRAGMA table_info(") + quoteIdentifier(table) + QLatin1Char(')'),
               [&](sqlite3_stmt* row) {
                   const int pk = sqlite3_column_int(row, 5);
                   if (pk > 0)
                       keyed.emplace_back(pk, textColumn(row, 1));
               });
    std::sort(keyed.begin(), keyed.end());
    QStringList names;
    for (const auto& [order, name] : keyed)
        names << name;
    return names;
}

// The columns of the table's index of that name (any case), in index order.
QStringList namedIndexColumns(Connection& conn, const QString& table, const QString& indexName)
{
    QString exactName;
    readPragma(conn, QStringLiteral("PRAGMA index_list(") + quoteIdentifier(table) + QLatin1Char(')'),
               [&](sqlite3_stmt* row) {
                   const QString name = textColumn(row, 1);
                   if (name.compare(indexName, Qt::CaseInsensitive) == 0)
                       exactName = name;
               });
    QStringList names;
    if (exactName.isEmpty())
        return names;
    readPragma(conn, QStringLiteral("PRAGMA index_info(") + quoteIdentifier(exactName) + QLatin1Char(')'),
               [&](sqlite3_stmt* row) { names << textColumn(row, 2); });
    return names;
}

bool isNumeric(const QVariant& v)
{
    const int id = v.typeId();
    return id == QMetaType::LongLong || id == QMetaType::Int || id == QMetaType::Double || id == QMetaType::Bool ||
           id == QMetaType::UInt || id == QMetaType::ULongLong || id == QMetaType::Float;
}

// Jet compares text keys without regard to case.
bool keyEquals(const QVariant& value, const QVariant& key)
{
    if (value.isNull() || key.isNull())
        return value.isNull() && key.isNull();
    if (isNumeric(value) && isNumeric(key))
        return value.toDouble() == key.toDouble();
    return value.toString().compare(key.toString(), Qt::CaseInsensitive) == 0;
}

} // namespace

void Recordset::Impl::chooseIndex(const QString& name)
{
    QStringList names;
    if (name.compare(QLatin1String("PrimaryKey"), Qt::CaseInsensitive) == 0)
        names = primaryKeyColumns(*conn, sourceTable);
    if (names.isEmpty())
        names = namedIndexColumns(*conn, sourceTable, name);
    if (names.isEmpty())
        raiseJetError(errNotAnIndex, name);
    std::vector<int> fields;
    for (const QString& column : names)
        fields.push_back(fieldIndex(column));
    indexFields = std::move(fields);
    indexName = name;
}

void Recordset::Impl::seek(const QString& comparison, const QVariant& key)
{
    if (indexFields.empty())
        raiseJetError(errNoCurrentIndex);
    if (comparison.trimmed() != QLatin1String("="))
        raiseJetError(errInvalidArgument, QStringLiteral("Seek supports \"=\" only"));
    const QVariantList keys = key.typeId() == QMetaType::QVariantList ? key.toList() : QVariantList{key};
    if (keys.isEmpty() || std::size_t(keys.size()) > indexFields.size())
        raiseJetError(errInvalidArgument, QStringLiteral("Seek needs one key value per indexed field"));
    cancelEdit();
    for (long long row = 0; row < rowCount(); ++row) {
        if (deleted[std::size_t(row)])
            continue;
        bool match = true;
        for (qsizetype k = 0; k < keys.size() && match; ++k)
            match = keyEquals(cell(row, indexFields[std::size_t(k)]), keys.at(k));
        if (match) {
            pos = row;
            bof = eof = false;
            noMatch = false;
            return;
        }
    }
    // No match leaves no current record.
    noMatch = true;
    pos = rowCount();
    bof = false;
    eof = true;
}

void Recordset::setIndex(const QString& indexName)
{
    d->requireUsable();
    d->requireTableType();
    d->chooseIndex(indexName);
}

QString Recordset::Index() const
{
    d->requireUsable();
    return d->indexName;
}

void Recordset::Seek(const QString& comparison, const QVariant& key)
{
    d->requireUsable();
    d->requireTableType();
    d->seek(comparison, key);
}

bool Recordset::NoMatch() const
{
    d->requireUsable();
    return d->noMatch;
}

} // namespace dao
