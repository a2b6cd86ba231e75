#include "database/upgrade.h"

#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/objectref.h"
#include "database/schema.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"

#include <array>

namespace {

// The program's own release string. It is never filled in this build, so the
// release step finds it equal to the (not yet read) release of the file.
const QString kProgramReleaseVersion;

// What a row of the upgrade table does to the error number before it runs.
enum class Before
{
    Nothing,    // the number stays as it was
    IfWentWell, // runs only when the number is 0
    Clear,      // the number is set to 0 first
};

struct UpgradeRow
{
    Before before;
    const char* statement; // nullptr: the release step
};

// clang-format off
constexpr std::array<UpgradeRow, 46> kUpgradeRows = {{
    {Before::Nothing, "ALTER TABLE GlobalSettingsTable ADD COLUMN DatabaseReleaseVersion TEXT(10) NOT NULL"},
    {Before::IfWentWell, "UPDATE GlobalSettingsTable SET DatabaseReleaseVersion = 2005"},
    {Before::Nothing, "ALTER TABLE GlobalSettingsTable ADD COLUMN AllowMessaging Bit NOT NULL"},
    {Before::IfWentWell, "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowMessaging = True"},
    {Before::Nothing, "ALTER TABLE GlobalSettingsTable ADD COLUMN AllowStatusAlerts Bit NOT NULL"},
    {Before::IfWentWell, "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowStatusAlerts = True"},
    {Before::Clear, "ALTER TABLE GlobalSettingsTable ADD COLUMN AllowPresenceSensing Bit NOT NULL"},
    {Before::IfWentWell, "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowPresenceSensing = True"},
    {Before::Clear, "ALTER TABLE GlobalSettingsTable ADD COLUMN AllowUserToAddVeskOrToStartupFolder Bit NOT NULL"},
    {Before::IfWentWell, "UPDATE GlobalSettingsTable SET GlobalSettingsTable.AllowUserToAddVeskOrToStartupFolder = True"},
    {Before::Clear, "ALTER TABLE GlobalSettingsTable ADD COLUMN UpdateStatusOnLock Bit NOT NULL"},
    {Before::IfWentWell, "UPDATE GlobalSettingsTable SET GlobalSettingsTable.UpdateStatusOnLock = FALSE"},
    {Before::Clear, "ALTER TABLE EmployeeSettingsTable ADD COLUMN SplitterPositionVertical Long NOT NULL"},
    {Before::IfWentWell, "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.SplitterPositionVertical = 1800"},
    {Before::Clear, "ALTER TABLE EmployeeSettingsTable ADD COLUMN SplitterPositionHorizontal Long NOT NULL"},
    {Before::IfWentWell, "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.SplitterPositionHorizontal = 1575"},
    {Before::Clear, "ALTER TABLE EmployeeSettingsTable ADD COLUMN DisplayTreeView Long NOT NULL"},
    {Before::IfWentWell, "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.DisplayTreeView = 1"},
    {Before::Clear, "ALTER TABLE EmployeeSettingsTable ADD COLUMN StatusAlertsOverride Bit NOT NULL"},
    {Before::IfWentWell, "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.StatusAlertsOverride = FALSE"},
    {Before::Clear, "ALTER TABLE EmployeeSettingsTable ADD COLUMN FontBoldDisplay Long NOT NULL"},
    {Before::IfWentWell, "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.FontBoldDisplay = 0"},
    {Before::Clear, "ALTER TABLE EmployeeSettingsTable ADD COLUMN FontSizeDisplay Long NOT NULL"},
    {Before::IfWentWell, "UPDATE EmployeeSettingsTable SET EmployeeSettingsTable.FontSizeDisplay = 8"},
    {Before::Clear, "ALTER TABLE NewUserDefaultsTable ADD COLUMN SplitterPositionVertical Long  NOT NULL"},
    {Before::IfWentWell, "UPDATE NewUserDefaultsTable SET NewUserDefaultsTable.SplitterPositionVertical = 1800"},
    {Before::Clear, "ALTER TABLE NewUserDefaultsTable ADD COLUMN SplitterPositionHorizontal Long NOT NULL"},
    {Before::IfWentWell, "UPDATE NewUserDefaultsTable SET NewUserDefaultsTable.SplitterPositionHorizontal = 1575"},
    {Before::Clear, nullptr},
    {Before::Clear, "ALTER TABLE NewUserDefaultsTable ADD COLUMN FontBoldDisplay Long NOT NULL"},
    {Before::IfWentWell, "UPDATE NewUserDefaultsTable SET NewUserDefaultsTable.FontBoldDisplay = 0"},
    {Before::Clear, "ALTER TABLE NewUserDefaultsTable ADD COLUMN FontSizeDisplay Long NOT NULL"},
    {Before::IfWentWell, "UPDATE NewUserDefaultsTable SET NewUserDefaultsTable.FontSizeDisplay = 8"},
    {Before::Clear, "ALTER TABLE AdminSettingsTable ADD COLUMN LastSelectedNode Text(20)"},
    {Before::IfWentWell, "UPDATE AdminSettingsTable SET AdminSettingsTable.LastSelectedNode = 'Users'"},
    {Before::Clear, "ALTER TABLE AdminSettingsTable ADD COLUMN AdminFontBoldDisplay Long NOT NULL"},
    {Before::IfWentWell, "UPDATE AdminSettingsTable SET AdminSettingsTable.AdminFontBoldDisplay = 0"},
    {Before::Clear, "ALTER TABLE AdminSettingsTable ADD COLUMN AdminFontSizeDisplay Long NOT NULL"},
    {Before::IfWentWell, "UPDATE AdminSettingsTable SET AdminSettingsTable.AdminFontSizeDisplay = 8"},
    // A column is renamed by dropping the old name and adding the new one, so
    // only a file that had the old name gets the new one here.
    {Before::Clear, "ALTER TABLE EmployeeStatusTracking Drop COLUMN TrackeeLastUpdate"},
    {Before::IfWentWell, "ALTER TABLE EmployeeStatusTracking ADD COLUMN TrackeeLastUpdated DOUBLE"},
    {Before::Clear, "ALTER TABLE MessagesTable Drop COLUMN TrackeeLastUpdate"},
    {Before::Clear, "ALTER TABLE MessagesTable ADD COLUMN MessageOwner Text(250)"},
    {Before::Clear, "ALTER TABLE TransactionLogTable ADD COLUMN LogDateTime Text(250)"},
    {Before::Clear, "ALTER TABLE TransactionLogTable ADD COLUMN ComputerName Text(250)"},
    {Before::Clear, "ALTER TABLE TransactionLogTable ADD COLUMN IPAddress Text(250)"},
}};
// clang-format on

// The file's release against the program's: written only when they differ.
void subUpdateReleaseVersion()
{
    if (gSite.gstrDatabaseReleaseVersion != kProgramReleaseVersion) {
        ResumeNext([] {
            fnDatabase().Execute(QStringLiteral("UPDATE GlobalSettingsTable SET DatabaseReleaseVersion = ") +
                                 dao::quote(kProgramReleaseVersion));
        });
        gSite.gstrDatabaseReleaseVersion = kProgramReleaseVersion;
    }
}

// The counters' row. Later opens in the same procedure use this text, not
// gstrSQL, which a timer may have changed while a write waited for a lock.
const QString kCountersSql = QStringLiteral("Select * from StatusCounterTable");

// Opens the counters' row as a dynaset; a lost database object is opened again.
std::unique_ptr<dao::Recordset> openCounters()
{
    std::unique_ptr<dao::Recordset> rs;
    for (int tries = 1;; ++tries) {
        Err.Clear();
        subOpenDatabase();
        ResumeNext([&] { rs = fnOpenSQL(kCountersSql); });
        if (Err.Number != dao::errObjectInvalid || !fnRetryAfterObjectGone(tries)) {
            return rs;
        }
    }
}

} // namespace

