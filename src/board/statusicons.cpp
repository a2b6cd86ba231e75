// The status icons of ListViewMain's rows and the header's sort arrows. A status is
// a coloured disc, each family its own hue, most with a white sign inside so that
// the colour is not the only clue: In a tick, Out an arrow leaving, Busy a bar.
#include "board/statusicons.h"

#include "platform/gui/iconpainter.h"

#include <QHash>
#include <QPainterPath>
#include <QPixmap>
#include <QRadialGradient>
#include <cmath>
#include <iterator>

namespace {

using icons::pen;

// The codes of a new site's status types, and the marks set by presence sensing.
enum Code : long long
{
    kOut = 1,
    kBusy = 2,
    kIn = 3,
    kTyped = 4,
    kLunch = 5,
    kMeeting = 6,
    kHoliday = 7,
    kSick = 8,
    kScreenSaver = 10,
    kLocked = 11
};

const QColor kWhite(Qt::white);

void disc(QPainter& p, const QColor& color)
{
    QRadialGradient shade(QPointF(12, 10), 18);
    shade.setColorAt(0, color.lighter(135));
    shade.setColorAt(1, color.darker(110));
    p.setPen(QPen(color.darker(160), 1.5));
    p.setBrush(shade);
    p.drawEllipse(QPointF(16, 16), 13, 13);
    p.setBrush(Qt::NoBrush);
}

void tick(QPainter& p)
{
    p.setPen(pen(kWhite, 3.6));
    p.drawPolyline(QPolygonF({QPointF(9.5, 16.5), QPointF(14, 21), QPointF(22.5, 11.5)}));
}

void arrowLeaving(QPainter& p)
{
    p.setPen(pen(kWhite, 3.4));
    p.drawLine(QPointF(9, 16), QPointF(22, 16));
    p.drawPolyline(QPolygonF({QPointF(17, 11), QPointF(22.5, 16), QPointF(17, 21)}));
}

void bar(QPainter& p)
{
    p.setPen(pen(kWhite, 4.5));
    p.drawLine(QPointF(10, 16), QPointF(22, 16));
}

void cup(QPainter& p)
{
    p.setPen(pen(kWhite, 2.6));
    QPainterPath body;
    body.moveTo(9, 12);
    body.lineTo(20, 12);
    body.lineTo(19, 20);
    body.quadTo(18.5, 22.5, 16, 22.5);
    body.lineTo(13, 22.5);
    body.quadTo(10.5, 22.5, 10, 20);
    body.closeSubpath();
    p.drawPath(body);
    p.drawArc(QRectF(18, 13.5, 6, 5.5), -90 * 16, 180 * 16);
}

void people(QPainter& p)
{
    p.setPen(Qt::NoPen);
    p.setBrush(kWhite);
    for (double x : {11.5, 20.5}) {
        p.drawEllipse(QPointF(x, 12.5), 3, 3);
        p.drawChord(QRectF(x - 5, 16.5, 10, 10), 0, 180 * 16);
    }
    p.setBrush(Qt::NoBrush);
}

void sun(QPainter& p)
{
    p.setPen(Qt::NoPen);
    p.setBrush(kWhite);
    p.drawEllipse(QPointF(16, 16), 4.2, 4.2);
    p.setPen(pen(kWhite, 2.2));
    for (int i = 0; i < 8; ++i) {
        const double a = i * M_PI / 4;
        p.drawLine(QPointF(16 + 6.6 * std::cos(a), 16 + 6.6 * std::sin(a)),
                   QPointF(16 + 9.4 * std::cos(a), 16 + 9.4 * std::sin(a)));
    }
    p.setBrush(Qt::NoBrush);
}

void cross(QPainter& p)
{
    p.setPen(Qt::NoPen);
    p.setBrush(kWhite);
    p.drawRoundedRect(QRectF(13.5, 8.5, 5, 15), 1, 1);
    p.drawRoundedRect(QRectF(8.5, 13.5, 15, 5), 1, 1);
    p.setBrush(Qt::NoBrush);
}

// A status typed by hand: a pencil across a grey disc.
void pencil(QPainter& p)
{
    p.save();
    p.translate(16, 16);
    p.rotate(-45);
    p.setPen(QPen(icons::kInk, 1.2));
    p.setBrush(QColor(0xfb, 0xc0, 0x2d));
    p.drawRect(QRectF(-8, -2.6, 11, 5.2));
    p.setBrush(QColor(0xf4, 0xd9, 0xb0));
    p.drawPolygon(QPolygonF({QPointF(3, -2.6), QPointF(8.5, 0), QPointF(3, 2.6)}));
    p.setBrush(QColor(0xef, 0x9a, 0x9a));
    p.drawRect(QRectF(-10.5, -2.6, 2.5, 5.2));
    p.restore();
}

void moon(QPainter& p)
{
    QPainterPath crescent;
    crescent.addEllipse(QPointF(15, 16), 8, 8);
    QPainterPath bite;
    bite.addEllipse(QPointF(19.5, 12.5), 7, 7);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0xff, 0xe0, 0x82));
    p.drawPath(crescent.subtracted(bite));
    p.drawEllipse(QPointF(22, 20.5), 1.2, 1.2);
    p.setBrush(Qt::NoBrush);
}

