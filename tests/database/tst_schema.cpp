// The tables of both releases, column for column, and what their keys refuse.
#include "dao/dao.h"
#include "database/schema.h"

#include <QTemporaryDir>
#include <QTest>

using database::SchemaRelease;

namespace {

// The present tables as the system describes them.
const QMap<QString, QStringList>& presentColumns()
{
    static const QMap<QString, QStringList> tables = {
        {"StatusCounterTable",
         {"Counter", "StatusTypeCounter", "GroupCounter", "SecurityCounter", "ExtraColumnsCounter"}},
        {"EmployeeTable",
         {"Name", "UID", "Status", "StatusCode", "Phone", "DueBack", "Comments", "LastModified", "ActiveFlag"}},
        {"EmployeeSettingsTable",
         {"Name",
          "AutoClearComments",
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
          "StatusColumnOrder",
          "NameColumnOrder",
          "PhoneColumnOrder",
          "DueBackColumnOrder",
          "CommentsColumnOrder",
          "LastModifiedColumnOrder",
          "SortOrder",
          "SortKey",
          "SortColumnName",
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
          "ToolBarText",
          "PhotoSizeToFit",
          "PictureFileName",
          "StatusAlertsOverride",
          "SplitterPositionVertical",
          "SplitterPositionHorizontal",
          "FontBoldDisplay",
          "FontSizeDisplay"}},
        {"NewUserDefaultsTable",
         {"AutoClearComments",
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
          "SortColumnName",
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
          "ToolBarText",
          "SplitterPositionVertical",
          "SplitterPositionHorizontal",
          "FontBoldDisplay",
          "FontSizeDisplay"}},
        {"GlobalSettingsTable",
         {"DatabaseVersion", "DatabaseReleaseVersion", "TransactionLogFlag", "SystemSecurityLevel", "LogoPosition",
          "AllowMessaging", "AllowStatusAlerts", "AllowPresenceSensing", "UpdateStatusOnLock",
          "AllowUserToAddVeskOrToStartupFolder", "PhotoPath", "CompanyInfo"}},
        {"StatusTypesTable", {"Status", "StatusCode", "ProtectedStatus", "ButtonText", "ToolTipText", "OnToolBar"}},
        {"DueBackTable", {"DueBack"}},
        {"GroupTable", {"GroupName"}},
        {"EmployeeGroupTable", {"GroupName", "EmployeeName", "GroupManager"}},
        {"EmployeeStatusTracking", {"Tracker", "Trackee", "TrackeeStatus", "TrackeeLastUpdated"}},
        {"MessagesTable",
         {"MessageID", "Category", "SentFromRemoteUNC", "SentFromName", "SentToName", "MessageOwner", "MessageFrom",
          "MessageSubject", "MessageBody", "SentDateTimeNum", "LastUsedDateTimeNum"}},
        {"ServersTable", {"Description", "UNCPath"}},
        {"TransactionLogTable",
         {"Name", "Status", "DueBack", "Comments", "LastModified", "NetworkLogonID", "LogDateTime", "ComputerName",
          "IPAddress"}},
        {"AdminSettingsTable",
         {"ScreenTop", "ScreenLeft", "ScreenWidth", "ScreenHeight", "LastSelectedNode", "AdminFontBoldDisplay",
          "AdminFontSizeDisplay"}},
    };
    return tables;
}

// What the client's upgrade adds (so an older file lacks it), and what it drops.
const QMap<QString, QStringList> kAddedByUpgrade = {
    {"StatusCounterTable", {"ExtraColumnsCounter"}},
    {"GlobalSettingsTable",
     {"DatabaseReleaseVersion", "AllowMessaging", "AllowStatusAlerts", "AllowPresenceSensing", "UpdateStatusOnLock",
      "AllowUserToAddVeskOrToStartupFolder"}},
    {"EmployeeSettingsTable",
     {"SplitterPositionVertical", "SplitterPositionHorizontal", "DisplayTreeView", "StatusAlertsOverride",
      "FontBoldDisplay", "FontSizeDisplay"}},
    {"NewUserDefaultsTable",
     {"SplitterPositionVertical", "SplitterPositionHorizontal", "FontBoldDisplay", "FontSizeDisplay"}},
    {"AdminSettingsTable", {"LastSelectedNode", "AdminFontBoldDisplay", "AdminFontSizeDisplay"}},
    {"EmployeeStatusTracking", {"TrackeeLastUpdated"}},
    {"MessagesTable", {"MessageOwner"}},
    {"TransactionLogTable", {"LogDateTime", "ComputerName", "IPAddress"}},
};
const QMap<QString, QStringList> kDroppedByUpgrade = {
    {"EmployeeStatusTracking", {"TrackeeLastUpdate"}},
    {"MessagesTable", {"TrackeeLastUpdate"}},
};

QStringList sorted(QStringList list)
{
    list.sort(Qt::CaseInsensitive);
    return list;
}

} // namespace

