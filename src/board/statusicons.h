#pragma once
// The pictures of the board, drawn in code so they stay one consistent set at any
// size: the list's status icons by StatusCode, the header's sort arrows and the
// toolbar's buttons, and the cursors of a drag of the board's rows.

#include <QIcon>
#include <QPixmap>
#include <QString>

// The icon of a row: the status types' codes, 4 for a status typed by hand,
// 10 while the screen saver runs, 11 while the workstation is locked.
QIcon statusIcon(long long statusCode);
// "ArrowUp", "ArrowDown" or "ArrowClear" (an empty icon of the same size).
QIcon headerIcon(const QString& key);
// A fixed toolbar button by position (1 to 14); large or small set.
QIcon toolbarIcon(int position, bool large);
// The cursor of a drag of the board's rows: over the list that takes them, or elsewhere.
QPixmap dragCursor(bool overTarget);
