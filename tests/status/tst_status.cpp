// The status writes, the log and the settings, on a real site file.
#include "columns.h"
#include "ondisk.h"
#include "otherclient.h"
#include "status/settings.h"
#include "status/statuswrite.h"
#include "status/translog.h"
#include "statusfixture.h"

#include <QTest>
#include <tuple>

using namespace platform;

namespace {

const QString kStamp = "2026-11-22 09:30:00 by Ann Lee";
constexpr double kNow = 46348.395833333336; // the fake clock's moment as a date number
const QString kOwnOnly = " Your security setting only allows you to change YOUR OWN Status in this Group.";

struct Route
{
    QStringList names;
    QList<int> selected;
    int current = -1;
    bool groupButton = false;
    QStringList written;
};

struct Word
{
    QString word;
    bool autoClear = false;
    QString code;
};

void renameTable(const TempSite& site, const QByteArray& from, const QByteArray& to)
{
    QVERIFY(site.rawExec("ALTER TABLE " + from + " RENAME TO " + to));
}

void setForAnn(StatusFixture& f, const QString& assignments)
{
    f.site.execute("UPDATE EmployeeSettingsTable SET " + assignments + " WHERE Name = \"Ann Lee\"");
}

// Every value the end of a run writes, as the next start reads it back.
auto layoutValues()
{
    return std::tie(gPerson.gintSortOrder, gPerson.gintSortKey, gPerson.gintMinimizeSetting,
                    gPerson.gblnMinimizeOnClose, gPerson.gvarDisplayTreeView, gPerson.gintIconSize,
                    gPerson.gintToolBarText, gPerson.gblnPhotoSizeToFit, gPerson.glngSplitterVertical);
}
const auto kLayout = std::tuple(1LL, 2LL, 2LL, true, 0LL, 1LL, 1LL, true, 2222LL);

} // namespace

Q_DECLARE_METATYPE(Route)
Q_DECLARE_METATYPE(Word)

class TstStatus : public QObject
{
    Q_OBJECT

private slots:
    void whoseRowIsWritten_data()
    {
        QTest::addColumn<Route>("r");
        const QStringList all = {"Ann Lee", "Bob Ray", "Cy Dee"};
        QTest::newRow("empty list") << Route{{}, {}, -1, true, {"Ann Lee"}};
        QTest::newRow("focus not selected") << Route{all, {}, 1, true, {"Ann Lee"}};
        QTest::newRow("own row, button off") << Route{all, {0}, 0, false, {"Ann Lee"}};
        QTest::newRow("another's row, button off") << Route{all, {1}, 1, false, {}};
        QTest::newRow("several rows, button on") << Route{all, {1, 2}, 1, true, {"Bob Ray", "Cy Dee"}};
    }

    // The single path and the group path each raise the counter once; the group
    // path logs a row per person with the changer's due-back and comment.
    void whoseRowIsWritten()
    {
        QFETCH(Route, r);
        StatusFixture f;
        f.board.names = r.names;
        f.board.selected = r.selected;
        f.board.current = r.current;
        f.board.groupButton = r.groupButton;
        gRun.gstrDueBack = "3pm";
        gRun.gstrComment = "Dentist";
        const long long before = f.counter();
        f.gw.boxes().answer(vbOK, r.written.isEmpty() ? 1 : 0);

        subSetStatus("Busy");

        for (const QString name : {"Ann Lee", "Bob Ray", "Cy Dee"}) {
            QCOMPARE(f.statusOf(name) == QLatin1String("Busy"), r.written.contains(name));
        }
        QCOMPARE(f.gw.boxes().prompts(), r.written.isEmpty() ? QStringList{kOwnOnly} : QStringList());
        QCOMPARE(f.counter(), before + (r.written.isEmpty() ? 0 : 1));
        QCOMPARE(f.logRows(), r.written.size());
        for (const QString& name : r.written) {
            QCOMPARE(
                f.row("SELECT Name, Status, DueBack, Comments, LastModified FROM TransactionLogTable WHERE Name = " +
                      dao::quote(name)),
                (QStringList{name, "Busy", "3pm", "Dentist", kStamp}));
            QCOMPARE(f.site.value("SELECT LastModified FROM EmployeeTable WHERE Name = " + dao::quote(name)), kStamp);
        }
    }

