// The board's side of messaging: New Message and Preview, the pane of the
// person's new messages with its hints and its Remove menu, and the look for
// messages that came in since the last one, which raises a pop-up for each.
#include "alerts/frmnewmessagesalert.h"
#include "board/frmmain.h"
#include "database/moddatabase.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "messaging/gui/messagescreens.h"
#include "messaging/messagestore.h"
#include "platform/clock.h"
#include "platform/msgbox.h"

#include <QLabel>
#include <QMenu>
#include <QTreeWidget>

namespace {

constexpr int kMessageIdColumn = 4; // the pane's fourth sub-item

} // namespace

void frmMain::initMessagesPane()
{
    ListViewMessages->setSelectionMode(QAbstractItemView::ExtendedSelection);
    mnuRemoveMessagesMenu = new QMenu(this);
    mnuRemoveMessagesMenu->setObjectName(QStringLiteral("mnuRemoveMessagesMenu"));
    mnuRemoveMessages = mnuRemoveMessagesMenu->addAction(QStringLiteral("&Remove Selected Message(s)"));
    mnuRemoveMessages->setObjectName(QStringLiteral("mnuRemoveMessages"));
    connect(mnuRemoveMessages, &QAction::triggered, this, &frmMain::mnuRemoveMessages_Click);
    // The right button and the keyboard's menu key both ask for the pane's menu.
    ListViewMessages->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(ListViewMessages, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { ListViewMessages_MouseUp(ListViewMessages->viewport()->mapToGlobal(at)); });
    // Enter on a row opens Preview as a double click does.
    connect(ListViewMessages, &QTreeWidget::itemActivated, this, [this] { ListViewMessages_DblClick(); });
    hook(ListViewMessages->viewport(), QEvent::MouseMove, [this](QEvent*) { ListViewMessages_MouseMove(); });
    hook(ListViewMessages, QEvent::Enter, [this](QEvent*) { ListViewMessages_Enter(); });
    hook(lblPreviewMsgsPane, QEvent::Enter, [this](QEvent*) { ListViewMessages_Enter(); });
}

void frmMain::ListViewMessages_MouseMove()
{
    setPanelText(1, QStringLiteral(" Messages from other Users. "));
}

void frmMain::ListViewMessages_Enter()
{
    HelpContextID = 2250;
    ListViewMessages->setToolTip(ListViewMessages->topLevelItemCount() == 0
                                     ? QStringLiteral(" No messages ")
                                     : QStringLiteral(" Double-Click to display Preview Messages screen "));
}

void frmMain::ListViewMessages_DblClick()
{
    if (ListViewMessages->topLevelItemCount() > 0) {
        subShowMsgsPreview();
    }
}

void frmMain::ListViewMessages_MouseUp(const QPoint& at)
{
    if (!ListViewMessages->selectedItems().isEmpty()) {
        mnuRemoveMessagesMenu->popup(at);
    }
}

// The selected copies go from the table for good, all of them or none, with the
// change counter raised in the same unit; the rows leave the pane once they have.
void frmMain::mnuRemoveMessages_Click()
{
    if (platform::MsgBox(QStringLiteral("Are you sure you want to remove the selected Message(s)?"), platform::vbYesNo,
                         QStringLiteral("Delete Alerts?")) == platform::vbNo) {
        return;
    }
    QList<QTreeWidgetItem*> rows;
    QList<long long> ids;
    for (int n = ListViewMessages->topLevelItemCount() - 1; n >= 0; --n) {
        QTreeWidgetItem* row = ListViewMessages->topLevelItem(n);
        if (row->isSelected()) {
            rows << row;
            ids << row->text(kMessageIdColumn).toLongLong();
        }
    }
    try {
        messaging::subRemoveMessagesFromPane(ids);
        qDeleteAll(rows);
    } catch (const VbError& e) {
        Err.Set(e);
        errorbox::showGeneral(QStringLiteral("frmMain - mnuRemoveMessages event"), errorbox::Joined,
                              platform::vbCritical);
    }
    setBusyPointer(false);
    subSetToolBarRights();
    subCloseDatabase();
}

void frmMain::subCommand_NewMessage()
{
    try {
        subUnloadSysTrayIcon();
        gstrMessageAction = QStringLiteral("New");
        subOpenMessage(this, 0);
    } catch (const VbError& e) {
        Err.Set(e);
        errorbox::showGeneral(QStringLiteral("frmMain - subCommand_NewMessage event"), errorbox::Joined);
    }
}

void frmMain::subCommand_Messages()
{
    subUnloadSysTrayIcon();
    subShowMsgsPreview();
    subRefreshUserList(QString());
}

void frmMain::mnuMessages_Click()
{
    subUnloadSysTrayIcon();
    subShowMsgsPreview();
}

// Each message addressed to the person and sent since the last look gets a
// pop-up of its own. The limit moves before the query, so a failed look does not
// bring the same messages twice; they stay in the pane. A failure is told and
// the next look comes all the same.
void frmMain::subCheckForNewMessages()
{
    QList<messaging::NewMessageAlert> alerts;
    lookOrTell(QStringLiteral("frmMain - tmrCheckForNewMessages event"),
               [&] { alerts = m_newMessages.fnCheckForNewMessages(gRun.gstrDefaultUser); });
    for (const messaging::NewMessageAlert& alert : alerts) {
        try {
            subPopUpForNewMessagesAlert(alert.subject, platform::dateFromDateTimeNum(alert.sent), alert.id, alert.body);
        } catch (const VbError& e) {
            Err.Set(e);
            errorbox::showGeneral(QStringLiteral("frmMain - subPopUpForNewMessagesAlert"), errorbox::Joined);
        }
    }
}
