#include "start/startup.h"

#include "kernel/globals.h"
#include "platform/clock.h"
#include "platform/identity.h"
#include "platform/mounts.h"
#include "platform/process.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString kUncStart = QStringLiteral("\\\\");
// GetComputerNameA's buffer: 32 characters with the terminator.
constexpr int kComputerNameBuffer = 32;
// subWaitTwoSeconds: the pause between two looks at the clock.
constexpr int kWaitPollMs = 50;

} // namespace

QString fnUNCPathOf(const QString& path)
{
    if (path.startsWith(kUncStart)) {
        return path;
    }
    return platform::uncPathOf(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
}

QString withClosingSeparator(const QString& path)
{
    const QString separator = path.startsWith(kUncStart) ? QStringLiteral("\\") : QStringLiteral("/");
    return path.endsWith(separator) ? path : path + separator;
}

void subGetComputerName()
{
    gRun.gstrComputerName = platform::identity().computerName().left(kComputerNameBuffer - 1);
}

void subWaitTwoSeconds()
{
    const double base = static_cast<long long>(platform::Timer());
    for (;;) {
        const double now = platform::Timer();
        // Past midnight the clock starts again at 0: that, too, ends the wait.
        if (now >= base + 2 || now < base) {
            return;
        }
        platform::DoEvents();
        platform::Sleep(kWaitPollMs);
    }
}
