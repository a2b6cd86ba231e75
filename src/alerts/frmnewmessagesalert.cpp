#include "alerts/frmnewmessagesalert.h"

#include "alerts/modalerts.h"
#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/globals.h"
#include "platform/clock.h"
#include "platform/msgbox.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

bool gblnShowPreviewFromAlert = false;

namespace {

std::function<void()>& previewScreen()
{
    static std::function<void()> show;
    return show;
}

void showPreviewMessages()
{
    if (previewScreen()) {
        previewScreen()();
    }
}

} // namespace

void setPreviewMessagesScreen(std::function<void()> show)
{
    previewScreen() = std::move(show);
}

frmNewMessagesAlert::frmNewMessagesAlert()
    : AlertPopUp(QStringLiteral("tmrPauseNMA"), QStringLiteral("chkPlaySoundNMA"), 0),
      lbl1NewMsgAlert(addLabel(QStringLiteral("lbl1NewMsgAlert"), QStringLiteral("New Message Alert !"))),
      lbl2NewMsgAlert(addLabel(QStringLiteral("lbl2NewMsgAlert"), QStringLiteral("Received :"))),
      txtSentDateTimNum(addLabel(QStringLiteral("txtSentDateTimNum"), QString())),
      lbl3NewMsgAlert(addLabel(QStringLiteral("lbl3NewMsgAlert"), QStringLiteral("Subject :"))),
      txtSubject(addLabel(QStringLiteral("txtSubject"), QString())),
      lbl4NewMessageAlert(addLabel(QStringLiteral("lbl4NewMessageAlert"), QStringLiteral("Message :"))),
      lblMessageBody(addLabel(QStringLiteral("lblMessageBody"), QString())),
      lblMsgID(addLabel(QStringLiteral("lblMsgID"), QStringLiteral("MsgID"))),
      cmdDisplayMsgFromNewMsgAlert(addButton(QStringLiteral("cmdDisplayMsgFromNewMsgAlert"),
                                             QStringLiteral("&Preview Msg"),
                                             QStringLiteral("Display Preview Messages Screen"))),
      cmdDeleteMsg(addButton(QStringLiteral("cmdDeleteMsg"), QStringLiteral("&Delete Msg"),
                             QStringLiteral("Delete this Message"))),
      cmdCancelNewMsgAlert(addButton(QStringLiteral("cmdCancelNewMsgAlert"), QStringLiteral("&Cancel"),
                                     QStringLiteral("Cancel this pop-up Alert"))),
      cmdCloseAllNMA(addButton(QStringLiteral("cmdCloseAllNMA"), QStringLiteral("Close &All"),
                               QStringLiteral("Close ALL pop-up Alerts")))
{
    setObjectName(QStringLiteral("frmNewMessagesAlert"));
    lbl1NewMsgAlert->setAlignment(Qt::AlignCenter);
    lblMsgID->setVisible(false);

    auto* grid = new QGridLayout(this);
    grid->addWidget(lbl1NewMsgAlert, 0, 0, 1, 2);
    grid->addWidget(lbl2NewMsgAlert, 1, 0);
    grid->addWidget(txtSentDateTimNum, 1, 1);
    grid->addWidget(lbl3NewMsgAlert, 2, 0);
    grid->addWidget(txtSubject, 2, 1);
    grid->addWidget(lbl4NewMessageAlert, 3, 0, Qt::AlignTop);
    grid->addWidget(lblMessageBody, 3, 1);
    grid->addWidget(lblMsgID, 4, 0);
    grid->addWidget(chkPlaySound, 4, 1);
    grid->addWidget(scrTransparancy, 5, 0, 1, 2);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {cmdDisplayMsgFromNewMsgAlert, cmdDeleteMsg, cmdCancelNewMsgAlert, cmdCloseAllNMA}) {
        buttons->addWidget(button);
    }
    grid->addLayout(buttons, 6, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    // A fixed size, as at design: the place is taken once, before the texts come.
    setFixedSize(440, 300);

    connect(cmdCancelNewMsgAlert, &QPushButton::clicked, this, &frmNewMessagesAlert::cmdCancelNewMsgAlert_Click);
    connect(cmdDisplayMsgFromNewMsgAlert, &QPushButton::clicked, this,
            &frmNewMessagesAlert::cmdDisplayMsgFromNewMsgAlert_Click);
    connect(cmdDeleteMsg, &QPushButton::clicked, this, &frmNewMessagesAlert::cmdDeleteMsg_Click);
    connect(cmdCloseAllNMA, &QPushButton::clicked, this, [] { alerts::subCloseAllAlerts(); });

    // Load.
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - New Message Alert !"));
    alerts::placeOnScreen(this, 1.9);
    gblnShowPreviewFromAlert = false;
    playSoundIfTicked(QStringLiteral("veskor-new-message.wav"));
}

void frmNewMessagesAlert::cmdCancelNewMsgAlert_Click()
{
    gblnShowPreviewFromAlert = false;
    unload();
}

void frmNewMessagesAlert::cmdDisplayMsgFromNewMsgAlert_Click()
{
    gblnShowPreviewFromAlert = true;
    showPreviewMessages();
    unload();
}

void frmNewMessagesAlert::cmdDeleteMsg_Click()
{
    if (platform::MsgBox(QStringLiteral("Are you sure you want to delete this message?"),
                         platform::vbYesNo | platform::vbQuestion,
                         QStringLiteral("Delete Confirmation Required")) != platform::vbYes) {
        return;
    }
    const QString id = QString::number(lblMsgID->text().trimmed().toLongLong());
    fnRunUnit([&] {
        subExecuteSQL(QStringLiteral("Update MessagesTable set Category = ") + dao::quote(QStringLiteral("Deleted")) +
                      QStringLiteral(", LastUsedDateTimeNum = ") +
                      QString::number(platform::DateTimeNum(platform::Now()), 'f', 10) +
                      QStringLiteral(" Where MessageID = ") + id);
        subUpdateStatusCounter();
    });
    subCloseDatabase();
    unload();
}

frmNewMessagesAlert* subPopUpForNewMessagesAlert(const QString& subject, const QDateTime& sent, long long messageId,
                                                 const QString& body)
{
    auto* popUp = new frmNewMessagesAlert;
    popUp->show();
    popUp->txtSubject->setText(subject);
    popUp->txtSentDateTimNum->setText(platform::Format(sent, QStringLiteral("Long Date")) + QStringLiteral(" - ") +
                                      platform::Format(sent, QStringLiteral("Short Time")));
    popUp->lblMsgID->setText(QString::number(messageId));
    popUp->lblMessageBody->setText(body);
    for (QLabel* shown : {popUp->txtSubject, popUp->txtSentDateTimNum, popUp->lblMessageBody}) {
        shown->setAccessibleName(shown->text());
    }
    if (gblnShowPreviewFromAlert) {
        showPreviewMessages();
    }
    return popUp;
}
