#pragma once
// The people a person follows: rows of EmployeeStatusTracking, Tracker the one
// who wants the alert, Trackee the one followed. The status writers keep each
// row's TrackeeStatus and TrackeeLastUpdated; the watcher here looks for rows
// changed since its last look, one pop-up each.

#include <QList>
#include <QString>
#include <QStringList>

namespace tracking {

// Starts following each of the names, and raises the change counter, as one unit.
// A person may follow himself.
void subAddToTrackingList(const QString& tracker, const QStringList& trackees);
// Stops following them, as one unit with the counter raise; others who follow
// the same people keep their rows.
void subRemoveFromTrackingList(const QString& tracker, const QStringList& trackees);

// One change of a followed person, as its pop-up shows it.
struct StatusAlert
{
    QString trackee;
    double when = 0;
    QString status;
};

// What tmrCheckForStatusAlerts decides at each firing. The limit starts at 0, so
// the first look of a run brings every followed person with a change on record,
// and it moves to the clock's reading once the query has run: a change landing
// between the query and that reading is not seen.
class StatusAlertWatcher
{
public:
    QList<StatusAlert> fnCheckForStatusAlerts(const QString& tracker);
    // gdblLastCheckedForStatusAlertAtTime
    double lastChecked() const
    {
        return m_lastChecked;
    }

private:
    double m_lastChecked = 0;
};

} // namespace tracking
