// The controls with which a person picks what the board shows and finds someone
// in it: the group tabs or tree, the column headers, the row click, the find box,
// and the hints they leave in panel 1. Each is thin: it changes a setting and
// leaves the work to subRefreshUserList or to the list's own sorting.
#include "board/columnlayout.h"
#include "board/frmmain.h"
#include "board/grouptabbar.h"
#include "board/statusicons.h"
#include "kernel/globals.h"
#include "status/settings.h"

#include <QAction>
#include <QEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QTabBar>
#include <QTreeWidget>

namespace {

const QString kEveryone = QStringLiteral("Everyone");
const QString kRootKey = QStringLiteral("R");
constexpr int kKeyRole = Qt::UserRole;

// Passes the mouse moves and focus changes of the board's controls to their events.
class EventHook : public QObject
{
public:
    EventHook(QObject* parent, QEvent::Type type, std::function<void(QEvent*)> action)
        : QObject(parent), m_type(type), m_action(std::move(action))
    {
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == m_type) {
            m_action(event);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QEvent::Type m_type;
    std::function<void(QEvent*)> m_action;
};

QTreeWidgetItem* addNode(QTreeWidgetItem* parent, const QString& key, const QString& text)
{
    auto* node = parent ? new QTreeWidgetItem(parent, {text}) : new QTreeWidgetItem({text});
    node->setData(0, kKeyRole, key);
    return node;
}

void setBold(QTreeWidgetItem* node, bool bold)
{
    QFont font = node->font(0);
    font.setBold(bold);
    node->setFont(0, font);
}

} // namespace

void frmMain::hook(QWidget* widget, QEvent::Type type, std::function<void(QEvent*)> action)
{
    if (type == QEvent::MouseMove) {
        widget->setMouseTracking(true);
    }
    auto* eventHook = new EventHook(widget, type, std::move(action));
    eventHook->setObjectName(QLatin1String(frmMain::kEventHookName));
    widget->installEventFilter(eventHook);
}

void frmMain::initListAndGroups()
{
    ListViewMain->setColumnCount(0);        // the columns come from the person's layout at the first refresh
    ListViewMain->setSortingEnabled(false); // sorted by applyListSort and the column click
    ListViewMain->setAllColumnsShowFocus(true);
    ListViewMain->setUniformRowHeights(true);
    ListViewMain->setSelectionMode(QAbstractItemView::SingleSelection);
    QHeaderView* header = ListViewMain->header();
    header->setSectionsMovable(true);
    header->setSectionsClickable(true);
    header->setStretchLastSection(false); // a width the person did not set would count as a resize
    header->setSortIndicatorShown(false); // the arrows are the headers' icons
    TreeViewMain->setHeaderHidden(true);
    // The panes the refresh fills after the list.
    lstWhoAmITracking->setHeaderLabels(
        {QStringLiteral("User"), QStringLiteral("Status"), QStringLiteral("Last Modified")});
    lstWhosTrackingMe->setHeaderLabels({QStringLiteral("User")});
    ListViewMessages->setHeaderLabels({QStringLiteral("From"), QStringLiteral("Subject"), QStringLiteral("Sent"),
                                       QStringLiteral("Sent By"), QStringLiteral("MessageID")});
    for (QTreeWidget* pane : {lstWhoAmITracking, lstWhosTrackingMe, ListViewMessages}) {
        pane->setRootIsDecorated(false);
    }

    connect(TabStripMain, &GroupTabBar::currentChanged, this, [this] { TabStripMain_Click(); });
    connect(TreeViewMain, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* node) { TreeViewMain_NodeClick(node); });
    // Enter on a node chooses it as a click does, for those who use the keyboard.
    connect(TreeViewMain, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* node) {
        if (node->text(0) != gRun.gstrCurrentGroup) {
            TreeViewMain_NodeClick(node);
        }
    });
    connect(header, &QHeaderView::sectionClicked, this, &frmMain::ListViewMain_ColumnClick);
    // The fill column follows the list's width and the person's resizing.
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int, int size) {
        if (m_fitting) {
            return;
        }
        if (column == m_fillColumn) {
            m_fillOwnWidth = size;
        }
        fitFillColumn();
    });
    connect(header, &QHeaderView::geometriesChanged, this, [this] { fitFillColumn(); });
    hook(ListViewMain->viewport(), QEvent::Resize, [this](QEvent*) { fitFillColumn(); });
    connect(ListViewMain, &QTreeWidget::itemClicked, this, [this] { ListViewMain_ItemClick(); });
    connect(txtFind, &QLineEdit::textChanged, this, [this] { txtFind_Change(); });

    hook(TabStripMain->viewport(), QEvent::MouseMove, [this](QEvent*) { TabStripMain_MouseMove(); });
    hook(TreeViewMain->viewport(), QEvent::MouseMove, [this](QEvent*) { TreeViewMain_MouseMove(); });
    hook(ListViewMain->viewport(), QEvent::MouseMove,
         [this](QEvent* e) { ListViewMain_MouseMove(static_cast<QMouseEvent*>(e)->position().toPoint()); });
    hook(StatusBarMain, QEvent::MouseMove, [this](QEvent*) { StatusBarMain_MouseMove(); });
    hook(txtFind, QEvent::FocusIn, [this](QEvent*) { txtFind_GotFocus(); });
    clearGroups();
    flushGroups();
}

