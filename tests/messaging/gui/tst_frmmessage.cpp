// The message screen on a real site file: its modes, its commands, and what stays when a write fails.
#include "columns.h"
#include "messaging/gui/frmmessage.h"
#include "messaging/gui/messagescreens.h"
#include "ondisk.h"
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
    // Every row in MessageID order, its fields untrimmed and joined by ":".
    QStringList rows(const QString& columns = QStringLiteral("*")) const
    {
        auto rs = site.openDb()->OpenRecordset("SELECT " + columns + " FROM MessagesTable ORDER BY MessageID");
        QStringList all;
        for (; !rs->isEOF(); rs->MoveNext()) {
            QStringList fields;
            for (int i = 0; i < rs->FieldCount(); ++i)
                fields << rs->Fields(i).Value().toString();
            all << fields.join(':');
        }
        return all;
    }
};

// One opening: action, category of the copy opened ("" the fixture's "New" copy,
// "-" none), "board" or "remote" or "", then what shows: Taken By|To|From|Subject,
// the locks of To, From, Subject and Body, the buttons, help, caption, action after.
struct Mode
{
    QString action, stored, how, fields, locks, buttons, help, caption, after;
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
        const auto add = [](const char* name, Mode m) {
            QTest::newRow(name) << m;
        };
        add("new from the board", {"New", "-", "board", "Ann Lee|Ann Lee; Cy Dee||", "0000", "Send Save Help", "16000",
                                   "New Message", "New"});
        add("new from elsewhere",
            {"New", "-", "", "Ann Lee|||", "0000", "Send Save Help", "16000", "New Message", "New"});
        add("new, remote: no Save",
            {"New", "-", "remote", "Ann Lee|||", "0000", "Send Help", "16000", "New Message", "New"});
        add("reply goes to the taker", {"Reply", "", "", "Bob Ray|Bob Ray|Ann Lee|RE: Parcel", "1100", "Send Save Help",
                                        "16500", "Reply Message", "Reply"});
        add("forward", {"Forward", "", "", "Bob Ray||Ann Lee|FW: Parcel", "1100", "Send Save Help", "15000",
                        "Forward Message", "Forward"});
        add("view", {"View", "", "", "Bob Ray|Ann Lee|Visitor Vi|Parcel", "1111", "Reply Forward Delete Help", "17000",
                     "View Message", "View"});
        add("view a draft: edit", {"View", "Draft", "", "Bob Ray|Bob Ray; Cy Dee|Bob Ray|Plan", "0000",
                                   "Send Save Delete Help", "17000", "Edit Draft Message", "Edit"});
        add("view a copy gone",
            {"View", "-", "", "|||", "1111", "Reply Forward Delete Help", "17000", "View Message", "View"});
    }

    void modes()
    {
        QFETCH(Mode, m);
        MessageFixture f;
        f.board.select({0, 2});
        gRun.gblnRemoteConnection = m.how == "remote";
        const long long id = m.stored == "-" ? 999 : m.stored.isEmpty() ? f.bobToAnn : f.add(m.stored);
        Screen s = f.open(m.action, m.action == "New" ? 0 : id, m.how == "board" ? &f.boardWindow : nullptr);
        QCOMPARE((QStringList{s->lblTakenBy->text(), s->txtTo->text(), s->txtFrom->text(), s->txtSubject->text()}),
                 m.fields.split('|'));
        QCOMPARE(s.locks(), m.locks);
        QCOMPARE(s.shownButtons(), m.buttons.split(' '));
        QCOMPARE(s->HelpContextID, m.help.toInt());
        QCOMPARE(s->windowTitle(), " VESK-OR Pro  - " + m.caption);
        QCOMPARE(gstrMessageAction, m.after);
    }

    // The routine by the action, told by the copies it writes (Category:owner):
    // the reply and forward paths keep the blank after each ";".
    void sendByAction_data()
    {
        QTest::addColumn<QStringList>("c"); // action, category of the copy opened, copies written
        QTest::newRow("new") << QStringList{"New", "", "New:Bob Ray|New:Cy Dee|Sent:Ann Lee"};
        QTest::newRow("reply") << QStringList{"Reply", "New", "New:Bob Ray|New: Cy Dee|Sent:Ann Lee"};
        QTest::newRow("forward") << QStringList{"Forward", "New", "Forward:Bob Ray|Forward: Cy Dee|Sent:Ann Lee"};
        QTest::newRow("draft, removed") << QStringList{"View", "Draft", "New:Bob Ray|New:Cy Dee|Sent:Ann Lee"};
        QTest::newRow("view of a copy: nothing") << QStringList{"View", "New", ""};
    }

    void sendByAction()
    {
        QFETCH(QStringList, c);
        MessageFixture f;
        const long long id = c[1].isEmpty() ? 0 : f.add(c[1]);
        const QStringList before = f.rows(QStringLiteral("Category, MessageOwner"));
        const long long counter = f.counter();
        Screen s = f.open(c[0], id);
        s->txtTo->setText("Bob Ray; Cy Dee");
        s->txtSubject->setText("Plan");
        s->ToolbarNewMessage_ButtonClick("Send");
        QStringList expected; // the rows there before stay, but a draft sent goes
        for (const QString& row : before)
            if (c[2].isEmpty() || !row.startsWith("Draft:"))
                expected << row;
        QCOMPARE(f.rows("Category, MessageOwner"), expected + c[2].split('|', Qt::SkipEmptyParts));
        QCOMPARE(s.gone(), !c[2].isEmpty());
        QCOMPARE(f.counter(), counter + (c[2].isEmpty() ? 0 : 1));
    }

    void sendRefused_data()
    {
        QTest::addColumn<QStringList>("c"); // action, To line, body
        QTest::newRow("new, empty To") << QStringList{"New", "", "Text"};
        QTest::newRow("new, blank To") << QStringList{"New", "   ", "Text"};
        QTest::newRow("reply, blank To") << QStringList{"Reply", " ", "Text"};
        QTest::newRow("draft saved without To") << QStringList{"Draft", "", "Text"};
        QTest::newRow("new, nothing but To") << QStringList{"New", "Bob Ray", ""};
    }
    // A blank To line beeps twice; nothing but To (From only blanks) asks for a
    // field and puts the cursor in From. Nothing is written, the screen stays.
    void sendRefused()
    {
        QFETCH(QStringList, c);
        MessageFixture f;
        Screen s = c[0] == "Draft" ? f.open("View", f.add("Draft")) : f.open(c[0], f.bobToAnn);
        const bool noTo = c[1].trimmed().isEmpty();
        s->txtTo->setText(c[1]);
        c[2].isEmpty() ? s->txtFrom->setText("  ") : s->txtBody->setPlainText(c[2]);
        const QStringList before = f.rows();
        f.gw.boxes().answer(vbOK, noTo ? 0 : 1);
        s->ToolbarNewMessage_ButtonClick("Send");
        QCOMPARE(f.gw.shell().calls, noTo ? QStringList(2, "beep") : QStringList());
        QCOMPARE(f.gw.boxes().prompts(),
                 noTo ? QStringList() : QStringList{"Either From, Subject, or Body is required."});
        QVERIFY(noTo || s->focusWidget() == s->txtFrom);
        QCOMPARE(f.rows(), before);
        QVERIFY(!s.gone());
    }

    // The database refuses a row: the screen stays with its text and names
    // those who got nothing.
    void failureKeepsScreenAndText_data()
    {
        QTest::addColumn<QStringList>("c"); // action, button, what the box says
        const QString names = "did not get their copy: Bob Ray, Cy Dee.";
        QTest::newRow("new") << QStringList{"New", "Send", names};
        QTest::newRow("draft") << QStringList{"Draft", "Send", names};
        QTest::newRow("forward") << QStringList{"Forward", "Send", names};
        QTest::newRow("save") << QStringList{"New", "Save", "The draft was not saved."};
    }
    void failureKeepsScreenAndText()
    {
        QFETCH(QStringList, c);
        const QString action = c[0], button = c[1], named = c[2];
        MessageFixture f;
        Screen s = action == "Draft" ? f.open("View", f.add("Draft")) : f.open(action, f.bobToAnn);
        QVERIFY(f.site.rawExec("CREATE TRIGGER refuse BEFORE INSERT ON MessagesTable BEGIN "
                               "SELECT RAISE(ABORT, 'refused'); END"));
        s->txtTo->setText("Bob Ray; Cy Dee");
        s->txtBody->setPlainText("Kept text");
        const QStringList before = f.rows();
        f.gw.boxes().answer(vbOK);
        s->ToolbarNewMessage_ButtonClick(button);
        QVERIFY(!s.gone());
        QCOMPARE(s->txtBody->toPlainText(), QStringLiteral("Kept text"));
        QCOMPARE(f.rows(), before);
        QCOMPARE(f.gw.boxes().count(), 1);
        QVERIFY2(f.gw.boxes().last().prompt.contains(named), qPrintable(f.gw.boxes().last().prompt));
    }

    void exitAsksWhenThereIsText_data()
    {
        // answer: 0 for no question
        addColumns<QString, QString, int, bool>("action", "subject", "answer", "closes");
        QTest::newRow("only From") << QStringLiteral("New") << QString() << 0 << true;
        QTest::newRow("text, No") << QStringLiteral("New") << QStringLiteral("Plan") << int(vbNo) << false;
        QTest::newRow("text, Yes") << QStringLiteral("New") << QStringLiteral("Plan") << int(vbYes) << true;
        QTest::newRow("view asks too") << QStringLiteral("View") << QString() << int(vbNo) << false;
    }
    void exitAsksWhenThereIsText()
    {
        auto [action, subject, answer, closes] =
            fetch<QString, QString, int, bool>("action", "subject", "answer", "closes");
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
        // the category opened, how the screen closes ("Esc", "Reply" then Esc,
        // "Save" with a new body, "Delete" answered Yes), the category after
        QTest::addColumn<QStringList>("c");
        QTest::newRow("new, Esc") << QStringList{"New", "Esc", "Read"};
        QTest::newRow("read, Esc") << QStringList{"Read", "Esc", "Read"};
        QTest::newRow("sent stays") << QStringList{"Sent", "Esc", "Sent"};
        QTest::newRow("forward stays") << QStringList{"Forward", "Esc", "Forward"};
        QTest::newRow("replied: stays new") << QStringList{"New", "Reply", "New"};
        QTest::newRow("reply saved: a draft of its own") << QStringList{"New", "ReplySave", "New"};
        QTest::newRow("draft saved over itself") << QStringList{"Draft", "Save", "Draft"};
        QTest::newRow("deleted, not read") << QStringList{"New", "Delete", "Deleted"};
    }
    void closingMarksRead()
    {
        QFETCH(QStringList, c);
        const QString stored = c[0], how = c[1], after = c[2];
        MessageFixture f;
        const long long id = f.add(stored);
        Screen s = f.open("View", id);
        if (how == "Delete") {
            f.gw.boxes().answer(vbYes);
            s->ToolbarNewMessage_ButtonClick("Delete");
        } else {
            if (how.startsWith("Reply"))
                s->ToolbarNewMessage_ButtonClick("Reply");
            if (how.endsWith("Save")) {
                s->txtBody->setPlainText("Second");
                s->ToolbarNewMessage_ButtonClick("Save");
            } else
                QTest::keyClick(s->txtBody, Qt::Key_Escape);
        }
        QVERIFY(s.gone());
        QCOMPARE(f.gw.boxes().count(), how == "Delete" ? 1 : 0);
        QCOMPARE(f.site.value("SELECT Category FROM MessagesTable WHERE MessageID = " + QString::number(id)), after);
        QCOMPARE(sqliteColumn(f.site.dbPath(), "SELECT MessageBody FROM MessagesTable WHERE Category = 'Draft'"),
                 how.endsWith("Save") ? QStringList{"Second"} : QStringList());
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

    // A forced shutdown saves what is being written as a draft (line ends stored as
    // CR LF) and leaves a copy being read as it was.
    void forcedShutdownSavesWhatIsWritten()
    {
        MessageFixture f;
        Screen writing = f.open("New");
        writing->txtTo->setText("Cy Dee");
        writing->txtBody->setPlainText("Half a\nthought");
        Screen reading = f.open("View", f.bobToAnn);
        subSaveOpenMessages();
        QVERIFY(writing.gone());
        QVERIFY(!reading.gone());
        QCOMPARE(f.rows("Category, SentToName, MessageBody"),
                 (QStringList{"New:Ann Lee:At desk", "Draft:Cy Dee:Half a\r\nthought"}));
    }
};

QTEST_MAIN(TstFrmMessage)
#include "tst_frmmessage.moc"
