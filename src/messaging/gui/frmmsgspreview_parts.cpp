#include "messaging/gui/frmmsgspreview_parts.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QWidget>
#include <functional>

namespace msgspreview {

namespace {

const QColor kPaper(0xfa, 0xfa, 0xfa);
const QColor kAccent(0x1e, 0x88, 0xe5);
const QColor kRed(0xd3, 0x2f, 0x2f);

using Drawing = std::function<void(QPainter&, const QColor& ink)>;

QPen line(const QColor& color, double width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void envelope(QPainter& p, const QColor& ink, const QRectF& r)
{
    p.setPen(line(ink, 1.6));
    p.setBrush(kPaper);
    p.drawRect(r);
    p.drawPolyline(QPolygonF({r.topLeft(), QPointF(r.center().x(), r.top() + r.height() * 0.6), r.topRight()}));
}

// An arrow along y = 16 from x0 to x1, its head at x1.
void arrow(QPainter& p, const QColor& color, double x0, double x1, double y = 16)
{
    const double head = x1 > x0 ? -6 : 6;
    p.setPen(line(color, 3));
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

Drawing drawingOf(const QString& key)
{
    if (key == QLatin1String("View")) {
        return [](QPainter& p, const QColor& ink) {
            envelope(p, ink, QRectF(3, 5, 20, 14));
            p.setPen(line(ink, 3));
            p.setBrush(QColor(0xe3, 0xf2, 0xfd));
            p.drawEllipse(QPointF(20, 20), 6, 6);
            p.drawLine(QPointF(24.5, 24.5), QPointF(29, 29));
        };
    }
    if (key == QLatin1String("New")) {
        return [](QPainter& p, const QColor& ink) {
            envelope(p, ink, QRectF(3, 7, 22, 15));
            p.setPen(line(QColor(0x2e, 0xa0, 0x43), 3));
            p.drawLine(QPointF(25, 18), QPointF(25, 29));
            p.drawLine(QPointF(19.5, 23.5), QPointF(30.5, 23.5));
        };
    }
    if (key == QLatin1String("Reply")) {
        return [](QPainter& p, const QColor&) {
            arrow(p, kAccent, 27, 5);
        };
    }
    if (key == QLatin1String("Reply All")) {
        return [](QPainter& p, const QColor&) {
            arrow(p, kAccent, 27, 5, 10);
            arrow(p, kAccent, 27, 5, 22);
        };
    }
    if (key == QLatin1String("Forward")) {
        return [](QPainter& p, const QColor&) {
            arrow(p, kAccent, 5, 27);
        };
    }
    if (key == QLatin1String("eMail")) {
        return [](QPainter& p, const QColor&) {
            letter(p, kAccent, QStringLiteral("@"));
        };
    }
    if (key == QLatin1String("QUIL")) {
        return [](QPainter& p, const QColor& ink) {
            p.setPen(line(ink, 1.6));
            p.setBrush(kAccent);
            p.drawRoundedRect(QRectF(3.5, 5, 25, 17), 6, 6);
            p.drawPolygon(QPolygonF({QPointF(8, 21), QPointF(7, 28.5), QPointF(15, 22)}));
        };
    }
    if (key == QLatin1String("Print")) {
        return [](QPainter& p, const QColor& ink) {
            p.setPen(line(ink, 1.6));
            p.setBrush(kPaper);
            p.drawRect(QRectF(9.5, 3.5, 13, 10));
            p.setBrush(QColor(0x60, 0x7d, 0x8b));
            p.drawRoundedRect(QRectF(3.5, 12, 25, 11), 2.5, 2.5);
            p.setBrush(kPaper);
            p.drawRect(QRectF(9.5, 18.5, 13, 10));
        };
    }
    if (key == QLatin1String("Delete")) {
        return [](QPainter& p, const QColor&) {
            p.setPen(line(kRed, 4));
            p.drawLine(QPointF(7, 7), QPointF(25, 25));
            p.drawLine(QPointF(25, 7), QPointF(7, 25));
        };
    }
    if (key == QLatin1String("Refresh")) {
        return [](QPainter& p, const QColor&) {
            p.setPen(line(QColor(0x2e, 0xa0, 0x43), 3.2));
            p.drawArc(QRectF(6, 6, 20, 20), 60 * 16, 280 * 16);
            p.drawPolyline(QPolygonF({QPointF(15, 3), QPointF(21, 7.5), QPointF(15, 12)}));
        };
    }
    if (key == QLatin1String("Help")) {
        return [](QPainter& p, const QColor&) {
            letter(p, kAccent, QStringLiteral("?"));
        };
    }
    return [](QPainter& p, const QColor& ink) {
        envelope(p, ink, QRectF(8, 5, 21, 14));
        envelope(p, ink, QRectF(3, 13, 21, 14));
    };
}

QPixmap drawn(const Drawing& draw, int size, const QColor& ink)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 32.0, size / 32.0);
    draw(painter, ink);
    return pixmap;
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

void centreOnScreen(QWidget* screen)
{
    const QScreen* display = screen->screen() ? screen->screen() : QGuiApplication::primaryScreen();
    if (!display) {
        return;
    }
    const QRect area = display->geometry();
    screen->move(area.left() + (area.width() - screen->width()) / 2,
                 area.top() + (area.height() - screen->height()) / 2);
}

QIcon buttonIcon(const QString& key)
{
    const Drawing draw = drawingOf(key);
    QIcon icon;
    for (int size : {16, 32}) {
        icon.addPixmap(drawn(draw, size, QColor(0x37, 0x47, 0x4f)), QIcon::Normal);
        icon.addPixmap(drawn(draw, size, Qt::black), QIcon::Active);
    }
    return icon;
}

} // namespace msgspreview
