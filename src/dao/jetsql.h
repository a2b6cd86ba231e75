#pragma once
// Translation of the Jet SQL dialect into SQLite's. Pure text work: no database.
//
// Accepted: double- and single-quoted text literals (a doubled quote inside stands
// for itself), [bracketed] names, SELECT TOP n, DISTINCTROW, True/False, "&" to
// join texts, Jet's column types (Bit, Long, Integer, Double, Text(n), Memo,
// YesNo, Counter...), ALTER TABLE ... ADD COLUMN with NOT NULL on a table that
// has rows, ALTER TABLE ... DROP [COLUMN], qualified columns in UPDATE ... SET,
// INNER JOIN ... ON, and a trailing ";" with blanks.
// A condition "column LIKE <a pattern with no wildcard>" is written as an equality
// of folded texts that an index on jetfold(column) can answer (sqlfunctions.h).
// A literal may hold any character, NUL included.
// Anything after the end of the one statement is refused with 3142, and so are
// (as syntax errors) parameter markers ($ @ : #) and control characters outside
// a literal, and TOP n PERCENT.

#include <QString>

namespace dao {

enum class StatementKind
{
    Select,
    Insert,
    Update,
    Delete,
    CreateTable,
    CreateIndex,
    AlterTable,
    Drop,
    Other
};

struct Translation
{
    QString sql; // the statement in SQLite's dialect
    StatementKind kind = StatementKind::Other;
    // For a SELECT over one table only (no join, DISTINCT, GROUP BY, UNION or
    // aggregate): the table's name, and sql carries the row id as its first column
    // named "__rowid", so a dynaset can write rows back. Empty otherwise: read-only.
    QString singleTable;
};

// Translates one Jet statement. Raises JetError (3142 for text after the end,
// 3075/3134/3144 for what cannot be a statement, such as an unclosed literal).
Translation translateJet(const QString& jetSql);

// The number of Jet's syntax error for a statement of this kind: 3134 for INSERT,
// 3144 for UPDATE, 3075 for the rest.
int syntaxErrorFor(StatementKind kind);

// Jet's LIKE: * any run, ? one character, # one digit, [abc] [a-z] [!abc] a set,
// [*] [?] [#] [[] the character itself; compared without regard to case over all
// of Unicode, a character outside the BMP counting as one. A "[" without its "]"
// makes a pattern that matches nothing. Note SQLite's like(Y, X) means X LIKE Y.
bool jetLike(const QString& text, const QString& pattern);

// The text as jetLike() compares it: each code point case folded on its own. A
// pattern with no wildcard matches exactly the texts with its fold.
QString foldCase(QStringView text);

} // namespace dao
