#include "platform/gui/guigateways.h"

#include "platform/gui/qtmessageboxes.h"
#include "platform/gui/qtshell.h"
#include "platform/msgbox.h"
#include "platform/shell.h"

namespace platform {

void installGuiGateways()
{
    if (!fileDrivenMessageBoxesRequested()) {
        setMessageBoxes(std::make_unique<QtMessageBoxes>());
    }
    const QString shellLog = qEnvironmentVariable("VESKOR_SHELL_LOG");
    if (!shellLog.isEmpty()) {
        setShell(std::make_unique<RecordingShell>(shellLog));
    } else {
        setShell(std::make_unique<QtShell>());
    }
}

} // namespace platform
