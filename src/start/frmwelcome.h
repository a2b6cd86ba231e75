#pragma once
// frmWelcome, the splash: a small framed window with the product's name, its
// release and a line telling how far the start has come. Its Activate finds the
// database and the person; TimerWelcome then hands over to frmMain.

#include "start/welcome.h"

#include <QFrame>
#include <QTimer>

class QLabel;

class frmWelcome : public QFrame, public WelcomeScreen
{
    Q_OBJECT

public:
    frmWelcome();
    ~frmWelcome() override;

    QTimer TimerWelcome; // 2000 ms, off until Activate's last step

    // WelcomeScreen
    void unload() override;
    bool isUnloaded() const override;
    void setTimerWelcomeEnabled(bool on) override;
    bool timerWelcomeEnabled() const override;
    void showProgress(const QString& text) override;
    QString progress() const override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Form_Load();
    void Form_Activate();
    void TimerWelcome_Timer();

    QLabel* m_release;
    QLabel* m_progress;
    bool m_activated = false;
    bool m_unloaded = false;
};
