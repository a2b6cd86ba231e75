// The Preview Messages and Select Users screens, offscreen, on a real site file.
#include "columns.h"
#include "messaging/gui/frmmessagestoselection.h"
#include "messaging/gui/frmmsgspreview.h"
#include "messaging/gui/messagescreens.h"
#include "platform/clock.h"
#include "statusfixture.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <optional>

namespace {

const QString kMe = QStringLiteral("Ann Lee");
const QStringList kFive = {"View", "Reply", "Delete", "Forward", "Print"};

// Ann Lee's site with Bob Ray, Cy Dee and Di Fox; her copies sent by Bob Ray.
struct Fixture : StatusFixture
{
    Fixture()
    {
        site.person("Di Fox");
    }
    long long add(const QString& category, const QString& body = "Body", const QString& owner = kMe)
    {
        return site.message({owner, category, "Bob Ray", "Front desk", owner, "Subject " + category, body,
                             platform::DateTimeNum(TestGateways::defaultStart())});
    }
    QStringList categoriesOf(const QList<long long>& ids) const
    {
        QStringList found;
        for (long long id : ids) {
            found << site.value("SELECT Category FROM MessagesTable WHERE MessageID = " + QString::number(id));
        }
        return found;
    }
};

frmMsgsPreview* shown()
{
    subShowMsgsPreview();
    return frmMsgsPreview::instance();
}

// The node of either screen's tree by its key.
QTreeWidgetItem* node(QTreeWidget* tree, const QString& key)
{
    for (QTreeWidgetItemIterator it(tree); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == key) {
            return *it;
        }
    }
    return nullptr;
}

void clickNode(frmMsgsPreview* screen, const QString& key)
{
    QTreeWidget* tree = screen->TreeViewCategories;
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node(tree, key)).center());
}

QStringList texts(const QTreeWidget* list, int column)
{
    QStringList found;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        found << list->topLevelItem(i)->text(column);
    }
    return found;
}

QStringList categories(frmMsgsPreview* screen)
{
    return texts(screen->listMsgsPreview, frmMsgsPreview::colCategory);
}

QList<bool> five(frmMsgsPreview* screen)
{
    QList<bool> states;
    for (const QString& key : kFive) {
        states << screen->toolbarButton(key)->isEnabled();
    }
    return states;
}

void selectRows(frmMsgsPreview* screen, const QList<int>& rows)
{
    QTreeWidget* list = screen->listMsgsPreview;
    list->clearSelection();
    for (int row : rows) {
        list->setCurrentItem(list->topLevelItem(row), 0, QItemSelectionModel::Select);
    }
}

} // namespace