// --- the groups, as subReadGroups fills them --------------------------------------

// A poll that sees GroupCounter risen asks the board to read its groups again.
void frmMain::subReadGroups()
{
    ::subReadGroups();
}

// The tabs and the tree emptied down to the built-in group: "Everyone" first, and
// the tree's root "Groups" (key "R") with its node. The groups that follow are
// gathered and put in place at once by selectGroup: a tab bar on screen lays all
// its tabs out again at every tab added, which made a long list of groups cost
// the square of its length.
void frmMain::clearGroups()
{
    m_pendingGroups.clear();
    m_pendingGroups << kEveryone;
    m_groupsPending = true;
}

void frmMain::addGroup(const QString& group)
{
    if (!m_groupsPending) {
        m_pendingGroups = groupCaptions();
        m_groupsPending = true;
    }
    m_pendingGroups << group;
}

QStringList frmMain::groupCaptions() const
{
    return TabStripMain->captions();
}

// The gathered groups into the tabs and the tree, each built as a whole.
void frmMain::flushGroups()
{
    if (!m_groupsPending) {
        return;
    }
    m_groupsPending = false;
    TabStripMain->setCaptions(m_pendingGroups);
    TreeViewMain->clear();
    auto* root = new QTreeWidgetItem({QStringLiteral("Groups")});
    root->setData(0, kKeyRole, kRootKey);
    QList<QTreeWidgetItem*> nodes;
    nodes.reserve(m_pendingGroups.size());
    QFont bold = TreeViewMain->font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    int widest = 0;
    for (const QString& group : std::as_const(m_pendingGroups)) {
        nodes << addNode(nullptr, group + QStringLiteral("_2"), group);
        nodes.last()->setToolTip(0, group);
        widest = std::max(widest, metrics.horizontalAdvance(group));
    }
    // Room for the longest name (bold, as the group shown is) beside the root's indent.
    m_treeNamesWidth = widest + 2 * TreeViewMain->indentation() + 2 * TreeViewMain->frameWidth() + 8;
    root->addChildren(nodes);
    TreeViewMain->addTopLevelItem(root);
    root->setExpanded(true);
    m_pendingGroups.clear();
}

// The tab and the node of a group made current from code. This is no click: the
// group becomes the one shown, and nothing is saved or refreshed here (the group
// read runs inside a refresh's poll, and a refresh from it would poll again).
bool frmMain::selectGroup(const QString& group)
{
    flushGroups();
    const int tab = int(groupCaptions().indexOf(group));
    if (tab < 0) {
        return false;
    }
    {
        const QSignalBlocker quietTabs(TabStripMain);
        TabStripMain->setCurrentIndex(tab);
    }
    if (QTreeWidgetItem* root = TreeViewMain->topLevelItem(0)) {
        if (QTreeWidgetItem* node = root->child(tab)) {
            TreeViewMain->setCurrentItem(node);
        }
    }
    gRun.gstrCurrentGroup = group;
    return true;
}

// The tree opened at its root, the group shown in bold and current.
void frmMain::subPopulateTreeView()
{
    QTreeWidgetItem* root = TreeViewMain->topLevelItem(0);
    if (!root) {
        return;
    }
    root->setExpanded(true);
    for (int n = 0; n < root->childCount(); ++n) {
        QTreeWidgetItem* node = root->child(n);
        if (node->text(0) == gRun.gstrCurrentGroup) {
            setBold(node, true);
            TreeViewMain->setCurrentItem(node);
        } else if (node->text(0) != kEveryone) {
            setBold(node, false);
        }
    }
}

// --- the events -----------------------------------------------------------------

void frmMain::TabStripMain_Click()
{
    if (TabStripMain->currentIndex() >= 0) {
        gRun.gstrCurrentGroup = TabStripMain->tabText(TabStripMain->currentIndex());
    }
    if (mblnLoading) {
        // A tab selected while the board loads neither saves nor refreshes.
        subResizeControls();
    } else {
        subSaveUserSettings(gRun.gstrDefaultUser); // the group is remembered
        subRefreshUserList(QString());
    }
    subSetToolBarRights();
}

