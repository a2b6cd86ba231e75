#include "messaging/gui/messagescreens.h"

void MessagesToSelectionInitialize(QWidget*, const QString&, std::function<void(const QString&)>)
{
}