    void wordCodeAndComments_data()
    {
        QTest::addColumn<Word>("w");
        QTest::newRow("other case") << Word{"bUSY", true, "2"};
        QTest::newRow("typed by hand") << Word{"Gone fishing", true, "4"};
        QTest::newRow("In, auto clear") << Word{"In", true, "3"};
        QTest::newRow("in, auto clear") << Word{"in", true, "3"};
        QTest::newRow("In, no auto clear") << Word{"In", false, "3"};
    }

    // The code comes from StatusTypesTable without regard to case, a word with no row
    // gets 4 and the caption keeps the old word; only "In" exactly clears comments.
    void wordCodeAndComments()
    {
        QFETCH(Word, w);
        StatusFixture f;
        f.site.status("Ann Lee", "Out", "Tomorrow", "Dentist");
        f.board.setCaption(" VESK-OR Pro  - [Ann Lee] 'Out'");
        gPerson.gblnAutoClearComments = w.autoClear;
        gRun.gstrDueBack = "Tomorrow";
        gRun.gstrComment = "Dentist";

        subSetStatus(w.word);

        const bool cleared = w.word == "In" && w.autoClear;
        const QStringList comments = cleared ? QStringList{"", ""} : QStringList{"Tomorrow", "Dentist"};
        QCOMPARE(f.row("SELECT Status, StatusCode, DueBack, Comments FROM EmployeeTable WHERE Name = \"Ann Lee\""),
                 QStringList({w.word, w.code}) + comments);
        QCOMPARE((QStringList{gRun.gstrDueBack, gRun.gstrComment}), comments);
        QCOMPARE(f.board.caption(), " VESK-OR Pro  - [Ann Lee] '" + (w.code == "4" ? "Out" : w.word) + "'");
        QCOMPARE(f.board.trayTip(), " VESK-OR Pro  [Ann Lee] '" + w.word + "'");
    }

    void nameMatchesOnlyItself_data()
    {
        QTest::addColumn<bool>("hasRow");
        QTest::newRow("wildcard name with its row") << true;
        QTest::newRow("wildcard name without a row") << false;
    }

    // A LIKE wildcard in the name matches only itself; with no row the mirror, the
    // counter and the log are written all the same.
    void nameMatchesOnlyItself()
    {
        const QString user = "A*";
        QFETCH(bool, hasRow);
        StatusFixture f;
        if (hasRow) {
            f.site.person(user);
        }
        f.site.tracking("Bob Ray", user);
        gRun.gstrDefaultUser = user;
        const long long before = f.counter();

        subSetStatus("Busy");

        QCOMPARE(f.statusOf("Ann Lee"), QString());
        QCOMPARE(f.statusOf(user), hasRow ? "Busy" : "<no row>");
        QCOMPARE(f.site.value("SELECT TrackeeStatus FROM EmployeeStatusTracking"), "Busy");
        QCOMPARE(f.counter(), before + 1);
        QCOMPARE(f.site.value("SELECT Name FROM TransactionLogTable"), user);
    }

