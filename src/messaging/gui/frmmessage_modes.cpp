// frmMessage filled for what it is opened for: a new message (with the names
// selected on the board), a reply, a forward, or the view of a stored copy (a
// draft opened for editing).
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "messaging/gui/frmmessage.h"
#include "messaging/gui/messageparts.h"
#include "messaging/gui/messagescreens.h"
#include "messaging/storedmessage.h"
#include "platform/clock.h"
#include "platform/msgbox.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolBar>
#include <optional>

using namespace messaging;

namespace {

struct Mode
{
    const char* action;
    int helpContext;
};

const Mode kModes[] = {{"View", 17000}, {"New", 16000}, {"Reply", 16500}, {"Forward", 15000}};

// The copy by its id; a failure of the read shows "Error: n - description" with
// the stop icon and the title given, and the screen goes on as for a copy not there.
std::optional<StoredMessage> readCopy(long long id, const QString& title)
{
    try {
        subOpenDatabase();
        return fnReadMessage(id);
    } catch (const VbError& error) {
        platform::MsgBox(QStringLiteral("Error: %1 - %2").arg(error.number()).arg(error.description()),
                         platform::vbCritical, title);
        return std::nullopt;
    }
}

} // namespace

void frmMessage::subCreateMessage(QWidget* caller, long long id)
{
    subBindMsgsToolBar();
    for (const Mode& mode : kModes) {
        if (gstrMessageAction == QLatin1String(mode.action)) {
            imgTarget->setPixmap(msgparts::messagePicture(gstrMessageAction, 48));
            HelpContextID = mode.helpContext;
        }
    }
    if (gstrMessageAction == QStringLiteral("View")) {
        subMessage_View(id);
    } else if (gstrMessageAction == QStringLiteral("New")) {
        subMessage_New(caller);
    } else if (gstrMessageAction == QStringLiteral("Reply")) {
        subMessage_Reply(id);
    } else if (gstrMessageAction == QStringLiteral("Forward")) {
        subMessage_Forward(id);
    }
    // No drafts are made on another site's database.
    if (gRun.gblnRemoteConnection) {
        toolbarButton(QStringLiteral("Save"))->setVisible(false);
    }
}

// The people selected on the board, in list order, become the To line.
void frmMessage::subMessage_New(QWidget* caller)
{
    lblTakenBy->setText(gRun.gstrDefaultUser);
    if (caller && caller->objectName() == QStringLiteral("frmMain")) {
        const int nameColumn = gBoard.gintNameColumn == 0 ? 1 : int(gBoard.gintNameColumn);
        QString to;
        for (const QString& name : mainScreen().selectedRowTexts(nameColumn)) {
            if (!name.isEmpty()) {
                to += name + QStringLiteral("; ");
            }
        }
        if (to.endsWith(QStringLiteral("; "))) {
            to.chop(2);
        }
        txtTo->setText(to);
    }
    QApplication::restoreOverrideCursor();
    subCloseDatabase();
    showButtons({QStringLiteral("Send"), QStringLiteral("Save"), QStringLiteral("Help")});
    lblLastUsed->setText(QStringLiteral("New Message"));
}

void frmMessage::subMessage_Reply(long long id)
{
    fillAnswer(id, QStringLiteral("subMessage_Reply"), fnReplyFields);
}

// The To line is chosen on the selection screen only.
void frmMessage::subMessage_Forward(long long id)
{
    fillAnswer(id, QString(), fnForwardFields);
}

// A reply or a forward: its fields built from the copy, To and From locked.
void frmMessage::fillAnswer(long long id, const QString& errorTitle,
                            ComposeFields (*fields)(const StoredMessage&, const QString&))
{
    if (const std::optional<StoredMessage> original = readCopy(id, errorTitle)) {
        const ComposeFields answer = fields(*original, gRun.gstrDefaultUser);
        lblTakenBy->setText(answer.takenBy);
        txtTo->setText(answer.to);
        txtFrom->setText(answer.from);
        txtSubject->setText(answer.subject);
        txtBody->setPlainText(answer.body);
    }
    // The answer is a message of its own: a Save keeps it as a new draft, never
    // over the copy it answers (the screen may have shown that copy before).
    txtMsgID->clear();
    txtCategory->clear();
    subCloseDatabase();
    setFieldsLocked(true, false);
    showButtons({QStringLiteral("Send"), QStringLiteral("Save"), QStringLiteral("Help")});
}

void frmMessage::subMessage_View(long long id)
{
    QString category;
    if (const std::optional<StoredMessage> copy = readCopy(id, QString())) {
        txtMsgID->setText(QString::number(copy->id));
        txtCategory->setText(copy->category);
        lblTakenBy->setText(copy->sentFromName);
        txtTo->setText(copy->sentToName);
        txtFrom->setText(copy->from);
        txtSubject->setText(copy->subject);
        txtBody->setPlainText(copy->body);
        txtOriginalSent->setText(
            platform::Format(platform::dateFromDateTimeNum(copy->sent), QStringLiteral("General Date")));
        category = copy->category;
        if (const std::optional<QString> line = fnLastUsedLine(*copy)) {
            lblLastUsed->setText(*line);
        }
    }
    subCloseDatabase();
    if (category == QStringLiteral("Draft")) {
        // A draft opens for editing: Send then sends the draft, Save saves it again.
        setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Edit Draft Message"));
        gstrMessageAction = QStringLiteral("Edit");
        setFieldsLocked(false, false);
        showButtons({QStringLiteral("Send"), QStringLiteral("Save"), QStringLiteral("Delete"), QStringLiteral("Help")});
    } else {
        setFieldsLocked(true, true);
        showButtons(
            {QStringLiteral("Reply"), QStringLiteral("Forward"), QStringLiteral("Delete"), QStringLiteral("Help")});
    }
}

void frmMessage::showButtons(const QStringList& keys)
{
    for (QAction* button : ToolbarNewMessage->actions()) {
        button->setVisible(keys.contains(button->data().toString()));
    }
}

void frmMessage::setFieldsLocked(bool toAndFrom, bool subjectAndBody)
{
    txtTo->setReadOnly(toAndFrom);
    txtFrom->setReadOnly(toAndFrom);
    txtSubject->setReadOnly(subjectAndBody);
    txtBody->setReadOnly(subjectAndBody);
}
