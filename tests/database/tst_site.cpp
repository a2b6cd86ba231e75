// A new site's files and standing rows, and the row functions the admin tool and
// the test fixture share.
#include "dao/dao.h"
#include "database/site.h"
#include "platform/profile.h"
#include "tempsite.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <map>

using database::SchemaRelease;

namespace {

// Both settings files have a section and a key of the same name.
QString iniValue(const QString& file, const QString& sectionAndKey)
{
    return platform::GetPrivateProfileString(sectionAndKey, sectionAndKey, QString(), 1024, file);
}

QString value(dao::Database& db, const QString& sql)
{
    auto rs = db.OpenRecordset(sql, dao::dbOpenSnapshot);
    return rs->isEOF() ? QStringLiteral("<no row>") : rs->Fields(0).Text();
}

long long count(dao::Database& db, const QString& table)
{
    auto rs = db.OpenRecordset("SELECT COUNT(*) AS N FROM " + table, dao::dbOpenSnapshot);
    return rs->Fields(0).Value().toLongLong();
}

template <typename F> QString siteErrorOf(F&& f)
{
    try {
        f();
    } catch (const database::SiteError& e) {
        return e.message();
    }
    return QStringLiteral("<no error>");
}

} // namespace

class TstSite : public QObject
{
    Q_OBJECT

private slots:
    void createSiteWritesTheIniAndRefusesToOverwrite()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath("new/site"); // folders made as needed
        database::createSite(dir);
        const QString dataPath = iniValue(dir + "/veskor.ini", "DataPath");
        QVERIFY(dataPath.endsWith(QDir::separator()));
        QCOMPARE(QDir(dataPath).canonicalPath(), QDir(dir).canonicalPath());

