// The real End, seen from outside: a copy of this program started as a child runs
// a QApplication with a window, registers closing work and ends; the parent reads
// its exit code and output, the static objects' destruction included.

#include "platform/process.h"

#include <QApplication>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <cstdio>

namespace {

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

class TestProcess : public QObject
{
    Q_OBJECT

private slots:
    void realEnd_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("output");
        QTest::newRow("work newest first, then exit") << "plain" << 7 << QByteArray("tray\ndatabase\nstatics\n");
        QTest::newRow("End within the work") << "again" << 9 << QByteArray("tray\ndatabase\nstatics\n");
    }
    void realEnd()
    {
        QFETCH(QString, mode);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, output);
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
    if (qEnvironmentVariableIsSet(childMode)) {
        return childMain(argc, argv);
    }
    QCoreApplication app(argc, argv);
    TestProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_process.moc"
