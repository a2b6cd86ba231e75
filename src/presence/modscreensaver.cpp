#include "presence/modscreensaver.h"

#include "dao/quote.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/presence.h"
#include "status/statuscommon.h"
#include "status/statuswrite.h"

namespace presence {

namespace {

// Sets the own row's StatusCode and raises the counter, so that every other
// client rebuilds at its next poll: one unit, as any change of a row.
void writeOwnCode(long long code, const QString& update, const QString& where)
{
    fnRunUnit([&] {
        subExecuteSQL(update + QStringLiteral("SET StatusCode = ") + QString::number(code) + where +
                      dao::quote(gRun.gstrDefaultUser));
        subUpdateStatusCounter();
    });
    gRun.gintOwnStatusCode = code;
}

// The own row's status word, trimmed; "" when the row is not there.
QString ownStatusWord()
{
    subOpenDatabase();
    const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(
        QStringLiteral("SELECT Status FROM EmployeeTable WHERE Name LIKE ") + dao::quoteLike(gRun.gstrDefaultUser));
    QString word;
    if (rs->RecordCount() > 0) {
        rs->MoveFirst();
        word = rs->Fields(QStringLiteral("Status")).Text().trimmed();
    }
    rs->Close();
    return word;
}

} // namespace

void tmrScreenSaver_Timer()
{
    const bool running = platform::presence().screenSaverRunning();
    const long long own = gRun.gintOwnStatusCode;
    if (running && own != kLockedMark && own != kScreenSaverMark) {
        writeOwnCode(kScreenSaverMark, QStringLiteral("UPDATE EmployeeTable "), QStringLiteral(" WHERE Name = "));
        // The mark is not news: the status write that ends it leaves no log row.
        gRun.gblnSuppressNextLog = true;
    } else if (!running && own == kScreenSaverMark) {
        subRestoreOwnStatusCode();
        mainScreen().subRefreshUserList(QString());
    }
}

void tmrDetectLockedWorkStation_Timer()
{
    if (CheckForLockedWorkStation()) {
        UpdateIconToReflectLockedWorkStation();
        UpdateUserStatusForLockedWorkStation();
    } else {
        UpdateIconAndUserStatusToUnLockedWorkStation();
    }
}

bool CheckForLockedWorkStation()
{
    return platform::presence().sessionLocked();
}

void UpdateIconToReflectLockedWorkStation()
{
    if (gRun.gintOwnStatusCode != kLockedMark) {
        writeOwnCode(kLockedMark, QStringLiteral("Update EmployeeTable "), QStringLiteral(" Where Name = "));
    }
}

void UpdateUserStatusForLockedWorkStation()
{
    if (gSite.gblnUpdateStatusOnLock && !gRun.gblnLockSetStatusOut) {
        subUpdateDefaultUsersRecord(QStringLiteral("Out"));
        gRun.gblnLockSetStatusOut = true;
        subUpdateStatusCounter();
    }
}

void UpdateIconAndUserStatusToUnLockedWorkStation()
{
    if (gSite.gblnUpdateStatusOnLock) {
        // Whatever the status was before the lock, the person is back "In".
        if (gRun.gblnLockSetStatusOut) {
            subUpdateDefaultUsersRecord(QStringLiteral("In"));
            subUpdateStatusCounter();
            gRun.gblnLockSetStatusOut = false;
        }
        return;
    }
    if (gRun.gintOwnStatusCode == kLockedMark && !gRun.gstrCurrentStatus.trimmed().isEmpty()) {
        subRestoreOwnStatusCode();
        mainScreen().subRefreshUserList(QString());
    }
}

void subRestoreOwnStatusCode()
{
    const QString word = ownStatusWord();
    const std::optional<long long> code = status::statusTypeCode(word);
    if (code) {
        gRun.gstrCurrentStatus = word;
    }
    writeOwnCode(code.value_or(status::kCodeTypedByHand), QStringLiteral("UPDATE EmployeeTable "),
                 QStringLiteral(" WHERE Name = "));
}

} // namespace presence
