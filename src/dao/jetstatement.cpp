#include "dao/jetstatement.h"

#include "dao/jeterror.h"
#include "dao/sqlfunctions.h"

#include <algorithm>

namespace dao::jet {

namespace {

bool equalsKeyword(QStringView text, const char* keyword)
{
    return text.compare(QLatin1String(keyword), Qt::CaseInsensitive) == 0;
}

// The value of a text literal, "..." or '...', with its doubled quotes undone.
QString literalValue(QStringView token)
{
    const QChar quote = token.front();
    const QStringView body = token.mid(1, token.size() - 2);
    QString value;
    value.reserve(body.size());
    for (qsizetype i = 0; i < body.size(); ++i) {
        value += body[i];
        if (body[i] == quote)
            ++i; // the second of a doubled pair
    }
    return value;
}

// A text value as SQLite reads it back whole: '...' with every ' doubled, or,
// for a value holding a NUL (where SQLite's reader would stop), its UTF-8 bytes
// as a blob read as text.
QString sqliteText(const QString& value)
{
    if (value.contains(QChar(0))) {
        return QStringLiteral("(CAST(X'") + QString::fromLatin1(value.toUtf8().toHex()) + QStringLiteral("' AS TEXT))");
    }
    QString out;
    out.reserve(value.size() + 2);
    out += u'\'';
    for (const QChar c : value) {
        if (c == u'\'')
            out += c;
        out += c;
    }
    out += u'\'';
    return out;
}

// Appends a piece of output, putting a blank in where two pieces would otherwise
// fuse into something else: a longer name, a "--" or "/*" comment opener, or
// SQLite's x'..' blob literal.
void appendPiece(QString& out, QStringView piece)
{
    if (piece.isEmpty())
        return;
    if (!out.isEmpty()) {
        const QChar a = out.back();
        const QChar b = piece.front();
        const bool fuse =
            (isNameChar(a) && (isNameChar(b) || b == u'\'')) || (a == u'-' && b == u'-') || (a == u'/' && b == u'*');
        if (fuse)
            out += u' ';
    }
    out += piece;
}

StatementKind kindOfFirstWords(QStringView first, QStringView second)
{
    if (equalsKeyword(first, "SELECT"))
        return StatementKind::Select;
    if (equalsKeyword(first, "INSERT"))
        return StatementKind::Insert;
    if (equalsKeyword(first, "UPDATE"))
        return StatementKind::Update;
    if (equalsKeyword(first, "DELETE"))
        return StatementKind::Delete;
    if (equalsKeyword(first, "DROP"))
        return StatementKind::Drop;
    if (equalsKeyword(first, "ALTER"))
        return StatementKind::AlterTable;
    if (equalsKeyword(first, "CREATE")) {
        if (equalsKeyword(second, "TABLE"))
            return StatementKind::CreateTable;
        if (equalsKeyword(second, "INDEX") || equalsKeyword(second, "UNIQUE"))
            return StatementKind::CreateIndex;
    }
    return StatementKind::Other;
}

// The one text a LIKE pattern matches, when it has no wildcard; a one-character
// set [*] [?] [#] [[] (how quoteLike() writes those characters) stands for its
// character. False for any other pattern.
bool patternOfOneText(const QString& pattern, QString* text)
{
    text->clear();
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (c == u'*' || c == u'?' || c == u'#')
            return false;
        if (c == u'[') {
            const bool bracketed =
                i + 2 < pattern.size() && pattern[i + 2] == u']' && QStringView(u"*?#[").contains(pattern[i + 1]);
            if (!bracketed)
                return false;
            *text += pattern[i + 1];
            i += 2;
            continue;
        }
        *text += c;
    }
    return true;
}

} // namespace

Statement::Statement(QStringView sql, std::vector<Token> tokens)
    : m_sql(sql), m_tokens(std::move(tokens)), m_edits(m_tokens.size())
{
    m_sig.reserve(m_tokens.size());
    m_depth.reserve(m_tokens.size());
    int depth = 0;
    for (size_t i = 0; i < m_tokens.size(); ++i) {
        const Token& t = m_tokens[i];
        if (t.kind == Tok::Space)
            continue;
        const QChar c = m_sql[t.pos];
        if (t.kind == Tok::Punct && c == u')' && depth > 0)
            --depth;
        m_sig.push_back(int(i));
        m_depth.push_back(depth);
        if (t.kind == Tok::Punct && c == u'(')
            ++depth;
    }
    // The first keyword names the statement; a compound SELECT may open with "(".
    int s = 0;
    while (s < count() && isPunct(s, u'('))
        ++s;
    if (s < count() && tok(s).kind == Tok::Word)
        m_kind = kindOfFirstWords(text(s), s + 1 < count() ? text(s + 1) : QStringView());
}

QStringView Statement::text(int s) const
{
    const Token& t = tok(s);
    return m_sql.mid(t.pos, t.len);
}

bool Statement::isWord(int s, const char* keyword) const
{
    return s >= 0 && s < count() && tok(s).kind == Tok::Word && equalsKeyword(text(s), keyword);
}

