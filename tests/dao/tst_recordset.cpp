// Recordset and Field: values by declared type, moving, editing and adding rows,
// deletes, table-type Seek, the Jet numbers of misuse, and writes under
// contention from another process.
#include "daotest.h"

#include <QTemporaryDir>

using namespace dao;
using daotest::jetNumber;

class TestRecordset : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void valuesRoundTrip_data();
    void valuesRoundTrip();
    void fieldText_data();
    void fieldText();
    void conversionOnAssignment();
    void moving();
    void misuse_data();
    void misuse();
    void dynasetOverSelect();
    void readOnlyKinds();
    void addNewOnCounterTable();
    void deleteRows();
    void rowDeletedByAnotherUser();
    void updateWritesOnlyChangedFields();
    void seekOnPrimaryKey_data();
    void seekOnPrimaryKey();
    void lockedFileDuringWrites();
    void twoProcessesWriteOneRow();

private:
    std::unique_ptr<Recordset> people()
    {
        return m_db->OpenRecordset("People");
    }
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;
    std::shared_ptr<Database> m_db;
};

void TestRecordset::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_file = m_dir->filePath("veskor.mdb");
    daotest::makePeople(m_file);
    DBEngine::setBusyTimeoutMs(2000);
    m_db = DBEngine::OpenDatabase(m_file);
}

void TestRecordset::cleanup()
{
    m_db.reset();
}

void TestRecordset::valuesRoundTrip_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("Null text") << "Note" << QVariant();
    QTest::newRow("Null long") << "Num" << QVariant();
    QTest::newRow("Bit true") << "Flag" << QVariant(true);
    QTest::newRow("Bit false") << "Flag" << QVariant(false);
    QTest::newRow("Long past 16 bits") << "Num" << QVariant(qlonglong(5000000000LL));
    QTest::newRow("negative Long") << "Num" << QVariant(qlonglong(-40000));
    QTest::newRow("Double") << "Amount" << QVariant(45678.512345);
    QTest::newRow("whole Double") << "Amount" << QVariant(3.0);
    QTest::newRow("Text") << "Note" << QVariant(QString("Back at 3"));
    QTest::newRow("empty Text") << "Note" << QVariant(QString(""));
}

// Written by Edit and by AddNew, read back by a fresh recordset with the same kind.
void TestRecordset::valuesRoundTrip()
{
    QFETCH(QString, field);
    QFETCH(QVariant, value);
    auto rs = people();
    rs->Edit();
    rs->Fields(field) = value;
    rs->Update();
    rs->AddNew();
    rs->Fields("Name") = QString("Dee");
    rs->Fields(field) = value;
    rs->Update();
    QCOMPARE(rs->Fields(field).Value(), value); // the set shows what was written

    auto check = m_db->OpenRecordset("People");
    for (int row : {0, 3}) {
        check->MoveFirst();
        for (int i = 0; i < row; ++i)
            check->MoveNext();
        const QVariant read = check->Fields(field).Value();
        QCOMPARE(read.isNull(), value.isNull());
        if (!value.isNull()) {
            QCOMPARE(read.typeId(), value.typeId());
            QCOMPARE(read, value);
        }
    }
}

void TestRecordset::fieldText_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("Null") << "Note" << QVariant() << "";
    QTest::newRow("padded text") << "Note" << QVariant(QString("  In  ")) << "In";
    QTest::newRow("True") << "Flag" << QVariant(true) << "True";
    QTest::newRow("False") << "Flag" << QVariant(false) << "False";
    QTest::newRow("whole Double") << "Amount" << QVariant(3.0) << "3";
    QTest::newRow("Double") << "Amount" << QVariant(0.25) << "0.25";
    QTest::newRow("Long") << "Num" << QVariant(qlonglong(70000)) << "70000";
}

void TestRecordset::fieldText()
{
    QFETCH(QString, field);
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    auto rs = people();
    rs->Edit();
    rs->Fields(field) = value;
    rs->Update();
    QCOMPARE(people()->Fields(field).Text(), text);
}

// As Jet converts on assignment; a value the type cannot hold is refused.
void TestRecordset::conversionOnAssignment()
{
    auto rs = people();
    rs->Edit();
    rs->Fields("Num") = QString("42");
    rs->Fields("Amount") = true;
    rs->Fields("Flag") = 0;
    QCOMPARE(rs->Fields("Num").Value(), QVariant(42LL));
    QCOMPARE(rs->Fields("Amount").Value(), QVariant(1.0));
    QCOMPARE(rs->Fields("Flag").Value(), QVariant(false));
    QCOMPARE(jetNumber([&] { rs->Fields("Num") = QString("lots"); }), int(errConversion));
    rs->Update();
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT Num || '/' || Amount || '/' || Flag FROM People WHERE ID = 1"),
             QString("42/1.0/0"));
}

