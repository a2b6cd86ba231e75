// frmMain's list: subRefreshUserList, which brings the board in line with the
// shared file, and ListViewMain as the logic sees it.
//
// An ordinary poll reads the change counters only and leaves every row alone;
// the list is thrown away and rebuilt only when a counter moved, the group
// changed, or the person moved or resized a column.
#include "board/boarditem.h"
#include "board/columnlayout.h"
#include "board/frmmain.h"
#include "board/refreshplan.h"
#include "board/statusicons.h"
#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/constants.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "platform/clock.h"
#include "platform/msgbox.h"
#include "platform/process.h"
#include "servers/frmservers.h"
#include "status/settings.h"

#include <QHash>
#include <QTabBar>
#include <QTreeWidget>
#include <memory>

using namespace platform;

namespace {

// Between two tries to read the settings row: a moment for the other client to finish.
constexpr int kLockedRetryPauseMs = 200;
constexpr long long kLockedRetryAllowance = 3;

QString mainQuery(const QString& group, bool& groupMissing)
{
    groupMissing = false;
    if (group == QLatin1String("Everyone")) {
        // Names that begin with "~" are hidden from the list of all.
        return QStringLiteral("SELECT * FROM EmployeeTable WHERE Name NOT LIKE ") + dao::quote(QStringLiteral("~*")) +
               QStringLiteral(" ORDER BY Name");
    }
    if (testOrFail([&] { return fnGroupExists(group); })) {
        // A named group shows its hidden names too, in the order the join gives.
        return QStringLiteral("SELECT * FROM EmployeeGroupTable INNER JOIN EmployeeTable ON "
                              "EmployeeGroupTable.EmployeeName = EmployeeTable.Name "
                              "WHERE EmployeeGroupTable.GroupName=") +
               dao::quote(group);
    }
    groupMissing = true;
    // Everybody, this time with the hidden names: the list falls back to the whole table.
    return QStringLiteral("SELECT * FROM EmployeeTable ORDER BY Name");
}

QString settingsRowQuery()
{
    // On another site's database this person may have no row: anybody's layout will do.
    if (gRun.gblnRemoteConnection) {
        return QStringLiteral("SELECT top 1 * FROM EmployeeSettingsTable ORDER BY Name");
    }
    return QStringLiteral("SELECT * FROM EmployeeSettingsTable WHERE Name LIKE ") +
           dao::quoteLike(gRun.gstrDefaultUser) + QStringLiteral(" ORDER BY Name");
}

} // namespace

void frmMain::subRefreshUserList(const QString& group)
{
    if (gRun.gstrDefaultUser.trimmed().isEmpty()) {
        return; // nothing to show before the person is known
    }
    flushGroups();
    const QString tab =
        TabStripMain->currentIndex() >= 0 ? TabStripMain->tabText(TabStripMain->currentIndex()) : QString();
    const QString strGroup = refresh::groupToShow(group, gPerson.gvarDisplayTreeView != 0, tab, gRun.gstrCurrentGroup);
    if (group.trimmed().isEmpty()) {
        gRun.gstrCurrentGroup = strGroup;
    }

    // The one read of an ordinary poll.
    subGetCounterValues();
    const refresh::Plan plan = refresh::plan(
        {strGroup,
         mstrLastGroupShown,
         {gCounters.glngStatusCounter, gCounters.glngGroupCounter, gCounters.glngExtraColumnsCounter},
         {gCounters.glngLastStatusCounter, gCounters.glngLastGroupCounter, gCounters.glngLastExtraColumnsCounter},
         columnsMovedOrResized()});
    if (plan.takeExtraColumns) {
        gCounters.glngLastExtraColumnsCounter = gCounters.glngExtraColumnsCounter;
    }

    if (!plan.rebuild) {
        // Nothing changed: the rows stay as they are.
        ListViewMain->setUpdatesEnabled(true);
        subClearListSelection();
        showRefreshedText();
        setBusyPointer(false);
        restoreSelection();
        return;
    }
    rebuildList(strGroup);
}

