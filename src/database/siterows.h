#pragma once
// Row helpers shared by the site functions (not for the client's own code).

#include <QString>
#include <QVariant>
#include <utility>
#include <vector>

namespace dao {
class Database;
}

namespace database {

// A value as a Jet literal: text through dao::quote(), yes/no as True/False,
// numbers with "." as the decimal point, an invalid QVariant as Null.
QString sqlValue(const QVariant& value);

// INSERT of one row. Columns the table lacks are passed over, so one list of
// values serves every release of the file.
void insertRow(dao::Database& db, const QString& table, const std::vector<std::pair<QString, QVariant>>& values);

// The stored spelling of a key when a row has it ("" when none): names are
// compared without regard to case, but rows refer to each other by the stored text.
QString storedKey(dao::Database& db, const QString& table, const QString& column, const QString& value);

} // namespace database
