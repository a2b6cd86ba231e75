#pragma once
// frmAbout: the program's edition, build and the database's release, with the
// maker's support lines. It closes itself after a minute. Two hidden ways lead
// from it to the stress test: a click on the hot spot Image1 starts a burst at
// once; a click on the banner Picture1 with Ctrl alone held only opens the screen.
// A modal screen of the board.

#include <QDialog>

class QLabel;
class QPushButton;
class QTimer;

class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent = nullptr);

    void Form_Load();

    QLabel* Picture1; // the banner
    QLabel* Image1;   // the hot spot: no picture, in the banner's corner
    QLabel* Label2;
    QLabel* lblDBVersion;
    QLabel* lblBuild1;
    QLabel* lblBuild2;
    QLabel* lblBuildNumber1;
    QLabel* lblBuildNumber2;
    QLabel* lblVersion;
    QLabel* lblSupportDetails;
    QLabel* lblTradeMark;
    QPushButton* cmdOK;
    QTimer* TimerAbout;

    // About hidden, then the stress test shown (and started) until it is closed.
    void subOpenStressTest(bool start);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
