// The printed lists of a site, the mail to the selected people and the QUIL link.

#include "database/moddatabase.h"
#include "kernel/globals.h"
#include "kernel/mainscreen.h"
#include "privatebus.h"
#include "reports/frmprint.h"
#include "reports/modprint.h"
#include "reports/quillink.h"
#include "reports/sendmail.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QComboBox>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

using namespace reports;

namespace {

// The line cut at the fields' widths, each field's trailing blanks dropped, joined
// by "|"; "<length n>" when the line is not exactly the sum of the widths long.
QString cells(const QString& line, const QList<int>& widths)
{
    QStringList parts;
    qsizetype at = 0;
    for (int width : widths) {
        QString part = line.mid(at, width);
        while (part.endsWith(QLatin1Char(' '))) {
            part.chop(1);
        }
        parts << part;
        at += width;
    }
    return at == line.size() ? parts.join(QLatin1Char('|')) : QStringLiteral("<length %1>").arg(line.size());
}

// The board as these commands see it: the rows selected, by the sub-item asked for.
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
class FakeQuil : public QDBusVirtualObject
{
public:
    explicit FakeQuil(const QString& address) : m_bus(privateConnection(address))
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
        QStringList arguments;
        for (const QVariant& a : call.arguments()) {
            arguments << a.toString();
        }
        calls << call.member() + '(' + arguments.join(',') + ')';
        const bool refuse = refusePoke && call.member() == QLatin1String("Poke");
        bus.send(refuse ? call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such item"))
                        : call.createReply());
        return true;
    }
    QStringList calls;
    bool refusePoke = false;

private:
    QDBusConnection m_bus;
};

} // namespace

class TestReports : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestGateways> m_gw;
    std::unique_ptr<TempSite> m_site;
    PrivateBus m_bus;

