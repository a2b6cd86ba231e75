#pragma once
// The client's gateways: message boxes on screen (unless VESKOR_MSGBOX_ANSWERS
// names a file of answers, which then keeps answering), a shell that uses the
// desktop's handlers and plays sounds, and presence read from the desktop's
// screen saver and logind over D-Bus. The client's main() calls this once the
// QApplication exists.

namespace platform {

void installGuiGateways();

} // namespace platform
