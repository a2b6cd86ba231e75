// The message screen on a real site file: what each mode fills, locks and
// offers, where Send goes by the screen's action, what stays on the screen when
// a send or save fails, and what the closing writes.
#include "messaging/gui/frmmessage.h"
#include "messaging/gui/messagescreens.h"
#include "statusfixture.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>

using namespace platform;

namespace {

const QString kRows = QStringLiteral("Category, MessageOwner, SentToName, MessageSubject");
const QStringList kAllButtons = {"Send", "Save",  "Reply",  "Forward", "eMail",
                                 "QUIL", "Print", "Delete", "Refresh", "Help"};

struct Screen
{
    QPointer<frmMessage> form;
    frmMessage* operator->() const
    {
        return form;
    }
    // True once the screen has closed and gone.
    bool gone() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return form.isNull();
    }
    QStringList shownButtons() const
    {
        QStringList keys;
        for (QAction* button : form->ToolbarNewMessage->actions())
            if (button->isVisible())
                keys << button->data().toString();
        return keys;
    }
    // Which of To, From, Subject and Body are locked, as four 0/1 digits.
    QString locks() const
    {
        QString digits;
        for (bool locked : {form->txtTo->isReadOnly(), form->txtFrom->isReadOnly(), form->txtSubject->isReadOnly(),
                            form->txtBody->isReadOnly()})
            digits += locked ? '1' : '0';
        return digits;
    }
};

struct MessageFixture : StatusFixture
{
    QWidget boardWindow; // the caller named as the board is
    long long bobToAnn = 0;
    MessageFixture()
    {
        boardWindow.setObjectName(QStringLiteral("frmMain"));
        bobToAnn = site.message({"Ann Lee", "New", "Bob Ray", "Visitor Vi", "Ann Lee", "Parcel", "At desk", 46300});
    }
    ~MessageFixture()
    {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (qobject_cast<frmMessage*>(w))
                delete w;
    }
    Screen open(const QString& action, long long id = 0, QWidget* caller = nullptr)
    {
        gstrMessageAction = action;
        auto* form = new frmMessage;
        form->Form_Load();
        form->subCreateMessage(caller, id);
        form->show(); // QMainWindow lays out its bars when shown
        return {form};
    }
    long long add(const QString& category)
    {
        return site.message({"Ann Lee", category, "Bob Ray", "", "Bob Ray; Cy Dee", "Plan", "Text", 46300});
    }
    QList<QStringList> rows(const QString& columns = kRows) const
    {
        auto rs = site.openDb()->OpenRecordset("SELECT " + columns + " FROM MessagesTable ORDER BY MessageID");
        QList<QStringList> all;
        for (; !rs->isEOF(); rs->MoveNext()) {
            all << QStringList();
            for (int i = 0; i < rs->FieldCount(); ++i)
                all.last() << rs->Fields(i).Value().toString(); // untrimmed
        }
        return all;
    }
    QStringList categories() const
    {
        QStringList all;
        for (const QStringList& row : rows(QStringLiteral("Category")))
            all << row[0];
        return all;
    }
};

struct Mode
{
    QString action;
    QString stored; // the category of the copy opened; "" for the first one (a "New" copy); "-" for none
    bool fromBoard = false;
    bool remote = false;
    QStringList fields; // Taken By, To, From, Subject
    QString locks;
    QStringList buttons;
    int help = 0;
    QString caption;
    QString actionAfter;
};

} // namespace

Q_DECLARE_METATYPE(Mode)

