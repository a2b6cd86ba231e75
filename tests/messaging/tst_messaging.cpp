// Messages on a real site file: sending, drafts, a copy's category, quoting, and the watcher.
#include "messaging/messagestore.h"
#include "messaging/newmessagewatcher.h"
#include "messaging/storedmessage.h"
#include "platform/clock.h"
#include "statusfixture.h"

#include <QTest>

using namespace messaging;

namespace {

const QString kMe = QStringLiteral("Ann Lee");
// A body with every kind of character a person pastes, 100,000 characters long.
const QString kOddBody = (QStringLiteral("line one\r\n\tTab \"quoted\" 'it''s' \U0001F600; end\r\n").repeated(2000) +
                          QStringLiteral("x").repeated(100000))
                             .left(100000);

const QString kCopyColumns = QStringLiteral("Category, SentFromName, SentToName, MessageOwner, MessageFrom, "
                                            "MessageSubject, MessageBody, SentFromRemoteUNC");

struct Fixture : StatusFixture
{
    // Every row in MessageID order, untrimmed, a Null as "<null>".
    QList<QStringList> rows(const QString& columns = kCopyColumns) const
    {
        auto rs = site.openDb()->OpenRecordset("SELECT " + columns + " FROM MessagesTable ORDER BY MessageID");
        QList<QStringList> all;
        for (; !rs->isEOF(); rs->MoveNext()) {
            all << QStringList();
            for (int i = 0; i < rs->FieldCount(); ++i) {
                all.last() << (rs->Fields(i).IsNull() ? "<null>" : rs->Fields(i).Value().toString());
            }
        }
        return all;
    }
    long long add(const QString& owner, const QString& category, double sent)
    {
        return site.message({owner, category, QStringLiteral("Bob Ray"), {}, owner, {}, {}, sent});
    }
};

struct Send
{
    SendPath path;
    QString to;
    MessageText text;
    SendOutcome outcome;
    QStringList owners; // the recipients' copies, in order
    MessageText stored;
};

struct Arrival
{
    int beforeLook;
    double minutes; // sent, from the first look
    QString owner;
    QString category;
    int popsAt; // the look that pops it, -1 for none
};

} // namespace

Q_DECLARE_METATYPE(Send)
Q_DECLARE_METATYPE(Arrival)

class TstMessaging : public QObject
{
    Q_OBJECT

private slots:
    void sendWritesOneCopyEachAndTheSenders_data()
    {
        QTest::addColumn<Send>("s");
        const MessageText full{"Reception", "Call back", "Ring 555"};
        const auto ok = SendOutcome::Sent;
        const QString three = QStringLiteral("Ann Lee; Bob Ray; Cy Dee");
        const auto row = [](const char* name, const Send& send) {
            QTest::newRow(name) << send;
        };
        const auto New = SendPath::New;
        row("new, three", {New, three, full, ok, three.split("; "), full});
        row("new, trailing separator", {New, "Bob Ray; ", full, ok, {"Bob Ray", ""}, full});
        row("new, blanks filled", {New, "Bob Ray", {"  ", "Hi", ""}, ok, {"Bob Ray"}, {" ", "Hi", " "}});
        row("new, ';' inside a name", {New, "Ray;Bob; Cy Dee", full, ok, {"Ray;Bob", "Cy Dee"}, full});
        const MessageText odd{"O\"Neil", "\U0001F600", kOddBody};
        row("new, odd texts, unknown name", {New, "Zed Nobody", odd, ok, {"Zed Nobody"}, odd});
        row("new, nothing but To", {New, "Bob Ray", {" ", "", ""}, SendOutcome::FieldsRequired, {}, {}});
        row("new, blank To", {New, "  ", full, SendOutcome::EmptyTo, {}, {}});
        row("reply keeps the blank after ';'",
            {SendPath::Reply, three, {"", "", ""}, ok, {"Ann Lee", " Bob Ray", " Cy Dee"}, {"", "", ""}});
        row("reply skips blank names", {SendPath::Reply, "Bob Ray; ", full, ok, {"Bob Ray"}, full});
        row("forward", {SendPath::Forward, "Cy Dee", full, ok, {"Cy Dee"}, full});
    }
    void sendWritesOneCopyEachAndTheSenders()
    {
        QFETCH(Send, s);
        Fixture f;
        f.gw.boxes().answer(platform::vbOK);
        const long long before = f.counter();
        const SendResult r = s.path == SendPath::New     ? subSendNewMessage(s.to, s.text)
                             : s.path == SendPath::Reply ? subSendReplyMessage(s.to, s.text)
                                                         : subSendForwardMessage(s.to, s.text);
        QCOMPARE(int(r.outcome), int(s.outcome));
        QCOMPARE(f.gw.boxes().prompts(), s.outcome == SendOutcome::FieldsRequired
                                             ? QStringList{"Either From, Subject, or Body is required."}
                                             : QStringList{});
        if (s.outcome != SendOutcome::Sent) {
            QCOMPARE(f.rows().size(), 0);
            return;
        }
        const QString unc = s.path == SendPath::New ? QString() : QStringLiteral("<null>");
        const QString category = s.path == SendPath::Forward ? QStringLiteral("Forward") : QStringLiteral("New");
        QList<QStringList> expected;
        for (const QString& owner : s.owners) {
            expected << QStringList{category, kMe, owner, owner, s.stored.from, s.stored.subject, s.stored.body, unc};
        }
        expected << QStringList{"Sent", kMe, s.to, kMe, s.stored.from, s.stored.subject, s.stored.body, unc};
        QCOMPARE(f.rows(), expected);
        QCOMPARE(f.counter(), before + 1);
    }

