#pragma once
// What a refresh of the board must do, decided without a screen: from the
// change counters as last read and as last acted on, the group asked for and
// the one shown, and whether the person moved or resized a column. Also the
// one-second tick that counts down to the next automatic refresh.

#include <QString>

namespace refresh {

// The counters of StatusCounterTable a refresh compares.
struct Counters
{
    long long status = 0;       // Counter
    long long group = 0;        // GroupCounter
    long long extraColumns = 0; // ExtraColumnsCounter
};

struct Poll
{
    QString group;          // the group to show
    QString lastGroupShown; // the group of the last rebuild
    Counters read;          // as the poll read them
    Counters actedOn;       // as the last rebuild (or group read) took them
    bool columnsChanged = false;
};

struct Plan
{
    bool rebuild = false;          // throw the rows away and read them again
    bool takeExtraColumns = false; // the extra columns' counter is taken as acted on now
};

Plan plan(const Poll& poll);

// The group a refresh shows: the one asked for, or for a blank the tab selected
// (unless the groups are a tree, or no tab is selected) else the current group.
QString groupToShow(const QString& asked, bool treeShown, const QString& selectedTab, const QString& current);

// One tick of the count-down.
struct Tick
{
    bool stopTimer = false;  // RefreshRate 0: the timer goes off and nothing else happens
    long long countDown = 0; // seconds left after the tick
    bool refresh = false;    // the count-down ran out and the board is not minimized
    QString panelText;       // for panel 3, empty when nothing is written
};

Tick tick(long long refreshRate, long long countDown, bool minimized);

// The count-down from the top: RefreshRate minutes in seconds.
long long fullCountDown(long long refreshRate);

} // namespace refresh