// The rebuild: the list, its columns, the panes. Errors are
// passed over statement by statement until the column snapshot; after it any
// failure goes up to the caller.
void frmMain::rebuildList(const QString& strGroup)
{
    gCounters.glngLastStatusCounter = gCounters.glngStatusCounter;
    mstrLastGroupShown = strGroup;
    setBusyPointer(true);
    forgetRows();
    ListViewMain->clear();
    ListViewMain->setColumnCount(0);

    bool groupMissing = false;
    const QString query = mainQuery(strGroup, groupMissing);
    if (groupMissing) {
        MsgBox(QStringLiteral("The last group selected does not exist in this database. It has probably been "
                              "deleted or renamed by the Administrator."),
               vbInformation, gRun.gstrProgramTitle + QStringLiteral(" - Error"));
        gRun.gstrCurrentGroup = QStringLiteral("Everyone");
        TabStripMain->update();
    }

    ResumeNext([] { subOpenDatabase(); });
    Err.Clear();
    std::unique_ptr<dao::Recordset> rs;
    ResumeNext([&] { rs = fnOpenSQL(query); });
    // An empty group (or a query that failed) shows no rows and no columns, and no word about it.
    if (testOrFail([&] { return fnRecordset(rs).RecordCount() == 0; })) {
        return;
    }
    ResumeNext([&] { fnRecordset(rs).MoveLast(); });
    ResumeNext([&] { fnRecordset(rs).MoveFirst(); });

    std::unique_ptr<dao::Recordset> rstColumnData = openSettingsRow();
    if (testOrFail([&] { return fnRecordset(rstColumnData).isEOF(); })) {
        answerNoSettingsRow();
        return;
    }
    if (Err.Number != 0) {
        MsgBox(QStringLiteral("Error: ") + QString::number(Err.Number) + QStringLiteral(" - ") + Err.Description,
               vbCritical, QStringLiteral("subRefreshUserList rstColumnData Recordset error"));
    }

    ColumnLayout layout;
    ResumeNext([&] { fnRecordset(rstColumnData).MoveFirst(); });
    ResumeNext([&] { layout = ColumnLayout::read(fnRecordset(rstColumnData)); });

    ListViewMain->setUpdatesEnabled(false);
    createHeaders(layout);
    addRows(*rs, layout);
    ResumeNext([&] { placeStatusColumn(fnRecordset(rstColumnData)); });
    chooseFillColumn();
    applyListSort();

    ResumeNext([&] { fnRecordset(rs).Close(); });
    ResumeNext([] { subCloseDatabase(); });
    subClearListSelection();
    ListViewMain->setUpdatesEnabled(true);
    showRefreshedText();
    setBusyPointer(false);
    takeColumnSnapshot();

    fillTrackingLists();
    fillMessagesPane();
    subFindNameColumn();
    // The database stays open here: TimerCloseDatabase closes it.
    restoreSelection();
}

// The person's settings row, read again after a pause while the file is busy.
// Three failures in a run are allowed, never counted back: the fourth ends it.
std::unique_ptr<dao::Recordset> frmMain::openSettingsRow()
{
    for (;;) {
        std::unique_ptr<dao::Recordset> row;
        const QString sql = settingsRowQuery();
        ResumeNext([&] { row = fnDatabase().OpenRecordset(sql, dao::dbOpenSnapshot); });
        if (row) {
            return row;
        }
        if (mintLockedRetries == kLockedRetryAllowance) {
            MsgBox(gRun.gstrProgramTitle +
                       QStringLiteral("- The database seems to be locked.  Please Press OK to Exit."),
                   vbCritical, QStringLiteral("Locked Database"));
            End();
        }
        DoEvents();
        Sleep(kLockedRetryPauseMs);
        ++mintLockedRetries;
    }
}

