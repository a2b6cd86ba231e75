#pragma once
// The statements of MessagesTable, each built by joining its pieces with their
// own spacing. Every text value enters through dao::quote and every number
// through dao::sqlNumber.

#include <QString>

namespace messaging {

// The four ways a message goes out; each writes its rows with its own statements.
enum class SendPath
{
    New,
    Draft,
    Reply,
    Forward
};

// What the screen holds of a message: its From line, subject and body.
struct MessageText
{
    QString from;
    QString subject;
    QString body;
};

// A recipient's copy: "New", or "Forward" on the forward path.
QString fnRecipientCopySql(SendPath path, const QString& sender, const QString& name, const MessageText& text,
                           double sent, double lastUsed);
// The sender's "Sent" copy, with the whole To line as SentToName.
QString fnSenderCopySql(SendPath path, const QString& sender, const QString& toLine, const MessageText& text,
                        double sent, double lastUsed);
QString fnDraftInsertSql(const QString& person, const QString& toLine, const MessageText& text, double sent,
                         double lastUsed);
QString fnDraftUpdateSql(long long id, const QString& person, const QString& toLine, const MessageText& text,
                         double lastUsed);
// Category set to "Read" or "Deleted", with the moment of the change.
QString fnSetCategorySql(long long id, const QString& category, double lastUsed);
QString fnRemoveSentDraftSql(long long id);
QString fnRemoveFromPaneSql(long long id);

// New copies addressed to the person and sent after the lower limit.
QString fnWatcherSql(const QString& person, double lowerLimit);
QString fnPaneSql(const QString& person);
QString fnOneMessageSql(long long id);
// A person's copies on the Preview Messages screen; category empty for all of them.
QString fnOwnerMessagesSql(const QString& owner, const QString& category = {});

} // namespace messaging
