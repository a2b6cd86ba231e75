#pragma once
// Messages as rows of MessagesTable: one copy for each recipient and one for the
// sender, drafts, and the changes of a copy's Category. Each group of statements
// runs as one unit of change: a send writes every copy or none, and a failure
// tells who did not get theirs, so the screen can say so and keep the text.

#include "dao/vberror.h"
#include "messaging/messagesql.h"

#include <QStringList>
#include <optional>

namespace messaging {

// The names a To line sends to, by the rule of its send path: the new and draft
// paths split on "; " and keep empty names; the reply and forward paths split on
// ";" and pass over names that are blank, keeping the blank after each ";".
QStringList fnSplitToLine(SendPath path, const QString& toLine);

enum class SendOutcome
{
    Sent,
    EmptyTo,        // nothing written: the screen beeps twice
    FieldsRequired, // the box has been shown: the focus goes to From
    Failed,         // nothing written: see notDelivered and failure
};

struct SendResult
{
    SendOutcome outcome = SendOutcome::Sent;
    // On a failure, the recipients who have no copy: all of them, as no row stays.
    QStringList notDelivered;
    std::optional<VbError> failure;
};

// The send routines, from gstrDefaultUser. The recipients' copies go in To line
// order, then the sender's copy; then the change counter.
SendResult subSendNewMessage(const QString& toLine, const MessageText& text);
// Also removes the draft's own row, in the same unit.
SendResult subSendDraftMessage(long long draftId, const QString& toLine, const MessageText& text);
SendResult subSendReplyMessage(const QString& toLine, const MessageText& text);
SendResult subSendForwardMessage(const QString& toLine, const MessageText& text);

struct SaveResult
{
    long long id = 0; // the draft's MessageID; 0 when the save failed
    std::optional<VbError> failure;
};

// cmdMessage_Save: a first saving (draftId 0) inserts a "Draft" row, a later
// one updates it and leaves SentDateTimeNum as it was. A blank body becomes " ".
SaveResult cmdMessage_Save(long long draftId, const QString& toLine, const MessageText& text);

// On the closing of a message screen: a "New" or "Read" copy viewed becomes
// "Read". The change counter is not raised.
bool fnMarksReadOnClose(const QString& messageAction, const QString& category);
void subMarkMessageRead(long long id);

// Asks "Are you sure you want to delete this message?"; on Yes the copy becomes
// "Deleted". True when it did.
bool subDeleteMessage(long long id);
// The copies become "Deleted", one statement each (the Preview Messages screen,
// the pop-up's Delete Msg).
void subMarkMessagesDeleted(const QList<long long>& ids);
// Remove Selected Message(s) on the board's pane: the rows go for good.
void subRemoveMessagesFromPane(const QList<long long>& ids);

} // namespace messaging
