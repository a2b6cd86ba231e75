#pragma once
// The frame of both pop-up alerts: a stand-alone, non-modal window with a Play
// Sound box read once at load, the scroll bar that makes the window see-through,
// the fade timer that would thin it out and unload it, and a dormant pause timer.
// Each alert is its own window; any number may stand at once.

#include <QTimer>
#include <QWidget>

class QCheckBox;
class QLabel;
class QPushButton;
class QScrollBar;

class AlertPopUp : public QWidget
{
    Q_OBJECT

public:
    QCheckBox* chkPlaySound;
    QScrollBar* scrTransparancy;
    QTimer tmrFade;  // 25 ms; ships stopped, and nothing starts it
    QTimer tmrPause; // 2 s; ships stopped, and its tick does nothing

    // Unloads the pop-up: its own unload work runs, then the window goes.
    void unload();

    // Each tick thins the window by one step; at the scroll bar's end it unloads.
    void tmrFade_Timer();
    void scrTransparancy_Change();

signals:
    // The pop-up's own unload work ran.
    void unloaded();

protected:
    // scrollBarStart: the scroll bar's value at design. The window stays opaque
    // until the value changes.
    AlertPopUp(const QString& pauseTimerName, const QString& playSoundName, int scrollBarStart);

    QLabel* addLabel(const QString& name, const QString& text);
    QPushButton* addButton(const QString& name, const QString& caption, const QString& toolTip);
    // Plays the wave file of the program's folder when Play Sound is ticked.
    void playSoundIfTicked(const QString& waveFile);

    void closeEvent(QCloseEvent* event) override;
};
