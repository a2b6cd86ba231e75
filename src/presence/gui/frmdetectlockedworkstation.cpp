#include "presence/gui/frmdetectlockedworkstation.h"

#include "kernel/globals.h"
#include "platform/gui/screenplace.h"
#include "platform/gui/spoken.h"
#include "platform/presence.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kLookEveryMs = 3000;

QPushButton* button(const QString& caption, const char* name, QWidget* parent)
{
    return named(new QPushButton(caption, parent), QString::fromLatin1(name), caption);
}

} // namespace

frmDetectLockedWorkstation::frmDetectLockedWorkstation(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDetectLockedWorkstation"));
    setWindowTitle(gRun.gstrProgramTitle + QStringLiteral(" - Detect Locked Workstation"));
    cmdLockWorkstation = button(QStringLiteral("&Lock Workstation"), "cmdLockWorkstation", this);
    cmdJustMonitor = button(QStringLiteral("&Just Monitor"), "cmdJustMonitor", this);
    cmdStopMonitoring = button(QStringLiteral("&Stop Monitoring"), "cmdStopMonitoring", this);
    lblState = new QLabel(QStringLiteral("Not monitoring"), this);
    lblState->setObjectName(QStringLiteral("lblState"));
    lblState->setAccessibleName(QStringLiteral("Workstation state"));
    Timer1.setParent(this);
    Timer1.setObjectName(QStringLiteral("Timer1"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdLockWorkstation);
    buttons->addWidget(cmdJustMonitor);
    buttons->addWidget(cmdStopMonitoring);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblState);
    layout->addLayout(buttons);

    connect(cmdLockWorkstation, &QPushButton::clicked, this, &frmDetectLockedWorkstation::cmdLockWorkstation_Click);
    connect(cmdJustMonitor, &QPushButton::clicked, this, &frmDetectLockedWorkstation::cmdJustMonitor_Click);
    connect(cmdStopMonitoring, &QPushButton::clicked, this, &frmDetectLockedWorkstation::cmdStopMonitoring_Click);
    connect(&Timer1, &QTimer::timeout, this, &frmDetectLockedWorkstation::Timer1_Timer);
    Form_Load();
}

void frmDetectLockedWorkstation::Form_Load()
{
    centreOnScreen(this);
}

void frmDetectLockedWorkstation::startWatching()
{
    Timer1.stop();
    Timer1.setInterval(kLookEveryMs);
    Timer1.start();
}

void frmDetectLockedWorkstation::cmdLockWorkstation_Click()
{
    startWatching();
    platform::presence().requestLock();
}

void frmDetectLockedWorkstation::cmdJustMonitor_Click()
{
    startWatching();
}

void frmDetectLockedWorkstation::cmdStopMonitoring_Click()
{
    Timer1.stop();
    lblState->setText(QStringLiteral("Not monitoring"));
}

// The lock is asked only when no screen saver shows. Nothing is written.
void frmDetectLockedWorkstation::Timer1_Timer()
{
    platform::Presence& presence = platform::presence();
    if (presence.screenSaverRunning()) {
        lblState->setText(QStringLiteral("Screen saver running"));
    } else if (presence.sessionLocked()) {
        lblState->setText(QStringLiteral("Workstation locked"));
    } else {
        lblState->setText(QStringLiteral("Workstation in use"));
    }
}
