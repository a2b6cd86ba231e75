#pragma once
// frmStatusChangeAlert: a followed person's or item's new status and when it
// changed. Delete Alert stops following them, Cancel closes this pop-up, Close
// All takes every pop-up away. One pop-up per person: a newer change replaces it.

#include "alerts/alertpopup.h"

class frmStatusChangeAlert : public AlertPopUp
{
    Q_OBJECT

public:
    // Loads the pop-up: place and sound; the caption is the caller's to set.
    frmStatusChangeAlert();

    QLabel* lbl1StatusChangeAlert;
    QLabel* lbl2StatusAlert;
    QLabel* txtTrackee;
    QLabel* Label2;
    QLabel* txtStatus;
    QLabel* lbl3NewMsgAlert;
    QLabel* txtTimeChanged;
    QPushButton* cmdDeleteStatusAlert;
    QPushButton* cmdCancelStatusAlert;
    QPushButton* cmdCloseAllSCA;

    void cmdCancelStatusAlert_Click();
    void cmdDeleteStatusAlert_Click();
};

// The caption of a person's status pop-up, by which it is found again.
QString fnStatusAlertTitlePart(const QString& trackee);

// Replaces the person's pop-up, if one stands, by a new one showing the change.
frmStatusChangeAlert* subPopUpForStatusAlert(const QString& strTrackee, double dblWhen, const QString& strStatus);
