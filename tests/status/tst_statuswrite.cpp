// The status writes on a real site file: whose row a change goes to, the code of
// the word, the comment rule, the tracking mirror, the counter and the log rows.
#include "database/site.h"
#include "platform/clock.h"
#include "status/statuswrite.h"
#include "statusfixture.h"

#include <QTest>

using namespace platform;

namespace {

const QString kStamp = QStringLiteral("2026-11-22 09:30:00 by Ann Lee");
// The fake clock's moment as the engine's date number.
constexpr double kNow = 46348.395833333336;

QList<int> ints(std::initializer_list<int> values)
{
    return QList<int>(values);
}

} // namespace

class TstStatusWrite : public QObject
{
    Q_OBJECT

private slots:
    void whoseRowIsWritten_data();
    void whoseRowIsWritten();
    void statusCode_data();
    void statusCode();
    void autoClearComments_data();
    void autoClearComments();
    void nameMatchesOnlyItself_data();
    void nameMatchesOnlyItself();
    void mirrorFollowsTheTrackee();
    void screenSaverMarkSuppressesOneLogRow();
    void groupWriteOnReadOnlyFileAsksRetryOrCancel();
    void activeFlagWritesAndReads();
    void outCommandRoutes_data();
    void outCommandRoutes();
};

void TstStatusWrite::whoseRowIsWritten_data()
{
    QTest::addColumn<QStringList>("listed");
    QTest::addColumn<QList<int>>("selected");
    QTest::addColumn<int>("current");
    QTest::addColumn<bool>("groupButton");
    QTest::addColumn<QStringList>("written");

    const QStringList three = {"Ann Lee", "Bob Ray", "Cy Dee"};
    QTest::newRow("empty list") << QStringList() << ints({}) << -1 << true << QStringList{"Ann Lee"};
    QTest::newRow("focus not selected") << three << ints({}) << 1 << true << QStringList{"Ann Lee"};
    QTest::newRow("own row, button off") << three << ints({0}) << 0 << false << QStringList{"Ann Lee"};
    QTest::newRow("another's row, button off") << three << ints({1}) << 1 << false << QStringList();
    QTest::newRow("several rows, button on") << three << ints({1, 2}) << 1 << true << QStringList{"Bob Ray", "Cy Dee"};
}

// The single path raises the counter and logs once; the group path raises the
// counter once and logs a row per person, with the changer's due-back and comment.
void TstStatusWrite::whoseRowIsWritten()
{
    QFETCH(QStringList, listed);
    QFETCH(QList<int>, selected);
    QFETCH(int, current);
    QFETCH(bool, groupButton);
    QFETCH(QStringList, written);

    StatusFixture f;
    f.board.list(listed);
    f.board.selected = selected;
    f.board.current = current;
    f.board.groupButton = groupButton;
    gstrDueBack = QStringLiteral("3pm");
    gstrComment = QStringLiteral("Dentist");
    const long long counterBefore = database::readCounter(*f.site.openDb(), QStringLiteral("Counter"));
    if (written.isEmpty()) {
        f.gw.boxes().answer(vbOK);
    }

    subSetStatus(QStringLiteral("Busy"));

    for (const QString name : {"Ann Lee", "Bob Ray", "Cy Dee"}) {
        QCOMPARE(f.statusOf(name) == QLatin1String("Busy"), written.contains(name));
    }
    if (written.isEmpty()) {
        QCOMPARE(f.gw.boxes().prompts(),
                 QStringList{" Your security setting only allows you to change YOUR OWN Status in this Group."});
    } else {
        QCOMPARE(f.gw.boxes().count(), 0);
    }
    QCOMPARE(database::readCounter(*f.site.openDb(), QStringLiteral("Counter")),
             counterBefore + (written.isEmpty() ? 0 : 1));
    QCOMPARE(f.count("TransactionLogTable"), written.size());
    for (const QString& name : written) {
        QCOMPARE(f.row("SELECT Name, Status, DueBack, Comments, LastModified FROM TransactionLogTable WHERE Name = " +
                       dao::quote(name)),
                 (QStringList{name, "Busy", "3pm", "Dentist", kStamp}));
        QCOMPARE(f.value("SELECT LastModified FROM EmployeeTable WHERE Name = " + dao::quote(name)), kStamp);
    }
}

void TstStatusWrite::statusCode_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("caption");

    const QString before = QStringLiteral(" VESK-OR Pro  - [Ann Lee] 'Out'");
    QTest::newRow("known word") << "Busy"
                                << "2"
                                << " VESK-OR Pro  - [Ann Lee] 'Busy'";
    QTest::newRow("other case") << "bUSY"
                                << "2"
                                << " VESK-OR Pro  - [Ann Lee] 'bUSY'";
    QTest::newRow("typed by hand") << "Gone fishing"
                                   << "4" << before;
}