    // A refused row at any point leaves no copy at all and names every recipient.
    void failedSendLeavesNothing_data()
    {
        QTest::addColumn<QByteArray>("refused");
        QTest::newRow("first copy") << QByteArray("NEW.SentToName = 'Bob Ray'");
        QTest::newRow("last copy") << QByteArray("NEW.SentToName = 'Cy Dee'");
        QTest::newRow("sender's copy") << QByteArray("NEW.Category = 'Sent'");
    }
    void failedSendLeavesNothing()
    {
        QFETCH(QByteArray, refused);
        Fixture f;
        const long long draft = cmdMessage_Save(0, "Bob Ray; Cy Dee", {"", "Hi", "Text"}).id;
        QVERIFY(f.site.rawExec("CREATE TRIGGER refuse BEFORE INSERT ON MessagesTable WHEN " + refused +
                               " BEGIN SELECT RAISE(ABORT, 'refused'); END"));
        const long long before = f.counter();
        const QStringList both{"Bob Ray", "Cy Dee"};
        for (const SendResult& r : {subSendNewMessage("Bob Ray; Cy Dee", {"", "Hi", "Text"}),
                                    subSendDraftMessage(draft, "Bob Ray; Cy Dee", {"", "Hi", "Text"})}) {
            QCOMPARE(int(r.outcome), int(SendOutcome::Failed));
            QCOMPARE(r.notDelivered, both);
            QVERIFY(r.failure.has_value());
        }
        QCOMPARE(f.rows(QStringLiteral("Category")), QList<QStringList>{{"Draft"}});
        QCOMPARE(f.counter(), before);
    }

    void draftSavedTwiceThenSent()
    {
        Fixture f;
        const double first = platform::DateTimeNum(platform::Now());
        const long long id = cmdMessage_Save(0, "", {"Me", "Plan", "  "}).id;
        QVERIFY(id > 0);
        QCOMPARE(int(subSendDraftMessage(id, " ", {}).outcome), int(SendOutcome::EmptyTo));
        f.gw.clock().advance(60000);
        QCOMPARE(cmdMessage_Save(id, "Bob Ray; Zed", {"Me", "Plan B", ""}).id, id);
        const QString cols = QStringLiteral("MessageID, Category, SentToName, MessageSubject, MessageBody, "
                                            "SentDateTimeNum, LastUsedDateTimeNum");
        const QString later = dao::sqlNumber(platform::DateTimeNum(platform::Now()));
        QCOMPARE(f.rows(cols), (QList<QStringList>{{QString::number(id), "Draft", "Bob Ray; Zed", "Plan B", " ",
                                                    dao::sqlNumber(first), later}}));
        QCOMPARE(int(subSendDraftMessage(id, "Bob Ray; Zed", {"Me", "Plan B", " "}).outcome), int(SendOutcome::Sent));
        QCOMPARE(f.rows(QStringLiteral("Category, MessageOwner, SentToName, SentFromRemoteUNC")),
                 (QList<QStringList>{{"New", "Bob Ray", "Bob Ray", "<null>"},
                                     {"New", "Zed", "Zed", "<null>"},
                                     {"Sent", kMe, "Bob Ray; Zed", "<null>"}}));
    }