    // Every tracker sees the status and its moment, written with a point where the
    // locale has a decimal comma. After the screen saver's mark one write goes unlogged.
    void mirrorAndSuppressedLog()
    {
        StatusFixture f;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        f.site.tracking("Bob Ray", "Ann Lee", "In", 1.5).tracking("Ann Lee", "Bob Ray", "In", 1.5);
        gRun.gblnSuppressNextLog = true;

        subSetStatus("At Lunch");

        auto rs = f.site.openDb()->OpenRecordset("SELECT TrackeeStatus, TrackeeLastUpdated FROM EmployeeStatusTracking"
                                                 " ORDER BY Tracker DESC",
                                                 dao::dbOpenSnapshot);
        QCOMPARE(rs->Fields(0).Text(), "At Lunch");
        QCOMPARE(rs->Fields(1).Value().toDouble(), kNow);
        rs->MoveNext();
        QCOMPARE(rs->Fields(1).Value().toDouble(), 1.5);
        QCOMPARE(f.logRows(), 0);
        QVERIFY(!gRun.gblnSuppressNextLog);
        subSetStatus("Busy");
        QCOMPARE(f.logRows(), 1);
    }

    // Retry tries the edit again; Cancel leaves with nothing written or counted.
    void groupWriteOnReadOnlyFileAsksRetryOrCancel()
    {
        StatusFixture f;
        f.board.select({1, 2});
        gRun.gdbDatabase = dao::DBEngine::OpenDatabase(f.site.dbPath(), false, true);
        gRun.gblnDatabaseClosed = false;
        const long long before = f.counter();
        f.gw.boxes().answer(vbOK).answer(vbRetry).answer(vbOK).answer(vbCancel);

        subSetStatus("Busy");

        const QList<ShownBox> boxes = f.gw.boxes().shown();
        QCOMPARE(boxes.size(), 4);
        QVERIFY(boxes[0].prompt.startsWith("Error ( 3027 ) in modUser - subUpdateSelectedUsersRecords event\r"));
        QCOMPARE(boxes[0].title, " VESK-OR Pro  - Set Status Error");
        QCOMPARE(boxes[1].flags, vbRetryCancel + vbQuestion);
        QVERIFY(boxes[1].prompt.startsWith(boxes[0].prompt + "\rUnable to update your status at present. Probable"));
        QVERIFY(boxes[1].prompt.endsWith("press Retry to continue or Cancel to abort the status change."));
        QCOMPARE(f.statusOf("Bob Ray"), QString());
        QCOMPARE(f.counter(), before);
        QCOMPARE(f.logRows(), 0);
    }

    void logColumns_data()
    {
        // logged: Name, LogDateTime; {} for no row
        addColumns<QLocale, QStringList>("locale", "logged");
        const QLocale us(QLocale::English, QLocale::UnitedStates);
        QTest::newRow("empty name") << us << QStringList{"Ann Lee", "46348.3958333333"};
        QTest::newRow("comma kept") << QLocale(QLocale::German) << QStringList{"Ann Lee", "46348,3958333333"};
        QTest::newRow("log off") << us << QStringList();
    }

    void logColumns()
    {
        auto [locale, logged] = fetch<QLocale, QStringList>("locale", "logged");
        StatusFixture f;
        QLocale::setDefault(locale);
        gSite.gblnTransactionLog = !logged.isEmpty();

        subUpdateTransactionLog("Busy", "3pm", "Say \"hi\"", QString()); // an empty name is the person's own

        const QStringList row = f.row("SELECT * FROM TransactionLogTable");
        if (logged.isEmpty()) {
            QVERIFY(row.isEmpty() && !gRun.gdbDatabase); // not even opened
            return;
        }
        QCOMPARE(row, (QStringList{logged[0], "Busy", "3pm", "Say \"hi\"", kStamp, "alee", logged[1], "DESK-07",
                                   "10.0.0.5"}));
    }

