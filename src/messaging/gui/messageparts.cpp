#include "messaging/gui/messageparts.h"

#include "platform/gui/iconpainter.h"

#include <QApplication>
#include <QPainter>
#include <functional>

namespace msgparts {

namespace {

using icons::kAccent;
using icons::kInk;
using icons::kPaper;
using icons::kRed;
using icons::pen;

void envelope(QPainter& p, const QRectF& r)
{
    p.setPen(pen(kInk, 1.6));
    p.setBrush(kPaper);
    p.drawRect(r);
    p.drawPolyline(QPolygonF({r.topLeft(), QPointF(r.center().x(), r.top() + r.height() * 0.6), r.topRight()}));
}

// An arrow along y = 16 from x0 to x1, its head at x1.
void arrow(QPainter& p, const QColor& color, double x0, double x1, double y = 16)
{
    const double head = x1 > x0 ? -6 : 6;
    p.setPen(pen(color, 3));
    p.drawLine(QPointF(x0, y), QPointF(x1, y));
    p.drawPolyline(QPolygonF({QPointF(x1 + head, y - 6), QPointF(x1, y), QPointF(x1 + head, y + 6)}));
}

void letter(QPainter& p, const QColor& color, const QString& text)
{
    QFont font = p.font();
    font.setBold(true);
    font.setPixelSize(22);
    p.setFont(font);
    p.setPen(color);
    p.drawText(QRectF(0, 0, 32, 32), Qt::AlignCenter, text);
}

icons::Drawing drawingOf(const QString& key)
{
    if (key == QLatin1String("Send")) {
        return [](QPainter& p) {
            envelope(p, QRectF(3, 7, 22, 15));
            p.setPen(Qt::NoPen);
            p.setBrush(kAccent);
            p.drawEllipse(QPointF(25, 8), 5, 5);
        };
    }
    if (key == QLatin1String("Save")) {
        return [](QPainter& p) {
            p.setPen(pen(kInk, 2));
            p.setBrush(kAccent);
            p.drawRect(QRectF(5, 5, 22, 22));
            p.setBrush(kPaper);
            p.drawRect(QRectF(10, 5, 12, 8));
            p.drawRect(QRectF(9, 18, 14, 9));
        };
    }
    if (key == QLatin1String("View")) {
        return [](QPainter& p) {
            envelope(p, QRectF(3, 5, 20, 14));
            p.setPen(pen(kInk, 3));
            p.setBrush(QColor(0xe3, 0xf2, 0xfd));
            p.drawEllipse(QPointF(20, 20), 6, 6);
            p.drawLine(QPointF(24.5, 24.5), QPointF(29, 29));
        };
    }
    if (key == QLatin1String("New")) {
        return [](QPainter& p) {
            envelope(p, QRectF(3, 7, 22, 15));
            p.setPen(pen(QColor(0x2e, 0xa0, 0x43), 3));
            p.drawLine(QPointF(25, 18), QPointF(25, 29));
            p.drawLine(QPointF(19.5, 23.5), QPointF(30.5, 23.5));
        };
    }
    if (key == QLatin1String("Reply")) {
        return [](QPainter& p) {
            arrow(p, kAccent, 27, 5);
        };
    }
    if (key == QLatin1String("Reply All")) {
        return [](QPainter& p) {
            arrow(p, kAccent, 27, 5, 10);
            arrow(p, kAccent, 27, 5, 22);
        };
    }
    if (key == QLatin1String("Forward")) {
        return [](QPainter& p) {
            arrow(p, kAccent, 5, 27);
        };
    }
    if (key == QLatin1String("eMail")) {
        return [](QPainter& p) {
            letter(p, kAccent, QStringLiteral("@"));
        };
    }
    if (key == QLatin1String("QUIL")) {
        return [](QPainter& p) {
            p.setPen(pen(kInk, 1.6));
            p.setBrush(kAccent);
            p.drawRoundedRect(QRectF(3.5, 5, 25, 17), 6, 6);
            p.drawPolygon(QPolygonF({QPointF(8, 21), QPointF(7, 28.5), QPointF(15, 22)}));
        };
    }
    if (key == QLatin1String("Print")) {
        return [](QPainter& p) {
            p.setPen(pen(kInk, 1.6));
            p.setBrush(kPaper);
            p.drawRect(QRectF(9.5, 3.5, 13, 10));
            p.setBrush(QColor(0x60, 0x7d, 0x8b));
            p.drawRoundedRect(QRectF(3.5, 12, 25, 11), 2.5, 2.5);
            p.setBrush(kPaper);
            p.drawRect(QRectF(9.5, 18.5, 13, 10));
        };
    }
    if (key == QLatin1String("Delete")) {
        return [](QPainter& p) {
            p.setPen(pen(kRed, 4));
            p.drawLine(QPointF(7, 7), QPointF(25, 25));
            p.drawLine(QPointF(25, 7), QPointF(7, 25));
        };
    }
    if (key == QLatin1String("Refresh")) {
        return [](QPainter& p) {
            p.setPen(pen(QColor(0x2e, 0xa0, 0x43), 3.2));
            p.drawArc(QRectF(6, 6, 20, 20), 60 * 16, 280 * 16);
            p.drawPolyline(QPolygonF({QPointF(15, 3), QPointF(21, 7.5), QPointF(15, 12)}));
        };
    }
    if (key == QLatin1String("Help")) {
        return [](QPainter& p) {
            letter(p, kAccent, QStringLiteral("?"));
        };
    }
    return [](QPainter& p) {
        envelope(p, QRectF(8, 5, 21, 14));
        envelope(p, QRectF(3, 13, 21, 14));
    };
}

} // namespace

BusyPointer::BusyPointer()
{
    if (qApp) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
}

BusyPointer::~BusyPointer()
{
    if (qApp) {
        QApplication::restoreOverrideCursor();
    }
}

QIcon messageIcon(const QString& key)
{
    return icons::drawn({16, 32}, drawingOf(key));
}

QPixmap messagePicture(const QString& key, int size)
{
    return icons::picture(size, drawingOf(key));
}

} // namespace msgparts
