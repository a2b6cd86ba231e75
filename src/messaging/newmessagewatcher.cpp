#include "messaging/newmessagewatcher.h"

#include "dao/quote.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "messaging/messagesql.h"
#include "platform/clock.h"

namespace messaging {

QList<NewMessageAlert> NewMessageWatcher::fnCheckForNewMessages(const QString& person)
{
    const QString sql = fnWatcherSql(person, m_lastChecked);
    subOpenDatabase();
    m_lastChecked = platform::DateTimeNum(platform::Now());
    QList<NewMessageAlert> alerts;
    {
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(sql);
        if (rs->RecordCount() > 0) {
            for (rs->MoveFirst(); !rs->isEOF(); rs->MoveNext()) {
                alerts << NewMessageAlert{rs->Fields(QStringLiteral("MessageSubject")).Text(),
                                          rs->Fields(QStringLiteral("SentDateTimeNum")).Value().toDouble(),
                                          rs->Fields(QStringLiteral("MessageID")).Value().toLongLong(),
                                          rs->Fields(QStringLiteral("MessageBody")).Text()};
            }
        }
        rs->Close();
    }
    subCloseDatabase();
    return alerts;
}

QString NewMessageWatcher::strLastCheckedForNewMessages() const
{
    return dao::sqlNumber(m_lastChecked);
}

} // namespace messaging
