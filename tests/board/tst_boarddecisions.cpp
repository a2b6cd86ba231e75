// The board's decisions without a screen: rights, refresh, columns and twips.
#include "board/columnlayout.h"
#include "board/refreshplan.h"
#include "board/toolbarrights.h"
#include "board/twips.h"
#include "columns.h"
#include "dao/dao.h"
#include "tempsite.h"

#include <QTest>

using namespace rights;
using LongList = QList<long long>;

namespace {

// A button's state after every right for it was applied in order: "on"/"off", "shown"/"hidden".
QString stateOf(const QList<ButtonRight>& states, int position)
{
    std::optional<bool> enabled;
    std::optional<bool> visible;
    for (const ButtonRight& right : states) {
        if (right.position == position) {
            enabled = right.enabled ? right.enabled : enabled;
            visible = right.visible ? right.visible : visible;
        }
    }
    const QString on = enabled ? (*enabled ? "on" : "off") : "";
    return (on + " " + (visible ? (*visible ? "shown" : "hidden") : "")).trimmed();
}

} // namespace

class TestBoardDecisions : public QObject
{
    Q_OBJECT

private slots:
    void changeOthers_data()
    {
        // held: the membership asked for is held
        addColumns<int, int, QString, bool, int, bool>("system", "user", "group", "held", "test", "allowed");
        const int granted = int(Test::Granted), refused = int(Test::Refused);
        const int member = int(Test::Member), manager = int(Test::Manager);
        QTest::newRow("LOW, LOW") << 0 << 0 << "Sales" << false << granted << true;
        QTest::newRow("MEDIUM, LOW, member") << 1 << 0 << "Sales" << true << member << true;
        QTest::newRow("MEDIUM, MEDIUM, no member") << 1 << 1 << "Sales" << false << member << false;
        QTest::newRow("MEDIUM, HIGH") << 1 << 2 << "Sales" << false << granted << true;
        QTest::newRow("HIGH, LOW") << 2 << 0 << "Sales" << true << refused << false;
        QTest::newRow("HIGH, MEDIUM, no manager") << 2 << 1 << "Sales" << false << manager << false;
        QTest::newRow("HIGH, MEDIUM, manager") << 2 << 1 << "Sales" << true << manager << true;
        QTest::newRow("HIGH, HIGH") << 2 << 2 << "Sales" << false << granted << true;
        QTest::newRow("HIGH, LOW, open to all") << 2 << 0 << "Sales*" << false << refused << true;
        QTest::newRow("* in the middle") << 2 << 0 << "Sa*les" << false << refused << false;
        QTest::newRow("* first") << 2 << 0 << "*Sales" << false << refused << false;
        QTest::newRow("system level out of range") << 3 << 2 << "Sales" << true << refused << false;
        QTest::newRow("MEDIUM, user out of range") << 1 << 5 << "Sales" << true << refused << false;
        QTest::newRow("MEDIUM, user below range") << 1 << -1 << "Sales" << true << refused << false;
    }
    void changeOthers()
    {
        auto [system, user, group, held, test] =
            fetch<int, int, QString, bool, int>("system", "user", "group", "held", "test");
        QCOMPARE(int(changeOthersTest(system, user)), test);
        QTEST(mayChangeOthers(Test(test), held, group), "allowed");
    }

    void otherButtons_data()
    {
        // site: the facts that hold: remote, servers, row, messaging, waiting; states:
        // Servers|Home|Change|Options|Out|In|New Message|Preview
        addColumns<QString, int, QString>("site", "userLevel", "states");
        const auto row = [](const char* name, const char* site, int userLevel, const char* states) {
            QTest::newRow(name) << site << userLevel << states;
        };
        row("home, no servers", "row", 0, "off hidden|off hidden|on|on|shown|shown|hidden|hidden");
        row("home, servers, messages waiting", "servers row messaging waiting", 0,
            "on shown|off hidden|on|on|shown|shown|shown|on shown");
        row("remote, own row, no messages", "remote servers row messaging", 0,
            "off hidden|on shown|on|off|shown|shown|shown|off shown");
        row("remote guest", "remote servers waiting", 1, "off hidden|on shown|off|off|hidden|hidden|hidden|hidden");
        row("remote, no row but HIGH", "remote", 2, "off hidden|on shown|on|off|shown|shown|hidden|hidden");
    }
    void otherButtons()
    {
        auto [site, userLevel] = fetch<QString, int>("site", "userLevel");
        const QStringList facts = site.split(QLatin1Char(' '));
        const QList<ButtonRight> rights =
            rights::otherButtons({facts.contains("remote"), facts.contains("servers"), facts.contains("row"), userLevel,
                                  facts.contains("messaging"), facts.contains("waiting")});
        QStringList states;
        for (int position : {5, 6, 2, 11, 15, 17, 7, 8}) {
            states << stateOf(rights, position);
        }
        QTEST(states.join(QLatin1Char('|')), "states");
        QCOMPARE(stateOf(rights, btnGroup), QString()); // the right to change others is decided apart
    }

