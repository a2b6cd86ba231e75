#include "kernel/globals.h"

#include "kernel/err.h"

RunState gRun;
SiteSettings gSite;
PersonSettings gPerson;
ChangeCounters gCounters;
BoardState gBoard;

void resetRunWide()
{
    gRun.reset();
    gSite.reset();
    gPerson.reset();
    gCounters.reset();
    gBoard.reset();
    Err.Clear();
}
