#pragma once
// A row of the board's lists. Rows sort by the locale's collation, so that
// "Émilie" and "Øystein" stand among the other names and not after "Zachary",
// without regard to case, and with runs of digits compared as numbers ("9"
// before "10"). Each row keeps the sort key of the column last sorted, so that a
// sort makes one key per row and not two per comparison.

#include <QCollatorSortKey>
#include <QTreeWidgetItem>
#include <optional>

class BoardItem : public QTreeWidgetItem
{
public:
    BoardItem() : QTreeWidgetItem(UserType)
    {
    }
    bool operator<(const QTreeWidgetItem& other) const override;
    void setData(int column, int role, const QVariant& value) override;

private:
    const QCollatorSortKey& sortKey(int column) const;

    mutable int m_keyColumn = -1;
    mutable std::optional<QCollatorSortKey> m_key;
};