    // Closing a viewed copy marks it read without news; delete asks first.
    void categoryChanges()
    {
        Fixture f;
        const long long mine = f.add(kMe, "New", 1), other = f.add("Bob Ray", "New", 1);
        QVERIFY(fnMarksReadOnClose("View", "New") && fnMarksReadOnClose("View", "Read"));
        QVERIFY(!fnMarksReadOnClose("Reply", "New") && !fnMarksReadOnClose("View", "Forward"));
        const long long before = f.counter();
        subMarkMessageRead(mine);
        QCOMPARE(f.counter(), before);
        f.gw.boxes().answer(platform::vbNo).answer(platform::vbYes);
        QVERIFY(!subDeleteMessage(other));
        QCOMPARE(f.rows("Category"), (QList<QStringList>{{"Read"}, {"New"}}));
        QVERIFY(subDeleteMessage(other));
        QCOMPARE(f.gw.boxes().last().title, QStringLiteral("Delete Confirmation Required"));
        const QString now = dao::sqlNumber(platform::DateTimeNum(platform::Now()));
        QCOMPARE(f.rows("Category, LastUsedDateTimeNum"), (QList<QStringList>{{"Read", now}, {"Deleted", now}}));
        QCOMPARE(f.counter(), before + 1);
    }

    void replyAndForwardQuoteTheOriginal()
    {
        Fixture f;
        const double sent = platform::DateTimeNum(QDateTime(QDate(2026, 3, 4), QTime(7, 8, 9)));
        const long long id = f.site.message({"Cy Dee", "Read", "Bob Ray", "Front desk", "Cy Dee; Dan", " RE: Van ",
                                             "Line 1\r\n\tLine \"2\" \U0001F600 ", sent});
        const StoredMessage original = *fnReadMessage(id);
        QVERIFY(!fnReadMessage(id + 1));
        const QString block =
            "\r\n\r\n-----Original Message Sent: Mar 04, 2026 07:08:09   - Start-----\r\n\r\n"
            "Sent by: Bob Ray\r\nTo: Cy Dee; Dan\r\nFrom: Front desk\r\n"
            "Sent: Mar 04, 2026 07:08:09\r\nSubject: RE: Van\r\n\r\n"
            "Line 1\r\n\tLine \"2\" \U0001F600\r\n\r\n-----Original Message Sent: Mar 04, 2026 07:08:09";
        const ComposeFields reply = fnReplyFields(original, kMe);
        QCOMPARE(QStringList({reply.takenBy, reply.to, reply.from, reply.subject, reply.body}),
                 QStringList({"Bob Ray", "Bob Ray", kMe, "RE: RE: Van", block + "   -End-----\r\n"}));
        const ComposeFields forward = fnForwardFields(original, kMe);
        QCOMPARE(QStringList({forward.takenBy, forward.to, forward.subject, forward.body}),
                 QStringList({"Bob Ray", "", "FW: RE: Van", block + "   - End-----\r\n"}));
    }

