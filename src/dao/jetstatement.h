#pragma once
// One Jet statement as tokens, with the edits that turn it into SQLite's
// dialect. Internal to the data engine: translateJet() drives it.
//
// Edits never touch the text of a literal: a token is kept, dropped or replaced
// whole, and text may be put before or after it.

#include "dao/jetlexer.h"
#include "dao/jetsql.h"

#include <vector>

namespace dao::jet {

class Statement
{
public:
    // tokens: the lexed statement without its closing ";" and trailing blanks.
    Statement(QStringView sql, std::vector<Token> tokens);

    StatementKind kind() const
    {
        return m_kind;
    }
    // Applies every rewrite and writes the SQLite text.
    Translation translate();

private:
    struct Edit
    {
        QString before;
        QString replacement;
        QString after;
        bool replaced = false;
        bool dropped = false;
    };

    // --- looking at significant (non-blank) tokens by their index s ---
    int count() const
    {
        return int(m_sig.size());
    }
    const Token& tok(int s) const
    {
        return m_tokens[size_t(m_sig[size_t(s)])];
    }
    Edit& edit(int s)
    {
        return m_edits[size_t(m_sig[size_t(s)])];
    }
    QStringView text(int s) const;
    int depth(int s) const
    {
        return m_depth[size_t(s)];
    }
    bool isWord(int s, const char* keyword) const;
    bool isPunct(int s, char16_t c) const;
    bool isName(int s) const; // a word, [bracketed] or `quoted` name
    bool isAggregate(int s) const;
    int matchingClose(int open, int limit) const; // s of the ")" closing open, or -1

    // --- edits ---
    void replace(int s, const QString& text);
    // Drops significant tokens from..to and every blank between them.
    void drop(int from, int to);
    // As drop(), and also the blanks before from.
    void dropWithBlanksBefore(int from, int to);

    // --- rewrites (jetstatement.cpp) ---
    void rewriteWords();
    void rewriteTop();
    void rewriteUpdateTargets();
    void rewriteSelectForRowid(Translation& t);
    void rewriteLikeOfOneText();
    QString render() const;

    // --- data definition (jetddl.cpp) ---
    void rewriteCreateTable();
    void rewriteAlterTable();
    void rewriteColumn(int first, int end, bool addedToFilledTable);

    QStringView m_sql;
    std::vector<Token> m_tokens;
    std::vector<Edit> m_edits;
    std::vector<int> m_sig;   // indexes into m_tokens of the non-blank tokens
    std::vector<int> m_depth; // parenthesis depth of each significant token
    QString m_suffix;         // text put after the last token (LIMIT n)
    StatementKind m_kind = StatementKind::Other;
};

} // namespace dao::jet
