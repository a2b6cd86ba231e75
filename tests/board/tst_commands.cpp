// The board's toolbar, commands, rights and layout, on real site files.
#include "board/frmmain.h"
#include "boardfixture.h"
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "status/settings.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QSplitter>
#include <QTabBar>
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
        site.person(QStringLiteral("Ann Lee")).person(QStringLiteral("Bob Ray"));
        make();
    }

    // Keys of the buttons past the fixed ones, in order.
    QStringList statusKeys() const
    {
        QStringList keys;
        for (int position = 15; QAction* button = form->toolbarButton(position); ++position) {
            keys << button->data().toString();
        }
        return keys;
    }
    QAction* statusButton(const QString& key) const
    {
        for (int position = 15; QAction* button = form->toolbarButton(position); ++position) {
            if (button->data().toString() == key) {
                return button;
            }
        }
        return nullptr;
    }
    QString statusOf(const QString& name) const
    {
        return value(QStringLiteral("SELECT Status FROM EmployeeTable WHERE Name = ") + dao::quote(name));
    }
};

} // namespace

class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    void rights_data();
    void rights();
    void serverAndGuest_data();
    void serverAndGuest();
    void messagingButtons_data();
    void messagingButtons();
    void statusButtons();
    void statusCommands_data();
    void statusCommands();
    void statusWordOfACommand_data();
    void statusWordOfACommand();
    void commandBoxes();
    void panePass_data();
    void panePass();
    void statusBarAndListMenu();
    void everyControlIsNamed();
    void firstRunPlace();
    void fitsTheScreen_data();
    void fitsTheScreen();
    void splitters_data();
    void splitters();
};

void TestCommands::rights_data()
{
    QTest::addColumn<int>("system");
    QTest::addColumn<int>("user");
    QTest::addColumn<bool>("member");
    QTest::addColumn<bool>("manager");
    QTest::addColumn<QString>("group");
    QTest::addColumn<bool>("allowed");
    const QString sales = QStringLiteral("Sales");
    const QString open = QStringLiteral("Sales*");
    QTest::newRow("system LOW, user LOW, not a member") << 0 << 0 << false << false << sales << true;
    QTest::newRow("MEDIUM, LOW, member") << 1 << 0 << true << false << sales << true;
    QTest::newRow("MEDIUM, MEDIUM, not a member") << 1 << 1 << false << false << sales << false;
    QTest::newRow("MEDIUM, HIGH, not a member") << 1 << 2 << false << false << sales << true;
    QTest::newRow("HIGH, LOW, manager") << 2 << 0 << true << true << sales << false;
    QTest::newRow("HIGH, MEDIUM, member, no manager") << 2 << 1 << true << false << sales << false;
    QTest::newRow("HIGH, MEDIUM, manager") << 2 << 1 << true << true << sales << true;
    QTest::newRow("HIGH, HIGH, not a member") << 2 << 2 << false << false << sales << true;
    QTest::newRow("HIGH, LOW, group open to all") << 2 << 0 << false << false << open << true;
    QTest::newRow("HIGH, LOW, * in the middle") << 2 << 0 << false << false << QStringLiteral("Sa*les") << false;
    QTest::newRow("HIGH, LOW, * first") << 2 << 0 << false << false << QStringLiteral("*Sales") << false;
    QTest::newRow("system level out of range") << 3 << 2 << true << true << sales << false;
    QTest::newRow("MEDIUM, user level out of range") << 1 << 5 << true << true << sales << false;
}

