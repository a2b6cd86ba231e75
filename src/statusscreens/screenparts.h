#pragma once
// What the status screen and the group screen share: their custom fields (the
// "New_" columns of EmployeeTable and their "ReadOnly" companions), the floating
// editor over a grid cell, the quote guard of their text boxes, and their place
// on the display.

#include <QList>
#include <QString>
#include <functional>

class QGridLayout;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QWidget;
class QDialog;
namespace dao {
class Recordset;
}

namespace statusscreens {

// A custom field of the set's current row. Its companion is "ReadOnly" after the
// column's name: true, false or Null (also when the companion is missing).
struct CustomField
{
    QString column; // "New_Mobile"
    QString name;   // as the person sees it: the column's name from its fifth character on
    QString value;  // trimmed, "" for a Null
    enum class Companion
    {
        False,
        True,
        Null
    } companion = Companion::Null;
};

// True when a column of the set has "New_" in its name.
bool hasCustomColumns(dao::Recordset& rs);
// The custom fields of the set's current row, in column order; companions are not fields.
QList<CustomField> customFields(dao::Recordset& rs);

// The first 250 characters: what Status and DueBack hold.
QString left250(const QString& text);

// A grid as both screens use it: no editing of its own (the floating editor
// does that), one line a row, the last column taking the spare width, room for
// a few rows.
void shapeGrid(QTableWidget* grid);
// A double quote typed into the box becomes an apostrophe at once.
void guardQuotes(QLineEdit* box);
// Enter, F2 or the space bar on the grid act as a click on its current cell, so
// that the editor and the check marks are reached from the keyboard too.
void onCellKey(QTableWidget* grid, std::function<void(int row, int column)> click);
// Runs lostFocus whenever the widget loses the focus.
void onFocusOut(QWidget* widget, std::function<void()> lostFocus);
// Lays the editor exactly over the grid's cell, a little lower than the row, fills
// it with the cell's text with the caret at the end, shows it and gives it the focus.
void layEditorOver(QTableWidget* grid, QLineEdit* editor, int row, int column);
// Hides the screen while it is still whole, its boxes silent: QDialog's own
// destructor would hide it later, and a box losing the focus then would call
// back into a screen already taken apart. Screens call it from their destructor.
void hideForTeardown(QDialog* screen);

// The frame both screens share: the controls one under the other, OK, Cancel and
// Help down the right (named for screen readers by their captions, OK the
// default), F1 anywhere as Help. Returns the layout; its row count is the
// number of controls.
struct ScreenButtons
{
    QPushButton* ok;
    QPushButton* cancel;
    QPushButton* help;
    std::function<void()> onOk, onCancel, onHelp;
};
QGridLayout* frameScreen(QDialog* screen, std::initializer_list<QWidget*> column, const ScreenButtons& buttons);

} // namespace statusscreens
