#pragma once
// What both pop-up alerts share: the see-through rule of their scroll bar, the
// sound they play at load, their place on the display, and Close ALL, which takes
// every pop-up of both kinds away at once.

#include <QString>

class QWidget;

namespace alerts {

// The largest transparency the scroll bar offers, in percent.
constexpr int kMaxTransparency = 70;

// The alpha byte for a transparency in percent: (100 - value) / 100 * 255,
// rounded to even at a half; a result outside 0 to 255 becomes 1.
int fnAlphaForTransparency(int transparency);

// The whole window drawn at a constant alpha (0 to 255), when the platform can.
void subSetWindowOpacity(QWidget* window, int alpha);
// The last alpha given to subSetWindowOpacity.
int fnLastAlpha();

// Plays a wave file of the program's folder without waiting; a sound that cannot
// be played is ignored.
void subPlaySound(const QString& waveFile);

// Puts the window at (screen - own size) / divisor on both axes: 2 centres it,
// 1.9 puts it a little right of and below the centre.
void placeOnScreen(QWidget* window, double divisor);

// The first shown top-level window whose title holds the text, else nullptr.
QWidget* FindWindowByPartialTitle(const QString& text);
// Takes a window away at once, without its own unload work (no close event).
void destroyWindow(QWidget* window);

// Close ALL: as many passes as the program has screens; each pass destroys at
// most one status pop-up and one message pop-up.
void subCloseAllAlerts();

} // namespace alerts
