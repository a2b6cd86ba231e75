// The board's list on real site files: the refresh and its cheap path, the group
// queries, sort and columns, find, the timers, and the end of a run.
#include "board/frmmain.h"
#include "boardfixture.h"
#include "dao/dao.h"
#include "database/counters.h"
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "platform/clock.h"
#include "platform/msgbox.h"
#include "status/settings.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>

using platform::vbOK;

namespace {

// Ann Lee's board on a site of three people, a hidden room, and the groups
// "Sales" (Ann and the room) and "Empty". Phones 201, 305, 102, 900.
struct Board : BoardFixture
{
    Board()
    {
        site.person(QStringLiteral("Ann Lee"), QStringLiteral("alee"), QStringLiteral("201"))
            .person(QStringLiteral("Bob Ray"), QStringLiteral("bray"), QStringLiteral("305"))
            .person(QStringLiteral("alan Poe"), QStringLiteral("apoe"), QStringLiteral("102"))
            .person(QStringLiteral("~Room 1"), QString(), QStringLiteral("900"))
            .group(QStringLiteral("Sales"))
            .member(QStringLiteral("Sales"), QStringLiteral("Ann Lee"))
            .member(QStringLiteral("Sales"), QStringLiteral("~Room 1"))
            .group(QStringLiteral("Empty"))
            .status(QStringLiteral("Ann Lee"), QStringLiteral("In"))
            .status(QStringLiteral("Bob Ray"), QStringLiteral("Busy"))
            .status(QStringLiteral("alan Poe"), QStringLiteral("Out"));
    }
};

// Each row of a list as its texts joined with "|".
QStringList rowTexts(const QTreeWidget* list)
{
    QStringList rows;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QStringList texts;
        for (int column = 0; column < list->topLevelItem(i)->columnCount(); ++column) {
            texts << list->topLevelItem(i)->text(column);
        }
        rows << texts.join(QLatin1Char('|'));
    }
    return rows;
}

} // namespace

class TestBoardList : public QObject
{
    Q_OBJECT

private slots:
    // A rebuild fills the list and the panes; an unchanged poll then costs the
    // counters' own statements and leaves every row as it was; a raised Counter
    // rebuilds, and the row clicked is found again by name.
    void unchangedPollReadsCountersOnly()
    {
        Board b;
        const double sent = platform::DateTimeNum(TestGateways::defaultStart());
        b.site.tracking(QStringLiteral("Ann Lee"), QStringLiteral("Bob Ray"), QStringLiteral("Busy"), sent)
            .tracking(QStringLiteral("alan Poe"), QStringLiteral("Ann Lee"));
        database::MessageRow message;
        message.owner = message.toName = QStringLiteral("Ann Lee");
        message.fromName = QStringLiteral("Bob Ray");
        message.subject = QStringLiteral("Lunch?");
        message.sent = sent;
        b.site.message(message);
        frmMain& f = b.openOnEveryone();
        QCOMPARE(rowTexts(f.lstWhoAmITracking), QStringList{QStringLiteral("Bob Ray|Busy|2026-11-22 09:30:00")});
        QCOMPARE(rowTexts(f.lstWhosTrackingMe), QStringList{QStringLiteral("alan Poe")});
        QCOMPARE(rowTexts(f.ListViewMessages).value(0).section(QLatin1Char('|'), 0, 3),
                 QStringLiteral("Bob Ray|Lunch?|11/22/2026 9:30:00 AM|Bob Ray"));
        QCOMPARE(b.texts(QStringLiteral("Name")),
                 QStringList({QStringLiteral("alan Poe"), QStringLiteral("Ann Lee"), QStringLiteral("Bob Ray")}));
        QCOMPARE(f.caption(), QStringLiteral(" VESK-OR Pro  - [Ann Lee] 'In'"));
        QCOMPARE(f.panelText(1), QStringLiteral(" Data refreshed at 9:30:00 AM "));
        f.ListViewMain->topLevelItem(2)->setSelected(true);
        f.ListViewMain->setCurrentItem(f.ListViewMain->topLevelItem(2));
        f.ListViewMain_ItemClick();
        QCOMPARE(gBoard.gstrSelectedUser, QStringLiteral("Bob Ray"));

        dao::DBEngine::resetStatementCount();
        subGetCounterValues();
        const long long counterStatements = dao::DBEngine::statementCount();
        QTreeWidgetItem* firstRow = f.ListViewMain->topLevelItem(0);
        dao::DBEngine::resetStatementCount();
        f.subRefreshUserList(QString());
        QCOMPARE(dao::DBEngine::statementCount(), counterStatements);
        QCOMPARE(f.ListViewMain->topLevelItem(0), firstRow);
        QCOMPARE(f.selectedRowTexts(b.column(QStringLiteral("Name"))), QStringList{QStringLiteral("Bob Ray")});

        b.site.status(QStringLiteral("alan Poe"), QStringLiteral("At Lunch"));
        b.raise(QStringLiteral("Counter"));
        f.subRefreshUserList(QString());
        QCOMPARE(b.texts(QStringLiteral("Status")).first(), QStringLiteral("At Lunch"));
        QCOMPARE(f.selectedRowTexts(b.column(QStringLiteral("Name"))), QStringList{QStringLiteral("Bob Ray")});
    }

