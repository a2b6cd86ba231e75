// The fourteen fixed pictures of ToolbarMain, in the buttons' order: simple
// glyphs in one dark ink with one accent colour, so the row reads as one set.
#include "platform/gui/iconpainter.h"
#include "board/statusicons.h"

#include <QHash>
#include <QLinearGradient>
#include <QPainterPath>
#include <cmath>

namespace {

using icons::kAccent;
using icons::kInk;
using icons::pen;

const QColor kPaper(0xfa, 0xfa, 0xfa);
const QColor kGreen(0x2e, 0xa0, 0x43);

void magnifier(QPainter& p)
{
    p.setPen(pen(kInk, 4.5));
    p.drawLine(QPointF(20, 20), QPointF(27, 27));
    p.setPen(pen(kInk, 3));
    p.setBrush(QColor(0xe3, 0xf2, 0xfd));
    p.drawEllipse(QPointF(13.5, 13.5), 8.5, 8.5);
}

void pencil(QPainter& p)
{
    p.translate(16, 16);
    p.rotate(-45);
    p.setPen(QPen(kInk, 1.6));
    p.setBrush(QColor(0xfb, 0xc0, 0x2d));
    p.drawRect(QRectF(-10, -4, 16, 8));
    p.setBrush(QColor(0xf4, 0xd9, 0xb0));
    p.drawPolygon(QPolygonF({QPointF(6, -4), QPointF(13, 0), QPointF(6, 4)}));
    p.setBrush(kInk);
    p.drawPolygon(QPolygonF({QPointF(11, -1.2), QPointF(13, 0), QPointF(11, 1.2)}));
    p.setBrush(QColor(0xef, 0x9a, 0x9a));
    p.drawRect(QRectF(-14, -4, 4, 8));
}

void person(QPainter& p, QPointF head, double scale, const QColor& color)
{
    p.setPen(Qt::NoPen);
    p.setBrush(color);
    p.drawEllipse(head, 3.6 * scale, 3.6 * scale);
    p.drawChord(QRectF(head.x() - 6.5 * scale, head.y() + 4.5 * scale, 13 * scale, 14 * scale), 0, 180 * 16);
}

void group(QPainter& p)
{
    person(p, QPointF(9, 10), 0.85, QColor(0x90, 0xa4, 0xae));
    person(p, QPointF(23, 10), 0.85, QColor(0x90, 0xa4, 0xae));
    person(p, QPointF(16, 13), 1.05, kAccent);
}

void arcArrow(QPainter& p, double startDeg, double spanDeg)
{
    const QRectF box(6, 6, 20, 20);
    p.setPen(pen(kGreen, 3.2));
    p.drawArc(box, int(startDeg * 16), int(spanDeg * 16));
    // The head at the arc's end, pointing along the turn (counter-clockwise on screen).
    const double end = (startDeg + spanDeg) * M_PI / 180;
    const QPointF tip(16 + 10 * std::cos(end), 16 - 10 * std::sin(end));
    const QPointF along(-std::sin(end), -std::cos(end));
    const QPointF out(std::cos(end), -std::sin(end));
    p.setPen(Qt::NoPen);
    p.setBrush(kGreen);
    p.drawPolygon(QPolygonF({tip + along * 5, tip + out * 4.5, tip - out * 4.5}));
}

void refresh(QPainter& p)
{
    arcArrow(p, 20, 140);
    arcArrow(p, 200, 140);
}

void server(QPainter& p)
{
    QLinearGradient metal(QPointF(9, 0), QPointF(23, 0));
    metal.setColorAt(0, QColor(0x78, 0x90, 0x9c));
    metal.setColorAt(1, QColor(0x45, 0x5a, 0x64));
    p.setPen(QPen(kInk, 1.4));
    p.setBrush(metal);
    p.drawRoundedRect(QRectF(8.5, 3.5, 15, 25), 2, 2);
    p.setPen(pen(QColor(0xcf, 0xd8, 0xdc), 1.8));
    for (double y : {9.0, 13.5, 18.0}) {
        p.drawLine(QPointF(12, y), QPointF(20, y));
    }
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x76, 0xff, 0x03));
    p.drawEllipse(QPointF(19.5, 24), 1.6, 1.6);
}

