// ToolbarNewMessage: its ten buttons, bound to the person's toolbar settings,
// and what each does: send by the screen's action, save a draft, delete the
// copy, leave with or without a question. A send or save that fails keeps the
// screen and its text, and says who did not get their copy.
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "messaging/gui/frmmessage.h"
#include "messaging/gui/messageparts.h"
#include "messaging/gui/messagescreens.h"
#include "messaging/messagestore.h"
#include "platform/msgbox.h"
#include "platform/shell.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolBar>

using namespace messaging;

namespace {

struct Button
{
    const char* key;
    const char* toolTip;
};

// The buttons in their order; each caption is its key.
const Button kButtons[] = {
    {"Send", "Send message "},
    {"Save", "Save message (don't send yet)"},
    {"Reply", "Reply to selected message"},
    {"Forward", "Forward selected message"},
    {"eMail", "Send eMail "},
    {"QUIL", "Send QUIL message "},
    {"Print", "Print message before sending "},
    {"Delete", "Delete selected message(s)"},
    {"Refresh", "Refresh preview screen"},
    {"Help", "Display message Help"},
};

} // namespace

void frmMessage::buildToolbar()
{
    ToolbarNewMessage->setMovable(false);
    for (const Button& spec : kButtons) {
        const QString key = QString::fromLatin1(spec.key);
        auto* button = new QAction(key, ToolbarNewMessage);
        button->setObjectName(key);
        button->setData(key);
        button->setToolTip(QString::fromLatin1(spec.toolTip));
        button->setStatusTip(button->toolTip()); // the status bar names the button under the mouse
        ToolbarNewMessage->addAction(button);
        // Screen readers name the button by its key, also while it shows no
        // caption; Tab reaches it like any other button.
        if (QWidget* widget = ToolbarNewMessage->widgetForAction(button)) {
            widget->setAccessibleName(key);
            widget->setAccessibleDescription(button->toolTip());
            widget->setFocusPolicy(Qt::TabFocus);
        }
    }
    addToolBar(ToolbarNewMessage);
    connect(ToolbarNewMessage, &QToolBar::actionTriggered, this,
            [this](QAction* button) { ToolbarNewMessage_ButtonClick(button->data().toString()); });
}

// The editor keeps a bare line feed; the table keeps each line end as a carriage
// return and a line feed, as the quoted block of a reply and the preview's first
// 30 characters expect.
QString frmMessage::bodyText() const
{
    return txtBody->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
}

QAction* frmMessage::toolbarButton(const QString& key) const
{
    for (QAction* button : ToolbarNewMessage->actions()) {
        if (button->data().toString() == key) {
            return button;
        }
    }
    return nullptr;
}

