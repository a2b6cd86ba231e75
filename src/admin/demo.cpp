// A believable office for trying the client: 40 people and a meeting room in
// four groups, a day's mix of statuses, a mobile-number column, a few people
// following others, and some messages. Everything is fixed but the times, which
// lie in the hour before now.
#include "admin/commands.h"
#include "dao/dao.h"
#include "database/site.h"
#include "platform/clock.h"

#include <QDateTime>
#include <QSet>

namespace admin {

namespace {

struct DemoPerson
{
    const char* name;
    const char* group;
};

// Telephone and mobile numbers come from the ranges kept for drama and examples.
const DemoPerson kPeople[] = {
    {"Alice Moreton", "Management"},    {"Bernard Quist", "Management"},
    {"Chloe Adeyemi", "Management"},    {"Daniel Fairlie", "Management"},
    {"Eleanor Voss", "Management"},     {"Farid Haddad", "Management"},
    {"Grace Pennington", "Sales"},      {"Harold Baines", "Sales"},
    {"Imogen Clarke", "Sales"},         {"Jamal Osei", "Sales"},
    {"Katrin Lindqvist", "Sales"},      {"Liam O'Connor", "Sales"},
    {"Maya Kapoor", "Sales"},           {"Nathan Briggs", "Sales"},
    {"Olivia Tran", "Sales"},           {"Patrick Dunmore", "Sales"},
    {"Queenie Holt", "Engineering"},    {"Rajesh Iyer", "Engineering"},
    {"Sofia Marchetti", "Engineering"}, {"Thomas Whitfield", "Engineering"},
    {"Uma Sorensen", "Engineering"},    {"Victor Kowalski", "Engineering"},
    {"Wendy Nakamura", "Engineering"},  {"Xavier Dubois", "Engineering"},
    {"Yasmin Aziz", "Engineering"},     {"Zachary Hume", "Engineering"},
    {"Abigail Frost", "Engineering"},   {"Benjamin Okafor", "Engineering"},
    {"Carmen Ruiz", "Help Desk*"},      {"Derek Ashworth", "Help Desk*"},
    {"Esther Goldberg", "Help Desk*"},  {"Felix Brandt", "Help Desk*"},
    {"Gemma Lowry", "Help Desk*"},      {"Hugo Lefevre", "Help Desk*"},
    {"Isla McKenzie", "Help Desk*"},    {"Jonas Weber", "Help Desk*"},
    {"Kiran Patel", "Help Desk*"},      {"Lucy Hargreaves", "Help Desk*"},
    {"Martin Svoboda", "Sales"},        {"Nadia Petrova", "Management"},
};

struct DemoStatus
{
    const char* status;
    const char* dueBack;
    const char* comments;
};

// Dealt out in turn, so every group gets a mix.
const DemoStatus kStatuses[] = {
    {"In", "", ""},
    {"Out", "Back in 1 hour", "Visiting a customer in town"},
    {"In", "", "Working on the quarterly report"},
    {"Busy", "", "On a call, please message"},
    {"At Lunch", "Back in 30 minutes", ""},
    {"In Meeting", "After lunch", "Project review, room 1"},
    {"In", "", ""},
    {"On Holiday", "Next week", "Walking in the Lake District"},
    {"Out", "Tomorrow", "Training course"},
    {"In", "", "Ext. moved, see phone list"},
    {"Working from home", "Tomorrow", "Reachable on mobile"},
    {"Sick", "", ""},
};

QString stamp(const QDateTime& when, const QString& by)
{
    return when.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) + QStringLiteral(" by ") + by;
}

void addPeople(dao::Database& db, const QDateTime& now)
{
    for (const char* group : {"Management", "Sales", "Engineering", "Help Desk*"})
        database::addGroup(db, QString::fromLatin1(group));
    database::addExtraColumn(db, QStringLiteral("New_Mobile"));
    QSet<QString> managed;
    int i = 0;
    for (const DemoPerson& person : kPeople) {
        const QString name = QString::fromUtf8(person.name);
        const QString login = name.section(QLatin1Char(' '), 0, 0).toLower().left(1) +
                              name.section(QLatin1Char(' '), -1).toLower().remove(QLatin1Char('\''));
        database::addPerson(db, {name, login, QStringLiteral("020 7946 0%1").arg(100 + i * 7)});
        // Each group's first member manages it.
        const QString group = QString::fromLatin1(person.group);
        database::addMember(db, group, name, !managed.contains(group));
        managed.insert(group);
        db.Execute(QStringLiteral("UPDATE EmployeeTable SET New_Mobile = %1 WHERE Name = %2")
                       .arg(dao::quote(QStringLiteral("07700 900%1").arg(200 + i * 13)), dao::quote(name)));
        const DemoStatus& s = kStatuses[i % std::size(kStatuses)];
        const QString by = i % 5 == 4 ? QStringLiteral("Carmen Ruiz") : name; // the help desk sets a few
        database::setStatus(db, name,
                            {QString::fromUtf8(s.status), QString::fromUtf8(s.dueBack), QString::fromUtf8(s.comments),
                             stamp(now.addSecs(-97LL * (i + 1)), by)});
        ++i;
    }
    database::addPerson(db, {QStringLiteral("Meeting Room 1"), QString(), QStringLiteral("020 7946 0999")});
    database::addMember(db, QStringLiteral("Help Desk*"), QStringLiteral("Meeting Room 1"));
    database::setStatus(db, QStringLiteral("Meeting Room 1"),
                        {QStringLiteral("Busy"), QStringLiteral("Free at 15:00"),
                         QStringLiteral("Booked: project review"),
                         stamp(now.addSecs(-1800), QStringLiteral("Alice Moreton"))});
}

QString statusOf(dao::Database& db, const QString& name)
{
    auto rs = db.OpenRecordset(QStringLiteral("SELECT Status FROM EmployeeTable WHERE Name = %1").arg(dao::quote(name)),
                               dao::dbOpenSnapshot);
    return rs->isEOF() ? QString() : rs->Fields(0).Text();
}

void addTracking(dao::Database& db, const QDateTime& now)
{
    const std::pair<const char*, const char*> pairs[] = {
        {"Alice Moreton", "Bernard Quist"},    {"Alice Moreton", "Grace Pennington"},
        {"Grace Pennington", "Harold Baines"}, {"Carmen Ruiz", "Meeting Room 1"},
        {"Queenie Holt", "Rajesh Iyer"},
    };
    for (const auto& [tracker, trackee] : pairs) {
        const QString watched = QString::fromUtf8(trackee);
        database::addTracking(
            db, {QString::fromUtf8(tracker), watched, statusOf(db, watched), platform::DateTimeNum(now.addSecs(-600))});
    }
}

// A message goes to each recipient as a 'New' copy and to the sender as 'Sent'.
void send(dao::Database& db, const QString& from, const QStringList& to, const QString& subject, const QString& body,
          double sent)
{
    for (const QString& name : to)
        database::addMessage(db, {.owner = name,
                                  .category = QStringLiteral("New"),
                                  .fromName = from,
                                  .toName = name,
                                  .subject = subject,
                                  .body = body,
                                  .sent = sent});
    database::addMessage(db, {.owner = from,
                              .category = QStringLiteral("Sent"),
                              .fromName = from,
                              .toName = to.join(QStringLiteral("; ")),
                              .subject = subject,
                              .body = body,
                              .sent = sent});
}

void addMessages(dao::Database& db, const QDateTime& now)
{
    auto at = [&](int minutesAgo) {
        return platform::DateTimeNum(now.addSecs(-60LL * minutesAgo));
    };
    send(db, QStringLiteral("Carmen Ruiz"), {QStringLiteral("Alice Moreton")}, QStringLiteral("Visitor at reception"),
         QStringLiteral("Mr Evans from Northwind is here for your 11 o'clock."), at(5));
    send(db, QStringLiteral("Grace Pennington"), {QStringLiteral("Harold Baines"), QStringLiteral("Imogen Clarke")},
         QStringLiteral("Price list"), QStringLiteral("The new price list is on the share. Please check your regions."),
         at(45));
    // One already read by its recipient.
    database::addMessage(db, {.owner = QStringLiteral("Rajesh Iyer"),
                              .category = QStringLiteral("Read"),
                              .fromName = QStringLiteral("Queenie Holt"),
                              .toName = QStringLiteral("Rajesh Iyer"),
                              .subject = QStringLiteral("Build server"),
                              .body = QStringLiteral("The build server is back up."),
                              .sent = at(120)});
}

} // namespace

void fillDemo(dao::Database& db)
{
    const QDateTime now = platform::Now();
    database::addStatusType(db, {QStringLiteral("Working from home"), 9, QStringLiteral("Home"),
                                 QStringLiteral("Working from home"), false, true});
    addPeople(db, now);
    addTracking(db, now);
    addMessages(db, now);
}

} // namespace admin
