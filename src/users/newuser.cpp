#include "users/newuser.h"

#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/unitofchange.h"
#include "kernel/err.h"
#include "kernel/errorboxes.h"
#include "kernel/globals.h"
#include "platform/msgbox.h"

namespace {

const QString kProcedure = QStringLiteral("frmMain - AddNewUser event");
const QString kDefaultsSql = QStringLiteral("SELECT * FROM NewUserDefaultsTable");

// The settings a new person takes from the defaults, in the order they are copied.
const char* const kCopiedSettings[] = {"AutoClearComments",
                                       "AutoLogIn",
                                       "AutoLogOut",
                                       "AutoMinimize",
                                       "MinimizeOnClose",
                                       "RefreshRate",
                                       "DefaultGroup",
                                       "StatusColumnWidth",
                                       "NameColumnWidth",
                                       "PhoneColumnWidth",
                                       "DueBackColumnWidth",
                                       "CommentsColumnWidth",
                                       "LastModifiedColumnWidth",
                                       "SortOrder",
                                       "SortKey",
                                       "ScreenTop",
                                       "ScreenLeft",
                                       "ScreenWidth",
                                       "ScreenHeight",
                                       "ListViewPopUp",
                                       "ChangeScreenPopUp",
                                       "UserSecurityLevel",
                                       "MinimizeSetting",
                                       "DisplayTreeView",
                                       "IconSize",
                                       "ToolBarText"};
// The layout values that only New User Setup copies.
const char* const kLayoutSettings[] = {"SplitterPositionVertical", "SplitterPositionHorizontal", "FontBoldDisplay",
                                       "FontSizeDisplay"};
// A new person's columns stand in the board's own order, sorted by name.
const char* const kColumnOrders[] = {"Status", "Name", "Phone", "DueBack", "Comments", "LastModified"};

struct NewRows
{
    QString name;
    QString uid; // written only by New User Setup
    bool employeeRow = true;
    bool settingsRow = true;
    bool layout = false;
};

std::unique_ptr<dao::Recordset> openDefaults(const QString& sql)
{
    std::unique_ptr<dao::Recordset> defaults = fnOpenSQL(sql);
    defaults->MoveFirst(); // 3021 when the table has no row
    return defaults;
}

void addEmployeeRow(dao::Recordset& defaults, const NewRows& rows)
{
    const std::unique_ptr<dao::Recordset> rs =
        fnOpenSQL(QStringLiteral("SELECT * FROM EmployeeTable WHERE Name = ") + dao::quote(rows.name));
    rs->AddNew();
    rs->Fields(QStringLiteral("Name")) = rows.name;
    if (rows.layout) {
        rs->Fields(QStringLiteral("UID")) = rows.uid;
    }
    // The administrator's extra columns, each with its default of the same name.
    for (int i = 0; i < defaults.FieldCount(); ++i) {
        const dao::Field field = defaults.Fields(i);
        if (field.Name().contains(QLatin1String("New_"))) {
            rs->Fields(field.Name()) = field.Value();
        }
    }
    rs->Update();
    rs->Close();
}

void addSettingsRow(dao::Recordset& defaults, const NewRows& rows)
{
    const std::unique_ptr<dao::Recordset> rs =
        fnOpenSQL(QStringLiteral("SELECT * FROM EmployeeSettingsTable WHERE Name = ") + dao::quote(rows.name));
    rs->AddNew();
    rs->Fields(QStringLiteral("Name")) = rows.name;
    const auto copy = [&](const char* column) {
        const QString name = QString::fromLatin1(column);
        rs->Fields(name) = defaults.Fields(name).Value();
    };
    for (const char* column : kCopiedSettings) {
        copy(column);
    }
    if (rows.layout) {
        for (const char* column : kLayoutSettings) {
            copy(column);
        }
    }
    long long order = 1;
    for (const char* column : kColumnOrders) {
        rs->Fields(QString::fromLatin1(column) + QStringLiteral("ColumnOrder")) = order++;
    }
    rs->Fields(QStringLiteral("SortColumnName")) = QStringLiteral("Name");
    rs->Update();
    rs->Close();
}

// The rows asked for and the raised counter, as one unit; a failure gets the
// general box and leaves nothing behind.
bool addRows(const NewRows& rows, const QString& defaultsSql)
{
    const bool committed = fnRunUnit(
        [&] {
            if (rows.employeeRow) {
                addEmployeeRow(*openDefaults(defaultsSql), rows);
            }
            if (rows.settingsRow) {
                addSettingsRow(*openDefaults(defaultsSql), rows);
            }
            subUpdateStatusCounter();
        },
        [](const VbError& e, int) {
            Err.Set(e);
            errorbox::showGeneral(kProcedure, errorbox::Joined);
            return false;
        });
    subCloseDatabase();
    return committed;
}

} // namespace

void subAddNewUser(const QString& Tables)
{
    NewRows rows{gRun.gstrCommandLine.trimmed(), QString()};
    rows.employeeRow = Tables == QLatin1String("BothTables") || Tables == QLatin1String("EmployeeTableOnly");
    rows.settingsRow = Tables == QLatin1String("BothTables") || Tables == QLatin1String("EmployeeSettingsTableOnly");
    addRows(rows, kDefaultsSql);
}

bool fnAddNewUserToDatabase(const QString& name, const QString& uid)
{
    const QString sql = kDefaultsSql + QStringLiteral(";");
    bool hasDefaults = false;
    const bool read = ResumeNext([&] {
        subOpenDatabase();
        const std::unique_ptr<dao::Recordset> rs = fnOpenSQL(sql);
        hasDefaults = rs->RecordCount() > 0;
        rs->Close();
    });
    if (read && !hasDefaults) {
        subCloseDatabase();
        platform::MsgBox(QStringLiteral("No User Record in New User Defaults Table."));
        return false;
    }
    NewRows rows{name.trimmed(), uid};
    rows.layout = true;
    if (!addRows(rows, sql)) {
        return false;
    }
    gRun.gblnNewUserSetupDone = true;
    return true;
}
