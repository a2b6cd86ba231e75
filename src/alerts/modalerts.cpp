#include "alerts/modalerts.h"

#include "kernel/globals.h"
#include "platform/shell.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <cmath>

namespace alerts {

namespace {

int gintLastAlpha = 255;

} // namespace

int fnAlphaForTransparency(int transparency)
{
    // The default rounding mode rounds a half to the even neighbour: 229.5 -> 230, 76.5 -> 76.
    const double alpha = std::nearbyint((100.0 - transparency) / 100.0 * 255.0);
    if (alpha < 0 || alpha > 255) {
        return 1;
    }
    return static_cast<int>(alpha);
}

void subSetWindowOpacity(QWidget* window, int alpha)
{
    gintLastAlpha = alpha;
    // A platform without window opacity keeps the window opaque; nothing to report.
    window->setWindowOpacity(alpha / 255.0);
}

int fnLastAlpha()
{
    return gintLastAlpha;
}

void subPlaySound(const QString& waveFile)
{
    platform::shell().playSound(gRun.gstrApplicationPath + waveFile);
}

void placeOnScreen(QWidget* window, double divisor)
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) {
        return;
    }
    const QRect area = screen->geometry();
    const QSize own = window->frameGeometry().size();
    window->move(area.left() + static_cast<int>((area.width() - own.width()) / divisor),
                 area.top() + static_cast<int>((area.height() - own.height()) / divisor));
}

QWidget* FindWindowByPartialTitle(const QString& text)
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isWindow() && widget->isVisible() && widget->windowTitle().contains(text)) {
            return widget;
        }
    }
    return nullptr;
}

void destroyWindow(QWidget* window)
{
    // Hidden now, so no later search finds it; deleted once the event that asked
    // for it (perhaps a click on this very window) is over.
    window->hide();
    window->deleteLater();
}

void subCloseAllAlerts()
{
    qsizetype screens = 0;
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        const Qt::WindowType type = widget->windowType();
        screens += (type == Qt::Window || type == Qt::Dialog) ? 1 : 0;
    }
    for (qsizetype pass = screens - 1; pass >= 0; --pass) {
        for (const QString& kind : {QStringLiteral("Status Change Alert"), QStringLiteral("New Message Alert")}) {
            if (QWidget* found = FindWindowByPartialTitle(kind)) {
                destroyWindow(found);
            }
        }
    }
}

} // namespace alerts
