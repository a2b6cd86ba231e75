// Drafts and the changes of a copy's Category after it is written.

#include "messaging/messagestore.h"

#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/globals.h"
#include "platform/clock.h"
#include "platform/msgbox.h"

namespace messaging {

namespace {

double now()
{
    return platform::DateTimeNum(platform::Now());
}

// One statement for each id and the counter raise, as one unit.
void setCategoryEach(const QList<long long>& ids, const QString& category)
{
    fnRunUnit([&] {
        for (long long id : ids) {
            subExecuteSQL(fnSetCategorySql(id, category, now()));
        }
        subUpdateStatusCounter();
    });
    subCloseDatabase();
}

} // namespace

SaveResult cmdMessage_Save(long long draftId, const QString& toLine, const MessageText& text)
{
    const QString person = gRun.gstrDefaultUser;
    MessageText saved = text;
    if (saved.body.trimmed().isEmpty()) {
        saved.body = QStringLiteral(" ");
    }
    SaveResult result;
    fnRunUnit(
        [&] {
            if (draftId != 0) {
                subExecuteSQL(fnDraftUpdateSql(draftId, person, toLine, saved, now()));
                result.id = draftId;
            } else {
                const double sent = now();
                subExecuteSQL(fnDraftInsertSql(person, toLine, saved, sent, now()));
                // Still inside the unit, so the newest id is this row's.
                result.id = fnOpenSQL(QStringLiteral("SELECT MAX(MessageID) AS LastID FROM MessagesTable"))
                                ->Fields(0)
                                .Value()
                                .toLongLong();
            }
            subUpdateStatusCounter();
        },
        [&](const VbError& error, int) {
            result.id = 0;
            result.failure = error;
            return false;
        });
    subCloseDatabase();
    return result;
}

bool fnMarksReadOnClose(const QString& messageAction, const QString& category)
{
    return messageAction == QStringLiteral("View") &&
           (category == QStringLiteral("New") || category == QStringLiteral("Read"));
}

void subMarkMessageRead(long long id)
{
    subOpenDatabase();
    subExecuteSQL(fnSetCategorySql(id, QStringLiteral("Read"), now()));
    subCloseDatabase();
}

bool subDeleteMessage(long long id)
{
    if (platform::MsgBox(QStringLiteral("Are you sure you want to delete this message?"),
                         platform::vbYesNo + platform::vbQuestion,
                         QStringLiteral("Delete Confirmation Required")) != platform::vbYes) {
        return false;
    }
    setCategoryEach({id}, QStringLiteral("Deleted"));
    return true;
}

void subMarkMessagesDeleted(const QList<long long>& ids)
{
    setCategoryEach(ids, QStringLiteral("Deleted"));
}

void subRemoveMessagesFromPane(const QList<long long>& ids)
{
    fnRunUnit([&] {
        for (long long id : ids) {
            subExecuteSQL(fnRemoveFromPaneSql(id));
        }
        subUpdateStatusCounter();
    });
    subCloseDatabase();
}

} // namespace messaging
