#include "messaging/messagesql.h"

#include "dao/quote.h"

#include <QStringList>

using dao::quote;
using dao::sqlNumber;

namespace messaging {

namespace {

const QString kInsert = QStringLiteral(" INSERT INTO MessagesTable ");

// A VALUES list: the values joined by "," with no blank.
QString values(const QStringList& items)
{
    return QStringLiteral("VALUES (") + items.join(QLatin1Char(',')) + QStringLiteral(")");
}

QStringList textValues(const MessageText& text)
{
    return {quote(text.from), quote(text.subject), quote(text.body)};
}

} // namespace

QString fnRecipientCopySql(SendPath path, const QString& sender, const QString& name, const MessageText& text,
                           double sent, double lastUsed)
{
    const QStringList dates{sqlNumber(sent), sqlNumber(lastUsed)};
    switch (path) {
    case SendPath::New:
        return kInsert +
               QStringLiteral("(Category, SentFromRemoteUNC, SentFromName, SentToName, MessageOwner, MessageFrom, "
                              "MessageSubject, MessageBody, SentDateTimeNum, LastUsedDateTimeNum) ") +
               values(QStringList{quote(QStringLiteral("New")), quote(QString()), quote(sender), quote(name),
                                  quote(name)} +
                      textValues(text) + dates);
    case SendPath::Draft:
        return kInsert +
               QStringLiteral("(Category, SentFromName, SentToName, MessageOwner, MessageFrom, MessageSubject, "
                              "MessageBody, SentDateTimeNum, LastUsedDateTimeNum) ") +
               values(QStringList{quote(QStringLiteral("New")), quote(sender), quote(name), quote(name)} +
                      textValues(text) + dates);
    case SendPath::Reply:
    case SendPath::Forward:
        break;
    }
    const QString category = path == SendPath::Forward ? QStringLiteral("Forward") : QStringLiteral("New");
    return kInsert +
           QStringLiteral("(SentFromName, SentToName, MessageOwner, MessageFrom, MessageSubject, MessageBody, "
                          "Category, SentDateTimeNum, LastUsedDateTimeNum) ") +
           values(QStringList{quote(sender), quote(name), quote(name)} + textValues(text) +
                  QStringList{quote(category)} + dates);
}

QString fnSenderCopySql(SendPath path, const QString& sender, const QString& toLine, const MessageText& text,
                        double sent, double lastUsed)
{
    const QStringList dates{sqlNumber(sent), sqlNumber(lastUsed)};
    if (path == SendPath::New) {
        return kInsert + QStringLiteral("(Category, SentFromRemoteUNC, SentFromName, MessageOwner, SentToName, ") +
               QStringLiteral("MessageFrom, MessageSubject, MessageBody, SentDateTimeNum, ") +
               QStringLiteral("LastUsedDateTimeNum) ") +
               values(QStringList{quote(QStringLiteral("Sent")), quote(QString()), quote(sender), quote(sender),
                                  quote(toLine)} +
                      textValues(text) + dates);
    }
    return kInsert +
           QStringLiteral("(SentFromName, MessageOwner, SentToName, MessageFrom, MessageSubject, MessageBody, "
                          "Category, SentDateTimeNum, LastUsedDateTimeNum) ") +
           values(QStringList{quote(sender), quote(sender), quote(toLine)} + textValues(text) +
                  QStringList{quote(QStringLiteral("Sent"))} + dates);
}

QString fnDraftInsertSql(const QString& person, const QString& toLine, const MessageText& text, double sent,
                         double lastUsed)
{
    return kInsert +
           QStringLiteral("(Category, SentFromName, MessageOwner, SentToName, MessageFrom, MessageSubject, "
                          "MessageBody, SentDateTimeNum, LastUsedDateTimeNum) ") +
           values(QStringList{quote(QStringLiteral("Draft")), quote(person), quote(person), quote(toLine)} +
                  textValues(text) + QStringList{sqlNumber(sent), sqlNumber(lastUsed)});
}

QString fnDraftUpdateSql(long long id, const QString& person, const QString& toLine, const MessageText& text,
                         double lastUsed)
{
    return QStringLiteral("Update MessagesTable ") + QStringLiteral("set ") + QStringLiteral("Category = ") +
           quote(QStringLiteral("Draft")) + QStringLiteral(", ") + QStringLiteral("SentFromName = ") + quote(person) +
           QStringLiteral(", ") + QStringLiteral("MessageOwner = ") + quote(person) + QStringLiteral(", ") +
           QStringLiteral("SentToName = ") + quote(toLine) + QStringLiteral(", ") + QStringLiteral("MessageFrom = ") +
           quote(text.from) + QStringLiteral(", ") + QStringLiteral("MessageSubject = ") + quote(text.subject) +
           QStringLiteral(", ") + QStringLiteral("MessageBody = ") + quote(text.body) + QStringLiteral(", ") +
           QStringLiteral("LastUsedDateTimeNum = ") + sqlNumber(lastUsed) + QStringLiteral(" Where MessageID = ") +
           QString::number(id);
}

QString fnSetCategorySql(long long id, const QString& category, double lastUsed)
{
    return QStringLiteral("Update MessagesTable ") + QStringLiteral("set ") + QStringLiteral("Category = ") +
           quote(category) + QStringLiteral(", ") + QStringLiteral("LastUsedDateTimeNum = ") + sqlNumber(lastUsed) +
           QStringLiteral(" Where MessageID = ") + QString::number(id);
}

QString fnRemoveSentDraftSql(long long id)
{
    return QStringLiteral("Delete from MessagesTable ") + QStringLiteral("Where MessageID = ") + QString::number(id);
}

QString fnRemoveFromPaneSql(long long id)
{
    return QStringLiteral("Delete from MessagesTable ") + QStringLiteral("WHERE ") + QStringLiteral("MessageID = ") +
           QString::number(id) + QStringLiteral(";  ");
}

QString fnWatcherSql(const QString& person, double lowerLimit)
{
    return QStringLiteral("SELECT MessageSubject, SentFromName, SentToName, Category, MessageID, SentDateTimeNum, "
                          "MessageBody") +
           QStringLiteral("  FROM MessagesTable ") + QStringLiteral(" WHERE (((SentToName)=") + quote(person) +
           QStringLiteral(")") + QStringLiteral("   AND ((Category)=") + quote(QStringLiteral("New")) +
           QStringLiteral(")") + QStringLiteral("   AND ((SentDateTimeNum)>") + sqlNumber(lowerLimit) +
           QStringLiteral("));");
}

QString fnPaneSql(const QString& person)
{
    return QStringLiteral("SELECT * FROM MessagesTable ") + QStringLiteral("where (SentToName = ") + quote(person) +
           QStringLiteral(" and Category = 'New')");
}

QString fnOneMessageSql(long long id)
{
    return QStringLiteral("SELECT * FROM MessagesTable where MessageID = ") + QString::number(id);
}

QString fnOwnerMessagesSql(const QString& owner, const QString& category)
{
    QString sql =
        QStringLiteral("SELECT * FROM MessagesTable ") + QStringLiteral("WHERE MessageOwner = ") + quote(owner);
    if (category == QStringLiteral("Deleted")) {
        sql += QStringLiteral("       and Category = 'Deleted'");
    } else if (!category.isEmpty()) {
        sql += QStringLiteral(" and Category = ") + quote(category);
    }
    return sql;
}

} // namespace messaging