    void refreshPlan_data()
    {
        // read: Counter, GroupCounter, ExtraColumnsCounter
        addColumns<QString, LongList, bool, bool, bool>("group", "read", "columnsChanged", "rebuild",
                                                        "takeExtraColumns");
        // The last rebuild showed Sales with the counters 5, 2, 1.
        QTest::newRow("nothing changed") << "Sales" << LongList{5, 2, 1} << false << false << false;
        QTest::newRow("another group") << "Everyone" << LongList{5, 2, 1} << false << true << false;
        QTest::newRow("Counter rose") << "Sales" << LongList{6, 2, 1} << false << true << false;
        QTest::newRow("a failed poll zeroed them") << "Sales" << LongList{0, 0, 0} << false << true << true;
        QTest::newRow("GroupCounter differs") << "Sales" << LongList{5, 3, 1} << false << true << false;
        QTest::newRow("extra columns") << "Sales" << LongList{5, 2, 2} << false << true << true;
        QTest::newRow("a column moved") << "Sales" << LongList{5, 2, 1} << true << true << false;
    }
    void refreshPlan()
    {
        auto [group, read, columnsChanged] = fetch<QString, LongList, bool>("group", "read", "columnsChanged");
        const refresh::Plan plan =
            refresh::plan({group, "Sales", {read[0], read[1], read[2]}, {5, 2, 1}, columnsChanged});
        QTEST(plan.rebuild, "rebuild");
        QTEST(plan.takeExtraColumns, "takeExtraColumns");
    }

    void countdownTick_data()
    {
        // rate: minutes; outcome: the timer stops, counts, or counts and refreshes
        addColumns<long long, long long, bool, QString, long long>("rate", "before", "minimized", "outcome", "after");
        QTest::newRow("off") << 0LL << 5LL << false << "stop" << 5LL;
        QTest::newRow("counting") << 1LL << 2LL << false << "count" << 1LL;
        QTest::newRow("run out") << 1LL << 1LL << false << "refresh" << 60LL;
        QTest::newRow("run out, minimized") << 2LL << 1LL << true << "count" << 120LL;
        QTest::newRow("below 0") << 1LL << -3LL << false << "refresh" << 60LL;
        QTest::newRow("a rate past 16 bits") << 600LL << 1LL << false << "refresh" << 36000LL;
    }
    void countdownTick()
    {
        auto [rate, before, minimized, after] =
            fetch<long long, long long, bool, long long>("rate", "before", "minimized", "after");
        const refresh::Tick tick = refresh::tick(rate, before, minimized);
        QTEST(QString::fromLatin1(tick.stopTimer ? "stop" : tick.refresh ? "refresh" : "count"), "outcome");
        QCOMPARE(tick.countDown, after);
        QCOMPARE(tick.panelText, tick.stopTimer ? QString() : QStringLiteral("Next refresh in %1 ").arg(after));
    }

    // The saved layout read from a settings row and made into headers with their widths.
    void headersOfTheSettingsRow_data()
    {
        addColumns<QString, QStringList>("settings", "headers");
        const auto row = [](const char* name, const char* settings, const char* headers) {
            QTest::newRow(name) << settings << QString(headers).split(' ');
        };
        row("as made", "NameColumnWidth = 2000",
            "Status:107 Name:133 Phone:100 DueBack:120 Comments:200 LastModified:253");
        // The gap it leaves shifts the widths of the headers after it.
        row("an order past the columns goes last", "PhoneColumnOrder = 1000000000000",
            "Status:107 Name:133 DueBack:0 Comments:120 LastModified:200 Phone:253");
        row("Status moved: the widths shift", "StatusColumnOrder = 3, PhoneColumnOrder = 1",
            "Status:100 Phone:133 Name:107 DueBack:120 Comments:200 LastModified:253");
    }
    void headersOfTheSettingsRow()
    {
        QFETCH(QString, settings);
        TempSite site;
        site.person("Ann Lee");
        site.execute(QStringLiteral("UPDATE EmployeeSettingsTable SET %1").arg(settings));
        auto row = site.openDb()->OpenRecordset("SELECT * FROM EmployeeSettingsTable");
        QStringList headers;
        for (const ColumnLayout::Header& header : ColumnLayout::read(*row).headers()) {
            headers << header.caption + ":" + (header.width ? QString::number(header.width->pixels()) : "-");
        }
        QTEST(headers, "headers");
    }