    void groupQueries_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("box");
        QTest::newRow("Everyone hides ~ names")
            << "Everyone" << QStringList{"alan Poe", "Ann Lee", "Bob Ray"} << QString();
        QTest::newRow("a group shows them") << "Sales" << QStringList{"~Room 1", "Ann Lee"} << QString();
        QTest::newRow("a deleted group: the box, then all, ~ names too")
            << "Gone" << QStringList{"~Room 1", "alan Poe", "Ann Lee", "Bob Ray"}
            << "The last group selected does not exist in this database. It has probably been deleted or renamed by "
               "the Administrator.";
        QTest::newRow("an empty group: no rows, no columns") << "Empty" << QStringList() << QString();
    }
    void groupQueries()
    {
        QFETCH(QString, group);
        QFETCH(QStringList, names);
        QFETCH(QString, box);
        Board b;
        frmMain& f = b.openOnEveryone();
        if (!box.isEmpty()) {
            b.gw.boxes().answer(vbOK);
        }
        f.subRefreshUserList(group);
        QCOMPARE(b.gw.boxes().prompts(), box.isEmpty() ? QStringList() : QStringList{box});
        if (!box.isEmpty()) {
            QCOMPARE(b.gw.boxes().last().title, QStringLiteral(" VESK-OR Pro  - Error"));
            QCOMPARE(b.gw.boxes().last().icon(), int(platform::vbInformation));
            QCOMPARE(gRun.gstrCurrentGroup, QStringLiteral("Everyone"));
        }
        QCOMPARE(f.ListViewMain->columnCount() == 0, names.isEmpty());
        if (!names.isEmpty()) {
            QCOMPARE(b.texts(QStringLiteral("Name")), names);
        }
    }

    // The sort column is found by its saved caption; a key past the columns falls
    // back to 0, and then the list keeps the sort column it had.
    void sortFromTheSettings_data()
    {
        QTest::addColumn<QString>("settings");
        QTest::addColumn<long long>("sortKey");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("by Name") << "SortColumnName = \"Name\", SortKey = 0, SortOrder = 0" << 1LL
                                 << QStringList{"alan Poe", "Ann Lee", "Bob Ray"};
        QTest::newRow("by Name, descending") << "SortColumnName = \"Name\", SortKey = 0, SortOrder = 1" << 1LL
                                             << QStringList{"Bob Ray", "Ann Lee", "alan Poe"};
        QTest::newRow("by Phone") << "SortColumnName = \"Phone\", SortKey = 1, SortOrder = 0" << 2LL
                                  << QStringList{"alan Poe", "Ann Lee", "Bob Ray"};
        QTest::newRow("key past the columns") << "SortColumnName = \"Dropped\", SortKey = 9, SortOrder = 0" << 0LL
                                              << QStringList{"Bob Ray", "Ann Lee", "alan Poe"}; // Busy, In, Out
    }
    void sortFromTheSettings()
    {
        QFETCH(QString, settings);
        QFETCH(long long, sortKey);
        QFETCH(QStringList, names);
        Board b;
        b.setForAnn(settings);
        frmMain& f = b.openOnEveryone();
        QCOMPARE(gPerson.gintSortKey, sortKey);
        QCOMPARE(b.texts(QStringLiteral("Name")), names);
    }

    // Text sorts by the locale's collation, whatever its script or accents, and
    // runs of digits as numbers; a click on the column sorts the same way.
    void sortByCollation_data()
    {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QStringList>("sorted");
        QTest::newRow("names") << "Name"
                               << QStringList{"alan Poe",          "Ann Lee",      "Bob Ray",     "\u00c9milie Roux",
                                              "\u00d8ystein Berg", "Zachary Hume", "\u9648\u4f1f"};
        QTest::newRow("numbers") << "Phone" << QStringList{"7", "50", "99", "102", "201", "305", "1000"};
    }
    void sortByCollation()
    {
        QFETCH(QString, column);
        QFETCH(QStringList, sorted);
        Board b;
        b.site.person(QStringLiteral("\u00c9milie Roux"), QStringLiteral("eroux"), QStringLiteral("99"))
            .person(QStringLiteral("Zachary Hume"), QStringLiteral("zhume"), QStringLiteral("1000"))
            .person(QStringLiteral("\u00d8ystein Berg"), QStringLiteral("oberg"), QStringLiteral("7"))
            .person(QStringLiteral("\u9648\u4f1f"), QStringLiteral("cwei"), QStringLiteral("50"));
        b.setForAnn(QStringLiteral("SortColumnName = \"%1\", SortOrder = 0").arg(column));
        frmMain& f = b.openOnEveryone();
        QCOMPARE(b.texts(column), sorted);
        f.ListViewMain_ColumnClick(b.column(QStringLiteral("Status")));
        gPerson.gintSortOrder = 0;
        f.ListViewMain_ColumnClick(b.column(column)); // another column: ascending stays
        QCOMPARE(b.texts(column), sorted);
        f.ListViewMain_ColumnClick(b.column(column)); // the same again: descending
        std::reverse(sorted.begin(), sorted.end());
        QCOMPARE(b.texts(column), sorted);
    }

    // A column the person moved or resized is saved at the next refresh, and a new
    // board puts it back where it was.
    void columnLayoutSavedAndRestored()
    {
        Board b;
        frmMain& f = b.openOnEveryone();
        QCOMPARE(b.shownHeaders(), QStringList({"Status", "Name", "Phone", "DueBack", "Comments", "LastModified"}));
        QHeaderView* header = f.ListViewMain->header();
        header->moveSection(header->visualIndex(b.column(QStringLiteral("Phone"))), 0);
        header->resizeSection(b.column(QStringLiteral("Name")), 200);
        f.subRefreshUserList(QString());
        QCOMPARE(b.ofAnn(QStringLiteral("PhoneColumnOrder"), QStringLiteral("EmployeeSettingsTable")),
                 QStringLiteral("1"));
        QCOMPARE(b.ofAnn(QStringLiteral("NameColumnWidth"), QStringLiteral("EmployeeSettingsTable")),
                 QStringLiteral("3000"));

        frmMain& again = b.openOnEveryone();
        QCOMPARE(b.shownHeaders(), QStringList({"Phone", "Status", "Name", "DueBack", "Comments", "LastModified"}));
        QCOMPARE(again.ListViewMain->header()->sectionSize(b.column(QStringLiteral("Name"))), 200);
    }

    // A damaged or outdated layout still opens the board, each value under its own
    // header: an order far past the columns counts as none (the column goes last),
    // and an extra column dropped while the board runs leaves its cells blank.
    void damagedLayouts_data()
    {
        QTest::addColumn<QString>("settings");
        QTest::addColumn<bool>("dropMobile");
        QTest::addColumn<QStringList>("headers");
        QTest::newRow("order past the columns")
            << "PhoneColumnOrder = 1000000000000" << false
            << QStringList{"Status", "Name", "DueBack", "Comments", "LastModified", "Phone", "Mobile"};
        QTest::newRow("extra column dropped")
            << "New_MobileColumnOrder = 3, PhoneColumnOrder = 7" << true
            << QStringList{"Status", "Name", "Mobile", "DueBack", "Comments", "LastModified", "Phone"};
    }
    void damagedLayouts()
    {
        QFETCH(QString, settings);
        QFETCH(bool, dropMobile);
        QFETCH(QStringList, headers);
        Board b;
        b.site.column(QStringLiteral("New_Mobile"))
            .status(QStringLiteral("Bob Ray"), QStringLiteral("Out"), QStringLiteral("Monday"), QStringLiteral("Away"));
        b.site.execute(QStringLiteral("UPDATE EmployeeTable SET New_Mobile = \"0770\""));
        b.setForAnn(settings + QStringLiteral(", SortColumnName = \"Name\""));
        frmMain& f = b.openOnEveryone();
        if (dropMobile) {
            b.site.execute(QStringLiteral("ALTER TABLE EmployeeTable DROP COLUMN New_Mobile"));
            b.raise(QStringLiteral("Counter"));
            f.subRefreshUserList(QString());
        }
        QCOMPARE(b.shownHeaders(), headers);
        QCOMPARE(b.texts(QStringLiteral("Name")), QStringList({"alan Poe", "Ann Lee", "Bob Ray"}));
        QCOMPARE(b.texts(QStringLiteral("Phone")), QStringList({"102", "201", "305"}));
        QCOMPARE(b.texts(QStringLiteral("DueBack")), QStringList({"", "", "Monday"}));
        QCOMPARE(b.texts(QStringLiteral("Comments")), QStringList({"", "", "Away"}));
        const QString mobile = dropMobile ? QString() : QStringLiteral("0770");
        QCOMPARE(b.texts(QStringLiteral("Mobile")), QStringList({mobile, mobile, mobile}));
    }

    // Find: a prefix, without regard to case, in the column last clicked, the
    // first row in the order shown; trailing blanks count.
    void find_data()
    {
        QTest::addColumn<QStringList>("clicks");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("found");
        QTest::newRow("prefix, any case") << QStringList{"Name"} << "bO" << QStringList{"Bob Ray"};
        QTest::newRow("first shown, ascending") << QStringList{"Name"} << "a" << QStringList{"alan Poe"};
        QTest::newRow("first shown, descending") << QStringList{"Name", "Name"} << "a" << QStringList{"Ann Lee"};
        QTest::newRow("the column last clicked") << QStringList{"Name", "Phone"} << "30" << QStringList{"Bob Ray"};
        QTest::newRow("not in that column") << QStringList{"Name", "Phone"} << "Bob" << QStringList();
        QTest::newRow("a trailing blank counts") << QStringList{"Name"} << "Ann " << QStringList{"Ann Lee"};
        QTest::newRow("two do not match") << QStringList{"Name"} << "Ann  " << QStringList();
        QTest::newRow("blanks only do nothing") << QStringList{"Name"} << "   " << QStringList();
    }
    void find()
    {
        QFETCH(QStringList, clicks);
        QFETCH(QString, text);
        QFETCH(QStringList, found);
        Board b;
        frmMain& f = b.openOnEveryone();
        for (const QString& header : clicks) {
            f.ListViewMain_ColumnClick(b.column(header));
        }
        f.show();
        f.subCommand_Find();
        QVERIFY(f.txtFind->isEnabled());
        QVERIFY(f.txtFind->hasFocus() || !QApplication::focusWidget()); // offscreen windows may hold no focus
        QTest::keyClicks(f.txtFind, text);
        QCOMPARE(f.txtFind->text(), text);
        QCOMPARE(f.selectedRowTexts(b.column(QStringLiteral("Name"))), found);
    }

    // A click on a tab or a node remembers the group. The administrator adds a
    // group while it is shown: every client reads the groups again at its next
    // poll and goes on showing its group.
    void groupsReadAgainWhileAGroupIsShown_data()
    {
        QTest::addColumn<bool>("tree");
        QTest::newRow("tabs") << false;
        QTest::newRow("tree") << true;
    }
    void groupsReadAgainWhileAGroupIsShown()
    {
        QFETCH(bool, tree);
        Board b;
        b.setForAnn(tree ? QStringLiteral("DisplayTreeView = True") : QStringLiteral("DisplayTreeView = False"));
        frmMain& f = b.open();
        b.show(900, 600);
        f.Form_Activate();
        if (tree) {
            f.TreeViewMain_NodeClick(f.TreeViewMain->topLevelItem(0)->child(2));
        } else {
            f.TabStripMain->setCurrentIndex(int(f.groupCaptions().indexOf(QStringLiteral("Sales"))));
        }
        QCOMPARE(gRun.gstrCurrentGroup, QStringLiteral("Sales"));
        QCOMPARE(b.ofAnn(QStringLiteral("DefaultGroup"), QStringLiteral("EmployeeSettingsTable")),
                 QStringLiteral("Sales")); // the click remembers the group
        b.site.group(QStringLiteral("Admin"));
        b.raise(QStringLiteral("GroupCounter"));
        f.subRefreshUserList(QString());
        QCOMPARE(f.groupCaptions(), QStringList({"Everyone", "Admin", "Empty", "Sales"}));
        QCOMPARE(f.TreeViewMain->topLevelItem(0)->childCount(), 4);
        QCOMPARE(gRun.gstrCurrentGroup, QStringLiteral("Sales"));
        QCOMPARE(f.TabStripMain->tabText(f.TabStripMain->currentIndex()), QStringLiteral("Sales"));
        QCOMPARE(f.TreeViewMain->currentItem()->text(0), QStringLiteral("Sales"));
        QCOMPARE(b.texts(QStringLiteral("Name")), QStringList({"~Room 1", "Ann Lee"}));
        QCOMPARE(b.gw.boxes().count(), 0);
    }

    // The real Load and Activate: the saved group's tab, its rows, the timers as
    // the settings ask; RefreshRate 0 says so in panel 3 and stops TimerMain at its tick.
    void loadAndActivate()
    {
        Board b;
        b.setForAnn(QStringLiteral("RefreshRate = 0, DefaultGroup = \"Sales\""));
        b.form = static_cast<frmMain*>(frmMain::load());
        frmMain& f = *b.form;
        f.Form_Activate();
        QCOMPARE(f.TabStripMain->tabText(f.TabStripMain->currentIndex()), QStringLiteral("Sales"));
        QCOMPARE(b.texts(QStringLiteral("Name")), QStringList({QStringLiteral("~Room 1"), QStringLiteral("Ann Lee")}));
        QCOMPARE(f.panelText(3), QStringLiteral(" Refresh OFF "));
        QVERIFY(f.TimerMain.isActive());
        QVERIFY(f.tmrCheckForStatusAlerts.isActive());
        f.TimerMain_Timer();
        QVERIFY(!f.TimerMain.isActive());
        f.tmrCheckForStatusAlerts_Timer();
        f.Form_Deactivate();
        f.Form_Activate();
        QCOMPARE(f.tmrCheckForStatusAlerts.interval(), 60000); // the short first interval is not restored
        QVERIFY(f.TimerMain.isActive());
    }

    void rightsAtFirstActivate_data()
    {
        QTest::addColumn<int>("systemLevel");
        QTest::addColumn<int>("userLevel");
        QTest::addColumn<bool>("mayChangeOthers");
        QTest::newRow("system LOW: everybody may") << 0 << 0 << true;
        QTest::newRow("system MEDIUM, user HIGH: may") << 1 << 2 << true;
        QTest::newRow("system HIGH, user LOW: may not") << 2 << 0 << false;
    }

    // The first Activate sets the toolbar by the person's rights before any row is
    // clicked: the Group button and multiple selection, and Preview for a new message.
    void rightsAtFirstActivate()
    {
        QFETCH(int, systemLevel);
        QFETCH(int, userLevel);
        QFETCH(bool, mayChangeOthers);
        Board b;
        b.site.setting(QStringLiteral("SystemSecurityLevel"), QString::number(systemLevel));
        b.setForAnn(QStringLiteral("UserSecurityLevel = %1").arg(userLevel));
        b.site.message({.owner = QStringLiteral("Ann Lee"),
                        .fromName = QStringLiteral("Bob Ray"),
                        .toName = QStringLiteral("Ann Lee"),
                        .subject = QStringLiteral("Lunch")});
        b.form = static_cast<frmMain*>(frmMain::load());
        frmMain& f = *b.form;
        f.Form_Activate();
        QCOMPARE(f.groupButtonEnabled(), mayChangeOthers);
        QCOMPARE(f.ListViewMain->selectionMode() == QAbstractItemView::ExtendedSelection, mayChangeOthers);
        QCOMPARE(f.ListViewMessages->topLevelItemCount(), 1);
        QVERIFY(f.toolbarButton(QStringLiteral("Preview"))->isEnabled());
    }

    // A write of AutoLogIn's "In" that fails at Load is caught by the Load: its box,
    // and the board comes up with the person marked active.
    void autoLogInFailureAtLoad()
    {
        Board b;
        b.site.status(QStringLiteral("Ann Lee"), QStringLiteral("Out"));
        b.setForAnn(QStringLiteral("AutoLogIn = True"));
        QVERIFY(b.site.rawExec("CREATE TRIGGER lockedIn BEFORE UPDATE ON EmployeeTable WHEN NEW.Status = 'In' "
                               "BEGIN SELECT RAISE(ABORT, 'currently locked'); END"));
        b.gw.boxes().answer(vbOK);

        b.form = static_cast<frmMain*>(frmMain::load());
        QCOMPARE(b.gw.boxes().count(), 1);
        const QString box = b.gw.boxes().prompts().front();
        QVERIFY2(box.startsWith(QStringLiteral("Error (")) &&
                     box.contains(QStringLiteral(" ) in frmMain - Load event\r")) &&
                     box.contains(QStringLiteral("currently locked")),
                 qPrintable(box));
        QCOMPARE(b.ofAnn(QStringLiteral("ActiveFlag")), QStringLiteral("Yes"));
        QCOMPARE(b.ofAnn(QStringLiteral("Status")), QStringLiteral("Out"));
        QVERIFY(b.form->isVisible());
    }

    void countdown()
    {
        Board b;
        frmMain& f = b.openOnEveryone();
        gPerson.gintRefreshRate = 1;
        gBoard.gintTimerMainCountDown = 2;
        dao::DBEngine::resetStatementCount();
        f.TimerMain_Timer();
        QCOMPARE(f.panelText(3), QStringLiteral("Next refresh in 1 "));
        QCOMPARE(dao::DBEngine::statementCount(), 0LL); // no refresh before 0
        f.TimerMain_Timer();
        QCOMPARE(f.panelText(3), QStringLiteral("Next refresh in 60 "));
        QVERIFY(dao::DBEngine::statementCount() > 0);

        gPerson.gintRefreshRate = 0;
        f.TimerMain.start();
        f.TimerMain_Timer();
        QVERIFY(!f.TimerMain.isActive());
        QCOMPARE(f.panelText(3), QStringLiteral("Next refresh in 60 ")); // nothing written
    }

    // The ordinary end: AutoLogOut writes "Out" unless the status is protected or
    // unknown; the person is marked inactive and the layout saved either way.
    void endOfRun_data()
    {
        QTest::addColumn<QString>("status");
        QTest::addColumn<bool>("autoLogOut");
        QTest::addColumn<QString>("after");
        QTest::newRow("logged out") << "Busy" << true << "Out";
        QTest::newRow("protected status stays") << "On Holiday" << true << "On Holiday";
        QTest::newRow("a typed status stays") << "Gardening" << true << "Gardening";
        QTest::newRow("no AutoLogOut") << "Busy" << false << "Busy";
    }
    void endOfRun()
    {
        QFETCH(QString, status);
        QFETCH(bool, autoLogOut);
        QFETCH(QString, after);
        Board b;
        b.site.status(QStringLiteral("Ann Lee"), status);
        frmMain& f = b.open();
        f.selectGroup(QStringLiteral("Sales"));
        gPerson.gblnAutoLogOut = autoLogOut;
        QCOMPARE(TestGateways::endCodeOf([&] { f.requestUnload(vbAppTaskManager); }), std::optional<int>(0));
        QCOMPARE(b.ofAnn(QStringLiteral("Status")), after);
        QCOMPARE(b.ofAnn(QStringLiteral("ActiveFlag")), QStringLiteral("No"));
        QCOMPARE(b.ofAnn(QStringLiteral("DefaultGroup"), QStringLiteral("EmployeeSettingsTable")),
                 QStringLiteral("Sales"));
        QCOMPARE(b.gw.boxes().count(), 0);
    }

    void endOfRunForARemovedPerson()
    {
        Board b;
        frmMain& f = b.open();
        b.site.execute(QStringLiteral("DELETE FROM EmployeeTable WHERE Name = \"Ann Lee\""));
        gPerson.gblnAutoLogOut = true;
        b.gw.boxes().answer(vbOK);
        QCOMPARE(TestGateways::endCodeOf([&] { f.requestUnload(vbAppWindows); }), std::optional<int>(0));
        QCOMPARE(b.gw.boxes().prompts(),
                 QStringList{"The current user: Ann Lee has been removed from the VESK-OR database. \r\n\r\nPlease "
                             "advise your VESK-OR Administrator to re-initialize this users account.\r\n\r\nSelect "
                             "OK to exit VESK-OR."});
        QCOMPARE(gRun.gstrDefaultUser, QStringLiteral("Removed"));
    }

    void closeBoxMinimizesWithMinimizeOnClose()
    {
        Board b;
        frmMain& f = b.open();
        f.show();
        gPerson.gblnMinimizeOnClose = true;
        bool cancel = false;
        f.Form_QueryUnload(cancel, vbFormControlMenu);
        QVERIFY(cancel);
        QVERIFY(f.isMinimized());
        QCOMPARE(b.ofAnn(QStringLiteral("ActiveFlag")), QString()); // nothing of the end ran
    }

    // The forced-shutdown file is read at the tick: inicheck is started with the
    // line the client is to be started with again, and the run ends without "Out".
    void forcedShutDownAtTheTick()
    {
        Board b;
        b.site.status(QStringLiteral("Ann Lee"), QStringLiteral("Busy"));
        frmMain& f = b.open();
        gPerson.gblnAutoLogOut = true;
        f.tmrCheckForForcedShutDown_Timer();
        QVERIFY(b.gw.shell().calls.isEmpty());

        database::setForcedShutDown(b.site.path(), true);
        QCOMPARE(TestGateways::endCodeOf([&] { f.tmrCheckForForcedShutDown_Timer(); }), std::optional<int>(0));
        QCOMPARE(b.gw.shell().calls, QStringList{"start /opt/veskor/inicheck -UID:  -STS:ForcedShutDown"});
        QCOMPARE(b.ofAnn(QStringLiteral("ActiveFlag")), QStringLiteral("No"));
        QCOMPARE(b.ofAnn(QStringLiteral("Status")), QStringLiteral("Busy"));
    }
};

QTEST_MAIN(TestBoardList)
#include "tst_boardlist.moc"
