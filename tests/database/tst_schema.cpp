// The tables of both releases, column for column, and what their keys refuse.
#include "dao/dao.h"
#include "database/schema.h"

#include <QTemporaryDir>
#include <QTest>

using database::SchemaRelease;

namespace {

// Each table with its columns: "+" marks a column the client's upgrade adds
// (so the older release lacks it), "-" one the upgrade drops.
const QMap<QString, QStringList>& schemaColumns()
{
    static const QMap<QString, QStringList> tables = [] {
        const char* const rows[] = {
            "StatusCounterTable Counter StatusTypeCounter GroupCounter SecurityCounter +ExtraColumnsCounter",
            "EmployeeTable Name UID Status StatusCode Phone DueBack Comments LastModified ActiveFlag",
            "EmployeeSettingsTable Name AutoClearComments AutoLogIn AutoLogOut AutoMinimize MinimizeOnClose "
            "RefreshRate DefaultGroup StatusColumnWidth NameColumnWidth PhoneColumnWidth DueBackColumnWidth "
            "CommentsColumnWidth LastModifiedColumnWidth StatusColumnOrder NameColumnOrder PhoneColumnOrder "
            "DueBackColumnOrder CommentsColumnOrder LastModifiedColumnOrder SortOrder SortKey SortColumnName ScreenTop "
            "ScreenLeft ScreenWidth ScreenHeight ListViewPopUp ChangeScreenPopUp UserSecurityLevel MinimizeSetting "
            "+DisplayTreeView IconSize ToolBarText PhotoSizeToFit PictureFileName +StatusAlertsOverride "
            "+SplitterPositionVertical +SplitterPositionHorizontal +FontBoldDisplay +FontSizeDisplay",
            "NewUserDefaultsTable AutoClearComments AutoLogIn AutoLogOut AutoMinimize MinimizeOnClose RefreshRate "
            "DefaultGroup StatusColumnWidth NameColumnWidth PhoneColumnWidth DueBackColumnWidth CommentsColumnWidth "
            "LastModifiedColumnWidth SortOrder SortKey SortColumnName ScreenTop ScreenLeft ScreenWidth ScreenHeight "
            "ListViewPopUp ChangeScreenPopUp UserSecurityLevel MinimizeSetting DisplayTreeView IconSize ToolBarText "
            "+SplitterPositionVertical +SplitterPositionHorizontal +FontBoldDisplay +FontSizeDisplay",
            "GlobalSettingsTable DatabaseVersion +DatabaseReleaseVersion TransactionLogFlag SystemSecurityLevel "
            "LogoPosition +AllowMessaging +AllowStatusAlerts +AllowPresenceSensing +UpdateStatusOnLock "
            "+AllowUserToAddVeskOrToStartupFolder PhotoPath CompanyInfo",
            "StatusTypesTable Status StatusCode ProtectedStatus ButtonText ToolTipText OnToolBar",
            "DueBackTable DueBack",
            "GroupTable GroupName",
            "EmployeeGroupTable GroupName EmployeeName GroupManager",
            "EmployeeStatusTracking Tracker Trackee TrackeeStatus +TrackeeLastUpdated -TrackeeLastUpdate",
            "MessagesTable MessageID Category SentFromRemoteUNC SentFromName SentToName +MessageOwner MessageFrom "
            "MessageSubject MessageBody SentDateTimeNum LastUsedDateTimeNum -TrackeeLastUpdate",
            "ServersTable Description UNCPath",
            "TransactionLogTable Name Status DueBack Comments LastModified NetworkLogonID +LogDateTime +ComputerName "
            "+IPAddress",
            "AdminSettingsTable ScreenTop ScreenLeft ScreenWidth ScreenHeight +LastSelectedNode +AdminFontBoldDisplay "
            "+AdminFontSizeDisplay",
        };
        QMap<QString, QStringList> map;
        for (const char* row : rows) {
            QStringList words = QString::fromLatin1(row).split(u' ');
            map.insert(words.takeFirst(), words);
        }
        return map;
    }();
    return tables;
}

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
        const QStringList expected = sorted(schemaColumns().keys());
        QCOMPARE(sorted(m_present->TableNames()), expected);
        QCOMPARE(sorted(m_older->TableNames()), expected);
        QCOMPARE(sorted(database::schemaTables()), expected);
    }

    void columns_data()
    {
        QTest::addColumn<QString>("table");
        for (const QString& table : schemaColumns().keys())
            QTest::newRow(qPrintable(table)) << table;
    }
    void columns()
    {
        QFETCH(QString, table);
        QStringList present;
        QStringList older;
        for (const QString& column : schemaColumns().value(table)) {
            if (!column.startsWith(u'-'))
                present << QString(column).remove(u'+');
            if (!column.startsWith(u'+'))
                older << QString(column).remove(u'-');
        }
        QCOMPARE(sorted(m_present->FieldNames(table)), sorted(present));
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
        m_present->Execute(first);
        try {
            m_present->Execute(second);
            QFAIL("the duplicate went in");
        } catch (const dao::JetError& e) {
            QCOMPARE(e.number(), int(dao::errDuplicateKey));
        }
    }

    void columnsReadAsTheirTypes()
    {
        m_older->Execute("INSERT INTO EmployeeGroupTable (GroupName, EmployeeName, GroupManager) VALUES ('G', 'A', "
                         "True)");
        m_present->Execute("INSERT INTO EmployeeStatusTracking (Tracker, TrackeeLastUpdated) VALUES ('A', 38000.5)");
        auto group = m_older->OpenRecordset("SELECT * FROM EmployeeGroupTable", dao::dbOpenSnapshot);
        QCOMPARE(group->Fields("GroupManager").Value(), QVariant(true));
        auto tracking = m_present->OpenRecordset("SELECT * FROM EmployeeStatusTracking", dao::dbOpenSnapshot);
        QCOMPARE(tracking->Fields("TrackeeLastUpdated").Value(), QVariant(38000.5));
        QCOMPARE(tracking->Fields("Tracker").Type(), dao::FieldType::Text);
    }
};

QTEST_GUILESS_MAIN(TstSchema)
#include "tst_schema.moc"