// The code comes from StatusTypesTable without regard to case; a word with no row
// gets 4 and the caption keeps the previous word.
void TstStatusWrite::statusCode()
{
    QFETCH(QString, word);
    QFETCH(QString, code);
    QFETCH(QString, caption);

    StatusFixture f;
    f.board.setCaption(QStringLiteral(" VESK-OR Pro  - [Ann Lee] 'Out'"));
    subSetStatus(word);

    QCOMPARE(f.row("SELECT Status, StatusCode FROM EmployeeTable WHERE Name = \"Ann Lee\""), (QStringList{word, code}));
    QCOMPARE(f.board.caption(), caption);
    QCOMPARE(f.board.trayTip(), " VESK-OR Pro  [Ann Lee] '" + word + "'");
}

void TstStatusWrite::autoClearComments_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<bool>("autoClear");
    QTest::addColumn<bool>("cleared");

    QTest::newRow("In, setting on") << "In" << true << true;
    QTest::newRow("in, setting on") << "in" << true << false;
    QTest::newRow("In, setting off") << "In" << false << false;
}

void TstStatusWrite::autoClearComments()
{
    QFETCH(QString, word);
    QFETCH(bool, autoClear);
    QFETCH(bool, cleared);

    StatusFixture f;
    f.site.status("Ann Lee", "Out", "Tomorrow", "Dentist");
    gblnAutoClearComments = autoClear;
    gstrDueBack = QStringLiteral("Tomorrow");
    gstrComment = QStringLiteral("Dentist");
    subSetStatus(word);

    const QStringList kept = {"Tomorrow", "Dentist"};
    const QStringList expected = cleared ? QStringList{"", ""} : kept;
    QCOMPARE(f.row("SELECT DueBack, Comments FROM EmployeeTable WHERE Name = \"Ann Lee\""), expected);
    QCOMPARE((QStringList{gstrDueBack, gstrComment}), expected);
}

void TstStatusWrite::nameMatchesOnlyItself_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<bool>("wildcardRowExists");

    QTest::newRow("wildcard name with its row") << "A*" << true;
    QTest::newRow("wildcard name without a row") << "A*" << false;
    QTest::newRow("unknown name") << "Nobody" << false;
}

// A name holding a LIKE wildcard matches only itself; a name with no row changes
// no row, but the mirror, the counter and the log are written all the same.
void TstStatusWrite::nameMatchesOnlyItself()
{
    QFETCH(QString, user);
    QFETCH(bool, wildcardRowExists);

    StatusFixture f;
    if (wildcardRowExists) {
        f.site.person(user);
    }
    f.site.tracking("Bob Ray", user);
    gstrDefaultUser = user;
    const long long counterBefore = database::readCounter(*f.site.openDb(), QStringLiteral("Counter"));

    subSetStatus(QStringLiteral("Busy"));

    QCOMPARE(f.statusOf("Ann Lee"), QString());
    QCOMPARE(f.statusOf(user), wildcardRowExists ? QStringLiteral("Busy") : QString());
    QCOMPARE(f.value("SELECT TrackeeStatus FROM EmployeeStatusTracking WHERE Trackee = " + dao::quote(user)),
             QStringLiteral("Busy"));
    QCOMPARE(database::readCounter(*f.site.openDb(), QStringLiteral("Counter")), counterBefore + 1);
    QCOMPARE(f.value("SELECT Name FROM TransactionLogTable"), user);
}

// Every tracker of the person sees the new status and its moment; other rows stay.
// The moment is written with a decimal point even where the locale uses a comma.
void TstStatusWrite::mirrorFollowsTheTrackee()
{
    StatusFixture f;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    f.site.tracking("Bob Ray", "Ann Lee", "In", 1.5)
        .tracking("Cy Dee", "Ann Lee", "In", 1.5)
        .tracking("Ann Lee", "Bob Ray", "In", 1.5);

    subSetStatus(QStringLiteral("At Lunch"));

    QCOMPARE(f.value("SELECT COUNT(*) FROM EmployeeStatusTracking WHERE Trackee = \"Ann Lee\""
                     " AND TrackeeStatus = \"At Lunch\""),
             QStringLiteral("2"));
    auto rs = f.site.openDb()->OpenRecordset("SELECT TrackeeLastUpdated FROM EmployeeStatusTracking"
                                             " WHERE Trackee = \"Ann Lee\"",
                                             dao::dbOpenSnapshot);
    QCOMPARE(rs->Fields(0).Value().toDouble(), kNow);
    QCOMPARE(f.row("SELECT TrackeeStatus, TrackeeLastUpdated FROM EmployeeStatusTracking WHERE Trackee = \"Bob Ray\""),
             (QStringList{"In", "1.5"}));
}

void TstStatusWrite::screenSaverMarkSuppressesOneLogRow()
{
    StatusFixture f;
    gblnSuppressNextLog = true;
    subSetStatus(QStringLiteral("In"));
    QCOMPARE(f.count("TransactionLogTable"), 0);
    QCOMPARE(f.statusOf("Ann Lee"), QStringLiteral("In"));
    QVERIFY(!gblnSuppressNextLog);

    subSetStatus(QStringLiteral("Busy"));
    QCOMPARE(f.count("TransactionLogTable"), 1);
}

