// The Change YOUR Status and Group Change screens on a real site file.
#include "columns.h"
#include "ondisk.h"
#include "otherclient.h"
#include "statusfixture.h"
#include "statusscreens/frmgroup.h"
#include "statusscreens/frmstatus.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <QTest>
#include <optional>

using namespace platform;

namespace {

const QString kStamp = "2026-11-22 09:30:00 by Ann Lee";
const QString kNoChange = "(NO CHANGE)";
const QString kClear = "Would you like to clear the 'Due Back' and 'Comments' columns?";
const QStringList kPeople = {"Ann Lee", "Bob Ray", "Cy Dee"};

// The typed values and the answer to the Clear Columns question (0: no question).
struct OwnChange
{
    QString status;
    QString dueBack;
    QString comment;
    bool autoClear = false;
    int clearAnswer = 0;
    QStringList stored;      // Status, StatusCode, DueBack, Comments
    QString mobile = "0711"; // typed in the custom field's editor
};

struct GroupChange
{
    QList<int> selected;
    QString status; // typed over what Load put there; "=" keeps it
    QString dueBack;
    QStringList stored; // Status, DueBack, Comments of each selected person
    QString mirror;     // TrackeeStatus of the first tracker of each
};

QStringList rowOf(StatusFixture& f, const QString& name)
{
    return f.row("SELECT Status, StatusCode, DueBack, Comments, LastModified FROM EmployeeTable WHERE Name = " +
                 dao::quote(name));
}

// Ann Lee's site with trackers of every person and the custom fields Mobile
// (editable), Desk (read-only) and Car (its mark Null).
void addTrackersAndFields(StatusFixture& f)
{
    for (const QString& name : kPeople)
        f.site.status(name, "Out", "Monday", "Away").tracking("Bob Ray", name, "Out").tracking("Cy Dee", name, "Out");
    f.site.column("New_Mobile").column("New_Desk", true).column("New_Car");
    f.site.execute("UPDATE EmployeeTable SET New_Mobile = \"0711\", New_Desk = \"D4\", New_CarReadOnly = Null");
}

// The status each tracker of the person sees, in the trackers' order.
QStringList mirrorOf(const StatusFixture& f, const QString& name)
{
    return sqliteColumn(f.site.dbPath(), "SELECT TrackeeStatus FROM EmployeeStatusTracking WHERE Trackee = '" + name +
                                             "' ORDER BY Tracker");
}

QStringList gridNames(const QTableWidget* grid, int column)
{
    QStringList names;
    for (int row = 0; row < grid->rowCount(); ++row)
        names << (grid->item(row, column) ? grid->item(row, column)->text() : QString());
    return names;
}

} // namespace

Q_DECLARE_METATYPE(OwnChange)
Q_DECLARE_METATYPE(GroupChange)

class TstStatusScreens : public QObject
{
    Q_OBJECT

private slots:
    void ownChange_data()
    {
        QTest::addColumn<OwnChange>("c");
        QTest::newRow("empty status, field erased")
            << OwnChange{"  ", "3pm", "Lunch", false, 0, {"Please Set", "4", "3pm", "Lunch"}, ""};
        QTest::newRow("in, field blanks only") << OwnChange{"in", "", "", false, 0, {"In", "3", "", ""}, "   "};
        QTest::newRow("OUT, field trimmed") << OwnChange{"OUT", "3pm", "", false, 0, {"Out", "1", "3pm", ""}, " 0799 "};
        QTest::newRow("busy keeps its case, field with a quote")
            << OwnChange{"busy", "", "x", false, 0, {"busy", "2", "", "x"}, "say \"hi\""};
        QTest::newRow("In, auto clear") << OwnChange{"In", "3pm", "Lunch", true, 0, {"In", "3", "", ""}};
        QTest::newRow("In, clear: Yes") << OwnChange{"IN", "", "Lunch", false, vbYes, {"In", "3", "", ""}};
        QTest::newRow("In, clear: No") << OwnChange{"In", "3pm", " ", false, vbNo, {"In", "3", "3pm", ""}};
        const QString s(300, 'S'), d(300, 'D'), q = "say \"hi\"";
        QTest::newRow("300 characters") << OwnChange{s, d, q, false, 0, {s.left(250), "4", d.left(250), q}};
    }

