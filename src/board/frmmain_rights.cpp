// Who may change whom, decided in one place: the Group button of ToolbarMain is
// enabled or not, and everything else asks that button. The same pass sets the
// other buttons by the server in use and the system settings. Its failures are
// passed over in silence: each step runs whatever the one before it did.
#include "board/frmmain.h"
#include "board/toolbarrights.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "status/statuscommon.h"

#include <QAction>
#include <QToolBar>
#include <QTreeWidget>
#include <memory>
#include <optional>

using namespace rights;

bool frmMain::groupButtonEnabled() const
{
    return toolbarButton(btnGroup)->isEnabled();
}

// A button's state, and the same on the menu entries of that command.
void frmMain::setToolbarRight(const ButtonRight& right)
{
    QList<QAction*> targets = {toolbarButton(right.position)};
    for (const QString& name : menuEntriesOf(right.position)) {
        targets.append(findChild<QAction*>(name));
    }
    for (QAction* target : targets) {
        if (!target) {
            Err.Raise(vbErrIndexOutOfBounds, QStringLiteral("Index out of bounds"));
        }
        if (right.enabled) {
            target->setEnabled(*right.enabled);
        }
        if (right.visible) {
            target->setVisible(*right.visible);
        }
    }
}

// Whether gstrDefaultUser is a member of gstrCurrentGroup, and, when asked, one
// whose member row marks a manager. Every row is looked at.
static void readMembership(bool managerNeeded, bool& held)
{
    std::unique_ptr<dao::Recordset> rs;
    ResumeNext([] { subOpenDatabase(); });
    ResumeNext([&] {
        rs = fnDatabase().OpenRecordset(QStringLiteral("SELECT * FROM EmployeeGroupTable WHERE GroupName = ") +
                                            dao::quote(gRun.gstrCurrentGroup),
                                        dao::dbOpenDynaset);
    });
    ResumeNext([&] {
        while (rs && !rs->isEOF()) {
            if (rs->Fields(QStringLiteral("EmployeeName")).Text() == gRun.gstrDefaultUser &&
                (!managerNeeded || managerMark(rs->Fields(QStringLiteral("GroupManager")).Text()))) {
                held = true;
            }
            rs->MoveNext();
        }
    });
    ResumeNext([&] {
        if (rs) {
            rs->Close();
        }
    });
    ResumeNext([] { subCloseDatabase(); });
}

// Whether a query finds any row, with the database opened and closed for it.
static void anyRow(const QString& sql, const std::function<void(bool)>& answer)
{
    ResumeNext([] { subOpenDatabase(); });
    ResumeNext([&] {
        std::unique_ptr<dao::Recordset> rs = fnDatabase().OpenRecordset(sql, dao::dbOpenDynaset);
        answer(!rs->isEOF());
        rs->Close();
    });
    ResumeNext([] { subCloseDatabase(); });
}

void frmMain::subSetToolBarRights()
{
    // The right to change others, and with it the selection of several rows.
    ResumeNext([this] {
        setToolbarRight({btnGroup, false, std::nullopt});
        ListViewMain->setSelectionMode(QAbstractItemView::SingleSelection);
    });
    const Test test = changeOthersTest(gSite.gintSystemSecurityLevel, gPerson.gintUserSecurityLevel);
    bool held = false;
    if (test == Test::Member || test == Test::Manager) {
        readMembership(test == Test::Manager, held);
    }
    if (mayChangeOthers(test, held, gRun.gstrCurrentGroup)) {
        ResumeNext([this] {
            setToolbarRight({btnGroup, true, std::nullopt});
            ListViewMain->setSelectionMode(QAbstractItemView::ExtendedSelection);
        });
    }

    Site site;
    site.remote = gRun.gblnRemoteConnection;
    if (!site.remote) {
        anyRow(QStringLiteral("SELECT * FROM ServersTable"), [&](bool any) { site.serversListed = any; });
    }
    anyRow(QStringLiteral("SELECT * FROM EmployeeTable WHERE name LIKE ") + dao::quoteLike(gRun.gstrDefaultUser),
           [](bool any) { gRun.gblnUserOnThisServer = any; });
    site.userOnThisServer = gRun.gblnUserOnThisServer;
    site.userLevel = gPerson.gintUserSecurityLevel;
    site.messaging = gSite.gblnAllowMessaging;
    ResumeNext([&] { site.messagesWaiting = ListViewMessages->topLevelItemCount() > 0; });
    // Each state is set whatever became of the one before it.
    for (const ButtonRight& right : otherButtons(site)) {
        ResumeNext([&] { setToolbarRight(right); });
    }
}
