// The person's own status writes, the choice between them and the group write,
// the status code look-up and the active flag.

#include "status/statuswrite.h"

#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "status/statuscommon.h"
#include "status/translog.h"

#include <memory>

using namespace platform;
using status::Resume;

namespace {

// The code a failed look-up leaves.
constexpr long long kCodeNotFound = 9999;

} // namespace

void subSetStatus(const QString& status)
{
    MainScreen& screen = mainScreen();
    const QStringList headers = screen.listHeaders();
    const qsizetype nameAt = headers.indexOf(QStringLiteral("Name"));
    if (nameAt >= 0) {
        gBoard.gintNameColumn = nameAt;
    }
    if (screen.listRowCount() == 0 || !screen.selectedItemIsSelected()) {
        subUpdateDefaultUsersRecord(status);
        return;
    }
    const QStringList selected = screen.selectedRowTexts(int(gBoard.gintNameColumn));
    if (selected.size() == 1 && selected.first() == gRun.gstrDefaultUser) {
        subUpdateDefaultUsersRecord(status);
        return;
    }
    if (screen.groupButtonEnabled()) {
        subUpdateSelectedUsersRecords(status);
    } else {
        MsgBox(QStringLiteral(" Your security setting only allows you to change YOUR OWN Status in this Group."),
               vbOKOnly);
    }
}

void subSetStatusCode(const QString& status)
{
    try {
        gRun.gintStatusCode = kCodeNotFound;
        const std::optional<long long> code = status::statusTypeCode(status);
        gRun.gintStatusCode = code.value_or(status::kCodeTypedByHand);
        if (code) {
            gRun.gintOwnStatusCode = *code;
            gRun.gstrCurrentStatus = status;
            mainScreen().setCaption(fnOwnStatusCaption());
        }
    } catch (const VbError& e) {
        Err.Set(e);
        MsgBox(QStringLiteral("modUser - subSetStatusCode") + QStringLiteral("\r\n") + QStringLiteral("Error=") +
                   Err.Description,
               vbOKOnly);
    }
}

// The row, the tracking mirror, the counter and the log row are one unit of
// change: committed together, or rolled back together. No failure of the row or
// the mirror is handled here: after the rollback it goes up to the caller. The
// counter's and the log's own answers run once the unit is rolled back.
void subUpdateDefaultUsersRecord(const QString& status)
{
    subOpenDatabase();
    const QString rowSql = status::employeeRowSql(gRun.gstrDefaultUser);
    Err.Clear();
    {
        // The code is looked up before the unit, so that its box never shows while
        // the write lock is held.
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(rowSql);
        if (rs->RecordCount() > 0) {
            subSetStatusCode(status);
            gRun.gstrCurrentStatus = status;
        }
    }
    // The screen saver's mark was the last change: this write is its end, not news.
    const bool blnLog = !gRun.gblnSuppressNextLog;
    gRun.gblnSuppressNextLog = false;
    fnRunUnit([&] {
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(rowSql);
        if (rs->RecordCount() > 0) {
            rs->MoveFirst();
            rs->Edit();
            status::writeStatusFields(*rs, status, gRun.gstrDefaultUser);
            rs->Update();
            rs->Close();
        }
        subExecuteSQL(status::trackingMirrorSql(status, gRun.gstrDefaultUser));
        subUpdateStatusCounter();
        if (blnLog) {
            subUpdateTransactionLog(status, gRun.gstrDueBack, gRun.gstrComment, QString());
        }
    });
    status::showStatusInTrayTip();
}

void subSetActiveFlag(const QString& flag)
{
    if (gRun.gstrDefaultUser.isEmpty()) {
        return;
    }
    const QString strProcedure = QStringLiteral("modUser - subSetActiveFlag event");
    const QString title = gRun.gstrProgramTitle + QStringLiteral(" - Set Active Flag Error");
    status::Trap trap([&](const VbError& e) {
        switch (e.number()) {
        case dao::errCannotUpdate:
            if (MsgBox(status::errorHead(strProcedure) + QStringLiteral("\r") +
                           QStringLiteral("Unable to update your 'Activity Status' at present. Probable cause - the "
                                          "Administrator has the database locked exclusively. This is usually only "
                                          "temporary - press Retry to continue or Cancel to abort the transaction."),
                       vbRetryCancel + vbQuestion, title) == vbRetry) {
                return Resume::Again;
            }
            return Resume::Exit;
        case dao::errCouldNotLockFile:
        case dao::errObjectInvalid:
        case dao::errExclusiveByAdmin:
            DoEvents();
            return Resume::Next;
        default:
            MsgBox(status::errorHead(strProcedure), vbOKOnly, title);
            return Resume::Next;
        }
    });

    std::unique_ptr<dao::Recordset> rs;
    const QString sql = status::employeeRowSql(gRun.gstrDefaultUser); // what a retry opens again
    trap([] { subOpenDatabase(); });
    trap([&] { rs = fnOpenSQL(sql); });
    if (!rs) {
        return; // the open was passed over: there is no set to write
    }
    trap([&] { rs->MoveFirst(); });
    if (!trap([&] { rs->Edit(); }) || rs->EditMode() == dao::dbEditNone) {
        return; // an edit passed over leaves nothing to write to
    }
    trap([&] { rs->Fields(QStringLiteral("ActiveFlag")) = flag; });
    // These two fill the globals for the first log row after start-up.
    trap([&] { gRun.gstrDueBack = rs->Fields(QStringLiteral("DueBack")).Text(); });
    trap([&] { gRun.gstrComment = rs->Fields(QStringLiteral("Comments")).Text(); });
    trap([&] { rs->Update(); });
    trap([&] { rs->Close(); });
    trap([] { subCloseDatabase(); });
}