bool Statement::isPunct(int s, char16_t c) const
{
    return s >= 0 && s < count() && tok(s).kind == Tok::Punct && m_sql[tok(s).pos] == c;
}

bool Statement::isName(int s) const
{
    if (s < 0 || s >= count())
        return false;
    const Tok k = tok(s).kind;
    return k == Tok::Word || k == Tok::Bracketed || k == Tok::Backquoted;
}

bool Statement::isAggregate(int s) const
{
    static const char* const names[] = {"COUNT", "SUM", "MIN", "MAX", "AVG", "FIRST", "LAST"};
    if (!isPunct(s + 1, u'('))
        return false;
    for (const char* name : names) {
        if (isWord(s, name))
            return true;
    }
    return false;
}

int Statement::matchingClose(int open, int limit) const
{
    for (int s = open + 1; s < limit; ++s) {
        if (isPunct(s, u')') && depth(s) == depth(open))
            return s;
    }
    return -1;
}

void Statement::replace(int s, const QString& text)
{
    edit(s).replacement = text;
    edit(s).replaced = true;
}

void Statement::drop(int from, int to)
{
    for (int i = m_sig[size_t(from)]; i <= m_sig[size_t(to)]; ++i)
        m_edits[size_t(i)].dropped = true;
}

void Statement::dropWithBlanksBefore(int from, int to)
{
    drop(from, to);
    for (int i = m_sig[size_t(from)] - 1; i >= 0 && m_tokens[size_t(i)].kind == Tok::Space; --i)
        m_edits[size_t(i)].dropped = true;
}

Translation Statement::translate()
{
    Translation t;
    t.kind = m_kind;
    rewriteWords();
    rewriteTop();
    rewriteLikeOfOneText();
    switch (m_kind) {
    case StatementKind::Update:
        rewriteUpdateTargets();
        break;
    case StatementKind::CreateTable:
        rewriteCreateTable();
        break;
    case StatementKind::AlterTable:
        rewriteAlterTable();
        break;
    case StatementKind::Select:
        rewriteSelectForRowid(t);
        break;
    default:
        break;
    }
    t.sql = render();
    return t;
}

// True/False become 1/0, DISTINCTROW becomes DISTINCT, and Jet's text join "&"
// becomes "||". A name such as t.True is a column, not the constant.
void Statement::rewriteWords()
{
    for (int s = 0; s < count(); ++s) {
        if (isPunct(s, u'&')) {
            replace(s, QStringLiteral("||"));
        } else if (tok(s).kind == Tok::Word && !isPunct(s - 1, u'.')) {
            if (equalsKeyword(text(s), "TRUE"))
                replace(s, QStringLiteral("1"));
            else if (equalsKeyword(text(s), "FALSE"))
                replace(s, QStringLiteral("0"));
            else if (equalsKeyword(text(s), "DISTINCTROW"))
                replace(s, QStringLiteral("DISTINCT"));
        }
    }
}

// SELECT [ALL|DISTINCT] TOP n ... becomes the same without TOP and with LIMIT n
// at the end of that SELECT: the end of the statement, or the ")" that closes
// the sub-select it stands in.
void Statement::rewriteTop()
{
    std::vector<QString> limits(1); // per open parenthesis; [0] is the statement itself
    for (int s = 0; s < count(); ++s) {
        if (isPunct(s, u'(')) {
            limits.emplace_back();
        } else if (isPunct(s, u')') && limits.size() > 1) {
            if (!limits.back().isEmpty())
                edit(s).before += QStringLiteral(" LIMIT ") + limits.back();
            limits.pop_back();
        } else if (isWord(s, "SELECT")) {
            int k = s + 1;
            if (isWord(k, "ALL") || isWord(k, "DISTINCT") || isWord(k, "DISTINCTROW"))
                ++k;
            if (!isWord(k, "TOP") || k + 1 >= count() || tok(k + 1).kind != Tok::Number)
                continue;
            const QStringView n = text(k + 1);
            if (!std::all_of(n.begin(), n.end(), [](QChar c) { return c.isDigit() && c.unicode() < 0x80; }))
                raiseJetError(errSyntaxMissingOperator, QStringLiteral("TOP needs a whole number"));
            if (isWord(k + 2, "PERCENT"))
                raiseJetError(errSyntaxMissingOperator, QStringLiteral("TOP n PERCENT is not supported"));
            drop(k, k + 1);
            for (size_t i = size_t(m_sig[size_t(k + 1)]) + 1; i < m_tokens.size() && m_tokens[i].kind == Tok::Space;
                 ++i)
                m_edits[i].dropped = true;
            limits.back() = n.toString();
        }
    }
    for (const QString& n : limits) {
        if (!n.isEmpty())
            m_suffix += QStringLiteral(" LIMIT ") + n;
    }
}