    // The row, every tracker's mirror, the log row and the counter, from the values
    // typed. The read-only field is not offered and keeps its value; the field
    // edited through the floating editor is stored trimmed, and erased as one blank.
    void ownChange()
    {
        QFETCH(OwnChange, c);
        StatusFixture f;
        addTrackersAndFields(f);
        gPerson.gblnAutoClearComments = c.autoClear;
        const long long before = f.counter();
        frmStatus screen;
        screen.Form_Load();
        QCOMPARE(screen.lblWarning->isVisibleTo(&screen), c.autoClear);
        screen.comboStatusTypes->setCurrentText(c.status);
        screen.ComboDueBack->setCurrentText(c.dueBack);
        screen.txtComment->setText(c.comment);
        QCOMPARE(gridNames(screen.msFlexGridChange, 0), (QStringList{"Mobile", "Car"}));
        screen.msFlexGridChange_Click(0, 0);
        QVERIFY(screen.txtChangeFieldValue->isVisibleTo(&screen));
        QCOMPARE(screen.txtChangeFieldValue->text(), "0711");
        screen.txtChangeFieldValue->setText(c.mobile);
        screen.msFlexGridChange->setCurrentCell(1, 1); // moving on ends the edit
        QVERIFY(!screen.txtChangeFieldValue->isVisibleTo(&screen));
        if (c.clearAnswer)
            f.gw.boxes().answer(c.clearAnswer);
        TimerCloseDatabase_Timer(); // the file shut while the person types, as two seconds after Load

        screen.cmdOk_Click();

        QCOMPARE(f.gw.boxes().prompts(), c.clearAnswer ? QStringList{kClear} : QStringList());
        QCOMPARE(screen.result(), int(QDialog::Accepted));
        QCOMPARE(rowOf(f, "Ann Lee"), c.stored + QStringList{kStamp});
        QCOMPARE(rowOf(f, "Bob Ray").first(), "Out");
        QCOMPARE(mirrorOf(f, "Ann Lee"), QStringList(2, c.stored[0]));
        QCOMPARE(f.row("SELECT Name, Status, DueBack, Comments FROM TransactionLogTable"),
                 (QStringList{"Ann Lee", c.stored[0], c.stored[2], c.stored[3]}));
        QCOMPARE(f.counter(), before + 1);
        QCOMPARE((QStringList{gRun.gstrDueBack, gRun.gstrComment}), c.stored.mid(2, 2));
        const QString mobile = c.mobile.trimmed().isEmpty() ? " " : c.mobile.trimmed();
        QCOMPARE(f.site.value("SELECT '[' & New_Mobile & '|' & New_Desk & '|' & New_Car & ']' FROM EmployeeTable "
                              "WHERE Name = \"Ann Lee\""),
                 "[" + mobile + "|D4| ]");
    }

    void failedPartLeavesNothing_data()
    {
        addColumns<QByteArray, QString>("breakage", "box");
        QTest::newRow("mirror") << kNoMirror << "Error=3078\r\n Error message=";
        QTest::newRow("log row") << kNoLogRow << "Cannot complete the current operation";
        QTest::newRow("counter") << kNoCounter << "Error=";
    }

    // One write of the change fails: its box, then the row, custom field, mirror,
    // counter and log are as they were, and the screen stays open.
    void failedPartLeavesNothing()
    {
        auto [breakage, box] = fetch<QByteArray, QString>("breakage", "box");
        StatusFixture f;
        addTrackersAndFields(f);
        const long long before = f.counter();
        gRun.intLogRetries = 2;
        frmStatus screen;
        screen.Form_Load();
        screen.comboStatusTypes->setCurrentText("Busy");
        screen.msFlexGridChange->item(0, 1)->setText("0799");
        QVERIFY(f.site.rawExec(breakage));
        f.gw.boxes().answer(vbOK);

        screen.cmdOk_Click();

        QCOMPARE(f.gw.boxes().count(), 1);
        QVERIFY2(f.gw.boxes().last().prompt.startsWith(box), qPrintable(f.gw.boxes().last().prompt));
        QCOMPARE(screen.result(), int(QDialog::Rejected));
        QCOMPARE(rowOf(f, "Ann Lee").first(), "Out");
        QCOMPARE(f.site.value("SELECT New_Mobile FROM EmployeeTable WHERE Name = \"Ann Lee\""), "0711");
        if (!breakage.startsWith("ALTER"))
            QCOMPARE(f.site.value("SELECT Count(*) FROM EmployeeStatusTracking WHERE TrackeeStatus = \"Out\""), "6");
        QCOMPARE(f.counter(), before);
        QCOMPARE(f.logRows(), 0);
    }

    void anotherClientsLock_data()
    {
        QTest::addColumn<bool>("released"); // during the quiet second try
        QTest::newRow("let go meanwhile") << true;
        QTest::newRow("kept") << false;
    }