// Large or small pictures, with or without captions, as the person set the
// board's toolbar. eMail and QUIL are for the board; every mode of this screen
// hides them.
void frmMessage::subBindMsgsToolBar()
{
    const bool large = gPerson.gintIconSize == 0;
    const bool captions = gPerson.gintToolBarText != 0;
    const int size = large ? 32 : 16;
    ToolbarNewMessage->setIconSize(QSize(size, size));
    ToolbarNewMessage->setToolButtonStyle(captions ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
    for (QAction* button : ToolbarNewMessage->actions()) {
        const QString key = button->data().toString();
        button->setIcon(msgparts::messageIcon(key));
        button->setText(captions ? key : QString());
        button->setIconText(captions ? key : QString());
    }
}

void frmMessage::ToolbarNewMessage_ButtonClick(const QString& key)
{
    if (key == QStringLiteral("Send")) {
        subSendMessage();
    } else if (key == QStringLiteral("Save")) {
        cmdMessage_Save();
    } else if (key == QStringLiteral("Reply") || key == QStringLiteral("Forward")) {
        // The open screen turns into the reply or the forward of the copy it shows.
        gstrMessageAction = key;
        subCreateMessage(this, messageId());
    } else if (key == QStringLiteral("Delete")) {
        subDeleteMessage();
    } else if (key == QStringLiteral("Help")) {
        QKeyEvent f1(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
        QCoreApplication::sendEvent(this, &f1);
    } else if (key == QStringLiteral("Exit")) {
        subExitMessage();
    }
}

void frmMessage::subSendMessage()
{
    if (txtTo->text().trimmed().isEmpty()) {
        platform::shell().beep();
        platform::shell().beep();
        return;
    }
    const QString to = txtTo->text();
    const MessageText text{txtFrom->text(), txtSubject->text(), bodyText()};
    SendResult result;
    QString procedure;
    if (gstrMessageAction == QStringLiteral("New")) {
        procedure = QStringLiteral("subSendNewMessage");
        result = subSendNewMessage(to, text);
    } else if (gstrMessageAction == QStringLiteral("Reply")) {
        procedure = QStringLiteral("subSendReplyMessage");
        result = subSendReplyMessage(to, text);
    } else if (gstrMessageAction == QStringLiteral("Forward")) {
        procedure = QStringLiteral("subSendForwardMessage");
        result = subSendForwardMessage(to, text);
    } else if ((gstrMessageAction == QStringLiteral("View") || gstrMessageAction == QStringLiteral("Edit")) &&
               txtCategory->text() == QStringLiteral("Draft")) {
        procedure = QStringLiteral("subSendDraftMessage");
        result = subSendDraftMessage(messageId(), to, text);
    } else {
        return;
    }
    QApplication::restoreOverrideCursor();
    switch (result.outcome) {
    case SendOutcome::Sent:
        close();
        break;
    case SendOutcome::FieldsRequired:
        txtFrom->setFocus();
        break;
    case SendOutcome::EmptyTo: // the To line was tested above
        break;
    case SendOutcome::Failed: {
        QStringList names;
        for (const QString& name : result.notDelivered) {
            names << (name.trimmed().isEmpty() ? QStringLiteral("(no name)") : name.trimmed());
        }
        reportFailure(QStringLiteral("frmMessage - ") + procedure, result.failure ? result.failure->number() : 0,
                      result.failure ? result.failure->description() : QString(),
                      QStringLiteral("The message was not sent. These recipients did not get their copy: ") +
                          names.join(QStringLiteral(", ")) + QStringLiteral(". Your message is still on the screen."));
        break;
    }
    }
}

void frmMessage::cmdMessage_Save()
{
    const SaveResult saved =
        messaging::cmdMessage_Save(messageId(), txtTo->text(), {txtFrom->text(), txtSubject->text(), bodyText()});
    if (saved.failure) {
        reportFailure(QStringLiteral("frmMessage - cmdMessage_Save"), saved.failure->number(),
                      saved.failure->description(),
                      QStringLiteral("The draft was not saved. Your message is still on the screen."));
        return;
    }
    close();
}

void frmMessage::subDeleteMessage()
{
    try {
        if (!messaging::subDeleteMessage(messageId())) {
            return;
        }
    } catch (const VbError& error) {
        subCloseDatabase();
        reportFailure(QStringLiteral("frmMessage - subDeleteMessage"), error.number(), error.description(),
                      QStringLiteral("The message was not deleted."));
        return;
    }
    // The copy is no longer one that the closing marks read.
    txtCategory->setText(QStringLiteral("Deleted"));
    close();
}

void frmMessage::subExitMessage()
{
    // The caption has the product's name in front, so this never holds.
    if (windowTitle() == QStringLiteral("View Message")) {
        close();
        return;
    }
    if (!(txtTo->text() + txtSubject->text() + txtBody->toPlainText()).isEmpty() &&
        platform::MsgBox(QStringLiteral("Are you sure you want to exit without saving changes?"),
                         platform::vbYesNo + platform::vbQuestion,
                         QStringLiteral("Discard Changes")) != platform::vbYes) {
        return;
    }
    close();
}