    // Three changes each fail once and succeed on the retry (its own row, whatever a
    // timer left in gstrSQL meanwhile), but the run's third failure is reported and loses
    // its row. A lasting failure gives up after bounded, pausing retries, silently.
    void thirdLogFailureOfTheRunIsReported()
    {
        StatusFixture f;
        f.gw.boxes().answer(vbOK);
        for (int change = 1; change <= 3; ++change) {
            renameTable(f.site, "TransactionLogTable", "LogAway");
            QTimer::singleShot(0, [&] {
                renameTable(f.site, "LogAway", "TransactionLogTable");
                gRun.gstrSQL = "SELECT * FROM StatusCounterTable";
            });
            subUpdateTransactionLog("Busy", QString(), QString(), QString());
            QCOMPARE(f.gw.boxes().count(), change == 3 ? 1 : 0);
            QCoreApplication::processEvents();
        }
        QCOMPARE(f.logRows(), 2);
        const ShownBox box = f.gw.boxes().last();
        QCOMPARE(box.title, "VESK-OR - Repair/Compacting Error");
        QCOMPARE(box.flags, vbOKOnly + vbExclamation);
        QVERIFY(box.prompt.startsWith("Cannot complete the current operation due to the following error: ( 3078 ) \r"));
        QVERIFY(box.prompt.endsWith("\r\rPossible causes:\rSomeone was updating their status at the exact moment you "
                                    "selected OK.\rSomeone has the database open using MS Access.\r\r ) in modUser - "
                                    "subUpdateTransactionLog event"));

        renameTable(f.site, "TransactionLogTable", "LogAway");
        subUpdateTransactionLog("Busy", QString(), QString(), QString());
        QCOMPARE(f.gw.boxes().count(), 1);
        QVERIFY(f.gw.clock().sleptMs() > 0);
    }

    // Triggers record each write as it lands: the row before its mirror before its
    // log row; the counter after the row for one's own change, once at the end of a
    // group change.
    void writeOrder_data()
    {
        addColumns<QList<int>, QStringList>("selected", "writes");
        QTest::newRow("own") << QList<int>{0} << QStringList{"row Ann Lee", "mirror Ann Lee", "counter", "log Ann Lee"};
        QTest::newRow("group") << QList<int>{1, 2}
                               << QStringList{"row Bob Ray",   "mirror Bob Ray", "log Bob Ray", "row Cy Dee",
                                              "mirror Cy Dee", "log Cy Dee",     "counter"};
    }

    void writeOrder()
    {
        QFETCH(QList<int>, selected);
        StatusFixture f;
        f.board.select(selected);
        for (const QString& name : f.board.names)
            f.site.tracking("Ann Lee", name);
        QVERIFY(f.site.rawExec(
            "CREATE TABLE Writes (N INTEGER PRIMARY KEY, W TEXT);"
            "CREATE TRIGGER r AFTER UPDATE ON EmployeeTable BEGIN INSERT INTO Writes (W) VALUES ('row ' || NEW.Name); "
            "END;"
            "CREATE TRIGGER m AFTER UPDATE ON EmployeeStatusTracking BEGIN "
            "INSERT INTO Writes (W) VALUES ('mirror ' || NEW.Trackee); END;"
            "CREATE TRIGGER c AFTER UPDATE ON StatusCounterTable BEGIN INSERT INTO Writes (W) VALUES ('counter'); END;"
            "CREATE TRIGGER l AFTER INSERT ON TransactionLogTable BEGIN "
            "INSERT INTO Writes (W) VALUES ('log ' || NEW.Name); END;"));

        subSetStatus("Busy");

        QTEST(sqliteColumn(f.site.dbPath(), "SELECT W FROM Writes ORDER BY N"), "writes");
    }

    // One write of a status change fails: the row, the mirror, the counter and the
    // log are as they were, for the person's own change and for a group change.
    void failedPartLeavesNothing_data()
    {
        addColumns<QByteArray, bool, int>("breakage", "group", "boxes");
        const QByteArray log = kNoLogRow, counter = kNoCounter, mirror = kNoMirror;
        QTest::newRow("log row, own") << log << false << 1; // the log's box, at the run's third failure
        QTest::newRow("counter, own") << counter << false << 1;
        QTest::newRow("mirror, own") << mirror << false << 0; // goes up to the caller
        QTest::newRow("log row, group") << log << true << 1;
        QTest::newRow("counter, group") << counter << true << 1;
        QTest::newRow("mirror, group") << mirror << true << 1;
    }

