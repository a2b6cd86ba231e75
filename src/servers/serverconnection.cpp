#include "servers/serverconnection.h"

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/mounts.h"

#include <QFileInfo>

namespace servers {

QString gstrRemoteDataPath;

bool FileExists(const QString& path)
{
    const QString native = platform::nativePathOf(path);
    // A share that is not mounted keeps its backslashes; it is nowhere on this machine.
    if (native.startsWith(QLatin1String("\\\\"))) {
        return false;
    }
    const QFileInfo file(native);
    return file.exists() && file.isFile();
}

void dropDatabaseHandle()
{
    ResumeNext([] {
        if (gRun.gdbDatabase) {
            gRun.gdbDatabase->Close();
        }
    });
    gRun.gdbDatabase.reset();
    gRun.gblnDatabaseClosed = true;
}

void subConnectHome()
{
    gRun.gstrCurrentDatabasePath = gRun.gstrDatabasePath;
    MainScreen& board = mainScreen();
    // The group read opens afresh: the handle to the other site goes, the home file is opened.
    board.subReadGroups();
    gRun.gstrCurrentGroup = QStringLiteral("Everyone");
    board.setCaption(gRun.gstrProgramTitle + QStringLiteral(" - [") + gRun.gstrDefaultUser + QStringLiteral("]"));
    board.selectGroup(gRun.gstrCurrentGroup);
    gRun.gblnRemoteConnection = false;
    board.setPanelText(2, gRun.gstrDatabasePath);
    board.subLoadToolBarButtons();
}

} // namespace servers
