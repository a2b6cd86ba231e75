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

    // The answer a box gives unasked is its first button; an answer that is no
    // button of the set is refused.
    void buttons_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("notAButton");
        QTest::newRow("OK only") << int(vbOKOnly | vbExclamation) << int(vbOK) << int(vbCancel);
        QTest::newRow("abort retry ignore") << (vbAbortRetryIgnore | vbCritical) << int(vbAbort) << int(vbOK);
        QTest::newRow("yes no cancel") << int(vbYesNoCancel) << int(vbYes) << int(vbRetry);
        QTest::newRow("yes no, second default")
            << (vbYesNo | vbQuestion | vbDefaultButton2) << int(vbYes) << int(vbCancel);
        QTest::newRow("retry cancel") << int(vbRetryCancel) << int(vbRetry) << int(vbOK);
    }
    void buttons()
    {
        QFETCH(int, flags);
        QFETCH(int, first);
        QFETCH(int, notAButton);
        QCOMPARE(platform::firstButtonAnswer(flags), first);
        QVERIFY(platform::buttonSetHas(flags, first));
        QVERIFY(!platform::buttonSetHas(flags, notAButton));
    }

    void answerFromText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("answer");
        QTest::newRow("any case, blanks") << "  rEtRy " << int(vbRetry);
        QTest::newRow("Ignore") << "Ignore" << int(vbIgnore);
        QTest::newRow("number") << "2" << int(vbCancel);
        QTest::newRow("number too big") << "8" << 0;
        QTest::newRow("zero") << "0" << 0;
        QTest::newRow("unknown word") << "Maybe" << 0;
    }
    void answerFromText()
    {
        QFETCH(QString, text);
        QFETCH(int, answer);
        QCOMPARE(platform::answerFromText(text), answer);
    }

    void fileDriven_answersInOrderAndLogs()
    {
        const QString answers = m_dir.filePath(QStringLiteral("answers.txt"));
        QFile file(answers);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("Retry\n\n  no \nBogus\nYes\n") > 0);
        file.close();
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

    // The environment names the files; a missing answers file answers first buttons.
    void environmentChoosesTheBoxes()
    {
        const QString log = m_dir.filePath(QStringLiteral("env.log"));
        qputenv("VESKOR_MSGBOX_ANSWERS", m_dir.filePath(QStringLiteral("no-such-file")).toLocal8Bit());
        qputenv("VESKOR_MSGBOX_LOG", log.toLocal8Bit());
        setMessageBoxes(nullptr);
        QVERIFY(fileDrivenMessageBoxesRequested());
        QCOMPARE(MsgBox(QStringLiteral("x"), vbAbortRetryIgnore, QStringLiteral("T")), int(vbAbort));
        QCOMPARE(logLines(log), (QStringList{QStringLiteral("T\t2\tx"), QStringLiteral("UNANSWERED")}));

        qunsetenv("VESKOR_MSGBOX_ANSWERS");
        setMessageBoxes(nullptr);
        QVERIFY(!fileDrivenMessageBoxesRequested());
        QVERIFY(!dynamic_cast<FileMessageBoxes*>(&messageBoxes()));
        QCOMPARE(MsgBox(QStringLiteral("to stderr"), vbYesNo), int(vbYes));
    }
};

QTEST_GUILESS_MAIN(TestMsgBox)
#include "tst_msgbox.moc"
