#pragma once
// VB's MsgBox as a QMessageBox: the button set, icon and default button of the
// flags, Escape only where VB's box has Cancel or No, and the VB answer code of
// the button pressed.

#include "platform/msgbox.h"

namespace platform {

class QtMessageBoxes : public MessageBoxes
{
public:
    int show(const QString& prompt, int flags, const QString& title) override;
};

} // namespace platform
