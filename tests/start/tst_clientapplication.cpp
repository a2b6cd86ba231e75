// The client's last line of defence: a failure that reaches the event loop ends
// the run with its box and code 1, whatever kind of failure it is.
#include "dao/jeterror.h"
#include "kernel/err.h"
#include "kernel/globals.h"
#include "platform/msgbox.h"
#include "start/clientapplication.h"
#include "testgateways.h"

#include <QEvent>
#include <QTest>
#include <QWidget>
#include <functional>
#include <new>
#include <stdexcept>

namespace {

// A control whose event handler fails as it is told.
class FailingControl : public QWidget
{
public:
    explicit FailingControl(QWidget* window) : QWidget(window)
    {
        setObjectName("cmdProbe");
    }
    std::function<void()> failure;

protected:
    bool event(QEvent* e) override
    {
        if (e->type() == QEvent::User) {
            failure();
        }
        return QWidget::event(e);
    }
};

} // namespace

class TestClientApplication : public QObject
{
    Q_OBJECT

private slots:
    void failureReachingTheEventLoop_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("prompt");
        QTest::newRow("engine") << 0 << "Run-time error '3218':\r\rCould not update; currently locked.";
        QTest::newRow("language") << 3 << "Run-time error '91':\r\rObject variable or With block variable not set";
        QTest::newRow("out of memory") << 1 << "Error (7 ) in frmProbe - cmdProbe event\rOut of memory";
        QTest::newRow("standard library") << 2
                                          << "Error (51 ) in frmProbe - cmdProbe event\rInternal error: "
                                             "vector::at";
    }

    // Each kind gets one stop box and ends the run with code 1; none aborts.
    void failureReachingTheEventLoop()
    {
        QFETCH(int, kind);
        QFETCH(QString, prompt);
        TestGateways gw;
        gw.boxes().answer(platform::vbOK);
        QWidget window;
        window.setObjectName("frmProbe");
        FailingControl control(&window);
        control.failure = [kind] {
            switch (kind) {
            case 0:
                throw dao::JetError(3218, "Could not update; currently locked.");
            case 1:
                throw std::bad_alloc();
            case 3:
                raiseObjectNotSet();
            default:
                throw std::out_of_range("vector::at");
            }
        };
        QEvent event(QEvent::User);
        QCOMPARE(TestGateways::endCodeOf([&] { QCoreApplication::sendEvent(&control, &event); }),
                 std::optional<int>(1));
        QCOMPARE(gw.boxes().prompts(), QStringList{prompt});
        QCOMPARE(gw.boxes().last().flags, int(platform::vbCritical));
    }
};

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ClientApplication app(argc, argv);
    TestClientApplication test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_clientapplication.moc"
