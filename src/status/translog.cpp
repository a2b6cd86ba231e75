#include "status/translog.h"

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/clock.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "status/statuscommon.h"

#include <QLocale>

using namespace platform;
using status::Resume;

namespace {

const QString kProcedure = QStringLiteral("modUser - subUpdateTransactionLog event");
const QString kTitle = QStringLiteral("VESK-OR - Repair/Compacting Error");

// The run's failure that is reported: the third, counted over the whole run.
constexpr long long kReportedFailure = 3;
// Past the reported failure the insert is still retried, but only this many
// times in one call: a lasting failure then costs a few seconds, not the client.
constexpr int kRetriesPastReport = 20;
// The pause between tries, so that a retry waits for the other client.
constexpr int kRetryPauseMs = 150;

// The double as VB's general text in the person's locale: fifteen digits, no
// grouping, and the locale's own decimal sign (a comma stays a comma here).
QString generalText(double value)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(value, 'g', 15);
}

void showLogFailure()
{
    mainScreen().setBusyPointer(false);
    errorbox::showLog(kProcedure, kTitle);
}

QString insertSql(const QStringList& values)
{
    QStringList quoted;
    for (const QString& value : values) {
        quoted << dao::quote(value);
    }
    return QStringLiteral("INSERT INTO TransactionLogTable (Name, Status, DueBack, Comments, LastModified, "
                          "NetworkLogonID, LogDateTime, ComputerName, IPAddress) VALUES (") +
           quoted.join(QLatin1Char(',')) + QStringLiteral(")");
}

} // namespace

// The insert is a unit of change of its own, or a part of the status change that
// calls it. A failure rolls the unit back, then counts; the retry repeats this
// call's own statement, never what gstrSQL holds after events have run.
void subUpdateTransactionLog(const QString& status, const QString& dueBack, const QString& comments,
                             const QString& name)
{
    status::Trap trap([](const VbError&) {
        showLogFailure();
        return Resume::Next;
    });
    if (!gSite.gblnTransactionLog) {
        return;
    }
    QString who;
    QString lastModified;
    QString logDateTime;
    trap([&] { who = name.isEmpty() ? gRun.gstrDefaultUser : name; });
    // Two readings of the clock, as the two columns were always taken: they may differ by a tick.
    trap([&] { lastModified = status::stampedBy(gRun.gstrDefaultUser); });
    trap([&] { logDateTime = generalText(DateTimeNum(Now())); });
    QString sql;
    trap([&] {
        sql = insertSql({who, status, dueBack, comments, lastModified, gRun.gstrLoginName, logDateTime,
                         gRun.gstrComputerName, gRun.gstrIPAddress});
    });
    trap([] { subOpenDatabase(); });

    // From here on a failure only counts; intLogRetries is never reset, so the
    // third failure of the run is the one reported, wherever it falls.
    fnRunUnit([&] { fnDatabase().Execute(sql); },
              [](const VbError& e, int attempt) {
                  Err.Set(e);
                  ++gRun.intLogRetries;
                  if (gRun.intLogRetries == kReportedFailure) {
                      showLogFailure();
                      return false;
                  }
                  if (gRun.intLogRetries > kReportedFailure && attempt > kRetriesPastReport) {
                      return false; // this log row, and the change it belongs to, are given up
                  }
                  DoEvents();
                  Sleep(kRetryPauseMs);
                  return true;
              });
}
