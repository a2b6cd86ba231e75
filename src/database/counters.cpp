#include "database/counters.h"

#include "dao/dao.h"
#include "dao/values.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "database/upgrade.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/msgbox.h"

#include <cmath>

using namespace platform;

namespace {

// A trimmed field as a Long, as VB converts it on assignment: a Null, a blank or
// a word is a type mismatch.
long long longOf(const dao::Field& field)
{
    const QString text = field.Text();
    bool ok = false;
    const long long whole = text.toLongLong(&ok);
    if (ok) {
        return whole;
    }
    const double number = text.toDouble(&ok);
    if (!ok) {
        Err.Raise(vbErrTypeMismatch, QStringLiteral("Type mismatch"));
    }
    return dao::roundHalfEven(number);
}

void zeroReadCounters()
{
    gCounters.glngStatusCounter = 0;
    gCounters.glngStatusTypeCounter = 0;
    gCounters.glngGroupCounter = 0;
    gCounters.glngSecurityCounter = 0;
    gCounters.glngExtraColumnsCounter = 0;
}

// One statement under subGetCounterValues's trap: a failure drops the five read
// values to 0, and the next statement runs.
bool step(const std::function<void()>& statement)
{
    if (ResumeNext(statement)) {
        return true;
    }
    zeroReadCounters();
    return false;
}

// A test under the same trap: a failure runs the branch.
bool stepTest(const std::function<bool()>& test)
{
    bool result = true;
    step([&] { result = test(); });
    return result;
}

// After a rise of the security counter: the system's security level again, and the toolbar rights by it.
void rereadSecurityLevel(std::unique_ptr<dao::Recordset>& rs)
{
    step([&] { rs = fnOpenSQL(QStringLiteral("Select * from GlobalSettingsTable")); });
    if (stepTest([&] { return fnRecordset(rs).RecordCount() > 0; })) {
        step([&] {
            gSite.gintSystemSecurityLevel = longOf(fnRecordset(rs).Fields(QStringLiteral("SystemSecurityLevel")));
        });
        step([&] { fnRecordset(rs).Close(); });
        step([] { mainScreen().subSetToolBarRights(); });
    } else {
        step([&] { fnRecordset(rs).Close(); });
    }
    step([] { gCounters.glngLastSecurityCounter = gCounters.glngSecurityCounter; });
}

} // namespace

void subGetCounterValues()
{
    std::unique_ptr<dao::Recordset> rs;
    subTestStatusCounterTable();
    subOpenDatabase();
    step([&] { rs = fnOpenSQL(QStringLiteral("SELECT * FROM StatusCounterTable")); });
    step([&] { fnRecordset(rs).MoveFirst(); });
    step([&] { gCounters.glngStatusCounter = longOf(fnRecordset(rs).Fields(QStringLiteral("Counter"))); });
    step(
        [&] { gCounters.glngStatusTypeCounter = longOf(fnRecordset(rs).Fields(QStringLiteral("StatusTypeCounter"))); });
    step([&] { gCounters.glngGroupCounter = longOf(fnRecordset(rs).Fields(QStringLiteral("GroupCounter"))); });
    step([&] { gCounters.glngSecurityCounter = longOf(fnRecordset(rs).Fields(QStringLiteral("SecurityCounter"))); });
    step([&] {
        gCounters.glngExtraColumnsCounter = longOf(fnRecordset(rs).Fields(QStringLiteral("ExtraColumnsCounter")));
    });
    step([&] { fnRecordset(rs).Close(); });

    // Only a rise is acted on: a counter the administrator reset goes unnoticed
    // until it passes the old value.
    if (gCounters.glngGroupCounter > gCounters.glngLastGroupCounter) {
        gCounters.glngLastGroupCounter =
            gCounters.glngGroupCounter; // first: the group read may refresh the board, which polls again
        step([] { mainScreen().subReadGroups(); });
    }
    if (gCounters.glngStatusTypeCounter > gCounters.glngLastStatusTypeCounter) {
        step([] { mainScreen().subLoadToolBarButtons(); });
        gCounters.glngLastStatusTypeCounter = gCounters.glngStatusTypeCounter;
    }
    if (gCounters.glngSecurityCounter > gCounters.glngLastSecurityCounter) {
        rereadSecurityLevel(rs);
    }
    step([] { subCloseDatabase(); });
}

// The read, the raise and the write run as one unit of change, so two clients
// raising at once both count. On its own the unit is rolled back before either
// box; inside a status change the whole change is.
void subUpdateStatusCounter()
{
    // How far the procedure got. Neither of its boxes names it; it is kept as
    // every guarded procedure keeps its name, and read in a debugger.
    const QString strBase = QStringLiteral("modUser - subUpdateStatusCounter event");
    QString strProcedure = strBase;
    const auto raise = [&] {
        std::unique_ptr<dao::Recordset> rs = fnOpenSQL(QStringLiteral("SELECT * FROM StatusCounterTable"));
        strProcedure = strBase + QStringLiteral(" - Finsihed Opening Database");
        if (rs->RecordCount() == 0) {
            strProcedure = strBase + QStringLiteral(" - Creating Status Counter default value");
            rs->AddNew();
            rs->Update();
            // The new row becomes the current one, so that its Counter is read next.
            rs->MoveFirst();
        }
        if (rs->Fields(QStringLiteral("Counter")).IsNull()) {
            strProcedure = strBase + QStringLiteral(" - Creating Status Counter default value - setting counter to 1");
            rs->Edit();
            rs->Fields(QStringLiteral("Counter")) = 1;
            rs->Update();
        }
        strProcedure = strBase + QStringLiteral(" - moving first");
        rs->MoveFirst();
        // Read inside the unit, which holds the write lock: nobody raises it meanwhile.
        const long long lngNewValue = longOf(rs->Fields(QStringLiteral("Counter"))) + 1;
        const QString value = QString::number(lngNewValue);
        strProcedure = strBase + QStringLiteral(" - Updating Status counter to: ") + value;
        rs->Edit();
        rs->Fields(QStringLiteral("Counter")) = lngNewValue;
        strProcedure = strBase + QStringLiteral(" - About to Update Status counter to: ") + value;
        rs->Update();
        strProcedure = strBase + QStringLiteral(" - Updated Status counter to: ") + value;
        rs->Close();
        subCloseDatabase();
        // The last acted-on value stays, so this client's next refresh rebuilds too.
        gCounters.glngStatusCounter = lngNewValue;
    };
    fnRunUnit(raise, [](const VbError& e, int) {
        Err.Set(e);
        if (Err.Number != dao::errRecordLocked) {
            // The change that led here was rolled back with the raise.
            errorbox::showUpdate(Err.Number, Err.Description);
            return false;
        }
        return errorbox::showRetry(Err.Number, Err.Description, gRun.gstrProgramTitle) == vbYes;
    });
}
