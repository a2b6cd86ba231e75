#pragma once
// The list's column layout as the person's settings row holds it: for each
// column base name X a field "XColumnOrder" (its place, from 1) and a field
// "XColumnWidth" (twips). Extra columns are "New_X".

#include "board/twips.h"

#include <QList>
#include <QStringList>
#include <QVariant>
#include <optional>

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

    // The list's headers: "Status" first (each row's main text), then the slots
    // in order, extra columns without their "New_". A header takes the width of
    // the slot numbered by the headers made so far, not of its own slot: with
    // gaps or a moved Status column the widths shift, as the person's saved
    // layout has always been read. No width where the slots run out.
    struct Header
    {
        QString caption;
        std::optional<Twips> width;
    };
    QList<Header> headers() const;
};

namespace columns {

// The column that takes the width the others leave: Comments, else the last one
// shown (lastShown, -1 when none).
int fillColumn(const QStringList& captions, int lastShown);
// Its width: never narrower than the person made it.
int fillWidth(int ownWidth, int listWidth, int othersWidth);

// The Status column's place (from 1) by its saved order; none when the order is
// blank or names no place among the columns.
std::optional<int> statusPlace(const QVariant& order, int columnCount);

// The sort column: the one whose caption was saved, else the saved key, which
// falls back to 0 when it lies past the columns.
struct Sort
{
    long long key;
    bool byCaption; // found by its caption
};
Sort sortColumn(const QStringList& captions, const QString& savedCaption, long long savedKey);
// A click on the column last clicked flips the order (0 ascending, 1
// descending); a click on another keeps it.
long long orderAfterClick(long long clicked, long long lastClicked, long long order);

// Find: the text in the column begins with the typed text, without regard to
// case; trailing blanks count.
bool findMatches(const QString& value, const QString& typed);

// Each column's place (from 1) and width in twips as the last rebuild left
// them, kept in entries 1 to rows - 1 at most: the bound is the number of rows,
// not of columns, as the comparison has always run.
struct Snapshot
{
    QList<long long> positions = {0, 0};
    QList<long long> widths = {0, 0};

    static Snapshot take(int rows, const QList<long long>& positions, const QList<long long>& widths);
    // Has the person moved or resized a column since? The loops stop quietly at
    // the first column or entry that is not there.
    bool differs(int rows, const QList<long long>& positions, const QList<long long>& widths) const;
};

} // namespace columns
