#pragma once
// Splits a Jet statement into tokens, so the translator always knows what lies
// inside a literal or a bracketed name and never rewrites a value by accident.
// Internal to the data engine.
//
// The token boundaries follow SQLite's own lexer wherever both dialects meet,
// so that what the translator takes for a literal is a literal for SQLite too.

#include <QString>
#include <QStringView>
#include <vector>

namespace dao::jet {

enum class Tok
{
    Space,      // blanks, tabs, CR, LF, form feed
    Word,       // a name or keyword: letters, digits, "_", "$", anything above ASCII
    Number,     // begins with a digit, or "." and a digit
    DqString,   // "..." with "" inside: a Jet text literal
    SqString,   // '...' with '' inside
    Bracketed,  // [name]
    Backquoted, // `name`
    Punct,      // one character of punctuation or an operator
    Semicolon,
};

struct Token
{
    Tok kind;
    qsizetype pos;
    qsizetype len;
};

struct LexResult
{
    std::vector<Token> tokens;
    // Where lexing stopped on something that cannot be part of a statement (an
    // unclosed literal or bracket, a control character, a parameter marker); -1 if none.
    qsizetype errorPos = -1;
};

LexResult lex(QStringView sql);

// True for the characters SQLite accepts inside a name.
inline bool isNameChar(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '_' || u == '$' ||
           u >= 0x80;
}

} // namespace dao::jet
