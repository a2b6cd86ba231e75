// Changes to an existing site: people, groups, status types, extra columns,
// statuses, tracking rows and messages.
#include "dao/dao.h"
#include "database/site.h"
#include "database/siterows.h"

#include <QRegularExpression>

namespace database {

QString sqlValue(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return QStringLiteral("Null");
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return QString::number(value.toLongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return dao::sqlNumber(value.toDouble());
    default:
        return dao::quote(value.toString());
    }
}

void insertRow(dao::Database& db, const QString& table, const std::vector<std::pair<QString, QVariant>>& values)
{
    const QStringList present = db.FieldNames(table);
    QStringList columns;
    QStringList literals;
    for (const auto& [column, value] : values) {
        if (present.contains(column, Qt::CaseInsensitive)) {
            columns << column;
            literals << sqlValue(value);
        }
    }
    db.Execute(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                   .arg(table, columns.join(QStringLiteral(", ")), literals.join(QStringLiteral(", "))));
}

QString storedKey(dao::Database& db, const QString& table, const QString& column, const QString& value)
{
    auto rs = db.OpenRecordset(QStringLiteral("SELECT %1 FROM %2 WHERE %1 = %3").arg(column, table, dao::quote(value)),
                               dao::dbOpenSnapshot);
    return rs->isEOF() ? QString() : rs->Fields(0).Text();
}

namespace {

QString requiredName(const QString& text, const QString& what)
{
    const QString name = text.trimmed();
    if (name.isEmpty())
        throw SiteError(QStringLiteral("A %1 needs a name.").arg(what));
    return name;
}

QString existingPerson(dao::Database& db, const QString& name)
{
    const QString stored = storedKey(db, QStringLiteral("EmployeeTable"), QStringLiteral("Name"), name.trimmed());
    if (stored.isEmpty())
        throw SiteError(QStringLiteral("There is no user or item named \"%1\".").arg(name.trimmed()));
    return stored;
}

// The EmployeeSettingsTable row of a new person: the defaults that the settings
// table has a column for, then the fixed column order and sort column.
void addSettingsRow(dao::Database& db, const QString& name, dao::Recordset& defaults)
{
    const QStringList settingsColumns = db.FieldNames(QStringLiteral("EmployeeSettingsTable"));
    auto rs =
        db.OpenRecordset(QStringLiteral("SELECT * FROM EmployeeSettingsTable WHERE Name = %1").arg(dao::quote(name)));
    rs->AddNew();
    rs->Fields(QStringLiteral("Name")) = name;
    for (int i = 0; i < defaults.FieldCount(); ++i) {
        dao::Field field = defaults.Fields(i);
        if (!field.Name().contains(QLatin1String("New_")) &&
            settingsColumns.contains(field.Name(), Qt::CaseInsensitive))
            rs->Fields(field.Name()) = field.Value();
    }
    int order = 1;
    for (const char* column : {"Status", "Name", "Phone", "DueBack", "Comments", "LastModified"})
        rs->Fields(QString::fromLatin1(column) + QStringLiteral("ColumnOrder")) = order++;
    rs->Fields(QStringLiteral("SortColumnName")) = QStringLiteral("Name");
    rs->Update();
}

} // namespace

void addPerson(dao::Database& db, const NewPerson& person)
{
    const QString name = requiredName(person.name, QStringLiteral("user or item"));
    const QString existing = storedKey(db, QStringLiteral("EmployeeTable"), QStringLiteral("Name"), name);
    if (!existing.isEmpty())
        throw SiteError(QStringLiteral("There is already a user or item named \"%1\".").arg(existing));
    auto defaults = db.OpenRecordset(QStringLiteral("SELECT * FROM NewUserDefaultsTable"), dao::dbOpenSnapshot);
    if (defaults->isEOF())
        throw SiteError(QStringLiteral("No User Record in New User Defaults Table."));

    auto rs = db.OpenRecordset(QStringLiteral("SELECT * FROM EmployeeTable WHERE Name = %1").arg(dao::quote(name)));
    rs->AddNew();
    rs->Fields(QStringLiteral("Name")) = name;
    if (!person.uid.trimmed().isEmpty())
        rs->Fields(QStringLiteral("UID")) = person.uid.trimmed();
    if (!person.phone.trimmed().isEmpty())
        rs->Fields(QStringLiteral("Phone")) = person.phone.trimmed();
    for (int i = 0; i < defaults->FieldCount(); ++i) {
        dao::Field field = defaults->Fields(i);
        if (field.Name().contains(QLatin1String("New_")))
            rs->Fields(field.Name()) = field.Value();
    }
    rs->Update();
    rs->Close();

    try {
        addSettingsRow(db, name, *defaults);
    } catch (...) {
        // Without its settings row the person could not run the client: take back both.
        db.Execute(QStringLiteral("DELETE FROM EmployeeTable WHERE Name = %1").arg(dao::quote(name)));
        throw;
    }
}

void addGroup(dao::Database& db, const QString& group)
{
    const QString name = requiredName(group, QStringLiteral("group"));
    if (name.compare(QLatin1String("Everyone"), Qt::CaseInsensitive) == 0)
        throw SiteError(QStringLiteral("\"Everyone\" is built in: it holds every user and item already."));
    const QString existing = storedKey(db, QStringLiteral("GroupTable"), QStringLiteral("GroupName"), name);
    if (!existing.isEmpty())
        throw SiteError(QStringLiteral("There is already a group named \"%1\".").arg(existing));
    insertRow(db, QStringLiteral("GroupTable"), {{"GroupName", name}});
}

void addMember(dao::Database& db, const QString& group, const QString& name, bool manager)
{
    const QString groupName = storedKey(db, QStringLiteral("GroupTable"), QStringLiteral("GroupName"), group.trimmed());
    if (groupName.isEmpty())
        throw SiteError(QStringLiteral("There is no group named \"%1\".").arg(group.trimmed()));
    const QString person = existingPerson(db, name);
    auto rs =
        db.OpenRecordset(QStringLiteral("SELECT * FROM EmployeeGroupTable WHERE GroupName = %1 AND EmployeeName = %2")
                             .arg(dao::quote(groupName), dao::quote(person)),
                         dao::dbOpenSnapshot);
    if (!rs->isEOF())
        throw SiteError(QStringLiteral("\"%1\" is already a member of \"%2\".").arg(person, groupName));
    insertRow(db, QStringLiteral("EmployeeGroupTable"),
              {{"GroupName", groupName}, {"EmployeeName", person}, {"GroupManager", manager}});
}

void addStatusType(dao::Database& db, const StatusTypeRow& type)
{
    const QString status = requiredName(type.status, QStringLiteral("status type"));
    const QString existing = storedKey(db, QStringLiteral("StatusTypesTable"), QStringLiteral("Status"), status);
    if (!existing.isEmpty())
        throw SiteError(QStringLiteral("There is already a status type \"%1\".").arg(existing));
    insertRow(db, QStringLiteral("StatusTypesTable"),
              {{"Status", status},
               {"StatusCode", type.code},
               {"ProtectedStatus", type.isProtected},
               {"ButtonText", type.buttonText.trimmed()},
               {"ToolTipText", type.toolTip.trimmed()},
               {"OnToolBar", type.onToolBar}});
}

QString extraColumnCaption(const QString& column)
{
    return column.mid(4);
}

void addExtraColumn(dao::Database& db, const QString& column, bool readOnly)
{
    // The name becomes part of statements, so only a plain identifier passes.
    static const QRegularExpression shape(QStringLiteral("^New_[A-Za-z][A-Za-z0-9_]*$"));
    if (!shape.match(column).hasMatch() || column.contains(QLatin1String("ReadOnly")))
        throw SiteError(QStringLiteral("\"%1\" is not an extra column name: use New_ followed by letters and "
                                       "digits (not \"ReadOnly\"), e.g. New_Mobile.")
                            .arg(column));
    if (db.FieldNames(QStringLiteral("EmployeeTable")).contains(column, Qt::CaseInsensitive))
        throw SiteError(QStringLiteral("The extra column %1 exists already.").arg(column));

    const QString companion = column + QStringLiteral("ReadOnly");
    for (const char* table : {"EmployeeTable", "NewUserDefaultsTable"}) {
        const QString name = QString::fromLatin1(table);
        db.Execute(QStringLiteral("ALTER TABLE %1 ADD COLUMN %2 TEXT(50)").arg(name, column));
        db.Execute(QStringLiteral("ALTER TABLE %1 ADD COLUMN %2 BIT").arg(name, companion));
        db.Execute(QStringLiteral("UPDATE %1 SET %2 = %3").arg(name, companion, sqlValue(readOnly)));
    }
    for (const char* part : {"ColumnOrder", "ColumnWidth"})
        db.Execute(QStringLiteral("ALTER TABLE EmployeeSettingsTable ADD COLUMN %1%2 LONG").arg(column, part));
}

void setStatus(dao::Database& db, const QString& name, const PersonStatus& status)
{
    const QString person = existingPerson(db, name);
    long long code = 4; // a status word without a row of its own
    if (status.code) {
        code = *status.code;
    } else {
        auto type = db.OpenRecordset(QStringLiteral("SELECT StatusCode FROM StatusTypesTable WHERE Status = %1")
                                         .arg(dao::quote(status.status.trimmed())),
                                     dao::dbOpenSnapshot);
        if (!type->isEOF())
            code = type->Fields(0).Value().toLongLong();
    }
    auto rs = db.OpenRecordset(QStringLiteral("SELECT * FROM EmployeeTable WHERE Name = %1").arg(dao::quote(person)));
    rs->Edit();
    rs->Fields(QStringLiteral("Status")) = status.status.trimmed();
    rs->Fields(QStringLiteral("StatusCode")) = code;
    rs->Fields(QStringLiteral("DueBack")) = status.dueBack.trimmed();
    rs->Fields(QStringLiteral("Comments")) = status.comments.trimmed();
    if (!status.lastModified.isEmpty())
        rs->Fields(QStringLiteral("LastModified")) = status.lastModified.trimmed();
    rs->Update();
}

void addTracking(dao::Database& db, const TrackingRow& row)
{
    // An older file names the time column TrackeeLastUpdate; insertRow writes whichever is there.
    insertRow(db, QStringLiteral("EmployeeStatusTracking"),
              {{"Tracker", row.tracker.trimmed()},
               {"Trackee", row.trackee.trimmed()},
               {"TrackeeStatus", row.trackeeStatus.trimmed()},
               {"TrackeeLastUpdated", row.lastUpdated},
               {"TrackeeLastUpdate", row.lastUpdated}});
}

long long addMessage(dao::Database& db, const MessageRow& message)
{
    insertRow(db, QStringLiteral("MessagesTable"),
              {{"Category", message.category},
               {"SentFromRemoteUNC", message.fromRemoteUNC},
               {"SentFromName", message.fromName},
               {"SentToName", message.toName},
               {"MessageOwner", message.owner},
               {"MessageFrom", message.fromLine.isEmpty() ? message.fromName : message.fromLine},
               {"MessageSubject", message.subject},
               {"MessageBody", message.body},
               {"SentDateTimeNum", message.sent},
               {"LastUsedDateTimeNum", message.lastUsed != 0 ? message.lastUsed : message.sent}});
    auto rs =
        db.OpenRecordset(QStringLiteral("SELECT MAX(MessageID) AS LastID FROM MessagesTable"), dao::dbOpenSnapshot);
    return rs->Fields(0).Value().toLongLong();
}

} // namespace database
