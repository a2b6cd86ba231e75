#pragma once
// A row of the board's lists. The lists sort their rows as text, without regard
// to case, as the desktop's list control does: numbers and dates sort as strings.

#include <QTreeWidgetItem>

class BoardItem : public QTreeWidgetItem
{
public:
    BoardItem() : QTreeWidgetItem(UserType)
    {
    }
    bool operator<(const QTreeWidgetItem& other) const override
    {
        const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
        return text(column).compare(other.text(column), Qt::CaseInsensitive) < 0;
    }
};
