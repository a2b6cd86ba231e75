#include "dao/sqlfunctions.h"

#include "dao/jetsql.h"

#include <QByteArray>
#include <QString>
#include <sqlite3.h>

namespace dao {

namespace {

QString textOf(sqlite3_value* v)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(v)), sqlite3_value_bytes(v));
}

// Jet's LIKE: like(pattern, text) for "text LIKE pattern".
void jetLikeFunction(sqlite3_context* context, int /*argc*/, sqlite3_value** argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    try {
        sqlite3_result_int(context, jetLike(textOf(argv[1]), textOf(argv[0])) ? 1 : 0);
    } catch (const std::exception& e) {
        sqlite3_result_error(context, e.what(), -1);
    }
}

// jetfold(value): the value's text folded as LIKE folds it, Null for Null. Runs
// once per row when an index is built or a table is scanned, so plain ASCII
// (most names) is folded without going through QString.
void jetFoldFunction(sqlite3_context* context, int /*argc*/, sqlite3_value** argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(argv[0]));
    const int length = sqlite3_value_bytes(argv[0]);
    QByteArray folded(text, length);
    bool ascii = true;
    for (char& c : folded) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            ascii = false;
            break;
        }
        if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    }
    if (!ascii)
        folded = foldCase(QString::fromUtf8(text, length)).toUtf8();
    sqlite3_result_text64(context, folded.constData(), sqlite3_uint64(folded.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
}

} // namespace

void registerSqlFunctions(sqlite3* db)
{
    const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    for (int argc : {2, 3})
        sqlite3_create_function_v2(db, "like", argc, flags, nullptr, jetLikeFunction, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, kFoldFunction, 1, flags, nullptr, jetFoldFunction, nullptr, nullptr, nullptr);
}

} // namespace dao