void padlock(QPainter& p)
{
    p.setPen(pen(QColor(0x78, 0x90, 0x9c), 3.2));
    p.drawArc(QRectF(10, 4, 12, 14), 0, 180 * 16);
    p.drawLine(QPointF(10, 11), QPointF(10, 15));
    p.drawLine(QPointF(22, 11), QPointF(22, 15));
    QLinearGradient gold(QPointF(0, 14), QPointF(0, 29));
    gold.setColorAt(0, QColor(0xff, 0xd5, 0x4f));
    gold.setColorAt(1, QColor(0xf5, 0x7f, 0x17));
    p.setPen(QPen(QColor(0xa0, 0x60, 0x10), 1.4));
    p.setBrush(gold);
    p.drawRoundedRect(QRectF(6.5, 14, 19, 15), 3, 3);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x5d, 0x40, 0x37));
    p.drawEllipse(QPointF(16, 20), 2.2, 2.2);
    p.drawRect(QRectF(15.1, 20, 1.8, 5));
    p.setBrush(Qt::NoBrush);
}

// Codes without a drawing of their own (a site's own status types) take turns
// through colours kept away from the families above, so none passes for In or Out.
QColor otherHue(long long code)
{
    static const QColor kOthers[] = {
        QColor(0x8d, 0x6e, 0x63), // brown
        QColor(0x00, 0xac, 0xc1), // cyan
        QColor(0x5c, 0x6b, 0xc0), // indigo
        QColor(0x9e, 0x9d, 0x24), // olive
        QColor(0xf4, 0x51, 0x1e), // deep orange
        QColor(0x78, 0x90, 0x9c), // blue grey
    };
    return kOthers[std::llabs(code) % std::size(kOthers)];
}

void drawStatus(QPainter& p, long long code)
{
    switch (code) {
    case kIn:
        disc(p, QColor(0x2e, 0xa0, 0x43));
        return tick(p);
    case kOut:
        disc(p, QColor(0xd3, 0x2f, 0x2f));
        return arrowLeaving(p);
    case kBusy:
        disc(p, QColor(0xf2, 0xa9, 0x00));
        return bar(p);
    case kTyped:
        disc(p, QColor(0xb0, 0xb6, 0xba));
        return pencil(p);
    case kLunch:
        disc(p, QColor(0x00, 0x96, 0x88));
        return cup(p);
    case kMeeting:
        disc(p, QColor(0x39, 0x6b, 0xd8));
        return people(p);
    case kHoliday:
        disc(p, QColor(0x8e, 0x44, 0xad));
        return sun(p);
    case kSick:
        disc(p, QColor(0xd8, 0x3a, 0x86));
        return cross(p);
    case kScreenSaver:
        disc(p, QColor(0x1a, 0x23, 0x7e));
        return moon(p);
    case kLocked:
        return padlock(p);
    case 0: // no code known yet
        return disc(p, QColor(0xc5, 0xca, 0xcd));
    default:
        disc(p, otherHue(code));
    }
}

void sortArrow(QPainter& p, bool up)
{
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x60, 0x6a, 0x70));
    const double tip = up ? 10 : 22;
    const double base = up ? 21 : 11;
    p.drawPolygon(QPolygonF({QPointF(9, base), QPointF(23, base), QPointF(16, tip)}));
}

} // namespace

// Drawn once per code and kept: a rebuild of the list asks for one icon per row.
QIcon statusIcon(long long statusCode)
{
    static QHash<long long, QIcon> made;
    auto found = made.constFind(statusCode);
    if (found != made.constEnd()) {
        return *found;
    }
    const QIcon icon = icons::drawn({16, 32}, [statusCode](QPainter& p) { drawStatus(p, statusCode); });
    made.insert(statusCode, icon);
    return icon;
}

QIcon headerIcon(const QString& key)
{
    static QHash<QString, QIcon> made;
    auto found = made.constFind(key);
    if (found != made.constEnd()) {
        return *found;
    }
    const bool up = key == QLatin1String("ArrowUp");
    const bool down = key == QLatin1String("ArrowDown");
    // "ArrowClear" (or any other key) keeps the size of the arrows, so the header text does not jump.
    const QIcon icon = icons::drawn({16}, [up, down](QPainter& p) {
        if (up || down) {
            sortArrow(p, up);
        }
    });
    made.insert(key, icon);
    return icon;
}

// A card of rows, as the dragged people; over the list that takes them it gets a
// plus in the accent colour, elsewhere a grey stop.
QPixmap dragCursor(bool overTarget)
{
    static const QPixmap drop = icons::drawn({32}, [](QPainter& p) {
                                    p.setPen(icons::pen(icons::kInk, 2));
                                    p.setBrush(Qt::white);
                                    p.drawRect(QRectF(2, 2, 18, 14));
                                    p.drawLine(QPointF(5, 7), QPointF(17, 7));
                                    p.drawLine(QPointF(5, 11), QPointF(14, 11));
                                    p.setPen(icons::pen(icons::kAccent, 4));
                                    p.drawLine(QPointF(24, 16), QPointF(24, 30));
                                    p.drawLine(QPointF(17, 23), QPointF(31, 23));
                                }).pixmap(32);
    static const QPixmap drag = icons::drawn({32}, [](QPainter& p) {
                                    p.setPen(icons::pen(icons::kInk, 2));
                                    p.setBrush(Qt::white);
                                    p.drawRect(QRectF(2, 2, 18, 14));
                                    p.drawLine(QPointF(5, 7), QPointF(17, 7));
                                    p.drawLine(QPointF(5, 11), QPointF(14, 11));
                                    p.setPen(icons::pen(QColor(0x90, 0x90, 0x90), 3));
                                    p.setBrush(Qt::NoBrush);
                                    p.drawEllipse(QPointF(24, 23), 6, 6);
                                    p.drawLine(QPointF(20, 27), QPointF(28, 19));
                                }).pixmap(32);
    return overTarget ? drop : drag;
}