    void columnRules()
    {
        const QStringList captions = {"Status", "Name", "Phone", "Comments"};
        QCOMPARE(columns::fillColumn(captions, 2), 3);
        QCOMPARE(columns::fillColumn(captions.mid(0, 3), 2), 2);
        QCOMPARE(columns::fillWidth(100, 800, 500), 300);
        QCOMPARE(columns::fillWidth(400, 800, 500), 400);
        QCOMPARE(columns::statusPlace(2, 4), std::optional(2));
        QCOMPARE(columns::statusPlace(QVariant(), 4), std::nullopt);
        QCOMPARE(columns::statusPlace(0, 4), std::nullopt);
        QCOMPARE(columns::statusPlace(5, 4), std::nullopt);
        QCOMPARE(columns::sortColumn(captions, "Phone", 0).key, 2);
        QCOMPARE(columns::sortColumn(captions, "Dropped", 3).key, 3); // kept as saved
        QCOMPARE(columns::sortColumn(captions, "Dropped", 9).key, 0); // past the columns
        QCOMPARE(columns::orderAfterClick(1, 1, 0), 1);               // the same column flips
        QCOMPARE(columns::orderAfterClick(1, 1, 1), 0);
        QCOMPARE(columns::orderAfterClick(2, 1, 1), 1); // another keeps the order
    }

    void find_data()
    {
        addColumns<QString, QString, bool>("value", "typed", "found");
        const auto row = [](const char* name, const char* value, const char* typed, bool found) {
            QTest::newRow(name) << value << typed << found;
        };
        row("prefix, any case", "Bob Ray", "bO", true);
        row("not a prefix", "Bob Ray", "Ray", false);
        row("a trailing blank counts", "Ann Lee", "Ann ", true);
        row("two do not match", "Ann Lee", "Ann  ", false);
        row("a blank cell", "", "A", false);
        row("longer than the value", "Bo", "Bob", false);
    }
    void find()
    {
        auto [value, typed] = fetch<QString, QString>("value", "typed");
        QTEST(columns::findMatches(value, typed), "found");
    }

    // A snapshot of three columns after a rebuild of `rows` rows, compared with
    // the columns as they are now.
    void columnSnapshot_data()
    {
        addColumns<int, LongList, LongList, bool>("rows", "places", "widths", "differs");
        QTest::newRow("unchanged") << 3 << LongList{1, 2, 3} << LongList{900, 1500, 3000} << false;
        QTest::newRow("moved") << 3 << LongList{2, 1, 3} << LongList{900, 1500, 3000} << true;
        QTest::newRow("resized") << 3 << LongList{1, 2, 3} << LongList{900, 1800, 3000} << true;
        QTest::newRow("one row: not looked at") << 1 << LongList{2, 1, 3} << LongList{60, 60, 60} << false;
        QTest::newRow("past rows - 1: not looked at") << 3 << LongList{1, 2, 3} << LongList{900, 1500, 60} << false;
        QTest::newRow("a column fewer") << 3 << LongList{1} << LongList{900} << false;
    }
    void columnSnapshot()
    {
        auto [rows, places, widths] = fetch<int, LongList, LongList>("rows", "places", "widths");
        const auto snapshot = columns::Snapshot::take(rows, {1, 2, 3}, {900, 1500, 3000});
        QTEST(snapshot.differs(rows, places, widths), "differs");
    }

    void twips_data()
    {
        addColumns<long long, int>("twips", "pixels");
        QTest::newRow("none") << 0LL << 0;
        QTest::newRow("one pixel") << 15LL << 1;
        QTest::newRow("rounds down") << 22LL << 1;
        QTest::newRow("rounds up") << 23LL << 2;
        QTest::newRow("negative") << -23LL << -2;
        QTest::newRow("a saved width") << 1500LL << 100;
    }
    void twips()
    {
        QFETCH(long long, twips);
        QTEST(Twips(twips).pixels(), "pixels");
        QCOMPARE(Twips::fromPixels(Twips(twips).pixels()).value(), Twips(twips).pixels() * 15LL);
        const QRect place(int(twips), 30, 1500, 23); // a window's place and size, in twips
        QCOMPARE(pixelsOf(place), QRect(Twips(twips).pixels(), 2, 100, 2));
        QCOMPARE(twipsOf(pixelsOf(place)), QRect(Twips(twips).pixels() * 15, 30, 1500, 30));
    }

    // A splitter held between its limits; when they cross the maximum wins.
    void splitterLimits()
    {
        const Twips min(1000), max(5000);
        QCOMPARE(heldBetween(Twips(2400), min, max), Twips(2400));
        QCOMPARE(heldBetween(Twips(15), min, max), min);
        QCOMPARE(heldBetween(Twips(90000), min, max), max);
        QCOMPARE(heldBetween(Twips(3000), max, min), min);
    }
};

QTEST_GUILESS_MAIN(TestBoardDecisions)
#include "tst_boarddecisions.moc"
