// veskor-admin's commands, run in-process on real files, and once as the real program.
#include "admin/admin.h"
#include "columns.h"
#include "dao/dao.h"
#include "database/site.h"
#include "ondisk.h"
#include "platform/profile.h"
#include "tempsite.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Result
{
    int code = -1;
    QString out;
    QString err;
};

Result run(const QStringList& args)
{
    Result r;
    QTextStream out(&r.out);
    QTextStream err(&r.err);
    r.code = admin::runAdmin(args, out, err);
    out.flush();
    err.flush();
    return r;
}

} // namespace

class TstAdmin : public QObject
{
    Q_OBJECT

private slots:
    // A site is made once, its folders as needed, veskor.ini naming the folder with
    // a closing separator; the older release has the old tracking column.
    void initMakesASiteOnce()
    {
        QTemporaryDir tmp;
        const QString dir = tmp.filePath("new/site");
        QCOMPARE(run({"init", dir}).code, 0);
        QVERIFY(QFile::exists(dir + "/veskor.mdb"));
        const QString dataPath =
            platform::GetPrivateProfileString("DataPath", "DataPath", QString(), 1024, dir + "/veskor.ini");
        QVERIFY(dataPath.endsWith(QDir::separator()));
        QCOMPARE(QDir(dataPath).canonicalPath(), QDir(dir).canonicalPath());
        const Result again = run({"init", dir});
        QCOMPARE(again.code, 1);
        QVERIFY2(again.err.contains("already exists"), qPrintable(again.err));
        QCOMPARE(run({"init", tmp.path() + "/old", "--older-release"}).code, 0);
        QVERIFY(database::openSite(tmp.path() + "/old")
                    ->FieldNames("EmployeeStatusTracking")
                    .contains("TrackeeLastUpdate"));
    }

    // Each command's effect on the file, and the counter it raises.
    void commands_data()
    {
        addColumns<QStringList, QString, QString, QString>("args", "counter", "query", "expected");
        // The arguments parted by '|'.
        const auto row = [](const char* name, const char* args, const char* counter, const char* query,
                            const char* expected) {
            QTest::newRow(name) << QString(args).split('|') << counter << query << expected;
        };
        row("user add", "user|add|Cara Lin|--uid|clin|--phone|2345", "Counter",
            "SELECT Phone FROM EmployeeTable WHERE UID = 'clin' AND Name = 'Cara Lin'", "2345");
        row("group add", "group|add|Help Desk*", "GroupCounter",
            "SELECT GroupName FROM GroupTable WHERE GroupName = 'help desk*'", "Help Desk*");
        row("group member", "group|member|sales|ann lee|--manager", "GroupCounter",
            "SELECT EmployeeName FROM EmployeeGroupTable WHERE GroupManager = True", "Ann Lee"); // as the row spells it
        row("status-type add", "status-type|add|Training|12|--button|Train|--protected|--toolbar", "StatusTypeCounter",
            "SELECT ButtonText FROM StatusTypesTable WHERE Status = 'Training' AND StatusCode = 12 AND "
            "ProtectedStatus = True AND OnToolBar = True",
            "Train");
        row("column add", "column|add|New_Mobile", "ExtraColumnsCounter", "SELECT COUNT(New_Mobile) FROM EmployeeTable",
            "0");
        row("security level", "settings|set|SystemSecurityLevel|2", "SecurityCounter",
            "SELECT SystemSecurityLevel FROM GlobalSettingsTable", "2");
        row("yes/no setting, any case", "settings|set|allowmessaging|OFF", "",
            "SELECT AllowMessaging FROM GlobalSettingsTable", "False");
        row("text setting", "settings|set|PhotoPath|  /srv/photos/ ", "", "SELECT PhotoPath FROM GlobalSettingsTable",
            "/srv/photos/");
        row("other table", "settings|set|NewUserDefaultsTable.RefreshRate|15", "",
            "SELECT RefreshRate FROM NewUserDefaultsTable", "15");
    }
    void commands()
    {
        auto [args, counter, query, expected] =
            fetch<QStringList, QString, QString, QString>("args", "counter", "query", "expected");
        TempSite site;
        site.person("Ann Lee").group("Sales");
        const QStringList names{"Counter", "StatusTypeCounter", "GroupCounter", "SecurityCounter",
                                "ExtraColumnsCounter"};
        const auto counters = [&] {
            QList<long long> all;
            for (const QString& name : names)
                all << database::readCounter(*site.openDb(), name);
            return all;
        };
        QList<long long> expectedCounters = counters();
        if (!counter.isEmpty())
            ++expectedCounters[names.indexOf(counter)];
        const Result r = run(args + QStringList{"--site", site.path()});
        QVERIFY2(r.code == 0, qPrintable(r.err));
        QVERIFY(!r.out.isEmpty());
        QCOMPARE(site.value(query), expected);
        QCOMPARE(counters(), expectedCounters);
    }

