#pragma once
// How values pass between SQLite and the engine's fields. The column's declared
// type decides what a field reads as (Jet's types are kept as declared types:
// BIT, LONG, DOUBLE, TEXT(50)...); an expression with no declared type reads by
// the stored value's own kind.

#include "dao/dao.h"

#include <QVariant>

struct sqlite3_stmt;

namespace dao {

// BIT/YESNO/LOGICAL/BOOLEAN -> Boolean; INT*/LONG/COUNTER/BYTE/SHORT -> Long;
// DOUBLE/REAL/FLOAT/SINGLE/CURRENCY/NUMERIC/DECIMAL -> Double;
// TEXT/CHAR/MEMO/VARCHAR -> Text; none or anything else -> Other.
FieldType fieldTypeFromDeclared(const char* declaredType);

// The value of one column of the current row; a Null is a null QVariant.
QVariant readColumn(sqlite3_stmt* stmt, int column, FieldType type);

// The value as a field of the type will hold it, as Jet converts on assignment
// (a bool into a number is 1/0, "12" into a Long is 12). 3421 when it cannot.
QVariant convertForField(const QVariant& value, FieldType type);

// Binds a value to a parameter (1-based): a bool as 1/0, integers as 64-bit.
void bindValue(sqlite3_stmt* stmt, int parameter, const QVariant& value);

// A fraction to the nearest whole number, a half to the even neighbour: how Jet
// and VB turn a number into a Long.
qint64 roundHalfEven(double number);

// VB's Trim(value & ""): Null is "", a bool "True"/"False", a double as CStr
// writes it (no trailing ".0"), with leading and trailing spaces removed.
QString vbText(const QVariant& value);

} // namespace dao
