// Jet SQL to SQLite: works on the token list of jetlexer.h, never on the raw
// text, so nothing inside a literal or a bracketed name is ever rewritten.
#include "dao/jetsql.h"

#include "dao/jeterror.h"
#include "dao/jetlexer.h"
#include "dao/jetstatement.h"

#include <algorithm>

namespace dao {

namespace {

using jet::Tok;

// Throws 3142 when anything but blanks follows the first ";"; otherwise drops
// the ";" and the blanks around the end.
void stripTerminator(QStringView sql, std::vector<jet::Token>& tokens)
{
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != Tok::Semicolon)
            continue;
        for (size_t j = i + 1; j < tokens.size(); ++j) {
            const QStringView rest = sql.mid(tokens[j].pos, tokens[j].len);
            const bool blanks = tokens[j].kind == Tok::Space && std::all_of(rest.begin(), rest.end(), [](QChar c) {
                                    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
                                });
            if (!blanks)
                raiseJetError(errCharactersAfterEnd, QStringLiteral("text after the \";\" that ends the statement"));
        }
        tokens.resize(i);
        break;
    }
    while (!tokens.empty() && tokens.back().kind == Tok::Space)
        tokens.pop_back();
}

} // namespace

Translation translateJet(const QString& jetSql)
{
    jet::LexResult lexed = jet::lex(jetSql);
    if (lexed.errorPos >= 0) {
        // A ";" before the fault means the statement had already ended.
        for (const jet::Token& t : lexed.tokens) {
            if (t.kind == Tok::Semicolon)
                raiseJetError(errCharactersAfterEnd, QStringLiteral("text after the \";\" that ends the statement"));
        }
        const jet::Statement partial(jetSql, std::move(lexed.tokens));
        raiseJetError(syntaxErrorFor(partial.kind()),
                      QStringLiteral("unclosed literal or stray character at position %1").arg(lexed.errorPos + 1));
    }
    stripTerminator(jetSql, lexed.tokens);
    jet::Statement st(jetSql, std::move(lexed.tokens));
    return st.translate();
}

int syntaxErrorFor(StatementKind kind)
{
    switch (kind) {
    case StatementKind::Insert:
        return errSyntaxInsert;
    case StatementKind::Update:
        return errSyntaxUpdate;
    default:
        return errSyntaxMissingOperator;
    }
}

} // namespace dao
