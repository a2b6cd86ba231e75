#include "status/tracking.h"

#include "dao/quote.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "platform/clock.h"

namespace tracking {

namespace {

// The statements keep their pieces as the board always wrote them: no blank
// between the tracker's closing quote and "AND", two behind the semicolon.
QString insertSql(const QString& tracker, const QString& trackee)
{
    return QStringLiteral(" INSERT INTO EmployeeStatusTracking ") + QStringLiteral("(Tracker, Trackee) VALUES ") +
           QStringLiteral("(") + dao::quote(tracker) + QStringLiteral(",") + dao::quote(trackee) + QStringLiteral(");");
}

QString deleteSql(const QString& tracker, const QString& trackee)
{
    return QStringLiteral("Delete from EmployeeStatusTracking ") + QStringLiteral("WHERE ") +
           QStringLiteral("Tracker = ") + dao::quote(tracker) + QStringLiteral("AND Trackee = ") + dao::quote(trackee) +
           QStringLiteral(";  ");
}

void runEach(const QStringList& trackees, const std::function<QString(const QString&)>& statement)
{
    fnRunUnit([&] {
        for (const QString& trackee : trackees) {
            subExecuteSQL(statement(trackee));
        }
        subUpdateStatusCounter();
    });
    subCloseDatabase();
}

} // namespace

void subAddToTrackingList(const QString& tracker, const QStringList& trackees)
{
    runEach(trackees, [&](const QString& trackee) { return insertSql(tracker, trackee); });
}

void subRemoveFromTrackingList(const QString& tracker, const QStringList& trackees)
{
    runEach(trackees, [&](const QString& trackee) { return deleteSql(tracker, trackee); });
}

QList<StatusAlert> StatusAlertWatcher::fnCheckForStatusAlerts(const QString& tracker)
{
    const QString sql = QStringLiteral("SELECT * FROM EmployeeStatusTracking WHERE Tracker = ") + dao::quote(tracker) +
                        QStringLiteral("   AND TrackeeLastUpdated > ") + dao::sqlNumber(m_lastChecked) +
                        QStringLiteral("   ORDER by Trackee");
    subOpenDatabase();
    QList<StatusAlert> alerts;
    {
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(sql);
        // Taken through the same text as the statement's number, so the next
        // limit is exactly what the next statement says.
        m_lastChecked = dao::sqlNumber(platform::DateTimeNum(platform::Now())).toDouble();
        if (rs->RecordCount() > 0) {
            for (rs->MoveFirst(); !rs->isEOF(); rs->MoveNext()) {
                alerts << StatusAlert{rs->Fields(QStringLiteral("Trackee")).Text().trimmed(),
                                      rs->Fields(QStringLiteral("TrackeeLastUpdated")).Text().trimmed().toDouble(),
                                      rs->Fields(QStringLiteral("TrackeeStatus")).Text().trimmed()};
            }
        }
        rs->Close();
    }
    subCloseDatabase();
    return alerts;
}

} // namespace tracking