// UPDATE t SET t.a = 1, t.b = 2: SQLite refuses a qualified target, so the
// "t." goes. Qualified names on the value side stay; SQLite takes those.
void Statement::rewriteUpdateTargets()
{
    int s = 0;
    while (s < count() && !(isWord(s, "SET") && depth(s) == 0))
        ++s;
    bool atTarget = true;
    for (++s; s < count(); ++s) {
        if (depth(s) == 0 && isWord(s, "WHERE"))
            break;
        if (atTarget && isName(s) && isPunct(s + 1, u'.') && isName(s + 2) && isPunct(s + 3, u'='))
            drop(s, s + 1);
        atTarget = depth(s) == 0 && isPunct(s, u',');
    }
}

// A SELECT over one table, with nothing that merges or makes up rows, gets the
// table's row id as its first column, so a dynaset can write rows back.
void Statement::rewriteSelectForRowid(Translation& t)
{
    if (!isWord(0, "SELECT"))
        return;
    int from = -1;
    for (int s = 1; s < count(); ++s) {
        if (depth(s) != 0)
            continue;
        static const char* const refused[] = {"DISTINCT",  "DISTINCTROW", "GROUP", "HAVING", "UNION",
                                              "INTERSECT", "EXCEPT",      "JOIN",  "INTO"};
        for (const char* word : refused) {
            if (isWord(s, word))
                return;
        }
        if (isAggregate(s))
            return;
        if (isWord(s, "FROM")) {
            if (from >= 0)
                return;
            from = s;
        }
    }
    // FROM name [[AS] alias], then the end, WHERE or ORDER BY.
    int s = from + 1;
    if (from < 0 || !isName(s))
        return;
    const int table = s++;
    if (isWord(s, "AS"))
        ++s;
    int alias = table;
    if (isName(s) && !isWord(s, "WHERE") && !isWord(s, "ORDER"))
        alias = s++;
    if (s < count() && !isWord(s, "WHERE") && !isWord(s, "ORDER"))
        return;

    int first = 1; // the first column of the select list, after ALL and TOP n
    while (first < from && (edit(first).dropped || isWord(first, "ALL")))
        ++first;
    edit(first).before += text(alias).toString() + QStringLiteral(".rowid AS __rowid, ");
    const QStringView name = text(table);
    t.singleTable = tok(table).kind == Tok::Word ? name.toString() : name.mid(1, name.size() - 2).toString();
}

// column LIKE "text" with no wildcard becomes jetfold(column) = 'folded text':
// the same rows (LIKE folds both sides code point by code point), but SQLite can
// answer it from an index on jetfold(column), where its LIKE always scans. Only
// where nothing around could bind tighter to either side: the column stands
// after WHERE, AND, OR, ON, NOT or "(", and the literal ends the condition.
void Statement::rewriteLikeOfOneText()
{
    if (m_kind == StatementKind::CreateTable || m_kind == StatementKind::AlterTable)
        return;
    for (int s = 0; s < count(); ++s) {
        if (isWord(s, "BETWEEN"))
            return; // its AND is not a condition's
    }
    static const char* const opens[] = {"WHERE", "AND", "OR", "ON", "NOT", "HAVING"};
    static const char* const closes[] = {"AND", "OR", "ORDER", "GROUP", "HAVING", "UNION", "LIMIT"};
    for (int s = 2; s + 1 < count(); ++s) {
        const Tok literal = tok(s + 1).kind;
        if (!isWord(s, "LIKE") || (literal != Tok::DqString && literal != Tok::SqString) || !isName(s - 1) ||
            isWord(s - 1, "NOT"))
            continue;
        const int column = isPunct(s - 2, u'.') && isName(s - 3) ? s - 3 : s - 1;
        const bool opened =
            isPunct(column - 1, u'(') ||
            std::any_of(std::begin(opens), std::end(opens), [&](const char* w) { return isWord(column - 1, w); });
        const bool closed =
            s + 2 == count() || isPunct(s + 2, u')') ||
            std::any_of(std::begin(closes), std::end(closes), [&](const char* w) { return isWord(s + 2, w); });
        QString text;
        if (!opened || !closed || (isWord(column - 1, "NOT") && isWord(column - 2, "IS")) ||
            !patternOfOneText(literalValue(this->text(s + 1)), &text))
            continue;
        edit(column).before += QString::fromLatin1(kFoldFunction) + QLatin1Char('(');
        edit(s - 1).after += QLatin1Char(')');
        replace(s, QStringLiteral("="));
        replace(s + 1, sqliteText(foldCase(text)));
    }
}

QString Statement::render() const
{
    QString out;
    out.reserve(m_sql.size() + m_suffix.size() + 48);
    for (size_t i = 0; i < m_tokens.size(); ++i) {
        const Edit& e = m_edits[i];
        appendPiece(out, e.before);
        if (!e.dropped) {
            const Token& t = m_tokens[i];
            const QStringView original = m_sql.mid(t.pos, t.len);
            if (e.replaced) {
                appendPiece(out, e.replacement);
            } else if (t.kind == Tok::DqString || t.kind == Tok::SqString) {
                appendPiece(out, sqliteText(literalValue(original)));
            } else {
                appendPiece(out, original);
            }
        }
        appendPiece(out, e.after);
    }
    appendPiece(out, m_suffix);
    return out;
}

} // namespace dao::jet