// Each row after a first pass that allowed everything: the pass must take the
// right away again when the group changes.
void TestCommands::rights()
{
    QFETCH(int, system);
    QFETCH(int, user);
    QFETCH(bool, member);
    QFETCH(bool, manager);
    QFETCH(QString, group);
    QFETCH(bool, allowed);
    Board b;
    b.site.group(group).group(QStringLiteral("Other")).member(QStringLiteral("Other"), QStringLiteral("Ann Lee"), true);
    if (member) {
        b.site.member(group, QStringLiteral("Ann Lee"), manager);
    }
    b.site.member(group, QStringLiteral("Bob Ray"), true);
    gSite.gintSystemSecurityLevel = system;
    gPerson.gintUserSecurityLevel = user;
    gRun.gstrCurrentGroup = QStringLiteral("Everyone*");
    b.form->subSetToolBarRights();
    QVERIFY(b.form->groupButtonEnabled());

    gRun.gstrCurrentGroup = group;
    b.form->subSetToolBarRights();
    QCOMPARE(b.form->groupButtonEnabled(), allowed);
    QCOMPARE(b.form->mnuCommand_Group->isEnabled(), allowed);
    QCOMPARE(b.form->ListViewMain->selectionMode(),
             allowed ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
}

void TestCommands::serverAndGuest_data()
{
    QTest::addColumn<bool>("remote");
    QTest::addColumn<bool>("servers");   // ServersTable has a row
    QTest::addColumn<QString>("person"); // "Zed Guest" has no row
    QTest::addColumn<int>("userLevel");
    QTest::addColumn<bool>("serversButton"); // shown and enabled
    QTest::addColumn<bool>("homeButton");    // shown and enabled
    QTest::addColumn<bool>("change");        // enabled
    QTest::addColumn<bool>("options");       // enabled
    QTest::addColumn<bool>("statusButtons"); // shown
    const QString ann = QStringLiteral("Ann Lee");
    const QString zed = QStringLiteral("Zed Guest");
    QTest::newRow("home, no servers") << false << false << ann << 0 << false << false << true << true << true;
    QTest::newRow("home, servers listed") << false << true << ann << 0 << true << false << true << true << true;
    QTest::newRow("remote, own row") << true << true << ann << 0 << false << true << true << false << true;
    QTest::newRow("remote, guest") << true << true << zed << 1 << false << true << false << false << false;
    QTest::newRow("remote, no row but HIGH") << true << true << zed << 2 << false << true << true << false << true;
}

void TestCommands::serverAndGuest()
{
    QFETCH(bool, remote);
    QFETCH(bool, servers);
    QFETCH(QString, person);
    QFETCH(int, userLevel);
    Board b;
    if (servers) {
        b.site.execute(QStringLiteral("INSERT INTO ServersTable (Description, UNCPath) VALUES (\"North\", "
                                      "\"\\\\north\\veskor\\\")"));
    }
    gRun.gstrDefaultUser = person;
    gPerson.gintUserSecurityLevel = userLevel;
    gRun.gblnRemoteConnection = remote;
    b.form->subSetToolBarRights();
    const auto button = [&](const char* key) {
        return b.form->toolbarButton(QString::fromLatin1(key));
    };
    QFETCH(bool, serversButton);
    QCOMPARE(button("Servers")->isVisible(), serversButton);
    QCOMPARE(button("Servers")->isEnabled(), serversButton);
    QFETCH(bool, homeButton);
    QCOMPARE(button("Home")->isVisible(), homeButton);
    QCOMPARE(button("Home")->isEnabled(), homeButton);
    QCOMPARE(b.form->mnuCommand_Home->isVisible(), homeButton);
    QFETCH(bool, change);
    QCOMPARE(button("Change")->isEnabled(), change);
    QFETCH(bool, options);
    QCOMPARE(button("Options")->isEnabled(), options);
    QFETCH(bool, statusButtons);
    for (int position = 15; position <= 17; ++position) {
        QCOMPARE(b.form->toolbarButton(position)->isVisible(), statusButtons);
    }
    QCOMPARE(gRun.gblnUserOnThisServer, person == QLatin1String("Ann Lee"));
}

void TestCommands::messagingButtons_data()
{
    QTest::addColumn<bool>("messaging");
    QTest::addColumn<bool>("messages");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<bool>("previewEnabled");
    QTest::newRow("messaging off") << false << true << false << false;
    QTest::newRow("on, no messages") << true << false << true << false;
    QTest::newRow("on, messages waiting") << true << true << true << true;
}

void TestCommands::messagingButtons()
{
    QFETCH(bool, messaging);
    QFETCH(bool, messages);
    QFETCH(bool, shown);
    QFETCH(bool, previewEnabled);
    Board b;
    gSite.gblnAllowMessaging = messaging;
    if (messages) {
        new QTreeWidgetItem(b.form->ListViewMessages, {QStringLiteral("Bob Ray"), QStringLiteral("Lunch?")});
    }
    b.form->subSetToolBarRights();
    QCOMPARE(b.form->toolbarButton(QStringLiteral("New Message"))->isVisible(), shown);
    QCOMPARE(b.form->toolbarButton(QStringLiteral("Preview"))->isVisible(), shown);
    if (messaging) { // without messaging the layout's pass disables both
        QCOMPARE(b.form->toolbarButton(QStringLiteral("Preview"))->isEnabled(), previewEnabled);
    }
}

// One button per status type with OnToolBar, in code order; a rebuild leaves the
// same buttons; an empty ButtonText gives a picture only; on a remote server the
// buttons are there but hidden and disabled.
void TestCommands::statusButtons()
{
    Board b;
    b.site.statusType({QStringLiteral("Gone Home"), 9, QString(), QStringLiteral("Left for the day"), false, true});
    b.site.statusType({QStringLiteral("Training"), 12, QStringLiteral("Train"), QString(), false, false});
    b.site.execute(QStringLiteral("UPDATE EmployeeSettingsTable SET ToolBarText = 1 WHERE Name = \"Ann Lee\""));
    const QStringList expected = {"Out", "Busy", "In", "At Lunch", "In Meeting", "Gone Home"};
    b.form->subLoadToolBarButtons();
    QCOMPARE(b.statusKeys(), expected);
    b.form->subLoadToolBarButtons();
    QCOMPARE(b.statusKeys(), expected);
    QCOMPARE(b.form->toolbarButton(2)->text(), QStringLiteral("Change"));
    QCOMPARE(b.statusButton(QStringLiteral("At Lunch"))->text(), QStringLiteral("Lunch"));
    QAction* imageOnly = b.statusButton(QStringLiteral("Gone Home"));
    QVERIFY(imageOnly->text().isEmpty());
    QCOMPARE(imageOnly->toolTip(), QStringLiteral("Left for the day"));
    QVERIFY(!imageOnly->icon().isNull());

    gRun.gblnRemoteConnection = true;
    b.form->subLoadToolBarButtons();
    QCOMPARE(b.statusKeys(), expected);
    for (const QString& key : expected) {
        QVERIFY(!b.statusButton(key)->isVisible() && !b.statusButton(key)->isEnabled());
    }
    QVERIFY(b.form->toolbarButton(2)->isVisible()); // the fixed buttons are not the status buttons
}

void TestCommands::statusCommands_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("autoMinimize");
    QTest::newRow("In, AutoMinimize") << "In" << true;
    QTest::newRow("Busy, AutoMinimize") << "Busy" << true;
    QTest::newRow("Out, AutoMinimize") << "Out" << true;
    QTest::newRow("In, no AutoMinimize") << "In" << false;
    QTest::newRow("Busy, no AutoMinimize") << "Busy" << false;
}

