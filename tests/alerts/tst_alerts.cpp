// The pop-up alerts offscreen: look, sound, place, the one per person, and their buttons.
#include "alerts/frmnewmessagesalert.h"
#include "alerts/frmstatuschangealert.h"
#include "alerts/modalerts.h"
#include "columns.h"
#include "kernel/globals.h"
#include "tempsite.h"
#include "testgateways.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTreeWidget>

namespace {

const QDateTime kSent(QDate(2026, 11, 22), QTime(9, 0));

frmNewMessagesAlert* messagePopUp(long long id = 1)
{
    return subPopUpForNewMessagesAlert("Subject", kSent, id, "Body");
}

frmStatusChangeAlert* statusPopUp(const QString& name = "Bob Ray", const QString& status = "Out")
{
    return subPopUpForStatusAlert(name, 46000.5, status);
}

// The pop-ups still shown, once the windows that were asked to go have gone.
template <class T> QList<T*> standing()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QList<T*> found;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* popUp = qobject_cast<T*>(window); popUp && popUp->isVisible()) {
            found << popUp;
        }
    }
    return found;
}

} // namespace

class TestAlerts : public QObject
{
    Q_OBJECT

    std::optional<TestGateways> gw;

private slots:
    void init()
    {
        gw.emplace();
    }
    void cleanup()
    {
        qDeleteAll(QApplication::topLevelWidgets());
        gw.reset(); // the run-wide values back at their start values too
        gblnShowPreviewFromAlert = false;
    }

    void opacity_data()
    {
        addColumns<int, bool, int>("transparency", "win2kPlus", "alpha");
        QTest::newRow("opaque") << 0 << true << 255;
        QTest::newRow("one step") << 1 << true << 252;
        QTest::newRow("229.5 to even") << 10 << true << 230;
        QTest::newRow("178.5 to even") << 30 << true << 178;
        QTest::newRow("127.5 to even") << 50 << true << 128;
        QTest::newRow("the end: 76.5 to even") << 70 << true << 76;
        QTest::newRow("older system: stays opaque") << 70 << false << 255;
    }

    void opacity()
    {
        auto [transparency, win2kPlus] = fetch<int, bool>("transparency", "win2kPlus");
        gRun.gblnWin2kPlus = win2kPlus;
        for (AlertPopUp* popUp : QList<AlertPopUp*>{messagePopUp(), statusPopUp()}) {
            QCOMPARE(popUp->windowOpacity(), 1.0); // opaque until the bar moves
            popUp->scrTransparancy->setValue(35);
            popUp->scrTransparancy->setValue(transparency);
            QTEST(qRound(popUp->windowOpacity() * 255), "alpha");
        }
    }

    // The fade timer ships stopped; each tick is one step, and the pop-up
    // unloads on reaching the end of the bar, not before.
    void fadeUnloadsAtTheEnd()
    {
        gRun.gblnWin2kPlus = true;
        AlertPopUp* popUp = statusPopUp();
        QVERIFY(!popUp->tmrFade.isActive());
        popUp->scrTransparancy->setValue(68);
        popUp->tmrFade_Timer();
        QCOMPARE(standing<AlertPopUp>().size(), 1);
        popUp->tmrFade_Timer();
        QCOMPARE(alerts::fnLastAlpha(), 76);
        QCOMPARE(standing<AlertPopUp>().size(), 0);
    }

    // Message pop-ups lie on one another a little right of and below the centre;
    // a status pop-up stands in the centre (within the frame the platform adds).
    // Each load plays its own chime from the program's folder, which the build fills.
    void placementAndChimes()
    {
        gRun.gstrApplicationPath = "/opt/veskor/";
        const QRectF screen = QGuiApplication::primaryScreen()->geometry();
        const auto offCentre = [&screen](const QWidget* popUp) {
            return QRectF(popUp->frameGeometry()).center() - screen.center();
        };
        const QPoint first = messagePopUp(1)->pos();
        QCOMPARE(messagePopUp(2)->pos(), first);
        const QPointF message = offCentre(messagePopUp(3));
        QVERIFY(message.x() >= 6 && message.y() >= 6);
        const QPointF status = offCentre(statusPopUp());
        QVERIFY(qAbs(status.x()) <= 3 && qAbs(status.y()) <= 3);
        const QString chime = "sound /opt/veskor/veskor-new-message.wav";
        QCOMPARE(gw->shell().calls, (QStringList{chime, chime, chime, "sound /opt/veskor/veskor-status-alert.wav"}));
        for (const char* wave : {"veskor-new-message.wav", "veskor-status-alert.wav"}) {
            QFile shipped(qEnvironmentVariable("VESKOR_TEST_BINARY_DIR") + "/src/start/" + wave);
            QVERIFY2(shipped.open(QIODevice::ReadOnly), qPrintable(shipped.fileName()));
            const QByteArray head = shipped.read(12);
            QVERIFY(head.startsWith("RIFF") && head.endsWith("WAVE"));
        }
    }

    void onePerPerson_data()
    {
        // changes: "name=status", in order; shown: "name=status" standing after, sorted
        addColumns<QStringList, QStringList>("changes", "shown");
        QTest::newRow("two people") << QStringList{"Ann=Out", "Bob=In"} << QStringList{"Ann=Out", "Bob=In"};
        QTest::newRow("newer replaces") << QStringList{"Ann=Out", "Bob=In", "Ann=Busy"}
                                        << QStringList{"Ann=Busy", "Bob=In"};
        QTest::newRow("a longer name is another person")
            << QStringList{"Ann Lee=Out", "Ann=In", "Ann=Busy"} << QStringList{"Ann Lee=Out", "Ann=Busy"};
    }