    void settingsGetAndShutdown()
    {
        TempSite site;
        const Result got = run({"settings", "get", "DatabaseVersion", "--site", site.path()});
        QVERIFY(got.code == 0 && got.out == "2005\n");
        const auto forced = [&] {
            return platform::GetPrivateProfileString("ForceShutDown", "ForceShutDown", QString(), 1024,
                                                     QDir(site.path()).filePath("forceshutdown.ini"));
        };
        QCOMPARE(run({"shutdown", "on", "--site", site.path()}).code, 0);
        QCOMPARE(forced(), "TRUE");
        QCOMPARE(run({"shutdown", "OFF", "--site", site.path()}).code, 0);
        QCOMPARE(forced(), "FALSE");
    }

    void failures_data()
    {
        addColumns<QStringList, int, QString>("args", "code", "message");
        QTest::newRow("no command") << QStringList{} << 2 << "no command";
        QTest::newRow("unknown command") << QStringList{"user", "remove", "Ann"} << 2 << "unknown command";
        QTest::newRow("unknown option") << QStringList{"board", "--colour"} << 2 << "colour";
        QTest::newRow("option of another command")
            << QStringList{"group", "add", "X", "--manager"} << 2 << "--manager does not apply to group add";
        QTest::newRow("missing argument") << QStringList{"group", "member", "Sales"} << 2 << "usage:";
        QTest::newRow("both formats") << QStringList{"board", "--csv", "--json"} << 2 << "not both";
        QTest::newRow("shutdown maybe") << QStringList{"shutdown", "maybe"} << 2 << "on|off";
        QTest::newRow("duplicate user") << QStringList{"user", "add", "ANN LEE"} << 1 << "already a user";
        QTest::newRow("unknown group") << QStringList{"group", "member", "Nowhere", "Ann Lee"} << 1 << "no group";
        QTest::newRow("board of unknown group") << QStringList{"board", "Nowhere"} << 1 << "no group";
        QTest::newRow("reserved code") << QStringList{"status-type", "add", "Away", "10"} << 1 << "kept";
        QTest::newRow("code not a number") << QStringList{"status-type", "add", "Away", "ten"} << 2 << "whole number";
        QTest::newRow("unknown setting") << QStringList{"settings", "get", "Colour"} << 1 << "no field";
        QTest::newRow("number refused") << QStringList{"settings", "set", "SystemSecurityLevel", "high"} << 1
                                        << "\"high\" is not a value";
        QTest::newRow("yes/no refused") << QStringList{"settings", "set", "AllowMessaging", "maybe"} << 1
                                        << "\"maybe\" is not a value";
        QTest::newRow("not a settings table")
            << QStringList{"settings", "set", "EmployeeTable.Name", "x"} << 1 << "not a settings table";
    }
    void failures()
    {
        auto [args, code, message] = fetch<QStringList, int, QString>("args", "code", "message");
        TempSite site;
        site.person("Ann Lee");
        const Result r = run(args + QStringList{"--site", site.path()});
        QCOMPARE(r.code, code);
        QVERIFY2(r.err.contains(message, Qt::CaseInsensitive), qPrintable(r.err));
        QVERIFY(r.err.startsWith("veskor-admin: "));
    }

    void failuresOfTheFile()
    {
        QTemporaryDir tmp;
        const Result none = run({"board", "--site", tmp.path()});
        QVERIFY2(none.code == 1 && none.err.contains("no site database"), qPrintable(none.err));

        QVERIFY(writeFile(tmp.filePath("veskor.mdb"), QByteArray(4096, 'x')));
        const Result bad = run({"board", "--site", tmp.path()});
        QVERIFY2(bad.code == 1 && bad.err.contains("database error 3343"), qPrintable(bad.err)); // with its number
    }