void TestRecordset::moving()
{
    auto rs = people();
    QVERIFY(!rs->isBOF() && !rs->isEOF());
    QCOMPARE(rs->RecordCount(), 3LL);
    QCOMPARE(rs->Fields("Name").Text(), QString("Ann"));
    rs->MoveNext();
    rs->MoveNext();
    QCOMPARE(rs->Fields(1).Text(), QString("Cy"));
    rs->MoveNext();
    QVERIFY(rs->isEOF());
    QCOMPARE(jetNumber([&] { rs->MoveNext(); }), int(errNoCurrentRecord));
    rs->MovePrevious();
    QCOMPARE(rs->Fields("Name").Text(), QString("Cy"));
    rs->MoveFirst();
    rs->MovePrevious();
    QVERIFY(rs->isBOF());
    QCOMPARE(jetNumber([&] { rs->MovePrevious(); }), int(errNoCurrentRecord));
    rs->MoveLast();
    QCOMPARE(rs->Fields("Name").Text(), QString("Cy"));

    auto none = m_db->OpenRecordset("SELECT * FROM People WHERE ID = 0");
    QVERIFY(none->isBOF() && none->isEOF());
    QCOMPARE(none->RecordCount(), 0LL);
    QCOMPARE(none->FieldCount(), 6);
    QCOMPARE(jetNumber([&] { none->MoveFirst(); }), int(errNoCurrentRecord));
}

void TestRecordset::misuse_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<int>("number");
    QTest::newRow("unknown field") << "field name" << int(errItemNotFound);
    QTest::newRow("field position") << "field index" << int(errItemNotFound);
    QTest::newRow("Update without Edit") << "update" << int(errUpdateWithoutEdit);
    QTest::newRow("CancelUpdate without Edit") << "cancel" << int(errUpdateWithoutEdit);
    QTest::newRow("assign without Edit") << "assign" << int(errUpdateWithoutEdit);
    QTest::newRow("value at EOF") << "eof value" << int(errNoCurrentRecord);
    QTest::newRow("Edit at EOF") << "eof edit" << int(errNoCurrentRecord);
    QTest::newRow("Seek on a dynaset") << "seek dynaset" << int(errNotSupported);
    QTest::newRow("Index on a dynaset") << "index dynaset" << int(errNotSupported);
    QTest::newRow("Seek without Index") << "seek no index" << int(errNoCurrentIndex);
    QTest::newRow("unknown index") << "bad index" << int(errNotAnIndex);
    QTest::newRow("closed recordset") << "closed" << int(errObjectInvalid);
    QTest::newRow("action query as a set") << "action" << int(errInvalidOperation);
    QTest::newRow("query as a table") << "table query" << int(errTableNotFound);
    QTest::newRow("unknown column in query") << "bad column" << int(errTooFewParameters);
    QTest::newRow("unknown table") << "bad table" << int(errTableNotFound);
}

void TestRecordset::misuse()
{
    QFETCH(QString, what);
    QFETCH(int, number);
    auto rs = people();
    const QHash<QString, std::function<void()>> actions = {
        {"field name",
         [&] {
             rs->Fields("Nope");
         }},
        {"field index",
         [&] {
             rs->Fields(6);
         }},
        {"update",
         [&] {
             rs->Update();
         }},
        {"cancel",
         [&] {
             rs->CancelUpdate();
         }},
        {"assign",
         [&] {
             rs->Fields("Num") = 1;
         }},
        {"eof value",
         [&] {
             rs->MoveLast();
             rs->MoveNext();
             rs->Fields("Name").Value();
         }},
        {"eof edit",
         [&] {
             rs->MoveLast();
             rs->MoveNext();
             rs->Edit();
         }},
        {"seek dynaset",
         [&] {
             rs->Seek("=", "Ann");
         }},
        {"index dynaset",
         [&] {
             rs->setIndex("PrimaryKey");
         }},
        {"seek no index",
         [&] {
             m_db->OpenRecordset("People", dbOpenTable)->Seek("=", 1);
         }},
        {"bad index",
         [&] {
             m_db->OpenRecordset("People", dbOpenTable)->setIndex("NoSuchIndex");
         }},
        {"closed",
         [&] {
             rs->Close();
             rs->RecordCount();
         }},
        {"action",
         [&] {
             m_db->OpenRecordset("DELETE FROM People");
         }},
        {"table query",
         [&] {
             m_db->OpenRecordset("SELECT * FROM People", dbOpenTable);
         }},
        {"bad column",
         [&] {
             m_db->OpenRecordset("SELECT Nope FROM People");
         }},
        {"bad table",
         [&] {
             m_db->OpenRecordset("SELECT * FROM Nobody");
         }},
    };
    QCOMPARE(jetNumber(actions.value(what)), number);
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT count(*) FROM People"), QString("3"));
}

