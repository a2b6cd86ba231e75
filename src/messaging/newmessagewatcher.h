#pragma once
// What tmrCheckForNewMessages decides at each firing: the "New" copies addressed
// to the person and sent after the last look. The lower limit lives in memory
// only, so the first look of a run has none and every copy still "New" pops.

#include <QList>
#include <QString>

namespace messaging {

// What a pop-up shows of one message.
struct NewMessageAlert
{
    QString subject;
    double sent = 0;
    long long id = 0;
    QString body;
};

class NewMessageWatcher
{
public:
    // The messages to pop up, oldest row order as the table gives them. The
    // limit moves to the clock's reading before the query runs, so a failed
    // look has moved it all the same.
    QList<NewMessageAlert> fnCheckForNewMessages(const QString& person);
    // The limit of the next look, with a point as decimal mark; "0" before the first.
    QString strLastCheckedForNewMessages() const;

private:
    double m_lastChecked = 0;
};

} // namespace messaging