    void failedPartLeavesNothing()
    {
        auto [breakage, group, boxes] = fetch<QByteArray, bool, int>("breakage", "group", "boxes");
        StatusFixture f;
        f.board.select(group ? QList<int>{1, 2} : QList<int>{0});
        for (const QString& name : f.board.names)
            f.site.status(name, "Out").tracking("Ann Lee", name, "Out");
        const long long before = f.counter();
        QVERIFY(f.site.rawExec(breakage));
        gRun.intLogRetries = 2;
        f.gw.boxes().answer(vbOK, boxes);

        try {
            subSetStatus("Busy");
            QVERIFY(group || breakage.startsWith("CREATE"));
        } catch (const dao::JetError& e) {
            QCOMPARE(e.number(), int(dao::errTableNotFound));
        }

        QCOMPARE(f.gw.boxes().count(), boxes);
        for (const QString& name : f.board.names)
            QCOMPARE(f.statusOf(name), "Out");
        if (!breakage.startsWith("ALTER"))
            QCOMPARE(f.site.value("SELECT Count(*) FROM EmployeeStatusTracking WHERE TrackeeStatus = \"Out\""), "3");
        QCOMPARE(f.counter(), before);
        QCOMPARE(f.logRows(), 0);
    }

    // Another client holds the write lock: the change waits, with timers running, and
    // lands whole, the file left open by a close tick, or begun again on a fresh open.
    void changeWaitsOutAnotherClientsLock_data()
    {
        QTest::addColumn<bool>("reopen");
        QTest::newRow("close timer's tick") << false;
        QTest::newRow("a fresh open") << true;
    }

    void changeWaitsOutAnotherClientsLock()
    {
        QFETCH(bool, reopen);
        StatusFixture f;
        const long long before = f.counter();
        OtherClient other(f.site);
        QVERIFY(other.begin("BEGIN IMMEDIATE"));
        dao::DBEngine::setBusyTimeoutMs(3000);
        QTimer::singleShot(50, [reopen] {
            if (reopen) {
                gRun.gblnDatabaseClosed = true;
                subOpenDatabase();
            } else {
                TimerCloseDatabase_Timer();
            }
        });
        QTimer::singleShot(300, [&] { other.begin("COMMIT"); });

        subUpdateDefaultUsersRecord("Busy");

        QVERIFY(gRun.gdbDatabase->isOpen());
        QCOMPARE(f.statusOf("Ann Lee"), "Busy");
        QCOMPARE(f.counter(), before + 1);
        QCOMPARE(f.logRows(), 1);
    }

    void readOptions_data()
    {
        addColumns<QStringList, bool, QString>("allowAndOverride", "alertsOn", "level");
        QTest::newRow("override turns alerts on") << QStringList{"False", "True"} << true << "HIGH";
        QTest::newRow("override off keeps them on") << QStringList{"True", "False"} << true << "MEDIUM";
        QTest::newRow("both off") << QStringList{"False", "False"} << false << "LOW";
    }

    // UpdateStatusOnLock is read under a name no table has, so it stays False.
    void readOptions()
    {
        auto [allowAndOverride, level] = fetch<QStringList, QString>("allowAndOverride", "level");
        StatusFixture f;
        const QString number = QString::number(QStringList{"LOW", "MEDIUM", "HIGH"}.indexOf(level));
        f.site.setting("AllowStatusAlerts", allowAndOverride[0]).setting("SystemSecurityLevel", number);
        f.site.setting("UpdateStatusOnLock", "True").setting("TransactionLogFlag", "True");
        setForAnn(f, "StatusAlertsOverride = " + allowAndOverride[1]);
        gSite.gblnTransactionLog = false;

        subReadOptions();

        QTEST(gSite.gblnAllowStatusAlerts, "alertsOn");
        QCOMPARE(f.board.panelToolTip(4), "System Security is " + level);
        QVERIFY(!gSite.gblnUpdateStatusOnLock);
        QVERIFY(gSite.gblnTransactionLog);
    }

