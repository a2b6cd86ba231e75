// A new site's files and standing rows, and the row functions the admin tool and
// the test fixture share.
#include "dao/dao.h"
#include "database/site.h"
#include "tempsite.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
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

} // namespace

Q_DECLARE_METATYPE(Attempt)

class TstSite : public QObject
{
    Q_OBJECT

private slots:
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
        QTest::addColumn<QString>("message");
        QTest::addColumn<Attempt>("attempt");
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
        QFETCH(QString, message);
        QFETCH(Attempt, attempt);
        TempSite site;
        site.person("Ann Lee").group("Sales").member("Sales", "Ann Lee").column("New_Mobile");
        auto db = site.openDb();
        const QString error = siteErrorOf([&] { attempt(*db); });
        QVERIFY2(error.contains(message, Qt::CaseInsensitive), qPrintable(error));
        QCOMPARE(count(site, "EmployeeTable"), 1LL);
        QCOMPARE(count(site, "EmployeeGroupTable"), 1LL);
    }

    void extraColumnMakesItsCompanions()
    {
        TempSite site;
        site.person("Ann Lee").column("New_Desk", true);
        QCOMPARE(site.value("SELECT New_DeskReadOnly FROM EmployeeTable"), "True");
        QCOMPARE(database::extraColumnCaption("New_Desk"), "Desk");
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
        const QString outCode = site.value("SELECT StatusCode FROM StatusTypesTable WHERE Status = 'Out'");
        QCOMPARE(site.value("SELECT StatusCode & '|' & DueBack FROM EmployeeTable WHERE Name = 'Ann'"),
                 outCode + "|Tomorrow");
        QCOMPARE(site.value("SELECT StatusCode FROM EmployeeTable WHERE Name = 'Bob'"), "4");
        QCOMPARE(site.value("SELECT StatusCode & '|' & LastModified FROM EmployeeTable WHERE Name = 'Cy'"),
                 "11|2024-01-02 03:04:05 by Ann");
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
        site.person("Bob").person("~Hidden").person("ann").person("Meeting Room 1");
        site.group("Sales*").group("Empty").member("Sales*", "Bob").member("Sales*", "~Hidden").member("Sales*", "ann");
        QStringList shown;
        for (const QStringList& row : database::readBoard(*site.openDb(), group).rows)
            shown << row[0];
        QCOMPARE(shown, names);
    }
};

QTEST_GUILESS_MAIN(TstSite)
#include "tst_site.moc"