// The fixed status buttons set the word and put the window away as AutoMinimize asks.
void TestCommands::statusCommands()
{
    QFETCH(QString, key);
    QFETCH(bool, autoMinimize);
    Board b;
    b.show(900, 600);
    gPerson.gblnAutoMinimize = autoMinimize;
    gPerson.gblnChangeScreenPopUp = false;
    b.form->toolbarButton(key)->trigger();
    QCOMPARE(b.statusOf(QStringLiteral("Ann Lee")), key);
    QCOMPARE(b.form->isMinimized(), autoMinimize);
}

void TestCommands::statusWordOfACommand_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("status"); // Ann's status afterwards
    QTest::addColumn<QStringList>("shell");
    QTest::newRow("Options") << "Options"
                             << "" << QStringList();
    QTest::newRow("Help") << "Help"
                          << "" << QStringList{"help user.chm 3"};
    QTest::newRow("a plain status word") << "Gone Home"
                                         << "Gone Home" << QStringList();
}

// A status whose word is a command's key runs the command and never sets the status.
void TestCommands::statusWordOfACommand()
{
    QFETCH(QString, word);
    QFETCH(QString, status);
    QFETCH(QStringList, shell);
    Board b;
    b.site.statusType({word, 9, word, word, false, true});
    gRun.gstrHelpFile = QStringLiteral("user.chm");
    b.form->subLoadToolBarButtons();
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
    QCOMPARE(modal, word == "Options" ? QStringLiteral("frmOptions") : QString());
    QCOMPARE(b.statusOf(QStringLiteral("Ann Lee")), status);
    QCOMPARE(b.gw.shell().calls, shell);
}

