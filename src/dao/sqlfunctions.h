#pragma once
// The SQL functions the engine gives every connection it opens: Jet's LIKE in
// place of SQLite's, and jetfold(text), the case fold that LIKE compares by.
// Indexes on jetfold(column) make a look-up by one name use an index; SQLite
// refuses to write a table with such an index on a connection without the
// function, so any other program (or test) that writes the file registers it too.

struct sqlite3;

namespace dao {

// The name of the fold function in SQL.
inline constexpr const char* kFoldFunction = "jetfold";

// Registers like(pattern, text[, escape]) and jetfold(text) on a connection.
void registerSqlFunctions(sqlite3* db);

} // namespace dao
