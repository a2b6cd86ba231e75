#pragma once
// Where a screen stands when it opens.

class QWidget;

// Left is (display width - own width) / 2, top likewise, on the display the
// screen is on (the primary one before it is shown).
void centreOnScreen(QWidget* screen);
