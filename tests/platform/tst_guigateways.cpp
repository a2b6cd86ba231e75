// The client's message boxes driven offscreen: real QMessageBoxes looked at and
// answered from a timer.

#include "platform/gui/qtmessageboxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace platform;
using Button = QMessageBox::StandardButton;

Q_DECLARE_METATYPE(QMessageBox::Icon)
Q_DECLARE_METATYPE(QMessageBox::StandardButton)

namespace {

// The VB answers of a box's buttons, in code order.
QList<int> answersOf(QMessageBox* box)
{
    static const QHash<int, int> codes = {{QMessageBox::Ok, vbOK},         {QMessageBox::Cancel, vbCancel},
                                          {QMessageBox::Abort, vbAbort},   {QMessageBox::Retry, vbRetry},
                                          {QMessageBox::Ignore, vbIgnore}, {QMessageBox::Yes, vbYes},
                                          {QMessageBox::No, vbNo}};
    QList<int> out;
    for (QAbstractButton* b : box->buttons()) {
        out.append(codes.value(box->standardButton(b), -1));
    }
    std::sort(out.begin(), out.end());
    return out;
}

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

} // namespace

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
        QTest::addColumn<int>("flags");
        QTest::addColumn<QList<int>>("buttons");
        QTest::addColumn<QMessageBox::Icon>("icon");
        QTest::addColumn<Button>("defaultButton");
        QTest::addColumn<QString>("press"); // a button's name, or "Escape"
        QTest::addColumn<int>("answer");
        using M = QMessageBox;
        const auto row = [](const char* name, int flags, const QList<int>& buttons, M::Icon icon, Button defaultButton,
                            const char* press, int answer) {
            QTest::newRow(name) << flags << buttons << icon << defaultButton << QString(press) << answer;
        };
        row("OK only, Escape", vbOKOnly | vbInformation, {vbOK}, M::Information, M::Ok, "Escape", vbOK);
        row("retry cancel, Escape is Cancel", vbRetryCancel | vbCritical, {vbCancel, vbRetry}, M::Critical, M::Retry,
            "Escape", vbCancel);
        row("yes no, question, second default", vbYesNo | vbQuestion | vbDefaultButton2, {vbYes, vbNo}, M::Question,
            M::No, "Yes", vbYes);
        row("yes no, Escape is No", vbYesNo | vbExclamation, {vbYes, vbNo}, M::Warning, M::Yes, "Escape", vbNo);
        row("yes no cancel, third default", vbYesNoCancel | vbDefaultButton3, {vbCancel, vbYes, vbNo}, M::NoIcon,
            M::Cancel, "No", vbNo);
        row("OK cancel, third default is the first", vbOKCancel | vbDefaultButton3, {vbOK, vbCancel}, M::NoIcon, M::Ok,
            "Escape", vbCancel);
        // VB's Abort/Retry/Ignore box has no Escape: the key does nothing, Ignore is pressed after it.
        row("abort retry ignore, Escape does nothing", vbAbortRetryIgnore, {vbAbort, vbRetry, vbIgnore}, M::NoIcon,
            M::Abort, "Escape", vbIgnore);
    }
    void messageBox()
    {
        QFETCH(int, flags);
        QFETCH(QList<int>, buttons);
        QFETCH(QMessageBox::Icon, icon);
        QFETCH(Button, defaultButton);
        QFETCH(QString, press);
        QFETCH(int, answer);

        QList<int> seenButtons;
        QMessageBox::Icon seenIcon = QMessageBox::NoIcon;
        Button seenDefault = QMessageBox::NoButton;
        whenBoxShows([&](QMessageBox* box) {
            seenButtons = answersOf(box);
            seenIcon = box->icon();
            seenDefault = box->standardButton(box->defaultButton());
            if (press == QLatin1String("Escape")) {
                QTest::keyClick(box, Qt::Key_Escape);
                QPointer<QMessageBox> still(box);
                QTimer::singleShot(50, box, [still] {
                    if (still && still->isVisible()) {
                        still->button(QMessageBox::Ignore)->click();
                    }
                });
                return;
            }
            for (QAbstractButton* b : box->buttons()) {
                if (b->text().remove(QLatin1Char('&')).compare(press, Qt::CaseInsensitive) == 0) {
                    b->click();
                    return;
                }
            }
            box->button(QMessageBox::Ignore)->click();
        });
        QtMessageBoxes boxes;
        QCOMPARE(boxes.show("Proceed?", flags, "T"), answer);
        QCOMPARE(seenButtons, buttons);
        QCOMPARE(seenIcon, icon);
        QCOMPARE(seenDefault, defaultButton);
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
};

QTEST_MAIN(TestGuiGateways)
#include "tst_guigateways.moc"