class TstFrmMessage : public QObject
{
    Q_OBJECT

private slots:
    void modes_data()
    {
        QTest::addColumn<Mode>("m");
        const QString t = " VESK-OR Pro  - ";
        QTest::newRow("new from the board") << Mode{"New",
                                                    "-",
                                                    true,
                                                    false,
                                                    {"Ann Lee", "Ann Lee; Cy Dee", "", ""},
                                                    "0000",
                                                    {"Send", "Save", "Help"},
                                                    16000,
                                                    t + "New Message",
                                                    "New"};
        QTest::newRow("new from elsewhere") << Mode{"New",
                                                    "-",
                                                    false,
                                                    false,
                                                    {"Ann Lee", "", "", ""},
                                                    "0000",
                                                    {"Send", "Save", "Help"},
                                                    16000,
                                                    t + "New Message",
                                                    "New"};
        QTest::newRow("new on a remote site") << Mode{
            "New", "-", false, true, {"Ann Lee", "", "", ""}, "0000", {"Send", "Help"}, 16000, t + "New Message",
            "New"};
        QTest::newRow("reply goes to the taker") << Mode{"Reply",
                                                         "",
                                                         false,
                                                         false,
                                                         {"Bob Ray", "Bob Ray", "Ann Lee", "RE: Parcel"},
                                                         "1100",
                                                         {"Send", "Save", "Help"},
                                                         16500,
                                                         t + "Reply Message",
                                                         "Reply"};
        QTest::newRow("forward") << Mode{"Forward",
                                         "",
                                         false,
                                         false,
                                         {"Bob Ray", "", "Ann Lee", "FW: Parcel"},
                                         "1100",
                                         {"Send", "Save", "Help"},
                                         15000,
                                         t + "Forward Message",
                                         "Forward"};
        QTest::newRow("view") << Mode{"View",
                                      "",
                                      false,
                                      false,
                                      {"Bob Ray", "Ann Lee", "Visitor Vi", "Parcel"},
                                      "1111",
                                      {"Reply", "Forward", "Delete", "Help"},
                                      17000,
                                      t + "View Message",
                                      "View"};
        QTest::newRow("view a draft: edit") << Mode{"View",
                                                    "Draft",
                                                    false,
                                                    false,
                                                    {"Bob Ray", "Bob Ray; Cy Dee", "Bob Ray", "Plan"},
                                                    "0000",
                                                    {"Send", "Save", "Delete", "Help"},
                                                    17000,
                                                    t + "Edit Draft Message",
                                                    "Edit"};
        QTest::newRow("view a copy gone") << Mode{"View",
                                                  "-",
                                                  false,
                                                  false,
                                                  {"", "", "", ""},
                                                  "1111",
                                                  {"Reply", "Forward", "Delete", "Help"},
                                                  17000,
                                                  t + "View Message",
                                                  "View"};
    }

    void modes()
    {
        QFETCH(Mode, m);
        MessageFixture f;
        f.board.select({0, 2});
        gRun.gblnRemoteConnection = m.remote;
        const long long id = m.stored == "-" ? 999 : m.stored.isEmpty() ? f.bobToAnn : f.add(m.stored);
        Screen s = f.open(m.action, m.action == "New" ? 0 : id, m.fromBoard ? &f.boardWindow : nullptr);
        QCOMPARE((QStringList{s->lblTakenBy->text(), s->txtTo->text(), s->txtFrom->text(), s->txtSubject->text()}),
                 m.fields);
        QCOMPARE(s.locks(), m.locks);
        QCOMPARE(s.shownButtons(), m.buttons);
        QCOMPARE(s->HelpContextID, m.help);
        QCOMPARE(s->windowTitle(), m.caption);
        QCOMPARE(gstrMessageAction, m.actionAfter);
        if (m.action == "New")
            QCOMPARE(s->lblLastUsed->text(), QStringLiteral("New Message"));
    }

