#include "board/refreshplan.h"

namespace refresh {

Plan plan(const Poll& poll)
{
    Plan answer;
    answer.takeExtraColumns = poll.read.extraColumns != poll.actedOn.extraColumns;
    // The group counter was taken by the group read already: it differs here
    // only after a failed poll zeroed what it read.
    answer.rebuild = poll.group != poll.lastGroupShown || poll.read.status != poll.actedOn.status ||
                     poll.read.group != poll.actedOn.group || answer.takeExtraColumns || poll.columnsChanged;
    return answer;
}

QString groupToShow(const QString& asked, bool treeShown, const QString& selectedTab, const QString& current)
{
    if (!asked.trimmed().isEmpty()) {
        return asked;
    }
    return !treeShown && !selectedTab.isNull() ? selectedTab : current;
}

long long fullCountDown(long long refreshRate)
{
    return refreshRate * 60;
}

Tick tick(long long refreshRate, long long countDown, bool minimized)
{
    Tick answer;
    if (refreshRate == 0) {
        answer.stopTimer = true;
        answer.countDown = countDown;
        return answer;
    }
    answer.countDown = countDown - 1;
    if (answer.countDown <= 0) {
        answer.countDown = fullCountDown(refreshRate);
        answer.refresh = !minimized; // a minimized board counts on without refreshing
    }
    answer.panelText = QStringLiteral("Next refresh in ") + QString::number(answer.countDown) + QStringLiteral(" ");
    return answer;
}

} // namespace refresh
