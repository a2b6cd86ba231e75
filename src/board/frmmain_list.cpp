// ListViewMain as the logic sees it: its headers, rows and selection, and the
// small procedures the refresh and the click handling share.
#include "board/frmmain.h"
#include "board/statusicons.h"
#include "kernel/globals.h"
#include "platform/clock.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QTreeWidget>

QStringList frmMain::listHeaders() const
{
    QStringList headers;
    for (int i = 0; i < ListViewMain->columnCount(); ++i) {
        headers << ListViewMain->headerItem()->text(i);
    }
    return headers;
}

int frmMain::listRowCount() const
{
    return ListViewMain->topLevelItemCount();
}

bool frmMain::selectedItemIsSelected() const
{
    const QTreeWidgetItem* current = ListViewMain->currentItem();
    return current && current->isSelected();
}

QString frmMain::selectedItemText(int subItem) const
{
    const QTreeWidgetItem* current = ListViewMain->currentItem();
    return current ? current->text(subItem) : QString();
}

QStringList frmMain::selectedRowTexts(int subItem) const
{
    QStringList texts;
    for (int i = 0; i < ListViewMain->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = ListViewMain->topLevelItem(i);
        if (row->isSelected()) {
            texts << row->text(subItem);
        }
    }
    return texts;
}

void frmMain::clearList()
{
    forgetRows();
    ListViewMain->clear();
}

// The rows are about to go: nothing found in them is kept.
void frmMain::forgetRows()
{
    m_selectionFound = false;
    m_selectionRow = nullptr;
}

// Each column by its header (extra columns by their caption), its place from 1
// and its width in twips, as the settings row keeps them.
QList<ListColumn> frmMain::listColumns() const
{
    QList<ListColumn> columns;
    const QHeaderView* header = ListViewMain->header();
    for (int i = 0; i < ListViewMain->columnCount(); ++i) {
        columns << ListColumn{ListViewMain->headerItem()->text(i), header->visualIndex(i) + 1, ownWidthTwips(i)};
    }
    return columns;
}

void frmMain::clearSortArrows()
{
    const QIcon clear = headerIcon(QStringLiteral("ArrowClear"));
    for (int i = 0; i < ListViewMain->columnCount(); ++i) {
        ListViewMain->headerItem()->setIcon(i, clear);
    }
}

// Every row unselected in one step, with no row events.
void frmMain::subClearListSelection()
{
    const QSignalBlocker quiet(ListViewMain);
    ListViewMain->clearSelection();
}

void frmMain::subFindNameColumn()
{
    for (int i = 0; i < ListViewMain->columnCount(); ++i) {
        if (ListViewMain->headerItem()->text(i) == QLatin1String("Name")) {
            gBoard.gintNameColumn = i;
            return;
        }
    }
}

// The row of the person last clicked, found again by name and scrolled to. The
// rows only change at a rebuild, so the answer for a name is kept until then:
// an unchanged poll does not walk the list, however long it is.
void frmMain::restoreSelection()
{
    if (gBoard.gintNameColumn < 1 || gBoard.gintNameColumn >= ListViewMain->columnCount()) {
        return;
    }
    if (!m_selectionFound || m_selectionName != gBoard.gstrSelectedUser || m_selectionColumn != gBoard.gintNameColumn) {
        m_selectionRow = nullptr;
        for (int i = 0; i < ListViewMain->topLevelItemCount(); ++i) {
            QTreeWidgetItem* row = ListViewMain->topLevelItem(i);
            if (row->text(int(gBoard.gintNameColumn)) == gBoard.gstrSelectedUser) {
                m_selectionRow = row;
                break;
            }
        }
        m_selectionFound = true;
        m_selectionName = gBoard.gstrSelectedUser;
        m_selectionColumn = gBoard.gintNameColumn;
    }
    if (m_selectionRow) {
        selectRow(m_selectionRow);
    }
}

void frmMain::selectRow(QTreeWidgetItem* row)
{
    ListViewMain->setCurrentItem(row);
    row->setSelected(true);
    ListViewMain->scrollToItem(row);
}

void frmMain::showRefreshedText()
{
    gBoard.gstrRefreshedText = QStringLiteral(" Data refreshed at ") +
                               platform::Format(platform::Now(), QStringLiteral("Long Time")) + QStringLiteral(" ");
    setPanelText(1, gBoard.gstrRefreshedText);
}
