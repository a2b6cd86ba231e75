#include "alerts/frmstatuschangealert.h"

#include "alerts/modalerts.h"
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/globals.h"
#include "platform/clock.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>

namespace {

// The board's list of the people this person follows, if the board is loaded.
QTreeWidget* whoAmITracking()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String("frmMain")) {
            return window->findChild<QTreeWidget*>(QStringLiteral("lstWhoAmITracking"));
        }
    }
    return nullptr;
}

} // namespace

frmStatusChangeAlert::frmStatusChangeAlert()
    : AlertPopUp(QStringLiteral("tmrPauseSCA"), QStringLiteral("chkPlaySoundSTA"), 1),
      lbl1StatusChangeAlert(addLabel(QStringLiteral("lbl1StatusChangeAlert"), QStringLiteral("Status Change Alert !"))),
      lbl2StatusAlert(addLabel(QStringLiteral("lbl2StatusAlert"), QStringLiteral("Name:"))),
      txtTrackee(addLabel(QStringLiteral("txtTrackee"), QString())),
      Label2(addLabel(QStringLiteral("Label2"), QStringLiteral("Status:"))),
      txtStatus(addLabel(QStringLiteral("txtStatus"), QString())),
      lbl3NewMsgAlert(addLabel(QStringLiteral("lbl3NewMsgAlert"), QStringLiteral("Time:"))),
      txtTimeChanged(addLabel(QStringLiteral("txtTimeChanged"), QString())),
      cmdDeleteStatusAlert(addButton(QStringLiteral("cmdDeleteStatusAlert"), QStringLiteral("&Delete Alert"),
                                     QStringLiteral("Delete this Alert from your Alert List"))),
      cmdCancelStatusAlert(addButton(QStringLiteral("cmdCancelStatusAlert"), QStringLiteral("&Cancel"),
                                     QStringLiteral("Cancel this pop-up Alert"))),
      cmdCloseAllSCA(addButton(QStringLiteral("cmdCloseAllSCA"), QStringLiteral("Close &All"),
                               QStringLiteral("Close ALL pop-up Alerts")))
{
    setObjectName(QStringLiteral("frmStatusChangeAlert"));
    setWindowTitle(QStringLiteral(" - Status Change Alert"));
    lbl1StatusChangeAlert->setAlignment(Qt::AlignCenter);

    auto* grid = new QGridLayout(this);
    grid->addWidget(lbl1StatusChangeAlert, 0, 0, 1, 2);
    grid->addWidget(lbl2StatusAlert, 1, 0);
    grid->addWidget(txtTrackee, 1, 1);
    grid->addWidget(Label2, 2, 0);
    grid->addWidget(txtStatus, 2, 1);
    grid->addWidget(lbl3NewMsgAlert, 3, 0);
    grid->addWidget(txtTimeChanged, 3, 1);
    grid->addWidget(chkPlaySound, 4, 1);
    grid->addWidget(scrTransparancy, 5, 0, 1, 2);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {cmdDeleteStatusAlert, cmdCancelStatusAlert, cmdCloseAllSCA}) {
        buttons->addWidget(button);
    }
    grid->addLayout(buttons, 6, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    // A fixed size, as at design: the place is taken once, before the texts come.
    setFixedSize(380, 220);

    connect(cmdCancelStatusAlert, &QPushButton::clicked, this, &frmStatusChangeAlert::cmdCancelStatusAlert_Click);
    connect(cmdDeleteStatusAlert, &QPushButton::clicked, this, &frmStatusChangeAlert::cmdDeleteStatusAlert_Click);
    connect(cmdCloseAllSCA, &QPushButton::clicked, this, [] { alerts::subCloseAllAlerts(); });

    // Load.
    alerts::placeOnScreen(this, 2);
    playSoundIfTicked(QStringLiteral("veskor-status-alert.wav"));
}

void frmStatusChangeAlert::cmdCancelStatusAlert_Click()
{
    unload();
}

// Stops following the person: their tracking row goes and so does their row of
// the board's list.
void frmStatusChangeAlert::cmdDeleteStatusAlert_Click()
{
    const QString trackee = txtTrackee->text();
    QTreeWidget* list = whoAmITracking();
    const bool committed = fnRunUnit([&] {
        subExecuteSQL(QStringLiteral("Delete from EmployeeStatusTracking WHERE Tracker = ") +
                      dao::quote(gRun.gstrDefaultUser) + QStringLiteral(" AND Trackee = ") + dao::quote(trackee) +
                      QStringLiteral(";  "));
    });
    if (committed && list) {
        for (int row = list->topLevelItemCount() - 1; row >= 0; --row) {
            if (list->topLevelItem(row)->text(0) == trackee) {
                delete list->takeTopLevelItem(row);
            }
        }
    }
    subCloseDatabase();
    unload();
}

QString fnStatusAlertTitlePart(const QString& trackee)
{
    return QStringLiteral("Status Change Alert for [") + trackee + QStringLiteral("]");
}

frmStatusChangeAlert* subPopUpForStatusAlert(const QString& strTrackee, double dblWhen, const QString& strStatus)
{
    if (QWidget* previous = alerts::FindWindowByPartialTitle(fnStatusAlertTitlePart(strTrackee))) {
        alerts::destroyWindow(previous);
    }
    auto* popUp = new frmStatusChangeAlert;
    popUp->show();
    const QDateTime when = platform::dateFromDateTimeNum(dblWhen);
    popUp->txtTrackee->setText(strTrackee);
    popUp->txtTimeChanged->setText(platform::Format(when, QStringLiteral("Long Date")) + QStringLiteral(" - ") +
                                   platform::Format(when, QStringLiteral("Long Time")));
    popUp->txtStatus->setText(strStatus);
    for (QLabel* shown : {popUp->txtTrackee, popUp->txtTimeChanged, popUp->txtStatus}) {
        shown->setAccessibleName(shown->text());
    }
    popUp->setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - ") + fnStatusAlertTitlePart(strTrackee) +
                          QStringLiteral(" "));
    return popUp;
}
