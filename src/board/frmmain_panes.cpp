// The panes the refresh fills after the list: whom the person follows and who
// follows them (the tracking lists), and the person's new messages.
#include "board/boarditem.h"
#include "board/frmmain.h"
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "kernel/globals.h"
#include "messaging/messagesql.h"
#include "platform/clock.h"

#include <QTreeWidget>
#include <memory>

namespace {

QString dateText(const dao::Field& field, const QString& vbFormat)
{
    if (field.IsNull()) {
        return QString();
    }
    return platform::Format(platform::dateFromDateTimeNum(field.Value().toDouble()), vbFormat);
}

void addRow(QTreeWidget* list, const QStringList& texts)
{
    auto* row = new BoardItem;
    for (int i = 0; i < texts.size(); ++i) {
        row->setText(i, texts.at(i));
    }
    list->addTopLevelItem(row);
}

void showNoRowChosen(QTreeWidget* list)
{
    if (list->topLevelItemCount() > 0) {
        list->setCurrentItem(nullptr);
        list->clearSelection();
    }
}

} // namespace

void frmMain::fillTrackingLists()
{
    lstWhoAmITracking->clear();
    lstWhosTrackingMe->clear();
    // The last literal meets the closing quote with no blank between them.
    const QString sql = QStringLiteral("SELECT * FROM EmployeeStatusTracking WHERE Tracker = ") +
                        dao::quote(gRun.gstrDefaultUser) + QStringLiteral(" or Trackee = ") +
                        dao::quote(gRun.gstrDefaultUser) + QStringLiteral("Order by Trackee;");
    subOpenDatabase();
    const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(sql);
    if (rs->RecordCount() > 0) {
        rs->MoveLast();
        rs->MoveFirst();
    }
    const long long count = rs->RecordCount();
    for (long long n = 0; n < count; ++n) {
        if (rs->Fields(QStringLiteral("Tracker")).Text() == gRun.gstrDefaultUser) {
            addRow(lstWhoAmITracking,
                   {rs->Fields(QStringLiteral("Trackee")).Text(), rs->Fields(QStringLiteral("TrackeeStatus")).Text(),
                    dateText(rs->Fields(QStringLiteral("TrackeeLastUpdated")), QStringLiteral("yyyy-mm-dd hh:mm:ss"))});
        } else if (rs->Fields(QStringLiteral("Trackee")).Text() == gRun.gstrDefaultUser) {
            addRow(lstWhosTrackingMe, {rs->Fields(QStringLiteral("Tracker")).Text()});
        }
        rs->MoveNext();
    }
    showNoRowChosen(lstWhoAmITracking);
    showNoRowChosen(lstWhosTrackingMe);
}

void frmMain::fillMessagesPane()
{
    const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(messaging::fnPaneSql(gRun.gstrDefaultUser));
    ListViewMessages->clear();
    if (rs->RecordCount() == 0) {
        return;
    }
    for (; !rs->isEOF(); rs->MoveNext()) {
        addRow(ListViewMessages,
               {rs->Fields(QStringLiteral("MessageFrom")).Text(), rs->Fields(QStringLiteral("MessageSubject")).Text(),
                dateText(rs->Fields(QStringLiteral("SentDateTimeNum")), QStringLiteral("General Date")),
                rs->Fields(QStringLiteral("SentFromName")).Text(), rs->Fields(QStringLiteral("MessageID")).Text()});
    }
    setBusyPointer(false);
}