bool fnIsValidDatabase(const QString& path)
{
    Err.Clear();
    bool result = false;
    std::shared_ptr<dao::Database> db;
    std::unique_ptr<dao::Recordset> rs;
    QVariant version;
    ResumeNext([&] { db = dao::DBEngine::OpenDatabase(path + QStringLiteral("veskor.mdb"), false, false, QString()); });
    if (Err.Number == 0) {
        const QString sql = QStringLiteral("Select DatabaseVersion from GlobalSettingsTable");
        gRun.gstrSQL = sql;
        ResumeNext([&] { rs = db->OpenRecordset(sql, dao::dbOpenDynaset); });
    }
    ResumeNext([&] { version = fnRecordset(rs).Fields(QStringLiteral("databaseversion")).Value(); });
    // Stored as text or as a number, 2005 reads as "2005".
    if (Err.Number != 0 || version.toString() != QStringLiteral("2005")) {
        mainScreen().setBusyPointer(false);
    } else {
        result = true;
    }
    // Leaving a procedure that ignored its errors clears Err, as in VB.
    Err.Clear();
    return result;
}

void subUpdateDatabaseStructure()
{
    subOpenDatabase();
    Err.Clear();
    for (const UpgradeRow& row : kUpgradeRows) {
        if (row.before == Before::Clear) {
            Err.Clear();
        } else if (row.before == Before::IfWentWell && Err.Number != 0) {
            continue;
        }
        if (row.statement == nullptr) {
            subUpdateReleaseVersion();
        } else {
            ResumeNext([&] { fnDatabase().Execute(QString::fromLatin1(row.statement)); });
        }
    }
    // Look-ups of a person by name or login ID, and of a person's messages, use an
    // index on any file, however old; a file we may not change is used without it.
    ResumeNext([] { database::createCaseBlindIndexes(fnDatabase()); });
    ResumeNext([] { database::createMissingIndexes(fnDatabase()); });
    subCloseDatabase();
    Err.Clear();
}

