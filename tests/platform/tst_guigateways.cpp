// The client's gateways for real, offscreen: message boxes, and the real End seen from a child process.
#include "columns.h"
#include "platform/gui/qtmessageboxes.h"
#include "platform/process.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <cstdio>

using namespace platform;
using Button = QMessageBox::StandardButton;

namespace {

// Runs act on the next modal message box as soon as it is on screen.
void whenBoxShows(std::function<void(QMessageBox*)> act)
{
    auto* poll = new QTimer(qApp);
    poll->setInterval(10);
    QObject::connect(poll, &QTimer::timeout, poll, [poll, act] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); box && box->isVisible()) {
            poll->deleteLater();
            poll->stop();
            act(box);
        }
    });
    poll->start();
}

const char* const childMode = "TST_PROCESS_CHILD";

// A static object of the program: the ordinary end destroys it, after the closing work.
struct StaticMarker
{
    ~StaticMarker()
    {
        std::fputs("statics\n", stdout);
    }
};

int childMain(int argc, char** argv)
{
    static StaticMarker marker;
    // As the client does: the application on the heap, taken down by the first
    // work registered, so it runs last, before the static objects go.
    auto* app = new QApplication(argc, argv);
    auto* window = new QWidget;
    platform::atEnd([app, window] {
        delete window;
        delete app;
    });
    window->show();
    const QByteArray mode = qgetenv(childMode);
    // Plain stdio, unflushed: End must flush it.
    platform::atEnd([] { std::fputs("database\n", stdout); });
    platform::atEnd([mode] {
        std::fputs("tray\n", stdout);
        if (mode == "again") {
            platform::End(9); // an End inside the closing work ends at once, without looping
        }
    });
    QTimer::singleShot(0, [] { platform::End(7); });
    QApplication::exec();
    return 0;
}

} // namespace

Q_DECLARE_METATYPE(QMessageBox::Icon)
Q_DECLARE_METATYPE(QMessageBox::StandardButton)

class TestGuiGateways : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        setAppTitle(QString());
    }

    void messageBox_data()
    {
        // press: the button clicked, or none for the Escape key
        addColumns<int, int, QMessageBox::Icon, Button, Button, int>("flags", "buttons", "icon", "defaultButton",
                                                                     "press", "answer");
        using M = QMessageBox;
        const auto row = [](const char* name, int flags, M::StandardButtons buttons, M::Icon icon, Button defaultButton,
                            Button press, int answer) {
            QTest::newRow(name) << flags << int(buttons) << icon << defaultButton << press << answer;
        };
        const Button escape = M::NoButton;
        row("OK only, Escape", vbOKOnly | vbInformation, M::Ok, M::Information, M::Ok, escape, vbOK);
        row("retry cancel, Escape is Cancel", vbRetryCancel | vbCritical, M::Retry | M::Cancel, M::Critical, M::Retry,
            escape, vbCancel);
        row("yes no, question, second default", vbYesNo | vbQuestion | vbDefaultButton2, M::Yes | M::No, M::Question,
            M::No, M::Yes, vbYes);
        row("yes no, Escape is No", vbYesNo | vbExclamation, M::Yes | M::No, M::Warning, M::Yes, escape, vbNo);
        row("yes no cancel, third default", vbYesNoCancel | vbDefaultButton3, M::Yes | M::No | M::Cancel, M::NoIcon,
            M::Cancel, M::No, vbNo);
        row("OK cancel, third default is the first", vbOKCancel | vbDefaultButton3, M::Ok | M::Cancel, M::NoIcon, M::Ok,
            escape, vbCancel);
        // VB's Abort/Retry/Ignore box has no Escape: the key does nothing, Ignore is pressed after it.
        row("abort retry ignore, Escape does nothing", vbAbortRetryIgnore, M::Abort | M::Retry | M::Ignore, M::NoIcon,
            M::Abort, escape, vbIgnore);
    }
    void messageBox()
    {
        auto [flags, buttons, icon, defaultButton, press, answer] =
            fetch<int, int, QMessageBox::Icon, Button, Button, int>("flags", "buttons", "icon", "defaultButton",
                                                                    "press", "answer");
        QList<int> seen; // the buttons, the icon, the default button
        whenBoxShows([&](QMessageBox* box) {
            seen = {int(box->standardButtons()), box->icon(), box->standardButton(box->defaultButton())};
            if (press != QMessageBox::NoButton) {
                box->button(press)->click();
                return;
            }
            QTest::keyClick(box, Qt::Key_Escape);
            QPointer<QMessageBox> still(box);
            QTimer::singleShot(50, box, [still] {
                if (still && still->isVisible())
                    still->button(QMessageBox::Ignore)->click();
            });
        });
        QtMessageBoxes boxes;
        QCOMPARE(boxes.show("Proceed?", flags, "T"), answer);
        QCOMPARE(seen, (QList<int>{buttons, icon, defaultButton}));
    }

    void messageBox_textLinesAndTitle()
    {
        setAppTitle(" VESK-OR Pro ");
        QString text;
        QString title;
        Qt::TextFormat format = Qt::AutoText;
        whenBoxShows([&](QMessageBox* box) {
            text = box->text();
            title = box->windowTitle();
            format = box->textFormat();
            box->button(QMessageBox::Ok)->click();
        });
        QtMessageBoxes boxes;
        boxes.show("P:\\veskor.mdb\r\nis not a <b>database</b>.\rPress OK\nto exit.", vbOKOnly, QString());
        QCOMPARE(text, "P:\\veskor.mdb\nis not a <b>database</b>.\nPress OK\nto exit.");
        QCOMPARE(format, Qt::PlainText);
        QCOMPARE(title, " VESK-OR Pro ");
    }

    void realEnd_data()
    {
        addColumns<QString, int, QByteArray>("mode", "exitCode", "output");
        QTest::newRow("work newest first, then exit") << "plain" << 7 << QByteArray("tray\ndatabase\nstatics\n");
        QTest::newRow("End within the work") << "again" << 9 << QByteArray("tray\ndatabase\nstatics\n");
    }
    void realEnd()
    {
        auto [mode, exitCode, output] = fetch<QString, int, QByteArray>("mode", "exitCode", "output");
        QProcess child;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QLatin1String(childMode), mode);
        env.insert("QT_QPA_PLATFORM", "offscreen");
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {});
        QVERIFY(child.waitForFinished(60000));
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QCOMPARE(child.exitCode(), exitCode);
        QCOMPARE(child.readAllStandardOutput(), output);
    }
};

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet(childMode))
        return childMain(argc, argv);
    QApplication app(argc, argv);
    TestGuiGateways test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_guigateways.moc"
