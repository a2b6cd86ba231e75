// Writing the person's layout back at the end of a run, and reading the groups
// into the board's tabs and tree.

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "platform/msgbox.h"
#include "status/settings.h"
#include "status/statuscommon.h"

#include <QRect>
#include <memory>

using namespace platform;

namespace {

// The list's own columns; any other column is an extra one, stored as "New_" & caption.
bool isStandardColumn(const QString& name)
{
    static const QStringList standard = {QStringLiteral("Status"),   QStringLiteral("Name"),
                                         QStringLiteral("Phone"),    QStringLiteral("DueBack"),
                                         QStringLiteral("Comments"), QStringLiteral("LastModified")};
    return standard.contains(name);
}

void writeColumnLayout(dao::Recordset& rs)
{
    for (const ListColumn& column : mainScreen().listColumns()) {
        const QString base = isStandardColumn(column.name) ? column.name : QStringLiteral("New_") + column.name;
        rs.Fields(base + QStringLiteral("ColumnOrder")) = column.order;
        rs.Fields(base + QStringLiteral("ColumnWidth")) = column.width;
    }
}

void writeLayout(dao::Recordset& rs)
{
    rs.Fields(QStringLiteral("DefaultGroup")) =
        gRun.gstrCurrentGroup.isEmpty() ? QStringLiteral("Everyone") : gRun.gstrCurrentGroup;
    rs.Fields(QStringLiteral("SortOrder")) = gPerson.gintSortOrder;
    rs.Fields(QStringLiteral("SortKey")) = gPerson.gintSortKey;
    rs.Fields(QStringLiteral("SortColumnName")) =
        gPerson.gstrSortColumnName.isEmpty() ? QStringLiteral("Name") : gPerson.gstrSortColumnName;
    rs.Fields(QStringLiteral("MinimizeSetting")) = gPerson.gintMinimizeSetting;
    rs.Fields(QStringLiteral("MinimizeOnClose")) = gPerson.gblnMinimizeOnClose;
    rs.Fields(QStringLiteral("DisplayTreeView")) = gPerson.gvarDisplayTreeView;
    writeColumnLayout(rs);
    rs.Fields(QStringLiteral("IconSize")) = gPerson.gintIconSize;
    rs.Fields(QStringLiteral("ToolBarText")) = gPerson.gintToolBarText;
    const QRect place = mainScreen().normalGeometry();
    rs.Fields(QStringLiteral("ScreenTop")) = place.top();
    rs.Fields(QStringLiteral("ScreenLeft")) = place.left();
    rs.Fields(QStringLiteral("ScreenHeight")) = place.height();
    rs.Fields(QStringLiteral("ScreenWidth")) = place.width();
    rs.Fields(QStringLiteral("PhotoSizeToFit")) = gPerson.gblnPhotoSizeToFit;
    rs.Fields(QStringLiteral("SplitterPositionVertical")) = gPerson.glngSplitterVertical;
    // The lower pane is there only with messaging or status alerts.
    if (gSite.gblnAllowMessaging || gSite.gblnAllowStatusAlerts) {
        rs.Fields(QStringLiteral("SplitterPositionHorizontal")) = gPerson.glngSplitterHorizontal;
    }
}

} // namespace

// A failure goes up to the caller: the end of the run reports it and goes on.
void subSaveUserSettings(const QString& name)
{
    if (gRun.gblnRemoteConnection) {
        return; // another site's file is no place for this person's layout
    }
    subOpenDatabase();
    const std::unique_ptr<dao::Recordset> rs =
        fnOpenSQL(QStringLiteral("SELECT * FROM EmployeeSettingsTable WHERE Name = ") + dao::quote(name));
    rs->Edit();
    writeLayout(*rs);
    rs->Update();
    rs->Close();
    subCloseDatabase();
}

void subReadGroups()
{
    const QString strProcedure = QStringLiteral("modUser - subReadGroups event");
    status::Trap trap([&](const VbError&) {
        MsgBox(status::errorHead(strProcedure), vbOKOnly);
        return status::Resume::Next;
    });
    // The group read always works on a fresh open.
    gRun.gblnDatabaseClosed = true;
    trap([] { subOpenDatabase(); });

    std::unique_ptr<dao::Recordset> rs;
    trap([&] { rs = fnOpenSQL(QStringLiteral("SELECT * FROM GroupTable ORDER BY GroupName")); });
    trap([] { mainScreen().clearGroups(); });
    if (rs) {
        trap([&] {
            for (; !rs->isEOF(); rs->MoveNext()) {
                mainScreen().addGroup(rs->Fields(QStringLiteral("GroupName")).Text());
            }
        });
    }
    trap([] {
        if (!mainScreen().selectGroup(gRun.gstrCurrentGroup)) {
            mainScreen().selectGroup(QStringLiteral("Everyone"));
        }
    });
    if (rs) {
        trap([&] { rs->Close(); });
    }
}
