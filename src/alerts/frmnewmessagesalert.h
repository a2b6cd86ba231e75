#pragma once
// frmNewMessagesAlert: one message that came in, with its date, subject and body.
// Preview Msg opens the Preview Messages screen, Delete Msg moves the message to
// "Deleted", Cancel leaves it "New"; Close All takes every pop-up away.

#include "alerts/alertpopup.h"

#include <QDateTime>
#include <functional>

class frmNewMessagesAlert : public AlertPopUp
{
    Q_OBJECT

public:
    // Loads the pop-up: caption, place, the flag cleared, the sound.
    frmNewMessagesAlert();

    QLabel* lbl1NewMsgAlert;
    QLabel* lbl2NewMsgAlert;
    QLabel* txtSentDateTimNum;
    QLabel* lbl3NewMsgAlert;
    QLabel* txtSubject;
    QLabel* lbl4NewMessageAlert;
    QLabel* lblMessageBody;
    QLabel* lblMsgID;
    QPushButton* cmdDisplayMsgFromNewMsgAlert;
    QPushButton* cmdDeleteMsg;
    QPushButton* cmdCancelNewMsgAlert;
    QPushButton* cmdCloseAllNMA;

    void cmdCancelNewMsgAlert_Click();
    void cmdDisplayMsgFromNewMsgAlert_Click();
    void cmdDeleteMsg_Click();
};

// Shared by every message pop-up: set by Preview Msg, cleared by a load and by Cancel.
extern bool gblnShowPreviewFromAlert;

// How the Preview Messages screen is shown; the program installs it (nullptr: none).
void setPreviewMessagesScreen(std::function<void()> show);

// A new message pop-up, shown and filled with the message.
frmNewMessagesAlert* subPopUpForNewMessagesAlert(const QString& subject, const QDateTime& sent, long long messageId,
                                                 const QString& body);
