#pragma once
// A report's lines on paper: one fixed-pitch font (DejaVu Sans Mono, standing in
// for Courier New), one line under the other, a new page when one is full. The
// lines are never wrapped; the font is made small enough for the widest line to
// fit across the page, and no larger than 10 points.

#include <QImage>
#include <QStringList>

class QPagedPaintDevice;

namespace reports {

// Paints every line onto the device, which must be ready to paint (a QPrinter with
// its printer or file chosen, a QPdfWriter). False when painting cannot start.
bool paintReport(QPagedPaintDevice& device, const QStringList& lines);

// The first page of the report as the default A4 page would carry it, at dpi dots
// an inch, on white.
QImage reportPageImage(const QStringList& lines, int dpi = 96);

} // namespace reports
