#pragma once
// The list's column layout as the person's settings row holds it: for each
// column base name X a field "XColumnOrder" (its place, from 1) and a field
// "XColumnWidth" (twips). Extra columns are "New_X".

#include <QList>
#include <QStringList>

namespace dao {
class Recordset;
}

struct ColumnLayout
{
    // Slot n holds the base name whose order is n + 1; a blank slot is a gap.
    QStringList columns;
    // The width read with the name of that slot; 1500 twips when the row has none.
    QList<long long> widths;

    // Reads the current row of the settings set. A column without an order, or
    // with one beyond the number of columns, goes after all others; gintNameColumn
    // is set to the slot of "Name". A field that cannot be placed is passed over.
    static ColumnLayout read(dao::Recordset& settingsRow);
};
