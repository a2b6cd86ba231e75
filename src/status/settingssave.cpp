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
        gstrCurrentGroup.isEmpty() ? QStringLiteral("Everyone") : gstrCurrentGroup;
    rs.Fields(QStringLiteral("SortOrder")) = gintSortOrder;
    rs.Fields(QStringLiteral("SortKey")) = gintSortKey;
    rs.Fields(QStringLiteral("SortColumnName")) =
        gstrSortColumnName.isEmpty() ? QStringLiteral("Name") : gstrSortColumnName;
    rs.Fields(QStringLiteral("MinimizeSetting")) = gintMinimizeSetting;
    rs.Fields(QStringLiteral("MinimizeOnClose")) = gblnMinimizeOnClose;
    rs.Fields(QStringLiteral("DisplayTreeView")) = gvarDisplayTreeView;
    writeColumnLayout(rs);
    rs.Fields(QStringLiteral("IconSize")) = gintIconSize;
    rs.Fields(QStringLiteral("ToolBarText")) = gintToolBarText;
    const QRect place = mainScreen().normalGeometry();
    rs.Fields(QStringLiteral("ScreenTop")) = place.top();
    rs.Fields(QStringLiteral("ScreenLeft")) = place.left();
    rs.Fields(QStringLiteral("ScreenHeight")) = place.height();
    rs.Fields(QStringLiteral("ScreenWidth")) = place.width();
    rs.Fields(QStringLiteral("PhotoSizeToFit")) = gblnPhotoSizeToFit;
    rs.Fields(QStringLiteral("SplitterPositionVertical")) = glngSplitterVertical;
    // The lower pane is there only with messaging or status alerts.
    if (gblnAllowMessaging || gblnAllowStatusAlerts) {
        rs.Fields(QStringLiteral("SplitterPositionHorizontal")) = glngSplitterHorizontal;
    }
}

} // namespace

// A failure goes up to the caller: the end of the run reports it and goes on.
void subSaveUserSettings(const QString& name)
{
    if (gblnRemoteConnection) {
        return; // another site's file is no place for this person's layout
    }
    subOpenDatabase();
    gstrSQL = QStringLiteral("SELECT * FROM EmployeeSettingsTable WHERE Name = ") + dao::quote(name);
    const std::unique_ptr<dao::Recordset> rs = fnDatabase().OpenRecordset(gstrSQL, dao::dbOpenDynaset);
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
    gblnDatabaseClosed = true;
    trap([] { subOpenDatabase(); });

    std::unique_ptr<dao::Recordset> rs;
    gstrSQL = QStringLiteral("SELECT * FROM GroupTable ORDER BY GroupName");
    trap([&] { rs = fnDatabase().OpenRecordset(gstrSQL, dao::dbOpenDynaset); });
    trap([] { mainScreen().clearGroups(); });
    if (rs) {
        trap([&] {
            for (; !rs->isEOF(); rs->MoveNext()) {
                mainScreen().addGroup(rs->Fields(QStringLiteral("GroupName")).Text());
            }
        });
    }
    trap([] {
        if (!mainScreen().selectGroup(gstrCurrentGroup)) {
            mainScreen().selectGroup(QStringLiteral("Everyone"));
        }
    });
    if (rs) {
        trap([&] { rs->Close(); });
    }
}
