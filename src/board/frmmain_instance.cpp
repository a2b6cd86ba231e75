// frmMain's Load: one board per person on a desktop.
#include "board/frmmain.h"
#include "board/singleinstance.h"
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "platform/identity.h"

// A later copy for the same person brings the first one's window to the front,
// closes its database, forgets the person and unloads, which ends the run. A copy
// for another person goes on and from now on answers copies started for it.
bool frmMain::fnRaiseOtherCopy()
{
    delete m_singleInstance;
    m_singleInstance =
        new SingleInstance(platform::identity().loginName(), gRun.gstrDatabasePath, gRun.gstrDefaultUser, this);
    if (m_singleInstance->claim()) {
        connect(m_singleInstance, &SingleInstance::raiseRequested, this, &frmMain::bringToFront);
        return false;
    }
    subCloseDatabase();
    gRun.gstrDefaultUser.clear();
    requestUnload(vbFormCode);
    return true;
}
