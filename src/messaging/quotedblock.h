#pragma once
// A stored copy read back, and the fields of a reply or a forward built from it:
// the new text goes above a quoted block of the original.

#include <QString>
#include <optional>

namespace messaging {

// One row of MessagesTable, every text trimmed.
struct StoredMessage
{
    long long id = 0;
    QString category;
    QString sentFromName;
    QString sentToName;
    QString owner;
    QString from;
    QString subject;
    QString body;
    double sent = 0;
    double lastUsed = 0;
};

// The copy by its MessageID; nothing when the row is gone.
std::optional<StoredMessage> fnReadMessage(long long id);

// The fields of frmMessage for a reply or a forward.
struct ComposeFields
{
    QString takenBy;
    QString to;
    QString from;
    QString subject;
    QString body;
};

// The reply goes to the user who sent the copy (SentFromName), not to its From line.
ComposeFields fnReplyFields(const StoredMessage& original, const QString& person);
// The To line stays empty, to be chosen on the selection screen.
ComposeFields fnForwardFields(const StoredMessage& original, const QString& person);

// The quoted original: two empty lines first, then the header lines, the body
// and the closing line ending in endLine.
QString fnQuotedBlock(const StoredMessage& original, const QString& endLine);

} // namespace messaging