void frmMain::answerNoSettingsRow()
{
    if (gRun.gblnRemoteConnection) {
        MsgBox(QStringLiteral("The Remote Server database appears to be empty. Please re-select."), vbCritical,
               gRun.gstrProgramTitle);
        showScreen([this] { frmServers::showModal(this); });
        return;
    }
    MsgBox(QStringLiteral("The current user: ") + gRun.gstrDefaultUser +
               QStringLiteral(" has been removed from the VESK-OR database. ") + CRLF + CRLF +
               QStringLiteral("Please advise your VESK-OR Administrator to re-initialize this users account.") + CRLF +
               CRLF + QStringLiteral("Select OK to exit VESK-OR."),
           vbCritical, gRun.gstrProgramTitle);
    gRun.gstrDefaultUser = QStringLiteral("Removed");
    unload();
    End();
}

// Every row of the set: Status as the main text, the other columns as sub-items
// in the order the headers were made, the icon by StatusCode. The own row sets
// the caption. A field that cannot be read (an extra column dropped while the
// board runs) leaves its cell blank: every value stays under its own header.
void frmMain::addRows(dao::Recordset& rs, const ColumnLayout& layout)
{
    // Each field looked up once, as the engine looks names up (the first of that
    // name, in any case); -1 where the query has no such field.
    const auto fieldOf = [&rs](const QString& name) {
        for (int i = 0; i < rs.FieldCount(); ++i) {
            if (rs.Fields(i).Name().compare(name, Qt::CaseInsensitive) == 0) {
                return i;
            }
        }
        return -1;
    };
    // The sub-items in the order the headers were made: every slot but blanks and Status.
    QList<int> cells;
    for (const QString& name : layout.columns) {
        if (!name.trimmed().isEmpty() && name != QLatin1String("Status")) {
            cells << fieldOf(name);
        }
    }
    const OwnRowFields own{fieldOf(QStringLiteral("Name")), fieldOf(QStringLiteral("Status")),
                           fieldOf(QStringLiteral("StatusCode"))};
    const auto text = [&rs](int field) {
        QString value;
        if (field >= 0) {
            ResumeNext([&] { value = rs.Fields(field).Text(); });
        }
        return value;
    };

    QHash<long long, QIcon> icons;
    QList<QTreeWidgetItem*> rows;
    ResumeNext([&] {
        for (; !rs.isEOF(); rs.MoveNext()) {
            auto* row = new BoardItem;
            rows << row;
            if (own.status >= 0) {
                ResumeNext([&] {
                    const QVariant status = rs.Fields(own.status).Value(); // a Null reads as blank, untrimmed
                    row->setText(0, status.isNull() ? QString() : status.toString());
                });
            }
            for (int cell = 0; cell < cells.size(); ++cell) {
                row->setText(cell + 1, text(cells.at(cell)));
            }
            ResumeNext([&] { readOwnRow(rs, own); });
            if (own.code >= 0) {
                ResumeNext([&] {
                    const dao::Field code = rs.Fields(own.code);
                    if (!code.IsNull()) {
                        const long long value = code.Value().toLongLong();
                        auto icon = icons.find(value);
                        if (icon == icons.end()) {
                            icon = icons.insert(value, statusIcon(value));
                        }
                        row->setIcon(0, *icon);
                    }
                });
            }
        }
    });
    ListViewMain->addTopLevelItems(rows);
}

void frmMain::readOwnRow(dao::Recordset& rs, const OwnRowFields& own)
{
    if (own.name < 0 || rs.Fields(own.name).Text() != gRun.gstrDefaultUser) {
        return;
    }
    if (own.code >= 0) {
        const dao::Field code = rs.Fields(own.code);
        if (!code.IsNull()) {
            gRun.gintOwnStatusCode = code.Value().toLongLong();
        }
    }
    gRun.gstrCurrentStatus = own.status >= 0 ? rs.Fields(own.status).Text() : QString();
    setCaption(fnOwnStatusCaption());
}