    // Another client holds the file past the engine's wait: one quiet try more,
    // which lands when the lock has gone meanwhile; else the question, and No
    // leaves everything as it was and the screen open.
    void anotherClientsLock()
    {
        QFETCH(bool, released);
        StatusFixture f;
        f.site.status("Ann Lee", "Out");
        const long long before = f.counter();
        frmStatus screen;
        screen.Form_Load();
        screen.comboStatusTypes->setCurrentText("Busy");
        std::optional<OtherClient> other(std::in_place, f.site);
        QVERIFY(other->begin("BEGIN IMMEDIATE"));
        if (released)
            QTimer::singleShot(80, [&] { other.reset(); });
        else
            f.gw.boxes().answer(vbNo);

        screen.cmdOk_Click();

        const QStringList question{"The database is currently updating.  Would you like to retry ?"};
        QCOMPARE(f.gw.boxes().prompts(), released ? QStringList() : question);
        QCOMPARE(gRun.gintDatabaseRetryCount, released ? 1 : 0);
        QCOMPARE(screen.result(), int(released ? QDialog::Accepted : QDialog::Rejected));
        QCOMPARE(f.statusOf("Ann Lee"), released ? "Busy" : "Out");
        QCOMPARE(f.counter(), before + (released ? 1 : 0));
    }

    void activatePresetsOut_data()
    {
        // shown: status, due back, comment
        addColumns<bool, bool, QStringList>("viaOut", "popUp", "shown");
        QTest::newRow("Out command, pop-up on") << true << true << QStringList{"Out", "", ""};
        QTest::newRow("Out command, pop-up off") << true << false << QStringList{"Busy", "3pm", "Lunch"};
        QTest::newRow("Change command") << false << true << QStringList{"Busy", "3pm", "Lunch"};
    }

    void activatePresetsOut()
    {
        auto [viaOut, popUp, shown] = fetch<bool, bool, QStringList>("viaOut", "popUp", "shown");
        StatusFixture f;
        f.site.status("Ann Lee", "Busy", "3pm", "Lunch");
        gRun.gblnOutViaStatusScreen = viaOut;
        gPerson.gblnChangeScreenPopUp = popUp;
        frmStatus screen;
        screen.Form_Load();
        screen.Form_Activate();
        QCOMPARE((QStringList{screen.comboStatusTypes->currentText(), screen.ComboDueBack->currentText(),
                              screen.txtComment->text()}),
                 shown);
        QCOMPARE(gRun.gblnOutViaStatusScreen, viaOut && !popUp);
        QVERIFY(!screen.msFlexGridChange->isVisibleTo(&screen)); // no custom column on this site
    }

    // A double quote typed in the status, due-back or comment box becomes an
    // apostrophe; the custom field's editor keeps it.
    void typedQuote()
    {
        StatusFixture f;
        addTrackersAndFields(f);
        frmStatus screen;
        screen.Form_Load();
        screen.msFlexGridChange->setCurrentCell(0, 0);
        QTest::keyClick(screen.msFlexGridChange, Qt::Key_F2); // the editor, from the keyboard
        QLineEdit* const boxes[] = {screen.comboStatusTypes->lineEdit(), screen.ComboDueBack->lineEdit(),
                                    screen.txtComment, screen.txtChangeFieldValue};
        for (QLineEdit* box : boxes) {
            box->clear();
            QTest::keyClicks(box, "a\"b");
        }
        QCOMPARE(screen.comboStatusTypes->currentText(), "a'b");
        QCOMPARE(screen.ComboDueBack->currentText(), "a'b");
        QCOMPARE(screen.txtComment->text(), "a'b");
        QCOMPARE(screen.txtChangeFieldValue->text(), "a\"b");
    }

    void keyboard_data()
    {
        addColumns<bool, int, QString, QStringList>("group", "key", "stored", "help");
        for (const bool group : {false, true}) {
            const char* screen = group ? "group" : "own";
            const QString topic =
                QStringLiteral("help  %1").arg(group ? frmGroup::kHelpContext : frmStatus::kHelpContext);
            QTest::addRow("%s, Enter", screen) << group << int(Qt::Key_Return) << "Busy" << QStringList();
            QTest::addRow("%s, Esc", screen) << group << int(Qt::Key_Escape) << "Out" << QStringList();
            QTest::addRow("%s, F1", screen) << group << int(Qt::Key_F1) << "Out" << QStringList{topic};
        }
    }

