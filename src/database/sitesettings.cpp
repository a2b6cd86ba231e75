// The one-row tables: system settings, new-user defaults, the administrator's own
// settings, and the change counters.
#include "dao/dao.h"
#include "database/site.h"
#include "database/siterows.h"

namespace database {

namespace {

struct SettingRef
{
    QString table;
    QString field;
};

// "Field" is a field of GlobalSettingsTable; "Table.Field" names another one-row table.
SettingRef settingRef(dao::Database& db, const QString& text)
{
    static const QStringList oneRowTables = {QStringLiteral("GlobalSettingsTable"),
                                             QStringLiteral("NewUserDefaultsTable"),
                                             QStringLiteral("AdminSettingsTable")};
    const qsizetype dot = text.indexOf(QLatin1Char('.'));
    SettingRef ref{oneRowTables.first(), text.trimmed()};
    if (dot >= 0) {
        const QString table = text.left(dot).trimmed();
        ref.field = text.mid(dot + 1).trimmed();
        ref.table.clear();
        for (const QString& known : oneRowTables) {
            if (known.compare(table, Qt::CaseInsensitive) == 0)
                ref.table = known;
        }
        if (ref.table.isEmpty())
            throw SiteError(QStringLiteral("\"%1\" is not a settings table; use one of: %2.")
                                .arg(table, oneRowTables.join(QStringLiteral(", "))));
    }
    const QStringList fields = db.FieldNames(ref.table);
    for (const QString& field : fields) {
        if (field.compare(ref.field, Qt::CaseInsensitive) == 0)
            return {ref.table, field};
    }
    throw SiteError(QStringLiteral("%1 has no field \"%2\". Its fields: %3.")
                        .arg(ref.table, ref.field, fields.join(QStringLiteral(", "))));
}

std::unique_ptr<dao::Recordset> openOneRow(dao::Database& db, const QString& table)
{
    auto rs = db.OpenRecordset(QStringLiteral("SELECT * FROM %1").arg(table));
    if (rs->isEOF())
        throw SiteError(QStringLiteral("%1 has no row.").arg(table));
    return rs;
}

QVariant typedValue(dao::FieldType type, const QString& field, const QString& text)
{
    const QString value = text.trimmed();
    bool ok = true;
    QVariant result;
    switch (type) {
    case dao::FieldType::Boolean: {
        static const QStringList yes = {"true", "yes", "1", "-1", "on"};
        static const QStringList no = {"false", "no", "0", "off"};
        ok = yes.contains(value.toLower()) || no.contains(value.toLower());
        result = yes.contains(value.toLower());
        break;
    }
    case dao::FieldType::Long:
        result = value.toLongLong(&ok);
        break;
    case dao::FieldType::Double:
        result = value.toDouble(&ok);
        break;
    default:
        result = value;
    }
    if (!ok)
        throw SiteError(QStringLiteral("\"%1\" is not a value for %2.").arg(text, field));
    return result;
}

const QStringList& counterNames()
{
    static const QStringList names = {QStringLiteral("Counter"), QStringLiteral("StatusTypeCounter"),
                                      QStringLiteral("GroupCounter"), QStringLiteral("SecurityCounter"),
                                      QStringLiteral("ExtraColumnsCounter")};
    return names;
}

QString counterName(const QString& text)
{
    for (const QString& name : counterNames()) {
        if (name.compare(text, Qt::CaseInsensitive) == 0)
            return name;
    }
    throw SiteError(QStringLiteral("\"%1\" is not a counter; use one of: %2.")
                        .arg(text, counterNames().join(QStringLiteral(", "))));
}

} // namespace

QString getSetting(dao::Database& db, const QString& field)
{
    const SettingRef ref = settingRef(db, field);
    auto rs = openOneRow(db, ref.table);
    dao::Field f = rs->Fields(ref.field);
    if (f.Type() == dao::FieldType::Boolean && !f.IsNull())
        return f.Value().toBool() ? QStringLiteral("True") : QStringLiteral("False");
    return f.Text();
}

void setSetting(dao::Database& db, const QString& field, const QString& value)
{
    const SettingRef ref = settingRef(db, field);
    auto rs = openOneRow(db, ref.table);
    const QVariant typed = typedValue(rs->Fields(ref.field).Type(), ref.field, value);
    rs->Edit();
    rs->Fields(ref.field) = typed;
    rs->Update();
}

long long readCounter(dao::Database& db, const QString& counter)
{
    const QString name = counterName(counter);
    auto rs = db.OpenRecordset(QStringLiteral("SELECT * FROM StatusCounterTable"), dao::dbOpenSnapshot);
    return rs->isEOF() ? 0 : rs->Fields(name).Value().toLongLong();
}

long long raiseCounter(dao::Database& db, const QString& counter)
{
    const QString name = counterName(counter);
    auto rs = db.OpenRecordset(QStringLiteral("SELECT * FROM StatusCounterTable"));
    if (rs->isEOF()) {
        std::vector<std::pair<QString, QVariant>> zeros;
        for (const QString& each : counterNames())
            zeros.emplace_back(each, 0);
        insertRow(db, QStringLiteral("StatusCounterTable"), zeros);
        rs = db.OpenRecordset(QStringLiteral("SELECT * FROM StatusCounterTable"));
    }
    const long long value = rs->Fields(name).Value().toLongLong() + 1;
    rs->Edit();
    rs->Fields(name) = value;
    rs->Update();
    return value;
}

} // namespace database