void house(QPainter& p)
{
    p.setPen(QPen(kInk, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(QColor(0xff, 0xf3, 0xe0));
    p.drawRect(QRectF(8, 15, 16, 13));
    p.setBrush(QColor(0xd3, 0x2f, 0x2f));
    p.drawPolygon(QPolygonF({QPointF(3.5, 16.5), QPointF(16, 4.5), QPointF(28.5, 16.5)}));
    p.setBrush(QColor(0x8d, 0x6e, 0x63));
    p.drawRect(QRectF(13.5, 20, 5, 8));
}

void envelope(QPainter& p, const QRectF& r)
{
    p.setPen(QPen(kInk, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(kPaper);
    p.drawRect(r);
    p.drawPolyline(QPolygonF({r.topLeft(), QPointF(r.center().x(), r.top() + r.height() * 0.6), r.topRight()}));
}

void newMessage(QPainter& p)
{
    envelope(p, QRectF(3, 7, 22, 15));
    p.setPen(QPen(Qt::white, 1.2));
    p.setBrush(kGreen);
    p.drawEllipse(QPointF(24, 23), 6.5, 6.5);
    p.setPen(pen(Qt::white, 2.4));
    p.drawLine(QPointF(24, 19.5), QPointF(24, 26.5));
    p.drawLine(QPointF(20.5, 23), QPointF(27.5, 23));
}

void envelopes(QPainter& p)
{
    envelope(p, QRectF(8, 5, 21, 14));
    envelope(p, QRectF(3, 13, 21, 14));
}

void at(QPainter& p)
{
    p.setPen(pen(kAccent, 3));
    p.drawEllipse(QPointF(16, 16), 4.8, 4.8);
    QPainterPath tail;
    tail.moveTo(20.8, 11);
    tail.lineTo(20.8, 18.5);
    tail.quadTo(21.5, 22, 24.5, 21.5);
    tail.quadTo(28, 20.5, 28, 16);
    tail.arcTo(QRectF(4, 4, 24, 24), 0, 300);
    p.drawPath(tail);
}

void speechBubble(QPainter& p)
{
    QPainterPath bubble;
    bubble.addRoundedRect(QRectF(3.5, 5, 25, 17), 6, 6);
    QPainterPath tail;
    tail.addPolygon(QPolygonF({QPointF(8, 20), QPointF(7, 28.5), QPointF(15, 21)}));
    p.setPen(QPen(kAccent.darker(130), 1.4));
    p.setBrush(kAccent);
    p.drawPath(bubble.united(tail));
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    for (double x : {10.5, 16.0, 21.5}) {
        p.drawEllipse(QPointF(x, 13.5), 1.9, 1.9);
    }
}

void gear(QPainter& p)
{
    QPainterPath wheel;
    wheel.addEllipse(QPointF(16, 16), 9.5, 9.5);
    for (int i = 0; i < 8; ++i) {
        QTransform turn;
        turn.translate(16, 16);
        turn.rotate(i * 45);
        QPainterPath tooth;
        tooth.addRoundedRect(QRectF(-3, -13.5, 6, 6), 1, 1);
        wheel = wheel.united(turn.map(tooth));
    }
    QPainterPath hole;
    hole.addEllipse(QPointF(16, 16), 4, 4);
    p.setPen(QPen(kInk.darker(120), 1.2));
    p.setBrush(QColor(0x60, 0x7d, 0x8b));
    p.drawPath(wheel.subtracted(hole));
}

void printer(QPainter& p)
{
    p.setPen(QPen(kInk, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(kPaper);
    p.drawRect(QRectF(9.5, 3.5, 13, 10));
    p.setBrush(QColor(0x60, 0x7d, 0x8b));
    p.drawRoundedRect(QRectF(3.5, 12, 25, 11), 2.5, 2.5);
    p.setBrush(kPaper);
    p.drawRect(QRectF(9.5, 18.5, 13, 10));
    p.setPen(pen(QColor(0x90, 0xa4, 0xae), 1.2));
    p.drawLine(QPointF(12, 22), QPointF(20, 22));
    p.drawLine(QPointF(12, 25), QPointF(18, 25));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x76, 0xff, 0x03));
    p.drawEllipse(QPointF(25, 15.5), 1.3, 1.3);
}

void info(QPainter& p)
{
    p.setPen(QPen(kAccent.darker(140), 1.4));
    p.setBrush(kAccent);
    p.drawEllipse(QPointF(16, 16), 13, 13);
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::white);
    p.drawEllipse(QPointF(16, 9.5), 2.3, 2.3);
    p.drawRoundedRect(QRectF(14, 13.5, 4, 11.5), 1.2, 1.2);
}

void door(QPainter& p)
{
    p.setPen(QPen(kInk, 1.4));
    p.setBrush(QColor(0x8d, 0x6e, 0x63));
    p.drawRect(QRectF(4.5, 3.5, 14, 25));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xff, 0xd5, 0x4f));
    p.drawEllipse(QPointF(15.5, 16.5), 1.5, 1.5);
    p.setPen(pen(QColor(0xd3, 0x2f, 0x2f), 3));
    p.drawLine(QPointF(18, 16), QPointF(28, 16));
    p.drawPolyline(QPolygonF({QPointF(24, 11.5), QPointF(28.5, 16), QPointF(24, 20.5)}));
}

using Glyph = void (*)(QPainter&);

// Search, Change, Group, Refresh, Servers, Home, New Message, Preview, eMail,
// QUIL, Options, Print, About, Exit.
const Glyph kGlyphs[] = {magnifier, pencil, group,        refresh, server,  house, newMessage,
                         envelopes, at,     speechBubble, gear,    printer, info,  door};

} // namespace

QIcon toolbarIcon(int position, bool large)
{
    if (position < 1 || position > int(std::size(kGlyphs))) {
        return {};
    }
    static QHash<int, QIcon> made;
    const int key = position * 2 + (large ? 1 : 0);
    auto found = made.constFind(key);
    if (found != made.constEnd()) {
        return *found;
    }
    const Glyph glyph = kGlyphs[position - 1];
    const QIcon icon = large ? icons::drawn({24, 32, 48}, glyph) : icons::drawn({16, 24}, glyph);
    made.insert(key, icon);
    return icon;
}