// The Group command with nobody selected, and a browser that cannot start.
void TestCommands::commandBoxes()
{
    Board b;
    b.gw.boxes().answer(platform::vbOK, 2);
    b.form->subCommand_Group();
    b.gw.shell().result = false;
    b.form->mnuWebActions->actions().first()->trigger();
    QCOMPARE(b.gw.boxes().prompts(),
             QStringList({"Please select one or more users before pressing the Group Change button.",
                          "Browser Error - Press OK to continue."}));
}

void TestCommands::panePass_data()
{
    QTest::addColumn<bool>("alerts");
    QTest::addColumn<bool>("messaging");
    QTest::newRow("both") << true << true;
    QTest::newRow("messaging only") << false << true;
    QTest::newRow("status alerts only") << true << false;
    QTest::newRow("neither") << false << false;
}

void TestCommands::panePass()
{
    QFETCH(bool, alerts);
    QFETCH(bool, messaging);
    Board b;
    gSite.gblnAllowStatusAlerts = alerts;
    gSite.gblnAllowMessaging = messaging;
    b.show(900, 600);
    b.form->subResizeControls();
    QCOMPARE(b.form->picTrackingContainer->isVisible(), alerts);
    QCOMPARE(b.form->lblWhoAmITracking->isVisible(), alerts);
    QCOMPARE(b.form->mnuCommand_StatusAlert->isVisible(), alerts);
    QCOMPARE(b.form->ListViewMessages->isVisible(), messaging);
    QCOMPARE(b.form->lblPreviewMsgsPane->isVisible(), messaging);
    QCOMPARE(b.form->mnuMessages->isVisible(), messaging);
    QCOMPARE(b.form->mnuMessagesNew->isEnabled(), messaging);
    QCOMPARE(b.form->mnuMessagesMenu->menuAction()->isVisible(), messaging);
    QCOMPARE(b.form->toolbarButton(QStringLiteral("New Message"))->isEnabled(), messaging);
    QVERIFY(messaging || !b.form->toolbarButton(QStringLiteral("Preview"))->isEnabled());
}

