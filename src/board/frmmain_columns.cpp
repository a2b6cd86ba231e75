// ListViewMain's columns: the headers made from the person's layout, the Status
// column put in its place, the sort column and arrow, and the snapshot by which
// the next refresh sees that the person moved or resized a column.
#include "board/columnlayout.h"
#include "board/frmmain.h"
#include "board/statusicons.h"
#include "dao/dao.h"
#include "kernel/constants.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "status/settings.h"

#include <QHeaderView>
#include <QTreeWidget>
#include <algorithm>

// The headers: "Status" first (each row's main text), then the slots in order.
// A header takes the width of the slot numbered by the headers made so far, not
// of its own slot: with gaps or a moved Status column the widths shift, as the
// person's saved layout has always been read.
void frmMain::createHeaders(const ColumnLayout& layout)
{
    QStringList headers;
    for (int i = 0; i < layout.columns.size(); ++i) {
        if (i == 0) {
            headers << QStringLiteral("Status");
        }
        const QString name = layout.columns.at(i).trimmed();
        if (name.contains(QLatin1String("New_"))) {
            headers << name.mid(4);
        } else if (!name.isEmpty() && name != QLatin1String("Status")) {
            headers << name;
        }
    }
    m_fillColumn = -1;
    ListViewMain->setColumnCount(int(headers.size()));
    ListViewMain->setHeaderLabels(headers);
    QHeaderView* header = ListViewMain->header();
    for (int i = 0; i < headers.size(); ++i) {
        header->moveSection(header->visualIndex(i), i); // a fresh header keeps no old order
        if (i < layout.widths.size()) {
            header->resizeSection(i, int(layout.widths.at(i) / kTwipsPerPixel));
        }
    }
    clearSortArrows();
}

// The column that takes the width the others leave: Comments, else the last one
// shown. It is never narrower than the person made it, and that width, not the
// one it has on a wide screen, is what the layout keeps.
void frmMain::chooseFillColumn()
{
    QHeaderView* header = ListViewMain->header();
    m_fillColumn = int(listHeaders().indexOf(QStringLiteral("Comments")));
    if (m_fillColumn < 0 && header->count() > 0) {
        m_fillColumn = header->logicalIndex(header->count() - 1);
    }
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
    header->resizeSection(m_fillColumn, std::max(m_fillOwnWidth, ListViewMain->viewport()->width() - others));
    m_fitting = false;
}

// A column's width in twips as the person left it.
long long frmMain::ownWidthTwips(int column) const
{
    const int pixels = column == m_fillColumn ? m_fillOwnWidth : ListViewMain->header()->sectionSize(column);
    return qint64(pixels) * kTwipsPerPixel;
}

// The Status column to its saved place among the others, which were made in order.
void frmMain::placeStatusColumn(dao::Recordset& rstColumnData)
{
    const dao::Field order = rstColumnData.Fields(QStringLiteral("StatusColumnOrder"));
    if (order.IsNull()) {
        Err.Raise(vbErrTypeMismatch, QStringLiteral("Invalid use of Null"));
    }
    const int position = int(order.Value().toLongLong());
    QHeaderView* header = ListViewMain->header();
    if (position < 1 || position > header->count()) {
        Err.Raise(vbErrInvalidPropertyValue, QStringLiteral("Invalid property value"));
    }
    header->moveSection(header->visualIndex(0), position - 1);
}

// The sort column by its saved caption (left as it was when no header has it),
// the arrow on gintSortKey's header, and the control's own sort.
void frmMain::applyListSort()
{
    for (int i = 0; i < ListViewMain->columnCount(); ++i) {
        if (ListViewMain->headerItem()->text(i) == gPerson.gstrSortColumnName) {
            m_listSortKey = i;
            gPerson.gintSortKey = i;
            break;
        }
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

// Has the person moved or resized a column since the last rebuild? The
// loops run to the number of rows, not of columns, and stop quietly at the first
// column or snapshot entry that is not there. A change saves the settings, so the
// rebuild that follows reads the new layout back.
bool frmMain::columnsMovedOrResized()
{
    const int rows = ListViewMain->topLevelItemCount();
    if (rows == 0) {
        return false;
    }
    QHeaderView* header = ListViewMain->header();
    const auto differs = [&](const QList<long long>& snapshot, auto valueOf) {
        for (int i = 1; i <= rows - 1; ++i) {
            if (i > header->count() || i >= snapshot.size()) {
                return false;
            }
            if (valueOf(i - 1) != snapshot.at(i)) {
                return true;
            }
        }
        return false;
    };
    const bool changed =
        differs(mvarColumnPositions, [&](int column) { return qint64(header->visualIndex(column) + 1); }) ||
        differs(mvarColumnWidths, [&](int column) { return ownWidthTwips(column); });
    if (changed) {
        ResumeNext([] { subSaveUserSettings(gRun.gstrDefaultUser); });
    }
    return changed;
}

// Each column's place and width as the rebuild left them, in entries 1
// to rows - 1 at most (the bound is the number of rows, as in the comparison).
void frmMain::takeColumnSnapshot()
{
    const int rows = ListViewMain->topLevelItemCount();
    QHeaderView* header = ListViewMain->header();
    mvarColumnWidths = {0, 0};
    mvarColumnPositions = {0, 0};
    for (int i = 1; i <= rows - 1 && i <= header->count(); ++i) {
        mvarColumnWidths.resize(i + 1);
        mvarColumnWidths[i] = ownWidthTwips(i - 1);
    }
    for (int i = 1; i <= rows - 1 && i <= header->count(); ++i) {
        mvarColumnPositions.resize(i + 1);
        mvarColumnPositions[i] = header->visualIndex(i - 1) + 1;
    }
}
