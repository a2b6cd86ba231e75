#include "messaging/gui/messagescreens.h"

QString gstrMessageAction;

void subOpenMessage(QWidget*, long long)
{
}
