#include "dao/jetlexer.h"

namespace dao::jet {

namespace {

bool isBlank(char16_t u)
{
    return u == ' ' || u == '\t' || u == '\n' || u == '\r' || u == '\f';
}

bool isDigit(char16_t u)
{
    return u >= '0' && u <= '9';
}

// Scans a quoted run that starts at i (the opening quote); a doubled closing
// character stands for itself when doubling is allowed. Returns the position
// after the closing quote, or -1 when the text ends first.
// A NUL may stand in a text literal (the translator writes such a literal in a
// form SQLite reads whole) but never in a name.
qsizetype scanQuoted(QStringView s, qsizetype i, char16_t close, bool doubling)
{
    const bool literal = close == u'"' || close == u'\'';
    const qsizetype n = s.size();
    for (qsizetype j = i + 1; j < n; ++j) {
        const char16_t u = s[j].unicode();
        if (u == 0 && !literal)
            return -1;
        if (u != close)
            continue;
        if (doubling && j + 1 < n && s[j + 1].unicode() == close) {
            ++j;
            continue;
        }
        return j + 1;
    }
    return -1;
}

qsizetype scanWhile(QStringView s, qsizetype i, bool (*pred)(QChar))
{
    while (i < s.size() && pred(s[i]))
        ++i;
    return i;
}

bool isNumberChar(QChar c)
{
    return isNameChar(c) || c == QLatin1Char('.');
}

bool isBlankChar(QChar c)
{
    return isBlank(c.unicode());
}

} // namespace

LexResult lex(QStringView s)
{
    LexResult r;
    r.tokens.reserve(s.size() / 3 + 4);
    const qsizetype n = s.size();
    qsizetype i = 0;
    while (i < n) {
        const char16_t u = s[i].unicode();
        Tok kind = Tok::Punct;
        qsizetype end = i + 1;
        if (isBlank(u)) {
            kind = Tok::Space;
            end = scanWhile(s, i, isBlankChar);
        } else if (isDigit(u) || (u == '.' && i + 1 < n && isDigit(s[i + 1].unicode()))) {
            kind = Tok::Number;
            end = scanWhile(s, i + 1, isNumberChar);
        } else if (u < 0x20 || u == 0x7f || u == '$' || u == '@' || u == ':' || u == '#') {
            // Control characters have no place outside a literal, and SQLite reads
            // $ @ : # as parameter markers whose extent differs from Jet's lexing
            // ("$" may go on inside a name, but a name never starts with it).
            end = -1;
        } else if (isNameChar(s[i])) {
            kind = Tok::Word;
            end = scanWhile(s, i + 1, isNameChar);
        } else if (u == '"' || u == '\'' || u == '`' || u == '[') {
            kind = u == '"' ? Tok::DqString : u == '\'' ? Tok::SqString : u == '`' ? Tok::Backquoted : Tok::Bracketed;
            end = scanQuoted(s, i, u == '[' ? u']' : u, u != '[');
        } else if (u == ';') {
            kind = Tok::Semicolon;
        }
        if (end < 0) {
            r.errorPos = i;
            return r;
        }
        r.tokens.push_back({kind, i, end - i});
        i = end;
    }
    return r;
}

} // namespace dao::jet
