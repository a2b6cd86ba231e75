// The board's list on real site files: refresh, groups, sort, timers and the end of a run.
#include "board/grouptabbar.h"
#include "boardfixture.h"
#include "columns.h"
#include "database/counters.h"
#include "platform/clock.h"
#include "platform/msgbox.h"

#include <QHeaderView>
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
        site.person("Ann Lee", "alee", "201").person("Bob Ray", "bray", "305").person("alan Poe", "apoe", "102");
        site.person("~Room 1", QString(), "900").group("Sales").member("Sales", "Ann Lee").member("Sales", "~Room 1");
        site.group("Empty").status("Ann Lee", "In").status("Bob Ray", "Busy").status("alan Poe", "Out");
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
    // A rebuild fills the list and the panes; an unchanged poll costs only the counters'
    // statements; a raised Counter rebuilds, and the row clicked is found again by name.
    void unchangedPollReadsCountersOnly()
    {
        Board b;
        const double sent = platform::DateTimeNum(TestGateways::defaultStart());
        b.site.tracking("Ann Lee", "Bob Ray", "Busy", sent).tracking("alan Poe", "Ann Lee");
        b.site.message(
            {.owner = "Ann Lee", .fromName = "Bob Ray", .toName = "Ann Lee", .subject = "Lunch?", .sent = sent});
        frmMain& f = b.open();
        f.subRefreshUserList("Everyone");
        QCOMPARE(rowTexts(b.child<QTreeWidget>("lstWhoAmITracking")), QStringList{"Bob Ray|Busy|2026-11-22 09:30:00"});
        QCOMPARE(rowTexts(b.child<QTreeWidget>("lstWhosTrackingMe")), QStringList{"alan Poe"});
        QCOMPARE(rowTexts(b.child<QTreeWidget>("ListViewMessages")).value(0).section(QLatin1Char('|'), 0, 3),
                 "Bob Ray|Lunch?|11/22/2026 9:30:00 AM|Bob Ray");
        QCOMPARE(f.caption(), " VESK-OR Pro  - [Ann Lee] 'In'");
        QCOMPARE(f.panelText(1), " Data refreshed at 9:30:00 AM ");
        b.list()->topLevelItem(2)->setSelected(true);
        b.list()->setCurrentItem(b.list()->topLevelItem(2));
        f.ListViewMain_ItemClick();
        QCOMPARE(gBoard.gstrSelectedUser, "Bob Ray");

        dao::DBEngine::resetStatementCount();
        subGetCounterValues();
        const long long counterStatements = dao::DBEngine::statementCount();
        QTreeWidgetItem* firstRow = b.list()->topLevelItem(0);
        dao::DBEngine::resetStatementCount();
        f.subRefreshUserList(QString());
        QCOMPARE(dao::DBEngine::statementCount(), counterStatements);
        QCOMPARE(b.list()->topLevelItem(0), firstRow);
        QCOMPARE(f.selectedRowTexts(b.column("Name")), QStringList{"Bob Ray"});

        // A column the person moved or resized: the poll saves the layout and rebuilds by it.
        QHeaderView* header = b.list()->header();
        header->moveSection(header->visualIndex(b.column("Phone")), 0);
        header->resizeSection(b.column("Name"), 200);
        f.subRefreshUserList(QString());
        QCOMPARE(b.ofAnn("PhoneColumnOrder & '/' & NameColumnWidth", "EmployeeSettingsTable"), "1/3000");
        QCOMPARE(header->logicalIndex(0), b.column("Phone"));
        QCOMPARE(header->sectionSize(b.column("Name")), 200);

        b.site.status("alan Poe", "At Lunch");
        b.raise("Counter");
        f.subRefreshUserList(QString());
        QCOMPARE(b.texts("Status").first(), "At Lunch");
        QCOMPARE(f.selectedRowTexts(b.column("Name")), QStringList{"Bob Ray"});
    }

    void groupQueries_data()
    {
        addColumns<QString, QStringList, QString>("group", "names", "box");
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
        auto [group, names, box] = fetch<QString, QStringList, QString>("group", "names", "box");
        Board b;
        frmMain& f = b.openOnEveryone();
        b.gw.boxes().answer(vbOK, box.isEmpty() ? 0 : 1);
        f.subRefreshUserList(group);
        QCOMPARE(b.gw.boxes().prompts(), box.isEmpty() ? QStringList() : QStringList{box});
        if (!box.isEmpty()) {
            QCOMPARE(b.gw.boxes().last().title, " VESK-OR Pro  - Error");
            QCOMPARE(b.gw.boxes().last().icon(), int(platform::vbInformation));
            QCOMPARE(gRun.gstrCurrentGroup, "Everyone");
        }
        QCOMPARE(b.list()->columnCount() == 0, names.isEmpty());
        if (!names.isEmpty()) {
            QCOMPARE(b.texts("Name"), names);
        }
    }

    // Text sorts by the locale's collation, runs of digits as numbers; a click on the
    // column sorts the same way, and the settings keep the order it chose.
    void sortByCollation_data()
    {
        addColumns<QString, QStringList>("column", "sorted");
        QTest::newRow("names") << "Name"
                               << QStringList{"alan Poe",          "Ann Lee",      "Bob Ray",     "\u00c9milie Roux",
                                              "\u00d8ystein Berg", "Zachary Hume", "\u9648\u4f1f"};
        QTest::newRow("numbers") << "Phone" << QStringList{"7", "50", "99", "102", "201", "305", "1000"};
    }
    void sortByCollation()
    {
        auto [column, sorted] = fetch<QString, QStringList>("column", "sorted");
        Board b;
        b.site.person("\u00c9milie Roux", "eroux", "99").person("Zachary Hume", "zhume", "1000");
        b.site.person("\u00d8ystein Berg", "oberg", "7").person("\u9648\u4f1f", "cwei", "50");
        b.setForAnn(QStringLiteral("SortColumnName = \"%1\", SortOrder = 0").arg(column));
        frmMain& f = b.openOnEveryone();
        QCOMPARE(b.texts(column), sorted);
        f.ListViewMain_ColumnClick(b.column("Status"));
        gPerson.gintSortOrder = 0;
        f.ListViewMain_ColumnClick(b.column(column)); // another column: ascending stays
        QCOMPARE(b.texts(column), sorted);
        f.ListViewMain_ColumnClick(b.column(column)); // the same again: descending
        std::reverse(sorted.begin(), sorted.end());
        QCOMPARE(b.texts(column), sorted);
        subSaveUserSettings(gRun.gstrDefaultUser);
        QCOMPARE(b.ofAnn("SortOrder & '/' & SortColumnName", "EmployeeSettingsTable"), "1/" + column);
    }

    // A click on a tab or a node remembers the group. A group added meanwhile is read
    // at the next poll, and the board goes on showing its group.
    void groupsReadAgainWhileAGroupIsShown_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("tab clicked") << "tab";
        QTest::newRow("tab selected by a screen reader") << "selected";
        QTest::newRow("tree") << "tree";
    }
    void groupsReadAgainWhileAGroupIsShown()
    {
        QFETCH(QString, how);
        const bool tree = how == "tree";
        Board b;
        b.setForAnn(tree ? "DisplayTreeView = True" : "DisplayTreeView = False");
        frmMain& f = b.open();
        b.show(900, 600);
        f.Form_Activate();
        auto* treeView = b.child<QTreeWidget>("TreeViewMain");
        auto* tabs = b.child<GroupTabBar>("TabStripMain");
        if (tree) {
            treeView->itemClicked(treeView->topLevelItem(0)->child(2), 0);
        } else if (how == "tab") {
            tabs->setCurrentIndex(int(f.groupCaptions().indexOf("Sales")));
        } else {
            tabs->findItems("Sales", Qt::MatchExactly).first()->setSelected(true);
        }
        QCOMPARE(gRun.gstrCurrentGroup, "Sales");
        QCOMPARE(b.ofAnn("DefaultGroup", "EmployeeSettingsTable"),
                 "Sales"); // the click remembers the group
        b.site.group("Admin");
        b.raise("GroupCounter");
        f.subRefreshUserList(QString());
        QCOMPARE(f.groupCaptions(), QStringList({"Everyone", "Admin", "Empty", "Sales"}));
        QCOMPARE(treeView->topLevelItem(0)->childCount(), 4);
        QCOMPARE(gRun.gstrCurrentGroup, "Sales");
        QCOMPARE(tabs->tabText(tabs->currentIndex()), "Sales");
        QCOMPARE(treeView->currentItem()->text(0), "Sales");
        QCOMPARE(b.texts("Name"), QStringList({"~Room 1", "Ann Lee"}));
    }

    void rightsAtFirstActivate_data()
    {
        // manager: of Sales, the group shown, of which Ann is a member
        addColumns<int, int, bool, bool>("systemLevel", "userLevel", "manager", "mayChangeOthers");
        QTest::newRow("MEDIUM, user LOW: a member may") << 1 << 0 << false << true;
        QTest::newRow("HIGH, user MEDIUM: a member may not") << 2 << 1 << false << false;
        QTest::newRow("HIGH, user MEDIUM: a manager may") << 2 << 1 << true << true;
    }

    // The real Load and the first Activate: the saved group's tab and rows, the toolbar
    // by the person's rights there before any row is clicked, and the timers as the
    // settings ask: RefreshRate 0 says so in panel 3 and stops TimerMain at its tick.
    void rightsAtFirstActivate()
    {
        auto [systemLevel, userLevel, manager, mayChangeOthers] =
            fetch<int, int, bool, bool>("systemLevel", "userLevel", "manager", "mayChangeOthers");
        Board b;
        b.site.setting("SystemSecurityLevel", QString::number(systemLevel));
        b.site.execute(QStringLiteral("UPDATE EmployeeGroupTable SET GroupManager = %1").arg(manager ? 1 : 0));
        b.setForAnn(QStringLiteral("UserSecurityLevel = %1, RefreshRate = 0, DefaultGroup = \"Sales\"").arg(userLevel));
        b.site.message({.owner = "Ann Lee", .fromName = "Bob Ray", .toName = "Ann Lee", .subject = "Lunch"});
        b.form = static_cast<frmMain*>(frmMain::load());
        frmMain& f = *b.form;
        f.Form_Activate();
        const auto* tabs = b.child<GroupTabBar>("TabStripMain");
        QCOMPARE(tabs->tabText(tabs->currentIndex()), "Sales");
        QCOMPARE(b.texts("Name"), QStringList({"~Room 1", "Ann Lee"}));
        QCOMPARE(f.groupButtonEnabled(), mayChangeOthers);
        QCOMPARE(b.action("mnuCommand_Group")->isEnabled(), mayChangeOthers);
        QCOMPARE(b.list()->selectionMode() == QAbstractItemView::ExtendedSelection, mayChangeOthers);
        QVERIFY(b.action("Preview")->isEnabled());
        QVERIFY(!b.action("Servers")->isVisible() && !b.action("mnuCommand_Servers")->isVisible());
        QVERIFY(b.action("Options")->isEnabled() && gRun.gblnUserOnThisServer);

        QCOMPARE(f.panelText(3), " Refresh OFF ");
        const auto* timerMain = b.child<QTimer>("TimerMain");
        const auto* alerts = b.child<QTimer>("tmrCheckForStatusAlerts");
        const auto* messages = b.child<QTimer>("tmrCheckForNewMessages"); // the first look ten seconds on
        QVERIFY(timerMain->isActive() && alerts->isActive() && messages->isActive() && messages->interval() == 10000);
        f.TimerMain_Timer();
        QVERIFY(!timerMain->isActive());
        QCOMPARE(f.panelText(3), " Refresh OFF "); // the stopping tick writes nothing
        f.tmrCheckForStatusAlerts_Timer();
        f.Form_Deactivate();
        f.Form_Activate();
        QCOMPARE(alerts->interval(), 60000); // the short first interval is not restored
        QVERIFY(timerMain->isActive());
    }

    // A write of AutoLogIn's "In" that fails at Load is caught by the Load: its box,
    // and the board comes up with the person marked active.
    void autoLogInFailureAtLoad()
    {
        Board b;
        b.site.status("Ann Lee", "Out");
        b.setForAnn("AutoLogIn = True");
        QVERIFY(b.site.rawExec("CREATE TRIGGER lockedIn BEFORE UPDATE ON EmployeeTable WHEN NEW.Status = 'In' "
                               "BEGIN SELECT RAISE(ABORT, 'currently locked'); END"));
        b.gw.boxes().answer(vbOK);

        b.form = static_cast<frmMain*>(frmMain::load());
        QCOMPARE(b.gw.boxes().count(), 1);
        const QString box = b.gw.boxes().prompts().front();
        QVERIFY2(box.startsWith("Error (") && box.contains(" ) in frmMain - Load event\r") &&
                     box.contains("currently locked"),
                 qPrintable(box));
        QCOMPARE(b.ofAnn("ActiveFlag & '/' & Status"), "Yes/Out");
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
        QCOMPARE(f.panelText(3), "Next refresh in 1 ");
        QCOMPARE(dao::DBEngine::statementCount(), 0LL); // no refresh before 0
        f.TimerMain_Timer();
        QCOMPARE(f.panelText(3), "Next refresh in 60 ");
        QVERIFY(dao::DBEngine::statementCount() > 0);
    }

    void endOfRun_data()
    {
        // forced: by the forced-shutdown file, read at the tick
        addColumns<QString, bool>("status", "forced");
        QTest::newRow("protected status stays") << "On Holiday" << false;
        QTest::newRow("a typed status stays") << "Gardening" << false;
        QTest::newRow("forced shutdown: no Out") << "Busy" << true;
    }
    // The close box with MinimizeOnClose only minimizes. The ordinary end with AutoLogOut
    // leaves a protected or unknown status alone, a forced shutdown any status and starts
    // inicheck; either way the person is marked inactive and the layout saved.
    void endOfRun()
    {
        auto [status, forced] = fetch<QString, bool>("status", "forced");
        Board b;
        b.site.status("Ann Lee", status);
        frmMain& f = b.open();
        f.show();
        f.selectGroup("Sales");
        gPerson.gblnAutoLogOut = gPerson.gblnMinimizeOnClose = true;
        bool cancel = false;
        f.Form_QueryUnload(cancel, vbFormControlMenu);
        QVERIFY(cancel && f.isMinimized());
        f.tmrCheckForForcedShutDown_Timer();        // no shutdown asked for
        QCOMPARE(b.ofAnn("ActiveFlag"), QString()); // nothing of the end ran
        database::setForcedShutDown(b.site.path(), forced);
        const auto end = [&] {
            forced ? f.tmrCheckForForcedShutDown_Timer() : f.requestUnload(vbAppTaskManager);
        };
        QCOMPARE(TestGateways::endCodeOf(end), std::optional<int>(0));
        const QString inicheck = "start /opt/veskor/inicheck -UID:  -STS:ForcedShutDown";
        QCOMPARE(b.gw.shell().calls, forced ? QStringList{inicheck} : QStringList());
        QCOMPARE(b.ofAnn("Status & '/' & ActiveFlag"), status + "/No");
        QCOMPARE(b.ofAnn("DefaultGroup", "EmployeeSettingsTable"), "Sales");
    }

    void endOfRunForARemovedPerson()
    {
        Board b;
        frmMain& f = b.open();
        b.site.execute("DELETE FROM EmployeeTable WHERE Name = \"Ann Lee\"");
        gPerson.gblnAutoLogOut = true;
        b.gw.boxes().answer(vbOK);
        QCOMPARE(TestGateways::endCodeOf([&] { f.requestUnload(vbAppWindows); }), std::optional<int>(0));
        QCOMPARE(b.gw.boxes().prompts(),
                 QStringList{"The current user: Ann Lee has been removed from the VESK-OR database. \r\n\r\nPlease "
                             "advise your VESK-OR Administrator to re-initialize this users account.\r\n\r\nSelect "
                             "OK to exit VESK-OR."});
        QCOMPARE(gRun.gstrDefaultUser, "Removed");
    }
};

QTEST_MAIN(TestBoardList)
#include "tst_boardlist.moc"
