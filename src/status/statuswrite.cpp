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

// The code the look-up leaves while no row of StatusTypesTable has matched.
constexpr long long kCodeNotFound = 9999;
// The code of a status word typed by hand.
constexpr long long kCodeTypedByHand = 4;

} // namespace

void subSetStatus(const QString& status)
{
    MainScreen& screen = mainScreen();
    const QStringList headers = screen.listHeaders();
    const qsizetype nameAt = headers.indexOf(QStringLiteral("Name"));
    if (nameAt >= 0) {
        gintNameColumn = nameAt;
    }
    if (screen.listRowCount() == 0 || !screen.selectedItemIsSelected()) {
        subUpdateDefaultUsersRecord(status);
        return;
    }
    const QStringList selected = screen.selectedRowTexts(int(gintNameColumn));
    if (selected.size() == 1 && selected.first() == gstrDefaultUser) {
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
        gstrSQL = QStringLiteral("Select * from StatusTypesTable WHERE Status = ") + dao::quote(status);
        const std::unique_ptr<dao::Recordset> rs = fnDatabase().OpenRecordset(gstrSQL, dao::dbOpenDynaset);
        gintStatusCode = kCodeNotFound;
        if (rs->RecordCount() > 0) {
            // The engine's "=" ignores case; the upper-cased comparison decides, and the last match wins.
            for (rs->MoveFirst(); !rs->isEOF(); rs->MoveNext()) {
                if (rs->Fields(QStringLiteral("Status")).Text().toUpper() == status.toUpper()) {
                    gintStatusCode = status::wholeFromText(rs->Fields(QStringLiteral("StatusCode")).Text());
                    gintOwnStatusCode = gintStatusCode;
                    gstrCurrentStatus = status;
                    mainScreen().setCaption(fnOwnStatusCaption());
                }
            }
        }
        rs->Close();
        if (gintStatusCode == kCodeNotFound) {
            gintStatusCode = kCodeTypedByHand;
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
    gstrSQL = status::employeeRowSql(gstrDefaultUser);
    const QString rowSql = gstrSQL;
    Err.Clear();
    {
        // The code is looked up before the unit, so that its box never shows while
        // the write lock is held.
        const std::unique_ptr<dao::Recordset> rs = fnDatabase().OpenRecordset(rowSql, dao::dbOpenDynaset);
        if (rs->RecordCount() > 0) {
            subSetStatusCode(status);
            gstrCurrentStatus = status;
        }
    }
    // The screen saver's mark was the last change: this write is its end, not news.
    const bool blnLog = !gblnSuppressNextLog;
    gblnSuppressNextLog = false;
    fnRunUnit([&] {
        const std::unique_ptr<dao::Recordset> rs = fnDatabase().OpenRecordset(rowSql, dao::dbOpenDynaset);
        if (rs->RecordCount() > 0) {
            rs->MoveFirst();
            rs->Edit();
            status::writeStatusFields(*rs, status, gstrDefaultUser);
            rs->Update();
            rs->Close();
        }
        gstrSQL = status::trackingMirrorSql(status, gstrDefaultUser);
        fnDatabase().Execute(gstrSQL);
        subUpdateStatusCounter();
        if (blnLog) {
            subUpdateTransactionLog(status, gstrDueBack, gstrComment, QString());
        }
    });
    status::showStatusInTrayTip();
}

void subSetActiveFlag(const QString& flag)
{
    if (gstrDefaultUser.isEmpty()) {
        return;
    }
    const QString strProcedure = QStringLiteral("modUser - subSetActiveFlag event");
    const QString title = gstrProgramTitle + QStringLiteral(" - Set Active Flag Error");
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
    gstrSQL = status::employeeRowSql(gstrDefaultUser);
    // Boxes and waits let events run, and timers change gstrSQL: a retry opens this set.
    const QString sql = gstrSQL;
    trap([] { subOpenDatabase(); });
    trap([&] { rs = fnDatabase().OpenRecordset(sql, dao::dbOpenDynaset); });
    if (!rs) {
        return; // the open was passed over: there is no set to write
    }
    trap([&] { rs->MoveFirst(); });
    if (!trap([&] { rs->Edit(); }) || rs->EditMode() == dao::dbEditNone) {
        return; // an edit passed over leaves nothing to write to
    }
    trap([&] { rs->Fields(QStringLiteral("ActiveFlag")) = flag; });
    // These two fill the globals for the first log row after start-up.
    trap([&] { gstrDueBack = rs->Fields(QStringLiteral("DueBack")).Text(); });
    trap([&] { gstrComment = rs->Fields(QStringLiteral("Comments")).Text(); });
    trap([&] { rs->Update(); });
    trap([&] { rs->Close(); });
    trap([] { subCloseDatabase(); });
}