void subTestStatusCounterTable()
{
    Err.Clear();
    std::unique_ptr<dao::Recordset> rs = openCounters();
    if (testOrFail([&] { return fnRecordset(rs).RecordCount() == 0; })) {
        ResumeNext([&] { fnRecordset(rs).AddNew(); });
        ResumeNext([&] { fnRecordset(rs).Update(); });
    }
    bool found = false;
    ResumeNext([&] {
        for (int i = 0; i < fnRecordset(rs).FieldCount() && !found; ++i) {
            found = rs->Fields(i).Name() == QStringLiteral("ExtraColumnsCounter");
        }
    });
    ResumeNext([&] { fnRecordset(rs).Close(); });

    if (!found) {
        ResumeNext([] {
            fnDatabase().Execute(
                QStringLiteral("ALTER TABLE StatusCounterTable ADD COLUMN ExtraColumnsCounter LONG NOT NULL"));
        });
        ResumeNext([&] { rs = fnDatabase().OpenRecordset(kCountersSql, dao::dbOpenDynaset); });
        ResumeNext([&] { fnRecordset(rs).Edit(); });
        ResumeNext([&] { fnRecordset(rs).Fields(QStringLiteral("ExtraColumnsCounter")) = 1; });
        ResumeNext([&] { fnRecordset(rs).Update(); });
        ResumeNext([&] { fnRecordset(rs).Close(); });
    }

    // The test for StatusTypeCounter reads "StatusTypeCountertrim", a field no
    // table has: the read fails, so the branch runs and StatusTypeCounter falls
    // back to 1 on every pass. The administrator's raises are seen only when they
    // land between this and the read of the counters.
    struct CounterTest
    {
        const char* read;
        const char* write;
    };
    static constexpr CounterTest kCounters[] = {
        {"Counter", "Counter"},
        {"StatusTypeCountertrim", "StatusTypeCounter"},
        {"GroupCounter", "GroupCounter"},
        {"SecurityCounter", "SecurityCounter"},
        {"ExtraColumnsCounter", "ExtraColumnsCounter"},
    };
    ResumeNext([&] { rs = fnDatabase().OpenRecordset(kCountersSql, dao::dbOpenDynaset); });
    for (const CounterTest& counter : kCounters) {
        const QString field = QString::fromLatin1(counter.write);
        if (testOrFail([&] { return fnRecordset(rs).Fields(QString::fromLatin1(counter.read)).IsNull(); })) {
            // Writing 1 over a 1 changes nothing, yet it would take the shared
            // file's write lock on every poll of every client: only another value
            // is overwritten.
            if (testOrFail([&] { return fnRecordset(rs).Fields(field).Text() != QStringLiteral("1"); })) {
                ResumeNext([&] { fnRecordset(rs).Edit(); });
                ResumeNext([&] { fnRecordset(rs).Fields(field) = 1; });
                ResumeNext([&] { fnRecordset(rs).Update(); });
            }
        }
    }
    ResumeNext([&] { fnRecordset(rs).Close(); });
    subCloseDatabase();
    Err.Clear();
}