void frmMain::TabStripMain_MouseMove()
{
    const QString caption =
        TabStripMain->currentIndex() >= 0 ? TabStripMain->tabText(TabStripMain->currentIndex()) : QString();
    if (groupButtonEnabled()) {
        setPanelText(1, QStringLiteral(" You can change a Status in the ") + caption + QStringLiteral(" Group. "));
    } else {
        setPanelText(1, QStringLiteral(" You can't change a Status (except your own) in the ") + caption +
                            QStringLiteral(" Group. "));
    }
}

// The root "Groups" is no group. "Everyone" keeps its weight when another node is chosen.
void frmMain::TreeViewMain_NodeClick(QTreeWidgetItem* node)
{
    if (!node || node->data(0, kKeyRole).toString() == kRootKey) {
        return;
    }
    if (QTreeWidgetItem* root = TreeViewMain->topLevelItem(0)) {
        for (int n = 0; n < root->childCount(); ++n) {
            if (root->child(n)->text(0) != kEveryone) {
                setBold(root->child(n), false);
            }
        }
    }
    setBold(node, true);
    gRun.gstrCurrentGroup = node->text(0);
    subSaveUserSettings(gRun.gstrDefaultUser);
    subSetToolBarRights();
    subRefreshUserList(gRun.gstrCurrentGroup);
}

void frmMain::TreeViewMain_MouseMove()
{
    setPanelText(1, QStringLiteral(" Select a Group to show members. "));
}

// A click on the sort column flips the order; a click on another keeps it. The
// list sorts itself: nothing is read and nothing refreshed.
void frmMain::ListViewMain_ColumnClick(int column)
{
    m_listSortKey = column;
    gPerson.gstrSortColumnName = ListViewMain->headerItem()->text(column);
    clearSortArrows();
    gPerson.gintSortOrder = columns::orderAfterClick(column, gBoard.gintFindColumn, gPerson.gintSortOrder);
    gBoard.gintFindColumn = column;
    const bool ascending = gPerson.gintSortOrder == 0;
    ListViewMain->headerItem()->setIcon(
        column, headerIcon(ascending ? QStringLiteral("ArrowUp") : QStringLiteral("ArrowDown")));
    ListViewMain->sortItems(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

// The name in the row clicked is the one a refresh selects again. The rights are
// asked again for the new selection, which may not leave the Group button on.
void frmMain::ListViewMain_ItemClick()
{
    if (QAction* group = toolbarButton(QStringLiteral("Group"))) {
        group->setEnabled(true);
    }
    if (listRowCount() > 0) {
        subFindNameColumn();
    }
    gBoard.gstrSelectedUser.clear();
    if (listRowCount() > 0) {
        gBoard.gstrSelectedUser = selectedItemText(int(gBoard.gintNameColumn));
    }
    subSetToolBarRights();
}

void frmMain::ListViewMain_MouseMove(const QPoint& at)
{
    if (!ListViewMain->itemAt(at)) {
        setPanelText(1, QStringLiteral(" Right-Click to display pop-up menu "));
    } else if (groupButtonEnabled() && ListViewMain->selectedItems().isEmpty()) {
        setPanelText(1, QStringLiteral(" Ctrl or Shift-Click to select multiple users. "));
    } else if (groupButtonEnabled()) {
        setPanelText(1, QStringLiteral(" Select user(s), then press Group Change button (or drag to Status Alert "
                                       "area). "));
    } else {
        setPanelText(1, QStringLiteral(" Right-Click to display pop-up menu "));
    }
}

void frmMain::StatusBarMain_MouseMove()
{
    setPanelText(1, QStringLiteral(" ") + gBoard.gstrRefreshedText);
}

// Incremental find: the first row, in the order shown, whose text in the column
// last clicked begins with the typed text, compared without regard to case.
// Trailing blanks count; rows are never hidden.
void frmMain::txtFind_Change()
{
    const QString text = txtFind->text();
    if (text.trimmed().isEmpty() || listRowCount() == 0) {
        return;
    }
    subClearListSelection();
    for (int i = 0; i < ListViewMain->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = ListViewMain->topLevelItem(i);
        if (columns::findMatches(row->text(int(gBoard.gintFindColumn)), text)) {
            selectRow(row);
            return;
        }
    }
}

void frmMain::txtFind_GotFocus()
{
    if (!txtFind->text().isEmpty()) {
        txtFind->selectAll();
    }
}
