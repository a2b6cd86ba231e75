// The group write: the same status for every selected row of the board, by a
// person with the right to change others.

#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "start/err.h"
#include "start/globals.h"
#include "start/mainscreen.h"
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
    return gstrProgramTitle + QStringLiteral(" - Set Status Error");
}

QString corruptedText()
{
    return status::errorHead(kProcedure) + QStringLiteral("\r") + QStringLiteral("Please inform the ") +
           gstrProgramTitle +
           QStringLiteral(" administrator that the database is corrupted & requires immediate repair.");
}

// The handler of the group write. stage names the step under way, for the
// diagnostic log row of a lock conflict.
Resume answerGroupWriteError(const dao::JetError& e, const QString& stage)
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
        return Resume::Exit; // rows written so far stay; no counter is raised
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
        // Another client held the row: the statement is passed over, with a log row to show for it.
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

void subUpdateSelectedUsersRecords(const QString& status)
{
    const QStringList names = mainScreen().selectedRowTexts(int(gintNameColumn));
    if (names.isEmpty()) {
        return;
    }
    subOpenDatabase();
    QString strStage;
    status::Trap trap([&](const dao::JetError& e) { return answerGroupWriteError(e, strStage); });

    std::unique_ptr<dao::Recordset> rs;
    for (const QString& listed : names) {
        const QString name = listed.trimmed();
        strStage = QStringLiteral("OpenRecordset");
        gstrSQL = status::employeeRowSql(name);
        std::unique_ptr<dao::Recordset> opened;
        if (!trap([&] { opened = status::database().OpenRecordset(gstrSQL, dao::dbOpenDynaset); })) {
            return;
        }
        if (!opened || opened->RecordCount() == 0) {
            continue; // no such row (or no set): nothing further for this one
        }
        rs = std::move(opened); // the previous row's set is replaced, not closed first
        if (!trap([&] { rs->MoveFirst(); })) {
            return;
        }
        subSetStatusCode(status);

        strStage = QStringLiteral("rstLocal.Edit");
        if (!trap([&] { rs->Edit(); })) {
            return;
        }
        // An edit passed over (a lock conflict) leaves no buffer: the row stays as it was.
        if (rs->EditMode() != dao::dbEditNone) {
            // The stamp and the comment rule are the changer's own, as are the globals cleared.
            if (!trap([&] { status::writeStatusFields(*rs, status, gstrDefaultUser.trimmed()); })) {
                return;
            }
            strStage = QStringLiteral("Update");
            if (!trap([&] { rs->Update(); })) {
                return;
            }
        }
        strStage = QStringLiteral("EmployeeStatusTracking");
        gstrSQL = status::trackingMirrorSql(status, name);
        if (!trap([&] { status::database().Execute(gstrSQL); })) {
            return;
        }
        strStage = QStringLiteral("subUpdateTransactionLog");
        if (!trap([&] { subUpdateTransactionLog(status, gstrDueBack, gstrComment, name); })) {
            return;
        }
    }
    if (!trap([] { subUpdateStatusCounter(); })) {
        return;
    }
    trap([] { subCloseDatabase(); });
}
