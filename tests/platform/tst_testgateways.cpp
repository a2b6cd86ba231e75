// The seams later tests stand on: scripted boxes that fail a test on a box
// nobody expected, the real identity, and TestGateways putting everything back.

#include "kernel/globals.h"
#include "platform/identity.h"
#include "platform/msgbox.h"
#include "testgateways.h"

#include <QHostAddress>
#include <QSysInfo>
#include <QTest>

using namespace platform;

class TestTestGateways : public QObject
{
    Q_OBJECT

private slots:
    void scriptedBoxesAnswerInOrderAndRecord()
    {
        TestGateways gw;
        gw.boxes().answer(vbRetry).answer(vbNo, 2);
        QCOMPARE(MsgBox(QStringLiteral("first"), vbRetryCancel | vbCritical, QStringLiteral("T")), int(vbRetry));
        QCOMPARE(MsgBox(QStringLiteral("second"), vbYesNo | vbQuestion), int(vbNo));
        QCOMPARE(gw.boxes().pending(), 1);
        QCOMPARE(gw.boxes().prompts(), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
        QCOMPARE(gw.boxes().shown().first().title, QStringLiteral("T"));
        QCOMPARE(gw.boxes().shown().first().icon(), int(vbCritical));
        QCOMPARE(gw.boxes().last().buttons(), int(vbYesNo));
    }

    void unscriptedBoxFailsTheTestAndTakesTheFirstButton()
    {
        TestGateways gw;
        QEXPECT_FAIL("", "a box nobody scripted must fail the test", Continue);
        const int answer = MsgBox(QStringLiteral("surprise"), vbYesNoCancel);
        QCOMPARE(answer, int(vbYes));
        QCOMPARE(gw.boxes().last().prompt, QStringLiteral("surprise"));
    }

    void answerThatIsNoButtonFailsTheTest()
    {
        TestGateways gw;
        gw.boxes().answer(vbRetry);
        QEXPECT_FAIL("", "Retry is no button of a Yes/No box", Continue);
        const int answer = MsgBox(QStringLiteral("Sure?"), vbYesNo);
        QCOMPARE(answer, int(vbYes));
    }

    void systemIdentity()
    {
        Identity& real = identity();
        QCOMPARE(real.computerName(), QSysInfo::machineHostName().left(31));
        QHostAddress ip;
        QVERIFY(ip.setAddress(real.ipAddress()));
        QCOMPARE(ip.protocol(), QAbstractSocket::IPv4Protocol);
        QVERIFY(!ip.isLoopback() || real.ipAddress() == QStringLiteral("127.0.0.1"));
        QCOMPARE(real.osMajorVersion(), 10);
    }

    void startValuesAndDefaultsComeBack()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        gstrDefaultUser = QStringLiteral("left over");
        atEnd([] { QFAIL("work of an earlier test must not run"); });
        {
            TestGateways gw;
            QCOMPARE(gstrDefaultUser, QString());
            QCOMPARE(QLocale().name(), QStringLiteral("en_US"));
            gstrDefaultUser = QStringLiteral("jo");
            runAtEnd();
        }
        QCOMPARE(gstrDefaultUser, QString());
        QCOMPARE(QLocale().name(), QStringLiteral("de_DE"));
        QVERIFY(!dynamic_cast<FixedIdentity*>(&identity()));
        QVERIFY(!dynamic_cast<ScriptedMessageBoxes*>(&messageBoxes()));
        QVERIFY(qAbs(Now().secsTo(QDateTime::currentDateTime())) <= 2);
        QLocale::setDefault(QLocale::c());
    }
};

QTEST_GUILESS_MAIN(TestTestGateways)
#include "tst_testgateways.moc"
