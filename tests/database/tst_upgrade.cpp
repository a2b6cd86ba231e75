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
#include <memory>

using database::SchemaRelease;

namespace {

// The first row's value of a column as text; "<absent>" when there is no such column.
QString valueOf(const TempSite& site, const QString& table, const QString& column)
{
    try {
        auto rs = site.openDb()->OpenRecordset("SELECT " + column + " FROM " + table, dao::dbOpenSnapshot);
        return rs->isEOF() ? QStringLiteral("<no row>") : rs->Fields(0).Text();
    } catch (const dao::JetError&) {
        return QStringLiteral("<absent>");
    }
}

// Every table's columns and rows, as text.
QStringList everything(const TempSite& site)
{
    auto db = site.openDb();
    QStringList lines;
    for (const QString& table : db->TableNames()) {
        lines << table + ": " + db->FieldNames(table).join(',');
        auto rs = db->OpenRecordset("SELECT * FROM " + table, dao::dbOpenSnapshot);
        for (; !rs->isEOF(); rs->MoveNext()) {
            QStringList row;
            for (int i = 0; i < rs->FieldCount(); ++i)
                row << (rs->Fields(i).IsNull() ? QStringLiteral("<null>") : rs->Fields(i).Text());
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

enum class FileKind
{
    Present,
    Older,
    VersionAsNumber,
    OtherVersion,
    Foreign,
    Missing,
    Garbage,
};

} // namespace

class TstUpgrade : public QObject
{
    Q_OBJECT

private slots:
    // One older file, with a row in each table the upgrade touches, brought up to date.
    void initTestCase()
    {
        TestGateways gw;
        m_upgraded = std::make_unique<TempSite>(SchemaRelease::Older);
        m_upgraded->person("Ann Lee").tracking("Ann Lee", "Ann Lee");
        m_upgraded->execute("INSERT INTO MessagesTable (Category, SentToName) VALUES (\"New\", \"Ann Lee\")");
        m_upgraded->execute("INSERT INTO TransactionLogTable (Name) VALUES (\"Ann Lee\")");
        useSite(*m_upgraded);
        subUpdateDatabaseStructure();
        QCOMPARE(gw.boxes().count(), 0);
        TimerCloseDatabase().stop();
    }

    void cleanup()
    {
        TimerCloseDatabase().stop();
    }

    void olderFileGainsEveryColumn_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("column");
        QTest::addColumn<QString>("value");
        const QString g = "GlobalSettingsTable", e = "EmployeeSettingsTable", n = "NewUserDefaultsTable",
                      a = "AdminSettingsTable";
        const struct
        {
            QString table, column, value;
        } rows[] = {
            {g, "DatabaseReleaseVersion", "2005"},
            {g, "AllowMessaging", "True"},
            {g, "AllowStatusAlerts", "True"},
            {g, "AllowPresenceSensing", "True"},
            {g, "AllowUserToAddVeskOrToStartupFolder", "True"},
            {g, "UpdateStatusOnLock", "False"},
            {e, "SplitterPositionVertical", "1800"},
            {e, "SplitterPositionHorizontal", "1575"},
            {e, "DisplayTreeView", "1"},
            {e, "StatusAlertsOverride", "False"},
            {e, "FontBoldDisplay", "0"},
            {e, "FontSizeDisplay", "8"},
            {n, "SplitterPositionVertical", "1800"},
            {n, "SplitterPositionHorizontal", "1575"},
            {n, "FontBoldDisplay", "0"},
            {n, "FontSizeDisplay", "8"},
            {a, "LastSelectedNode", "Users"},
            {a, "AdminFontBoldDisplay", "0"},
            {a, "AdminFontSizeDisplay", "8"},
            // Renamed by a drop and an add: the values are lost, the column starts Null.
            {"EmployeeStatusTracking", "TrackeeLastUpdated", ""},
            {"EmployeeStatusTracking", "TrackeeLastUpdate", "<absent>"},
            {"MessagesTable", "TrackeeLastUpdate", "<absent>"},
            {"MessagesTable", "MessageOwner", ""},
            {"TransactionLogTable", "LogDateTime", ""},
            {"TransactionLogTable", "ComputerName", ""},
            {"TransactionLogTable", "IPAddress", ""},
        };
        for (const auto& row : rows)
            QTest::addRow("%s.%s", qPrintable(row.table), qPrintable(row.column))
                << row.table << row.column << row.value;
    }

    void olderFileGainsEveryColumn()
    {
        QFETCH(QString, table);
        QFETCH(QString, column);
        QFETCH(QString, value);
        QCOMPARE(valueOf(*m_upgraded, table, column), value);
    }

    // A row marked "if it went well" looks at the error number as the rows before
    // left it: a success does not clear it, only a "clear" row does.
    void aFailureStandsUntilACleanRow()
    {
        TestGateways gw;
        TempSite site(SchemaRelease::Older);
        site.execute("ALTER TABLE GlobalSettingsTable ADD COLUMN DatabaseReleaseVersion TEXT(10)");
        useSite(site);

        subUpdateDatabaseStructure();
        QCOMPARE(valueOf(site, "GlobalSettingsTable", "DatabaseReleaseVersion"), QString());
        QCOMPARE(valueOf(site, "GlobalSettingsTable", "AllowMessaging"), QString());
        QCOMPARE(valueOf(site, "GlobalSettingsTable", "AllowStatusAlerts"), QString());
        QCOMPARE(valueOf(site, "GlobalSettingsTable", "AllowPresenceSensing"), QStringLiteral("True"));
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
        const QStringList before = everything(site);
        useSite(site);

        subUpdateDatabaseStructure();
        QCOMPARE(everything(site), before);
        QCOMPARE(gstrDatabaseReleaseVersion, QString());
    }

    void validDatabase_data()
    {
        QTest::addColumn<FileKind>("kind");
        QTest::addColumn<bool>("valid");
        QTest::newRow("present release") << FileKind::Present << true;
        QTest::newRow("older release") << FileKind::Older << true;
        QTest::newRow("2005 stored as a number") << FileKind::VersionAsNumber << true;
        QTest::newRow("another version") << FileKind::OtherVersion << false;
        QTest::newRow("no GlobalSettingsTable") << FileKind::Foreign << false;
        QTest::newRow("no file") << FileKind::Missing << false;
        QTest::newRow("not a database") << FileKind::Garbage << false;
    }

    void validDatabase()
    {
        QFETCH(FileKind, kind);
        QFETCH(bool, valid);
        TestGateways gw;
        TempSite site(kind == FileKind::Older ? SchemaRelease::Older : SchemaRelease::Present);
        if (kind == FileKind::OtherVersion)
            site.execute("UPDATE GlobalSettingsTable SET DatabaseVersion = \"2004\"");
        if (kind == FileKind::VersionAsNumber || kind == FileKind::Foreign) {
            QVERIFY(QFile::remove(site.dbPath()));
            auto db = dao::DBEngine::CreateDatabase(site.dbPath());
            db->Execute(kind == FileKind::Foreign ? "CREATE TABLE Invoices (Number LONG)"
                                                  : "CREATE TABLE GlobalSettingsTable (DatabaseVersion LONG)");
            if (kind == FileKind::VersionAsNumber)
                db->Execute("INSERT INTO GlobalSettingsTable (DatabaseVersion) VALUES (2005)");
        }
        if (kind == FileKind::Missing)
            QVERIFY(QFile::remove(site.dbPath()));
        if (kind == FileKind::Garbage) {
            QFile file(site.dbPath());
            QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
            file.write("Standard Jet DB, but not really");
        }

        QCOMPARE(fnIsValidDatabase(site.path()), valid);
        QCOMPARE(gw.boxes().count(), 0);
    }

    void counterTableIsRepaired()
    {
        TestGateways gw;
        TempSite site(SchemaRelease::Older);
        site.execute("UPDATE StatusCounterTable SET Counter = Null, StatusTypeCounter = 7, GroupCounter = 4");
        useSite(site);

        subTestStatusCounterTable();
        QCOMPARE(valueOf(site, "StatusCounterTable", "ExtraColumnsCounter"), QStringLiteral("1"));
        QCOMPARE(valueOf(site, "StatusCounterTable", "Counter"), QStringLiteral("1"));
        // Its test reads a field no table has, so it falls back to 1 every time.
        QCOMPARE(valueOf(site, "StatusCounterTable", "StatusTypeCounter"), QStringLiteral("1"));
        QCOMPARE(valueOf(site, "StatusCounterTable", "GroupCounter"), QStringLiteral("4"));

        site.execute("DELETE FROM StatusCounterTable");
        subTestStatusCounterTable();
        QCOMPARE(valueOf(site, "StatusCounterTable", "Counter"), QStringLiteral("1"));
        QCOMPARE(gw.boxes().count(), 0);
    }

private:
    std::unique_ptr<TempSite> m_upgraded;
};

QTEST_GUILESS_MAIN(TstUpgrade)
#include "tst_upgrade.moc"
