// The four send routines: the split of the To line, the field test of a new
// message, and the rows written as one unit of change.

#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/globals.h"
#include "messaging/messagestore.h"
#include "platform/clock.h"
#include "platform/msgbox.h"

namespace messaging {

namespace {

double now()
{
    return platform::DateTimeNum(platform::Now());
}

// Writes the recipients' copies in order, the sender's copy, and raises the
// counter; extra runs last in the same unit. Nothing stays on a failure.
SendResult writeCopies(SendPath path, const QString& toLine, const QStringList& names, const MessageText& text,
                       const std::function<void()>& extra = {})
{
    const QString sender = gRun.gstrDefaultUser;
    SendResult result;
    const bool committed = fnRunUnit(
        [&] {
            for (const QString& name : names) {
                // Each date is a reading of its own, as each copy is written.
                const double sent = now();
                subExecuteSQL(fnRecipientCopySql(path, sender, name, text, sent, now()));
            }
            const double sent = now();
            subExecuteSQL(fnSenderCopySql(path, sender, toLine, text, sent, now()));
            subUpdateStatusCounter();
            if (extra) {
                extra();
            }
        },
        [&](const VbError& error, int) {
            result.failure = error;
            return false;
        });
    subCloseDatabase();
    if (!committed) {
        result.outcome = SendOutcome::Failed;
        result.notDelivered = names;
    }
    return result;
}

} // namespace

QStringList fnSplitToLine(SendPath path, const QString& toLine)
{
    if (path == SendPath::New || path == SendPath::Draft) {
        return toLine.split(QStringLiteral("; "));
    }
    if (!toLine.contains(QLatin1Char(';'))) {
        return toLine.trimmed().isEmpty() ? QStringList{} : QStringList{toLine};
    }
    QStringList names;
    for (const QString& name : toLine.split(QLatin1Char(';'))) {
        if (!name.trimmed().isEmpty()) {
            names << name;
        }
    }
    return names;
}

SendResult subSendNewMessage(const QString& toLine, const MessageText& text)
{
    if (toLine.trimmed().isEmpty()) {
        return {SendOutcome::EmptyTo, {}, {}};
    }
    const QStringList names = fnSplitToLine(SendPath::New, toLine);
    if (text.from.trimmed().isEmpty() && text.subject.isEmpty() && text.body.isEmpty()) {
        platform::MsgBox(QStringLiteral("Either From, Subject, or Body is required."), platform::vbInformation,
                         QStringLiteral("Fields are Required."));
        return {SendOutcome::FieldsRequired, {}, {}};
    }
    // No empty text reaches the table.
    const auto filled = [](const QString& field) {
        return field.trimmed().isEmpty() ? QStringLiteral(" ") : field;
    };
    return writeCopies(SendPath::New, toLine, names, {filled(text.from), filled(text.subject), filled(text.body)});
}

SendResult subSendDraftMessage(long long draftId, const QString& toLine, const MessageText& text)
{
    if (toLine.trimmed().isEmpty()) {
        return {SendOutcome::EmptyTo, {}, {}};
    }
    return writeCopies(SendPath::Draft, toLine, fnSplitToLine(SendPath::Draft, toLine), text,
                       [draftId] { subExecuteSQL(fnRemoveSentDraftSql(draftId)); });
}

SendResult subSendReplyMessage(const QString& toLine, const MessageText& text)
{
    return writeCopies(SendPath::Reply, toLine, fnSplitToLine(SendPath::Reply, toLine), text);
}

SendResult subSendForwardMessage(const QString& toLine, const MessageText& text)
{
    return writeCopies(SendPath::Forward, toLine, fnSplitToLine(SendPath::Forward, toLine), text);
}

} // namespace messaging
