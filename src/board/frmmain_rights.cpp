// Who may change whom, decided in one place: the Group button of ToolbarMain is
// enabled or not, and everything else asks that button. The same pass sets the
// other buttons by the server in use and the system settings. Its failures are
// passed over in silence: each step runs whatever the one before it did.
#include "board/frmmain.h"
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

namespace {

enum SecurityLevel : long long
{
    LOW = 0,
    MEDIUM = 1,
    HIGH = 2
};

enum Button : int
{
    btnChange = 2,
    btnGroup = 3,
    btnServers = 5,
    btnHome = 6,
    btnNewMessage = 7,
    btnPreview = 8,
    btnOptions = 11,
    btnFirstStatus = 15,
    btnLastDesignStatus = 17
};

// A member row's GroupManager marks a manager when its trimmed value is greater
// than 0; a yes/no field reads "True" when set.
bool managerSet(const QString& text)
{
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    return text.toDouble() > 0;
}

} // namespace

bool frmMain::groupButtonEnabled() const
{
    return toolbarButton(btnGroup)->isEnabled();
}

// A button's state, and the same on the menu entry of that command.
void frmMain::setToolbarRight(int position, std::optional<bool> enabled, std::optional<bool> visible)
{
    const std::pair<int, QAction*> entries[] = {
        {btnChange, mnuCommand_Change},
        {btnGroup, mnuCommand_Group},
        {btnServers, mnuCommand_Servers},
        {btnHome, mnuCommand_Home},
        {btnNewMessage, mnuMessagesNew},
        {btnPreview, mnuMessages},
        {btnOptions, mnuCommand_Options},
        {15, mnuCommand_Out},
        {16, mnuCommand_Busy},
        {17, mnuCommand_In},
    };
    QList<QAction*> targets = {toolbarButton(position)};
    for (const auto& [at, entry] : entries) {
        if (at == position) {
            targets.append(entry);
        }
    }
    for (QAction* target : targets) {
        if (!target) {
            Err.Raise(vbErrIndexOutOfBounds, QStringLiteral("Index out of bounds"));
        }
        if (enabled) {
            target->setEnabled(*enabled);
        }
        if (visible) {
            target->setVisible(*visible);
        }
    }
}

// Whether gstrDefaultUser is a member of gstrCurrentGroup, and, when asked, one
// whose member row marks a manager. Every row is looked at.
static void readMembership(bool managerNeeded, bool& allowed)
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
                (!managerNeeded || managerSet(rs->Fields(QStringLiteral("GroupManager")).Text()))) {
                allowed = true;
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
        setToolbarRight(btnGroup, false, std::nullopt);
        ListViewMain->setSelectionMode(QAbstractItemView::SingleSelection);
    });
    bool allowed = false;
    const long long user = gPerson.gintUserSecurityLevel;
    const bool userKnown = user >= LOW && user <= HIGH;
    switch (gSite.gintSystemSecurityLevel) {
    case LOW:
        allowed = true;
        break;
    case MEDIUM:
        if (user == HIGH) {
            allowed = true;
        } else if (userKnown) {
            readMembership(false, allowed);
        }
        break;
    case HIGH:
        if (user == HIGH) {
            allowed = true;
        } else if (user == MEDIUM) {
            readMembership(true, allowed);
        }
        break;
    default:
        break; // a level outside LOW to HIGH grants nothing
    }
    if (gRun.gstrCurrentGroup.endsWith(QLatin1Char('*'))) {
        allowed = true; // a group open to everyone
    }
    if (allowed) {
        ResumeNext([this] {
            setToolbarRight(btnGroup, true, std::nullopt);
            ListViewMain->setSelectionMode(QAbstractItemView::ExtendedSelection);
        });
    }
    setServerRights();
    setGuestRights();
    setMessagingRights();
}

// Servers to go to from home, or the way home from a remote server.
void frmMain::setServerRights()
{
    if (gRun.gblnRemoteConnection) {
        ResumeNext([this] { setToolbarRight(btnServers, false, false); });
        ResumeNext([this] { setToolbarRight(btnHome, true, true); });
        return;
    }
    anyRow(QStringLiteral("SELECT * FROM ServersTable"), [this](bool any) { setToolbarRight(btnServers, any, any); });
    ResumeNext([this] { setToolbarRight(btnHome, false, false); });
}

// A person with no row on this server and no HIGH level is a guest here: no
// status of their own, no options.
void frmMain::setGuestRights()
{
    anyRow(QStringLiteral("SELECT * FROM EmployeeTable WHERE name LIKE ") + dao::quoteLike(gRun.gstrDefaultUser),
           [](bool any) { gRun.gblnUserOnThisServer = any; });
    const bool guest = !gRun.gblnUserOnThisServer && gPerson.gintUserSecurityLevel < HIGH;
    ResumeNext([&] { setToolbarRight(btnChange, !guest, std::nullopt); });
    ResumeNext([&] { setToolbarRight(btnOptions, !guest && !gRun.gblnRemoteConnection, std::nullopt); });
    for (int position = btnFirstStatus; position <= btnLastDesignStatus; ++position) {
        ResumeNext([&] { setToolbarRight(position, std::nullopt, !guest); });
    }
}

// The message buttons only with messaging; Preview only with messages to preview.
void frmMain::setMessagingRights()
{
    ResumeNext([this] { setToolbarRight(btnPreview, std::nullopt, gSite.gblnAllowMessaging); });
    ResumeNext([this] { setToolbarRight(btnNewMessage, std::nullopt, gSite.gblnAllowMessaging); });
    if (gSite.gblnAllowMessaging) {
        ResumeNext([this] { setToolbarRight(btnPreview, ListViewMessages->topLevelItemCount() > 0, std::nullopt); });
    }
}