class TestMsgsPreview : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        // Windows that belong to another (the toolbar's pop-ups) go with it.
        QList<QPointer<QWidget>> windows;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            windows << window;
        }
        for (const QPointer<QWidget>& window : windows) {
            delete window.data();
        }
        gstrMessageAction.clear();
    }

    void listPerCategory_data()
    {
        addColumns<QStringList, QStringList>("clicks", "listed");
        const auto row = [](const char* name, const char* clicks, const char* listed) {
            QTest::newRow(name) << QString(clicks).split(' ', Qt::SkipEmptyParts) << QString(listed).split(' ');
        };
        row("load: New", "", "New");
        row("All: every copy of mine, forwarded too", "All", "New Read Sent Deleted Draft Forward");
        for (const char* category : {"Read", "Sent", "Deleted"})
            row(category, category, category);
        row("Drafts", "Drafts", "Draft");
        row("root reads the last statement again", "Sent R", "Sent");
    }

    // Bob's copies of every kind are never mine; the forwarded copy stands only under All.
    void listPerCategory()
    {
        auto [clicks, listed] = fetch<QStringList, QStringList>("clicks", "listed");
        Fixture f;
        for (const QString& owner : {QString("Bob Ray"), kMe}) {
            for (const char* category : {"New", "Read", "Sent", "Deleted", "Draft", "Forward"}) {
                f.add(category, "Body", owner);
            }
        }
        frmMsgsPreview* screen = shown();
        QCOMPARE(screen->windowTitle(), " VESK-OR Pro  - Preview Messages");
        for (const QString& key : clicks) {
            clickNode(screen, key);
        }
        QCOMPARE(categories(screen), listed);
    }

    void row_data()
    {
        // from: the sender's name when the copy has no From line
        addColumns<QString, QString, QString>("body", "preview", "from");
        const auto row = [](const char* name, const QString& body, const QString& preview, const char* from) {
            QTest::newRow(name) << body << preview << QString(from);
        };
        row("line end in the first 30: one blank", "Call me\r\nback please", "Call me back please", "Front desk");
        row("only the first 30 characters", "0123456789abcdefghijABCDEFGHIJ-cut", "0123456789abcdefghijABCDEFGHIJ",
            "Front desk");
        row("a line end cut in two at 30 is trimmed", QString(29, 'x') + "\r\nmore", QString(29, 'x'), "Front desk");
        row("no From line: the sender", "  Hi  ", "Hi", "Bob Ray");
    }

    void row()
    {
        auto [body, preview, from] = fetch<QString, QString, QString>("body", "preview", "from");
        Fixture f;
        const long long id = f.add("New", body);
        if (from == "Bob Ray") {
            f.site.execute("UPDATE MessagesTable SET MessageFrom = Null WHERE MessageID = " + QString::number(id));
        }
        frmMsgsPreview* screen = shown();
        QCOMPARE(screen->listMsgsPreview->topLevelItemCount(), 1);
        QStringList row;
        for (int column = 0; column < frmMsgsPreview::kColumns; ++column) {
            row << texts(screen->listMsgsPreview, column);
        }
        QCOMPARE(row,
                 (QStringList{"New", from, "Subject New", preview, "11/22/2026", "Bob Ray", kMe, QString::number(id)}));
    }

    void buttons_data()
    {
        // states: View, Reply, Delete, Forward, Print
        addColumns<QString, QList<bool>>("category", "states");
        const QList<bool> on{true, true, true, true, true};
        QTest::newRow("Deleted: no second delete") << "Deleted" << QList<bool>{true, true, false, true, true};
        for (const char* category : {"Read", "Sent", "New", "Forward"}) {
            QTest::newRow(category) << category << on;
        }
        QTest::newRow("Draft: no reply") << "Draft" << QList<bool>{true, false, true, true, true};
        QTest::newRow("another program's category") << "Reply" << QList<bool>(5, false);
    }

    void buttons()
    {
        auto [category, states] = fetch<QString, QList<bool>>("category", "states");
        Fixture f;
        f.add(category);
        f.add("Read");
        frmMsgsPreview* screen = shown();
        clickNode(screen, "All");
        QCOMPARE(five(screen), QList<bool>(5, false)); // two rows, none chosen
        selectRows(screen, {1});                       // the Read row
        QCOMPARE(five(screen), QList<bool>(5, true));
        selectRows(screen, {0});
        QCOMPARE(five(screen), states);
        screen->listMsgsPreview->clearSelection();
        QCOMPARE(five(screen), QList<bool>(5, false));
    }

    // At load the five buttons follow whether the list has rows; a node of one
    // row chooses that row.
    void loadAndOneRowNode()
    {
        Fixture f;
        f.add("Draft");
        frmMsgsPreview* screen = shown();
        QCOMPARE(screen->selectedNodeKey(), "New");
        QCOMPARE(five(screen), QList<bool>(5, false));
        clickNode(screen, "Drafts");
        QVERIFY(screen->listMsgsPreview->topLevelItem(0)->isSelected());
        QCOMPARE(five(screen), (QList<bool>{true, false, true, true, true}));
        f.add("Draft");
        clickNode(screen, "Drafts"); // the node already chosen: read again
        QCOMPARE(categories(screen), (QStringList{"Draft", "Draft"}));
        screen->close();
        f.add("New");
        screen = shown(); // loaded again: the New node, its row, the buttons on
        QCOMPARE(screen->selectedNodeKey(), "New");
        QCOMPARE(categories(screen), QStringList{"New"});
        QCOMPARE(five(screen), QList<bool>(5, true));
    }

    // The commands that need a chosen row, with none chosen.
    void invalidSelection()
    {
        Fixture f;
        frmMsgsPreview* screen = shown();
        for (const char* key : {"Reply All", "eMail", "QUIL", "Print"}) {
            f.gw.boxes().answer(platform::vbOK);
            screen->toolbarButton(key)->setEnabled(true);
            screen->toolbarButton(key)->trigger();
        }
        QCOMPARE(f.gw.boxes().prompts(), QStringList(4, "Invalid selection!"));
        QCOMPARE(f.gw.boxes().last().title, "Error!");
        QCOMPARE(f.gw.boxes().last().icon(), int(platform::vbCritical));
    }

    void deleteRows_data()
    {
        addColumns<QList<int>, int, QStringList>("selected", "answer", "stored");
        const QStringList none{"New", "New", "New"};
        QTest::newRow("two of three, Yes")
            << QList<int>{0, 2} << int(platform::vbYes) << QStringList{"Deleted", "New", "Deleted"};
        QTest::newRow("No") << QList<int>{0, 2} << int(platform::vbNo) << none;
        QTest::newRow("none chosen: no question") << QList<int>{} << 0 << none;
        QTest::newRow("all three") << QList<int>{0, 1, 2} << int(platform::vbYes) << QStringList(3, "Deleted");
    }

    void deleteRows()
    {
        auto [selected, answer, stored] = fetch<QList<int>, int, QStringList>("selected", "answer", "stored");
        Fixture f;
        const QList<long long> ids{f.add("New"), f.add("New"), f.add("New")};
        const long long counterBefore = f.counter();
        frmMsgsPreview* screen = shown();
        selectRows(screen, selected);
        if (answer) {
            f.gw.boxes().answer(answer);
        }
        screen->toolbarButton("Delete")->trigger();
        QCOMPARE(f.gw.boxes().prompts(),
                 answer ? QStringList{"Are you sure you want to delete the selected message(s)?"} : QStringList());
        QCOMPARE(f.gw.boxes().last().title, answer ? "Delete Confirmation Required" : "");
        QCOMPARE(f.gw.boxes().last().flags, answer ? platform::vbYesNo | platform::vbQuestion : 0);
        QCOMPARE(f.categoriesOf(ids), stored);
        QCOMPARE(screen->listMsgsPreview->topLevelItemCount(), stored.count("New"));
        QCOMPARE(f.counter() > counterBefore, answer == platform::vbYes);
        if (!stored.contains("New")) {
            QCOMPARE(five(screen), QList<bool>(5, false));
        }
    }

    void commands_data()
    {
        addColumns<QString, bool>("key", "reloads");
        QTest::newRow("View") << "View" << true;
        QTest::newRow("New") << "New" << true;
        QTest::newRow("Reply: no reload") << "Reply" << false;
        QTest::newRow("Forward") << "Forward" << true;
    }

    // Each command opens its kind of message screen, and all but Reply read the
    // list again (a copy that came in meanwhile shows).
    void commands()
    {
        auto [key, reloads] = fetch<QString, bool>("key", "reloads");
        Fixture f;
        f.add("New");
        frmMsgsPreview* screen = shown();
        selectRows(screen, {0});
        f.add("New");
        screen->toolbarButton(key)->trigger();
        QCOMPARE(gstrMessageAction, key);
        QCOMPARE(screen->listMsgsPreview->topLevelItemCount(), reloads ? 2 : 1);
    }

    void helpAndEsc()
    {
        Fixture f;
        gRun.gstrHelpFile = "/opt/veskor/user.chm";
        frmMsgsPreview* screen = shown();
        screen->toolbarButton("Help")->trigger();
        QCOMPARE(f.gw.shell().calls, QStringList{"help /opt/veskor/user.chm 0"});
        QTest::keyClick(screen, Qt::Key_Escape);
        QVERIFY(!screen->isVisible());
        QCOMPARE(frmMsgsPreview::instance(), screen); // the one screen stays for the next show
    }

    // Ten thousand copies under New: one layout of the list, not one a row.
    void tenThousandCopies()
    {
        Fixture f;
        QVERIFY(
            f.site.rawExec("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 10000) "
                           "INSERT INTO MessagesTable (Category, SentFromName, SentToName, MessageOwner, MessageFrom, "
                           "MessageSubject, MessageBody, SentDateTimeNum, LastUsedDateTimeNum) "
                           "SELECT 'New', 'Bob Ray', 'Ann Lee', 'Ann Lee', 'Desk', 'Subject ' || i, "
                           "'A body that runs on past the thirty characters', 46348.5, 46348.5 FROM n"));
        frmMsgsPreview* screen = frmMsgsPreview::instance();
        screen->show();
        QElapsedTimer clock;
        clock.start();
        screen->Form_Load();
        const qint64 ms = clock.elapsed();
        QCOMPARE(screen->listMsgsPreview->topLevelItemCount(), 10000);
        qInfo("Preview of 10,000 copies loaded in %lld ms", ms);
        QVERIFY2(ms < 1000, qPrintable(QString::number(ms)));
    }

    // ---- Select Users

    void pickerIncludes_data()
    {
        // include: node keys, in turn
        addColumns<QString, QStringList, QStringList>("toLine", "include", "names");
        const auto row = [](const char* name, const char* toLine, const char* include, const char* names) {
            QTest::newRow(name) << toLine << QString(include).split(',', Qt::SkipEmptyParts)
                                << QString(names).split(',', Qt::SkipEmptyParts);
        };
        row("a given line, trimmed", "Cy Dee;  Bob Ray ", "", "Cy Dee,Bob Ray");
        row("two groups sharing a person: once", "", "Sales,Support", "Ann Lee,Bob Ray,Di Fox");
        row("a member already there", "Bob Ray", "Sales|Ann Lee,Support|Bob Ray", "Bob Ray,Ann Lee");
        row("Everyone, in name order", "", "Everyone", "Ann Lee,Bob Ray,Cy Dee,Di Fox");
        row("the root is not taken", "", "R", "");
    }

    void pickerIncludes()
    {
        auto [toLine, include, names] = fetch<QString, QStringList, QStringList>("toLine", "include", "names");
        Fixture f;
        f.site.group("Sales").group("Support").group("Empty");
        // Everyone is built from the people themselves, not from rows of its own.
        f.site.execute("INSERT INTO EmployeeGroupTable (GroupName, EmployeeName) VALUES (\"Everyone\", \"Cy Dee\")");
        f.site.member("Sales", "Bob Ray").member("Sales", "Ann Lee");
        f.site.member("Support", "Di Fox").member("Support", "Bob Ray");
        frmMessagesToSelection picker(nullptr, {});
        picker.initialize(toLine);
        for (const QString& key : include) {
            picker.tvAvailalbeUsers->setCurrentItem(node(picker.tvAvailalbeUsers, key));
            picker.cmdInclude->click();
        }
        QStringList got, groups;
        for (int i = 0; i < picker.lstIncludeOthers->count(); ++i) {
            got << picker.lstIncludeOthers->item(i)->text();
        }
        QCOMPARE(got, names);
        for (int g = 0; g < picker.tvAvailalbeUsers->topLevelItem(0)->childCount(); ++g) {
            groups << picker.tvAvailalbeUsers->topLevelItem(0)->child(g)->text(0);
        }
        QCOMPARE(groups, (QStringList{"Everyone", "Sales", "Support"}));
        QCOMPARE(picker.cmdInclude->isEnabled(), include.value(0) != "R");
        QCOMPARE(picker.cmdOK->isDefault(), !names.isEmpty());
        QCOMPARE(picker.cmdRemove->isEnabled(), !names.isEmpty());
    }

    void pickerDelivers_data()
    {
        addColumns<QString, int, bool, std::optional<QString>>("toLine", "removals", "escape", "delivered");
        QTest::newRow("OK as given") << "Bob Ray; Cy Dee" << 0 << false << std::optional<QString>("Bob Ray; Cy Dee");
        QTest::newRow("first removed") << "Bob Ray; Cy Dee" << 1 << false << std::optional<QString>("Cy Dee");
        QTest::newRow("all removed: an empty line") << "Bob Ray; Cy Dee" << 2 << false << std::optional<QString>("");
        QTest::newRow("Esc: nothing") << "Bob Ray" << 1 << true << std::optional<QString>();
    }

    void pickerDelivers()
    {
        auto [toLine, removals, escape, delivered] =
            fetch<QString, int, bool, std::optional<QString>>("toLine", "removals", "escape", "delivered");
        Fixture f;
        QWidget caller;
        std::optional<QString> got;
        MessagesToSelectionInitialize(&caller, toLine, [&got](const QString& line) { got = line; });
        QPointer<frmMessagesToSelection> picker = caller.findChild<frmMessagesToSelection*>();
        QVERIFY(picker && picker->isVisible());
        QCOMPARE(picker->windowTitle(), " VESK-OR Pro  - Select Users");
        for (int i = 0; i < removals; ++i) {
            picker->lstIncludeOthers->setCurrentRow(0);
            picker->cmdRemove->click();
        }
        QCOMPARE(picker->cmdOK->isDefault(), picker->lstIncludeOthers->count() > 0);
        if (escape) {
            QTest::keyClick(picker, Qt::Key_Escape);
        } else {
            QVERIFY(picker->cmdOK->isEnabled());
            picker->cmdOK->click();
        }
        QCOMPARE(got, delivered);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!picker); // unloaded, not only hidden
    }
};

QTEST_MAIN(TestMsgsPreview)
#include "tst_msgspreview.moc"
