// The group write: the same status for every selected row of the board, by a
// person with the right to change others.

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
#include "status/statuswrite.h"
#include "status/translog.h"

#include <memory>

using namespace platform;
using status::Resume;

namespace {

const QString kProcedure = QStringLiteral("modUser - subUpdateSelectedUsersRecords event");

QString setStatusErrorTitle()
{
    return gRun.gstrProgramTitle + QStringLiteral(" - Set Status Error");
}

QString corruptedText()
{
    return status::errorHead(kProcedure) + QStringLiteral("\r") + QStringLiteral("Please inform the ") +
           gRun.gstrProgramTitle +
           QStringLiteral(" administrator that the database is corrupted & requires immediate repair.");
}

// The handler of the group write. stage names the step under way, for the
// diagnostic log row of a lock conflict.
Resume answerGroupWriteError(const VbError& e, const QString& stage)
{
    const QString title = setStatusErrorTitle();
    switch (e.number()) {
    case dao::errCannotUpdate:
        MsgBox(status::errorHead(kProcedure), vbOKOnly, title);
        if (MsgBox(status::errorHead(kProcedure) + QStringLiteral("\r") +
                       QStringLiteral("Unable to update your status at present. Probable cause - the Administrator "
                                      "has the database locked exclusively. This is usually only temporary - press "
                                      "Retry to continue or Cancel to abort the status change."),
                   vbRetryCancel + vbQuestion, title) == vbRetry) {
            return Resume::Again;
        }
        return Resume::Exit; // the unit was rolled back: nothing is written or counted
    case 3709:               // a damaged index: nothing more can be trusted
        MsgBox(corruptedText(), vbOKOnly + vbCritical, title);
        subCloseDatabase();
        mainScreen().subUnloadAllForms();
        mainScreen().unload();
        End();
    case dao::errInvalidArgument:
        MsgBox(corruptedText(), vbOKOnly + vbCritical, title);
        subCloseDatabase();
        return Resume::Exit;
    case dao::errCouldNotLockFile:
    case dao::errObjectInvalid: {
        // Another client's lock did not pass: the change is passed over, with a log row to show for it.
        const QString note = stage + QStringLiteral(" - ") + status::errorHead(kProcedure);
        subUpdateTransactionLog(QStringLiteral("Error"), QStringLiteral("subUpdateSelectedUsersRecords"), note,
                                QString());
        DoEvents();
        return Resume::Next;
    }
    case dao::errNoCurrentRecord:
        MsgBox(status::errorHead(kProcedure), vbOKOnly, title);
        return Resume::Exit;
    default:
        MsgBox(status::errorHead(kProcedure), vbOKOnly, title);
        return Resume::Next;
    }
}

} // namespace

// Every selected row, its mirror and log row, and the counter raised once, in one
// unit of change. A failure rolls the whole unit back before the handler answers:
// Retry runs the unit again, any other answer ends the routine with nothing of
// the change written.
void subUpdateSelectedUsersRecords(const QString& status)
{
    const QStringList names = mainScreen().selectedRowTexts(int(gBoard.gintNameColumn));
    if (names.isEmpty()) {
        return;
    }
    subOpenDatabase();
    QString strStage;
    const auto writeAll = [&] {
        for (const QString& listed : names) {
            const QString name = listed.trimmed();
            strStage = QStringLiteral("OpenRecordset");
            const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(status::employeeRowSql(name));
            if (rs->RecordCount() == 0) {
                continue; // no such row: nothing further for this one
            }
            rs->MoveFirst();
            subSetStatusCode(status);
            strStage = QStringLiteral("rstLocal.Edit");
            rs->Edit();
            // The stamp and the comment rule are the changer's own, as are the globals cleared.
            status::writeStatusFields(*rs, status, gRun.gstrDefaultUser.trimmed());
            strStage = QStringLiteral("Update");
            rs->Update();
            strStage = QStringLiteral("EmployeeStatusTracking");
            subExecuteSQL(status::trackingMirrorSql(status, name));
            strStage = QStringLiteral("subUpdateTransactionLog");
            subUpdateTransactionLog(status, gRun.gstrDueBack, gRun.gstrComment, name);
        }
        subUpdateStatusCounter();
    };
    for (;;) {
        Resume answer = Resume::Exit;
        try {
            if (!fnRunUnit(writeAll)) {
                return; // the counter's or the log's own answer gave the change up
            }
            break;
        } catch (const VbError& e) {
            Err.Set(e);
            answer = answerGroupWriteError(e, strStage);
        }
        if (answer != Resume::Again) {
            return;
        }
    }
    status::Trap trap([&](const VbError& e) { return answerGroupWriteError(e, strStage); });
    trap([] { subCloseDatabase(); });
}
