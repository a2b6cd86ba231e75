#pragma once
// frmDetectLockedWorkstation: a small screen that asks the same two questions as
// the board's presence timers and shows the answers, without writing anything.
// "Lock Workstation" starts watching and asks the desktop to lock; "Just
// Monitor" starts watching only; "Stop Monitoring" stops.

#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;

class frmDetectLockedWorkstation : public QDialog
{
    Q_OBJECT

public:
    explicit frmDetectLockedWorkstation(QWidget* parent = nullptr);

    void Form_Load();
    void cmdLockWorkstation_Click();
    void cmdJustMonitor_Click();
    void cmdStopMonitoring_Click();
    void Timer1_Timer();

    QPushButton* cmdLockWorkstation;
    QPushButton* cmdJustMonitor;
    QPushButton* cmdStopMonitoring;
    QLabel* lblState; // what the last look saw
    QTimer Timer1;

private:
    void startWatching();
};
