#include "kernel/forcedshutdown.h"

#include "kernel/globals.h"
#include "platform/mounts.h"
#include "platform/profile.h"
#include "platform/shell.h"

void subCheckINIForForcedShutDown()
{
    const QString value =
        platform::GetPrivateProfileString(QStringLiteral("ForceShutDown"), QStringLiteral("ForceShutDown"), QString(),
                                          200, gRun.gstrDatabasePath + QStringLiteral("forceshutdown.ini"));
    gRun.gblnForcedShutDown = value.toUpper() == QLatin1String("TRUE");
}

void subStartIniCheck(const QString& program, const QString& commandLine)
{
    // The line goes over as one argument: the client started again joins its
    // arguments with blanks, so it reads the same line back.
    QStringList arguments;
    if (!commandLine.isEmpty()) {
        arguments << commandLine;
    }
    platform::shell().startProgram(platform::nativePathOf(program), arguments);
}
