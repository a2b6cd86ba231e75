// The status and group screens' answer to a failed write.
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/msgbox.h"
#include "platform/process.h"

using namespace platform;

namespace {

// The engine has waited the lock out already when one of these arrives: the
// other client still holds the row or the file.
bool isLockHeld(long long number)
{
    switch (number) {
    case dao::errCannotUpdate:
    case dao::errLockedByUser:
    case dao::errRecordLocked:
    case dao::errCouldNotLockFile:
        return true;
    default:
        return false;
    }
}

constexpr int kQuietTurns = 100;

} // namespace

int fnDatabaseBusyResponse(const QString& description, long long errNumber, const QString& procedureName)
{
    Q_UNUSED(procedureName); // the boxes do not name it
    mainScreen().setBusyPointer(false);
    int answer = vbCancel;
    if (isLockHeld(errNumber)) {
        if (gRun.gintDatabaseRetryCount == 0) {
            for (int turn = 0; turn < kQuietTurns; ++turn) {
                DoEvents();
            }
            ++gRun.gintDatabaseRetryCount;
            answer = vbRetry;
        } else {
            answer = MsgBox(QStringLiteral("The database is currently updating.  Would you like to retry ?"),
                            vbYesNo + vbQuestion, gRun.gstrProgramTitle) == vbYes
                         ? vbRetry
                         : vbCancel;
            gRun.gintDatabaseRetryCount = 0;
        }
    } else {
        errorbox::showUpdate(errNumber, description);
    }
    return answer;
}
