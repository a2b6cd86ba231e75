// Placeholder set: empty icons until the drawn set lands.
#include "board/statusicons.h"

QIcon statusIcon(long long)
{
    return {};
}

QIcon headerIcon(const QString&)
{
    return {};
}

QIcon toolbarIcon(int, bool)
{
    return {};
}
