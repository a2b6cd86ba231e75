#include "board/boarditem.h"

#include <QCollator>

namespace {

// The collator of the default locale, made again only when that locale changes.
const QCollator& collator()
{
    static QCollator current = [] {
        QCollator made{QLocale()};
        made.setCaseSensitivity(Qt::CaseInsensitive);
        made.setNumericMode(true);
        return made;
    }();
    if (current.locale() != QLocale()) {
        current.setLocale(QLocale());
    }
    return current;
}

} // namespace

bool BoardItem::operator<(const QTreeWidgetItem& other) const
{
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    if (other.type() == UserType) {
        return sortKey(column).compare(static_cast<const BoardItem&>(other).sortKey(column)) < 0;
    }
    return collator().compare(text(column), other.text(column)) < 0;
}

void BoardItem::setData(int column, int role, const QVariant& value)
{
    if (column == m_keyColumn) {
        m_keyColumn = -1;
        m_key.reset();
    }
    QTreeWidgetItem::setData(column, role, value);
}

const QCollatorSortKey& BoardItem::sortKey(int column) const
{
    if (column != m_keyColumn || !m_key) {
        m_key = collator().sortKey(text(column));
        m_keyColumn = column;
    }
    return *m_key;
}
