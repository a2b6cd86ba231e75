#include "platform/gui/iconpainter.h"

#include <QPixmap>

namespace icons {

QPixmap picture(int size, const Drawing& draw)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 32.0, size / 32.0);
    draw(painter);
    return pixmap;
}

QIcon drawn(std::initializer_list<int> sizes, const Drawing& draw)
{
    QIcon icon;
    for (int size : sizes) {
        icon.addPixmap(picture(size, draw));
    }
    return icon;
}

QPen pen(const QColor& color, double width)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

} // namespace icons
