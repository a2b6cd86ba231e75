// The board's File menu entries for the launchers that start the client for a person.
#include "board/frmmain.h"
#include "kernel/globals.h"
#include "users/shortcuts.h"

void frmMain::mnuNewDesktopIcon_Click()
{
    subNewDesktopIconsFor(selectedRowTexts(int(gBoard.gintNameColumn)));
}

void frmMain::mnuFile_Uninstall_Click()
{
    subUninstallIcons();
}
