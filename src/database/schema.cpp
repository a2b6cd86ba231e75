#include "database/schema.h"

#include "dao/dao.h"

#include <vector>

namespace database {

namespace {

// Which releases of the file carry a column.
enum class Since
{
    Both,    // in every release
    Upgrade, // added by the client's upgrade: only the present release has it
    OldOnly, // dropped by the upgrade: only the older release has it
};

struct Column
{
    QString name;
    QString type; // a Jet type, with NOT NULL and a default where the file demands a value
    Since since = Since::Both;
};

struct Index
{
    QString name;
    QString columns; // "A, B"
};

struct Table
{
    QString name;
    std::vector<Column> columns;
    QString primaryKey = {}; // a column list for "CONSTRAINT PrimaryKey PRIMARY KEY (...)", or ""
    std::vector<Index> indexes = {};
};

// Text widths: 50 for names and short words, 250 where a status, due-back text or
// log value may run long, 255 for comments, subjects and paths.
const QString kName = QStringLiteral("TEXT(50)");
const QString kLong250 = QStringLiteral("TEXT(250)");
const QString kText255 = QStringLiteral("TEXT(255)");
const QString kMemo = QStringLiteral("LONGTEXT");

// The columns the client's upgrade adds demand a value; a row written without one
// gets the value the upgrade gives the rows it finds.
const QString kSplitterVertical = QStringLiteral("LONG NOT NULL DEFAULT 1800");
const QString kSplitterHorizontal = QStringLiteral("LONG NOT NULL DEFAULT 1575");
const QString kFontBold = QStringLiteral("LONG NOT NULL DEFAULT 0");
const QString kFontSize = QStringLiteral("LONG NOT NULL DEFAULT 8");

std::vector<Column> employeeSettingsColumns()
{
    const QString bit = QStringLiteral("BIT");
    const QString lng = QStringLiteral("LONG");
    const QString integer = QStringLiteral("INTEGER");
    std::vector<Column> c = {
        {"Name", kName},       {"AutoClearComments", bit}, {"AutoLogIn", bit},       {"AutoLogOut", bit},
        {"AutoMinimize", bit}, {"MinimizeOnClose", bit},   {"RefreshRate", integer}, {"DefaultGroup", kName},
    };
    for (const char* col : {"Status", "Name", "Phone", "DueBack", "Comments", "LastModified"})
        c.push_back({QString::fromLatin1(col) + QStringLiteral("ColumnWidth"), lng});
    for (const char* col : {"Status", "Name", "Phone", "DueBack", "Comments", "LastModified"})
        c.push_back({QString::fromLatin1(col) + QStringLiteral("ColumnOrder"), lng});
    const std::vector<Column> rest = {
        {"SortOrder", integer},
        {"SortKey", integer},
        {"SortColumnName", kName},
        {"ScreenTop", lng},
        {"ScreenLeft", lng},
        {"ScreenWidth", lng},
        {"ScreenHeight", lng},
        {"ListViewPopUp", bit},
        {"ChangeScreenPopUp", bit},
        {"UserSecurityLevel", integer},
        {"MinimizeSetting", integer},
        {"DisplayTreeView", "LONG NOT NULL DEFAULT 1", Since::Upgrade},
        {"IconSize", integer},
        {"ToolBarText", integer},
        {"PhotoSizeToFit", bit},
        {"PictureFileName", kText255},
        {"StatusAlertsOverride", "BIT NOT NULL DEFAULT False", Since::Upgrade},
        {"SplitterPositionVertical", kSplitterVertical, Since::Upgrade},
        {"SplitterPositionHorizontal", kSplitterHorizontal, Since::Upgrade},
        {"FontBoldDisplay", kFontBold, Since::Upgrade},
        {"FontSizeDisplay", kFontSize, Since::Upgrade},
    };
    c.insert(c.end(), rest.begin(), rest.end());
    return c;
}

// The defaults of a new person are the settings from AutoClearComments to
// ToolBarText without the column orders (all of them in every release), plus the
// layout values the upgrade adds.
std::vector<Column> newUserDefaultsColumns(const std::vector<Column>& settings)
{
    std::vector<Column> c;
    bool inRange = false;
    for (const Column& col : settings) {
        if (col.name == QLatin1String("AutoClearComments"))
            inRange = true;
        if (inRange && !col.name.endsWith(QLatin1String("ColumnOrder")))
            c.push_back({col.name, col.type, Since::Both});
        if (col.name == QLatin1String("ToolBarText"))
            break;
    }
    c.push_back({"SplitterPositionVertical", kSplitterVertical, Since::Upgrade});
    c.push_back({"SplitterPositionHorizontal", kSplitterHorizontal, Since::Upgrade});
    c.push_back({"FontBoldDisplay", kFontBold, Since::Upgrade});
    c.push_back({"FontSizeDisplay", kFontSize, Since::Upgrade});
    return c;
}

const std::vector<Table>& tables()
{
    static const std::vector<Table> all = [] {
        const QString bit = QStringLiteral("BIT");
        const QString bitTrue = QStringLiteral("BIT NOT NULL DEFAULT True");
        const QString lng = QStringLiteral("LONG");
        const QString dbl = QStringLiteral("DOUBLE");
        const std::vector<Column> settings = employeeSettingsColumns();
        return std::vector<Table>{
            {"StatusCounterTable",
             {{"Counter", lng},
              {"StatusTypeCounter", lng},
              {"GroupCounter", lng},
              {"SecurityCounter", lng},
              {"ExtraColumnsCounter", "LONG NOT NULL DEFAULT 1", Since::Upgrade}}},
            {"EmployeeTable",
             {{"Name", kName},
              {"UID", kName},
              {"Status", kLong250},
              {"StatusCode", lng},
              {"Phone", kName},
              {"DueBack", kLong250},
              {"Comments", kText255},
              {"LastModified", kText255},
              {"ActiveFlag", QStringLiteral("TEXT(10)")}},
             "Name"},
            {"EmployeeSettingsTable", settings, "Name"},
            {"NewUserDefaultsTable", newUserDefaultsColumns(settings)},
            {"GlobalSettingsTable",
             {{"DatabaseVersion", QStringLiteral("TEXT(10)")},
              {"DatabaseReleaseVersion", "TEXT(10) NOT NULL DEFAULT '2005'", Since::Upgrade},
              {"TransactionLogFlag", bit},
              {"SystemSecurityLevel", QStringLiteral("INTEGER")},
              {"LogoPosition", QStringLiteral("INTEGER")},
              {"AllowMessaging", bitTrue, Since::Upgrade},
              {"AllowStatusAlerts", bitTrue, Since::Upgrade},
              {"AllowPresenceSensing", bitTrue, Since::Upgrade},
              {"UpdateStatusOnLock", "BIT NOT NULL DEFAULT False", Since::Upgrade},
              {"AllowUserToAddVeskOrToStartupFolder", bitTrue, Since::Upgrade},
              {"PhotoPath", kText255},
              {"CompanyInfo", kMemo}}},
            {"StatusTypesTable",
             {{"Status", kName},
              {"StatusCode", lng},
              {"ProtectedStatus", bit},
              {"ButtonText", kName},
              {"ToolTipText", kText255},
              {"OnToolBar", bit}},
             "Status"},
            {"DueBackTable", {{"DueBack", kLong250}}},
            {"GroupTable", {{"GroupName", kName}}, "GroupName"},
            {"EmployeeGroupTable",
             {{"GroupName", kName}, {"EmployeeName", kName}, {"GroupManager", bit}},
             "",
             {{"MembersByGroup", "GroupName"}}},
            {"EmployeeStatusTracking",
             {{"Tracker", kName},
              {"Trackee", kName},
              {"TrackeeStatus", kLong250},
              {"TrackeeLastUpdate", dbl, Since::OldOnly},
              {"TrackeeLastUpdated", dbl, Since::Upgrade}},
             "",
             {{"TrackingByTracker", "Tracker"}, {"TrackingByTrackee", "Trackee"}}},
            {"MessagesTable",
             {{"MessageID", QStringLiteral("COUNTER")},
              {"Category", QStringLiteral("TEXT(20)")},
              {"SentFromRemoteUNC", kText255},
              {"SentFromName", kName},
              {"SentToName", kText255},
              {"MessageOwner", kLong250, Since::Upgrade},
              {"MessageFrom", kText255},
              {"MessageSubject", kText255},
              {"MessageBody", kMemo},
              {"SentDateTimeNum", dbl},
              {"LastUsedDateTimeNum", dbl},
              {"TrackeeLastUpdate", dbl, Since::OldOnly}},
             "",
             {{"MessagesByRecipient", "SentToName, Category, SentDateTimeNum"}, {"MessagesByOwner", "MessageOwner"}}},
            {"ServersTable", {{"Description", kText255}, {"UNCPath", kText255}}},
            {"TransactionLogTable",
             {{"Name", kName},
              {"Status", kLong250},
              {"DueBack", kLong250},
              {"Comments", kText255},
              {"LastModified", kText255},
              {"NetworkLogonID", kName},
              {"LogDateTime", kLong250, Since::Upgrade},
              {"ComputerName", kLong250, Since::Upgrade},
              {"IPAddress", kLong250, Since::Upgrade}}},
            // The administrator program's own window and view; the upgrade adds the last three.
            {"AdminSettingsTable",
             {{"ScreenTop", lng},
              {"ScreenLeft", lng},
              {"ScreenWidth", lng},
              {"ScreenHeight", lng},
              {"LastSelectedNode", "TEXT(20) DEFAULT 'Users'", Since::Upgrade},
              {"AdminFontBoldDisplay", kFontBold, Since::Upgrade},
              {"AdminFontSizeDisplay", kFontSize, Since::Upgrade}}},
        };
    }();
    return all;
}

bool inRelease(const Column& column, SchemaRelease release)
{
    switch (column.since) {
    case Since::Both:
        return true;
    case Since::Upgrade:
        return release == SchemaRelease::Present;
    case Since::OldOnly:
        return release == SchemaRelease::Older;
    }
    return false;
}

QString createTable(const Table& table, SchemaRelease release)
{
    QStringList parts;
    for (const Column& column : table.columns) {
        if (inRelease(column, release))
            parts << column.name + QLatin1Char(' ') + column.type;
    }
    if (!table.primaryKey.isEmpty())
        parts << QStringLiteral("CONSTRAINT PrimaryKey PRIMARY KEY (%1)").arg(table.primaryKey);
    return QStringLiteral("CREATE TABLE %1 (%2)").arg(table.name, parts.join(QStringLiteral(", ")));
}

// An index is made only where the release has all of its columns: the older file
// has no MessageOwner to index.
bool indexFits(const Table& table, const Index& index, SchemaRelease release)
{
    for (const QString& wanted : index.columns.split(QLatin1Char(','))) {
        bool found = false;
        for (const Column& column : table.columns)
            found = found || (column.name == wanted.trimmed() && inRelease(column, release));
        if (!found)
            return false;
    }
    return true;
}

} // namespace

QStringList schemaTables()
{
    QStringList names;
    for (const Table& table : tables())
        names << table.name;
    return names;
}

QStringList schemaStatements(SchemaRelease release)
{
    QStringList statements;
    for (const Table& table : tables())
        statements << createTable(table, release);
    for (const Table& table : tables()) {
        for (const Index& index : table.indexes) {
            if (indexFits(table, index, release))
                statements << QStringLiteral("CREATE INDEX %1 ON %2 (%3)").arg(index.name, table.name, index.columns);
        }
    }
    return statements;
}

void createCaseBlindIndexes(dao::Database& db)
{
    static const char* const kIndexes[][3] = {
        {"EmployeeTable_FoldedName", "EmployeeTable", "Name"},
        {"EmployeeTable_FoldedUID", "EmployeeTable", "UID"},
        {"EmployeeSettingsTable_FoldedName", "EmployeeSettingsTable", "Name"},
    };
    for (const auto& index : kIndexes)
        db.CreateCaseBlindIndex(QLatin1String(index[0]), QLatin1String(index[1]), QLatin1String(index[2]));
}

void createMissingIndexes(dao::Database& db)
{
    const QStringList present = db.TableNames();
    for (const Table& table : tables()) {
        if (table.indexes.empty() || !present.contains(table.name, Qt::CaseInsensitive))
            continue;
        const QStringList fields = db.FieldNames(table.name);
        const QStringList indexes = db.IndexNames(table.name);
        for (const Index& index : table.indexes) {
            bool fits = !indexes.contains(index.name, Qt::CaseInsensitive);
            for (const QString& column : index.columns.split(QLatin1Char(',')))
                fits = fits && fields.contains(column.trimmed(), Qt::CaseInsensitive);
            if (fits)
                db.Execute(QStringLiteral("CREATE INDEX %1 ON %2 (%3)").arg(index.name, table.name, index.columns));
        }
    }
}

void createSchema(dao::Database& db, SchemaRelease release)
{
    for (const QString& statement : schemaStatements(release))
        db.Execute(statement);
    if (release == SchemaRelease::Present)
        createCaseBlindIndexes(db);
}

} // namespace database