// A read-only file: the head, then Retry or Cancel; Retry tries the edit again,
// Cancel leaves with nothing written and no counter raised.
void TstStatusWrite::groupWriteOnReadOnlyFileAsksRetryOrCancel()
{
    StatusFixture f;
    f.board.list({"Ann Lee", "Bob Ray", "Cy Dee"});
    f.board.selected = {1, 2};
    f.board.current = 1;
    f.board.groupButton = true;
    gdbDatabase = dao::DBEngine::OpenDatabase(f.site.dbPath(), false, true);
    gblnDatabaseClosed = false;
    const long long counterBefore = database::readCounter(*f.site.openDb(), QStringLiteral("Counter"));
    f.gw.boxes().answer(vbOK).answer(vbRetry).answer(vbOK).answer(vbCancel);

    subSetStatus(QStringLiteral("Busy"));

    QCOMPARE(f.gw.boxes().count(), 4);
    const ShownBox head = f.gw.boxes().shown().at(0);
    QVERIFY2(head.prompt.startsWith("Error ( 3027 ) in modUser - subUpdateSelectedUsersRecords event\r"),
             qPrintable(head.prompt));
    QCOMPARE(head.title, QStringLiteral(" VESK-OR Pro  - Set Status Error"));
    const ShownBox ask = f.gw.boxes().shown().at(1);
    QCOMPARE(ask.flags, vbRetryCancel + vbQuestion);
    QVERIFY(ask.prompt.startsWith(head.prompt + "\rUnable to update your status at present. Probable cause - the "
                                                "Administrator has the database locked exclusively."));
    QVERIFY(ask.prompt.endsWith("press Retry to continue or Cancel to abort the status change."));
    QCOMPARE(f.statusOf("Bob Ray"), QString());
    QCOMPARE(database::readCounter(*f.site.openDb(), QStringLiteral("Counter")), counterBefore);
    QCOMPARE(f.count("TransactionLogTable"), 0);
}

// The flag is written, DueBack and Comments are read for the first log row, and
// nothing is counted or logged.
void TstStatusWrite::activeFlagWritesAndReads()
{
    StatusFixture f;
    f.site.status("Ann Lee", "Out", "Tomorrow", "Dentist");
    const long long counterBefore = database::readCounter(*f.site.openDb(), QStringLiteral("Counter"));

    subSetActiveFlag(QStringLiteral("No"));

    QCOMPARE(f.value("SELECT ActiveFlag FROM EmployeeTable WHERE Name = \"Ann Lee\""), QStringLiteral("No"));
    QCOMPARE((QStringList{gstrDueBack, gstrComment}), (QStringList{"Tomorrow", "Dentist"}));
    QCOMPARE(database::readCounter(*f.site.openDb(), QStringLiteral("Counter")), counterBefore);
    QCOMPARE(f.count("TransactionLogTable"), 0);
    QCOMPARE(f.gw.boxes().count(), 0);
}

void TstStatusWrite::outCommandRoutes_data()
{
    QTest::addColumn<bool>("popUp");
    QTest::addColumn<int>("current");
    QTest::addColumn<bool>("groupButton");
    QTest::addColumn<QString>("annStatus");
    QTest::addColumn<int>("statusScreens");
    QTest::addColumn<int>("groupScreens");
    QTest::addColumn<QStringList>("boxes");

    const QStringList none;
    QTest::newRow("no pop-up: written at once") << false << 0 << false << "Out" << 0 << 0 << none;
    QTest::newRow("pop-up, own row") << true << 0 << false << "" << 1 << 0 << none;
    QTest::newRow("pop-up, another's row, right") << true << 1 << true << "" << 0 << 1 << none;
    QTest::newRow("pop-up, another's row, no right")
        << true << 1 << false << "" << 0 << 0
        << QStringList{"Sorry, your security level does not allow you to change users in this Group."};
}

// The Out command: at once without the pop-up setting, else frmStatus for one's
// own row and frmGroup for another's, given the right. A flag left standing by
// an earlier Out leaves "Out" in the toolbar's tag on every route.
void TstStatusWrite::outCommandRoutes()
{
    QFETCH(bool, popUp);
    QFETCH(int, current);
    QFETCH(bool, groupButton);
    QFETCH(QString, annStatus);
    QFETCH(int, statusScreens);
    QFETCH(int, groupScreens);
    QFETCH(QStringList, boxes);

    StatusFixture f;
    f.board.list({"Ann Lee", "Bob Ray"});
    f.board.current = current;
    f.board.selected = {current};
    f.board.groupButton = groupButton;
    gintNameColumn = 1;
    gblnChangeScreenPopUp = popUp;
    gblnOutViaStatusScreen = true;
    f.gw.boxes().answer(vbOK, int(boxes.size()));

    subCommand_Out();

    QCOMPARE(f.board.toolbarTag(), QStringLiteral("Out"));
    QCOMPARE(f.statusOf("Ann Lee"), annStatus);
    QCOMPARE(f.board.statusScreens, statusScreens);
    QCOMPARE(f.board.groupScreens, groupScreens);
    QCOMPARE(f.gw.boxes().prompts(), boxes);
}

QTEST_GUILESS_MAIN(TstStatusWrite)
#include "tst_statuswrite.moc"
