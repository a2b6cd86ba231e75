#include "messaging/gui/messagescreens.h"

void subShowMsgsPreview()
{
}

void subRefreshMsgsPreviewIfVisible()
{
}
