// frmTestHarness: the burst itself, its countdown and its stop.
#include "side/frmtestharness.h"

#include "kernel/mainscreen.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "status/statuswrite.h"

#include <QHideEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

bool gblnStressTest = false;

namespace {

const QString kStartCaption = QStringLiteral("Start Firing In/Out 500 Times");
// The caption after a stop, with its small letter.
const QString kRestartCaption = QStringLiteral("Start firing In/Out 500 Times");

} // namespace

frmTestHarness::frmTestHarness(QWidget* parent, long long rounds) : QDialog(parent), m_rounds(rounds)
{
    setObjectName(QStringLiteral("frmTestHarness"));
    setWindowTitle(QStringLiteral("VESK-OR Stress Testing"));
    Command1 = new QPushButton(kStartCaption, this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setAccessibleName(QStringLiteral("Start or stop the stress test"));
    Label1 = new QLabel(this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setAccessibleName(QStringLiteral("Rounds left"));
    Label1->setMinimumWidth(260);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Command1);
    layout->addWidget(Label1);
    connect(Command1, &QPushButton::clicked, this, &frmTestHarness::Command1_Click);
}

// Each round goes through the status engine as a group change of the board's
// selected rows: two units of change, each with its rows, mirror, counter and
// log rows. The press that stops a burst runs inside the events let through
// between rounds, so the burst ends after the round under way; a stopped burst
// leaves its caption with the small letter and shows no box.
void frmTestHarness::Command1_Click()
{
    mainScreen().setBusyPointer(false);
    if (m_firing) {
        Label1->clear();
        Command1->setText(kRestartCaption);
        m_firing = false;
        gblnStressTest = false;
        return;
    }
    Command1->setText(QStringLiteral("STOP Stress Testing"));
    m_firing = true;
    for (long long round = 1; round <= m_rounds; ++round) {
        subUpdateSelectedUsersRecords(QStringLiteral("In"));
        subUpdateSelectedUsersRecords(QStringLiteral("Busy"));
        Label1->setText(QStringLiteral("Firing In/Out ") + QString::number(m_rounds - round) +
                        QStringLiteral(" more Times"));
        platform::DoEvents();
        if (!m_firing) {
            return;
        }
    }
    m_firing = false;
    Label1->clear();
    Command1->setText(kStartCaption);
    platform::MsgBox(QStringLiteral("Stress Testing Completed!"), platform::vbExclamation);
}

// Closing the screen (its close box or Esc) during a burst stops it after the
// round under way, so no burst goes on behind a screen no longer there. A
// minimized screen (a hide the window system sends) keeps firing.
void frmTestHarness::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous()) {
        m_firing = false;
    }
    QDialog::hideEvent(event);
}