// A dynaset on a query of one table writes back through the row id; a column
// under another name writes to its own column; an expression cannot be written.
void TestRecordset::dynasetOverSelect()
{
    auto rs = m_db->OpenRecordset("SELECT Name AS Who, Num * 2 AS Twice FROM People WHERE Name = \"bob\"");
    QCOMPARE(rs->RecordCount(), 1LL);
    QCOMPARE(rs->FieldCount(), 2); // the row id is not a field
    QCOMPARE(rs->Fields("Twice").Value(), QVariant(40LL));
    rs->Edit();
    QCOMPARE(jetNumber([&] { rs->Fields("Twice") = 1; }), int(errFieldNotUpdatable));
    rs->Fields("who") = QString("Robert");
    rs->Update();
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT Name FROM People WHERE ID = 2"), QString("Robert"));
}

void TestRecordset::readOnlyKinds()
{
    const QList<std::function<std::unique_ptr<Recordset>()>> sets = {
        [&] { return m_db->OpenRecordset("People", dbOpenSnapshot); },
        [&] { return m_db->OpenRecordset("People", dbOpenDynaset, dbReadOnly); },
        [&] { return m_db->OpenRecordset("People", dbOpenTable, dbReadOnly); },
        [&] { return m_db->OpenRecordset("SELECT * FROM People WHERE ID = 1", dbOpenSnapshot); },
        [&] { return m_db->OpenRecordset("SELECT p.Name FROM People p INNER JOIN People q ON p.ID = q.ID"); },
        [&] { return m_db->OpenRecordset("SELECT count(*) AS n FROM People"); },
    };
    for (const auto& open : sets) {
        auto rs = open();
        QVERIFY(rs->RecordCount() > 0);
        QCOMPARE(jetNumber([&] { rs->Edit(); }), int(errCannotUpdate));
        QCOMPARE(jetNumber([&] { rs->AddNew(); }), int(errCannotUpdate));
        QCOMPARE(jetNumber([&] { rs->Delete(); }), int(errCannotUpdate));
    }
}

// A table made in Jet's dialect with a COUNTER key: AddNew shows the new id
// (read back after the insert) and ids keep rising past 16 bits.
void TestRecordset::addNewOnCounterTable()
{
    m_db->Execute("CREATE TABLE MessagesTable (MessageID COUNTER, Body TEXT(50), Category TEXT(10))");
    m_db->Execute("INSERT INTO MessagesTable (Body, Category) VALUES (\"first\", 'New')");
    daotest::sqliteExec(m_file, "UPDATE sqlite_sequence SET seq = 32760 WHERE name = 'MessagesTable'");
    auto rs = m_db->OpenRecordset("SELECT * FROM MessagesTable WHERE Category = 'New'");
    long long previous = 1;
    for (int i = 0; i < 20; ++i) {
        rs->AddNew();
        rs->Fields("Body") = QString("message %1").arg(i);
        rs->Update();
        QCOMPARE(rs->Fields("Body").Text(), QString("first")); // the current record stays
        rs->MoveLast();
        const QVariant id = rs->Fields("MessageID").Value();
        QCOMPARE(id.typeId(), int(QMetaType::LongLong));
        QVERIFY(id.toLongLong() > previous);
        previous = id.toLongLong();
        QVERIFY(rs->Fields("Category").IsNull()); // what the row holds, not the set's filter
        rs->MoveFirst();
    }
    QVERIFY(previous > 32767 + 10);
    QCOMPARE(rs->RecordCount(), 21LL);
}

void TestRecordset::deleteRows()
{
    auto rs = people();
    rs->MoveNext();
    rs->Delete();
    QCOMPARE(jetNumber([&] { rs->Fields("Name").Value(); }), int(errRecordDeleted));
    QCOMPARE(rs->RecordCount(), 2LL);
    rs->MoveNext();
    QCOMPARE(rs->Fields("Name").Text(), QString("Cy"));
    rs->MovePrevious();
    QCOMPARE(rs->Fields("Name").Text(), QString("Ann")); // the deleted row is skipped
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT group_concat(Name) FROM People"), QString("Ann,Cy"));
}