    // The routine by the action, and the rows it leaves: names after the first
    // keep their blank on the reply and forward paths.
    void sendByAction_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("stored"); // the category of the copy opened
        QTest::addColumn<QList<QStringList>>("written");
        const QString to = "Bob Ray; Cy Dee";
        QTest::newRow("new") << "New"
                             << ""
                             << QList<QStringList>{{"New", "Bob Ray", "Bob Ray", "Plan"},
                                                   {"New", "Cy Dee", "Cy Dee", "Plan"},
                                                   {"Sent", "Ann Lee", to, "Plan"}};
        QTest::newRow("reply") << "Reply"
                               << "New"
                               << QList<QStringList>{{"New", "Bob Ray", "Bob Ray", "Plan"},
                                                     {"New", " Cy Dee", " Cy Dee", "Plan"},
                                                     {"Sent", "Ann Lee", to, "Plan"}};
        QTest::newRow("forward") << "Forward"
                                 << "New"
                                 << QList<QStringList>{{"Forward", "Bob Ray", "Bob Ray", "Plan"},
                                                       {"Forward", " Cy Dee", " Cy Dee", "Plan"},
                                                       {"Sent", "Ann Lee", to, "Plan"}};
        QTest::newRow("draft") << "View"
                               << "Draft"
                               << QList<QStringList>{{"New", "Bob Ray", "Bob Ray", "Plan"},
                                                     {"New", "Cy Dee", "Cy Dee", "Plan"},
                                                     {"Sent", "Ann Lee", to, "Plan"}};
        QTest::newRow("view of a copy: nothing") << "View"
                                                 << "New" << QList<QStringList>{};
    }

    void sendByAction()
    {
        QFETCH(QString, action);
        QFETCH(QString, stored);
        QFETCH(QList<QStringList>, written);
        MessageFixture f;
        const long long id = stored.isEmpty() ? 0 : f.add(stored);
        const QList<QStringList> before = f.rows();
        const long long counter = f.counter();
        Screen s = f.open(action, id);
        s->txtTo->setText("Bob Ray; Cy Dee");
        s->txtSubject->setText("Plan");
        s->ToolbarNewMessage_ButtonClick("Send");
        QList<QStringList> after = f.rows();
        if (stored == "Draft")
            QVERIFY(!f.categories().contains("Draft"));
        for (const QStringList& row : before)
            after.removeOne(row);
        QCOMPARE(after, written);
        QCOMPARE(s.gone(), !written.isEmpty());
        QCOMPARE(f.counter(), counter + (written.isEmpty() ? 0 : 1));
    }

    void emptyToBeepsTwice_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("to");
        QTest::newRow("new, empty") << "New"
                                    << "";
        QTest::newRow("new, blanks") << "New"
                                     << "   ";
        QTest::newRow("reply, blanks") << "Reply"
                                       << " ";
        QTest::newRow("draft saved without To") << "Draft"
                                                << "";
    }
    void emptyToBeepsTwice()
    {
        QFETCH(QString, action);
        QFETCH(QString, to);
        MessageFixture f;
        Screen s = action == "Draft" ? f.open("View", f.add("Draft")) : f.open(action, f.bobToAnn);
        s->txtTo->setText(to);
        s->txtBody->setPlainText("Text");
        const QList<QStringList> before = f.rows();
        s->ToolbarNewMessage_ButtonClick("Send");
        QCOMPARE(f.gw.shell().calls, (QStringList{"beep", "beep"}));
        QCOMPARE(f.rows(), before);
        QVERIFY(!s.gone());
    }

    void fieldsRequiredBoxAndFocus()
    {
        MessageFixture f;
        Screen s = f.open("New");
        s->txtTo->setText("Bob Ray");
        s->txtFrom->setText("  ");
        f.gw.boxes().answer(vbOK);
        s->ToolbarNewMessage_ButtonClick("Send");
        QCOMPARE(f.gw.boxes().last().prompt, QStringLiteral("Either From, Subject, or Body is required."));
        QCOMPARE(s->focusWidget(), s->txtFrom);
        QVERIFY(!s.gone());
        QCOMPARE(f.rows().size(), 1);
    }

    // The database refuses a row: the screen stays with its text and names
    // those who got nothing.
    void failureKeepsScreenAndText_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("named");
        QTest::newRow("new") << "New"
                             << "Send"
                             << "did not get their copy: Bob Ray, Cy Dee.";
        QTest::newRow("draft") << "Draft"
                               << "Send"
                               << "did not get their copy: Bob Ray, Cy Dee.";
        QTest::newRow("forward") << "Forward"
                                 << "Send"
                                 << "did not get their copy: Bob Ray, Cy Dee.";
        QTest::newRow("save") << "New"
                              << "Save"
                              << "draft was not saved";
    }
    void failureKeepsScreenAndText()
    {
        QFETCH(QString, action);
        QFETCH(QString, button);
        QFETCH(QString, named);
        MessageFixture f;
        Screen s = action == "Draft" ? f.open("View", f.add("Draft")) : f.open(action, f.bobToAnn);
        QVERIFY(f.site.rawExec("CREATE TRIGGER refuse BEFORE INSERT ON MessagesTable BEGIN "
                               "SELECT RAISE(ABORT, 'refused'); END"));
        s->txtTo->setText("Bob Ray; Cy Dee");
        s->txtBody->setPlainText("Kept text");
        const QList<QStringList> before = f.rows();
        f.gw.boxes().answer(vbOK);
        s->ToolbarNewMessage_ButtonClick(button);
        QVERIFY(!s.gone());
        QCOMPARE(s->txtBody->toPlainText(), QStringLiteral("Kept text"));
        QCOMPARE(f.rows(), before);
        QCOMPARE(f.gw.boxes().count(), 1);
        QVERIFY2(f.gw.boxes().last().prompt.contains(named), qPrintable(f.gw.boxes().last().prompt));
    }

    void draftSavedTwiceThenSent()
    {
        MessageFixture f;
        Screen s = f.open("New");
        s->txtTo->setText("Cy Dee");
        s->txtSubject->setText("Plan");
        s->ToolbarNewMessage_ButtonClick("Save");
        QVERIFY(s.gone());
        const long long id = f.site.value("SELECT MessageID FROM MessagesTable WHERE Category = 'Draft'").toLongLong();
        const QString firstSent = f.rows(QStringLiteral("SentDateTimeNum")).last().first();
        f.gw.clock().advance(60 * 1000);
        s = f.open("View", id);
        s->txtBody->setPlainText("Second");
        s->ToolbarNewMessage_ButtonClick("Save");
        QVERIFY(s.gone());
        QCOMPARE(f.rows(QStringLiteral("MessageID, Category, MessageBody, SentDateTimeNum")).last(),
                 (QStringList{QString::number(id), "Draft", "Second", firstSent}));
        s = f.open("View", id);
        s->ToolbarNewMessage_ButtonClick("Send");
        QVERIFY(s.gone());
        QCOMPARE(f.categories(), (QStringList{"New", "New", "Sent"}));
    }

    void exitAsksWhenThereIsText_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("subject");
        QTest::addColumn<int>("answer"); // 0: no question
        QTest::addColumn<bool>("closes");
        QTest::newRow("only From") << "New"
                                   << "" << 0 << true;
        QTest::newRow("text, No") << "New"
                                  << "Plan" << int(vbNo) << false;
        QTest::newRow("text, Yes") << "New"
                                   << "Plan" << int(vbYes) << true;
        QTest::newRow("view asks too") << "View"
                                       << "" << int(vbNo) << false;
    }
    void exitAsksWhenThereIsText()
    {
        QFETCH(QString, action);
        QFETCH(QString, subject);
        QFETCH(int, answer);
        QFETCH(bool, closes);
        MessageFixture f;
        Screen s = f.open(action, f.bobToAnn);
        s->txtFrom->setText("Someone");
        if (!subject.isEmpty())
            s->txtSubject->setText(subject);
        if (answer)
            f.gw.boxes().answer(answer);
        s->ToolbarNewMessage_ButtonClick("Exit");
        QCOMPARE(f.gw.boxes().count(), answer ? 1 : 0);
        if (answer)
            QCOMPARE(f.gw.boxes().last().title, QStringLiteral("Discard Changes"));
        QCOMPARE(s.gone(), closes);
    }

    // What the copy opened is once the screen closes, and how it closed.
    void closingMarksRead_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("how"); // "Esc", "Reply" (then Esc), "Delete" (answered Yes)
        QTest::addColumn<QString>("after");
        QTest::newRow("new, Esc") << "New"
                                  << "Esc"
                                  << "Read";
        QTest::newRow("read, Esc") << "Read"
                                   << "Esc"
                                   << "Read";
        QTest::newRow("sent stays") << "Sent"
                                    << "Esc"
                                    << "Sent";
        QTest::newRow("forward stays") << "Forward"
                                       << "Esc"
                                       << "Forward";
        QTest::newRow("replied: stays new") << "New"
                                            << "Reply"
                                            << "New";
        QTest::newRow("deleted, not read") << "New"
                                           << "Delete"
                                           << "Deleted";
    }
    void closingMarksRead()
    {
        QFETCH(QString, stored);
        QFETCH(QString, how);
        QFETCH(QString, after);
        MessageFixture f;
        const long long id = f.add(stored);
        Screen s = f.open("View", id);
        if (how == "Delete") {
            f.gw.boxes().answer(vbYes);
            s->ToolbarNewMessage_ButtonClick("Delete");
        } else {
            if (how == "Reply")
                s->ToolbarNewMessage_ButtonClick("Reply");
            QTest::keyClick(s->txtBody, Qt::Key_Escape);
        }
        QVERIFY(s.gone());
        QCOMPARE(f.gw.boxes().count(), how == "Delete" ? 1 : 0);
        QCOMPARE(f.site.value("SELECT Category FROM MessagesTable WHERE MessageID = " + QString::number(id)), after);
    }

    // A typed double quote becomes an apostrophe except in the To line; every
    // control is named; the status bar shows the tip of the control under the mouse.
    void keysNamesAndTips()
    {
        MessageFixture f;
        Screen s = f.open("New");
        for (QWidget* box : std::initializer_list<QWidget*>{s->txtFrom, s->txtSubject, s->txtBody, s->txtTo})
            QTest::keyClicks(box, "a\"b");
        QCOMPARE(s->txtFrom->text(), QStringLiteral("a'b"));
        QCOMPARE(s->txtSubject->text(), QStringLiteral("a'b"));
        QCOMPARE(s->txtBody->toPlainText(), QStringLiteral("a'b"));
        QCOMPARE(s->txtTo->text(), QStringLiteral("a\"b"));
        for (QWidget* w : s->findChildren<QWidget*>(QRegularExpression("^(txt|cmd|lbl|img)")))
            QVERIFY2(!w->accessibleName().isEmpty(), qPrintable(w->objectName()));
        QEvent enter(QEvent::Enter);
        QCoreApplication::sendEvent(s->txtSubject, &enter);
        QCOMPARE(s->StatusBarNewMessage->currentMessage(), QStringLiteral(" Enter the message SUBJECT "));
        s->ToolbarNewMessage_ButtonClick("Help");
        QCOMPARE(f.gw.shell().calls.last(), QStringLiteral("help  16000"));
    }
};

QTEST_MAIN(TstFrmMessage)
#include "tst_frmmessage.moc"
