// libFuzzer target: the Jet SQL translation, Jet's LIKE and the quoting helper.
//
// Whatever the input, translateJet() either refuses it with a JetError or gives
// text that SQLite reads as at most one statement. A value quoted with quote()
// comes back from SQLite unchanged, and quoteLike() makes a pattern that
// matches the value itself, in jetLike() and in a translated look-up. jetLike() never crashes, whatever the pattern.

#include "dao/jeterror.h"
#include "dao/jetsql.h"
#include "dao/quote.h"
#include "dao/sqlfunctions.h"

#include <QByteArray>
#include <QString>
#include <cstdio>
#include <cstdlib>
#include <sqlite3.h>

namespace {

[[noreturn]] void fail(const char* what, const QString& detail)
{
    std::fprintf(stderr, "%s: %s\n", what, detail.toUtf8().constData());
    std::abort();
}

sqlite3* memoryDb()
{
    static sqlite3* db = [] {
        sqlite3* d = nullptr;
        sqlite3_open(":memory:", &d);
        dao::registerSqlFunctions(d);
        sqlite3_exec(d, "CREATE TABLE T (A TEXT, B LONG); CREATE TABLE EmployeeTable (Name TEXT, Status TEXT)", nullptr,
                     nullptr, nullptr);
        return d;
    }();
    return db;
}

bool blank(const char* s)
{
    for (; *s; ++s) {
        if (*s != ' ' && *s != '\t' && *s != '\n' && *s != '\r' && *s != '\f')
            return false;
    }
    return true;
}

// SQLite must find no end of a statement in the text: no prefix that ends at a
// ";" is complete, and preparing it, successfully or not, consumes no ";" and
// leaves no tail. (The translation drops the closing ";", so SQLite never
// sees one outside a literal.)
void checkOneStatement(const QString& sql)
{
    const QByteArray utf8 = sql.toUtf8();
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        if (utf8[i] == ';' && sqlite3_complete(utf8.left(i + 1).constData()))
            fail("statement ends early", sql);
    }
    sqlite3_stmt* stmt = nullptr;
    const char* tail = nullptr;
    const int rc = sqlite3_prepare_v2(memoryDb(), utf8.constData(), int(utf8.size()), &stmt, &tail);
    sqlite3_finalize(stmt);
    if (tail && tail > utf8.constData() && tail[-1] == ';')
        fail("SQLite read a statement end", sql);
    if (rc == SQLITE_OK && tail && !blank(tail))
        fail("text after the statement", sql);
}

void fuzzTranslate(const QString& jet)
{
    try {
        checkOneStatement(dao::translateJet(jet).sql);
    } catch (const dao::JetError&) {
        // a refusal is a fine answer
    }
}

// The value quoted into a statement comes back exactly, and a look-up by LIKE
// of the value through quoteLike() finds it.
void fuzzQuote(const QString& value)
{
    const QString sql = dao::translateJet(QStringLiteral("SELECT ") + dao::quote(value)).sql;
    checkOneStatement(sql);
    const QByteArray utf8 = sql.toUtf8();
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(memoryDb(), utf8.constData(), int(utf8.size()), &stmt, nullptr) != SQLITE_OK)
        fail("quoted value does not prepare", sql);
    sqlite3_step(stmt);
    const QString back =
        QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)), sqlite3_column_bytes(stmt, 0));
    sqlite3_finalize(stmt);
    if (back != value)
        fail("quoted value changed", sql);
    const QString lookUp = dao::translateJet(QStringLiteral("SELECT count(*) FROM (SELECT ") + dao::quote(value) +
                                             QStringLiteral(" AS Name) WHERE Name LIKE ") + dao::quoteLike(value))
                               .sql;
    const QByteArray lookUp8 = lookUp.toUtf8();
    if (sqlite3_prepare_v2(memoryDb(), lookUp8.constData(), int(lookUp8.size()), &stmt, nullptr) != SQLITE_OK)
        fail("look-up by LIKE does not prepare", lookUp);
    sqlite3_step(stmt);
    const int found = sqlite3_column_int(stmt, 0);
    sqlite3_finalize(stmt);
    if (found != 1)
        fail("look-up by LIKE does not find the value", lookUp);
}

// quoteLike() without its quotes: the bare pattern.
QString likePattern(const QString& value)
{
    QString quoted = dao::quoteLike(value);
    return quoted.mid(1, quoted.size() - 2).replace(QLatin1String("\"\""), QLatin1String("\""));
}

void fuzzLike(const QByteArray& data)
{
    const qsizetype split = data.indexOf('\0');
    const QString pattern = QString::fromUtf8(split < 0 ? data : data.left(split));
    const QString text = split < 0 ? pattern : QString::fromUtf8(data.mid(split + 1));
    dao::jetLike(text, pattern);
    if (!dao::jetLike(text, likePattern(text)))
        fail("a value does not match itself", text);
    if (!dao::jetLike(text, QStringLiteral("*")))
        fail("* does not match", text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString text = QString::fromUtf8(bytes);
    fuzzTranslate(text);
    fuzzQuote(text);
    fuzzLike(bytes);
    return 0;
}