// Each panel keeps its own tip: the security levels have panels of their own and
// leave the database path's tip alone. The list's right-click opens the menu its
// hint speaks of.
void TestCommands::statusBarAndListMenu()
{
    Board b;
    subReadOptions();
    subReadUserSettings(QStringLiteral("Ann Lee"));
    b.show(900, 600);
    QCOMPARE(b.form->panelToolTip(2), QStringLiteral("Current database path"));
    QCOMPARE(b.form->panelToolTip(3), QStringLiteral("Countdown to next Auto-Refresh"));
    QVERIFY(b.form->panelToolTip(4).startsWith(QStringLiteral("System Security is ")));
    QVERIFY(b.form->panelToolTip(5).startsWith(QStringLiteral("User Security is ")));
    QCOMPARE(b.form->panelText(4), b.form->panelToolTip(4));

    QWidget* rows = b.form->ListViewMain->viewport();
    QContextMenuEvent click(QContextMenuEvent::Mouse, QPoint(10, 10), rows->mapToGlobal(QPoint(10, 10)));
    QCoreApplication::sendEvent(rows, &click);
    QTRY_VERIFY(b.form->mnuCommands->isVisible());
    b.form->mnuCommands->close();
}

// Every control a person can reach is named for screen readers, also the toolbar's
// buttons when they show no caption.
void TestCommands::everyControlIsNamed()
{
    Board b;
    b.form->subLoadToolBarButtons();
    b.show(900, 600);
    QStringList unnamed;
    for (QWidget* control : b.form->findChildren<QWidget*>()) {
        const bool reachable = qobject_cast<QAbstractButton*>(control) || qobject_cast<QLineEdit*>(control) ||
                               qobject_cast<QAbstractItemView*>(control) || qobject_cast<QTabBar*>(control);
        if (qobject_cast<QHeaderView*>(control)) {
            continue; // read by its sections' captions
        }
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(control);
        if (reachable && control->isVisible() && spoken && spoken->text(QAccessible::Name).trimmed().isEmpty()) {
            unnamed << control->metaObject()->className() + QStringLiteral(" ") + control->objectName();
        }
    }
    QVERIFY2(unnamed.isEmpty(), qPrintable(unnamed.join(QStringLiteral(", "))));
}

// A first run opens at a size that suits the screen, centred on it.
void TestCommands::firstRunPlace()
{
    Board b;
    subReadUserSettings(QStringLiteral("Ann Lee")); // no place saved
    const QRect area = b.form->screen()->availableGeometry();
    const QRect place = b.form->geometry();
    QVERIFY(area.contains(place));
    QVERIFY(place.width() >= std::min(area.width(), 800) && place.height() >= std::min(area.height(), 600));
    QVERIFY(qAbs(place.center().x() - area.center().x()) <= 1);
}

void TestCommands::fitsTheScreen_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("1920x1080") << QSize(1920, 1080);
    QTest::newRow("800x600") << QSize(800, 600);
}

// At any usual size: every toolbar button on the bar (none in its overflow), the
// list's columns across the whole width, the group tree wide enough for its names.
void TestCommands::fitsTheScreen()
{
    QFETCH(QSize, size);
    Board b;
    const QString longGroup = QStringLiteral("Facilities and Maintenance");
    b.site.group(longGroup).status(QStringLiteral("Bob Ray"), QStringLiteral("Out"), QStringLiteral("Monday"),
                                   QStringLiteral("Visiting the customer"));
    b.setForAnn(QStringLiteral("DisplayTreeView = True, ToolBarText = 1, IconSize = 0"));
    gSite.gblnAllowStatusAlerts = gSite.gblnAllowMessaging = true;
    frmMain& f = b.open();
    f.subLoadToolBarButtons();
    b.show(size.width(), size.height());
    f.subRefreshUserList(QStringLiteral("Everyone"));
    QCoreApplication::processEvents();

    for (QAction* button : f.ToolbarMain->actions()) {
        if (button->isVisible()) {
            QVERIFY2(f.ToolbarMain->widgetForAction(button)->isVisible(), qPrintable(button->data().toString()));
        }
    }
    const QHeaderView* header = f.ListViewMain->header();
    QVERIFY(header->length() >= f.ListViewMain->viewport()->width());
    const int comments = b.column(QStringLiteral("Comments"));
    QVERIFY(header->sectionSize(comments) >=
            header->fontMetrics().horizontalAdvance(QStringLiteral("Visiting the customer")));
    QVERIFY(f.TreeViewMain->viewport()->width() >=
            f.TreeViewMain->indentation() + f.TreeViewMain->fontMetrics().horizontalAdvance(longGroup));

    // The widened column is no resize by the person: the next poll rebuilds nothing,
    // and the layout keeps the width the settings gave.
    const QTreeWidgetItem* firstRow = f.ListViewMain->topLevelItem(0);
    f.subRefreshUserList(QString());
    QCOMPARE(f.ListViewMain->topLevelItem(0), firstRow);
    const QString saved = b.ofAnn(QStringLiteral("CommentsColumnWidth"), QStringLiteral("EmployeeSettingsTable"));
    for (const ListColumn& column : f.listColumns()) {
        if (column.name == QLatin1String("Comments")) {
            QCOMPARE(QString::number(column.width), saved);
        }
    }
}

