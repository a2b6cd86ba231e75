// Bringing an older file up to date, leaving a present one alone, the test that
// a file belongs to this system, and the check on the counters' table.
#include "dao/dao.h"
#include "database/moddatabase.h"
#include "database/upgrade.h"
#include "start/globals.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QFile>
#include <QTest>
#include <QTimer>

using database::SchemaRelease;

namespace {

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
                row << (rs->Fields(i).IsNull() ? QStringLiteral("Null") : rs->Fields(i).Text());
            lines << row.join('|');
        }
    }
    return lines;
}

void useSite(const TempSite& site)
{
    gstrCurrentDatabasePath = site.path();
    gblnDatabaseClosed = true;
}

} // namespace

class TstUpgrade : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        TimerCloseDatabase().stop();
    }

    // Every table ends with the present release's columns; the new columns hold
    // the values written, and a column renamed by a drop and an add starts Null.
    void olderFileGainsEveryColumn()
    {
        TestGateways gw;
        TempSite site(SchemaRelease::Older);
        site.person("Ann Lee").tracking("Ann Lee", "Ann Lee");
        site.execute("INSERT INTO MessagesTable (Category, SentToName) VALUES (\"New\", \"Ann Lee\")");
        site.execute("INSERT INTO TransactionLogTable (Name) VALUES (\"Ann Lee\")");
        useSite(site);
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
            "EmployeeSettingsTable: SplitterPositionVertical, SplitterPositionHorizontal, DisplayTreeView, "
            "StatusAlertsOverride, FontBoldDisplay, FontSizeDisplay = 1800|1575|1|False|0|8",
            "NewUserDefaultsTable: SplitterPositionVertical, SplitterPositionHorizontal, FontBoldDisplay, "
            "FontSizeDisplay = 1800|1575|0|8",
            "AdminSettingsTable: LastSelectedNode, AdminFontBoldDisplay, AdminFontSizeDisplay = Users|0|8",
            "EmployeeStatusTracking: TrackeeLastUpdated = Null",
            "MessagesTable: MessageOwner = Null",
            "TransactionLogTable: LogDateTime, ComputerName, IPAddress = Null|Null|Null",
            "StatusCounterTable: ExtraColumnsCounter = 1",
        };
        for (const QString& line : expected) {
            const QString table = line.section(": ", 0, 0);
            const QString columns = line.section(": ", 1).section(" = ", 0, 0);
            QCOMPARE(table + ": " + columns + " = " + contents(site, {table}, columns).value(1), line);
        }
        QCOMPARE(gw.boxes().count(), 0);
    }

    // A row marked "if it went well" sees the number the rows before it left: a
    // success does not clear it, only a "clear" row does.
    void aFailureStandsUntilAClearingRow()
    {
        TestGateways gw;
        TempSite site(SchemaRelease::Older);
        site.execute("ALTER TABLE GlobalSettingsTable ADD COLUMN DatabaseReleaseVersion TEXT(10)");
        useSite(site);
        subUpdateDatabaseStructure();
        QCOMPARE(contents(site, {"GlobalSettingsTable"},
                          "DatabaseReleaseVersion, AllowMessaging, AllowStatusAlerts, AllowPresenceSensing")
                     .value(1),
                 QStringLiteral("Null|Null|Null|True"));
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
        useSite(site);
        subUpdateDatabaseStructure();
        QCOMPARE(contents(site, tables), before);
    }

    // A file of its own made from the statements, or bytes written over the file.
    void validDatabase_data()
    {
        QTest::addColumn<SchemaRelease>("release");
        QTest::addColumn<QStringList>("replacement");
        QTest::addColumn<bool>("valid");
        const QString table = "CREATE TABLE GlobalSettingsTable (DatabaseVersion %1)";
        QTest::newRow("present release") << SchemaRelease::Present << QStringList() << true;
        QTest::newRow("older release") << SchemaRelease::Older << QStringList() << true;
        QTest::newRow("2005 stored as a number")
            << SchemaRelease::Present
            << QStringList{table.arg("LONG"), "INSERT INTO GlobalSettingsTable (DatabaseVersion) VALUES (2005)"}
            << true;
        QTest::newRow("another version") << SchemaRelease::Present
                                         << QStringList{table.arg("TEXT(10)"),
                                                        "INSERT INTO GlobalSettingsTable VALUES (\"2004\")"}
                                         << false;
        QTest::newRow("no GlobalSettingsTable")
            << SchemaRelease::Present << QStringList{"CREATE TABLE Invoices (N LONG)"} << false;
        QTest::newRow("not a database") << SchemaRelease::Present << QStringList{"Standard Jet DB"} << false;
    }
    void validDatabase()
    {
        QFETCH(SchemaRelease, release);
        QFETCH(QStringList, replacement);
        QFETCH(bool, valid);
        TestGateways gw;
        TempSite site(release);
        if (!replacement.isEmpty()) {
            QVERIFY(QFile::remove(site.dbPath()));
            if (replacement.first().startsWith("Standard")) {
                QFile file(site.dbPath());
                QVERIFY(file.open(QIODevice::WriteOnly) && file.write(replacement.first().toLatin1()) > 0);
            } else {
                auto db = dao::DBEngine::CreateDatabase(site.dbPath());
                for (const QString& statement : replacement)
                    db->Execute(statement);
            }
        }
        QCOMPARE(fnIsValidDatabase(site.path()), valid);
        QVERIFY(!fnIsValidDatabase(site.path() + "elsewhere/"));
        QCOMPARE(gw.boxes().count(), 0);
    }

    void counterTableIsRepaired()
    {
        TestGateways gw;
        TempSite site(SchemaRelease::Older);
        site.execute("UPDATE StatusCounterTable SET Counter = Null, GroupCounter = 4");
        useSite(site);
        subTestStatusCounterTable();
        const QString columns = "Counter, StatusTypeCounter, GroupCounter, SecurityCounter, ExtraColumnsCounter";
        QCOMPARE(contents(site, {"StatusCounterTable"}, columns).value(1), QStringLiteral("1|1|4|1|1"));

        site.execute("DELETE FROM StatusCounterTable");
        subTestStatusCounterTable();
        QCOMPARE(contents(site, {"StatusCounterTable"}, columns).value(1), QStringLiteral("1|1|1|1|1"));
    }
};

QTEST_GUILESS_MAIN(TstUpgrade)
#include "tst_upgrade.moc"
