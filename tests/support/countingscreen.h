#pragma once
// The main screen as the tests below the board see it: it counts the unloads and
// the board's reactions to a poll; all else is the stand-in's.

#include "kernel/mainscreen.h"

#include <QList>

struct CountingScreen : MainScreen
{
    int unloads = 0;
    QList<int> reactions{0, 0, 0}; // subReadGroups, subLoadToolBarButtons, subSetToolBarRights

    void unload() override
    {
        ++unloads;
    }
    void subReadGroups() override
    {
        ++reactions[0];
    }
    void subLoadToolBarButtons() override
    {
        ++reactions[1];
    }
    void subSetToolBarRights() override
    {
        ++reactions[2];
    }
};