void TestCommands::splitters_data()
{
    QTest::addColumn<int>("vertical"); // saved, in twips
    QTest::addColumn<int>("horizontal");
    QTest::addColumn<QString>("held"); // "saved", "min" or "max"
    QTest::newRow("as saved") << 2400 << 2100 << "saved";
    QTest::newRow("below the minimum") << 15 << 15 << "min";
    QTest::newRow("past the maximum") << 90000 << 90000 << "max";
}

// The positions come back from the settings row, held within the limits of the
// window; a window shrunk past them leaves the splitter at its maximum, also
// when it grows again; a drag's end is kept for the save.
void TestCommands::splitters()
{
    QFETCH(int, vertical);
    QFETCH(int, horizontal);
    QFETCH(QString, held);
    Board b;
    b.site.execute(QStringLiteral("UPDATE EmployeeSettingsTable SET SplitterPositionVertical = %1, "
                                  "SplitterPositionHorizontal = %2, DisplayTreeView = True WHERE Name = \"Ann Lee\"")
                       .arg(vertical)
                       .arg(horizontal));
    gSite.gblnAllowStatusAlerts = true;
    subReadUserSettings(QStringLiteral("Ann Lee"));
    b.show(900, 600);
    const auto pick = [&](long long saved, long long min, long long max) {
        return held == QLatin1String("saved") ? saved : held == QLatin1String("min") ? min : max;
    };
    QCOMPARE(gPerson.glngSplitterVertical,
             pick(vertical, gBoard.glngSplitterVerticalMin, gBoard.glngSplitterVerticalMax));
    QCOMPARE(gPerson.glngSplitterHorizontal,
             pick(horizontal, gBoard.glngSplitterHorizontalMin, gBoard.glngSplitterHorizontalMax));
    QVERIFY(gBoard.glngSplitterVerticalMin < gBoard.glngSplitterVerticalMax);
    QVERIFY(gBoard.glngSplitterHorizontalMin < gBoard.glngSplitterHorizontalMax);
    const QPoint treeAt = b.form->TreeViewMain->mapTo(b.form->centralWidget(), QPoint(0, 0));
    QCOMPARE(b.form->TreeViewMain->width(), int(gPerson.glngSplitterVertical / 15) - treeAt.x());

    const long long wideMax = gBoard.glngSplitterVerticalMax;
    b.show(500, 600);
    QVERIFY(gBoard.glngSplitterVerticalMax < wideMax);
    QVERIFY(gPerson.glngSplitterVertical <= gBoard.glngSplitterVerticalMax);
    const long long narrow = gPerson.glngSplitterVertical;
    b.show(900, 600);
    QCOMPARE(gPerson.glngSplitterVertical, narrow);

    // The end of a drag: the bar's new place becomes the run-wide value.
    b.form->picVerticalSplitter->setSizes({150, 600});
    emit b.form->picVerticalSplitter->splitterMoved(150, 1);
    QCOMPARE(gPerson.glngSplitterVertical, (treeAt.x() + 150) * 15LL);
}

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
