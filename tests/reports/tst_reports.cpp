// The printed lists of a site, the mail to the selected people and the QUIL link.

#include "columns.h"
#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "privatebus.h"
#include "reports/modprint.h"
#include "reports/quillink.h"
#include "reports/sendmail.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTest>
#include <QTimer>

using namespace reports;

namespace {

// The board as these commands see it: the rows selected, read from the name's sub-item only.
struct SelectionScreen : MainScreen
{
    QStringList names;
    int nameSubItem = 1;
    int refreshes = 0;
    QStringList selectedRowTexts(int subItem) const override
    {
        return subItem == nameSubItem ? names : QStringList{QStringLiteral("wrong column")};
    }
    void subRefreshUserList(const QString&) override
    {
        ++refreshes;
    }
};

// QUIL on the bus: every call recorded as "Member(args)"; Poke refused when told.
struct FakeQuil : QDBusVirtualObject
{
    explicit FakeQuil(const QString& address, bool refusePoke) : m_bus(privateConnection(address)), m_refuse(refusePoke)
    {
        m_bus.registerVirtualObject(kQuilPath, this);
        m_bus.registerService(kQuilService);
    }
    ~FakeQuil() override
    {
        QDBusConnection::disconnectFromBus(m_bus.name());
    }
    QString introspect(const QString&) const override
    {
        return {};
    }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override
    {
        calls << call.member() + '(' + QVariant(call.arguments()).toStringList().join(',') + ')';
        const bool refuse = m_refuse && call.member() == QLatin1String("Poke");
        return bus.send(refuse ? call.createErrorReply(QDBusError::InvalidArgs, "No such item") : call.createReply());
    }
    QStringList calls;
    QDBusConnection m_bus;
    bool m_refuse;
};

} // namespace

class TestReports : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestGateways> m_gw;
    std::unique_ptr<TempSite> m_site;
    PrivateBus m_bus;
    SelectionScreen m_board;

