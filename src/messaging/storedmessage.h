#pragma once
// A stored copy read back: the line of dates its view shows, and the fields of a
// reply or a forward built from it, the new text above a quoted block of the
// original. Also the board pane's list of copies still "New".

#include <QList>
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

// The line of dates (lblLastUsed) of a viewed copy by its category; nothing
// where the line stays as it was ("Sent" and categories it does not know).
std::optional<QString> fnLastUsedLine(const StoredMessage& message);

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

// The "New" copies addressed to the person, whatever their age, as the pane on
// the board lists them.
QList<StoredMessage> fnReadPaneMessages(const QString& person);

} // namespace messaging
