// The pop-up alerts offscreen: the see-through rule of their scroll bar, the
// sounds they play, where they stand, one status pop-up per person, and Close
// ALL over a mix of windows.
#include "alerts/frmnewmessagesalert.h"
#include "alerts/frmstatuschangealert.h"
#include "alerts/modalerts.h"
#include "kernel/globals.h"
#include "testgateways.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

namespace {

// Lets the windows that were asked to go actually go.
void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

template <class T> QList<T*> standing()
{
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

private slots:
    void cleanup()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            delete window;
        }
        gRun = RunState();
    }

    void opacity_data()
    {
        QTest::addColumn<int>("transparency");
        QTest::addColumn<bool>("win2kPlus");
        QTest::addColumn<int>("alpha");
        QTest::newRow("opaque") << 0 << true << 255;
        QTest::newRow("one step") << 1 << true << 252;
        QTest::newRow("229.5 to even") << 10 << true << 230;
        QTest::newRow("178.5 to even") << 30 << true << 178;
        QTest::newRow("127.5 to even") << 50 << true << 128;
        QTest::newRow("one short of the end") << 69 << true << 79;
        QTest::newRow("the end: 76.5 to even") << 70 << true << 76;
        QTest::newRow("older system: stays opaque") << 70 << false << 255;
    }

    void opacity()
    {
        QFETCH(int, transparency);
        QFETCH(bool, win2kPlus);
        QFETCH(int, alpha);
        TestGateways gw;
        gRun.gblnWin2kPlus = win2kPlus;
        for (AlertPopUp* popUp : QList<AlertPopUp*>{subPopUpForNewMessagesAlert("S", gw.clock().now(), 1, "B"),
                                                    subPopUpForStatusAlert("Ann Lee", 46000.5, "Out")}) {
            QCOMPARE(popUp->windowOpacity(), 1.0); // opaque until the bar moves
            popUp->scrTransparancy->setValue(35);
            popUp->scrTransparancy->setValue(transparency);
            QCOMPARE(qRound(popUp->windowOpacity() * 255), alpha);
            QCOMPARE(popUp->isVisible(), true);
        }
    }

    // The fade timer ships stopped; once running, each tick is one step and the
    // pop-up unloads on reaching the end of the bar, not before.
    void fadeUnloadsAtTheEnd()
    {
        TestGateways gw;
        gRun.gblnWin2kPlus = true;
        auto* popUp = subPopUpForStatusAlert("Ann Lee", 46000.5, "Out");
        QVERIFY(!popUp->tmrFade.isActive());
        QCOMPARE(popUp->tmrFade.interval(), 25);
        QSignalSpy unloaded(popUp, &AlertPopUp::unloaded);
        popUp->scrTransparancy->setValue(68);
        popUp->tmrFade_Timer();
        QCOMPARE(unloaded.count(), 0);
        QCOMPARE(alerts::fnLastAlpha(), 79);
        popUp->tmrFade_Timer();
        QCOMPARE(unloaded.count(), 1);
        QCOMPARE(alerts::fnLastAlpha(), 76);
    }

    void sound_data()
    {
        QTest::addColumn<bool>("message");
        QTest::addColumn<QString>("wave");
        QTest::newRow("message") << true << "veskor-new-message.wav";
        QTest::newRow("status") << false << "veskor-status-alert.wav";
    }

    // Each load plays its own chime from the program's folder, which the build fills.
    void sound()
    {
        QFETCH(bool, message);
        QFETCH(QString, wave);
        TestGateways gw;
        gRun.gstrApplicationPath = "/opt/veskor/";
        message ? static_cast<QWidget*>(subPopUpForNewMessagesAlert("S", gw.clock().now(), 7, "B"))
                : subPopUpForStatusAlert("Ann Lee", 46000.5, "Out");
        QCOMPARE(gw.shell().calls, QStringList{"sound /opt/veskor/" + wave});

        QFile shipped(qEnvironmentVariable("VESKOR_TEST_BINARY_DIR") + "/src/start/" + wave);
        QVERIFY2(shipped.open(QIODevice::ReadOnly), qPrintable(shipped.fileName()));
        const QByteArray head = shipped.read(12);
        QVERIFY(head.startsWith("RIFF") && head.endsWith("WAVE"));
    }

    // Message pop-ups lie on one another a little right of and below the centre;
    // a status pop-up stands in the centre.
    void placement()
    {
        TestGateways gw;
        const QRectF screen = QGuiApplication::primaryScreen()->geometry();
        const auto offCentre = [&screen](const QWidget* popUp) {
            return QRectF(popUp->frameGeometry()).center() - screen.center();
        };
        QList<QPoint> messages;
        for (int id = 1; id <= 3; ++id) {
            messages << subPopUpForNewMessagesAlert("S", gw.clock().now(), id, "B")->pos();
        }
        QCOMPARE(messages[1], messages[0]);
        QCOMPARE(messages[2], messages[0]);
        const QPointF message = offCentre(standing<frmNewMessagesAlert>().first());
        // Within the few pixels of a window frame that the platform adds once shown.
        QVERIFY(message.x() >= 6 && message.y() >= 6);
        const QPointF status = offCentre(subPopUpForStatusAlert("Ann Lee", 46000.5, "Out"));
        QVERIFY(qAbs(status.x()) <= 3 && qAbs(status.y()) <= 3);
    }

    void onePerPerson_data()
    {
        QTest::addColumn<QStringList>("changes"); // "name=status", in order
        QTest::addColumn<QStringList>("shown");   // "name=status" standing after, sorted
        QTest::newRow("two people") << QStringList{"Ann=Out", "Bob=In"} << QStringList{"Ann=Out", "Bob=In"};
        QTest::newRow("newer replaces") << QStringList{"Ann=Out", "Bob=In", "Ann=Busy"}
                                        << QStringList{"Ann=Busy", "Bob=In"};
        QTest::newRow("a longer name is another person")
            << QStringList{"Ann Lee=Out", "Ann=In", "Ann=Busy"} << QStringList{"Ann Lee=Out", "Ann=Busy"};
    }

    void onePerPerson()
    {
        QFETCH(QStringList, changes);
        QFETCH(QStringList, shown);
        TestGateways gw;
        for (const QString& change : changes) {
            subPopUpForStatusAlert(change.section('=', 0, 0), 46000.5, change.section('=', 1));
            settle();
        }
        QStringList standingNow;
        for (frmStatusChangeAlert* popUp : standing<frmStatusChangeAlert>()) {
            standingNow << popUp->txtTrackee->text() + "=" + popUp->txtStatus->text();
            QCOMPARE(popUp->windowTitle(),
                     " VESK-OR Pro  - Status Change Alert for [" + popUp->txtTrackee->text() + "] ");
        }
        standingNow.sort();
        QCOMPARE(standingNow, shown);
        QCOMPARE(gw.shell().calls.size(), changes.size()); // a replaced pop-up chimes again
    }

    void closeAll_data()
    {
        QTest::addColumn<int>("messages");
        QTest::addColumn<int>("statuses");
        QTest::addColumn<int>("others");
        QTest::addColumn<bool>("byButton");
        QTest::newRow("messages only") << 3 << 0 << 0 << false;
        QTest::newRow("statuses only, by button") << 0 << 4 << 0 << true;
        QTest::newRow("a mix among other screens") << 2 << 3 << 2 << false;
        QTest::newRow("a mix, by button") << 4 << 1 << 1 << true;
    }

    // Every pop-up goes, other screens stay, and no pop-up's own unload work runs.
    void closeAll()
    {
        QFETCH(int, messages);
        QFETCH(int, statuses);
        QFETCH(int, others);
        QFETCH(bool, byButton);
        TestGateways gw;
        QList<AlertPopUp*> popUps;
        for (int id = 1; id <= messages; ++id) {
            popUps << subPopUpForNewMessagesAlert("S", gw.clock().now(), id, "B");
        }
        for (int i = 1; i <= statuses; ++i) {
            popUps << subPopUpForStatusAlert(QString("Person %1").arg(i), 46000.5, "Out");
        }
        for (int i = 0; i < others; ++i) {
            auto* other = new QWidget;
            other->setWindowTitle("Options");
            other->show();
        }
        int unloads = 0;
        for (AlertPopUp* popUp : popUps) {
            connect(popUp, &AlertPopUp::unloaded, [&unloads] { ++unloads; });
        }
        if (byButton) {
            popUps.last()
                ->findChild<QPushButton*>(messages && popUps.last()->objectName() == "frmNewMessagesAlert"
                                              ? "cmdCloseAllNMA"
                                              : "cmdCloseAllSCA")
                ->click();
        } else {
            alerts::subCloseAllAlerts();
        }
        settle();
        QCOMPARE(standing<AlertPopUp>().size(), 0);
        QCOMPARE(QApplication::topLevelWidgets().size(), others);
        QCOMPARE(unloads, 0);
    }

    void deleteMsgAnsweredNoLeavesThePopUp()
    {
        TestGateways gw;
        gw.boxes().answer(platform::vbNo);
        auto* popUp = subPopUpForNewMessagesAlert("S", gw.clock().now(), 7, "B");
        popUp->cmdDeleteMsg->click();
        QCOMPARE(gw.boxes().last().title, QString("Delete Confirmation Required"));
        QVERIFY(popUp->isVisible());
    }

    // Every control a person reaches by keyboard has a name a screen reader says.
    void controlsAreNamed()
    {
        TestGateways gw;
        for (QWidget* popUp : QList<QWidget*>{subPopUpForNewMessagesAlert("S", gw.clock().now(), 1, "B"),
                                              subPopUpForStatusAlert("Ann Lee", 46000.5, "Out")}) {
            for (QWidget* control : popUp->findChildren<QWidget*>()) {
                if (qobject_cast<QAbstractButton*>(control) || qobject_cast<QScrollBar*>(control)) {
                    QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
                }
            }
        }
    }
};

QTEST_MAIN(TestAlerts)
#include "tst_alerts.moc"
