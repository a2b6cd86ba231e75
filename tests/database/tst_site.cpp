// A new site's files and rows, an older file brought up to date, and the checks on a site's file.
#include "columns.h"
#include "dao/dao.h"
#include "dao/jetsql.h"
#include "database/moddatabase.h"
#include "database/site.h"
#include "database/upgrade.h"
#include "messaging/messagesql.h"
#include "ondisk.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QTest>
#include <QTimer>
#include <functional>

using database::SchemaRelease;

namespace {

long long count(const TempSite& site, const QString& table)
{
    return site.value("SELECT COUNT(*) FROM " + table).toLongLong();
}

using Attempt = std::function<void(dao::Database&)>;

template <typename F> QString siteErrorOf(F&& f)
{
    try {
        f();
    } catch (const database::SiteError& e) {
        return e.message();
    }
    return "<no error>";
}

// Each table's columns and rows as text; with `only`, those columns of the first row.
QStringList contents(const TempSite& site, const QStringList& tables, const QString& only = {})
{
    auto db = site.openDb();
    QStringList lines;
    for (const QString& table : tables) {
        auto rs = db->OpenRecordset("SELECT " + (only.isEmpty() ? "*" : only) + " FROM " + table, dao::dbOpenSnapshot);
        lines << table + ": " + db->FieldNames(table).join(',');
        for (; !rs->isEOF(); rs->MoveNext()) {
            QStringList row;
            for (int i = 0; i < rs->FieldCount(); ++i)
                row << (rs->Fields(i).IsNull() ? "Null" : rs->Fields(i).Text());
            lines << row.join('|');
        }
    }
    return lines;
}

} // namespace

Q_DECLARE_METATYPE(Attempt)

