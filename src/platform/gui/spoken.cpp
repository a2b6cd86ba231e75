#include "platform/gui/spoken.h"

QString spokenCaption(const QString& caption)
{
    QString shown = caption;
    return shown.replace(QLatin1String("&&"), QLatin1String("\x01"))
        .remove(QLatin1Char('&'))
        .replace(QLatin1Char('\x01'), QLatin1Char('&'));
}