void TestRecordset::rowDeletedByAnotherUser()
{
    auto rs = people();
    daotest::sqliteExec(m_file, "DELETE FROM People WHERE ID = 1");
    rs->Edit();
    rs->Fields("Num") = 1;
    QCOMPARE(jetNumber([&] { rs->Update(); }), int(errRecordDeleted));
    QCOMPARE(jetNumber([&] { rs->Delete(); }), int(errRecordDeleted));
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT count(*) FROM People"), QString("2"));
}

void TestRecordset::updateWritesOnlyChangedFields()
{
    auto rs = people();
    daotest::sqliteExec(m_file, "UPDATE People SET Note = 'theirs' WHERE ID = 1");
    rs->Edit();
    rs->Fields("Num") = 11;
    rs->Update();
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT Num || ' ' || Note FROM People WHERE ID = 1"), QString("11 theirs"));
}

void TestRecordset::seekOnPrimaryKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("found");
    QTest::newRow("same case") << "Sales" << true;
    QTest::newRow("upper case") << "SALES" << true;
    QTest::newRow("lower case") << "front desk" << true;
    QTest::newRow("absent") << "Nobody" << false;
    QTest::newRow("prefix only") << "Sal" << false;
}

void TestRecordset::seekOnPrimaryKey()
{
    QFETCH(QString, key);
    QFETCH(bool, found);
    daotest::sqliteExec(m_file, "CREATE TABLE GroupTable (GroupName TEXT(50) PRIMARY KEY, Note TEXT(50));"
                                "INSERT INTO GroupTable VALUES ('Admin', 'a'), ('Front Desk', 'f'), ('Sales', 's')");
    auto rs = m_db->OpenRecordset("GroupTable", dbOpenTable, dbReadOnly);
    rs->setIndex("PrimaryKey");
    QCOMPARE(rs->Index(), QString("PrimaryKey"));
    rs->Seek("=", key);
    QCOMPARE(rs->NoMatch(), !found);
    if (found)
        QCOMPARE(rs->Fields("GroupName").Text().toLower(), key.toLower());
    else
        QCOMPARE(jetNumber([&] { rs->Fields("GroupName").Value(); }), int(errNoCurrentRecord));
}

// Another process holds the file locked: writes wait for the busy timeout, then
// fail with the numbers the logic retries on; the edit survives for a retry.
void TestRecordset::lockedFileDuringWrites()
{
    DBEngine::setBusyTimeoutMs(200);
    auto rs = people();
    daotest::Helper helper;
    QCOMPARE(helper.start({"hold", m_file}), QString("locked"));
    rs->Edit();
    rs->Fields("Num") = 77;
    QCOMPARE(jetNumber([&] { rs->Update(); }), int(errRecordLocked));
    QCOMPARE(rs->EditMode(), int(dbEditInProgress));
    QCOMPARE(jetNumber([&] { m_db->Execute("UPDATE People SET Num = 1"); }), int(errLockedByUser));
    QCOMPARE(jetNumber([&] { m_db->OpenRecordset("People"); }), int(errCouldNotLockFile));
    helper.finish();
    rs->Update();
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT Num FROM People WHERE ID = 1"), QString("77"));
}

// Two clients write two fields of one row at once: every write lands or fails
// with 3218 after the busy wait, each field ends at its writer's last good value,
// and the file stays whole.
void TestRecordset::twoProcessesWriteOneRow()
{
    m_db->Close();
    const int count = 40;
    daotest::Helper helper;
    QCOMPARE(helper.start({"write", m_file, "Num", QString::number(count)}), QString("ready"));
    int last = -1;
    for (int i = 0; i < count; ++i) {
        const int number = jetNumber([&] {
            auto db = DBEngine::OpenDatabase(m_file);
            auto rs = db->OpenRecordset("People");
            rs->Edit();
            rs->Fields("Amount") = double(i);
            rs->Update();
        });
        QVERIFY2(number == 0 || number == errRecordLocked || number == errCouldNotLockFile,
                 qPrintable(QString::number(number)));
        if (number == 0)
            last = i;
    }
    const QString report = helper.finish();
    QVERIFY2(report.startsWith("done"), qPrintable(report));
    const QString helperLast = report.section("last=", 1);
    QCOMPARE(daotest::sqliteValue(m_file, "PRAGMA integrity_check"), QString("ok"));
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT Num FROM People WHERE ID = 1"), helperLast);
    QCOMPARE(daotest::sqliteValue(m_file, "SELECT CAST(Amount AS INTEGER) FROM People WHERE ID = 1"),
             QString::number(last));
}

QTEST_GUILESS_MAIN(TestRecordset)
#include "tst_recordset.moc"
