// The tracking pane: the people this person follows ("Alert ME"), filled by
// dragging rows of the board onto it or by the Status Alert command and emptied
// by its Remove menu, the people who follow this person ("Alert others"), and
// the minute's look for changes of the people followed, one pop-up each.
#include "alerts/frmstatuschangealert.h"
#include "board/frmmain.h"
#include "board/statusicons.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "platform/msgbox.h"
#include "status/tracking.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QTreeWidget>

namespace {

// What a drag of the board's rows carries: only the board's own rows are taken,
// and the names are read from its selection when they are dropped.
const QString kBoardRows = QStringLiteral("application/x-veskor-board-rows");

} // namespace

void frmMain::initTrackingPanes()
{
    lstWhoAmITracking->setSelectionMode(QAbstractItemView::ExtendedSelection);
    mnuRemoveAlertMenu = new QMenu(this);
    mnuRemoveAlertMenu->setObjectName(QStringLiteral("mnuRemoveAlertMenu"));
    mnuRemoveAlert = mnuRemoveAlertMenu->addAction(QStringLiteral("&Remove Selected Status Alert(s)"));
    mnuRemoveAlert->setObjectName(QStringLiteral("mnuRemoveAlert"));
    connect(mnuRemoveAlert, &QAction::triggered, this, &frmMain::mnuRemoveAlert_Click);
    lstWhoAmITracking->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(lstWhoAmITracking, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        if (!lstWhoAmITracking->selectedItems().isEmpty()) {
            mnuRemoveAlertMenu->popup(lstWhoAmITracking->viewport()->mapToGlobal(at));
        }
    });
    hook(lstWhoAmITracking->viewport(), QEvent::MouseMove,
         [this](QEvent*) { setPanelText(1, QStringLiteral(" Select Users from Main screen to add to this list. ")); });
    hook(lstWhosTrackingMe->viewport(), QEvent::MouseMove, [this](QEvent*) {
        setPanelText(1, QStringLiteral(" Users who will be Alerted of YOUR next status change "));
    });

    // The drag starts from the board's selected rows; over the list that takes
    // them the cursor is the drop icon, elsewhere the drag icon.
    hook(ListViewMain->viewport(), QEvent::MouseButtonPress,
         [this](QEvent* e) { m_dragStart = static_cast<QMouseEvent*>(e)->position().toPoint(); });
    hook(ListViewMain->viewport(), QEvent::MouseMove, [this](QEvent* e) {
        const auto* move = static_cast<QMouseEvent*>(e);
        if (move->buttons() & Qt::LeftButton && !ListViewMain->selectedItems().isEmpty() &&
            (move->position().toPoint() - m_dragStart).manhattanLength() >= QApplication::startDragDistance()) {
            ListViewMain_StartDrag();
        }
    });
    lstWhoAmITracking->setAcceptDrops(true);
    lstWhoAmITracking->viewport()->setAcceptDrops(true);
    for (const QEvent::Type type : {QEvent::DragEnter, QEvent::DragMove}) {
        hook(lstWhoAmITracking->viewport(), type, [](QEvent* e) {
            auto* drag = static_cast<QDragMoveEvent*>(e);
            if (drag->mimeData()->hasFormat(kBoardRows)) {
                drag->acceptProposedAction();
            }
        });
    }
    hook(lstWhoAmITracking->viewport(), QEvent::Drop, [this](QEvent* e) {
        auto* drop = static_cast<QDropEvent*>(e);
        if (drop->mimeData()->hasFormat(kBoardRows)) {
            drop->acceptProposedAction();
            lstWhoAmITracking_DragDrop();
        }
    });
}

void frmMain::ListViewMain_StartDrag()
{
    auto* drag = new QDrag(ListViewMain);
    auto* rows = new QMimeData;
    rows->setData(kBoardRows, QByteArray());
    drag->setMimeData(rows);
    drag->setDragCursor(dragCursor(true), Qt::CopyAction);
    drag->setDragCursor(dragCursor(false), Qt::IgnoreAction);
    drag->exec(Qt::CopyAction);
}

void frmMain::lstWhoAmITracking_DragDrop()
{
    subAddToTrackingList();
}

// Each selected person not followed yet goes into the list and the table, all
// in one unit with the counter raise; a person followed already is passed over.
void frmMain::subAddToTrackingList()
{
    QStringList names;
    for (const QString& name : selectedRowTexts(int(gBoard.gintNameColumn))) {
        if (!lstWhoAmITracking->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive).isEmpty() ||
            names.contains(name)) {
            continue;
        }
        names << name;
    }
    if (names.isEmpty()) {
        return;
    }
    try {
        tracking::subAddToTrackingList(gRun.gstrDefaultUser, names);
        for (const QString& name : names) {
            lstWhoAmITracking->addTopLevelItem(new QTreeWidgetItem({name}));
        }
    } catch (const VbError& e) {
        Err.Set(e);
        errorbox::showGeneral(QStringLiteral("frmMain - subAddToTrackingList event"), errorbox::Joined,
                              platform::vbCritical);
    }
    setBusyPointer(false);
}

void frmMain::subCommand_StatusAlert()
{
    subAddToTrackingList();
    subRefreshUserList(QString());
}

void frmMain::mnuRemoveAlert_Click()
{
    if (platform::MsgBox(QStringLiteral("Are you sure you want to remove the selected Status Alert(s)?"),
                         platform::vbYesNo, QStringLiteral("Delete Alerts?")) == platform::vbNo) {
        return;
    }
    QList<QTreeWidgetItem*> rows;
    QStringList names;
    for (int n = lstWhoAmITracking->topLevelItemCount() - 1; n >= 0; --n) {
        QTreeWidgetItem* row = lstWhoAmITracking->topLevelItem(n);
        if (row->isSelected()) {
            rows << row;
            names << row->text(0);
        }
    }
    try {
        tracking::subRemoveFromTrackingList(gRun.gstrDefaultUser, names);
        qDeleteAll(rows);
    } catch (const VbError& e) {
        Err.Set(e);
        errorbox::showGeneral(QStringLiteral("frmMain - mnuRemoveAlert event"), errorbox::Joined, platform::vbCritical);
    }
    setBusyPointer(false);
}

// Each followed person changed since the last look gets a pop-up, a second change
// replacing the first. A failed look leaves the limit where it was, so the next
// one covers the gap; it is told once and the looks go on.
void frmMain::subCheckForStatusAlerts()
{
    QList<tracking::StatusAlert> alerts;
    lookOrTell(QStringLiteral("frmMain - tmrCheckForStatusAlerts event"),
               [&] { alerts = m_statusAlerts.fnCheckForStatusAlerts(gRun.gstrDefaultUser); });
    for (const tracking::StatusAlert& alert : alerts) {
        subPopUpForStatusAlert(alert.trackee, alert.when, alert.status);
    }
}