class TstSite : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        TimerCloseDatabase().stop();
    }

    void newSite_data()
    {
        QTest::addColumn<SchemaRelease>("release");
        QTest::newRow("present") << SchemaRelease::Present;
        QTest::newRow("older") << SchemaRelease::Older;
    }
    // The standing rows; a person takes the defaults (an extra column's too);
    // tracking and messages go to the columns of the file's release.
    void newSite()
    {
        QFETCH(SchemaRelease, release);
        TempSite site{release};
        for (const char* table :
             {"GlobalSettingsTable", "NewUserDefaultsTable", "StatusCounterTable", "AdminSettingsTable"})
            QCOMPARE(count(site, table), 1LL);
        QCOMPARE(site.value("SELECT DatabaseVersion & '|' & RefreshRate & '|' & Counter FROM GlobalSettingsTable, "
                            "NewUserDefaultsTable, StatusCounterTable"),
                 "2005|5|1");
        QVERIFY(count(site, "DueBackTable") > 0);
        QVERIFY(count(site, "StatusTypesTable WHERE ProtectedStatus = True") >= 1);
        // In, Out and Busy have codes of their own, none of those the clients keep.
        QSet<long long> codes;
        for (const char* word : {"In", "Out", "Busy"})
            codes << site.value("SELECT StatusCode FROM StatusTypesTable WHERE Status = " + dao::quote(word))
                         .toLongLong();
        QCOMPARE(codes.size(), 3);
        QVERIFY(!codes.contains(0) && !codes.contains(4) && !codes.contains(10) && !codes.contains(11));

        site.column("New_Mobile").execute("UPDATE NewUserDefaultsTable SET New_Mobile = 'none yet', RefreshRate = 3");
        site.person("Liam \"Red\" O'Connor", "loconnor", "555 0101");
        const QString who = " WHERE Name = " + dao::quote("Liam \"Red\" O'Connor");
        QCOMPARE(site.value("SELECT UID & '|' & New_Mobile FROM EmployeeTable" + who), "loconnor|none yet");
        QCOMPARE(site.value("SELECT RefreshRate & '|' & LastModifiedColumnOrder & '|' & SortColumnName FROM "
                            "EmployeeSettingsTable" +
                            who),
                 "3|6|Name");

        site.tracking("Ann", "Bob", "Out", 45000.25);
        const long long first = site.message({.owner = "Bob", .fromName = "Ann", .toName = "Bob", .subject = "Hi"});
        QVERIFY(site.message({.owner = "Ann", .category = "Sent", .fromName = "Ann", .toName = "Bob"}) > first);
        const QString column = release == SchemaRelease::Present ? "TrackeeLastUpdated" : "TrackeeLastUpdate";
        QCOMPARE(site.value("SELECT " + column + " FROM EmployeeStatusTracking"), "45000.25");
    }

    void refusals_data()
    {
        addColumns<QString, Attempt>("message", "attempt");
        const auto row = [](const char* name, const char* message, const Attempt& attempt) {
            QTest::newRow(name) << message << attempt;
        };
        row("no defaults row", "No User Record in New User Defaults Table.", [](dao::Database& db) {
            db.Execute("DELETE FROM NewUserDefaultsTable");
            database::addPerson(db, {"Bob"});
        });
        row("group Everyone", "built in", [](dao::Database& db) { database::addGroup(db, "everyone"); });
        row("duplicate group", "already a group", [](dao::Database& db) { database::addGroup(db, "SALES"); });
        row("unknown member", "no user or item named \"Nobody\"",
            [](dao::Database& db) { database::addMember(db, "Sales", "Nobody"); });
        row("member twice", "already a member", [](dao::Database& db) { database::addMember(db, "sales", "ann lee"); });
        row("column with a quote", "not an extra column name",
            [](dao::Database& db) { database::addExtraColumn(db, "New_X\" TEXT, Y"); });
        row("column twice", "exists already", [](dao::Database& db) { database::addExtraColumn(db, "New_Mobile"); });
    }
    void refusals()
    {
        auto [message, attempt] = fetch<QString, Attempt>("message", "attempt");
        TempSite site;
        site.person("Ann Lee").group("Sales").member("Sales", "Ann Lee").column("New_Mobile");
        auto db = site.openDb();
        const QString error = siteErrorOf([&] { attempt(*db); });
        QVERIFY2(error.contains(message, Qt::CaseInsensitive), qPrintable(error));
        QCOMPARE(count(site, "EmployeeTable"), 1LL);
        QCOMPARE(count(site, "EmployeeGroupTable"), 1LL);
    }

    // The row functions: an extra column's companions, a status's code by its word,
    // and the counters' raise, from Null and on an empty table too.
    void rowFunctions()
    {
        TempSite site;
        site.person("Ann").person("Bob").person("Cy").column("New_Desk", true);
        QCOMPARE(site.value("SELECT New_DeskReadOnly FROM EmployeeTable"), "True");
        QCOMPARE(database::extraColumnCaption("New_Desk"), "Desk");

        site.status("Ann", "out", "Tomorrow", "Dentist").status("Bob", "Gone fishing");
        site.status("Cy", {.status = "In", .lastModified = "2024-01-02 03:04:05 by Ann", .code = 11});
        const QString outCode = site.value("SELECT StatusCode FROM StatusTypesTable WHERE Status = 'Out'");
        QCOMPARE(site.value("SELECT StatusCode & '|' & DueBack FROM EmployeeTable WHERE Name = 'Ann'"),
                 outCode + "|Tomorrow");
        QCOMPARE(site.value("SELECT StatusCode FROM EmployeeTable WHERE Name = 'Bob'"), "4");
        QCOMPARE(site.value("SELECT StatusCode & '|' & LastModified FROM EmployeeTable WHERE Name = 'Cy'"),
                 "11|2024-01-02 03:04:05 by Ann");

        auto db = site.openDb();
        QCOMPARE(database::raiseCounter(*db, "GroupCounter"), 2LL);
        QCOMPARE(database::readCounter(*db, "groupcounter"), 2LL);
        db->Execute("UPDATE StatusCounterTable SET SecurityCounter = Null");
        QCOMPARE(database::raiseCounter(*db, "SecurityCounter"), 1LL);
        db->Execute("DELETE FROM StatusCounterTable");
        QCOMPARE(database::raiseCounter(*db, "Counter"), 1LL);
        QVERIFY(siteErrorOf([&] { database::raiseCounter(*db, "Bogus"); }).contains("not a counter"));
    }

    void boardOfAGroup_data()
    {
        addColumns<QString, QStringList>("group", "names");
        QTest::newRow("Everyone") << "Everyone" << QStringList{"ann", "Bob", "Meeting Room 1"};
        QTest::newRow("blank means Everyone") << "" << QStringList{"ann", "Bob", "Meeting Room 1"};
        QTest::newRow("a group, any case") << "SALES*" << QStringList{"ann", "Bob"};
        QTest::newRow("an empty group") << "Empty" << QStringList{};
    }
    void boardOfAGroup()
    {
        auto [group, names] = fetch<QString, QStringList>("group", "names");
        TempSite site;
        site.person("Bob").person("~Hidden").person("ann").person("Meeting Room 1");
        site.group("Sales*").group("Empty").member("Sales*", "Bob").member("Sales*", "~Hidden").member("Sales*", "ann");
        QStringList shown;
        for (const QStringList& row : database::readBoard(*site.openDb(), group).rows)
            shown << row[0];
        QCOMPARE(shown, names);
    }

    // Every table ends with the present release's columns; new columns hold the
    // values written after them, and a column renamed by a drop and an add starts Null.
    void olderFileGainsEveryColumn()
    {
        TestGateways gw;
        TempSite site(SchemaRelease::Older);
        site.person("Ann Lee").tracking("Ann Lee", "Ann Lee");
        site.execute("INSERT INTO MessagesTable (Category, SentToName) VALUES (\"New\", \"Ann Lee\")");
        site.execute("INSERT INTO TransactionLogTable (Name) VALUES (\"Ann Lee\")");
        site.makeCurrent();
        subUpdateDatabaseStructure();
        subTestStatusCounterTable(); // adds the counter of extra columns

        const auto sortedColumns = [](const TempSite& s, const QString& table) {
            QStringList names = s.openDb()->FieldNames(table);
            names.sort(Qt::CaseInsensitive);
            return names;
        };
        const TempSite present;
        for (const QString& table : present.openDb()->TableNames())
            QCOMPARE(sortedColumns(site, table), sortedColumns(present, table));
        const QStringList expected = {
            "GlobalSettingsTable: DatabaseReleaseVersion, AllowMessaging, AllowStatusAlerts, AllowPresenceSensing, "
            "AllowUserToAddVeskOrToStartupFolder, UpdateStatusOnLock = 2005|True|True|True|True|False",
            "EmployeeStatusTracking: TrackeeLastUpdated = Null",
            "StatusCounterTable: ExtraColumnsCounter = 1",
        };
        for (const QString& line : expected) {
            const QString table = line.section(": ", 0, 0);
            const QString columns = line.section(": ", 1).section(" = ", 0, 0);
            QCOMPARE(table + ": " + columns + " = " + contents(site, {table}, columns).value(1), line);
        }
    }

    // A row marked "if it went well" sees the number the rows before it left: a
    // success does not clear it, only a "clear" row does.
    void aFailureStandsUntilAClearingRow()
    {
        TestGateways gw;
        TempSite site(SchemaRelease::Older);
        site.execute("ALTER TABLE GlobalSettingsTable ADD COLUMN DatabaseReleaseVersion TEXT(10)");
        site.makeCurrent();
        subUpdateDatabaseStructure();
        QCOMPARE(contents(site, {"GlobalSettingsTable"},
                          "DatabaseReleaseVersion, AllowMessaging, AllowStatusAlerts, AllowPresenceSensing")
                     .value(1),
                 "Null|Null|Null|True");
    }

    void presentFileIsUntouched()
    {
        TestGateways gw;
        TempSite site;
        site.person("Ann Lee").person("Bob Ray").group("Sales").member("Sales", "Ann Lee", true);
        site.tracking("Bob Ray", "Ann Lee", "In", 46300.5).status("Ann Lee", "Busy", "Noon", "Call");
        site.execute("UPDATE AdminSettingsTable SET LastSelectedNode = \"Groups\", AdminFontSizeDisplay = 10");
        site.execute("UPDATE EmployeeSettingsTable SET FontSizeDisplay = 12, DisplayTreeView = 0");
        site.execute("UPDATE GlobalSettingsTable SET AllowMessaging = False, DatabaseReleaseVersion = \"2006\"");
        const QStringList tables = site.openDb()->TableNames();
        const QStringList before = contents(site, tables);
        site.makeCurrent();
        subUpdateDatabaseStructure();
        QCOMPARE(contents(site, tables), before);
    }

    // The test that a file belongs to this system reads it and writes nothing: a
    // file another program keeps in WAL mode stays so, byte for byte.
    void validDatabase_data()
    {
        // change: SQLite's own statements on the file, or "=" and bytes over it
        addColumns<SchemaRelease, QString, bool>("release", "change", "valid");
        const auto row = [](const char* name, SchemaRelease release, const char* change, bool valid) {
            QTest::newRow(name) << release << QString(change) << valid;
        };
        row("older release", SchemaRelease::Older, "", true);
        row("our site in WAL mode", SchemaRelease::Present, "PRAGMA journal_mode=WAL", true);
        row("2005 stored as a number", SchemaRelease::Present,
            "DROP TABLE GlobalSettingsTable; CREATE TABLE GlobalSettingsTable (DatabaseVersion LONG);"
            "INSERT INTO GlobalSettingsTable VALUES (2005)",
            true);
        row("another version", SchemaRelease::Present, "UPDATE GlobalSettingsTable SET DatabaseVersion = '2004'",
            false);
        row("another program's file in WAL mode", SchemaRelease::Present,
            "DROP TABLE GlobalSettingsTable; CREATE TABLE Invoices (N); INSERT INTO Invoices VALUES (7);"
            "PRAGMA journal_mode=WAL",
            false);
        row("not a database", SchemaRelease::Present, "=Standard Jet DB", false);
    }
    void validDatabase()
    {
        auto [release, change, valid] = fetch<SchemaRelease, QString, bool>("release", "change", "valid");
        TestGateways gw;
        TempSite site(release);
        if (change.startsWith('='))
            QVERIFY(writeFile(site.dbPath(), change.mid(1).toLatin1()));
        else
            QVERIFY(change.isEmpty() || sqliteExec(site.dbPath(), change));
        const QByteArray before = readFile(site.dbPath());
        QCOMPARE(fnIsValidDatabase(site.path()), valid);
        QVERIFY(readFile(site.dbPath()) == before);
        QVERIFY(!fnIsValidDatabase(site.path() + "elsewhere/"));
    }

    // The look-ups made most often, a person's row by name or login ID and a
    // person's copies of messages (the watcher, the pane and the Preview list),
    // search an index on a new site, and on an older file once it is brought up to
    // date, so their cost does not grow with the tables.
    void lookUpsUseAnIndex_data()
    {
        addColumns<QString, QString>("sql", "plan");
        const auto row = [](const char* name, const QString& sql, const QString& plan) {
            QTest::newRow(name) << sql << "SEARCH " + plan;
        };
        const QString name = dao::quoteLike("Ann [Lee]*"), folded = "_FoldedName (<expr>=?)";
        const QString recipient = "MessagesTable USING INDEX MessagesByRecipient (SentToName=? AND Category=?";
        const QString owner = "MessagesTable USING INDEX MessagesByOwner (MessageOwner=?)";
        row("row by name", "SELECT * FROM EmployeeTable WHERE Name LIKE " + name,
            "EmployeeTable USING INDEX EmployeeTable" + folded);
        row("row by name, lower case", "SELECT * FROM EmployeeTable WHERE name LIKE " + name,
            "EmployeeTable USING INDEX EmployeeTable" + folded);
        row("row by login ID", "SELECT * FROM EmployeeTable WHERE UID LIKE " + dao::quoteLike("alee"),
            "EmployeeTable USING INDEX EmployeeTable_FoldedUID (<expr>=?)");
        row("settings row", "SELECT * FROM EmployeeSettingsTable WHERE Name LIKE " + name + " ORDER BY Name",
            "EmployeeSettingsTable USING INDEX EmployeeSettingsTable" + folded + " / USE TEMP B-TREE FOR ORDER BY");
        row("watcher", messaging::fnWatcherSql("Ann Lee", 46000.25), recipient + " AND SentDateTimeNum>?)");
        row("pane", messaging::fnPaneSql("Ann Lee"), recipient + ")");
        row("all copies", messaging::fnOwnerMessagesSql("Ann Lee"), owner);
        row("deleted copies", messaging::fnOwnerMessagesSql("Ann Lee", "Deleted"), owner);
    }
    void lookUpsUseAnIndex()
    {
        auto [sql, plan] = fetch<QString, QString>("sql", "plan");
        TestGateways gw;
        const auto planOf = [&](const TempSite& site) {
            return sqliteColumn(site.dbPath(), "EXPLAIN QUERY PLAN " + dao::translateJet(sql).sql, 3).join(" / ");
        };
        const TempSite present;
        QCOMPARE(planOf(present), plan);
        TempSite older(SchemaRelease::Older);
        older.makeCurrent();
        subUpdateDatabaseStructure();
        QCOMPARE(planOf(older), plan);
    }

    void counterTableIsRepaired()
    {
        TestGateways gw;
        TempSite site(SchemaRelease::Older);
        site.execute("UPDATE StatusCounterTable SET Counter = Null, GroupCounter = 4");
        site.makeCurrent();
        subTestStatusCounterTable();
        const QString columns = "Counter, StatusTypeCounter, GroupCounter, SecurityCounter, ExtraColumnsCounter";
        QCOMPARE(contents(site, {"StatusCounterTable"}, columns).value(1), "1|1|4|1|1");

        site.execute("DELETE FROM StatusCounterTable");
        subTestStatusCounterTable();
        QCOMPARE(contents(site, {"StatusCounterTable"}, columns).value(1), "1|1|1|1|1");
    }
};

QTEST_GUILESS_MAIN(TstSite)
#include "tst_site.moc"
