// The board's toolbar, commands and layout, on real site files.
#include "alerts/frmnewmessagesalert.h"
#include "alerts/frmstatuschangealert.h"
#include "boardfixture.h"
#include "platform/clock.h"
#include "realclient.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>

namespace {

// Ann Lee's board on a fresh site; the window is made but not loaded.
struct Board : BoardFixture
{
    Board()
    {
        site.person("Ann Lee").person("Bob Ray");
        make();
    }

    // The buttons past the fixed ones, in order.
    QList<QAction*> statusButtons() const
    {
        return child<QToolBar>("ToolbarMain")->actions().mid(14);
    }
    QStringList statusKeys() const
    {
        QStringList keys;
        for (QAction* button : statusButtons()) {
            keys << button->data().toString();
        }
        return keys;
    }
    QAction* statusButton(const QString& key) const
    {
        return statusButtons().value(int(statusKeys().indexOf(key)));
    }
};

} // namespace

class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    // One button per status type with OnToolBar, in code order; a rebuild leaves the
    // same buttons; an empty ButtonText gives a picture only; on a remote server the
    // buttons are there but hidden and disabled.
    void statusButtons()
    {
        Board b;
        b.site.statusType({"Gone Home", 9, QString(), "Left for the day", false, true});
        b.site.statusType({"Training", 12, "Train", QString(), false, false});
        b.site.execute("UPDATE EmployeeSettingsTable SET ToolBarText = 1 WHERE Name = \"Ann Lee\"");
        const QStringList expected = {"Out", "Busy", "In", "At Lunch", "In Meeting", "Gone Home"};
        b.form->subLoadToolBarButtons();
        QCOMPARE(b.statusKeys(), expected);
        b.form->subLoadToolBarButtons();
        QCOMPARE(b.statusKeys(), expected);
        QCOMPARE(b.action("Change")->text(), "Change");
        QCOMPARE(b.statusButton("At Lunch")->text(), "Lunch");
        QAction* imageOnly = b.statusButton("Gone Home");
        QVERIFY(imageOnly->text().isEmpty());
        QCOMPARE(imageOnly->toolTip(), "Left for the day");
        QVERIFY(!imageOnly->icon().isNull());

        gRun.gblnRemoteConnection = true;
        b.form->subLoadToolBarButtons();
        QCOMPARE(b.statusKeys(), expected);
        for (const QString& key : expected) {
            QVERIFY(!b.statusButton(key)->isVisible() && !b.statusButton(key)->isEnabled());
        }
        QVERIFY(b.action("Change")->isVisible()); // the fixed buttons are not the status buttons
    }

    void toolbarClick_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("autoMinimize");
        QTest::addColumn<bool>("sets"); // the word becomes Ann's status
        QTest::addColumn<QStringList>("shell");
        QTest::newRow("In, AutoMinimize") << "In" << true << true << QStringList();
        QTest::newRow("Busy, AutoMinimize") << "Busy" << true << true << QStringList();
        QTest::newRow("Out, AutoMinimize") << "Out" << true << true << QStringList();
        QTest::newRow("In, no AutoMinimize") << "In" << false << true << QStringList();
        QTest::newRow("Options") << "Options" << true << false << QStringList();
        QTest::newRow("Help") << "Help" << true << false << QStringList{"help user.chm 3"};
        QTest::newRow("a plain status word") << "Gone Home" << true << true << QStringList();
    }

    // The design's In, Busy and Out buttons, and a status type's button: a word that
    // is a command's key runs the command and never sets the status; a status is
    // set and the window put away as AutoMinimize asks.
    void toolbarClick()
    {
        QFETCH(QString, word);
        QFETCH(bool, autoMinimize);
        QFETCH(bool, sets);
        Board b;
        if (!QStringList{"In", "Busy", "Out"}.contains(word)) {
            b.site.statusType({word, 9, word, word, false, true});
            b.form->subLoadToolBarButtons();
        }
        gRun.gstrHelpFile = "user.chm";
        gPerson.gblnAutoMinimize = autoMinimize;
        QString modal; // the screen the command opened, closed again at once
        QTimer closer;
        closer.callOnTimeout([&modal] {
            if (QWidget* screen = QApplication::activeModalWidget()) {
                modal = screen->objectName();
                screen->close();
            }
        });
        closer.start(0);
        b.statusButton(word)->trigger();
        QCOMPARE(modal, word == "Options" ? "frmOptions" : QString());
        QCOMPARE(b.ofAnn("Status"), sets ? word : QString());
        QTEST(b.gw.shell().calls, "shell");
        QCOMPARE(b.form->isMinimized(), sets && autoMinimize);
    }

    // Change and Group show their screens over the board; once one is done the board
    // has the focus again and its list shows what was written, without a refresh.
    void screensOfTheirOwn_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QStringList>("selected");
        QTest::newRow("Change") << "Change" << QStringList();
        QTest::newRow("Group") << "Group" << QStringList{"Ann Lee", "Bob Ray"};
    }
    void screensOfTheirOwn()
    {
        QFETCH(QString, key);
        QFETCH(QStringList, selected);
        Board b;
        b.form->setAttribute(Qt::WA_ShowWithoutActivating, false);
        b.open();
        b.show(900, 600);
        b.form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(b.form));
        for (int i = 0; i < b.list()->topLevelItemCount(); ++i) {
            QTreeWidgetItem* row = b.list()->topLevelItem(i);
            row->setSelected(selected.contains(row->text(b.column("Name"))));
        }
        QString shown;
        QTimer::singleShot(0, [&shown] {
            auto* screen = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            shown = screen->objectName();
            screen->findChild<QComboBox*>("comboStatusTypes")->setCurrentText("Visiting");
            screen->findChild<QPushButton*>("cmdOk")->click();
        });
        // The Group button's right is the rights table's own test.
        key == "Change" ? b.form->subCommand_Change() : b.form->subCommand_Group();
        QCOMPARE(shown, key == "Change" ? "frmStatus" : "frmGroup");
        QVERIFY(QTest::qWaitForWindowActive(b.form));
        QTRY_COMPARE(b.texts("Status").count("Visiting"), qMax(qsizetype(1), selected.size()));
    }

    // The Group command with nobody selected, and a browser that cannot start.
    void commandBoxes()
    {
        Board b;
        b.gw.boxes().answer(platform::vbOK, 2);
        b.form->subCommand_Group();
        b.gw.shell().result = false;
        b.child<QMenu>("mnuWebActions")->actions().first()->trigger();
        QCOMPARE(b.gw.boxes().prompts(),
                 QStringList({"Please select one or more users before pressing the Group Change button.",
                              "Browser Error - Press OK to continue."}));
    }

    // The board on screen. Each panel keeps its own tip: the security levels have
    // panels of their own and leave the database path's tip alone. Every control a
    // person can reach is named for screen readers, also the toolbar's buttons when
    // they show no caption. The list's right-click opens the menu its hint speaks of.
    void shownBoard()
    {
        Board b;
        subReadOptions();
        subReadUserSettings("Ann Lee");
        b.form->subLoadToolBarButtons();
        b.show(900, 600);
        QCOMPARE(b.form->panelToolTip(2), "Current database path");
        QCOMPARE(b.form->panelToolTip(3), "Countdown to next Auto-Refresh");
        QVERIFY(b.form->panelToolTip(4).startsWith("System Security is "));
        QVERIFY(b.form->panelToolTip(5).startsWith("User Security is "));
        QCOMPARE(b.form->panelText(4), b.form->panelToolTip(4));

        QStringList unnamed;
        for (QWidget* control : b.form->findChildren<QWidget*>()) {
            const bool reachable = qobject_cast<QAbstractButton*>(control) || qobject_cast<QLineEdit*>(control) ||
                                   qobject_cast<QAbstractItemView*>(control) || qobject_cast<QTabBar*>(control);
            if (qobject_cast<QHeaderView*>(control)) {
                continue; // read by its sections' captions
            }
            QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
            if (reachable && control->isVisible() && spoken && spoken->text(QAccessible::Name).trimmed().isEmpty()) {
                unnamed << QString(control->metaObject()->className()) + " " + control->objectName();
            }
        }
        QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(", ")));

        QWidget* rows = b.list()->viewport();
        QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(10, 10), rows->mapToGlobal(QPoint(10, 10)));
        QCoreApplication::sendEvent(rows, &click);
        QMenu* commands = b.child<QMenu>("mnuCommands");
        QTRY_VERIFY(commands->isVisible());
        commands->close();
    }

    void fitsTheScreen_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("1920x1080") << QSize(1920, 1080);
        QTest::newRow("800x600") << QSize(800, 600);
    }

    // A first run, with no place saved, opens at a size that suits the screen,
    // centred on it. At any usual size: every toolbar button on the bar (none in
    // its overflow), the list's columns across the whole width, the group tree
    // wide enough for its names.
    void fitsTheScreen()
    {
        QFETCH(QSize, size);
        Board b;
        const QString longGroup = "Facilities and Maintenance";
        b.site.group(longGroup).status("Bob Ray", "Out", "Monday", "Visiting the customer");
        b.setForAnn("DisplayTreeView = True, ToolBarText = 1, IconSize = 0");
        gSite.gblnAllowStatusAlerts = gSite.gblnAllowMessaging = true;
        frmMain& f = b.open();
        const QRect area = f.screen()->availableGeometry();
        const QRect place = f.geometry();
        QVERIFY(area.contains(place) && qAbs(place.center().x() - area.center().x()) <= 1);
        QVERIFY(place.width() >= std::min(area.width(), 800) && place.height() >= std::min(area.height(), 600));
        f.subLoadToolBarButtons();
        b.show(size.width(), size.height());
        f.subRefreshUserList("Everyone");
        QCoreApplication::processEvents();

        const QToolBar* toolbar = b.child<QToolBar>("ToolbarMain");
        for (QAction* button : toolbar->actions()) {
            if (button->isVisible()) {
                QVERIFY2(toolbar->widgetForAction(button)->isVisible(), qPrintable(button->data().toString()));
            }
        }
        const QHeaderView* header = b.list()->header();
        QVERIFY(header->length() >= b.list()->viewport()->width());
        const int comments = b.column("Comments");
        QVERIFY(header->sectionSize(comments) >= header->fontMetrics().horizontalAdvance("Visiting the customer"));
        const QTreeWidget* tree = b.child<QTreeWidget>("TreeViewMain");
        QVERIFY(tree->viewport()->width() >= tree->indentation() + tree->fontMetrics().horizontalAdvance(longGroup));

        // The widened column is no resize by the person: the next poll rebuilds nothing,
        // and the layout keeps the width the settings gave.
        const QTreeWidgetItem* firstRow = b.list()->topLevelItem(0);
        f.subRefreshUserList(QString());
        QCOMPARE(b.list()->topLevelItem(0), firstRow);
        const QString saved = b.ofAnn("CommentsColumnWidth", "EmployeeSettingsTable");
        for (const ListColumn& column : f.listColumns()) {
            if (column.name == QLatin1String("Comments")) {
                QCOMPARE(QString::number(column.width), saved);
            }
        }
    }

    // The tree stands as wide as the saved splitter position says, and the end of a
    // drag becomes the position that is saved.
    void splitters()
    {
        Board b;
        b.setForAnn("SplitterPositionVertical = 2400, DisplayTreeView = True");
        subReadUserSettings("Ann Lee");
        b.show(900, 600);
        auto* tree = b.child<QTreeWidget>("TreeViewMain");
        const int left = tree->mapTo(b.form->centralWidget(), QPoint(0, 0)).x();
        QCOMPARE(tree->width(), 2400 / 15 - left);
        auto* splitter = b.child<QSplitter>("picVerticalSplitter");
        splitter->setSizes({150, 600});
        emit splitter->splitterMoved(150, 1);
        QCOMPARE(gPerson.glngSplitterVertical, (left + 150) * 15LL);
    }

    // The pane lists the person's "New" copies only. The first look pops each of them,
    // a later look only what came since, and the watcher settles at a minute. Remove
    // takes the chosen copies from the table for good (64-bit ids too) and raises the
    // change counter; No leaves everything.
    void newMessages()
    {
        Board b;
        const auto copy = [&](const QString& category, const QString& subject) {
            return b.site.message({.owner = "Ann Lee",
                                   .category = category,
                                   .fromName = "Bob Ray",
                                   .toName = "Ann Lee",
                                   .subject = subject,
                                   .sent = platform::DateTimeNum(platform::Now())});
        };
        copy("New", "one");
        copy("Forward", "forwarded");
        copy("Read", "read");
        b.site.execute("UPDATE MessagesTable SET MessageID = 5000000000 WHERE MessageSubject = 'one'");
        copy("New", "two");
        const auto popUps = [] {
            QStringList subjects;
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (auto* popUp = qobject_cast<frmNewMessagesAlert*>(window)) {
                    subjects << popUp->txtSubject->text();
                }
            }
            subjects.sort();
            return subjects;
        };
        frmMain& f = b.openOnEveryone();
        auto* pane = b.child<QTreeWidget>("ListViewMessages");
        QCOMPARE(pane->topLevelItemCount(), 2);
        f.tmrCheckForNewMessages_Timer();
        QCOMPARE(popUps(), QStringList({"one", "two"}));
        QCOMPARE(b.child<QObject>("tmrCheckForNewMessages")->property("interval").toInt(), 60000);
        b.gw.clock().advance(1000);
        copy("New", "three");
        f.tmrCheckForNewMessages_Timer();
        QCOMPARE(popUps(), QStringList({"one", "three", "two"}));
        frmMain::subCloseAllAlerts();

        gCounters.glngLastStatusCounter = 0; // the next refresh reads the list and the panes again
        f.subRefreshUserList(QString());
        const QString counter = b.site.value("SELECT Counter FROM StatusCounterTable");
        pane->selectAll();
        pane->topLevelItem(1)->setSelected(false);
        b.gw.boxes().answer(platform::vbNo).answer(platform::vbYes);
        f.mnuRemoveMessages_Click();
        QCOMPARE(pane->topLevelItemCount(), 3);
        f.mnuRemoveMessages_Click();
        QCOMPARE(b.gw.boxes().last().title, "Delete Alerts?");
        QCOMPARE(pane->topLevelItemCount(), 1);
        QCOMPARE(b.site.value("SELECT COUNT(*) FROM MessagesTable"), "3");
        QCOMPARE(b.site.value("SELECT COUNT(*) FROM MessagesTable WHERE MessageID = 5000000000"), "0");
        QCOMPARE(b.site.value("SELECT Counter FROM StatusCounterTable").toLongLong(), counter.toLongLong() + 1);

        // A look that fails is told, and the next one comes all the same.
        b.site.execute("DROP TABLE MessagesTable");
        b.gw.boxes().answer(platform::vbOK, 2);
        f.tmrCheckForNewMessages_Timer();
        f.tmrCheckForNewMessages_Timer();
        QCOMPARE(b.gw.boxes().count(), 4);
        QVERIFY(b.gw.boxes().last().prompt.contains("frmMain - tmrCheckForNewMessages event"));
    }

    // Status Alert follows each selected person not followed yet (oneself too), the
    // rows and the counter as one unit; Remove drops only this person's rows. The
    // first look pops everyone followed with a change on record, a later one only
    // what changed since, and a person's new pop-up replaces the old.
    void followingPeople()
    {
        Board b;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); // the watcher's limit is written with a point
        b.site.person("Cy Dee").tracking("Ann Lee", "Bob Ray").tracking("Cy Dee", "Bob Ray");
        frmMain& f = b.openOnEveryone();
        const auto rows = [&] {
            return b.site.value("SELECT COUNT(*) FROM EmployeeStatusTracking WHERE Tracker = 'Ann Lee'") + "/" +
                   b.site.value("SELECT COUNT(*) FROM EmployeeStatusTracking");
        };
        const long long counter = b.site.value("SELECT Counter FROM StatusCounterTable").toLongLong();
        b.list()->setSelectionMode(QAbstractItemView::MultiSelection);
        b.list()->selectAll();
        f.subCommand_StatusAlert();
        QCOMPARE(rows(), "3/4");
        QCOMPARE(b.site.value("SELECT Counter FROM StatusCounterTable").toLongLong(), counter + 1);
        auto* following = b.child<QTreeWidget>("lstWhoAmITracking");
        QCOMPARE(following->topLevelItemCount(), 3);

        const auto popUps = [] {
            QStringList shown;
            for (QWidget* window : QApplication::topLevelWidgets())
                if (auto* popUp = qobject_cast<frmStatusChangeAlert*>(window); popUp && popUp->isVisible())
                    shown << popUp->txtTrackee->text() + ":" + popUp->txtStatus->text();
            return shown;
        };
        const auto change = [&](const QString& status) {
            b.site.execute(QString("UPDATE EmployeeStatusTracking SET TrackeeStatus = '%1', TrackeeLastUpdated = %2 "
                                   "WHERE Trackee = 'Bob Ray'")
                               .arg(status, QString::number(platform::DateTimeNum(platform::Now()), 'f', 10)));
        };
        change("Out");
        f.tmrCheckForStatusAlerts_Timer();
        QCOMPARE(popUps(), QStringList{"Bob Ray:Out"});
        f.tmrCheckForStatusAlerts_Timer();
        QCOMPARE(b.gw.shell().calls.size(), 1); // the same change pops no second time
        b.gw.clock().advance(1000);
        change("Busy");
        f.tmrCheckForStatusAlerts_Timer();
        QCOMPARE(popUps(), QStringList{"Bob Ray:Busy"});
        frmMain::subCloseAllAlerts();

        // Cy Dee goes on following Bob Ray.
        following->findItems("Bob Ray", Qt::MatchExactly).first()->setSelected(true);
        b.gw.boxes().answer(platform::vbYes);
        f.mnuRemoveAlert_Click();
        QCOMPARE(rows(), "2/3");
        QCOMPARE(following->topLevelItemCount(), 2);
    }

    // Two real clients: Bob Ray's, started with "Busy", writes it through to his
    // followers; Ann Lee's, started next, pops it with the status-alert sound at
    // its first look, three seconds after its board opens.
    void followedChangeReachesAnotherClient()
    {
        Board b;
        b.site.execute("UPDATE EmployeeTable SET UID = 'alee' WHERE Name = 'Ann Lee'");
        b.site.execute("UPDATE EmployeeTable SET UID = 'bray' WHERE Name = 'Bob Ray'");
        b.site.tracking("Ann Lee", "Bob Ray", "In", 0);
        QTemporaryDir bobsDesk, annsDesk, bobsRun, annsRun;
        QFile::copy(b.site.iniPath(), bobsDesk.filePath("veskor.ini"));
        QFile::copy(b.site.iniPath(), annsDesk.filePath("veskor.ini"));
        RealClient bob(bobsDesk.path(), {"-UID:bray", "-STS:Busy"}, {}, bobsRun.path());
        QTRY_COMPARE_WITH_TIMEOUT(b.site.value("SELECT TrackeeStatus FROM EmployeeStatusTracking"), "Busy", 20000);
        RealClient ann(annsDesk.path(), {"-UID:alee"}, {}, annsRun.path());
        QTRY_VERIFY_WITH_TIMEOUT(ann.shellRequests().contains("veskor-status-alert.wav"), 30000);
        QCOMPARE(ann.boxesShown() + bob.boxesShown(), QByteArray());
    }

    void presenceTimers_data()
    {
        QTest::addColumn<bool>("allowed");
        QTest::newRow("sensing on") << true;
        QTest::newRow("sensing off") << false;
    }

    // AllowPresenceSensing starts both presence timers, or neither; the lock
    // routine starts the lock's watch again only where it is allowed, and asks
    // the desktop to lock either way.
    void presenceTimers()
    {
        QFETCH(bool, allowed);
        Board b;
        b.site.setting("AllowPresenceSensing", allowed ? "True" : "False");
        b.form = static_cast<frmMain*>(frmMain::load());
        b.form->Form_Activate();
        auto* lock = b.child<QTimer>("tmrDetectLockedWorkStation");
        QCOMPARE(b.child<QTimer>("tmrScreenSaver")->isActive(), allowed);
        QCOMPARE(lock->isActive(), allowed);
        b.form->subStopMonitoringWorkStation();
        QVERIFY(!lock->isActive());
        b.form->subLockWorkStation();
        QCOMPARE(lock->isActive(), allowed);
        QCOMPARE(b.gw.presence().lockRequests, 1);
    }
};

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
