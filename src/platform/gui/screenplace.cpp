#include "platform/gui/screenplace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

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
