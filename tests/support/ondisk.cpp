#include "ondisk.h"

#include "dao/sqlfunctions.h"

#include <QFile>
#include <sqlite3.h>

namespace {

sqlite3* openFile(const QString& path)
{
    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(path).constData(), &db);
    dao::registerSqlFunctions(db);
    sqlite3_busy_timeout(db, 5000);
    return db;
}

} // namespace

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

bool sqliteExec(const QString& path, const QString& sql)
{
    sqlite3* db = openFile(path);
    const int rc = sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
    sqlite3_close(db);
    return rc == SQLITE_OK;
}

QStringList sqliteColumn(const QString& path, const QString& sql, int column)
{
    sqlite3* db = openFile(path);
    sqlite3_stmt* stmt = nullptr;
    QStringList values;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &stmt, nullptr) == SQLITE_OK) {
        while (sqlite3_step(stmt) == SQLITE_ROW)
            values << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, column)));
    }
    sqlite3_finalize(stmt);
    sqlite3_close(db);
    return values;
}

QString sqliteValue(const QString& path, const QString& sql)
{
    return sqliteColumn(path, sql).value(0, "<no row>");
}