private slots:
    void init()
    {
        m_gw = std::make_unique<TestGateways>();
        m_site = std::make_unique<TempSite>();
        m_site->makeCurrent();
        gRun.gstrDefaultUser = QStringLiteral("Ann Lee");
        gRun.gblnDatabaseClosed = true;
        m_site->person("Ann Lee", "alee", "1234")
            .person("Bob Ray", "bray", "555-0100")
            .person("Cy Dee", "cdee", "7")
            .group("Sales")
            .group("Empty")
            .member("Sales", "Bob Ray")
            .member("Sales", "Cy Dee")
            .status("Ann Lee", {"In", "", "", "2026-11-22 09:00:00 by Ann Lee"})
            .status("Bob Ray", {"Out", "Tomorrow", "Dentist appointment across town", "2026-11-22 08:00:00 by Bob Ray"})
            .status("Cy Dee", {"Busy", "11:00", "Call", "2026-11-21 17:45:10 by Ann Lee"});
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
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("sort");
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("heading");  // after the program's title, before the date
        QTest::addColumn<QStringList>("body"); // the column heading and the rows, as cells()
        const QString names = "Name|Status|Phone|DueBack|Comments|Last Modified";
        const QString ann = "Ann Lee|In|1234|||2026-11-22 09:00:00 by Ann Lee";
        const QString bob = "Bob Ray|Out|555-0100|Tomorrow|Dentist appointment|2026-11-22 08:00:00 by Bob Ray";
        const QString cy = "Cy Dee|Busy|7|11:00|Call|2026-11-21 17:45:10 by Ann Lee";
        QTest::newRow("status, everyone, by name, long comment cut")
            << 0 << 0 << "Everyone"
            << " Status Listing (Everyone Group) " << QStringList{names, ann, bob, cy};
        QTest::newRow("status by status") << 0 << 1 << "Everyone"
                                          << " Status Listing (Everyone Group) " << QStringList{names, cy, ann, bob};
        QTest::newRow("status, group joined") << 0 << 1 << "sales"
                                              << " Status Listing (sales Group) " << QStringList{names, cy, bob};
        QTest::newRow("phone list ignores the sort")
            << 1 << 1 << "Sales"
            << " Phone List (Sales Group) " << QStringList{"Name|Phone", "Bob Ray|555-0100", "Cy Dee|7"};
        QTest::newRow("group wildcard matches only itself") << 1 << 0 << "S*"
                                                            << "" << QStringList{};
        QTest::newRow("empty group") << 0 << 0 << "Empty"
                                     << "" << QStringList{};
    }

    // Heading, empty line, column heading and rows, each field cut or padded to its width.
    void reportLines()
    {
        QFETCH(int, type);
        QFETCH(int, sort);
        QFETCH(QString, group);
        QFETCH(QString, heading);
        QFETCH(QStringList, body);
        const QStringList lines = fnReportLines(ReportType(type), ReportSort(sort), group);
        if (body.isEmpty()) {
            QCOMPARE(lines, QStringList());
            return;
        }
        QCOMPARE(lines.value(0), " VESK-OR Pro " + heading + "11/22/2026 9:30:00 AM");
        QCOMPARE(lines.value(1), QString());
        const QList<int> widths = type == StatusList ? QList<int>{29, 20, 20, 19, 19, 50} : QList<int>{40, 40};
        QStringList shown;
        for (const QString& line : lines.mid(2)) {
            shown << cells(line, widths);
        }
        QCOMPARE(shown, body);
    }

    void saveAsPdf_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<bool>("written");
        QTest::newRow("members") << "Sales" << true;
        QTest::newRow("no members: the box, no file") << "Empty" << false;
    }

    // The screen's groups from the site, the group shown chosen, the report into a PDF file.
    void saveAsPdf()
    {
        QFETCH(QString, group);
        QFETCH(bool, written);
        gRun.gstrCurrentGroup = group;
        frmPrint print;
        print.Form_Load();
        QCOMPARE(print.ComboGroups->currentText(), group);
        print.OptionPrintReportType[PhoneList]->setChecked(true);
        QVERIFY(!print.OptionSort[SortByStatus]->isEnabled());
        m_gw->boxes().answer(platform::vbOK, written ? 0 : 1);
        const QString file = m_site->path() + "report.pdf";
        QCOMPARE(print.subSaveReport(file), written);
        QFile pdf(file);
        QCOMPARE(pdf.open(QIODevice::ReadOnly) && pdf.read(5) == "%PDF-", written);
        QCOMPARE(m_gw->boxes().prompts(),
                 written ? QStringList() : QStringList{"No members have been assigned to that Group yet."});
    }

    void mail_data()
    {
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<int>("nameColumn");
        QTest::addColumn<QString>("mailto");
        QTest::newRow("none") << QStringList{} << 0 << "mailto:";
        QTest::newRow("one, name column 0 reads sub-item 1") << QStringList{" Bob Ray "} << 0 << "mailto:Bob Ray";
        QTest::newRow("three, name column moved")
            << QStringList{"Ann Lee", "Bob Ray", "Cy Dee"} << 3 << "mailto:Ann Lee; Bob Ray; Cy Dee";
    }

    // One mailto text to the shell; a desktop that cannot open it gives the box.
    void mail()
    {
        QFETCH(QStringList, selected);
        QFETCH(int, nameColumn);
        QFETCH(QString, mailto);
        SelectionScreen board;
        board.names = selected;
        board.nameSubItem = nameColumn == 0 ? 1 : nameColumn;
        gBoard.gintNameColumn = nameColumn;
        setMainScreen(&board);
        subSendMail();
        QCOMPARE(m_gw->shell().calls, QStringList{"url " + mailto});
        m_gw->shell().result = false;
        m_gw->boxes().answer(platform::vbOK);
        subSendMail();
        QVERIFY(m_gw->boxes().last().prompt.startsWith("Email Error "));
        QVERIFY(m_gw->boxes().last().prompt.endsWith(" - Press OK to continue."));
    }

    void quil_data()
    {
        QTest::addColumn<bool>("running");
        QTest::addColumn<bool>("refusePoke");
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<QStringList>("calls");
        QTest::addColumn<QStringList>("boxes");
        const QStringList started{
            "Raise()", "Create()", "Clear()", "Poke(To,Cy Dee)", "Poke(Operator,Ann Lee)", "OpenMessageScreen()"};
        const QString gone = "Sorry, 'QUIL' is no longer running. Please select the QUIL icon from Program Manager "
                             "or Start Menu.";
        const QString justOne = "Please select just ONE person when sending a QUIL message. Additional users should "
                                "be selected from within QUIL itself.";
        QTest::newRow("not running") << false << false << QStringList{"Cy Dee"} << QStringList{} << QStringList{gone};
        QTest::newRow("one selected") << true << false << QStringList{"Cy Dee"} << started << QStringList{};
        QTest::newRow("two selected: warned, the last one taken")
            << true << false << QStringList{"Bob Ray", "Cy Dee"} << started << QStringList{justOne};
        QTest::newRow("items refused: one box")
            << true << true << QStringList{"Cy Dee"} << started
            << QStringList{"Error (285 ) in frmMain - subSendQUILMessage event\rNo such item"};
    }

    // QUIL found by its name on the bus, handed the name and the operator in order.
    void quil()
    {
        QFETCH(bool, running);
        QFETCH(bool, refusePoke);
        QFETCH(QStringList, selected);
        QFETCH(QStringList, calls);
        QFETCH(QStringList, boxes);
        if (m_bus.address().isEmpty()) {
            QSKIP("dbus-daemon cannot start here");
        }
        std::unique_ptr<FakeQuil> quil = running ? std::make_unique<FakeQuil>(m_bus.address()) : nullptr;
        if (quil) {
            quil->refusePoke = refusePoke;
        }
        SelectionScreen board;
        board.names = selected;
        gBoard.gintNameColumn = 0;
        setMainScreen(&board);
        m_gw->boxes().answer(platform::vbOK, int(boxes.size()));
        QuilLink link(privateConnection(m_bus.address()));
        QList<bool> shown;
        subSendQUILMessage(link, [&](bool on) { shown << on; });
        QCOMPARE(shown, QList<bool>{running});
        QCOMPARE(board.refreshes, running ? 1 : 0);
        if (quil) {
            QTRY_COMPARE(quil->calls, calls);
        }
        QTRY_COMPARE(m_gw->boxes().prompts(), boxes);
        QTest::qWait(50);
        QCOMPARE(m_gw->boxes().count(), boxes.size());
        if (!boxes.isEmpty() && !running) {
            QCOMPARE(m_gw->boxes().last().title, "QUIL Unavailable");
        }
    }

    // The command follows QUIL coming onto the bus and leaving it.
    void quilWatched()
    {
        if (m_bus.address().isEmpty()) {
            QSKIP("dbus-daemon cannot start here");
        }
        QObject context;
        QList<bool> shown;
        QuilLink(privateConnection(m_bus.address())).watch(&context, [&](bool on) { shown << on; });
        QTRY_COMPARE(shown, QList<bool>{false});
        auto quil = std::make_unique<FakeQuil>(m_bus.address());
        QTRY_COMPARE(shown, (QList<bool>{false, true}));
        quil.reset();
        QTRY_COMPARE(shown, (QList<bool>{false, true, false}));
    }
};

QTEST_MAIN(TestReports)
#include "tst_reports.moc"