private slots:
    void init()
    {
        m_gw = std::make_unique<TestGateways>();
        m_site = std::make_unique<TempSite>();
        m_site->makeCurrent();
        gRun.gstrDefaultUser = QStringLiteral("Ann Lee");
        gRun.gblnDatabaseClosed = true;
        m_site->person("Ann Lee", "alee", "1234").person("Bob Ray", "bray", "555-0100").person("Cy Dee", "cdee", "7");
        m_site->group("Sales").group("Empty").member("Sales", "Bob Ray").member("Sales", "Cy Dee");
        m_site->status("Ann Lee", {"In", "", "", "2026-11-22 09:00:00 by Ann Lee"})
            .status("Bob Ray", {"Out", "Tomorrow", "Dentist appointment across town", "2026-11-22 08:00:00 by Bob Ray"})
            .status("Cy Dee", {"Busy", "11:00", "Call", "2026-11-21 17:45:10 by Ann Lee"});
        m_board = SelectionScreen();
        setMainScreen(&m_board);
    }
    void cleanup()
    {
        setMainScreen(nullptr);
        TimerCloseDatabase().stop();
        gRun.gdbDatabase.reset();
        m_site.reset();
        m_gw.reset();
    }

    void reportLines_data()
    {
        // lines: heading, then the fields of each line between "|"
        addColumns<int, int, QString, QStringList>("type", "sort", "group", "lines");
        const QString everyone = " VESK-OR Pro  Status Listing (Everyone Group) 11/22/2026 9:30:00 AM";
        const QString names = "Name|Status|Phone|DueBack|Comments|Last Modified";
        const QString ann = "Ann Lee|In|1234|||2026-11-22 09:00:00 by Ann Lee";
        const QString bob = "Bob Ray|Out|555-0100|Tomorrow|Dentist appointment|2026-11-22 08:00:00 by Bob Ray";
        const QString cy = "Cy Dee|Busy|7|11:00|Call|2026-11-21 17:45:10 by Ann Lee";
        QTest::newRow("everyone by name, long comment cut")
            << 0 << 0 << "Everyone" << QStringList{everyone, names, ann, bob, cy};
        QTest::newRow("by status") << 0 << 1 << "Everyone" << QStringList{everyone, names, cy, ann, bob};
        QTest::newRow("group joined, its name as given")
            << 0 << 1 << "sales"
            << QStringList{" VESK-OR Pro  Status Listing (sales Group) 11/22/2026 9:30:00 AM", names, cy, bob};
        QTest::newRow("phone list, sorted by name")
            << 1 << 1 << "Sales"
            << QStringList{" VESK-OR Pro  Phone List (Sales Group) 11/22/2026 9:30:00 AM", "Name|Phone",
                           "Bob Ray|555-0100", "Cy Dee|7"};
        QTest::newRow("a wildcard group matches only itself") << 1 << 0 << "S*" << QStringList{};
        QTest::newRow("no members") << 0 << 0 << "Empty" << QStringList{};
    }

    // The heading, an empty line, then each field cut or padded to its width.
    void reportLines()
    {
        auto [type, sort, group, lines] = fetch<int, int, QString, QStringList>("type", "sort", "group", "lines");
        const QList<int> widths = type == StatusList ? QList<int>{29, 20, 20, 19, 19, 50} : QList<int>{40, 40};
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const QStringList texts = lines[i].split('|');
            lines[i].clear();
            for (qsizetype f = 0; f < widths.size(); ++f) {
                lines[i] += texts.value(f).leftJustified(widths[f]);
            }
        }
        if (!lines.isEmpty()) {
            lines.insert(1, QString());
        }
        QCOMPARE(fnReportLines(ReportType(type), ReportSort(sort), group), lines);
    }

    void mail_data()
    {
        addColumns<QStringList, int, QString>("selected", "nameColumn", "mailto");
        QTest::newRow("none") << QStringList{} << 0 << "mailto:";
        QTest::newRow("one, column 0 reads sub-item 1") << QStringList{" Bob Ray "} << 0 << "mailto:Bob Ray";
        QTest::newRow("three, name column moved")
            << QStringList{"Ann Lee", "Bob Ray", "Cy Dee"} << 3 << "mailto:Ann Lee; Bob Ray; Cy Dee";
    }

    // One mailto text to the shell, the names from the name column.
    void mail()
    {
        auto [selected, nameColumn, mailto] = fetch<QStringList, int, QString>("selected", "nameColumn", "mailto");
        m_board.names = selected;
        m_board.nameSubItem = nameColumn == 0 ? 1 : nameColumn;
        gBoard.gintNameColumn = nameColumn;
        subSendMail();
        QCOMPARE(m_gw->shell().calls, QStringList{"url " + mailto});
    }

    void quil_data()
    {
        // boxes: the title of the first, then the prompts
        addColumns<bool, bool, QStringList, QStringList>("running", "refusePoke", "selected", "boxes");
        const QString gone = "Sorry, 'QUIL' is no longer running. Please select the QUIL icon from Program Manager "
                             "or Start Menu.";
        const QString justOne = "Please select just ONE person when sending a QUIL message. Additional users should "
                                "be selected from within QUIL itself.";
        const QString refused = "Error (285 ) in frmMain - subSendQUILMessage event\rNo such item";
        QTest::newRow("not running") << false << false << QStringList{"Cy Dee"}
                                     << QStringList{"QUIL Unavailable", gone};
        QTest::newRow("two selected: warned, the last one taken")
            << true << false << QStringList{"Bob Ray", "Cy Dee"} << QStringList{"", justOne};
        QTest::newRow("items refused: one box") << true << true << QStringList{"Cy Dee"} << QStringList{"", refused};
    }

    // QUIL found by its name on the bus, raised, and handed the name and the operator in order.
    void quil()
    {
        auto [running, refusePoke, selected, boxes] =
            fetch<bool, bool, QStringList, QStringList>("running", "refusePoke", "selected", "boxes");
        QVERIFY(!m_bus.address().isEmpty());
        auto quil = running ? std::make_unique<FakeQuil>(m_bus.address(), refusePoke) : nullptr;
        m_board.names = selected;
        gBoard.gintNameColumn = 0;
        m_gw->boxes().answer(platform::vbOK, int(boxes.size() - 1));
        QuilLink link(privateConnection(m_bus.address()));
        QList<bool> shown;
        subSendQUILMessage(link, [&](bool on) { shown << on; });
        QCOMPARE(shown, QList<bool>{running});
        QCOMPARE(m_board.refreshes, int(running));
        if (quil) {
            QTRY_COMPARE(quil->calls, (QStringList{"Raise()", "Create()", "Clear()", "Poke(To,Cy Dee)",
                                                   "Poke(Operator,Ann Lee)", "OpenMessageScreen()"}));
        }
        QTRY_COMPARE(m_gw->boxes().prompts(), boxes.mid(1));
        QTest::qWait(50); // and no second box for the steps that failed after the first
        QCOMPARE(m_gw->boxes().count(), boxes.size() - 1);
        QCOMPARE(m_gw->boxes().shown().first().title, boxes.first());
    }
};

QTEST_MAIN(TestReports)
#include "tst_reports.moc"
