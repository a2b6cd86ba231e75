// The file-answered message boxes that end-to-end tests use: answers in order,
// words that are no button of the box refused, and every box logged.

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
};

QTEST_GUILESS_MAIN(TestMsgBox)
#include "tst_msgbox.moc"