    // In the status box, Enter is OK, and AutoMinimize puts the board away after it;
    // Esc is Cancel and F1 opens the screen's help topic.
    void keyboard()
    {
        auto [group, key] = fetch<bool, int>("group", "key");
        StatusFixture f;
        f.site.status("Ann Lee", "Out");
        f.board.select({0});
        gPerson.gblnAutoMinimize = true;
        frmStatus own;
        frmGroup other;
        QDialog* screen = group ? static_cast<QDialog*>(&other) : &own;
        QComboBox* status = group ? other.comboStatusTypes : own.comboStatusTypes;
        group ? void(other.Form_Load()) : own.Form_Load();
        screen->show();
        QVERIFY(QTest::qWaitForWindowActive(screen));
        status->setCurrentText("Busy");
        status->setFocus();

        QTest::keyClick(status->lineEdit(), Qt::Key(key));

        QTEST(f.statusOf("Ann Lee"), "stored");
        QCOMPARE(screen->isVisible(), key == Qt::Key_F1);
        QCOMPARE(f.board.minimized, key == Qt::Key_Return);
        QTEST(f.gw.shell().calls, "help");
    }

    void groupChange_data()
    {
        QTest::addColumn<GroupChange>("c");
        QTest::newRow("one person, no edit") << GroupChange{{1}, "=", "=", {"Out", "Monday", "Away"}, "\"Out\""};
        QTest::newRow("several, no edit")
            << GroupChange{{1, 2}, "=", "=", {"Out", "Monday", "Away"}, "\"(NO CHANGE)\""};
        QTest::newRow("several, due back erased, status blank")
            << GroupChange{{1, 2}, " ", "", {"Out", "", "Away"}, "\"\""};
        QTest::newRow("several, busy") << GroupChange{{0, 2}, "busy", "=", {"Busy", "Monday", "Away"}, "\"Busy\""};
    }

    // Every selected row gets the fields not left at "(NO CHANGE)" and a new stamp,
    // the first tracker the status in quotes, a log row each; the counter rises once.
    void groupChange()
    {
        QFETCH(GroupChange, c);
        StatusFixture f;
        addTrackersAndFields(f);
        f.site.execute("UPDATE EmployeeTable SET LastModified = \"old\"");
        f.board.select(c.selected);
        const long long before = f.counter();
        frmGroup screen;
        QVERIFY(screen.Form_Load());
        if (c.status != "=")
            screen.comboStatusTypes->setCurrentText(c.status);
        if (c.dueBack != "=")
            screen.ComboDueBack->setCurrentText(c.dueBack);
        TimerCloseDatabase_Timer(); // the file shut while the person chooses

        screen.cmdOk_Click();

        QCOMPARE(screen.result(), int(QDialog::Accepted));
        for (int i = 0; i < kPeople.size(); ++i) {
            const QString& name = kPeople[i];
            const QStringList row = rowOf(f, name);
            const bool chosen = c.selected.contains(i);
            QCOMPARE((QStringList{row[0], row[2], row[3]}), chosen ? c.stored : QStringList({"Out", "Monday", "Away"}));
            QCOMPARE(row[4], chosen ? kStamp : "old");
            QCOMPARE(mirrorOf(f, name), (QStringList{chosen ? c.mirror : "Out", "Out"})); // Cy Dee's stays
        }
        QCOMPARE(f.logRows(), c.selected.size());
        if (c.selected.size() > 1 && c.status == "=")
            QCOMPARE(
                f.site.value("SELECT Count(*) FROM TransactionLogTable WHERE Status = \"(NO CHANGE)\" AND DueBack = "
                             "\"(NO CHANGE)\" AND Comments = \"(NO CHANGE)\""),
                QString::number(c.selected.size()));
        QCOMPARE(f.counter(), before + 1);
    }

    // Only the fields whose mark is false are offered; an unchecked field is left
    // alone whatever its cell shows, a checked one erased is stored as one blank.
    void groupCustomFields()
    {
        StatusFixture f;
        addTrackersAndFields(f);
        f.site.column("New_Room");
        f.board.select({1, 2});
        frmGroup screen;
        QVERIFY(screen.Form_Load());
        QCOMPARE(gridNames(screen.msFlexGridGroupChange, 1), QStringList({"Mobile", "Room"}));
        QCOMPARE(gridNames(screen.msFlexGridGroupChange, 2), QStringList({kNoChange, kNoChange}));
        screen.msFlexGridGroupChange_Click(0, 0); // checked, the editor opens
        QVERIFY(screen.isChecked(0));
        screen.txtGroupChangeFieldValue->clear();
        screen.msFlexGridGroupChange->item(1, 2)->setText("R12"); // shown, but not checked

        screen.cmdOk_Click();

        QCOMPARE(f.site.value("SELECT Count(*) FROM EmployeeTable WHERE New_Mobile = \" \" AND New_Room IS NULL"), "2");
        QCOMPARE(f.site.value("SELECT New_Mobile FROM EmployeeTable WHERE Name = \"Ann Lee\""), "0711");
    }

