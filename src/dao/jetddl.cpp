// Data definition: Jet's column types in CREATE TABLE and ALTER TABLE.
//
// The declared type is kept as Jet wrote it (Bit, Long, Text(n)...), because the
// engine reads a column's declared type to decide how its values read. Only what
// SQLite would take differently is rewritten.
#include "dao/jetstatement.h"

namespace dao::jet {

namespace {

enum class TypeClass
{
    Counter,
    YesNo,
    Text,
    Other
};

struct TypeInfo
{
    TypeClass cls = TypeClass::Other;
    const char* rename = nullptr; // the name SQLite gets instead, if any
};

TypeInfo classify(QStringView type)
{
    struct Entry
    {
        const char* name;
        TypeClass cls;
        const char* rename;
    };
    // MEMO, NOTE, STRING and ALPHANUMERIC would get numeric affinity in SQLite,
    // which turns a text of digits such as "007" into the number 7; their
    // renames keep both the text affinity and a name that reads as text.
    static const Entry table[] = {
        {"COUNTER", TypeClass::Counter, nullptr},  {"AUTOINCREMENT", TypeClass::Counter, nullptr},
        {"YESNO", TypeClass::YesNo, "BIT"},        {"LOGICAL", TypeClass::YesNo, "BIT"},
        {"LOGICAL1", TypeClass::YesNo, "BIT"},     {"BOOLEAN", TypeClass::YesNo, "BIT"},
        {"TEXT", TypeClass::Text, nullptr},        {"CHAR", TypeClass::Text, nullptr},
        {"CHARACTER", TypeClass::Text, nullptr},   {"VARCHAR", TypeClass::Text, nullptr},
        {"NCHAR", TypeClass::Text, nullptr},       {"NVARCHAR", TypeClass::Text, nullptr},
        {"LONGTEXT", TypeClass::Text, nullptr},    {"LONGCHAR", TypeClass::Text, nullptr},
        {"NTEXT", TypeClass::Text, nullptr},       {"MEMO", TypeClass::Text, "LONGTEXT"},
        {"NOTE", TypeClass::Text, "LONGTEXT"},     {"STRING", TypeClass::Text, "TEXT"},
        {"ALPHANUMERIC", TypeClass::Text, "TEXT"},
    };
    for (const Entry& e : table) {
        if (type.compare(QLatin1String(e.name), Qt::CaseInsensitive) == 0)
            return {e.cls, e.rename};
    }
    return {};
}

bool startsTableConstraint(QStringView word)
{
    static const char* const words[] = {"CONSTRAINT", "PRIMARY", "UNIQUE", "FOREIGN", "CHECK"};
    for (const char* w : words) {
        if (word.compare(QLatin1String(w), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace

// CREATE TABLE t (a type ..., b type ..., CONSTRAINT ...): each column
// definition between the outer parentheses gets its type rewritten.
void Statement::rewriteCreateTable()
{
    int open = 0;
    while (open < count() && !isPunct(open, u'('))
        ++open;
    if (open >= count())
        return;
    int first = open + 1;
    for (int s = first; s < count(); ++s) {
        const bool endOfColumn =
            (isPunct(s, u',') && depth(s) == depth(open) + 1) || (isPunct(s, u')') && depth(s) == depth(open));
        if (!endOfColumn)
            continue;
        rewriteColumn(first, s, false);
        if (isPunct(s, u')'))
            return;
        first = s + 1;
    }
}

// ALTER TABLE t ADD [COLUMN] c type ...: the type as in CREATE TABLE, and NOT
// NULL dropped: Jet adds such a column to a table that has rows and leaves
// those rows Null, where SQLite would refuse the statement.
// ALTER TABLE t DROP [COLUMN] c: SQLite needs the word COLUMN.
void Statement::rewriteAlterTable()
{
    if (!isWord(1, "TABLE") || !isName(2))
        return;
    int s = 4;
    if (isWord(3, "ADD")) {
        if (isWord(s, "COLUMN"))
            ++s;
        rewriteColumn(s, count(), true);
    } else if (isWord(3, "DROP") && !isWord(s, "COLUMN") && !isWord(s, "CONSTRAINT") && isName(s)) {
        edit(s).before += QStringLiteral("COLUMN ");
    }
}

// One column definition: significant tokens first..end-1, the name then the type.
void Statement::rewriteColumn(int first, int end, bool addedToFilledTable)
{
    const int type = first + 1;
    if (type >= end || tok(first).kind == Tok::Punct || startsTableConstraint(text(first)) ||
        tok(type).kind != Tok::Word)
        return;
    int typeEnd = type; // the last token of the type, ")" of Text(n)
    if (isPunct(type + 1, u'(')) {
        const int close = matchingClose(type + 1, end);
        if (close < 0)
            return;
        typeEnd = close;
    }
    const TypeInfo info = classify(text(type));
    switch (info.cls) {
    case TypeClass::Counter:
        replace(type, QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT"));
        if (typeEnd > type)
            drop(type + 1, typeEnd); // COUNTER(seed, step)
        for (int s = typeEnd + 1; s < end; ++s) {
            if (isWord(s, "PRIMARY") && isWord(s + 1, "KEY")) {
                dropWithBlanksBefore(s, s + 1);
                s += 1;
            } else if (isWord(s, "CONSTRAINT") && isWord(s + 2, "PRIMARY") && isWord(s + 3, "KEY")) {
                dropWithBlanksBefore(s, s + 3);
                s += 3;
            }
        }
        break;
    case TypeClass::YesNo:
        replace(type, QString::fromLatin1(info.rename));
        break;
    case TypeClass::Text:
        if (info.rename)
            replace(type, QString::fromLatin1(info.rename));
        edit(typeEnd).after += QStringLiteral(" COLLATE NOCASE");
        break;
    case TypeClass::Other:
        break;
    }
    if (!addedToFilledTable)
        return;
    for (int s = typeEnd + 1; s + 1 < end; ++s) {
        if (isWord(s, "NOT") && isWord(s + 1, "NULL"))
            dropWithBlanksBefore(s, s + 1);
    }
}

} // namespace dao::jet
