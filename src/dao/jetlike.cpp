// Jet's LIKE: * any run, ? one character, # one digit (0-9), [abc] [a-z] [!abc]
// one character of (or not of) a set. Inside a set, * ? # [ stand for
// themselves, which is how a value is made to match only itself; a "]" outside
// a set is an ordinary character.
//
// Comparison is without regard to case over all of Unicode: both sides are case
// folded code point by code point, so a character outside the BMP counts as one
// character for "?", like any other.
#include "dao/jetsql.h"

#include <QVarLengthArray>

namespace dao {

namespace {

using CodePoints = QVarLengthArray<char32_t, 64>;

void decode(QStringView s, CodePoints& out)
{
    out.reserve(s.size());
    for (qsizetype i = 0; i < s.size(); ++i) {
        const QChar c = s[i];
        if (c.isHighSurrogate() && i + 1 < s.size() && s[i + 1].isLowSurrogate()) {
            out.append(QChar::surrogateToUcs4(c, s[i + 1]));
            ++i;
        } else {
            out.append(c.unicode());
        }
    }
}

char32_t fold(char32_t c)
{
    return QChar::toCaseFolded(c);
}

bool between(char32_t lo, char32_t hi, char32_t c)
{
    return lo <= c && c <= hi;
}

enum class Op : quint8
{
    Star,
    Any,
    Digit,
    Char,
    Set,
    NotSet
};

struct Element
{
    Op op;
    char32_t ch;     // Char: the folded character
    qsizetype first; // Set, NotSet: its items in Pattern::items
    qsizetype last;
};

struct Item
{
    char32_t lo; // a single character has lo == hi, folded
    char32_t hi;
};

struct Pattern
{
    QString source;
    bool valid = false; // false: a "[" without its "]"; such a pattern matches nothing
    QVarLengthArray<Element, 32> elements;
    QVarLengthArray<Item, 16> items;
};

// Reads [abc], [a-z], [!abc] starting after the "[" at i; returns the position
// after the "]", or -1 when there is none.
qsizetype compileSet(const CodePoints& p, qsizetype i, Pattern& out)
{
    bool negated = false;
    if (i < p.size() && p[i] == U'!') {
        negated = true;
        ++i;
    }
    const qsizetype first = out.items.size();
    while (i < p.size() && p[i] != U']') {
        if (i + 2 < p.size() && p[i + 1] == U'-' && p[i + 2] != U']') {
            out.items.append({p[i], p[i + 2]});
            i += 3;
        } else {
            out.items.append({fold(p[i]), fold(p[i])});
            ++i;
        }
    }
    if (i >= p.size())
        return -1;
    if (first == out.items.size() && !negated)
        return i + 1; // "[]" stands for the empty text
    out.elements.append({negated ? Op::NotSet : Op::Set, 0, first, out.items.size()});
    return i + 1;
}

void compile(const QString& source, Pattern& out)
{
    out.source = source;
    out.elements.clear();
    out.items.clear();
    out.valid = false;
    CodePoints p;
    decode(source, p);
    for (qsizetype i = 0; i < p.size();) {
        const char32_t c = p[i];
        if (c == U'[') {
            i = compileSet(p, i + 1, out);
            if (i < 0)
                return;
            continue;
        }
        if (c == U'*') {
            if (out.elements.isEmpty() || out.elements.back().op != Op::Star)
                out.elements.append({Op::Star, 0, 0, 0});
        } else if (c == U'?') {
            out.elements.append({Op::Any, 0, 0, 0});
        } else if (c == U'#') {
            out.elements.append({Op::Digit, 0, 0, 0});
        } else {
            out.elements.append({Op::Char, fold(c), 0, 0});
        }
        ++i;
    }
    out.valid = true;
}

bool inSet(const Pattern& p, const Element& e, char32_t c, char32_t folded)
{
    for (qsizetype k = e.first; k < e.last; ++k) {
        const Item& it = p.items[k];
        if (it.lo == it.hi) {
            if (it.lo == folded)
                return true;
            continue;
        }
        // A range is taken in the case it was written in and folded, so [A-Z]
        // and [a-z] both hold every letter of the alphabet in either case.
        if (between(it.lo, it.hi, c) || between(fold(it.lo), fold(it.hi), folded) ||
            between(it.lo, it.hi, QChar::toUpper(c)) || between(it.lo, it.hi, QChar::toLower(c)))
            return true;
    }
    return false;
}

bool matchesOne(const Pattern& p, const Element& e, char32_t c, char32_t folded)
{
    switch (e.op) {
    case Op::Any:
        return true;
    case Op::Digit:
        return c >= U'0' && c <= U'9';
    case Op::Char:
        return e.ch == folded;
    case Op::Set:
        return inSet(p, e, c, folded);
    case Op::NotSet:
        return !inSet(p, e, c, folded);
    case Op::Star:
        break;
    }
    return false;
}

// The classic matcher with one remembered star: every element but "*" takes
// exactly one character, so going back to the last star is enough, and the
// work is at most text length times pattern length.
bool match(const Pattern& p, const CodePoints& text, const CodePoints& folded)
{
    const qsizetype n = text.size();
    const qsizetype m = p.elements.size();
    qsizetype t = 0, e = 0, starE = -1, starT = 0;
    while (t < n) {
        if (e < m && p.elements[e].op == Op::Star) {
            starE = e++;
            starT = t;
        } else if (e < m && matchesOne(p, p.elements[e], text[t], folded[t])) {
            ++e;
            ++t;
        } else if (starE >= 0) {
            e = starE + 1;
            t = ++starT;
        } else {
            return false;
        }
    }
    while (e < m && p.elements[e].op == Op::Star)
        ++e;
    return e == m;
}

} // namespace

QString foldCase(QStringView text)
{
    CodePoints points;
    decode(text, points);
    QString out;
    out.reserve(text.size());
    for (char32_t c : points) {
        const char32_t f = fold(c);
        if (QChar::requiresSurrogates(f)) {
            out += QChar(QChar::highSurrogate(f));
            out += QChar(QChar::lowSurrogate(f));
        } else {
            out += QChar(char16_t(f));
        }
    }
    return out;
}

bool jetLike(const QString& text, const QString& pattern)
{
    // SQLite calls this once per row with the same pattern: keep the last one compiled.
    thread_local Pattern cached;
    if (!cached.valid || cached.source != pattern)
        compile(pattern, cached);
    if (!cached.valid)
        return false;
    CodePoints original;
    decode(text, original);
    CodePoints folded;
    folded.reserve(original.size());
    for (char32_t c : original)
        folded.append(fold(c));
    return match(cached, original, folded);
}

} // namespace dao