    void readUserSettings_data()
    {
        addColumns<QString, long long, QString>("settings", "rate", "group");
        QTest::newRow("rate null, group exists") << "RefreshRate = Null, DefaultGroup = \"Sales\"" << 5LL << "Sales";
        QTest::newRow("rate set, group deleted") << "RefreshRate = 7, DefaultGroup = \"Gone\"" << 7LL << "Everyone";
    }

    // A null rate is 5 minutes, a null boolean False, a group that has gone
    // "Everyone"; the screen place is read only where one was saved.
    void readUserSettings()
    {
        auto [settings, group] = fetch<QString, QString>("settings", "group");
        StatusFixture f;
        f.site.group("Sales");
        setForAnn(f, settings + ", AutoLogIn = Null, ScreenTop = Null, ScreenLeft = 40, UserSecurityLevel = 1");
        gPerson.gblnAutoLogIn = true;

        subReadUserSettings("Ann Lee");

        QTEST(gPerson.gintRefreshRate, "rate");
        QCOMPARE((QStringList{gRun.gstrCurrentGroup, gPerson.gstrDefaultGroup}), (QStringList{group, group}));
        QVERIFY(!gPerson.gblnAutoLogIn);
        QVERIFY(!gPerson.glngScreenTop.has_value());
        QCOMPARE(f.board.normalGeometry().left(), 40);
        QCOMPARE(f.board.panelToolTip(5), "User Security is MEDIUM");
    }

    // Every layout value comes back from a save and a read. An extra column's layout
    // is kept under its "New_" name; the lower splitter only while messaging or
    // status alerts are on. Connected to another site, the end of a run saves nothing.
    void saveThenReadKeepsTheLayout()
    {
        StatusFixture f;
        f.site.column("New_Mobile").group("Sales");
        f.board.columns = {{"Status", 1, 900}, {"Name", 2, 2000}, {"Mobile", 3, 1200}};
        f.board.setNormalGeometry(QRect(30, 20, 640, 480));
        gRun.gstrCurrentGroup = "Sales";
        gPerson.gstrSortColumnName = "Phone";
        layoutValues() = kLayout;
        gPerson.glngSplitterHorizontal = 3333;
        gSite.gblnAllowMessaging = gSite.gblnAllowStatusAlerts = false;
        const QString annsRow = "SELECT * FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\"";
        const QStringList before = f.row(annsRow);
        gRun.gblnRemoteConnection = true;
        subSaveUserSettings("Ann Lee");
        QCOMPARE(f.row(annsRow), before);
        gRun.gblnRemoteConnection = false;

        subSaveUserSettings("Ann Lee");

        QCOMPARE(f.row("SELECT NameColumnOrder, NameColumnWidth, New_MobileColumnOrder, New_MobileColumnWidth,"
                       " SplitterPositionHorizontal FROM EmployeeSettingsTable WHERE Name = \"Ann Lee\""),
                 (QStringList{"2", "2000", "3", "1200", "1575"}));
        resetRunWide();
        f.board.setNormalGeometry(QRect());
        gRun.gstrCurrentDatabasePath = f.site.path();
        gRun.gblnDatabaseClosed = true;
        subReadUserSettings("Ann Lee");
        QVERIFY(layoutValues() == kLayout);
        QCOMPARE(gRun.gstrCurrentGroup, "Sales");
        QCOMPARE(gPerson.gstrSortColumnName, "Phone");
        QCOMPARE(f.board.normalGeometry(), QRect(30, 20, 640, 480));
    }
};

QTEST_GUILESS_MAIN(TstStatus)
#include "tst_status.moc"
