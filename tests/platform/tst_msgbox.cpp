// The message-box gateway without a screen: answer codes and words, and the
// file-driven boxes that end-to-end tests use.

#include "platform/msgbox.h"
#include "platform/msgboxfile.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace platform;

class TestMsgBox : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString writeAnswers(const QByteArray& text)
    {
        const QString path = m_dir.filePath(QStringLiteral("answers-%1.txt").arg(QTest::currentTestFunction()));
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly) || f.write(text) != text.size()) {
            qFatal("cannot write %s", qPrintable(path));
        }
        return path;
    }

    static QStringList logLines(const QString& path)
    {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly | QIODevice::Text)) {
            return {};
        }
        return QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

private slots:
    void cleanup()
    {
        setAppTitle(QString());
        setMessageBoxes(nullptr);
        qunsetenv("VESKOR_MSGBOX_ANSWERS");
        qunsetenv("VESKOR_MSGBOX_LOG");
    }

    void firstButtonAnswer_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<int>("answer");
        QTest::newRow("OK only") << int(vbOKOnly) << int(vbOK);
        QTest::newRow("OK cancel") << int(vbOKCancel) << int(vbOK);
        QTest::newRow("abort retry ignore") << int(vbAbortRetryIgnore) << int(vbAbort);
        QTest::newRow("yes no cancel") << int(vbYesNoCancel) << int(vbYes);
        QTest::newRow("yes no, question, second default") << (vbYesNo | vbQuestion | vbDefaultButton2) << int(vbYes);
        QTest::newRow("retry cancel, stop") << (vbRetryCancel | vbCritical) << int(vbRetry);
        QTest::newRow("warning alone") << int(vbExclamation) << int(vbOK);
    }
    void firstButtonAnswer()
    {
        QFETCH(int, flags);
        QFETCH(int, answer);
        QCOMPARE(platform::firstButtonAnswer(flags), answer);
        QVERIFY(platform::buttonSetHas(flags, answer));
    }

    void buttonSetHas_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("has");
        QTest::newRow("yes no has no") << int(vbYesNo) << int(vbNo) << true;
        QTest::newRow("yes no has no cancel") << int(vbYesNo) << int(vbCancel) << false;
        QTest::newRow("OK only has no cancel") << int(vbOKOnly) << int(vbCancel) << false;
        QTest::newRow("abort retry ignore has ignore") << (vbAbortRetryIgnore | vbCritical) << int(vbIgnore) << true;
        QTest::newRow("retry cancel has no OK") << int(vbRetryCancel) << int(vbOK) << false;
        QTest::newRow("yes no cancel has cancel") << int(vbYesNoCancel) << int(vbCancel) << true;
    }
    void buttonSetHas()
    {
        QFETCH(int, flags);
        QFETCH(int, answer);
        QFETCH(bool, has);
        QCOMPARE(platform::buttonSetHas(flags, answer), has);
    }

    void answerFromText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("answer");
        QTest::newRow("OK") << "OK" << int(vbOK);
        QTest::newRow("any case, blanks") << "  rEtRy " << int(vbRetry);
        QTest::newRow("No") << "No" << int(vbNo);
        QTest::newRow("Ignore") << "Ignore" << int(vbIgnore);
        QTest::newRow("number") << "2" << int(vbCancel);
        QTest::newRow("number too big") << "8" << 0;
        QTest::newRow("zero") << "0" << 0;
        QTest::newRow("unknown word") << "Maybe" << 0;
        QTest::newRow("empty") << "" << 0;
    }
    void answerFromText()
    {
        QFETCH(QString, text);
        QFETCH(int, answer);
        QCOMPARE(platform::answerFromText(text), answer);
    }

    void fileDriven_answersInOrderAndLogs()
    {
        const QString answers = writeAnswers("Retry\n\n  no \nBogus\nYes\n");
        const QString log = m_dir.filePath(QStringLiteral("boxes.log"));
        setAppTitle(QStringLiteral(" VESK-OR Pro "));
        FileMessageBoxes boxes(answers, log);

        QCOMPARE(boxes.show(QStringLiteral("Cannot connect\r\nRetry?\tNow"), vbRetryCancel | vbCritical,
                            QStringLiteral("T - Error")),
                 int(vbRetry));
        QCOMPARE(boxes.show(QStringLiteral("Sure?"), vbYesNo | vbQuestion, QString()), int(vbNo));
        QCOMPARE(boxes.show(QStringLiteral("bad word"), vbOKCancel, QStringLiteral("T")), int(vbOK));
        QCOMPARE(boxes.show(QStringLiteral("not a button"), vbOKOnly, QStringLiteral("T")), int(vbOK));
        QCOMPARE(boxes.show(QStringLiteral("run out"), vbYesNoCancel, QStringLiteral("T")), int(vbYes));

        const QStringList expected = {
            QStringLiteral("T - Error\t21\tCannot connect\\r\\nRetry?\\tNow"),
            QStringLiteral(" VESK-OR Pro \t36\tSure?"),
            QStringLiteral("T\t1\tbad word"),
            QStringLiteral("BAD ANSWER\tBogus"),
            QStringLiteral("T\t0\tnot a button"),
            QStringLiteral("BAD ANSWER\tYes"),
            QStringLiteral("T\t3\trun out"),
            QStringLiteral("UNANSWERED"),
        };
        QCOMPARE(logLines(log), expected);
    }

    void fileDriven_missingAnswersFileAnswersFirstButtons()
    {
        const QString log = m_dir.filePath(QStringLiteral("missing.log"));
        FileMessageBoxes boxes(m_dir.filePath(QStringLiteral("no-such-file")), log);
        QCOMPARE(boxes.show(QStringLiteral("x"), vbAbortRetryIgnore, QStringLiteral("T")), int(vbAbort));
        QCOMPARE(logLines(log), (QStringList{QStringLiteral("T\t2\tx"), QStringLiteral("UNANSWERED")}));
    }

    void defaultFollowsTheEnvironment()
    {
        const QString answers = writeAnswers("Cancel\n");
        const QString log = m_dir.filePath(QStringLiteral("env.log"));
        qputenv("VESKOR_MSGBOX_ANSWERS", answers.toLocal8Bit());
        qputenv("VESKOR_MSGBOX_LOG", log.toLocal8Bit());
        setMessageBoxes(nullptr);
        QVERIFY(fileDrivenMessageBoxesRequested());
        QCOMPARE(MsgBox(QStringLiteral("Leave?"), vbOKCancel, QStringLiteral("T")), int(vbCancel));
        QCOMPARE(logLines(log), QStringList{QStringLiteral("T\t1\tLeave?")});

        qunsetenv("VESKOR_MSGBOX_ANSWERS");
        setMessageBoxes(nullptr);
        QVERIFY(!fileDrivenMessageBoxesRequested());
        QVERIFY(!dynamic_cast<FileMessageBoxes*>(&messageBoxes()));
        QCOMPARE(MsgBox(QStringLiteral("to stderr"), vbYesNo), int(vbYes));
    }
};

QTEST_GUILESS_MAIN(TestMsgBox)
#include "tst_msgbox.moc"
