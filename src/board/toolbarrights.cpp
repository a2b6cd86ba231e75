#include "board/toolbarrights.h"

#include <utility>

namespace rights {

Test changeOthersTest(long long systemLevel, long long userLevel)
{
    const bool userKnown = userLevel >= LOW && userLevel <= HIGH;
    switch (systemLevel) {
    case LOW:
        return Test::Granted;
    case MEDIUM:
        return userLevel == HIGH ? Test::Granted : userKnown ? Test::Member : Test::Refused;
    case HIGH:
        return userLevel == HIGH ? Test::Granted : userLevel == MEDIUM ? Test::Manager : Test::Refused;
    default:
        return Test::Refused; // a level outside LOW to HIGH grants nothing
    }
}

bool openToEveryone(const QString& group)
{
    return group.endsWith(QLatin1Char('*'));
}

bool mayChangeOthers(Test test, bool membershipHeld, const QString& group)
{
    const bool byLevels = test == Test::Granted || ((test == Test::Member || test == Test::Manager) && membershipHeld);
    return byLevels || openToEveryone(group);
}

bool managerMark(const QString& text)
{
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    return text.toDouble() > 0;
}

QList<ButtonRight> otherButtons(const Site& site)
{
    QList<ButtonRight> states;
    // Servers to go to from home, or the way home from a remote server.
    const bool servers = !site.remote && site.serversListed;
    states << ButtonRight{btnServers, servers, servers} << ButtonRight{btnHome, site.remote, site.remote};
    // A person with no row here and no HIGH level is a guest: no status of their own, no options.
    const bool guest = !site.userOnThisServer && site.userLevel < HIGH;
    states << ButtonRight{btnChange, !guest, std::nullopt}
           << ButtonRight{btnOptions, !guest && !site.remote, std::nullopt};
    for (int position = btnFirstStatus; position <= btnLastDesignStatus; ++position) {
        states << ButtonRight{position, std::nullopt, !guest};
    }
    // The message buttons only with messaging; Preview only with messages to preview.
    states << ButtonRight{btnPreview, std::nullopt, site.messaging}
           << ButtonRight{btnNewMessage, std::nullopt, site.messaging};
    if (site.messaging) {
        states << ButtonRight{btnPreview, site.messagesWaiting, std::nullopt};
    }
    return states;
}

QStringList menuEntriesOf(int position)
{
    static const std::pair<int, const char*> entries[] = {
        {btnChange, "mnuCommand_Change"},
        {btnGroup, "mnuCommand_Group"},
        {btnServers, "mnuCommand_Servers"},
        {btnHome, "mnuCommand_Home"},
        {btnNewMessage, "mnuMessagesNew"},
        {btnPreview, "mnuMessages"},
        {btnOptions, "mnuCommand_Options"},
        {15, "mnuCommand_Out"},
        {16, "mnuCommand_Busy"},
        {17, "mnuCommand_In"},
    };
    QStringList names;
    for (const auto& [at, name] : entries) {
        if (at == position) {
            names << QString::fromLatin1(name);
        }
    }
    return names;
}

} // namespace rights
