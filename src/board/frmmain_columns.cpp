// ListViewMain's columns: the headers made from the person's layout, the Status
// column put in its place, the sort column and arrow, and the snapshot by which
// the next refresh sees that the person moved or resized a column.
#include "board/columnlayout.h"
#include "board/frmmain.h"
#include "board/statusicons.h"
#include "board/twips.h"
#include "dao/dao.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "status/settings.h"

#include <QHeaderView>
#include <QTreeWidget>
#include <algorithm>

// The headers as the person's layout gives them, in a fresh order.
void frmMain::createHeaders(const ColumnLayout& layout)
{
    const QList<ColumnLayout::Header> headers = layout.headers();
    QStringList captions;
    for (const ColumnLayout::Header& header : headers) {
        captions << header.caption;
    }
    m_fillColumn = -1;
    ListViewMain->setColumnCount(int(captions.size()));
    ListViewMain->setHeaderLabels(captions);
    QHeaderView* header = ListViewMain->header();
    for (int i = 0; i < headers.size(); ++i) {
        header->moveSection(header->visualIndex(i), i); // a fresh header keeps no old order
        if (headers.at(i).width) {
            header->resizeSection(i, headers.at(i).width->pixels());
        }
    }
    clearSortArrows();
}

// The column that takes the width the others leave. The width the person gave
// it, not the one it has on a wide screen, is what the layout keeps.
void frmMain::chooseFillColumn()
{
    QHeaderView* header = ListViewMain->header();
    m_fillColumn =
        columns::fillColumn(listHeaders(), header->count() > 0 ? header->logicalIndex(header->count() - 1) : -1);
    m_fillOwnWidth = m_fillColumn >= 0 ? header->sectionSize(m_fillColumn) : 0;
    fitFillColumn();
}

void frmMain::fitFillColumn()
{
    QHeaderView* header = ListViewMain->header();
    if (m_fillColumn < 0 || m_fillColumn >= header->count() || m_fitting) {
        return;
    }
    int others = 0;
    for (int i = 0; i < header->count(); ++i) {
        if (i != m_fillColumn && !header->isSectionHidden(i)) {
            others += header->sectionSize(i);
        }
    }
    m_fitting = true;
    header->resizeSection(m_fillColumn, columns::fillWidth(m_fillOwnWidth, ListViewMain->viewport()->width(), others));
    m_fitting = false;
}

// A column's width in twips as the person left it.
long long frmMain::ownWidthTwips(int column) const
{
    const int pixels = column == m_fillColumn ? m_fillOwnWidth : ListViewMain->header()->sectionSize(column);
    return Twips::fromPixels(pixels).value();
}

// The Status column to its saved place among the others, which were made in order.
void frmMain::placeStatusColumn(dao::Recordset& rstColumnData)
{
    const dao::Field order = rstColumnData.Fields(QStringLiteral("StatusColumnOrder"));
    QHeaderView* header = ListViewMain->header();
    const std::optional<int> place = columns::statusPlace(order.Value(), header->count());
    if (!place) {
        Err.Raise(vbErrInvalidPropertyValue, QStringLiteral("Invalid property value"));
    }
    header->moveSection(header->visualIndex(0), *place - 1);
}

// The sort column by its saved caption (the list keeps its own when no header
// has it), the arrow on gintSortKey's header, and the control's own sort.
void frmMain::applyListSort()
{
    const columns::Sort sort = columns::sortColumn(listHeaders(), gPerson.gstrSortColumnName, gPerson.gintSortKey);
    gPerson.gintSortKey = sort.key;
    if (sort.byCaption) {
        m_listSortKey = int(sort.key);
    }
    const bool ascending = gPerson.gintSortOrder == 0;
    if (gPerson.gintSortKey >= 0 && gPerson.gintSortKey < ListViewMain->columnCount()) {
        ListViewMain->headerItem()->setIcon(
            int(gPerson.gintSortKey), headerIcon(ascending ? QStringLiteral("ArrowUp") : QStringLiteral("ArrowDown")));
    }
    if (m_listSortKey >= 0 && m_listSortKey < ListViewMain->columnCount()) {
        ListViewMain->sortItems(m_listSortKey, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
}

// Each column's place (from 1) and width in twips as the list shows them now.
void frmMain::columnGeometry(QList<long long>& places, QList<long long>& widths) const
{
    const QHeaderView* header = ListViewMain->header();
    for (int column = 0; column < header->count(); ++column) {
        places << header->visualIndex(column) + 1;
        widths << ownWidthTwips(column);
    }
}

// A moved or resized column saves the settings, so that the rebuild that
// follows reads the new layout back.
bool frmMain::columnsMovedOrResized()
{
    QList<long long> places;
    QList<long long> widths;
    columnGeometry(places, widths);
    const bool changed = m_columnSnapshot.differs(ListViewMain->topLevelItemCount(), places, widths);
    if (changed) {
        ResumeNext([] { subSaveUserSettings(gRun.gstrDefaultUser); });
    }
    return changed;
}

void frmMain::takeColumnSnapshot()
{
    QList<long long> places;
    QList<long long> widths;
    columnGeometry(places, widths);
    m_columnSnapshot = columns::Snapshot::take(ListViewMain->topLevelItemCount(), places, widths);
}
