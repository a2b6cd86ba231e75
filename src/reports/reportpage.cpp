// Report lines laid out on pages.
#include "reports/reportpage.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>

namespace reports {

namespace {

constexpr qreal kLargestPoints = 10;

QFont reportFont(const QStringList& lines, QPaintDevice& device, qreal pageWidth)
{
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setPointSizeF(kLargestPoints);
    const QFontMetricsF metrics(font, &device);
    qreal widest = 0;
    for (const QString& line : lines) {
        // The padding after a line's last field takes no room on paper.
        qsizetype printed = line.size();
        while (printed > 0 && line[printed - 1] == QLatin1Char(' ')) {
            --printed;
        }
        widest = std::max(widest, metrics.horizontalAdvance(line.left(printed)));
    }
    if (widest > pageWidth) {
        font.setPointSizeF(kLargestPoints * pageWidth / widest);
    }
    return font;
}

// Paints lines from first on while they fit within the height; returns the first line left over.
qsizetype paintPage(QPainter& painter, const QStringList& lines, qsizetype first, const QRectF& area)
{
    const QFontMetricsF metrics(painter.font(), painter.device());
    qreal y = area.top() + metrics.ascent();
    qsizetype i = first;
    // At least one line a page, however small the page.
    for (; i < lines.size() && (i == first || y + metrics.descent() <= area.bottom()); ++i) {
        painter.drawText(QPointF(area.left(), y), lines[i]);
        y += metrics.lineSpacing();
    }
    return i;
}

} // namespace

bool paintReport(QPagedPaintDevice& device, const QStringList& lines)
{
    QPainter painter;
    if (!painter.begin(&device)) {
        return false;
    }
    const QRectF area = device.pageLayout().paintRectPixels(device.logicalDpiX());
    const QRectF page(0, 0, area.width(), area.height()); // the painter starts at the margins' corner
    painter.setFont(reportFont(lines, device, page.width()));
    for (qsizetype next = 0; next < lines.size();) {
        if (next > 0) {
            device.newPage();
        }
        next = paintPage(painter, lines, next, page);
    }
    return painter.end();
}

QImage reportPageImage(const QStringList& lines, int dpi)
{
    const QPageLayout layout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                             QPageLayout::Millimeter);
    QImage image(layout.fullRectPixels(dpi).size(), QImage::Format_RGB32);
    image.setDotsPerMeterX(qRound(dpi / 0.0254));
    image.setDotsPerMeterY(qRound(dpi / 0.0254));
    image.fill(Qt::white);
    QPainter painter(&image);
    const QRectF area = layout.paintRectPixels(dpi);
    painter.setFont(reportFont(lines, image, area.width()));
    paintPage(painter, lines, 0, area);
    return image;
}

} // namespace reports