    void boardFormats()
    {
        TempSite site;
        site.column("New_Mobile").person("Bob").person("Ann").status("Bob", "Out", "Tomorrow", "Trip, \"north\"");
        const QString at = site.path();

        const Result csv = run({"board", "--csv", "--site", at});
        QCOMPARE(csv.out.split('\n'), (QStringList{"Name,Status,Phone,DueBack,Comments,LastModified,New_Mobile",
                                                   "Ann,,,,,,", "Bob,Out,,Tomorrow,\"Trip, \"\"north\"\"\",,", ""}));

        const Result json = run({"board", "--json", "--site", at});
        const QJsonObject doc = QJsonDocument::fromJson(json.out.toUtf8()).object();
        QCOMPARE(doc["group"].toString(), "Everyone");
        const QJsonArray rows = doc["rows"].toArray();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[1].toObject()["Comments"].toString(), "Trip, \"north\"");
        QCOMPARE(rows[1].toObject().keys().size(), 7);

        const Result text = run({"board", "--site", at});
        QVERIFY(text.out.section('\n', 0, 0).contains("Mobile"));
        QVERIFY(!text.out.section('\n', 0, 0).contains("New_"));
        QCOMPARE(text.out.count('\n'), 4); // heading, rule, two rows
    }

    void siteFromTheIniInTheCurrentFolder()
    {
        TempSite site;
        site.person("Ann Lee");
        QTemporaryDir elsewhere;
        QFile::copy(site.iniPath(), elsewhere.filePath("veskor.ini"));
        const QString was = QDir::currentPath();
        QDir::setCurrent(elsewhere.path());
        const Result r = run({"board", "--csv"});
        QDir::setCurrent(was);
        QVERIFY(r.code == 0 && r.out.contains("Ann Lee"));
    }

    void demoOffice()
    {
        QTemporaryDir tmp;
        QCOMPARE(run({"demo", tmp.path()}).code, 0);
        auto db = database::openSite(tmp.path());
        const auto number = [&](const QString& sql) {
            return db->OpenRecordset(sql, dao::dbOpenSnapshot)->Fields(0).Value().toLongLong();
        };
        QVERIFY(number("SELECT COUNT(*) FROM EmployeeTable") >= 40);
        QVERIFY(number("SELECT COUNT(*) FROM EmployeeTable WHERE New_Mobile <> ''") >= 40);
        QVERIFY(number("SELECT COUNT(*) FROM EmployeeTable WHERE DueBack <> ''") > 5);
        QVERIFY(number("SELECT COUNT(*) FROM EmployeeStatusTracking") > 0);
        for (const char* category : {"New", "Read", "Sent"})
            QVERIFY(number(QString("SELECT COUNT(*) FROM MessagesTable WHERE Category = '%1'").arg(category)) > 0);
        const Result board = run({"board", "Help Desk*", "--site", tmp.path()});
        QVERIFY(board.code == 0 && board.out.contains("Meeting Room 1"));
    }

    void helpListsTheCommands()
    {
        const Result r = run({"--help"});
        QVERIFY(r.code == 0 && r.out.contains("init DIR") && r.out.contains("board [GROUP]"));
    }

    void realProgram()
    {
        QTemporaryDir tmp;
        const auto admin = [&](const QStringList& args) {
            QProcess p;
            p.start(VESKOR_ADMIN_BINARY, args);
            if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit)
                return Result{-1, QString(), "did not finish"};
            return Result{p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()),
                          QString::fromUtf8(p.readAllStandardError())};
        };
        QCOMPARE(admin({"init", tmp.path()}).code, 0);
        QCOMPARE(admin({"user", "add", "Zoë Kraus", "--site", tmp.path()}).code, 0);
        const Result board = admin({"board", "--site", tmp.path()});
        QVERIFY(board.code == 0 && board.out.contains("Zoë Kraus"));
        const Result wrong = admin({"user", "add", "zoë kraus", "--site", tmp.path()});
        QVERIFY(wrong.code == 1 && !wrong.err.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TstAdmin)
#include "tst_admin.moc"
