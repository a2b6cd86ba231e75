#pragma once
// The one way a text value enters a statement. Statements are built by joining
// texts, but every value passes through here, so no value can end its literal
// or change what the statement means.

#include <QString>

namespace dao {

// A Jet text literal: the value between double quotes, any double quote in it doubled.
// "SELECT * FROM EmployeeTable WHERE Name = " + quote(name)
QString quote(const QString& value);

// As quote(), for the right side of LIKE: Jet's wildcards in the value (* ? # [)
// are bracketed, so the value matches only itself, still without regard to case.
QString quoteLike(const QString& value);

// A number for a statement: digits with "." as the decimal point whatever the locale.
QString sqlNumber(double value);

} // namespace dao