class TstSchema : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    std::shared_ptr<dao::Database> m_present;
    std::shared_ptr<dao::Database> m_older;

    std::shared_ptr<dao::Database> fresh(const QString& name, SchemaRelease release)
    {
        auto db = dao::DBEngine::CreateDatabase(m_dir.filePath(name));
        database::createSchema(*db, release);
        return db;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        m_present = fresh("present.mdb", SchemaRelease::Present);
        m_older = fresh("older.mdb", SchemaRelease::Older);
    }

    void bothReleasesHaveEveryTable()
    {
        const QStringList expected = sorted(presentColumns().keys());
        QCOMPARE(sorted(m_present->TableNames()), expected);
        QCOMPARE(sorted(m_older->TableNames()), expected);
        QCOMPARE(sorted(database::schemaTables()), expected);
    }

    void columns_data()
    {
        QTest::addColumn<QString>("table");
        for (const QString& table : presentColumns().keys())
            QTest::newRow(qPrintable(table)) << table;
    }
    void columns()
    {
        QFETCH(QString, table);
        QCOMPARE(sorted(m_present->FieldNames(table)), sorted(presentColumns().value(table)));

        QStringList older = presentColumns().value(table);
        for (const QString& added : kAddedByUpgrade.value(table))
            QVERIFY2(older.removeAll(added) == 1, qPrintable(added));
        older += kDroppedByUpgrade.value(table);
        QCOMPARE(sorted(m_older->FieldNames(table)), sorted(older));
    }

    // Keys compare names without regard to case, as the client looks them up.
    void keysRefuseDuplicates_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::newRow("EmployeeTable") << "INSERT INTO EmployeeTable (Name) VALUES ('Ann Lee')"
                                       << "INSERT INTO EmployeeTable (Name) VALUES ('ANN LEE')";
        QTest::newRow("EmployeeSettingsTable") << "INSERT INTO EmployeeSettingsTable (Name) VALUES ('Ann Lee')"
                                               << "INSERT INTO EmployeeSettingsTable (Name) VALUES ('ann lee')";
        QTest::newRow("GroupTable") << "INSERT INTO GroupTable (GroupName) VALUES ('Sales*')"
                                    << "INSERT INTO GroupTable (GroupName) VALUES ('SALES*')";
        QTest::newRow("StatusTypesTable") << "INSERT INTO StatusTypesTable (Status, StatusCode) VALUES ('In', 3)"
                                          << "INSERT INTO StatusTypesTable (Status, StatusCode) VALUES ('in', 5)";
    }
    void keysRefuseDuplicates()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        auto db = fresh(QTest::currentDataTag() + QStringLiteral(".mdb"), SchemaRelease::Present);
        db->Execute(first);
        try {
            db->Execute(second);
            QFAIL("the duplicate went in");
        } catch (const dao::JetError& e) {
            QCOMPARE(e.number(), int(dao::errDuplicateKey));
        }
    }

    // fnGroupExists seeks on GroupTable's "PrimaryKey".
    void groupSeekOnPrimaryKey()
    {
        m_present->Execute("INSERT INTO GroupTable (GroupName) VALUES ('Help Desk*')");
        auto rs = m_present->OpenRecordset("GroupTable", dao::dbOpenTable);
        rs->setIndex("PrimaryKey");
        rs->Seek("=", QStringLiteral("help desk*"));
        QVERIFY(!rs->NoMatch());
        QCOMPARE(rs->Fields("GroupName").Text(), QStringLiteral("Help Desk*"));
        rs->Seek("=", QStringLiteral("Sales"));
        QVERIFY(rs->NoMatch());
    }

    void messageIdNumbersItself()
    {
        for (const auto& db : {m_present, m_older}) {
            db->Execute("INSERT INTO MessagesTable (Category) VALUES ('New')");
            db->Execute("INSERT INTO MessagesTable (Category) VALUES ('Sent')");
            auto rs = db->OpenRecordset("SELECT MessageID FROM MessagesTable ORDER BY MessageID", dao::dbOpenSnapshot);
            const long long first = rs->Fields(0).Value().toLongLong();
            rs->MoveNext();
            QVERIFY(first > 0);
            QVERIFY(rs->Fields(0).Value().toLongLong() > first);
        }
    }

    void columnsReadAsTheirTypes()
    {
        m_present->Execute("INSERT INTO EmployeeGroupTable (GroupName, EmployeeName, GroupManager) VALUES ('G', 'A', "
                           "True)");
        m_present->Execute("INSERT INTO EmployeeStatusTracking (Tracker, TrackeeLastUpdated) VALUES ('A', 38000.5)");
        auto rs = m_present->OpenRecordset("SELECT * FROM EmployeeGroupTable", dao::dbOpenSnapshot);
        QCOMPARE(rs->Fields("GroupManager").Type(), dao::FieldType::Boolean);
        QCOMPARE(rs->Fields("GroupManager").Value().toBool(), true);
        auto tracking = m_present->OpenRecordset("SELECT * FROM EmployeeStatusTracking", dao::dbOpenSnapshot);
        QCOMPARE(tracking->Fields("TrackeeLastUpdated").Type(), dao::FieldType::Double);
        QCOMPARE(tracking->Fields("TrackeeLastUpdated").Value().toDouble(), 38000.5);
        QCOMPARE(tracking->Fields("Tracker").Type(), dao::FieldType::Text);
    }
};

QTEST_GUILESS_MAIN(TstSchema)
#include "tst_schema.moc"
