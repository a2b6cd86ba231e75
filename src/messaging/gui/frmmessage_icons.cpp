// The pictures of frmMessage: one glyph a toolbar button and one a mode, each
// drawn on a 32-unit grid in one dark ink with one accent colour.
#include "messaging/gui/frmmessage.h"

#include <QPainter>
#include <QPainterPath>
#include <functional>

namespace {

const QColor kInk(0x37, 0x47, 0x4f);
const QColor kAccent(0x1e, 0x88, 0xe5);
const QColor kPaper(0xfa, 0xfa, 0xfa);

using Drawing = std::function<void(QPainter&)>;

QPen pen(const QColor& color, double width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

QPixmap draw(int size, const Drawing& drawing)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / 32.0, size / 32.0);
    drawing(p);
    return pixmap;
}

void envelope(QPainter& p)
{
    p.setPen(pen(kInk, 2));
    p.setBrush(kPaper);
    p.drawRect(QRectF(4, 8, 24, 17));
    p.drawPolyline(QPolygonF({QPointF(4, 8), QPointF(16, 18), QPointF(28, 8)}));
}

void arrow(QPainter& p, bool right)
{
    const double dir = right ? 1 : -1;
    p.setPen(pen(kAccent, 3));
    p.drawLine(QPointF(16 - 9 * dir, 26), QPointF(16 + 9 * dir, 26));
    p.drawPolyline(QPolygonF({QPointF(16 + 4 * dir, 21), QPointF(16 + 9 * dir, 26), QPointF(16 + 4 * dir, 31)}));
}

void text(QPainter& p, const QString& glyph, const QColor& color)
{
    QFont font = p.font();
    font.setBold(true);
    font.setPixelSize(22);
    p.setFont(font);
    p.setPen(color);
    p.drawText(QRectF(0, 0, 32, 32), Qt::AlignCenter, glyph);
}

Drawing drawingOf(const QString& key)
{
    if (key == QStringLiteral("Send") || key == QStringLiteral("New")) {
        return [](QPainter& p) {
            envelope(p);
            p.setPen(Qt::NoPen);
            p.setBrush(kAccent);
            p.drawEllipse(QPointF(25, 8), 5, 5);
        };
    }
    if (key == QStringLiteral("Save")) {
        return [](QPainter& p) {
            p.setPen(pen(kInk, 2));
            p.setBrush(kAccent);
            p.drawRect(QRectF(5, 5, 22, 22));
            p.setBrush(kPaper);
            p.drawRect(QRectF(10, 5, 12, 8));
            p.drawRect(QRectF(9, 18, 14, 9));
        };
    }
    if (key == QStringLiteral("Reply") || key == QStringLiteral("Forward")) {
        const bool right = key == QStringLiteral("Forward");
        return [right](QPainter& p) {
            p.translate(0, -4);
            envelope(p);
            p.translate(0, 4);
            arrow(p, right);
        };
    }
    if (key == QStringLiteral("View")) {
        return [](QPainter& p) {
            envelope(p);
            p.setPen(pen(kAccent, 2));
            p.setBrush(kPaper);
            p.drawEllipse(QPointF(22, 22), 5, 5);
            p.drawLine(QPointF(26, 26), QPointF(30, 30));
        };
    }
    if (key == QStringLiteral("eMail")) {
        return [](QPainter& p) {
            text(p, QStringLiteral("@"), kAccent);
        };
    }
    if (key == QStringLiteral("QUIL")) {
        return [](QPainter& p) {
            p.setPen(pen(kInk, 2));
            p.setBrush(kPaper);
            p.drawRoundedRect(QRectF(4, 6, 24, 16), 4, 4);
            p.drawPolygon(QPolygonF({QPointF(9, 22), QPointF(9, 28), QPointF(15, 22)}));
        };
    }
    if (key == QStringLiteral("Print")) {
        return [](QPainter& p) {
            p.setPen(pen(kInk, 2));
            p.setBrush(kPaper);
            p.drawRect(QRectF(9, 4, 14, 8));
            p.setBrush(QColor(0x90, 0xa4, 0xae));
            p.drawRect(QRectF(4, 12, 24, 11));
            p.setBrush(kPaper);
            p.drawRect(QRectF(9, 19, 14, 9));
        };
    }
    if (key == QStringLiteral("Delete")) {
        return [](QPainter& p) {
            p.setPen(pen(QColor(0xd3, 0x2f, 0x2f), 4));
            p.drawLine(QPointF(8, 8), QPointF(24, 24));
            p.drawLine(QPointF(24, 8), QPointF(8, 24));
        };
    }
    if (key == QStringLiteral("Refresh")) {
        return [](QPainter& p) {
            p.setPen(pen(QColor(0x2e, 0xa0, 0x43), 3));
            p.drawArc(QRectF(6, 6, 20, 20), 30 * 16, 300 * 16);
            p.drawPolyline(QPolygonF({QPointF(20, 5), QPointF(25, 11), QPointF(18, 12)}));
        };
    }
    return [](QPainter& p) {
        text(p, QStringLiteral("?"), kAccent);
    };
}

} // namespace

QPixmap frmMessage::modePicture(const QString& action)
{
    return draw(48, drawingOf(action));
}

QIcon frmMessage::buttonIcon(const QString& key, int size)
{
    return QIcon(draw(size, drawingOf(key)));
}