    void groupPassesOverAFailedPerson_data()
    {
        addColumns<QByteArray, QString>("breakage", "box");
        QTest::newRow("deleted after Load") << QByteArray("DELETE FROM EmployeeTable WHERE Name = \"Bob Ray\"")
                                            << "User or Item Bob Ray has been deleted or renamed by the "
                                               "Administrator. Press OK to continue";
        QTest::newRow("its row refuses the write")
            << QByteArray("CREATE TRIGGER NoBob BEFORE UPDATE ON EmployeeTable WHEN OLD.Name = 'Bob Ray' BEGIN "
                          "SELECT RAISE(ABORT, 'no'); END")
            << "Error ( 3000 ) in frmGroup - cmdOK_Click event\r";
    }

    // The person whose change cannot be written gets a box and keeps row, mirror
    // and log as they were; the others are written and the counter rises once.
    void groupPassesOverAFailedPerson()
    {
        auto [breakage, box] = fetch<QByteArray, QString>("breakage", "box");
        StatusFixture f;
        addTrackersAndFields(f);
        f.board.select({0, 1, 2});
        const long long before = f.counter();
        frmGroup screen;
        QVERIFY(screen.Form_Load());
        screen.comboStatusTypes->setCurrentText("Busy");
        if (breakage.startsWith("DELETE"))
            f.site.execute(QString::fromLatin1(breakage));
        else
            QVERIFY(f.site.rawExec(breakage));
        f.gw.boxes().answer(vbOK);

        screen.cmdOk_Click();

        QVERIFY2(f.gw.boxes().last().prompt.startsWith(box), qPrintable(f.gw.boxes().last().prompt));
        QCOMPARE(f.gw.boxes().count(), 1);
        QCOMPARE(f.statusOf("Ann Lee"), "Busy");
        QCOMPARE(f.statusOf("Cy Dee"), "Busy");
        QCOMPARE(mirrorOf(f, "Bob Ray"), QStringList(2, "Out"));
        QCOMPARE(f.site.value("SELECT Count(*) FROM TransactionLogTable WHERE Name = \"Bob Ray\""), "0");
        QCOMPARE(f.logRows(), 2);
        QCOMPARE(f.counter(), before + 1);
    }

    void groupLoad_data()
    {
        addColumns<QList<int>, QString, bool, QStringList>("selected", "tag", "loaded", "shown");
        QTest::newRow("one, Out tag") << QList<int>{2} << "Out" << true << QStringList{"Out", "3pm", "Gym"};
        QTest::newRow("one") << QList<int>{2} << "" << true << QStringList{"Busy", "3pm", "Gym"};
        QTest::newRow("one, deleted") << QList<int>{1} << "Out" << false << QStringList{kNoChange, kNoChange, ""};
        QTest::newRow("several") << QList<int>{0, 2} << "Out" << true << QStringList{kNoChange, kNoChange, kNoChange};
    }

    // One person's values, or "(NO CHANGE)" for several; the Out left by the board's
    // Out command is taken once. A person deleted meanwhile unloads the screen.
    void groupLoad()
    {
        auto [selected, tag, loaded, shown] =
            fetch<QList<int>, QString, bool, QStringList>("selected", "tag", "loaded", "shown");
        StatusFixture f;
        f.site.status("Cy Dee", "Busy", "3pm", "Gym");
        f.site.execute("DELETE FROM EmployeeTable WHERE Name = \"Bob Ray\"");
        f.board.select(selected);
        f.board.setToolbarTag(tag);
        if (!loaded)
            f.gw.boxes().answer(vbOK);
        frmGroup screen;

        QCOMPARE(screen.Form_Load(), loaded);

        QCOMPARE((QStringList{screen.comboStatusTypes->currentText(), screen.ComboDueBack->currentText(),
                              screen.txtComment->text()}),
                 shown);
        QCOMPARE(f.board.toolbarTag(), selected.size() == 1 && loaded ? QString() : tag);
    }
};

QTEST_MAIN(TstStatusScreens)
#include "tst_statusscreens.moc"