        database::addPerson(*database::openSite(dir), {"Ann Lee"});
        QVERIFY(siteErrorOf([&] { database::createSite(dir); }).contains("already exists"));
        QCOMPARE(count(*database::openSite(dir), "EmployeeTable"), 1LL); // untouched
    }

    void standingRows_data()
    {
        QTest::addColumn<int>("release");
        QTest::newRow("present") << int(SchemaRelease::Present);
        QTest::newRow("older") << int(SchemaRelease::Older);
    }
    void standingRows()
    {
        QFETCH(int, release);
        TempSite site{SchemaRelease(release)};
        auto db = site.openDb();
        for (const char* table :
             {"GlobalSettingsTable", "NewUserDefaultsTable", "StatusCounterTable", "AdminSettingsTable"})
            QCOMPARE(count(*db, table), 1LL);
        QCOMPARE(value(*db, "SELECT DatabaseVersion FROM GlobalSettingsTable"), QStringLiteral("2005"));
        QCOMPARE(value(*db, "SELECT Counter FROM StatusCounterTable"), QStringLiteral("1"));
        QCOMPARE(value(*db, "SELECT RefreshRate FROM NewUserDefaultsTable"), QStringLiteral("5"));
        QVERIFY(count(*db, "DueBackTable") > 0);

        // In, Out and Busy have codes of their own, none of those the clients keep.
        QSet<long long> codes;
        for (const char* word : {"In", "Out", "Busy"}) {
            const long long code =
                value(*db, QString("SELECT StatusCode FROM StatusTypesTable WHERE Status = ") + dao::quote(word))
                    .toLongLong();
            QVERIFY(code > 0 && code != 4 && code != 10 && code != 11);
            codes.insert(code);
        }
        QCOMPARE(codes.size(), 3);
        QVERIFY(count(*db, "StatusTypesTable WHERE ProtectedStatus = True") >= 1);
    }

    void addPersonTakesTheDefaults_data()
    {
        standingRows_data();
    }
    void addPersonTakesTheDefaults()
    {
        QFETCH(int, release);
        TempSite site{SchemaRelease(release)};
        site.column("New_Mobile").execute("UPDATE NewUserDefaultsTable SET New_Mobile = 'none yet', RefreshRate = 3");
        site.person("Liam \"Red\" O'Connor", "loconnor", "555 0101");
        auto db = site.openDb();
        const QString who = dao::quote("Liam \"Red\" O'Connor");
        QCOMPARE(value(*db, "SELECT UID FROM EmployeeTable WHERE Name = " + who), QStringLiteral("loconnor"));
        QCOMPARE(value(*db, "SELECT New_Mobile FROM EmployeeTable WHERE Name = " + who), QStringLiteral("none yet"));
        QCOMPARE(value(*db, "SELECT RefreshRate FROM EmployeeSettingsTable WHERE Name = " + who), QStringLiteral("3"));
        QCOMPARE(value(*db, "SELECT LastModifiedColumnOrder FROM EmployeeSettingsTable WHERE Name = " + who),
                 QStringLiteral("6"));
        QCOMPARE(value(*db, "SELECT SortColumnName FROM EmployeeSettingsTable WHERE Name = " + who),
                 QStringLiteral("Name"));
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("message");
        QTest::newRow("same name, other case") << "person"
                                               << "already a user or item";
        QTest::newRow("no defaults row") << "no defaults"
                                         << "No User Record in New User Defaults Table.";
        QTest::newRow("group Everyone") << "group Everyone"
                                        << "built in";
        QTest::newRow("duplicate group") << "duplicate group"
                                         << "already a group";
        QTest::newRow("member of unknown group") << "unknown group"
                                                 << "no group named \"Nowhere\"";
        QTest::newRow("unknown member") << "unknown person"
                                        << "no user or item named \"Nobody\"";
        QTest::newRow("member twice") << "member twice"
                                      << "already a member";
        QTest::newRow("column without New_") << "column Mobile"
                                             << "not an extra column name";
        QTest::newRow("column with a quote") << "column quote"
                                             << "not an extra column name";
        QTest::newRow("column twice") << "column twice"
                                      << "exists already";
    }
    void refusals()
    {
        QFETCH(QString, what);
        QFETCH(QString, message);
        TempSite site;
        site.person("Ann Lee").group("Sales").member("Sales", "Ann Lee").column("New_Mobile");
        auto db = site.openDb();
        const std::map<QString, std::function<void()>> attempts = {
            {"person",
             [&] {
                 database::addPerson(*db, {" ann LEE "});
             }},
            {"no defaults",
             [&] {
                 db->Execute("DELETE FROM NewUserDefaultsTable");
                 database::addPerson(*db, {"Bob"});
             }},
            {"group Everyone",
             [&] {
                 database::addGroup(*db, "everyone");
             }},
            {"duplicate group",
             [&] {
                 database::addGroup(*db, "SALES");
             }},
            {"unknown group",
             [&] {
                 database::addMember(*db, "Nowhere", "Ann Lee");
             }},
            {"unknown person",
             [&] {
                 database::addMember(*db, "Sales", "Nobody");
             }},
            {"member twice",
             [&] {
                 database::addMember(*db, "sales", "ann lee");
             }},
            {"column Mobile",
             [&] {
                 database::addExtraColumn(*db, "Mobile");
             }},
            {"column quote",
             [&] {
                 database::addExtraColumn(*db, "New_X\" TEXT, Y");
             }},
            {"column twice",
             [&] {
                 database::addExtraColumn(*db, "New_Mobile");
             }},
        };
        QVERIFY2(siteErrorOf(attempts.at(what)).contains(message, Qt::CaseInsensitive),
                 qPrintable(siteErrorOf(attempts.at(what))));
        QCOMPARE(count(*db, "EmployeeTable"), 1LL);
        QCOMPARE(count(*db, "EmployeeGroupTable"), 1LL);
    }

    void extraColumnMakesItsCompanions()
    {
        TempSite site;
        site.person("Ann Lee").column("New_Desk", true);
        auto db = site.openDb();
        QVERIFY(db->FieldNames("EmployeeTable").contains("New_DeskReadOnly"));
        QVERIFY(db->FieldNames("NewUserDefaultsTable").contains("New_Desk"));
        QVERIFY(db->FieldNames("EmployeeSettingsTable").contains("New_DeskColumnOrder"));
        QVERIFY(db->FieldNames("EmployeeSettingsTable").contains("New_DeskColumnWidth"));
        QCOMPARE(value(*db, "SELECT New_DeskReadOnly FROM EmployeeTable"), QStringLiteral("True"));
        QCOMPARE(database::extraColumnCaption("New_Desk"), QStringLiteral("Desk"));
    }

    void settingsAreStoredByType_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("stored"); // "" when refused
        QTest::newRow("yes/no") << "AllowMessaging"
                                << "no"
                                << "False";
        QTest::newRow("yes/no, other case") << "allowmessaging"
                                            << "TRUE"
                                            << "True";
        QTest::newRow("number") << "SystemSecurityLevel"
                                << "2"
                                << "2";
        QTest::newRow("text") << "PhotoPath"
                              << "  /srv/photos/ "
                              << "/srv/photos/";
        QTest::newRow("other table") << "NewUserDefaultsTable.RefreshRate"
                                     << "15"
                                     << "15";
        QTest::newRow("number refused") << "SystemSecurityLevel"
                                        << "high"
                                        << "";
        QTest::newRow("yes/no refused") << "AllowMessaging"
                                        << "maybe"
                                        << "";
        QTest::newRow("unknown field") << "NoSuchField"
                                       << "1"
                                       << "";
        QTest::newRow("not a settings table") << "EmployeeTable.Name"
                                              << "x"
                                              << "";
    }
    void settingsAreStoredByType()
    {
        QFETCH(QString, field);
        QFETCH(QString, input);
        QFETCH(QString, stored);
        TempSite site;
        auto db = site.openDb();
        const QString error = siteErrorOf([&] { database::setSetting(*db, field, input); });
        if (stored.isEmpty()) {
            QVERIFY(error != "<no error>");
        } else {
            QCOMPARE(error, QStringLiteral("<no error>"));
            QCOMPARE(database::getSetting(*db, field), stored);
        }
    }

    void countersRise()
    {
        TempSite site;
        auto db = site.openDb();
        QCOMPARE(database::raiseCounter(*db, "GroupCounter"), 2LL);
        QCOMPARE(database::readCounter(*db, "groupcounter"), 2LL);
        db->Execute("UPDATE StatusCounterTable SET SecurityCounter = Null");
        QCOMPARE(database::raiseCounter(*db, "SecurityCounter"), 1LL);
        db->Execute("DELETE FROM StatusCounterTable");
        QCOMPARE(database::raiseCounter(*db, "Counter"), 1LL);
        QVERIFY(siteErrorOf([&] { database::raiseCounter(*db, "Bogus"); }).contains("not a counter"));
    }

    void statusTakesTheCodeOfItsWord()
    {
        TempSite site;
        site.person("Ann").person("Bob").person("Cy");
        site.status("Ann", "out", "Tomorrow", "Dentist")
            .status("Bob", "Gone fishing")
            .status("Cy", {.status = "In", .lastModified = "2024-01-02 03:04:05 by Ann", .code = 11});
        auto db = site.openDb();
        const QString outCode = value(*db, "SELECT StatusCode FROM StatusTypesTable WHERE Status = 'Out'");
        QCOMPARE(value(*db, "SELECT StatusCode FROM EmployeeTable WHERE Name = 'Ann'"), outCode);
        QCOMPARE(value(*db, "SELECT DueBack FROM EmployeeTable WHERE Name = 'Ann'"), QStringLiteral("Tomorrow"));
        QCOMPARE(value(*db, "SELECT StatusCode FROM EmployeeTable WHERE Name = 'Bob'"), QStringLiteral("4"));
        QCOMPARE(value(*db, "SELECT StatusCode FROM EmployeeTable WHERE Name = 'Cy'"), QStringLiteral("11"));
        QCOMPARE(value(*db, "SELECT LastModified FROM EmployeeTable WHERE Name = 'Cy'"),
                 QStringLiteral("2024-01-02 03:04:05 by Ann"));
    }

    void trackingAndMessagesInBothReleases_data()
    {
        standingRows_data();
    }
    void trackingAndMessagesInBothReleases()
    {
        QFETCH(int, release);
        TempSite site{SchemaRelease(release)};
        site.tracking("Ann", "Bob", "Out", 45000.25);
        const long long first = site.message({.owner = "Bob", .fromName = "Ann", .toName = "Bob", .subject = "Hi"});
        const long long second = site.message({.owner = "Ann", .category = "Sent", .fromName = "Ann", .toName = "Bob"});
        QVERIFY(second > first);
        auto db = site.openDb();
        const QString column =
            SchemaRelease(release) == SchemaRelease::Present ? "TrackeeLastUpdated" : "TrackeeLastUpdate";
        QCOMPARE(value(*db, "SELECT " + column + " FROM EmployeeStatusTracking"), QStringLiteral("45000.25"));
        QCOMPARE(value(*db, "SELECT MessageFrom FROM MessagesTable WHERE MessageID = " + QString::number(first)),
                 QStringLiteral("Ann"));
    }

    void boardOfAGroup_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("Everyone") << "Everyone" << QStringList{"ann", "Bob", "Meeting Room 1"};
        QTest::newRow("blank means Everyone") << "" << QStringList{"ann", "Bob", "Meeting Room 1"};
        QTest::newRow("a group, any case") << "SALES*" << QStringList{"ann", "Bob"};
        QTest::newRow("an empty group") << "Empty" << QStringList{};
    }
    void boardOfAGroup()
    {
        QFETCH(QString, group);
        QFETCH(QStringList, names);
        TempSite site;
        site.person("Bob", "", "1234").person("~Hidden").person("ann").person("Meeting Room 1").column("New_Mobile");
        site.group("Sales*").group("Empty").member("Sales*", "Bob").member("Sales*", "~Hidden").member("Sales*", "ann");
        site.status("Bob", "Out", "Tomorrow", "Trip, north");
        const database::Board board = database::readBoard(*site.openDb(), group);
        QCOMPARE(board.columns,
                 (QStringList{"Name", "Status", "Phone", "DueBack", "Comments", "LastModified", "New_Mobile"}));
        QStringList shown;
        for (const QStringList& row : board.rows)
            shown << row[0];
        QCOMPARE(shown, names);
        if (names.contains("Bob"))
            QCOMPARE(board.rows[size_t(names.indexOf("Bob"))].mid(0, 5),
                     (QStringList{"Bob", "Out", "1234", "Tomorrow", "Trip, north"}));
    }
};

QTEST_GUILESS_MAIN(TstSite)
#include "tst_site.moc"