    void viewShowsTheDatesOfItsCategory_data()
    {
        QTest::addColumn<QString>("line"); // "-" for a line left as it was
        const QString sent = "3/4/2026 7:08:09 AM", last = "3/5/2026 6:00:00 PM", gap = QString(22, ' ');
        const auto line = [](const char* category, const QString& text) {
            QTest::newRow(category) << text;
        };
        line("Sent", "-");
        line("New", "Sent: " + sent);
        line("Read", "Original Sent: " + sent + gap + "Last Read :" + last);
        line("Forward", "Original Sent: " + sent + gap + "Last Forward :" + last);
        line("Draft", "Last Saved: " + last);
        line("Deleted", "Deleted: " + last);
        line("Forwarded", "Original Sent: " + sent + " - Last Forwaded: " + last);
    }
    void viewShowsTheDatesOfItsCategory()
    {
        QFETCH(QString, line);
        const TestGateways gw; // the en_US locale
        StoredMessage m;
        m.category = QString::fromLatin1(QTest::currentDataTag());
        m.sent = platform::DateTimeNum(QDateTime(QDate(2026, 3, 4), QTime(7, 8, 9)));
        m.lastUsed = platform::DateTimeNum(QDateTime(QDate(2026, 3, 5), QTime(18, 0)));
        QCOMPARE(fnLastUsedLine(m).value_or("-"), line);
    }

    // Three looks, a minute apart; each message joins the table before one of
    // them, sent at a minute offset from the first look.
    void watcherPopsEachMessageOnce_data()
    {
        QTest::addColumn<QList<Arrival>>("arrivals");
        QTest::newRow("every New at the first look, however old")
            << QList<Arrival>{{0, -90000, kMe, "New", 0}, {0, -1, kMe, "New", 0}};
        QTest::newRow("read, forward and another's never pop")
            << QList<Arrival>{{0, -1, kMe, "Read", -1}, {0, -1, kMe, "Forward", -1}, {1, 0.5, "Bob Ray", "New", -1}};
        QTest::newRow("sent between looks pops at the next")
            << QList<Arrival>{{1, 0.5, kMe, "New", 1}, {2, 1.5, kMe, "New", 2}};
        QTest::newRow("sent at or behind the limit")
            << QList<Arrival>{{1, -0.5, kMe, "New", -1}, {1, 0, kMe, "New", -1}};
    }
    void watcherPopsEachMessageOnce()
    {
        QFETCH(QList<Arrival>, arrivals);
        Fixture f;
        const QDateTime start = platform::Now();
        NewMessageWatcher watcher;
        QCOMPARE(watcher.strLastCheckedForNewMessages(), QStringLiteral("0"));
        QHash<int, long long> ids;
        QList<long long> stillNew;
        for (int look = 0; look < 3; ++look) {
            QList<long long> expected;
            for (int i = 0; i < arrivals.size(); ++i) {
                const Arrival& a = arrivals[i];
                if (a.beforeLook == look) {
                    ids[i] =
                        f.add(a.owner, a.category, platform::DateTimeNum(start.addMSecs(qint64(a.minutes * 60000))));
                    if (a.owner == kMe && a.category == "New") {
                        stillNew << ids[i];
                    }
                }
                if (a.popsAt == look) {
                    expected << ids[i];
                }
            }
            QList<long long> popped;
            for (const NewMessageAlert& alert : watcher.fnCheckForNewMessages(kMe)) {
                popped << alert.id;
            }
            QCOMPARE(popped, expected);
            // The pane lists every copy still "New" of the person, whatever its age.
            QList<long long> pane;
            for (const StoredMessage& m : fnReadPaneMessages(kMe)) {
                pane << m.id;
            }
            QCOMPARE(pane, stillNew);
            QCOMPARE(watcher.strLastCheckedForNewMessages(), dao::sqlNumber(platform::DateTimeNum(platform::Now())));
            f.gw.clock().advance(60000);
        }
    }

    // The limit moves before the query: a failed look has moved it all the same.
    void failedLookMovesTheLimit()
    {
        Fixture f;
        NewMessageWatcher watcher;
        QVERIFY(f.site.rawExec("ALTER TABLE MessagesTable RENAME TO Gone"));
        QVERIFY_THROWS_EXCEPTION(VbError, watcher.fnCheckForNewMessages(kMe));
        QCOMPARE(watcher.strLastCheckedForNewMessages(), dao::sqlNumber(platform::DateTimeNum(platform::Now())));
    }
};

QTEST_GUILESS_MAIN(TstMessaging)
#include "tst_messaging.moc"
