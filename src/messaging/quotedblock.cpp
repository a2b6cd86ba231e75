#include "messaging/quotedblock.h"

#include "database/moddatabase.h"
#include "database/objectref.h"
#include "messaging/messagesql.h"
#include "platform/clock.h"

namespace messaging {

namespace {

const QString kLineEnd = QStringLiteral("\r\n");

double numberOf(const QString& text)
{
    return text.toDouble();
}

} // namespace

std::optional<StoredMessage> fnReadMessage(long long id)
{
    subOpenDatabase();
    std::optional<StoredMessage> found;
    {
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(fnOneMessageSql(id));
        if (rs->RecordCount() > 0) {
            rs->MoveFirst();
            const auto text = [&rs](const char* field) {
                return rs->Fields(QLatin1String(field)).Text();
            };
            found = StoredMessage{id,
                                  text("Category"),
                                  text("SentFromName"),
                                  text("SentToName"),
                                  text("MessageOwner"),
                                  text("MessageFrom"),
                                  text("MessageSubject"),
                                  text("MessageBody"),
                                  numberOf(text("SentDateTimeNum")),
                                  numberOf(text("LastUsedDateTimeNum"))};
        }
        rs->Close();
    }
    subCloseDatabase();
    return found;
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
