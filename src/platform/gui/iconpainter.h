#pragma once
// What the screens' drawn pictures share: every picture is drawn once on a 32 by 32
// grid and scaled to each pixel size, so the 16 and 32 pixel sets stay alike.

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <functional>
#include <initializer_list>

namespace icons {

using Drawing = std::function<void(QPainter&)>;

// One picture of size pixels, drawn by draw on the 32-unit grid.
QPixmap picture(int size, const Drawing& draw);
// An icon with one pixmap per size, each drawn by draw on the 32-unit grid.
QIcon drawn(std::initializer_list<int> sizes, const Drawing& draw);
// A round-capped pen of width units on the grid.
QPen pen(const QColor& color, double width);

// The set's colours: the dark ink of outlines and glyphs, and the accent blue.
inline const QColor kInk{0x37, 0x47, 0x4f};
inline const QColor kAccent{0x1e, 0x88, 0xe5};

// The colours of paper and of a red cross.
inline const QColor kPaper{0xfa, 0xfa, 0xfa};
inline const QColor kRed{0xd3, 0x2f, 0x2f};

} // namespace icons
