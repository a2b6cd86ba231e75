#include "messaging/storedmessage.h"

#include "database/moddatabase.h"
#include "database/objectref.h"
#include "messaging/messagesql.h"
#include "platform/clock.h"

namespace messaging {

namespace {

const QString kLineEnd = QStringLiteral("\r\n");

StoredMessage messageOf(dao::Recordset& rs)
{
    const auto text = [&rs](const char* field) {
        return rs.Fields(QLatin1String(field)).Text();
    };
    // The numbers are read as numbers: going through their text costs more than
    // the rest of the row, and a Null reads as 0 either way.
    const auto number = [&rs](const char* field) {
        return rs.Fields(QLatin1String(field)).Value();
    };
    return {number("MessageID").toLongLong(),
            text("Category"),
            text("SentFromName"),
            text("SentToName"),
            text("MessageOwner"),
            text("MessageFrom"),
            text("MessageSubject"),
            text("MessageBody"),
            number("SentDateTimeNum").toDouble(),
            number("LastUsedDateTimeNum").toDouble()};
}

// Every row of a statement, in the order the table gives them.
QList<StoredMessage> readAll(const QString& sql)
{
    subOpenDatabase();
    QList<StoredMessage> messages;
    {
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(sql);
        if (rs->RecordCount() > 0) {
            for (rs->MoveFirst(); !rs->isEOF(); rs->MoveNext()) {
                messages << messageOf(*rs);
            }
        }
        rs->Close();
    }
    subCloseDatabase();
    return messages;
}

QString asDate(double dateNum)
{
    return platform::Format(platform::dateFromDateTimeNum(dateNum), QStringLiteral("General Date"));
}

} // namespace

std::optional<StoredMessage> fnReadMessage(long long id)
{
    const QList<StoredMessage> found = readAll(fnOneMessageSql(id));
    return found.isEmpty() ? std::nullopt : std::optional<StoredMessage>(found.first());
}

QList<StoredMessage> fnReadPaneMessages(const QString& person)
{
    return readAll(fnPaneSql(person));
}

std::optional<QString> fnLastUsedLine(const StoredMessage& message)
{
    const QString sent = asDate(message.sent);
    const QString last = asDate(message.lastUsed);
    const QString original = QStringLiteral("Original Sent: ") + sent;
    const QString gap = QStringLiteral("                      ");
    const QString& category = message.category;
    if (category == QStringLiteral("New")) {
        return QStringLiteral("Sent: ") + sent;
    }
    if (category == QStringLiteral("Read")) {
        return original + gap + QStringLiteral("Last Read :") + last;
    }
    if (category == QStringLiteral("Reply")) {
        return original + gap + QStringLiteral("Last Replied :") + last;
    }
    if (category == QStringLiteral("Forward")) {
        return original + gap + QStringLiteral("Last Forward :") + last;
    }
    if (category == QStringLiteral("Draft")) {
        return QStringLiteral("Last Saved: ") + last;
    }
    if (category == QStringLiteral("Deleted")) {
        return QStringLiteral("Deleted: ") + last;
    }
    if (category == QStringLiteral("Forwarded")) {
        return original + QStringLiteral(" - Last Forwaded: ") + last;
    }
    return std::nullopt;
}

QString fnQuotedBlock(const StoredMessage& original, const QString& endLine)
{
    const QString date =
        platform::Format(platform::dateFromDateTimeNum(original.sent), QStringLiteral("mmm dd, yyyy hh:mm:ss"));
    const QString twoEnds = kLineEnd + kLineEnd;
    return twoEnds + QStringLiteral("-----Original Message Sent: ") + date + QStringLiteral("   - Start-----") +
           twoEnds + QStringLiteral("Sent by: ") + original.sentFromName + kLineEnd + QStringLiteral("To: ") +
           original.sentToName + kLineEnd + QStringLiteral("From: ") + original.from + kLineEnd +
           QStringLiteral("Sent: ") + date + kLineEnd + QStringLiteral("Subject: ") + original.subject + twoEnds +
           original.body + twoEnds + QStringLiteral("-----Original Message Sent: ") + date + endLine + kLineEnd;
}

ComposeFields fnReplyFields(const StoredMessage& original, const QString& person)
{
    return {original.sentFromName, original.sentFromName, person, QStringLiteral("RE: ") + original.subject,
            fnQuotedBlock(original, QStringLiteral("   -End-----"))};
}

ComposeFields fnForwardFields(const StoredMessage& original, const QString& person)
{
    return {original.sentFromName, QString(), person, QStringLiteral("FW: ") + original.subject,
            fnQuotedBlock(original, QStringLiteral("   - End-----"))};
}

} // namespace messaging