    void onePerPerson()
    {
        QFETCH(QStringList, changes);
        for (const QString& change : changes) {
            statusPopUp(change.section('=', 0, 0), change.section('=', 1));
            standing<frmStatusChangeAlert>();
        }
        QStringList now;
        for (frmStatusChangeAlert* popUp : standing<frmStatusChangeAlert>()) {
            now << popUp->txtTrackee->text() + "=" + popUp->txtStatus->text();
            QCOMPARE(popUp->windowTitle(),
                     " VESK-OR Pro  - Status Change Alert for [" + popUp->txtTrackee->text() + "] ");
        }
        now.sort();
        QTEST(now, "shown");
        QCOMPARE(gw->shell().calls.size(), changes.size()); // a replaced pop-up chimes again
    }

    void closeAll_data()
    {
        // button: on the last pop-up; "" calls Close ALL directly
        addColumns<int, int, int, QString>("messages", "statuses", "others", "button");
        QTest::newRow("statuses only, by button") << 0 << 4 << 0 << "cmdCloseAllSCA";
        QTest::newRow("a mix among other screens") << 2 << 3 << 2 << "";
        QTest::newRow("a mix, by a message's button") << 4 << 0 << 1 << "cmdCloseAllNMA";
    }

    // Every pop-up goes, other screens stay, and no pop-up's own unload work runs.
    void closeAll()
    {
        auto [messages, statuses, others, button] =
            fetch<int, int, int, QString>("messages", "statuses", "others", "button");
        QList<AlertPopUp*> popUps;
        for (int i = 1; i <= messages; ++i) {
            popUps << messagePopUp(i);
        }
        for (int i = 1; i <= statuses; ++i) {
            popUps << statusPopUp(QString("Person %1").arg(i));
        }
        for (int i = 0; i < others; ++i) {
            (new QWidget)->show();
        }
        int unloads = 0;
        for (AlertPopUp* popUp : popUps) {
            connect(popUp, &AlertPopUp::unloaded, [&unloads] { ++unloads; });
        }
        button.isEmpty() ? alerts::subCloseAllAlerts() : popUps.last()->findChild<QPushButton*>(button)->click();
        QCOMPARE(standing<AlertPopUp>().size(), 0);
        QCOMPARE(QApplication::topLevelWidgets().size(), others);
        QCOMPARE(unloads, 0);
    }

    void deleteMsg_data()
    {
        addColumns<int, QString, int, int>("answer", "category", "counter", "stays");
        QTest::newRow("Yes") << int(platform::vbYes) << "Deleted" << 2 << 0;
        QTest::newRow("No") << int(platform::vbNo) << "New" << 1 << 1;
    }

    // Yes moves this message, and only it, to "Deleted" and raises the counter.
    void deleteMsg()
    {
        QFETCH(int, answer);
        TempSite site;
        site.person("Ann Lee").person("Bob Ray").makeCurrent();
        const database::MessageRow row{.owner = "Ann Lee", .fromName = "Bob Ray", .toName = "Ann Lee"};
        const long long other = site.message(row);
        const long long id = site.message(row);
        gw->boxes().answer(answer);
        messagePopUp(id)->cmdDeleteMsg->click();
        QTEST(int(standing<frmNewMessagesAlert>().size()), "stays");
        const QString categoryOf = "SELECT Category FROM MessagesTable WHERE MessageID = %1";
        QTEST(site.value(categoryOf.arg(id)), "category");
        QCOMPARE(site.value(categoryOf.arg(other)), "New");
        QTEST(site.value("SELECT Counter FROM StatusCounterTable").toInt(), "counter");
    }

    // Delete Alert stops this person following the one shown, in the table and on
    // the board's list; other followers and followed people stay.
    void deleteStatusAlert()
    {
        TempSite site;
        site.person("Ann Lee").person("Bob Ray").person("Cy Dee").makeCurrent();
        site.tracking("Ann Lee", "Bob Ray").tracking("Ann Lee", "Cy Dee").tracking("Cy Dee", "Bob Ray");
        gRun.gstrDefaultUser = "Ann Lee";
        QWidget board;
        board.setObjectName("frmMain");
        auto* list = new QTreeWidget(&board);
        list->setObjectName("lstWhoAmITracking");
        list->addTopLevelItems({new QTreeWidgetItem({"Bob Ray"}), new QTreeWidgetItem({"Cy Dee"})});
        statusPopUp("Bob Ray")->cmdDeleteStatusAlert->click();
        QCOMPARE(site.value("SELECT Trackee FROM EmployeeStatusTracking WHERE Tracker = \"Ann Lee\""), "Cy Dee");
        QCOMPARE(site.value("SELECT Count(*) FROM EmployeeStatusTracking"), "2");
        QCOMPARE(list->topLevelItemCount(), 1);
        QCOMPARE(list->topLevelItem(0)->text(0), "Cy Dee");
        QCOMPARE(standing<frmStatusChangeAlert>().size(), 0);
    }
};

QTEST_MAIN(TestAlerts)
#include "tst_alerts.moc"
